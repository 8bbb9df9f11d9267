#include <cli/terminal/FilePath.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KelStd::cli {

QString placeOf(const QString &name)
{
    constexpr int maxLinks = 40; // as systems follow them
    QFileInfo info(name);
    for (int i = 0; i < maxLinks && !info.exists() && info.isSymLink(); ++i)
        info = QFileInfo(info.symLinkTarget());
    if (info.exists())
        return info.canonicalFilePath();
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? info.absoluteFilePath() : QDir(folder).filePath(info.fileName());
}

} // namespace KelStd::cli
