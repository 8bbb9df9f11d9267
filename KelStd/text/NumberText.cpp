#include <KelStd/text/NumberText.h>

#include <KelStd/platform/Toolkits.h>
#include <KelStd/text/CoordStringHelper.h>

#include <cmath>

namespace KelStd::text {

namespace {

struct Sexagesimal
{
    double degrees;
    double minutes;
    double seconds;
};

/// The components of `value` as they are printed at `precision`: seconds that round to 60 are
/// carried. Each has the sign of `value`.
Sexagesimal splitForPrinting(double value, unsigned char precision)
{
    Sexagesimal parts{};
    tk::Toolkits::GetDegreeMinuteSecond(value, &parts.degrees, &parts.minutes, &parts.seconds, 2);

    const double one = value < 0.0 ? -1.0 : 1.0;
    if (QString::number(std::abs(parts.seconds), 'f', precision).toDouble() >= 60.0) {
        parts.seconds = 0.0;
        parts.minutes += one;
    }
    if (std::abs(parts.minutes) >= 60.0) {
        parts.minutes = 0.0;
        parts.degrees += one;
    }
    return parts;
}

QString degreeMinuteSecond(double value, NumberStyle style, bool signInHemisphere)
{
    auto [d, m, s] = splitForPrinting(value, style.precision);

    // Only the leading part that is not zero keeps the minus.
    if (m < 0.0 && d != 0.0)
        m = -m;
    if (s < 0.0 && !(d == 0.0 && m == 0.0))
        s = -s;
    if (signInHemisphere && d < 0.0)
        d = -d;

    // The same decimals and trailing-zero rule for all three parts, deliberately.
    QString seconds = number(s, style) + CoordStringHelper::SpecialSymbol_Second();
    if (d == 0.0 && m == 0.0)
        return seconds;
    const QString minutes = number(m, style) + CoordStringHelper::SpecialSymbol_Minute();
    if (d == 0.0)
        return minutes + seconds;
    return number(d, style) + CoordStringHelper::SpecialSymbol_Degree() + minutes + seconds;
}

} // namespace

QString number(double value, NumberStyle style)
{
    QString text = QString::number(value, 'f', style.precision);
    if (style.eraseTailZero)
        tk::Toolkits::EraseTailZero(text);
    return text;
}

QString angle(double value, EFormat format, NumberStyle style, bool signInHemisphere)
{
    switch (static_cast<int>(format)) {
    case Format_DegreeMinuteSecond: return degreeMinuteSecond(value, style, signInHemisphere);
    case Format_Degree: return number(value, style) + CoordStringHelper::SpecialSymbol_Degree();
    case Format_Second: return number(value, style) + CoordStringHelper::SpecialSymbol_Second();
    default: return number(value, style); // radians too: as the number stands, without a symbol
    }
}

} // namespace KelStd::text
