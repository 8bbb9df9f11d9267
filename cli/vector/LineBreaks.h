#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace KelStd::cli::vector {

/// How many texts of a GPX file's extensions have line breaks, which GDAL leaves out.
qint64 extensionsWithLineBreaks(const QString &path);

} // namespace KelStd::cli::vector
