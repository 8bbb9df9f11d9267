#include "proj/StoredZip.h"

namespace KelStd::test {

namespace {

void put16(QByteArray &bytes, quint32 value)
{
    bytes += static_cast<char>(value & 0xffU);
    bytes += static_cast<char>(value >> 8 & 0xffU);
}

void put32(QByteArray &bytes, quint32 value)
{
    put16(bytes, value & 0xffffU);
    put16(bytes, value >> 16);
}

/// The checksum of zip archives: CRC-32 with the reflected polynomial EDB88320.
quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = 0xffffffffU;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xedb88320U : 0U);
    }
    return ~crc;
}

/// What the local header and the central directory say alike, from the version needed on.
void putCommonFields(QByteArray &bytes, const ZipEntry &entry)
{
    const auto size = static_cast<quint32>(entry.content.size());
    put16(bytes, 20);   // version needed: 2.0
    put16(bytes, 0);    // flags
    put16(bytes, 0);    // method: stored
    put16(bytes, 0);    // time: midnight
    put16(bytes, 0x21); // date: 1980-01-01
    put32(bytes, crc32(entry.content));
    put32(bytes, size); // compressed
    put32(bytes, size); // uncompressed
    put16(bytes, static_cast<quint32>(entry.name.size()));
    put16(bytes, 0); // no extra field
}

} // namespace

QByteArray storedZip(const QList<ZipEntry> &entries)
{
    constexpr quint32 unixSystem = 3;
    constexpr quint32 folder = 0040000;
    constexpr quint32 file = 0100000;

    QByteArray archive;
    QByteArray directory;
    for (const ZipEntry &entry : entries) {
        put32(directory, 0x02014b50);
        put16(directory, unixSystem << 8 | 20);
        putCommonFields(directory, entry);
        put16(directory, 0); // no comment
        put16(directory, 0); // disk
        put16(directory, 0); // internal attributes
        const bool isFolder = entry.name.endsWith('/');
        const quint32 mode = entry.mode != 0 ? entry.mode : isFolder ? 0755 : 0644;
        put32(directory, ((isFolder ? folder : file) | mode) << 16);
        put32(directory, static_cast<quint32>(archive.size()));
        directory += entry.name;

        put32(archive, 0x04034b50);
        putCommonFields(archive, entry);
        archive += entry.name + entry.content;
    }

    QByteArray end;
    put32(end, 0x06054b50);
    put16(end, 0); // this disk
    put16(end, 0); // the directory's disk
    put16(end, static_cast<quint32>(entries.size()));
    put16(end, static_cast<quint32>(entries.size()));
    put32(end, static_cast<quint32>(directory.size()));
    put32(end, static_cast<quint32>(archive.size()));
    put16(end, 0); // no comment
    return archive + directory + end;
}

} // namespace KelStd::test
