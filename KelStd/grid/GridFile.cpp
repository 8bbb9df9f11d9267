#include <KelStd/grid/GridFile.h>

#include <KelStd/grid/GridLayout.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>

#include <algorithm>
#include <cmath>

namespace KelStd {

using kelstd_grid::GridLayout;
using kelstd_grid::valueSize;

namespace {

constexpr qint64 pieceSize = 1 << 16;

const GridLayout &layoutOf(GridFile::Format format)
{
    return format == GridFile::Format::Ggf ? kelstd_grid::ggfLayout : kelstd_grid::gtxLayout;
}

/// TIFF and BigTIFF, each in both orders of bytes. Neither begins a GTX file: read as its latitude
/// these bytes are beyond every pole.
bool beginsLikeTiff(const QByteArray &bytes)
{
    constexpr int magicSize = 4;
    const QByteArray magic = bytes.left(magicSize);
    return magic == QByteArray("II*\0", magicSize) || magic == QByteArray("MM\0*", magicSize)
           || magic == QByteArray("II+\0", magicSize) || magic == QByteArray("MM\0+", magicSize);
}

QString onlyForProjText(const QString &fileName)
{
    if (GridFile::isGgfName(fileName))
        return QObject::tr("it is a GeoTIFF file by its first bytes, with the name of a GGF grid");
    if (GridFile::isGtxName(fileName)) {
        return QObject::tr("it is a GeoTIFF file by its first bytes, which PROJ reads only under "
                           "another name than that of a GTX grid");
    }
    return QObject::tr("it is a GeoTIFF grid, which only PROJ reads");
}

bool isMissing(double value)
{
    constexpr float mark = -88.8888F;            // VDatum's, as GTX has it
    constexpr double largestSeparation = 1000.0; // [m]; PROJ takes what is beyond for a mark
    return value == static_cast<double>(mark) || !(std::abs(value) <= largestSeparation);
}

} // namespace

QString GridFile::formatName(Format format)
{
    switch (format) {
    case Format::Ggf: return QStringLiteral("GGF");
    case Format::GeoTiff: return QStringLiteral("GeoTIFF");
    case Format::Gtx: break;
    }
    return QStringLiteral("GTX");
}

bool GridFile::isGgfName(const QString &fileName)
{
    return kelstd_grid::isNamedAs(kelstd_grid::ggfLayout, fileName);
}

bool GridFile::isGtxName(const QString &fileName)
{
    return kelstd_grid::isNamedAs(kelstd_grid::gtxLayout, fileName);
}

GridFailure GridFile::open(const QString &fileName)
{
    m_file.close();
    m_nodes = {};
    m_format = isGgfName(fileName) ? Format::Ggf : Format::Gtx;
    const QFileInfo info(fileName);
    if (info.isDir())
        return {GridFailureKind::NotAFile, QObject::tr("it is a directory")};
    // A pipe would let the program wait, and a device may never end.
    if (info.exists() && !info.isFile())
        return {GridFailureKind::NotAFile, QObject::tr("it is no regular file")};
    m_file.setFileName(fileName);
    if (!m_file.open(QIODevice::ReadOnly))
        return {GridFailureKind::Unreadable, m_file.errorString()};
    GridFailure failure = readHeader();
    if (failure) {
        m_file.close();
        m_nodes = {};
    }
    return failure;
}

GridFailure GridFile::readHeader()
{
    const GridLayout &layout = layoutOf(m_format);
    const QByteArray header = m_file.read(layout.headerSize);
    const bool isWhole = header.size() == layout.headerSize;
    if (isWhole)
        m_nodes = kelstd_grid::nodesOf(layout, header.constData());
    if (isWhole && kelstd_grid::describesGrid(m_nodes)) {
        m_isReversed = kelstd_grid::isReversed(layout, header.constData());
        return {};
    }
    const QString expected = formatName(m_format);
    if (beginsLikeTiff(header)) {
        m_format = Format::GeoTiff;
        return {GridFailureKind::OnlyForProj, onlyForProjText(m_file.fileName())};
    }
    if (!isWhole) {
        return {GridFailureKind::TooShort, QObject::tr("its %1 bytes are too short for a %2 header")
                                               .arg(m_file.size())
                                               .arg(expected)};
    }
    return {GridFailureKind::NoGrid, QObject::tr("it is no %1 grid: its header has no rows, "
                                                 "columns, spacing or place on the earth")
                                         .arg(expected)};
}

GridFailure GridFile::completeness() const
{
    const GridLayout &layout = layoutOf(m_format);
    const GridFailureKind kind = kelstd_grid::faultOf(layout, m_nodes, m_file.size());
    switch (kind) {
    case GridFailureKind::None: return {};
    case GridFailureKind::CutShort:
        return {kind, QObject::tr("it is cut short: of %1 values only %2 are there")
                          .arg(m_nodes.count())
                          .arg((m_file.size() - layout.headerSize) / valueSize)};
    case GridFailureKind::TooLong:
        // Its values have another size, or its rows and columns are others than it says.
        return {kind, QObject::tr("it has %1 bytes, but %2 rows of %3 values take %4")
                          .arg(m_file.size())
                          .arg(m_nodes.rows)
                          .arg(m_nodes.columns)
                          .arg(layout.headerSize + m_nodes.count() * valueSize)};
    case GridFailureKind::OffTheEarth:
        return {kind, QObject::tr("its header leads beyond the pole or around the earth: %1 rows "
                                  "every %2 deg from latitude %3, %4 columns every %5 deg")
                          .arg(m_nodes.rows)
                          .arg(m_nodes.latitudeSpacing)
                          .arg(m_nodes.latitude)
                          .arg(m_nodes.columns)
                          .arg(m_nodes.longitudeSpacing)};
    case GridFailureKind::TooManyNodes:
        return {kind, QObject::tr("its %1 values are more than PROJ reads").arg(m_nodes.count())};
    default: break;
    }
    return {GridFailureKind::NoGrid, QObject::tr("no grid is open")};
}

bool GridFile::endsInZeros()
{
    constexpr qint64 smallestBlock = 512; // of a disk
    const qint64 size = m_nodes.count() * valueSize;
    qint64 left = m_nodes.count() / 4 * valueSize;
    if (left < smallestBlock || !m_file.seek(layoutOf(m_format).headerSize + size - left))
        return false;
    while (left > 0) {
        const QByteArray piece = m_file.read(std::min(pieceSize, left));
        if (piece.isEmpty() || piece.count('\0') != piece.size())
            return false;
        left -= piece.size();
    }
    return true;
}

void GridFile::take(double value, qint64 index, Values &values) const
{
    if (isMissing(value)) {
        ++values.missing;
        return;
    }
    const qint64 stored = index / m_nodes.columns;
    const qint64 row = m_isReversed ? m_nodes.rows - 1 - stored : stored;
    const Node node{value, row, index % m_nodes.columns};
    if (values.lowest.row < 0 || value < values.lowest.value)
        values.lowest = node;
    if (values.highest.row < 0 || value > values.highest.value)
        values.highest = node;
}

GridFailure GridFile::readValues(Values &values)
{
    values = {};
    if (GridFailure failure = completeness())
        return failure;
    const GridLayout &layout = layoutOf(m_format);
    const qint64 count = m_nodes.count();
    bool isReadable = m_file.seek(layout.headerSize);
    for (qint64 index = 0; isReadable && index < count;) {
        const QByteArray piece = m_file.read(std::min(pieceSize, (count - index) * valueSize));
        isReadable = !piece.isEmpty() && piece.size() % valueSize == 0;
        for (int at = 0; isReadable && at < piece.size(); at += static_cast<int>(valueSize)) {
            const auto bits = kelstd_grid::bitsOf<quint32>(layout, piece.constData() + at);
            take(static_cast<double>(kelstd_grid::numberOf<float>(bits)), index++, values);
        }
    }
    if (!isReadable)
        return {GridFailureKind::Unreadable, QObject::tr("it cannot be read to its end")};
    return {};
}

} // namespace KelStd
