#include <KelStd/positions/PrintOptions.h>

#include <cmath>

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

int angleDecimalsFor(const AngleStyle &style, int lengthDecimals, double metresPerUnit)
{
    constexpr double metresPerDegree = 111195.08;
    constexpr double allowance = 1.125; // of the last digit
    const double length = std::pow(10.0, -lengthDecimals) * metresPerUnit;
    double digit = style.degrees * metresPerDegree;
    int decimals = 0;
    while (digit > allowance * length && decimals < PrintOptions::maxDecimals) {
        digit /= 10.0;
        ++decimals;
    }
    return decimals;
}

} // namespace KelStd::positions
