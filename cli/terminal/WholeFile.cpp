#include <cli/terminal/WholeFile.h>

#include <cli/terminal/Console.h>

#include <KelStd/io/WholeFile.h>

namespace KelStd::cli {

bool writeWholeFile(const QString &fileName, const QByteArray &bytes, Console &console)
{
    QString reason;
    if (io::writeWholeFile(fileName, bytes, &reason))
        return true;
    console.report(QStringLiteral("cannot write %1: %2").arg(fileName, reason));
    return false;
}

} // namespace KelStd::cli
