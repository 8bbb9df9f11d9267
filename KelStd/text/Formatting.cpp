#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/library/StandardLibrary.h>
#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/EnumerationValueText.h>
#include <KelStd/text/NumberText.h>
#include <KelStd/text/RaisedException.h>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

/// Where the display configuration keeps the settings of a kind of value. A null unit means the
/// value's own unit, a null format `Format_None`, a null precision no decimals.
struct ConfiguredRow
{
    EValueType type;
    EUnit stShowConfig::*unit;
    EFormat stShowConfig::*format;
    unsigned char stShowConfig::*precision;
    bool stShowConfig::*keepZero;
};

using C = stShowConfig;

constexpr ConfiguredRow configuredRows[] = {
    {ValueType_Int32, nullptr, nullptr, nullptr, nullptr},
    {ValueType_Int64, nullptr, nullptr, nullptr, nullptr},
    {ValueType_Double, nullptr, nullptr, &C::doublePrecision, &C::doubleKeepZero},
    {ValueType_Distance, &C::distanceUnit, nullptr, &C::distancePrecision, &C::distanceKeepZero},
    {ValueType_Height, &C::heightUnit, nullptr, &C::heightPrecision, &C::heightKeepZero},
    {ValueType_Angle, nullptr, &C::angleFormat, &C::anglePrecision, &C::angleKeepZero},
    {ValueType_Pressure, &C::pressureUnit, nullptr, &C::pressurePrecision, &C::pressureKeepZero},
    {ValueType_Temprature, &C::tempratureUnit, nullptr, &C::tempraturePrecision,
     &C::tempratureKeepZero},
    {ValueType_Longitude, nullptr, &C::latLongFormat, &C::latLongPrecision, &C::latLongKeepZero},
    {ValueType_Latitude, nullptr, &C::latLongFormat, &C::latLongPrecision, &C::latLongKeepZero},
    {ValueType_EarthHeight, &C::earthHeightUnit, nullptr, &C::earthHeightPrecision,
     &C::earthHeightKeepZero},
    {ValueType_X, &C::xyUnit, nullptr, &C::xyPrecision, &C::xyKeepZero},
    {ValueType_Y, &C::xyUnit, nullptr, &C::xyPrecision, &C::xyKeepZero},
    {ValueType_ElevationHeight, &C::elevationHeightUnit, nullptr, &C::elevationHeightPrecision,
     &C::elevationHeightKeepZero},
};

/// Kinds that are shown without any unit or setting.
constexpr EValueType plainTypes[] = {
    ValueType_String,
    ValueType_Boolean,
    ValueType_LocationZeroType,
    ValueType_WhichHalfEarth,
    ValueType_EllipsoidDirection,
    ValueType_Proj4_Param_Bool,
};

bool isPlain(EValueType type)
{
    return std::find(std::begin(plainTypes), std::end(plainTypes), type) != std::end(plainTypes);
}

const ConfiguredRow *configuredRow(EValueType type)
{
    const auto row = std::find_if(std::begin(configuredRows), std::end(configuredRows),
                                  [type](const ConfiguredRow &r) { return r.type == type; });
    return row != std::end(configuredRows) ? row : nullptr;
}

/// An angle with its hemisphere letter: of two letters the first is for zero and above.
QString withHemisphere(double value, EFormat format, text::NumberStyle style, const char *letters)
{
    const QString angle = text::angle(value, format, style, true);
    return format == Format_None ? angle
                                 : angle + QLatin1Char(value >= 0.0 ? letters[0] : letters[1]);
}

} // namespace

QString CoordStringHelper::GetFormatString(EValueType type, const QVariant &value, EUnit fromUnit,
                                           EUnit toUnit, EFormat format, unsigned char precision,
                                           bool eraseTailZero, QString *unitText)
{
    if (unitText != nullptr)
        *unitText = Unit_to_String(toUnit);

    const text::NumberStyle style{precision, eraseTailZero};
    const double number = value.toDouble();
    switch (kindOf(type)) {
    case ValueKind::Int32: return QString::number(value.toInt());
    case ValueKind::Int64: return QString::number(value.toLongLong());
    case ValueKind::Number: return text::number(number, style);
    case ValueKind::Length:
        // Equal units are not converted, so that a unit without a factor can be shown in itself.
        return text::number(
            fromUnit == toUnit ? number : ConvertUnit_Length(number, fromUnit, toUnit), style);
    case ValueKind::Pressure:
        return text::number(ConvertUnit_Pressure(number, fromUnit, toUnit), style);
    case ValueKind::Temperature:
        return text::number(ConvertUnit_Temprature(number, fromUnit, toUnit), style);
    case ValueKind::Angle:
        return text::angle(ConvertUnit_Angle(number, fromUnit, toUnit), format, style, false);
    case ValueKind::Longitude:
        return withHemisphere(ConvertUnit_Angle(number, fromUnit, toUnit), format, style, "EW");
    case ValueKind::Latitude:
        return withHemisphere(ConvertUnit_Angle(number, fromUnit, toUnit), format, style, "NS");
    case ValueKind::Time:
    case ValueKind::TimeSpan: raiseByPointer(noTimeInCoordinate);
    case ValueKind::Boolean:
    case ValueKind::ProjFlag:
    case ValueKind::LocationZeroType:
    case ValueKind::WhichHalfEarth:
    case ValueKind::EllipsoidDirection:
    case ValueKind::Text:
    case ValueKind::AsVariant: break;
    }
    return text::enumerationValue(kindOf(type), value);
}

QString CoordStringHelper::GetFormatString(const Param &param, EUnit toUnit, EFormat format,
                                           unsigned char precision, bool eraseTailZero,
                                           QString *unitText)
{
    return GetFormatString(param.valType, param.value, param.unit, toUnit, format, precision,
                           eraseTailZero, unitText);
}

QString CoordStringHelper::GetFormatString(EValueType type, const QVariant &value, EUnit unit,
                                           QString *unitText)
{
    if (isPlain(type))
        return GetFormatString(type, value, unit, Unit_None, Format_None, 0, false, unitText);

    const ValueKind kind = kindOf(type);
    if (kind == ValueKind::Time || kind == ValueKind::TimeSpan)
        raiseByPointer(noTimeInCoordinate);

    const ConfiguredRow *row = configuredRow(type);
    if (row == nullptr)
        return {};
    const stShowConfig &config = *StandardLibrary::getInstance().getShowConfig();
    return GetFormatString(type, value, unit, row->unit != nullptr ? config.*row->unit : unit,
                           row->format != nullptr ? config.*row->format : Format_None,
                           row->precision != nullptr ? config.*row->precision : 0,
                           row->keepZero != nullptr && !(config.*row->keepZero), unitText);
}

QString CoordStringHelper::GetFormatString(const Param &param, QString *unitText)
{
    return GetFormatString(param.valType, param.value, param.unit, unitText);
}

} // namespace KelStd
