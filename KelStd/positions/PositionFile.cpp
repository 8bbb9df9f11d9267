#include <KelStd/positions/PositionFile.h>

#include <KelStd/io/FileAccess.h>

namespace KelStd::positions {

namespace {

constexpr int maxWaitingBytes = 1 << 16;

} // namespace

bool writePositionFile(const QString &fileName, PositionWriter &writer, const InputColumns &columns,
                       const std::function<bool(const WritePosition &)> &positions, QString *error)
{
    bool isComplete = true;
    const auto write = [&](QIODevice &device) {
        QByteArray bytes = writer.begin(columns);
        bool isFirst = true;
        bool isWritten = true;
        isComplete = positions([&](const PrintedPosition &position) {
            if (!isFirst)
                bytes += writer.separator();
            isFirst = false;
            writer.write(bytes, position);
            if (bytes.size() < maxWaitingBytes)
                return;
            isWritten = isWritten && io::writeAll(device, bytes);
            bytes.clear();
        });
        return isComplete && isWritten && io::writeAll(device, bytes + writer.ending());
    };
    if (io::replaceFile(fileName, QIODevice::NotOpen, write, error))
        return true;
    if (!isComplete && error != nullptr)
        error->clear();
    return false;
}

} // namespace KelStd::positions
