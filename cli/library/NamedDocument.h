#pragma once

#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// The document of a record that a library holds already.
struct NamedDocument
{
    QString fileName;
    RecordKind kind;
};

/// Looks for a record of exactly this name, of one of these kinds, in the library of --dir, then in
/// that of the home directory, then in the delivered one. Nothing where none of them has it, or
/// where one has several of it, of which `mistake` tells. Loads the registry anew.
std::optional<NamedDocument> findNamedDocument(const QString &name, const QList<RecordKind> &kinds,
                                               const CommandLine &line, QString &mistake);

/// "there is no file Amersfort, and the library has no entry \"Amersfort\"; did you mean ...?", for
/// a name that is neither, with the names near to it of the library of `line` and of the delivered
/// one. Loads the registry anew.
QString unknownDocument(const QString &given, const QList<RecordKind> &kinds,
                        const CommandLine &line);

} // namespace KelStd::cli
