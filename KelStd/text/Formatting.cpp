#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/EnumerationValueText.h>
#include <KelStd/text/NumberText.h>
#include <KelStd/text/RaisedException.h>

namespace KelStd {

namespace {

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

} // namespace KelStd
