#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::test {

/// The text in UTF-16, by its units, without a byte-order mark.
inline QByteArray utf16(const QString &text, bool isBigEndian)
{
    QByteArray bytes;
    for (const QChar c : text) {
        const char high = static_cast<char>(c.row());
        const char low = static_cast<char>(c.cell());
        bytes += isBigEndian ? high : low;
        bytes += isBigEndian ? low : high;
    }
    return bytes;
}

} // namespace KelStd::test
