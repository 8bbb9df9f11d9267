#include <KelStd/platform/Toolkits.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::array<long double, 18> powersOfTen = {
    1e0L, 1e1L,  1e2L,  1e3L,  1e4L,  1e5L,  1e6L,  1e7L,  1e8L,
    1e9L, 1e10L, 1e11L, 1e12L, 1e13L, 1e14L, 1e15L, 1e16L, 1e17L,
};

/// The shortest decimal number of seconds that differs from `seconds` by no more than `tolerance`,
/// as the double that is handed out. A number that is near enough with some decimals is near enough
/// with more: bisection finds how many are needed.
double shortestSeconds(long double seconds, long double tolerance)
{
    auto shortest = static_cast<double>(seconds);
    std::size_t low = 0;
    std::size_t high = powersOfTen.size();
    while (low < high) {
        const std::size_t decimals = (low + high) / 2;
        const long double scale = powersOfTen[decimals];
        const auto candidate = static_cast<double>(std::rint(seconds * scale) / scale);
        if (std::abs(candidate - seconds) <= tolerance) {
            shortest = candidate;
            high = decimals;
        } else {
            low = decimals + 1;
        }
    }
    return shortest;
}

/// Half the distance from `value` to its neighbour: numbers that near denote the same double.
double halfSpacing(double value)
{
    return (value - std::nextafter(value, 0.0)) / 2.0;
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

} // namespace

namespace tk {

void Toolkits::GetDegreeMinuteSecond(double value, double *degree, double *minute, double *second,
                                     unsigned char /*decimals*/)
{
    if (!std::isfinite(value)) {
        *degree = value;
        *minute = 0.0;
        *second = 0.0;
        return;
    }

    // 53 significant bits times 60 twice fit the 64 of an x87 long double: the split is exact
    // there, and good to the last bit of a double elsewhere.
    const double magnitude = std::abs(value);
    long double degrees = std::floor(magnitude);
    const long double allMinutes = (magnitude - degrees) * 60.0L;
    long double minutes = std::floor(allMinutes);
    double seconds =
        shortestSeconds((allMinutes - minutes) * 60.0L, 3600.0L * halfSpacing(magnitude));
    if (seconds >= 60.0) {
        seconds = 0.0;
        minutes += 1.0L;
    }
    if (minutes >= 60.0L) {
        minutes = 0.0L;
        degrees += 1.0L;
    }

    // Adding +0.0 keeps a zero component from carrying the minus.
    const double sign = value < 0.0 ? -1.0 : 1.0;
    *degree = sign * static_cast<double>(degrees) + 0.0;
    *minute = sign * static_cast<double>(minutes) + 0.0;
    *second = sign * seconds + 0.0;
}

void Toolkits::EraseTailZero(QString &text)
{
    const auto point = text.indexOf(QLatin1Char('.'));
    if (point < 0 || !std::all_of(text.cbegin() + point + 1, text.cend(), isDigit))
        return;
    auto keep = text.size();
    while (text.at(keep - 1) == QLatin1Char('0'))
        --keep;
    if (keep == point + 1)
        keep = point;
    text.truncate(keep);
}

QString Toolkits::DoubleToString(double value, int decimals)
{
    const int maxDecimals = std::max(decimals, 0);
    QString shortest = QString::number(value, 'f', QLocale::FloatingPointShortest);
    const auto point = shortest.indexOf(QLatin1Char('.'));
    if (point < 0 || shortest.size() - point - 1 <= maxDecimals)
        return shortest;
    QString rounded = QString::number(value, 'f', maxDecimals);
    EraseTailZero(rounded);
    return rounded;
}

} // namespace tk
