#include <KelStd/grid/ShiftGridFile.h>

#include <KelStd/grid/GridHeader.h>
#include <KelStd/grid/GridLayout.h>
#include <KelStd/grid/TiffHeaders.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>

namespace KelStd {

using kelstd_grid::TiffHeaders;
using kelstd_grid::TiffTag;

namespace {

// An NTv2 file is made of records: a name and a value of eight bytes each.
constexpr int recordSize = 16;
constexpr int headerRecords = 11; // of the file, and of each of its grids
constexpr int headerSize = headerRecords * recordSize;

// The records of the file's header.
constexpr int gridCountAt = 2;
constexpr int unitAt = 3;
constexpr int fromAt = 5;
constexpr int toAt = 6;
// Those of a grid's. Longitudes count westwards.
constexpr int southAt = 4;
constexpr int northAt = 5;
constexpr int eastAt = 6;
constexpr int westAt = 7;
constexpr int latitudeSpacingAt = 8;
constexpr int longitudeSpacingAt = 9;
constexpr int nodeCountAt = 10;

struct UnitRow
{
    const char *word;
    double perDegree;
};

constexpr UnitRow units[] = {{"SECONDS", 3600.0}, {"MINUTES", 60.0}, {"DEGREES", 1.0}};

const char *valueAt(const QByteArray &header, int record)
{
    return header.constData() + record * recordSize + recordSize / 2;
}

qint64 integerAt(const QByteArray &header, int record, bool isBigEndian)
{
    const char *const value = valueAt(header, record);
    return isBigEndian ? qFromBigEndian<qint32>(value) : qFromLittleEndian<qint32>(value);
}

double numberAt(const QByteArray &header, int record, bool isBigEndian)
{
    const char *const value = valueAt(header, record);
    return kelstd_grid::numberOf<double>(isBigEndian ? qFromBigEndian<quint64>(value)
                                                     : qFromLittleEndian<quint64>(value));
}

QString wordAt(const QByteArray &header, int record)
{
    return QString::fromLatin1(valueAt(header, record), recordSize / 2)
        .remove(QChar(QChar::Null))
        .trimmed();
}

bool isNtv2(const QByteArray &header)
{
    return header.startsWith("NUM_OREC") && header.mid(unitAt * recordSize, 7) == "GS_TYPE";
}

/// How many nodes lie from one border to the other; 0 where that is no number of nodes.
qint64 nodesBetween(double first, double last, double spacing)
{
    constexpr double mostNodes = 1e9;
    constexpr double tolerance = 0.01; // of a cell
    const double cells = (last - first) / spacing;
    if (!(cells >= 0.0) || cells > mostNodes || std::abs(cells - std::round(cells)) > tolerance)
        return 0;
    return static_cast<qint64>(std::round(cells)) + 1;
}

bool isOnTheEarth(const GridNodes &grid)
{
    return kelstd_grid::describesGrid(grid)
           && grid.latitudeOf(grid.rows - 1) <= 90.0 + grid.latitudeSpacing;
}

double firstOf(const TiffHeaders::Image &image, TiffTag tag, double otherwise)
{
    const QVector<double> values = image.value(static_cast<int>(tag));
    return values.isEmpty() ? otherwise : values.constFirst();
}

/// The value of one of the grid's keys, which have four numbers each: the first is the key and the
/// last its value. 0 where it is not there.
double geoKeyOf(const TiffHeaders::Image &image, int key)
{
    constexpr int keySize = 4;
    const QVector<double> keys = image.value(static_cast<int>(TiffTag::GeoKeys));
    for (int at = keySize; at + keySize <= keys.size(); at += keySize) {
        if (keys.at(at) == key)
            return keys.at(at + keySize - 1);
    }
    return 0.0;
}

/// Whether positions are those of pixels' centres.
bool isPixelPoint(const TiffHeaders::Image &image)
{
    constexpr int rasterType = 1025;
    constexpr double point = 2.0;
    return geoKeyOf(image, rasterType) == point;
}

/// "EPSG:7844"; empty for what is no code.
QString epsgCode(double number)
{
    constexpr double first = 1024.0;
    constexpr double last = 32766.0; // 32767 is a system that the keys describe themselves
    return number >= first && number <= last ? QStringLiteral("EPSG:%1").arg(number, 0, 'f', 0)
                                             : QString();
}

/// An item of GDAL's metadata that holds a code of EPSG, as PROJ's own GeoTIFF grids have it.
QString epsgItemOf(const TiffHeaders::Image &image, const char *name)
{
    QByteArray text;
    for (const double byte : image.value(static_cast<int>(TiffTag::GdalMetadata)))
        text += static_cast<char>(static_cast<unsigned char>(byte));
    const QRegularExpression item(
        QStringLiteral("<Item name=\"%1\"[^>]*>\\s*([0-9]{1,6})\\s*</Item>")
            .arg(QLatin1String(name)));
    const QRegularExpressionMatch match = item.match(QString::fromUtf8(text));
    return match.hasMatch() ? epsgCode(match.captured(1).toDouble()) : QString();
}

/// The nodes of an image, the centres of its pixels; no rows and columns where it says nothing of
/// their places.
GridNodes nodesOf(const TiffHeaders::Image &image)
{
    constexpr double mostNodes = 1e9;
    const QVector<double> scale = image.value(static_cast<int>(TiffTag::PixelScale));
    const QVector<double> tie = image.value(static_cast<int>(TiffTag::TiePoint));
    const double columns = firstOf(image, TiffTag::Width, 0.0);
    const double rows = firstOf(image, TiffTag::Height, 0.0);
    if (scale.size() < 2 || tie.size() < 5 || !(rows >= 1.0 && rows <= mostNodes)
        || !(columns >= 1.0 && columns <= mostNodes))
        return {};
    const double half = isPixelPoint(image) ? 0.0 : 0.5;
    GridNodes nodes;
    nodes.rows = static_cast<qint64>(rows);
    nodes.columns = static_cast<qint64>(columns);
    nodes.longitudeSpacing = scale.at(0);
    nodes.latitudeSpacing = scale.at(1);
    nodes.longitude = tie.at(3) + (half - tie.at(0)) * scale.at(0);
    const double north = tie.at(4) - (half - tie.at(1)) * scale.at(1);
    nodes.latitude = north - static_cast<double>(nodes.rows - 1) * scale.at(1);
    return nodes;
}

/// Whether the values that a pair of tags places lie within the file.
bool holdsValues(const TiffHeaders::Image &image, TiffTag offsets, TiffTag sizes, qint64 fileSize)
{
    const QVector<double> at = image.value(static_cast<int>(offsets));
    const QVector<double> size = image.value(static_cast<int>(sizes));
    if (at.size() != size.size())
        return false;
    for (int i = 0; i < at.size(); ++i) {
        // A piece without bytes has no values; GDAL writes such.
        if (at.at(i) < 0.0 || size.at(i) < 0.0
            || at.at(i) + size.at(i) > static_cast<double>(fileSize))
            return false;
    }
    return true;
}

} // namespace

QString ShiftGridFile::formatName(Format format)
{
    switch (format) {
    case Format::Ntv2: return QStringLiteral("NTv2");
    case Format::GeoTiff: return QStringLiteral("GeoTIFF");
    case Format::None: break;
    }
    return {};
}

GridFailure ShiftGridFile::open(const QString &fileName)
{
    *this = ShiftGridFile();
    const QFileInfo info(fileName);
    if (info.isDir())
        return {GridFailureKind::NotAFile, QObject::tr("it is a directory")};
    // A pipe would let the program wait, and a device may never end.
    if (info.exists() && !info.isFile())
        return {GridFailureKind::NotAFile, QObject::tr("it is no regular file")};
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {GridFailureKind::Unreadable, file.errorString()};
    m_size = file.size();
    const QByteArray start = file.read(headerSize);
    GridFailure failure;
    if (TiffHeaders::isTiff(start)) {
        m_format = Format::GeoTiff;
        failure = readGeoTiff(file);
    } else if (isNtv2(start)) {
        m_format = Format::Ntv2;
        failure = readNtv2(file);
    } else {
        failure = {GridFailureKind::NoGrid,
                   QObject::tr("it is neither an NTv2 nor a GeoTIFF file by its first bytes")};
    }
    if (failure)
        m_grids.clear();
    return failure;
}

GridFailure ShiftGridFile::readNtv2(QFile &file)
{
    const GridFailure cutShort = {GridFailureKind::CutShort,
                                  QObject::tr("it has fewer values than its header promises")};
    constexpr qint64 nodeSize = 16;
    constexpr qint64 maxGrids = 100000;
    if (!file.seek(0))
        return {GridFailureKind::Unreadable, file.errorString()};
    const QByteArray header = file.read(headerSize);
    if (header.size() != headerSize)
        return {GridFailureKind::TooShort, QObject::tr("it is too short for an NTv2 header")};
    const bool isBigEndian = integerAt(header, 0, true) == headerRecords;
    const qint64 count = integerAt(header, gridCountAt, isBigEndian);
    double perDegree = 0.0;
    for (const UnitRow &unit : units) {
        if (wordAt(header, unitAt) == QLatin1String(unit.word))
            perDegree = unit.perDegree;
    }
    const GridFailure noGrid = {GridFailureKind::NoGrid,
                                QObject::tr("it is no NTv2 grid: its header has no grids, rows, "
                                            "columns, spacing or place on the earth")};
    if (perDegree == 0.0 || count < 1 || count > maxGrids)
        return noGrid;
    m_from = wordAt(header, fromAt);
    m_to = wordAt(header, toAt);
    m_valuesPerNode = static_cast<int>(nodeSize / kelstd_grid::valueSize);
    for (qint64 grid = 0; grid < count; ++grid) {
        const QByteArray part = file.read(headerSize);
        if (part.size() != headerSize)
            return cutShort;
        const auto degrees = [&](int record) {
            return numberAt(part, record, isBigEndian) / perDegree;
        };
        GridNodes nodes;
        nodes.latitude = degrees(southAt);
        nodes.longitude = -degrees(westAt);
        nodes.latitudeSpacing = degrees(latitudeSpacingAt);
        nodes.longitudeSpacing = degrees(longitudeSpacingAt);
        nodes.rows = nodesBetween(nodes.latitude, degrees(northAt), nodes.latitudeSpacing);
        nodes.columns = nodesBetween(nodes.longitude, -degrees(eastAt), nodes.longitudeSpacing);
        const qint64 nodeCount = integerAt(part, nodeCountAt, isBigEndian);
        if (!isOnTheEarth(nodes) || nodes.rows > nodeCount / nodes.columns
            || nodes.count() != nodeCount)
            return noGrid;
        if (file.pos() + nodeCount * nodeSize > m_size)
            return cutShort;
        if (!file.seek(file.pos() + nodeCount * nodeSize))
            return {GridFailureKind::Unreadable, file.errorString()};
        m_grids += nodes;
    }
    return {};
}

GridFailure ShiftGridFile::readGeoTiff(QFile &file)
{
    const auto images = TiffHeaders::read(file);
    if (!images)
        return {GridFailureKind::CutShort, QObject::tr("its headers lie beyond its end")};
    for (const TiffHeaders::Image &image : *images) {
        // Overviews of a grid are not grids.
        if (firstOf(image, TiffTag::SubfileType, 0.0) != 0.0)
            continue;
        const GridNodes nodes = nodesOf(image);
        if (!isOnTheEarth(nodes)) {
            return {GridFailureKind::NoGrid,
                    QObject::tr("it is no GeoTIFF grid: its header has no rows, columns, spacing "
                                "or place on the earth")};
        }
        if (!holdsValues(image, TiffTag::StripOffsets, TiffTag::StripSizes, m_size)
            || !holdsValues(image, TiffTag::TileOffsets, TiffTag::TileSizes, m_size)) {
            return {GridFailureKind::CutShort,
                    QObject::tr("it has fewer values than its header promises")};
        }
        if (m_grids.isEmpty()) {
            constexpr double maxValues = 1000.0;
            const double values = firstOf(image, TiffTag::ValuesPerPixel, 1.0);
            m_valuesPerNode = values >= 1.0 && values <= maxValues ? static_cast<int>(values) : 0;
            constexpr int geographicType = 2048;
            m_from = epsgItemOf(image, "source_crs_epsg_code");
            if (m_from.isEmpty())
                m_from = epsgCode(geoKeyOf(image, geographicType));
            m_to = epsgItemOf(image, "target_crs_epsg_code");
        }
        m_grids += nodes;
    }
    if (m_grids.isEmpty())
        return {GridFailureKind::NoGrid, QObject::tr("it holds no grid")};
    return {};
}

} // namespace KelStd
