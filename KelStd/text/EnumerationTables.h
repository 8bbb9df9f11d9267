#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QtGlobal>

#include <cstddef>

/// One row for each enumerator, which every operation of this folder and the file format read. To
/// add an enumerator, add its row, keeping the order of the numbers.
namespace KelStd {

/// What the two families of words are for an enumerator; null for none.
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

// The rows themselves, in ascending order of the numbers.

/// A text that is translated.
#define KELSTD_TEXT(text) QT_TRANSLATE_NOOP("QObject", text)
/// A file word that is its own description.
#define KELSTD_WORD(text) text, KELSTD_TEXT(text)

inline constexpr ValueTypeRow valueTypeRows[] = {
    {{ValueType_None, KELSTD_WORD("None")}, ValueKind::AsVariant},
    {{ValueType_String, KELSTD_WORD("String")}, ValueKind::Text},
    {{ValueType_Int32, KELSTD_WORD("Int32")}, ValueKind::Int32},
    {{ValueType_Int64, KELSTD_WORD("Int64")}, ValueKind::Int64},
    {{ValueType_Double, KELSTD_WORD("Double")}, ValueKind::Number},
    {{ValueType_Boolean, KELSTD_WORD("Boolean")}, ValueKind::Boolean},
    {{ValueType_Distance, KELSTD_WORD("Distance")}, ValueKind::Length},
    {{ValueType_Height, KELSTD_WORD("Height")}, ValueKind::Length},
    {{ValueType_Angle, KELSTD_WORD("Angle")}, ValueKind::Angle},
    // The interval has a file word and the instant has none; describing either is refused.
    {{ValueType_Time, nullptr, nullptr}, ValueKind::Time},
    {{ValueType_TimeSpan, "TimeSpan", nullptr}, ValueKind::TimeSpan},
    {{ValueType_Pressure, KELSTD_WORD("Pressure")}, ValueKind::Pressure},
    {{ValueType_Temprature, KELSTD_WORD("Temprature")}, ValueKind::Temperature},
    {{ValueType_Longitude, KELSTD_WORD("Longitude")}, ValueKind::Longitude},
    {{ValueType_Latitude, KELSTD_WORD("Latitude")}, ValueKind::Latitude},
    {{ValueType_EarthHeight, KELSTD_WORD("EarthHeight")}, ValueKind::Length},
    {{ValueType_X, KELSTD_WORD("X")}, ValueKind::Length},
    {{ValueType_Y, KELSTD_WORD("Y")}, ValueKind::Length},
    {{ValueType_ElevationHeight, KELSTD_WORD("ElevationHeight")}, ValueKind::Length},
    {{ValueType_LocationZeroType, KELSTD_WORD("LocationZeroType")}, ValueKind::LocationZeroType},
    {{ValueType_WhichHalfEarth, KELSTD_WORD("WhichHalfEarth")}, ValueKind::WhichHalfEarth},
    {{ValueType_EllipsoidDirection, KELSTD_WORD("EllipsoidDirection")},
     ValueKind::EllipsoidDirection},
    {{ValueType_Proj4_Param_Bool, KELSTD_WORD("Proj4_Param_Bool")}, ValueKind::ProjFlag},
};

/// The US survey foot is 1200/3937 m; international units as fixed in 1959. "par", "in" and
/// "us-in" are this system's own words and stay. The four units with a special symbol have no plain
/// one: see `CoordStringHelper::Unit_to_String`.
inline constexpr UnitRow unitRows[] = {
    {{Unit_None, "None", nullptr}, nullptr, nullptr, 0.0},
    {{Unit_Meter, "Meter", KELSTD_TEXT("meter")}, KELSTD_TEXT("m"), "m", 1.0},
    {{Unit_MilliMeter, "Milli Meter", KELSTD_TEXT("milli meter")},
     KELSTD_TEXT("mm"),
     nullptr,
     0.001},
    {{Unit_Foot, "Foot", KELSTD_TEXT("Foot")}, KELSTD_TEXT("ft"), "in", 0.3048},
    {{Unit_Yard, nullptr, nullptr}, nullptr, nullptr, 0.9144},
    {{Unit_Inch, nullptr, nullptr}, nullptr, nullptr, 0.0254},
    {{Unit_Mile, nullptr, nullptr}, nullptr, nullptr, 1609.344},
    {{Unit_USFoot, "US Foot", KELSTD_TEXT("US Foot")},
     KELSTD_TEXT("U.S ft"),
     "us-in",
     0.3048006096012192},
    {{Unit_Bar, "bar", KELSTD_TEXT("bar")}, KELSTD_TEXT("bar"), nullptr, 0.0},
    {{Unit_Pascal, "Pa", KELSTD_TEXT("Pascal")}, KELSTD_TEXT("par"), nullptr, 0.0},
    {{Unit_MilliBar, "mbar", KELSTD_TEXT("milli bar")}, KELSTD_TEXT("mbar"), nullptr, 0.0},
    {{Unit_MmHg, "mmHg", KELSTD_TEXT("mm Hg")}, KELSTD_TEXT("mmHg"), nullptr, 0.0},
    {{Unit_InHg, "inHg", KELSTD_TEXT("inch Hg")}, KELSTD_TEXT("inHg"), nullptr, 0.0},
    {{Unit_Celsius, "Celsius", KELSTD_TEXT("Celsius")}, nullptr, nullptr, 0.0},
    {{Unit_Fahrenheit, "Fahrenheit", KELSTD_TEXT("Fahrenheit")}, nullptr, nullptr, 0.0},
    {{Unit_Kelvin, "Kelvin", KELSTD_TEXT("Kelvin")}, KELSTD_TEXT("K"), nullptr, 0.0},
    {{Unit_Degree, "Degree", KELSTD_TEXT("Degree")}, nullptr, nullptr, 0.0},
    {{Unit_Second, "Second", KELSTD_TEXT("Second")}, nullptr, nullptr, 0.0},
};

inline constexpr WordRow<EFormat> formatRows[] = {
    {Format_None, "None", nullptr},
    {Format_NorthEastHeight, KELSTD_WORD("North East Height")},
    {Format_EastNorthHeight, KELSTD_WORD("East North Height")},
    {Format_DegreeMinuteSecond, KELSTD_WORD("Degree Minute Second")},
    {Format_Degree, KELSTD_WORD("Degree")},
    {Format_Second, KELSTD_WORD("Second")},
    {Format_Radian, KELSTD_WORD("Radian")},
    {Format_UTC, KELSTD_WORD("UTC")},
    {Format_Local, KELSTD_WORD("Local")},
    {Format_GPST, KELSTD_WORD("GPST")},
    {Format_GPSW, KELSTD_WORD("GPSW")},
};

inline constexpr WordRow<ELocationType> locationTypeRows[] = {
    {LocationType_X_Y_ElevationHeight, KELSTD_WORD("X_Y_ElevationHeight")},
    {LocationType_Lat_Long_EarthHeight, KELSTD_WORD("Lat_Long_EarthHeight")},
};

inline constexpr WordRow<ELocationZeroType> locationZeroTypeRows[] = {
    {LocationZeroType_Equator_Zero, KELSTD_WORD("Equator_Zero")},
    {LocationZeroType_Central_Meridian_Zero, KELSTD_WORD("Central_Meridian_Zero")},
};

inline constexpr WordRow<EWhichHalfEarth> whichHalfEarthRows[] = {
    {WhichHalfEarth_North, KELSTD_WORD("N")},
    {WhichHalfEarth_South, KELSTD_WORD("S")},
};

inline constexpr WordRow<EEllipsoidDirection> ellipsoidDirectionRows[] = {
    {EllipsoidDirection_ENU, KELSTD_WORD("ENU")},
    {EllipsoidDirection_WSU, KELSTD_WORD("WSU")},
    {EllipsoidDirection_ESU, KELSTD_WORD("ESU")},
    {EllipsoidDirection_WNU, KELSTD_WORD("WNU")},
};

inline constexpr WordRow<EEllipsoinTransformFunction> ellipsoinTransformFunctionRows[] = {
    {EllipsoinTransformFunction_None, KELSTD_WORD("None")},
    {EllipsoinTransformFunction_Three, KELSTD_WORD("Three")},
    {EllipsoinTransformFunction_Seven, KELSTD_WORD("Seven")},
};

inline constexpr WordRow<EEllipsoinTransition> ellipsoinTransitionRows[] = {
    {EllipsoinTransition_XYZ, KELSTD_WORD("XYZ")},
    {EllipsoinTransition_BLH, KELSTD_WORD("BLH")},
};

inline constexpr WordRow<EPlaneTransformFunction> planeTransformFunctionRows[] = {
    {PlaneTransformFunction_None, KELSTD_WORD("None")},
    {PlaneTransformFunction_Four, KELSTD_WORD("Four")},
};

inline constexpr WordRow<EElevationFittingFunction> elevationFittingFunctionRows[] = {
    {ElevationFittingFunction_None, KELSTD_WORD("None")},
    {ElevationFittingFunction_Fixed, KELSTD_WORD("Fixed")},
    {ElevationFittingFunction_Plane, KELSTD_WORD("Plane")},
    {ElevationFittingFunction_Curve, KELSTD_WORD("Curve")},
};

#undef KELSTD_WORD
#undef KELSTD_TEXT

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
