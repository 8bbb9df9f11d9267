#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QtGlobal>

#include <cstddef>

/// One row for each enumerator, which every operation of this folder and the file format read. To
/// add an enumerator, add its row, keeping the order of the numbers.
namespace KelStd {

/// The two words of an enumerator, each null where it has none.
template <typename Enumeration>
struct WordRow
{
    Enumeration value;
    const char *fileWord;
    const char *description; ///< source text, translated in the context "QObject"
};

/// How the values of an `EValueType` are treated: the kinds that share a treatment share a row
/// entry here.
enum class ValueKind
{
    AsVariant, ///< whatever text the variant itself gives
    Text,
    Int32,
    Int64,
    Number,
    Boolean,
    Length,
    Angle,
    Longitude,
    Latitude,
    Time,
    TimeSpan,
    Pressure,
    Temperature,
    LocationZeroType,
    WhichHalfEarth,
    EllipsoidDirection,
    ProjFlag
};

struct ValueTypeRow : WordRow<EValueType>
{
    ValueKind kind;
};

struct UnitRow : WordRow<EUnit>
{
    const char *symbol;   ///< source text of a plain symbol, translated; null for none
    const char *projWord; ///< null: PROJ definitions cannot have this unit
    double metresPerUnit; ///< 0: not a length unit
};

// The rows are in ascending order of the numbers.
//
// Each text that is translated stands in a QT_TRANSLATE_NOOP of its own: Qt's lupdate, which
// extracts the texts for the translators, does not look behind other macros.

/// The row of a file word that is its own description.
template <typename Enumeration>
constexpr WordRow<Enumeration> sameWord(Enumeration value, const char *text)
{
    return {value, text, text};
}

inline constexpr ValueTypeRow valueTypeRows[] = {
    {sameWord(ValueType_None, QT_TRANSLATE_NOOP("QObject", "None")), ValueKind::AsVariant},
    {sameWord(ValueType_String, QT_TRANSLATE_NOOP("QObject", "String")), ValueKind::Text},
    {sameWord(ValueType_Int32, QT_TRANSLATE_NOOP("QObject", "Int32")), ValueKind::Int32},
    {sameWord(ValueType_Int64, QT_TRANSLATE_NOOP("QObject", "Int64")), ValueKind::Int64},
    {sameWord(ValueType_Double, QT_TRANSLATE_NOOP("QObject", "Double")), ValueKind::Number},
    {sameWord(ValueType_Boolean, QT_TRANSLATE_NOOP("QObject", "Boolean")), ValueKind::Boolean},
    {sameWord(ValueType_Distance, QT_TRANSLATE_NOOP("QObject", "Distance")), ValueKind::Length},
    {sameWord(ValueType_Height, QT_TRANSLATE_NOOP("QObject", "Height")), ValueKind::Length},
    {sameWord(ValueType_Angle, QT_TRANSLATE_NOOP("QObject", "Angle")), ValueKind::Angle},
    // The interval has a file word and the instant has none; describing either is refused.
    {{ValueType_Time, nullptr, nullptr}, ValueKind::Time},
    {{ValueType_TimeSpan, "TimeSpan", nullptr}, ValueKind::TimeSpan},
    {sameWord(ValueType_Pressure, QT_TRANSLATE_NOOP("QObject", "Pressure")), ValueKind::Pressure},
    {sameWord(ValueType_Temprature, QT_TRANSLATE_NOOP("QObject", "Temprature")),
     ValueKind::Temperature},
    {sameWord(ValueType_Longitude, QT_TRANSLATE_NOOP("QObject", "Longitude")),
     ValueKind::Longitude},
    {sameWord(ValueType_Latitude, QT_TRANSLATE_NOOP("QObject", "Latitude")), ValueKind::Latitude},
    {sameWord(ValueType_EarthHeight, QT_TRANSLATE_NOOP("QObject", "EarthHeight")),
     ValueKind::Length},
    {sameWord(ValueType_X, QT_TRANSLATE_NOOP("QObject", "X")), ValueKind::Length},
    {sameWord(ValueType_Y, QT_TRANSLATE_NOOP("QObject", "Y")), ValueKind::Length},
    {sameWord(ValueType_ElevationHeight, QT_TRANSLATE_NOOP("QObject", "ElevationHeight")),
     ValueKind::Length},
    {sameWord(ValueType_LocationZeroType, QT_TRANSLATE_NOOP("QObject", "LocationZeroType")),
     ValueKind::LocationZeroType},
    {sameWord(ValueType_WhichHalfEarth, QT_TRANSLATE_NOOP("QObject", "WhichHalfEarth")),
     ValueKind::WhichHalfEarth},
    {sameWord(ValueType_EllipsoidDirection, QT_TRANSLATE_NOOP("QObject", "EllipsoidDirection")),
     ValueKind::EllipsoidDirection},
    {sameWord(ValueType_Proj4_Param_Bool, QT_TRANSLATE_NOOP("QObject", "Proj4_Param_Bool")),
     ValueKind::ProjFlag},
};

/// The US survey foot is 1200/3937 m; international units as fixed in 1959. "par", "in" and
/// "us-in" are this system's own words and stay. The four units with a special symbol have no plain
/// one: see `CoordStringHelper::Unit_to_String`.
inline constexpr UnitRow unitRows[] = {
    {{Unit_None, "None", nullptr}, nullptr, nullptr, 0.0},
    {{Unit_Meter, "Meter", QT_TRANSLATE_NOOP("QObject", "meter")},
     QT_TRANSLATE_NOOP("QObject", "m"),
     "m",
     1.0},
    {{Unit_MilliMeter, "Milli Meter", QT_TRANSLATE_NOOP("QObject", "milli meter")},
     QT_TRANSLATE_NOOP("QObject", "mm"),
     nullptr,
     0.001},
    {sameWord(Unit_Foot, QT_TRANSLATE_NOOP("QObject", "Foot")), QT_TRANSLATE_NOOP("QObject", "ft"),
     "in", 0.3048},
    {{Unit_Yard, nullptr, nullptr}, nullptr, nullptr, 0.9144},
    {{Unit_Inch, nullptr, nullptr}, nullptr, nullptr, 0.0254},
    {{Unit_Mile, nullptr, nullptr}, nullptr, nullptr, 1609.344},
    {sameWord(Unit_USFoot, QT_TRANSLATE_NOOP("QObject", "US Foot")),
     QT_TRANSLATE_NOOP("QObject", "U.S ft"), "us-in", 0.3048006096012192},
    {sameWord(Unit_Bar, QT_TRANSLATE_NOOP("QObject", "bar")), QT_TRANSLATE_NOOP("QObject", "bar"),
     nullptr, 0.0},
    {{Unit_Pascal, "Pa", QT_TRANSLATE_NOOP("QObject", "Pascal")},
     QT_TRANSLATE_NOOP("QObject", "par"),
     nullptr,
     0.0},
    {{Unit_MilliBar, "mbar", QT_TRANSLATE_NOOP("QObject", "milli bar")},
     QT_TRANSLATE_NOOP("QObject", "mbar"),
     nullptr,
     0.0},
    {{Unit_MmHg, "mmHg", QT_TRANSLATE_NOOP("QObject", "mm Hg")},
     QT_TRANSLATE_NOOP("QObject", "mmHg"),
     nullptr,
     0.0},
    {{Unit_InHg, "inHg", QT_TRANSLATE_NOOP("QObject", "inch Hg")},
     QT_TRANSLATE_NOOP("QObject", "inHg"),
     nullptr,
     0.0},
    {sameWord(Unit_Celsius, QT_TRANSLATE_NOOP("QObject", "Celsius")), nullptr, nullptr, 0.0},
    {sameWord(Unit_Fahrenheit, QT_TRANSLATE_NOOP("QObject", "Fahrenheit")), nullptr, nullptr, 0.0},
    {sameWord(Unit_Kelvin, QT_TRANSLATE_NOOP("QObject", "Kelvin")),
     QT_TRANSLATE_NOOP("QObject", "K"), nullptr, 0.0},
    {sameWord(Unit_Degree, QT_TRANSLATE_NOOP("QObject", "Degree")), nullptr, nullptr, 0.0},
    {sameWord(Unit_Second, QT_TRANSLATE_NOOP("QObject", "Second")), nullptr, nullptr, 0.0},
};

inline constexpr WordRow<EFormat> formatRows[] = {
    {Format_None, "None", nullptr},
    sameWord(Format_NorthEastHeight, QT_TRANSLATE_NOOP("QObject", "North East Height")),
    sameWord(Format_EastNorthHeight, QT_TRANSLATE_NOOP("QObject", "East North Height")),
    sameWord(Format_DegreeMinuteSecond, QT_TRANSLATE_NOOP("QObject", "Degree Minute Second")),
    sameWord(Format_Degree, QT_TRANSLATE_NOOP("QObject", "Degree")),
    sameWord(Format_Second, QT_TRANSLATE_NOOP("QObject", "Second")),
    sameWord(Format_Radian, QT_TRANSLATE_NOOP("QObject", "Radian")),
    sameWord(Format_UTC, QT_TRANSLATE_NOOP("QObject", "UTC")),
    sameWord(Format_Local, QT_TRANSLATE_NOOP("QObject", "Local")),
    sameWord(Format_GPST, QT_TRANSLATE_NOOP("QObject", "GPST")),
    sameWord(Format_GPSW, QT_TRANSLATE_NOOP("QObject", "GPSW")),
};

inline constexpr WordRow<ELocationType> locationTypeRows[] = {
    sameWord(LocationType_X_Y_ElevationHeight, QT_TRANSLATE_NOOP("QObject", "X_Y_ElevationHeight")),
    sameWord(LocationType_Lat_Long_EarthHeight,
             QT_TRANSLATE_NOOP("QObject", "Lat_Long_EarthHeight")),
};

inline constexpr WordRow<ELocationZeroType> locationZeroTypeRows[] = {
    sameWord(LocationZeroType_Equator_Zero, QT_TRANSLATE_NOOP("QObject", "Equator_Zero")),
    sameWord(LocationZeroType_Central_Meridian_Zero,
             QT_TRANSLATE_NOOP("QObject", "Central_Meridian_Zero")),
};

inline constexpr WordRow<EWhichHalfEarth> whichHalfEarthRows[] = {
    sameWord(WhichHalfEarth_North, QT_TRANSLATE_NOOP("QObject", "N")),
    sameWord(WhichHalfEarth_South, QT_TRANSLATE_NOOP("QObject", "S")),
};

inline constexpr WordRow<EEllipsoidDirection> ellipsoidDirectionRows[] = {
    sameWord(EllipsoidDirection_ENU, QT_TRANSLATE_NOOP("QObject", "ENU")),
    sameWord(EllipsoidDirection_WSU, QT_TRANSLATE_NOOP("QObject", "WSU")),
    sameWord(EllipsoidDirection_ESU, QT_TRANSLATE_NOOP("QObject", "ESU")),
    sameWord(EllipsoidDirection_WNU, QT_TRANSLATE_NOOP("QObject", "WNU")),
};

inline constexpr WordRow<EEllipsoinTransformFunction> ellipsoinTransformFunctionRows[] = {
    sameWord(EllipsoinTransformFunction_None, QT_TRANSLATE_NOOP("QObject", "None")),
    sameWord(EllipsoinTransformFunction_Three, QT_TRANSLATE_NOOP("QObject", "Three")),
    sameWord(EllipsoinTransformFunction_Seven, QT_TRANSLATE_NOOP("QObject", "Seven")),
};

inline constexpr WordRow<EEllipsoinTransition> ellipsoinTransitionRows[] = {
    sameWord(EllipsoinTransition_XYZ, QT_TRANSLATE_NOOP("QObject", "XYZ")),
    sameWord(EllipsoinTransition_BLH, QT_TRANSLATE_NOOP("QObject", "BLH")),
};

inline constexpr WordRow<EPlaneTransformFunction> planeTransformFunctionRows[] = {
    sameWord(PlaneTransformFunction_None, QT_TRANSLATE_NOOP("QObject", "None")),
    sameWord(PlaneTransformFunction_Four, QT_TRANSLATE_NOOP("QObject", "Four")),
};

inline constexpr WordRow<EElevationFittingFunction> elevationFittingFunctionRows[] = {
    sameWord(ElevationFittingFunction_None, QT_TRANSLATE_NOOP("QObject", "None")),
    sameWord(ElevationFittingFunction_Fixed, QT_TRANSLATE_NOOP("QObject", "Fixed")),
    sameWord(ElevationFittingFunction_Plane, QT_TRANSLATE_NOOP("QObject", "Plane")),
    sameWord(ElevationFittingFunction_Curve, QT_TRANSLATE_NOOP("QObject", "Curve")),
};

/// The row of `value`, or null for a number that is not listed.
template <typename Row, std::size_t count, typename Enumeration>
constexpr const Row *findRow(const Row (&rows)[count], Enumeration value)
{
    for (const Row &row : rows) {
        if (row.value == value)
            return &row;
    }
    return nullptr;
}

template <typename Row, std::size_t count>
constexpr bool inAscendingOrder(const Row (&rows)[count])
{
    for (std::size_t i = 1; i < count; ++i) {
        if (rows[i - 1].value >= rows[i].value)
            return false;
    }
    return true;
}

static_assert(inAscendingOrder(valueTypeRows) && inAscendingOrder(unitRows)
              && inAscendingOrder(formatRows));

/// How values of `type` are treated; a number that is not listed is treated as its variant.
constexpr ValueKind kindOf(EValueType type)
{
    const ValueTypeRow *row = findRow(valueTypeRows, type);
    return row != nullptr ? row->kind : ValueKind::AsVariant;
}

} // namespace KelStd
