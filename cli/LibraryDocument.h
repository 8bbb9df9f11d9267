#pragma once

#include <cli/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

/// What a walk over a document finds, whether or not the library reads it.
struct DocumentOutline
{
    QString rootName;
    QStringList names;   ///< of its records, in their order
    QStringList offered; ///< the systems that a document of offered systems names
    QString fault;       ///< the first thing that keeps the library from reading it; empty for none
};

/// `kind` says which elements are records; none is the document of the offered systems.
DocumentOutline outlineOf(const QString &fileName, std::optional<RecordKind> kind);

/// The kind whose documents have such a root; nothing for a root that no kind has.
std::optional<RecordKind> kindOfRoot(const QString &rootName);

/// The records of a document as the library reads them; nothing and the reason when it refuses the
/// document. Of lists the registry is asked, which then holds nothing else.
std::optional<QList<Record>> recordsIn(const QString &fileName, RecordKind kind, QString &reason);

} // namespace KelStd::cli
