#pragma once

#include <KelStd/io/DocumentReview.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// Why something is not read that is there and is no regular file, which could block or never end;
/// empty for a file, and for nothing at all.
QString noFileFault(const QString &fileName);

/// The kind of records that the name of a document's root tells, custom systems for any other root.
RecordKind kindOfDocument(const QString &fileName);

/// The records of a document as the library reads them, all of them in their order, those of equal
/// names, too; nothing and the reason when it refuses the document.
std::optional<QList<LibraryRecord>> recordsIn(const QString &fileName, RecordKind kind,
                                              QString &reason);

/// As above, and lists what of the document is not understood as it is written.
std::optional<QList<LibraryRecord>> reviewedRecordsIn(const QString &fileName, RecordKind kind,
                                                      QList<io::DocumentFinding> &findings,
                                                      QString &reason);

} // namespace KelStd::cli
