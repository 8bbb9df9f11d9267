#include <KelStd/io/WholeFile.h>

#include <KelStd/io/FileAccess.h>

namespace KelStd::io {

bool writeWholeFile(const QString &fileName, const QByteArray &bytes, QString *error)
{
    const auto write = [&bytes](QIODevice &device) { return writeAll(device, bytes); };
    return replaceFile(fileName, QIODevice::NotOpen, write, error);
}

} // namespace KelStd::io
