#pragma once

#include <KelStd/Export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::io {

/// Replaces a file by these bytes, whole or not at all: where they cannot be written, as on a full
/// disk, the old file stays. A link stays, and what it leads to is replaced; a pipe or a device is
/// written into. Returns false with the file's own text in `error` (when given).
KELSTD_EXPORT bool writeWholeFile(const QString &fileName, const QByteArray &bytes, QString *error);

} // namespace KelStd::io
