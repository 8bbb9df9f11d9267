#pragma once

#include <KelStd/Export.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

/// The documents of records: what kind they are of, and their records as a library loads them.
/// May be called on any thread; the registry is not touched.
namespace KelStd::library {

/// Why a path cannot be read as a file, although something stands there: a FIFO would block, a
/// device never end.
///
/// \param fileName a path
/// \return `CannotBeOpened` for a directory and for anything else that is no regular file; no
///         failure for a file, and none where nothing stands
KELSTD_EXPORT io::DocumentFailure fileFailure(const QString &fileName);

/// The kind of records that a document has, by the name of its root.
///
/// \param fileName the document's path
/// \return `Custom` for a coordinate system, and for any root and any file that is of no kind:
///         reading it says what is the matter
KELSTD_EXPORT RecordKind kindOfDocument(const QString &fileName);

/// Reads all records of a document as loading does.
///
/// \param fileName the document's path
/// \param kind what it is read as; custom and standard systems are read alike
/// \param failure becomes why nothing was read, or no failure
/// \return the records in the document's order, those of equal names, too; just one for a system.
///         Nothing when the document is refused.
KELSTD_EXPORT std::optional<QList<LibraryRecord>>
readRecords(const QString &fileName, RecordKind kind, io::DocumentFailure &failure);

/// Reads as `readRecords` does, and lists what of the document is not understood as it is written.
///
/// \param fileName the document's path
/// \param kind what it is read as
/// \param findings what there is to say is appended (io/DocumentReview.h), also of a document that
///        is refused for what it holds
/// \param failure becomes why nothing was read, or no failure
/// \return as `readRecords`
KELSTD_EXPORT std::optional<QList<LibraryRecord>>
reviewRecords(const QString &fileName, RecordKind kind, QList<io::DocumentFinding> &findings,
              io::DocumentFailure &failure);

} // namespace KelStd::library
