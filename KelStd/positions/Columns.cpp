#include <KelStd/positions/Columns.h>

#include <KelStd/coord/AxisDirections.h>

#include <algorithm>
#include <limits>

namespace KelStd::positions {

namespace {

// PROJ takes a latitude beyond the pole in some conversions and gives numbers for it.
constexpr double maxLongitude = 360.0;
constexpr double maxLatitude = 90.0;
constexpr double anyLength = std::numeric_limits<double>::max();

constexpr int angleWidth = 4;     // -179
constexpr int heightWidth = 5;    // 12345
constexpr int cartesianWidth = 8; // -6378137
constexpr int planeWidth = 8;     // 12345678

using L = Location;

const std::array<Column, columnCount> columnRows = {{
    {Frame::Wgs84Geographic, 0, ValueType_Longitude, "longitude", "wgs84_longitude",
     "longitude lon long lng", "deg", maxLongitude, angleWidth, &L::get_WGS84_LLH_Long},
    {Frame::Wgs84Geographic, 1, ValueType_Latitude, "latitude", "wgs84_latitude", "latitude lat",
     "deg", maxLatitude, angleWidth, &L::get_WGS84_LLH_Lat},
    {Frame::Wgs84Geographic, 2, ValueType_EarthHeight, "height", "wgs84_height",
     "height h ellipsoidal_height", "m", anyLength, heightWidth, &L::get_WGS84_LLH_Height},

    {Frame::Wgs84Cartesian, 0, ValueType_Distance, "X", "wgs84_x", "x", "m", anyLength,
     cartesianWidth, &L::get_WGS84_XYZ_X},
    {Frame::Wgs84Cartesian, 1, ValueType_Distance, "Y", "wgs84_y", "y", "m", anyLength,
     cartesianWidth, &L::get_WGS84_XYZ_Y},
    {Frame::Wgs84Cartesian, 2, ValueType_Distance, "Z", "wgs84_z", "z", "m", anyLength,
     cartesianWidth, &L::get_WGS84_XYZ_Z},

    {Frame::LocalGeographic, 0, ValueType_Longitude, "longitude", "local_longitude",
     "longitude lon long lng", "deg", maxLongitude, angleWidth, &L::get_Local_LLH_Long},
    {Frame::LocalGeographic, 1, ValueType_Latitude, "latitude", "local_latitude", "latitude lat",
     "deg", maxLatitude, angleWidth, &L::get_Local_LLH_Lat},
    {Frame::LocalGeographic, 2, ValueType_EarthHeight, "height", "local_ellipsoidal_height",
     "height h ellipsoidal_height", "m", anyLength, heightWidth, &L::get_Local_LLH_Height},

    // "x" and "y" are not among the words: in some countries x is the northing, in others the
    // easting.
    {Frame::LocalProjected, 0, ValueType_X, "northing", "local_northing", "northing north n", "m",
     anyLength, planeWidth, &L::get_NEH_N},
    {Frame::LocalProjected, 1, ValueType_Y, "easting", "local_easting", "easting east e", "m",
     anyLength, planeWidth, &L::get_NEH_E},
    {Frame::LocalProjected, 2, ValueType_ElevationHeight, "height", "local_height",
     "height h elevation elev z", "m", anyLength, heightWidth, &L::get_NEH_H},
}};

std::array<Column, componentsPerFrame> makeSiteColumns()
{
    constexpr const char *names[] = {"site_northing", "site_easting", "site_height"};
    std::array<Column, componentsPerFrame> made{};
    for (int i = 0; i < componentsPerFrame; ++i) {
        Column column = columnOf(Frame::LocalProjected, i);
        column.csvName = names[i];
        made[static_cast<std::size_t>(i)] = column;
    }
    return made;
}

Pos fromNorthEastHeight(double northing, double easting, double height)
{
    return Pos::fromENU(easting, northing, height);
}

const std::array<FrameRow, frameCount> frameRows = {{
    {Frame::Wgs84Geographic, "wgs84-llh", "WGS84 geographic", &Pos::fromLongLatH},
    {Frame::Wgs84Cartesian, "wgs84-xyz", "WGS84 cartesian", &Pos::fromXYZ},
    {Frame::LocalGeographic, "local-llh", "local geographic", &Pos::fromLongLatH},
    {Frame::LocalProjected, "local-neh", "local projected", &fromNorthEastHeight},
}};

} // namespace

const std::array<Column, columnCount> &columns()
{
    return columnRows;
}

const std::array<Column, componentsPerFrame> &siteColumns()
{
    static const std::array<Column, componentsPerFrame> made = makeSiteColumns();
    return made;
}

const Column &columnOf(Frame frame, int component)
{
    const int index = static_cast<int>(frame) * componentsPerFrame + component;
    return columnRows[static_cast<std::size_t>(index)];
}

bool isAngle(const Column &column)
{
    return column.valueType == ValueType_Longitude || column.valueType == ValueType_Latitude;
}

bool countsBackwards(const Column &column, EEllipsoidDirection localAxes)
{
    if (column.frame != Frame::LocalGeographic)
        return false;
    return (column.valueType == ValueType_Longitude && countsWest(localAxes))
           || (column.valueType == ValueType_Latitude && countsSouth(localAxes));
}

bool isPlane(const Column &column)
{
    return column.valueType == ValueType_X || column.valueType == ValueType_Y;
}

QString csvNameOf(const Column &column, const QString &unit)
{
    return QLatin1String(column.csvName) + QLatin1Char('_')
           + QString(unit).replace(QLatin1Char('-'), QLatin1Char('_'));
}

QString heightReference(const QString &geoidModel)
{
    return geoidModel.isEmpty() ? QStringLiteral("ellipsoid")
                                : QStringLiteral("geoid ") + geoidModel;
}

const std::array<FrameRow, frameCount> &frames()
{
    return frameRows;
}

const FrameRow &rowOf(Frame frame)
{
    return frameRows[static_cast<std::size_t>(frame)];
}

const FrameRow *findFrame(const QString &option)
{
    const auto row = std::find_if(frameRows.begin(), frameRows.end(), [&](const FrameRow &r) {
        return QLatin1String(r.option) == option;
    });
    return row != frameRows.end() ? &*row : nullptr;
}

} // namespace KelStd::positions
