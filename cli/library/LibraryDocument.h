#pragma once

#include <KelStd/io/DocumentReview.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

/// What a walk over a document finds, whether or not the library reads it. The walk is stricter
/// than the library, which passes over an encoding that it doesn't know and bytes that have no
/// meaning in it: what a document holds is only for `recordsIn` to say.
struct DocumentOutline
{
    QString rootName;
    QStringList offered; ///< the systems that a document of offered systems names
    QString fault;       ///< the first thing that may keep the library from reading it, or empty
};

/// `kind` says which elements need a version; none is the document of the offered systems.
DocumentOutline outlineOf(const QString &fileName, std::optional<RecordKind> kind);

/// The kind whose documents have such a root; nothing for a root that no kind has.
std::optional<RecordKind> kindOfRoot(const QString &rootName);

/// The records of a document as the library reads them, all of them in their order, those of equal
/// names, too; nothing and the reason when it refuses the document.
std::optional<QList<LibraryRecord>> recordsIn(const QString &fileName, RecordKind kind,
                                              QString &reason);

/// As above, and lists what of the document is not understood as it is written.
std::optional<QList<LibraryRecord>> reviewedRecordsIn(const QString &fileName, RecordKind kind,
                                                      QList<io::DocumentFinding> &findings,
                                                      QString &reason);

} // namespace KelStd::cli
