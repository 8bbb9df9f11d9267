#include <KelStd/proj/FixedBuffer.h>

#include <QtCore/QByteArray>

#include <cstring>

namespace KelStd::proj {

bool copyToBuffer(const QString &text, char *buffer, std::size_t size)
{
    const QByteArray bytes = text.toUtf8();
    const auto length = static_cast<std::size_t>(bytes.size());
    if (length >= size || bytes.contains('\0')) {
        buffer[0] = '\0';
        return false;
    }
    std::memcpy(buffer, bytes.constData(), length + 1);
    return true;
}

} // namespace KelStd::proj
