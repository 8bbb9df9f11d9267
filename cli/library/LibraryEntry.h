#pragma once

#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// The file names of a kind's documents, in the order in which loading reads them.
QStringList documentsOf(const LibraryDirectory &library, RecordKind kind);

/// The path of a document. It is put together from its pieces: Qt would take a name that begins
/// with a colon for one elsewhere.
QString documentPath(const LibraryDirectory &library, RecordKind kind, const QString &fileName);

/// The file of a record that the library writes.
QString recordFile(const LibraryDirectory &library, RecordKind kind, const QString &name);

/// The documents that hold a record of the loaded registry: one, unless several have it.
QStringList documentsHolding(const LibraryDirectory &library, RecordKind kind, const QString &name);

/// "2 files of D hold it: ...": why nobody can tell which record of a name was loaded into the
/// registry, which takes that of the file that the directory happens to list last. Empty when one
/// file holds it. The documents are read again only where a name may have hidden another.
QString ambiguity(const LibraryDirectory &library, RecordKind kind, const QString &name);

/// Why a record of the loaded registry cannot be replaced or removed without harm: its file has
/// another name, holds other records, too, or is not the only one. Empty when it can.
QString ownershipFault(const LibraryDirectory &library, RecordKind kind, const QString &name);

/// The entry of the loaded registry that keeps `name` from being added: "the standard system
/// \"A\""; empty for none.
QString takenBy(RecordKind kind, const QString &name);

/// The kinds among `kinds` in which the loaded registry has an entry of exactly this name.
QList<RecordKind> kindsHolding(const QString &name, const QList<RecordKind> &kinds);

/// "there is no custom system \"harbour\"; did you mean ...?", with the names of the loaded
/// registry, and how the command `line` could have listed them.
QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line);

} // namespace KelStd::cli
