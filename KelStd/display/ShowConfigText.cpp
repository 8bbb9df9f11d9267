#include <KelStd/display/stShowConfig.h>

#include <KelStd/coord/Param.h>
#include <KelStd/display/ShowConfigRows.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/NumberText.h>
#include <KelStd/text/Translation.h>
#include <KelStd/time/TimeFromVariant.h>
#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/TimeSpan.h>
#include <KelStd/time/TimeUtc.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <type_traits>

namespace KelStd {

namespace {

using text::NumberStyle;

constexpr double secondsPerDegree = 3600.0;
constexpr double radiansPerDegree = 0.017453292519943295;
constexpr double fullCircle = 360.0;

// --- Numbers -----------------------------------------------------------------------------------

QString numberText(double value, NumberStyle style)
{
    return std::isfinite(value) ? text::number(value, style) : QString();
}

/// Appends `value`, which is finite, filled with zeros to a width in characters.
void appendPadded(QString &out, double value, int width, int decimals)
{
    const QString digits = QString::number(std::abs(value), 'f', decimals);
    if (value < 0.0) {
        out += QLatin1Char('-');
        --width;
    }
    for (auto missing = width - digits.size(); missing > 0; --missing)
        out += QLatin1Char('0');
    out += digits;
}

QString padded(double value, int width, int decimals)
{
    QString out;
    appendPadded(out, value, width, decimals);
    return out;
}

/// The width of a padded number: that of its integer digits, and the decimals with their point.
int paddedWidth(int integerDigits, int decimals)
{
    return decimals > 0 ? integerDigits + 1 + decimals : integerDigits;
}

QString paddedDistance(double value, int integerDigits, NumberStyle style)
{
    // No double has more digits; a width below zero would add zeros behind the number.
    constexpr int maxDigits = 309;
    if (!std::isfinite(value))
        return {};
    const int width = paddedWidth(std::clamp(integerDigits, 0, maxDigits), style.precision);
    const QString shown = padded(value, width, style.precision);
    return style.eraseTailZero ? text::withoutTailZero(shown) : shown;
}

/// The value in another length unit; not a number when a unit has no factor.
double convertedLength(double value, EUnit from, EUnit to)
{
    try {
        return CoordStringHelper::ConvertUnit_Length(value, from, to);
    } catch (const std::exception &) {
        return std::nan("");
    }
}

// --- Angles ------------------------------------------------------------------------------------

bool isDegreeMinuteSecond(EFormat format)
{
    return format == Format_DegreeMinuteSecond || format == Format_None;
}

/// An angle in the unit in which its style shows it: arc seconds, or degrees for every other
/// style. A value in neither unit stays as it is.
double inShownUnit(double value, EUnit unit, EFormat format)
{
    if (format == Format_Second)
        return unit == Unit_Degree ? value * secondsPerDegree : value;
    return unit == Unit_Second ? value / secondsPerDegree : value;
}

/// Enough for a longitude with ten decimals.
constexpr int usualLength = 32;

/// Appends minutes and seconds of a split angle, with two integer digits each.
void appendMinutesAndSeconds(QString &out, const text::Sexagesimal &parts, int decimals)
{
    appendPadded(out, parts.minutes, 2, 0);
    out += CoordStringHelper::s_specialSymbol_Minute;
    appendPadded(out, parts.seconds, paddedWidth(2, decimals), decimals);
    out += CoordStringHelper::s_specialSymbol_Second;
}

/// A whole turn stays 360. The number of turns is a quotient: a loop that subtracts turns would not
/// end for large values.
double intoFullCircle(double degrees)
{
    if (degrees >= 0.0 && degrees <= fullCircle)
        return degrees;
    const double rest = std::fmod(degrees, fullCircle);
    if (degrees < 0.0)
        return rest < 0.0 ? rest + fullCircle : 0.0;
    return rest == 0.0 ? fullCircle : rest;
}

QString radians(double degrees, unsigned char precision)
{
    return numberText(intoFullCircle(degrees) * radiansPerDegree, {precision, false});
}

QString angleText(double value, EFormat format, unsigned char precision)
{
    const NumberStyle style{precision, false};
    if (!std::isfinite(value))
        return {};
    switch (static_cast<int>(format)) {
    case Format_None:
    case Format_DegreeMinuteSecond: {
        const text::Sexagesimal parts = text::splitForPrinting(value, precision, precision);
        QString shown;
        shown.reserve(usualLength);
        shown += text::number(parts.degrees, {0, false});
        shown += CoordStringHelper::s_specialSymbol_degree;
        appendMinutesAndSeconds(shown, parts, precision);
        return shown;
    }
    case Format_Degree:
        return text::number(value, style) + CoordStringHelper::SpecialSymbol_Degree();
    case Format_Second:
        return text::number(value, style) + CoordStringHelper::SpecialSymbol_Second();
    case Format_Radian: return radians(value, precision);
    default: return {};
    }
}

/// What longitudes and latitudes differ in.
struct Hemispheres
{
    double limit;            ///< [deg]
    int degreeDigits;        ///< integer digits of the limit in degrees
    char positive, negative; ///< letters
};

constexpr Hemispheres longitudes = {180.0, 3, 'E', 'W'};
constexpr Hemispheres latitudes = {90.0, 2, 'N', 'S'};

/// The limits in arc seconds have this many digits, 648000 and 324000.
constexpr int arcSecondDigits = 6;

/// An unsigned value with its letter; empty outside the limits.
QString hemisphereText(double value, EFormat format, int precision, const Hemispheres &sides)
{
    const double limit = format == Format_Second ? sides.limit * secondsPerDegree : sides.limit;
    if (value < -limit || value > limit)
        return {};
    if (std::isnan(value)) {
        if (!isDegreeMinuteSecond(format))
            return {};
        value = 0.0; // deliberately
    }

    const double size = std::abs(value);
    const int degreeWidth = paddedWidth(sides.degreeDigits, precision);
    const QChar letter = QLatin1Char(value >= 0.0 ? sides.positive : sides.negative);
    switch (static_cast<int>(format)) {
    case Format_None:
    case Format_DegreeMinuteSecond: {
        const auto decimals = static_cast<unsigned char>(precision);
        const text::Sexagesimal parts = text::splitForPrinting(size, decimals, decimals);
        QString shown;
        shown.reserve(usualLength);
        appendPadded(shown, parts.degrees, sides.degreeDigits, 0);
        shown += CoordStringHelper::s_specialSymbol_degree;
        appendMinutesAndSeconds(shown, parts, precision);
        shown += letter;
        return shown;
    }
    case Format_Degree:
        return padded(size, degreeWidth, precision) + CoordStringHelper::SpecialSymbol_Degree()
               + letter;
    case Format_Second:
        return padded(size, paddedWidth(arcSecondDigits, precision), precision)
               + CoordStringHelper::SpecialSymbol_Second() + letter;
    case Format_Radian:
        return padded(size * radiansPerDegree, paddedWidth(1, precision), precision) + letter;
    default: return {};
    }
}

// --- Times -------------------------------------------------------------------------------------

template <typename Target, typename Time>
Target inScale(const Time &time)
{
    if constexpr (std::is_same_v<Target, Time>)
        return time;
    else if constexpr (std::is_same_v<Target, TimeUtc>)
        return time.toUtc();
    else if constexpr (std::is_same_v<Target, TimeLocal>)
        return time.toLocal();
    else if constexpr (std::is_same_v<Target, TimeGpsT>)
        return time.toGpsT();
    else
        return time.toGpsW();
}

/// The text of a time that a variant holds as `Time`, in the scale that `format` names.
template <typename Time>
QString timeText(const QVariant &value, EFormat format)
{
    Time time;
    if (!time.fromVariant(value))
        return {};
    switch (static_cast<int>(format)) {
    case Format_UTC: return inScale<TimeUtc>(time).toString();
    case Format_Local: return inScale<TimeLocal>(time).toString();
    case Format_GPST: return inScale<TimeGpsT>(time).toString();
    case Format_GPSW: return inScale<TimeGpsW>(time).toString();
    default: return {};
    }
}

QString timeText(const QVariant &value, EFormat format)
{
    switch (static_cast<int>(TimeFromVariant::ParseFormat(value))) {
    case Format_UTC: return timeText<TimeUtc>(value, format);
    case Format_Local: return timeText<TimeLocal>(value, format);
    case Format_GPST: return timeText<TimeGpsT>(value, format);
    case Format_GPSW: return timeText<TimeGpsW>(value, format);
    default: return {};
    }
}

// --- Descriptions ------------------------------------------------------------------------------

QString angleDescription(EFormat format)
{
    switch (static_cast<int>(format)) {
    case Format_None:
    case Format_DegreeMinuteSecond:
        return CoordStringHelper::Format_to_DescriptionString(Format_DegreeMinuteSecond);
    case Format_Degree:
    case Format_Second:
    case Format_Radian: return CoordStringHelper::Format_to_DescriptionString(format);
    default: return {};
    }
}

QString timeDescription(EFormat format)
{
    switch (static_cast<int>(format)) {
    case Format_UTC:
    case Format_Local:
    case Format_GPST:
    case Format_GPSW: return CoordStringHelper::Format_to_DescriptionString(format);
    default: return {};
    }
}

} // namespace

QString stShowConfig::getParamShowFormatDescription(EValueType type) const
{
    const ShowConfigRow *row = findShowConfigRow(type);
    if (row != nullptr && row->unit != nullptr)
        return CoordStringHelper::Unit_to_DescriptionString(this->*row->unit);
    if (row != nullptr && row->format != nullptr)
        return angleDescription(this->*row->format);
    return type == ValueType_Time ? timeDescription(timeFormat) : QString();
}

QString stShowConfig::getParamShowFormatDescription(const Param &param) const
{
    return getParamShowFormatDescription(param.valType);
}

QString stShowConfig::getParamValueString(const Param &param, int intDigits) const
{
    static constexpr ShowConfigRow withoutSettings{};
    const ShowConfigRow *found = findShowConfigRow(param.valType);
    const ShowConfigRow &row = found != nullptr ? *found : withoutSettings;
    const NumberStyle style{row.precisionIn(*this), row.erasesTailZero(*this)};
    const double value = param.value.toDouble();

    switch (kindOf(param.valType)) {
    case ValueKind::Text: return param.value.toString();
    case ValueKind::Int32: return QString::number(param.value.toInt());
    case ValueKind::Number: return numberText(value, style);
    case ValueKind::Length: {
        const double length = convertedLength(value, param.unit, row.unitIn(*this, param.unit));
        return param.valType == ValueType_Distance && intDigits != -1
                   ? paddedDistance(length, intDigits, style)
                   : numberText(length, style);
    }
    case ValueKind::Pressure:
        return numberText(CoordStringHelper::ConvertUnit_Pressure(value, param.unit, pressureUnit),
                          style);
    case ValueKind::Temperature:
        return numberText(
            CoordStringHelper::ConvertUnit_Temprature(value, param.unit, tempratureUnit), style);
    case ValueKind::Longitude:
        if (latLongFormat == Format_Radian)
            return angleText(inShownUnit(value, param.unit, latLongFormat), latLongFormat,
                             latLongPrecision);
        return hemisphereText(inShownUnit(value, param.unit, latLongFormat), latLongFormat,
                              latLongPrecision, longitudes);
    case ValueKind::Latitude:
        return hemisphereText(inShownUnit(value, param.unit, latLongFormat), latLongFormat,
                              latLongPrecision, latitudes);
    case ValueKind::Angle:
        return angleText(inShownUnit(value, param.unit, angleFormat), angleFormat, anglePrecision);
    case ValueKind::Time: return timeText(param.value, timeFormat);
    case ValueKind::TimeSpan: return TimeSpan(param.value.toLongLong()).toString();
    case ValueKind::ProjFlag:
        return translated(param.value.toBool() ? QT_TRANSLATE_NOOP("QObject", "Yes")
                                               : QT_TRANSLATE_NOOP("QObject", "No"));
    case ValueKind::Int64:
    case ValueKind::Boolean:
    case ValueKind::LocationZeroType:
    case ValueKind::WhichHalfEarth:
    case ValueKind::EllipsoidDirection:
    case ValueKind::AsVariant: break;
    }
    return {};
}

} // namespace KelStd
