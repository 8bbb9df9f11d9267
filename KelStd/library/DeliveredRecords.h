#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>

/// The records that are delivered beside the program, and how a user's library gets one back.
/// Everything here belongs to the thread of the registry.
///
///     const LibraryLock lock(directory); // and load the registry
///     for (const DeliveredRecord &record :
///          library::deliveredRecords(LibraryDirectory::delivered()))
///         if (library::deliveredState(directory, record) == DeliveredState::Missing)
///             library::restoreRecord(directory, record, fileName);
namespace KelStd {

/// A record of a delivered library, and the document that holds it alone.
struct DeliveredRecord
{
    RecordKind kind;  ///< what it is
    QString name;     ///< under which it is delivered
    QString fileName; ///< the document's absolute path
};

/// What has become of a delivered record in a library.
enum class DeliveredState
{
    AsDelivered, ///< its document has the delivered one's bytes
    Changed,     ///< another document holds a record of this kind and name
    Missing      ///< no document holds such a record
};

namespace library {

/// The standard systems, ellipsoids and projections of a delivered library, by kind and name. The
/// registry is not touched.
KELSTD_EXPORT QList<DeliveredRecord> deliveredRecords(const LibraryDirectory &delivered);

/// Whether a delivered library has a record of this kind and name.
KELSTD_EXPORT bool isDelivered(const LibraryDirectory &delivered, RecordKind kind,
                               const QString &name);

/// What the library, which the registry has loaded, has of a delivered record.
KELSTD_EXPORT DeliveredState deliveredState(const LibraryDirectory &library,
                                            const DeliveredRecord &record);

/// Puts the delivered document, byte for byte, into the library that the registry has loaded: in
/// place of the one that holds the record now, or under its own name. Whole or not at all. The
/// registry stays as it is; load it again.
///
/// \param fileName becomes the path of the document
/// \return `SeveralFiles` or `SharedFile` where the present documents hold more than the record,
///         `NameTaken` where another record has the name but for case, or a custom system has it,
///         `NotWritable` where its file holds something else or cannot be written
KELSTD_EXPORT LibraryFailure restoreRecord(const LibraryDirectory &library,
                                           const DeliveredRecord &record, QString &fileName);

} // namespace library

} // namespace KelStd
