#pragma once

#include "FuzzTarget.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QtEndian>

#include <cstring>

#if defined(Q_OS_UNIX)
#    include <sys/resource.h>
#endif

/// What the targets that read grids share. Nothing here is taken from the library: it is what the
/// library is held against.
namespace KelStd::fuzz {

inline QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<int>(size)};
}

inline void write(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    require(file.open(QIODevice::WriteOnly), "the temporary file can be written");
    require(file.write(bytes) == bytes.size(), "and takes all bytes");
}

inline QByteArray read(const QString &fileName)
{
    QFile file(fileName);
    require(file.open(QIODevice::ReadOnly), "the file can be read");
    return file.readAll();
}

template <typename Bits, typename Number>
Number numberFrom(Bits bits)
{
    static_assert(sizeof(Bits) == sizeof(Number));
    Number number{};
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

inline double bigEndianDouble(const QByteArray &bytes, int at)
{
    return numberFrom<quint64, double>(qFromBigEndian<quint64>(bytes.constData() + at));
}

inline float bigEndianFloat(const QByteArray &bytes, int at)
{
    return numberFrom<quint32, float>(qFromBigEndian<quint32>(bytes.constData() + at));
}

inline qint64 bigEndianInt(const QByteArray &bytes, int at)
{
    return qFromBigEndian<qint32>(bytes.constData() + at);
}

/// Holds what happens while it lives to some memory: a count in a header that is not true must not
/// set any aside. 0 where the system does not say.
class MemoryBound
{
public:
    ~MemoryBound()
    {
        constexpr long allowed = 64 * 1024; // [KiB], many times what the largest input needs
        require(peak() - m_before <= allowed, "memory is bounded by the file's size");
    }

private:
    static long peak()
    {
#if defined(Q_OS_LINUX)
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
#else
        return 0;
#endif
    }

    const long m_before = peak();
};

} // namespace KelStd::fuzz
