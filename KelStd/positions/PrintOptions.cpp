#include <KelStd/positions/PrintOptions.h>

namespace KelStd::positions {

const AngleStyle &defaultAngleStyle()
{
    static const AngleStyle &style = *findAngleStyle(Format_DegreeMinuteSecond);
    return style;
}

const LengthUnit &defaultLengthUnit()
{
    static const LengthUnit &unit = *findLengthUnit(QStringLiteral("m"));
    return unit;
}

} // namespace KelStd::positions
