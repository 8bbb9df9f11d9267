#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Which documents of a library hold a record, and whether the registry can change one without harm
/// to others.
///
/// A document may have any name, and a list any number of records, while the registry writes and
/// removes the file that is called as the record is. Ask before it does:
///
///     const LibraryFailure failure = library::ownershipFailure(directory, kind, name);
///     if (failure)
///         report(failure.text);
///     else
///         library::removeRecord(kind, name);
///
/// Names are compared without byte order marks. Documents are read as loading reads them; those
/// that it skips hold nothing. Everything here belongs to the thread of the registry, which is read
/// where "the loaded registry" is said, and never changed. A directory that cannot be listed counts
/// as an empty one: `loadPlaces` has refused it.
namespace KelStd::library {

/// The names of the files of a kind's documents.
///
/// \return them in the order in which the file system lists them and loading reads them
KELSTD_EXPORT QStringList documentsOf(const LibraryDirectory &library, RecordKind kind);

/// The absolute path of a document.
///
/// \param fileName as `documentsOf` has it; also one that Qt would take for a path elsewhere, such
///        as ":a.xml"
KELSTD_EXPORT QString documentPath(const LibraryDirectory &library, RecordKind kind,
                                   const QString &fileName);

/// The absolute path of the file that the registry writes for a record, whether it is there or not.
KELSTD_EXPORT QString recordFile(const LibraryDirectory &library, RecordKind kind,
                                 const QString &name);

/// The documents that hold a record of the loaded registry.
///
/// \return their absolute paths: one, unless several have it. Empty for none.
KELSTD_EXPORT QStringList documentsHolding(const LibraryDirectory &library, RecordKind kind,
                                           const QString &name);

/// Whether nobody can tell which of several records of a name the loaded registry has: it takes
/// that of the file that the directory lists last, which may change.
///
/// Documents are read again only where a name may have hidden another.
///
/// \return `SeveralFiles`, or no failure where one file holds it or none
KELSTD_EXPORT LibraryFailure ambiguityFailure(const LibraryDirectory &library, RecordKind kind,
                                              const QString &name);

/// Why a record of the loaded registry cannot be replaced or removed without harm.
///
/// \return `SeveralFiles`, `OtherFileName` or `SharedFile`; no failure when its file is its own,
///         and where no document holds it
KELSTD_EXPORT LibraryFailure ownershipFailure(const LibraryDirectory &library, RecordKind kind,
                                              const QString &name);

} // namespace KelStd::library
