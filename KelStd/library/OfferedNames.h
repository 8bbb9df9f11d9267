#pragma once

#include <KelStd/Export.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace KelStd::library {

/// Reads the systems that a document offers when a project is created, as
/// `StandardLibrary::loadLibrary` does, and appends them to `names` in their order: each system's
/// name and the name shown for it, which is the system's where the document has none. Whether there
/// are such systems is not asked.
///
/// Returns false with the `failure`, and leaves `names`, when the file is no regular file that can
/// be opened or no XML that is safe to parse; otherwise `failure` becomes none.
KELSTD_EXPORT bool readOfferedNames(const QString &fileName, QList<QPair<QString, QString>> &names,
                                    io::DocumentFailure &failure);

} // namespace KelStd::library
