#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/EnumerationValueText.h>
#include <KelStd/text/NumberText.h>
#include <KelStd/text/RaisedException.h>

namespace KelStd {

namespace {

/// More decimals than any double of a coordinate system distinguishes.
constexpr text::NumberStyle exactNumber{20, true};
constexpr text::NumberStyle weatherNumber{2, true};

} // namespace

QString CoordStringHelper::GetNoFormatString(const Param &param, QString *unitText)
{
    if (unitText != nullptr)
        *unitText = Unit_to_String(param.unit);

    switch (kindOf(param.valType)) {
    case ValueKind::Int32:
    case ValueKind::Int64: return QString::number(param.value.toLongLong());
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude: return text::number(param.value.toDouble(), exactNumber);
    case ValueKind::Pressure:
    case ValueKind::Temperature: return text::number(param.value.toDouble(), weatherNumber);
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
    return text::enumerationValue(kindOf(param.valType), param.value);
}

} // namespace KelStd
