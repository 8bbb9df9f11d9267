#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QString>

namespace KelStd::cli {

inline QString reinstallAdvice()
{
    return QStringLiteral("run 'kelstd doctor --reinstall'");
}

inline QString installAgainAdvice()
{
    return QStringLiteral("install KelStd again, or set KELSTD_BIN_DIR to the directory that holds "
                          "proj/proj.zip");
}

/// A file with its size, rounded up.
inline QString withSize(const QString &file)
{
    constexpr qint64 kibibyte = 1024;
    return QStringLiteral("%1 (%2 KiB)")
        .arg(file)
        .arg((QFileInfo(file).size() + kibibyte - 1) / kibibyte);
}

} // namespace KelStd::cli
