#include "support/ShownAngle.h"

#include <KelStd/text/CoordStringHelper.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace KelStd::test {

namespace {

constexpr int maxDecimals = 18;

constexpr std::array<quint64, maxDecimals + 1> powersOfTen = [] {
    std::array<quint64, maxDecimals + 1> powers{};
    powers[0] = 1;
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

long double powerOfTen(int exponent)
{
    return static_cast<long double>(powersOfTen[static_cast<std::size_t>(exponent)]);
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

std::optional<ShownNumber> readNumber(const QChar *at, const QChar *end)
{
    ShownNumber number;
    if (at != end && *at == QLatin1Char('-')) {
        number.negative = true;
        ++at;
    }
    if (at == end || !isDigit(*at) || !isDigit(*(end - 1)))
        return std::nullopt;
    for (; at != end && isDigit(*at); ++at)
        number.whole = number.whole * 10 + at->unicode() - '0';
    if (at == end)
        return number;
    if (*at++ != QLatin1Char('.') || end - at > maxDecimals)
        return std::nullopt;
    for (; at != end && isDigit(*at); ++at, ++number.decimals)
        number.fraction = number.fraction * 10 + at->unicode() - '0';
    return at == end ? std::optional<ShownNumber>(number) : std::nullopt;
}

std::string described(const ShownNumber &number)
{
    return QString::number(static_cast<double>(number.value()), 'g', 17).toStdString();
}

} // namespace

long double ShownNumber::value() const
{
    const long double size =
        static_cast<long double>(whole) + static_cast<long double>(fraction) / powerOfTen(decimals);
    return negative ? -size : size;
}

long double ShownNumber::sizeMinus(long double expected) const
{
    return (static_cast<long double>(whole) - expected)
           + static_cast<long double>(fraction) / powerOfTen(decimals);
}

std::optional<ShownNumber> readNumber(const QString &text)
{
    return readNumber(text.cbegin(), text.cend());
}

long double ShownAngle::ownSignSum() const
{
    long double sum = 0.0L;
    if (degrees)
        sum += degrees->value();
    if (minutes)
        sum += minutes->value() / 60.0L;
    if (seconds)
        sum += seconds->value() / 3600.0L;
    return sum;
}

const ShownNumber *ShownAngle::leadingPart() const
{
    for (const auto *part : {&degrees, &minutes, &seconds, &plain}) {
        if (*part && !(*part)->isZero())
            return &**part;
    }
    return nullptr;
}

bool ShownAngle::hasOnePart() const
{
    int parts = 0;
    for (const auto *part : {&degrees, &minutes, &seconds, &plain})
        parts += *part && !(*part)->isZero() ? 1 : 0;
    return parts <= 1;
}

std::optional<ShownAngle> readAngle(const QString &text)
{
    static const QChar symbols[] = {QChar(0x00B0), QChar(0x2032), QChar(0x2033)};
    ShownAngle angle;
    std::optional<ShownNumber> *const parts[] = {&angle.degrees, &angle.minutes, &angle.seconds};
    const QChar *at = text.cbegin();
    const QChar *end = text.cend();
    if (at != end && QStringLiteral("NSEW").contains(*(end - 1)))
        angle.letter = *--end;
    bool hasSymbol = false;
    for (std::size_t i = 0; i < std::size(symbols); ++i) {
        const QChar *symbol = std::find(at, end, symbols[i]);
        if (symbol == end)
            continue;
        *parts[i] = readNumber(at, symbol);
        if (!*parts[i])
            return std::nullopt;
        hasSymbol = true;
        at = symbol + 1;
    }
    if (!hasSymbol) {
        angle.plain = readNumber(at, end);
        return angle.plain ? std::optional<ShownAngle>(angle) : std::nullopt;
    }
    return at == end ? std::optional<ShownAngle>(angle) : std::nullopt;
}

long double halfUnit(int precision)
{
    return 0.5L / powerOfTen(precision);
}

double halfSpacing(double value)
{
    const double size = std::abs(value);
    return (size - std::nextafter(size, 0.0)) / 2.0;
}

double roundingOf(double value)
{
    return halfSpacing(std::nextafter(std::abs(value), 1e300));
}

namespace {

/// What the long doubles of these checks cost themselves, some 1/500 of a unit of the 15th decimal.
constexpr long double ownError = 1e-18L;

std::string wrongDecimals(const ShownNumber &number, int precision, Zeros zeros)
{
    if (zeros == Zeros::Kept)
        return number.decimals == precision ? "" : described(number) + " has other decimals";
    if (number.decimals > precision)
        return described(number) + " has too many decimals";
    return number.decimals > 0 && number.fraction % 10 == 0 ? described(number) + " ends in a zero"
                                                            : "";
}

} // namespace

std::string wrongNumber(const ShownNumber &number, long double expected, int precision, Zeros zeros,
                        long double noise)
{
    const std::string wrong = wrongDecimals(number, precision, zeros);
    if (!wrong.empty())
        return wrong;
    const long double size = std::abs(expected);
    const long double rounding = ownError + 2e-19L * size;
    return std::abs(number.sizeMinus(size)) <= halfUnit(precision) + noise + rounding
               ? ""
               : described(number) + " is not the value rounded";
}

std::string wrongSexagesimal(const ShownAngle &angle, long double arcSeconds, int precision,
                             long double noise)
{
    const ShownNumber degrees = angle.degrees.value_or(ShownNumber{});
    const ShownNumber minutes = angle.minutes.value_or(ShownNumber{});
    if (!angle.seconds || angle.plain)
        return "no angle in degrees, minutes and seconds";
    if (degrees.fraction != 0 || minutes.fraction != 0)
        return "degrees or minutes that are not whole";
    if (minutes.whole >= 60 || angle.seconds->whole >= 60)
        return "60 in minutes or seconds";
    // A double's 53 bits times 3600 are 61: the rest is exact where a long double has 64.
    const long double rest = std::abs(arcSeconds)
                             - 3600.0L * static_cast<long double>(degrees.whole)
                             - 60.0L * static_cast<long double>(minutes.whole);
    const auto seconds = static_cast<double>(angle.seconds->value());
    const long double allowed =
        halfUnit(precision) + ownError + std::max<long double>(noise, roundingOf(seconds));
    return std::abs(angle.seconds->sizeMinus(rest)) <= allowed ? "" : "not the value rounded";
}

std::string wrongMinus(const ShownAngle &angle, bool negative)
{
    const ShownNumber *leading = angle.leadingPart();
    if (leading == nullptr) // a value that rounds to zero may keep its minus
        return "";
    for (const auto *part : {&angle.degrees, &angle.minutes, &angle.seconds, &angle.plain}) {
        if (*part && (*part)->negative && &**part != leading)
            return "a minus that is not on the leading part";
    }
    return leading->negative == negative ? "" : "the wrong sign";
}

namespace {

/// What reading costs [deg]: a handful of roundings of doubles of this size.
long double readingError(long double degrees)
{
    return 1e-15L * std::abs(degrees) + 1e-300L;
}

} // namespace

std::string wrongSexagesimalReading(const QString &shown, const ShownAngle &angle,
                                    long double degrees, long double allowed)
{
    const long double sum = angle.ownSignSum();
    const long double error = readingError(360.0L);
    const bool addsUp = angle.hasOnePart() || !shown.contains(QLatin1Char('-'));
    QVariant value;
    if (!CoordStringHelper::GetValueFromString(ValueType_Angle, Unit_Degree, shown, value))
        return "refused in degrees";
    if (!(std::abs(value.toDouble() - sum) <= error))
        return "read as another sum";
    if (addsUp && !(std::abs(value.toDouble() - degrees) <= allowed + error))
        return "read as another angle";
    if (!CoordStringHelper::GetValueFromString(ValueType_Angle, Unit_Second, shown, value))
        return "refused in arc seconds";
    if (!(std::abs(value.toDouble() - 3600.0L * sum) <= 3600.0L * error))
        return "read as another sum of arc seconds";

    double styled = 1000.0;
    const bool readable = angle.degrees && angle.minutes && angle.minutes->value() >= 0.0L
                          && angle.seconds->value() >= 0.0L;
    if (CoordStringHelper::GetAngleValue(shown, Format_DegreeMinuteSecond, styled) != readable)
        return readable ? "refused as a styled angle" : "taken as a styled angle";
    return readable && !(std::abs(styled - sum) <= error) ? "read as another styled angle" : "";
}

std::string wrongDecimalReading(const QString &shown, EFormat format, long double degrees,
                                long double allowed)
{
    // Radians have no symbol before which the number could end.
    const bool readable = format != Format_Radian || !shown.back().isLetter();
    const long double error = 2.0L * readingError(degrees) + readingError(allowed);
    double styled = 1000.0;
    if (CoordStringHelper::GetAngleValue(shown, format, styled) != readable)
        return readable ? "refused as a styled angle" : "taken as a styled angle";
    if (readable && !(std::abs(styled - degrees) <= allowed + error))
        return "read as another styled angle";
    if (format == Format_Radian)
        return "";
    QVariant value;
    if (!CoordStringHelper::GetValueFromString(ValueType_Angle, Unit_Degree, shown, value))
        return "refused in degrees";
    return std::abs(value.toDouble() - degrees) <= allowed + error ? "" : "read as another angle";
}

} // namespace KelStd::test
