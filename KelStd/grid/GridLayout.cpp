#include <KelStd/grid/GridLayout.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelstd_grid {

using KelStd::GridFailureKind;
using KelStd::GridNodes;

namespace {

constexpr char southFirst = 1;

/// Whether the last of `count` nodes stays below the bound [deg]. A grid may have a node on both
/// sides of its seam, or half a cell beyond a pole: a spacing is forgiven, though not more than a
/// degree.
bool endsBelow(double first, double spacing, qint64 count, double bound)
{
    return spacing <= 360.0
           && first + static_cast<double>(count - 1) * spacing <= bound + std::min(spacing, 1.0);
}

} // namespace

GridNodes nodesOf(const GridLayout &layout, const char *header)
{
    const auto degrees = [&](int at) {
        return numberOf<double>(bitsOf<quint64>(layout, header + at));
    };
    const auto count = [&](int at) { return bitsOf<qint32>(layout, header + at); };
    return {degrees(layout.latitudeAt),
            degrees(layout.longitudeAt),
            degrees(layout.latitudeSpacingAt),
            degrees(layout.longitudeSpacingAt),
            count(layout.rowsAt),
            count(layout.columnsAt)};
}

bool isReversed(const GridLayout &layout, const char *header)
{
    return layout.rowOrderAt >= 0 && header[layout.rowOrderAt] != southFirst;
}

bool isSpacing(double degrees)
{
    // A decimetre on the ground. Where nodes are so close that rounding a longitude moves it across
    // a cell, PROJ looks for a node beside its grid and ends the process.
    constexpr double minSpacing = 1e-6;
    return degrees >= minSpacing && std::isfinite(degrees);
}

bool describesGrid(const GridNodes &nodes)
{
    // NaN fails each comparison.
    return nodes.rows >= 1 && nodes.columns >= 1 && std::abs(nodes.latitude) <= 90.0
           && std::abs(nodes.longitude) <= 360.0 && isSpacing(nodes.latitudeSpacing)
           && isSpacing(nodes.longitudeSpacing);
}

GridFailureKind faultOf(const GridLayout &layout, const GridNodes &nodes, qint64 fileSize)
{
    constexpr qint64 maxNodes = std::numeric_limits<qint32>::max(); // PROJ counts them in 32 bits
    if (!describesGrid(nodes))
        return GridFailureKind::NoGrid;
    if ((fileSize - layout.headerSize) / valueSize < nodes.count())
        return GridFailureKind::CutShort;
    if (layout.endsWithValues && fileSize != layout.headerSize + nodes.count() * valueSize)
        return GridFailureKind::TooLong;
    if (!endsBelow(nodes.latitude, nodes.latitudeSpacing, nodes.rows, 90.0)
        || !endsBelow(0.0, nodes.longitudeSpacing, nodes.columns, 360.0))
        return GridFailureKind::OffTheEarth;
    if (nodes.count() > maxNodes)
        return GridFailureKind::TooManyNodes;
    return GridFailureKind::None;
}

bool isNamedAs(const GridLayout &layout, const QString &name)
{
    return QFileInfo(name).suffix().compare(QLatin1String(layout.suffix), Qt::CaseInsensitive) == 0;
}

} // namespace kelstd_grid
