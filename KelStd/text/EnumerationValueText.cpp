#include <KelStd/text/EnumerationValueText.h>

#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/Translation.h>

namespace KelStd::text {

QString enumerationValue(ValueKind kind, const QVariant &value)
{
    const int number = value.toInt();
    switch (kind) {
    case ValueKind::Boolean:
    case ValueKind::ProjFlag:
        return translated(value.toBool() ? QT_TRANSLATE_NOOP("QObject", "true")
                                         : QT_TRANSLATE_NOOP("QObject", "false"));
    case ValueKind::LocationZeroType:
        return CoordStringHelper::ELocationZeroType_to_DescriptionString(
            static_cast<ELocationZeroType>(number));
    case ValueKind::WhichHalfEarth:
        return CoordStringHelper::EWhichHalfEarth_to_DescriptionString(
            static_cast<EWhichHalfEarth>(number));
    case ValueKind::EllipsoidDirection:
        return CoordStringHelper::EEllipsoidDirection_to_DescriptionString(
            static_cast<EEllipsoidDirection>(number));
    default: return value.toString();
    }
}

} // namespace KelStd::text
