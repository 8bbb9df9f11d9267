#include "support/ShiftGrids.h"

#include "support/TemporaryHome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <cstring>

namespace KelStd::test {

namespace {

template <typename Number>
QByteArray littleEndian(Number value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray real(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return littleEndian(bits);
}

QByteArray real32(float value)
{
    quint32 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return littleEndian(bits);
}

QByteArray record(const char *name, const QByteArray &value)
{
    return QByteArray(name).leftJustified(8, ' ') + value.leftJustified(8, '\0');
}

QByteArray record(const char *name, const char *word)
{
    return record(name, QByteArray(word).leftJustified(8, ' '));
}

QByteArray tag(quint16 number, quint16 type, quint32 count, const QByteArray &value)
{
    return littleEndian(number) + littleEndian(type) + littleEndian(count)
           + value.leftJustified(4, '\0');
}

} // namespace

QByteArray ntv2Bytes(const ShiftGridNodes &nodes)
{
    constexpr double seconds = 3600.0;
    const double north = nodes.south + (nodes.rows - 1) * nodes.latitudeSpacing;
    const double east = nodes.west + (nodes.columns - 1) * nodes.longitudeSpacing;
    const qint32 count = nodes.rows * nodes.columns;
    QByteArray bytes;
    bytes += record("NUM_OREC", littleEndian(qint32(11)));
    bytes += record("NUM_SREC", littleEndian(qint32(11)));
    bytes += record("NUM_FILE", littleEndian(qint32(1)));
    bytes += record("GS_TYPE", "SECONDS");
    bytes += record("VERSION", "1");
    bytes += record("SYSTEM_F", "SITE");
    bytes += record("SYSTEM_T", "WORLD");
    bytes += record("MAJOR_F", real(6377397.155));
    bytes += record("MINOR_F", real(6356078.963));
    bytes += record("MAJOR_T", real(6378137.0));
    bytes += record("MINOR_T", real(6356752.314));
    bytes += record("SUB_NAME", "SITE");
    bytes += record("PARENT", "NONE");
    bytes += record("CREATED", "01012020");
    bytes += record("UPDATED", "01012020");
    bytes += record("S_LAT", real(nodes.south * seconds));
    bytes += record("N_LAT", real(north * seconds));
    bytes += record("E_LONG", real(-east * seconds));
    bytes += record("W_LONG", real(-nodes.west * seconds));
    bytes += record("LAT_INC", real(nodes.latitudeSpacing * seconds));
    bytes += record("LONG_INC", real(nodes.longitudeSpacing * seconds));
    bytes += record("GS_COUNT", littleEndian(count));
    for (int row = 0; row < nodes.rows; ++row) {
        for (int column = 0; column < nodes.columns; ++column) { // from the east
            bytes += real32(static_cast<float>(nodes.northwards + row * nodes.northStep));
            bytes += real32(static_cast<float>(nodes.westwards + column * nodes.westStep));
            bytes += real32(0.01F) + real32(0.01F);
        }
    }
    return bytes + record("END", QByteArray());
}

QByteArray geoTiffBytes(int valuesPerPixel, const QByteArray &metadata)
{
    constexpr quint16 shortType = 3;
    constexpr quint16 longType = 4;
    constexpr quint16 doubleType = 12;
    constexpr quint16 asciiType = 2;
    const quint16 tags = metadata.isEmpty() ? 14 : 15;
    constexpr quint32 headerSize = 8;
    const quint32 directorySize = 2U + tags * 12U + 4U;
    const quint32 scaleAt = headerSize + directorySize;
    const quint32 tieAt = scaleAt + 3 * 8;
    const quint32 keysAt = tieAt + 6 * 8;
    const quint32 bitsAt = keysAt + 4 * 8;
    const quint32 valuesAt = bitsAt + 8;
    const quint32 size = 9U * 4U * static_cast<quint32>(valuesPerPixel);
    const quint32 metadataAt = valuesAt + size;
    const auto one = [](quint16 value) { return littleEndian(value); };
    const QByteArray twoBits = one(32) + one(32);
    QByteArray bytes = QByteArray("II*\0", 4) + littleEndian(headerSize) + littleEndian(tags);
    bytes += tag(256, shortType, 1, one(3));
    bytes += tag(257, shortType, 1, one(3));
    bytes += tag(258, shortType, static_cast<quint32>(valuesPerPixel),
                 valuesPerPixel == 1 ? one(32) : twoBits);
    bytes += tag(259, shortType, 1, one(1)); // no compression
    bytes += tag(262, shortType, 1, one(1));
    bytes += tag(273, longType, 1, littleEndian(valuesAt));
    bytes += tag(277, shortType, 1, one(static_cast<quint16>(valuesPerPixel)));
    bytes += tag(278, shortType, 1, one(3));
    bytes += tag(279, longType, 1, littleEndian(size));
    bytes += tag(284, shortType, 1, one(1));
    bytes += tag(339, shortType, 1, one(3)); // real numbers
    bytes += tag(33550, doubleType, 3, littleEndian(scaleAt));
    bytes += tag(33922, doubleType, 6, littleEndian(tieAt));
    bytes += tag(34735, shortType, metadata.isEmpty() ? 12 : 16, littleEndian(keysAt));
    if (!metadata.isEmpty()) {
        bytes += tag(42112, asciiType, static_cast<quint32>(metadata.size()) + 1,
                     littleEndian(metadataAt));
    }
    bytes += littleEndian(quint32(0)); // no further directory
    bytes += real(1.0) + real(1.0) + real(0.0);
    // The pixel 0, 0 is that in the north-west.
    bytes += real(0.0) + real(0.0) + real(0.0) + real(5.0) + real(52.0) + real(0.0);
    const quint16 count = metadata.isEmpty() ? 2 : 3;
    const quint16 keys[] = {1,    1, 0, count, // geographic, points, GDA94
                            1024, 0, 1, 2,     1025, 0, 1, 2, 2048, 0, 1, 4283};
    for (const quint16 key : keys)
        bytes += one(key);
    bytes += QByteArray(8, '\0');
    for (quint32 value = 0; value < size / 4; ++value)
        bytes += real32(3.6F);
    if (!metadata.isEmpty())
        bytes += metadata + '\0';
    return bytes;
}

void ownResourceDirectory(const TemporaryHome &home)
{
    const QString share = home.path(QStringLiteral("proj/share"));
    const QDir shared(QFile::symLinkTarget(share));
    QFile::remove(share);
    QDir().mkpath(share);
    for (const QString &name : shared.entryList(QDir::Files))
        QFile::link(shared.filePath(name), QDir(share).filePath(name));
}

} // namespace KelStd::test
