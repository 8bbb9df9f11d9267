#include <cli/positions/Columns.h>

#include <algorithm>
#include <limits>

namespace KelStd::cli {

namespace {

// PROJ takes a latitude beyond the pole in some conversions and gives numbers for it.
constexpr Quantity longitudes{"deg", 360.0};
constexpr Quantity latitudes{"deg", 90.0};
constexpr Quantity metres{"m", std::numeric_limits<double>::max()};

constexpr int angleWidth = 4;     // -179
constexpr int heightWidth = 5;    // 12345
constexpr int cartesianWidth = 8; // -6378137
constexpr int planeWidth = 8;     // 12345678

using L = Location;

const std::array<Column, columnCount> columnRows = {{
    {Frame::Wgs84LLH, "longitude", "wgs84_longitude", "longitude lon long lng", &longitudes,
     angleWidth, &L::get_WGS84_LLH_Long},
    {Frame::Wgs84LLH, "latitude", "wgs84_latitude", "latitude lat", &latitudes, angleWidth,
     &L::get_WGS84_LLH_Lat},
    {Frame::Wgs84LLH, "height", "wgs84_height", "height h ellipsoidal_height", &metres, heightWidth,
     &L::get_WGS84_LLH_Height},

    {Frame::Wgs84XYZ, "X", "wgs84_x", "x", &metres, cartesianWidth, &L::get_WGS84_XYZ_X},
    {Frame::Wgs84XYZ, "Y", "wgs84_y", "y", &metres, cartesianWidth, &L::get_WGS84_XYZ_Y},
    {Frame::Wgs84XYZ, "Z", "wgs84_z", "z", &metres, cartesianWidth, &L::get_WGS84_XYZ_Z},

    {Frame::LocalLLH, "longitude", "local_longitude", "longitude lon long lng", &longitudes,
     angleWidth, &L::get_Local_LLH_Long},
    {Frame::LocalLLH, "latitude", "local_latitude", "latitude lat", &latitudes, angleWidth,
     &L::get_Local_LLH_Lat},
    {Frame::LocalLLH, "height", "local_ellipsoidal_height", "height h ellipsoidal_height", &metres,
     heightWidth, &L::get_Local_LLH_Height},

    // "x" and "y" are not among the words: in some countries x is the northing, in others the
    // easting.
    {Frame::LocalNEH, "northing", "local_northing", "northing north n", &metres, planeWidth,
     &L::get_NEH_N},
    {Frame::LocalNEH, "easting", "local_easting", "easting east e", &metres, planeWidth,
     &L::get_NEH_E},
    {Frame::LocalNEH, "height", "local_height", "height h", &metres, heightWidth, &L::get_NEH_H},
}};

Pos fromNorthEastHeight(double northing, double easting, double height)
{
    return Pos::fromENU(easting, northing, height);
}

using ValueTypes = std::array<EValueType, componentsPerFrame>;
constexpr ValueTypes geographicTypes = {ValueType_Longitude, ValueType_Latitude,
                                        ValueType_EarthHeight};
constexpr ValueTypes cartesianTypes = {ValueType_Distance, ValueType_Distance, ValueType_Distance};
constexpr ValueTypes planeTypes = {ValueType_X, ValueType_Y, ValueType_ElevationHeight};

const std::array<FrameRow, frameCount> frameRows = {{
    {Frame::Wgs84LLH, "wgs84-llh", "WGS84 geographic", geographicTypes, &Pos::fromLongLatH,
     LocationBuilder::Frame::Wgs84Geographic},
    {Frame::Wgs84XYZ, "wgs84-xyz", "WGS84 cartesian", cartesianTypes, &Pos::fromXYZ,
     LocationBuilder::Frame::Wgs84Cartesian},
    {Frame::LocalLLH, "local-llh", "local geographic", geographicTypes, &Pos::fromLongLatH,
     LocationBuilder::Frame::LocalGeographic},
    {Frame::LocalNEH, "local-neh", "local projected", planeTypes, &fromNorthEastHeight,
     LocationBuilder::Frame::LocalProjected},
}};

} // namespace

const std::array<Column, columnCount> &columns()
{
    return columnRows;
}

const Column &columnOf(Frame frame, int component)
{
    const int index = static_cast<int>(frame) * componentsPerFrame + component;
    return columnRows[static_cast<std::size_t>(index)];
}

EValueType valueTypeOf(const Column &column)
{
    const auto index = static_cast<std::size_t>(&column - columnRows.data());
    return rowOf(column.frame).valueTypes[index % componentsPerFrame];
}

bool isAngle(const Column &column)
{
    const EValueType type = valueTypeOf(column);
    return type == ValueType_Longitude || type == ValueType_Latitude;
}

QString csvNameOf(const Column &column, const QString &unit)
{
    return QLatin1String(column.csvName) + QLatin1Char('_') + unit;
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

} // namespace KelStd::cli
