#include <KelStd/text/NumberText.h>

#include <KelStd/platform/Toolkits.h>
#include <KelStd/text/CoordStringHelper.h>

#include <cmath>

namespace KelStd::text {

namespace {

/// What this folder tells the toolkit library, whatever it prints; the seconds come with all their
/// digits all the same.
constexpr unsigned char usualHint = 2;

/// Enough for an angle with ten decimals.
constexpr int usualLength = 48;

/// Smaller seconds round up to 60 with no number of decimals.
constexpr double minRoundingToSixty = 59.5;

bool roundsToSixty(double seconds, unsigned char precision)
{
    return seconds >= minRoundingToSixty
           && QString::number(seconds, 'f', precision).toDouble() >= 60.0;
}

QString degreeMinuteSecond(double value, NumberStyle style, bool signInHemisphere)
{
    auto [d, m, s] = splitForPrinting(value, style.precision, usualHint);
    if (signInHemisphere && d < 0.0)
        d = -d;

    // The same decimals and trailing-zero rule for all three parts, deliberately.
    QString shown;
    shown.reserve(usualLength);
    if (d != 0.0)
        shown += number(d, style) + CoordStringHelper::s_specialSymbol_degree;
    if (d != 0.0 || m != 0.0)
        shown += number(m, style) + CoordStringHelper::s_specialSymbol_Minute;
    shown += number(s, style) + CoordStringHelper::s_specialSymbol_Second;
    return shown;
}

} // namespace

Sexagesimal splitForPrinting(double value, unsigned char precision, unsigned char hint)
{
    double d = 0.0;
    double m = 0.0;
    double s = 0.0;
    tk::Toolkits::GetDegreeMinuteSecond(value, &d, &m, &s, hint);

    const double one = value < 0.0 ? -1.0 : 1.0;
    if (roundsToSixty(std::abs(s), precision)) {
        s = 0.0;
        m += one;
    }
    if (std::abs(m) >= 60.0) {
        m = 0.0;
        d += one;
    }

    if (m < 0.0 && d != 0.0)
        m = -m;
    if (s < 0.0 && !(d == 0.0 && m == 0.0))
        s = -s;
    return {d, m, s};
}

QString number(double value, NumberStyle style)
{
    const QString text = QString::number(value, 'f', style.precision);
    return style.eraseTailZero ? withoutTailZero(text) : text;
}

QString withoutTailZero(QString number)
{
    tk::Toolkits::EraseTailZero(number);
    return number;
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
