#pragma once

#include <QtCore/QtGlobal>

/// The enumerations that the coordinate model, its texts and its files share.
///
/// The numbers are a contract: they stand in binary streams and are compared as numbers, and they
/// come in bands (every length unit lies below 100, say). Numbers that are not listed are free on
/// purpose; a stored number that is not listed is kept as the number that it is.
///
/// To add an enumerator: one line here and one row in the table of `text/` that names it
/// (CONTRIBUTING.md lists the files).
namespace KelStd {

/// The kind of value that a `Param` holds: it selects formatting, parsing and file form.
/// Bands: 0-12 general kinds, 100-105 coordinate components, 200-202 enumerations, 300 PROJ flags.
enum EValueType : qint32
{
    ValueType_None = 0,        ///< no value, or of an unknown kind
    ValueType_String = 1,      ///< a text
    ValueType_Int32 = 2,       ///< a whole number of 32 bits
    ValueType_Int64 = 3,       ///< a whole number of 64 bits
    ValueType_Double = 4,      ///< plain real number without unit
    ValueType_Boolean = 5,     ///< true or false
    ValueType_Distance = 6,    ///< in a length unit
    ValueType_Height = 7,      ///< in a length unit
    ValueType_Angle = 8,       ///< in an angle unit
    ValueType_Time = 9,        ///< not allowed in coordinate systems
    ValueType_TimeSpan = 10,   ///< not allowed in coordinate systems
    ValueType_Pressure = 11,   ///< in a pressure unit
    ValueType_Temprature = 12, ///< in a temperature unit; the name is the contract's

    ValueType_Longitude = 100,       ///< an angle with an east/west sense
    ValueType_Latitude = 101,        ///< an angle with a north/south sense
    ValueType_EarthHeight = 102,     ///< ellipsoidal height, in a length unit
    ValueType_X = 103,               ///< plane X (northing), in a length unit
    ValueType_Y = 104,               ///< plane Y (easting), in a length unit
    ValueType_ElevationHeight = 105, ///< plane-system height, in a length unit

    ValueType_LocationZeroType = 200,   ///< an `ELocationZeroType`
    ValueType_WhichHalfEarth = 201,     ///< an `EWhichHalfEarth`
    ValueType_EllipsoidDirection = 202, ///< an `EEllipsoidDirection`

    ValueType_Proj4_Param_Bool = 300 ///< a flag of a PROJ definition: present or absent
};

/// A unit of measure. Bands: 10-30 length, 100-104 pressure, 200-202 temperature, 300-301 angle.
enum EUnit : qint32
{
    Unit_None = 0, ///< no unit

    Unit_Meter = 10,      ///< metre
    Unit_MilliMeter = 11, ///< millimetre
    Unit_Foot = 20,       ///< international foot, 0.3048 m
    Unit_Yard = 21,       ///< international yard; a conversion factor only, it has no texts
    Unit_Inch = 22,       ///< international inch; a conversion factor only
    Unit_Mile = 23,       ///< international mile; a conversion factor only
    Unit_USFoot = 30,     ///< US survey foot, 1200/3937 m

    Unit_Bar = 100,      ///< bar
    Unit_Pascal = 101,   ///< pascal
    Unit_MilliBar = 102, ///< millibar
    Unit_MmHg = 103,     ///< millimetre of mercury
    Unit_InHg = 104,     ///< inch of mercury

    Unit_Celsius = 200,    ///< degree Celsius
    Unit_Fahrenheit = 201, ///< degree Fahrenheit
    Unit_Kelvin = 202,     ///< kelvin

    Unit_Degree = 300, ///< degree of arc
    Unit_Second = 301  ///< arc second
};

/// How a value is presented. Bands: 1-2 coordinate order, 20-24 angle styles, 30-33 time scales.
enum EFormat : qint32
{
    Format_None = 0,            ///< no style
    Format_NorthEastHeight = 1, ///< northing before easting
    Format_EastNorthHeight = 2, ///< easting before northing

    Format_DegreeMinuteSecond = 20, ///< degrees, minutes and seconds
    Format_Degree = 22,             ///< decimal degrees; 21 is free
    Format_Second = 23,             ///< arc seconds
    Format_Radian = 24,             ///< radians

    Format_UTC = 30,   ///< UTC
    Format_Local = 31, ///< local time
    Format_GPST = 32,  ///< GPS calendar time
    Format_GPSW = 33   ///< GPS week and seconds of week
};

/// In which kind of coordinates a coordinate system's user positions are given.
enum ELocationType : qint32
{
    LocationType_X_Y_ElevationHeight = 0, ///< plane: northing, easting, height
    LocationType_Lat_Long_EarthHeight = 1 ///< geographic: latitude, longitude, ellipsoidal height
};

/// The zero line from which a projection's plane coordinates count.
enum ELocationZeroType : qint32
{
    LocationZeroType_Equator_Zero = 0,         ///< the equator
    LocationZeroType_Central_Meridian_Zero = 1 ///< the central meridian
};

/// Half of the earth, by the letters N and S.
enum EWhichHalfEarth : qint32
{
    WhichHalfEarth_North = 0, ///< "N"
    WhichHalfEarth_South = 1  ///< "S"
};

/// The positive directions of the first, second and third axis of an ellipsoid's frame.
enum EEllipsoidDirection : qint32
{
    EllipsoidDirection_ENU = 0, ///< east, north, up
    EllipsoidDirection_WSU = 1, ///< west, south, up
    EllipsoidDirection_ESU = 2, ///< east, south, up
    EllipsoidDirection_WNU = 3  ///< west, north, up
};

/// The model of a datum transformation.
enum EEllipsoinTransformFunction : qint32
{
    EllipsoinTransformFunction_None = 0,  ///< no shift
    EllipsoinTransformFunction_Three = 1, ///< three translations
    EllipsoinTransformFunction_Seven = 2  ///< Helmert: translations, rotations, scale
};

/// The coordinates in which a datum transformation without parameters passes.
enum EEllipsoinTransition : qint32
{
    EllipsoinTransition_XYZ = 0, ///< cartesian
    EllipsoinTransition_BLH = 1  ///< latitude, longitude, height
};

/// The model of a planar transformation of projected coordinates.
enum EPlaneTransformFunction : qint32
{
    PlaneTransformFunction_None = 0, ///< no transformation
    PlaneTransformFunction_Four = 1  ///< four-parameter similarity
};

/// The model of a height fitting.
enum EElevationFittingFunction : qint32
{
    ElevationFittingFunction_None = 0,  ///< no fitting
    ElevationFittingFunction_Fixed = 1, ///< a constant offset
    ElevationFittingFunction_Plane = 2, ///< an offset and two slopes
    ElevationFittingFunction_Curve = 3  ///< a curved surface
};

} // namespace KelStd
