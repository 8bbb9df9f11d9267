#include <cli/terminal/WholeFile.h>

#include <cli/terminal/Console.h>

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

namespace KelStd::cli {

bool writeWholeFile(const QString &fileName, const QByteArray &bytes, Console &console)
{
    // A device would be replaced by a file, and stay away.
    if (QFileInfo::exists(fileName) && !QFileInfo(fileName).isFile()) {
        console.report(QStringLiteral("cannot write %1: it is no regular file").arg(fileName));
        return false;
    }
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush()
        && file.commit())
        return true;
    console.report(QStringLiteral("cannot write %1: %2").arg(fileName, file.errorString()));
    return false;
}

} // namespace KelStd::cli
