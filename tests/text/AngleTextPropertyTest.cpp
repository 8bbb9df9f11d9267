#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>
#include <string>

namespace KelStd {
namespace {

using test::text;

/// What a reader of a degree-minute-second text sees.
struct Shown
{
    bool readable = false;
    double degrees = 0.0;
    double minutes = 0.0;
    double seconds = 0.0;

    /// With the minus of any part standing for the whole, as a reader takes it.
    long double arcSeconds() const
    {
        const bool negative = degrees < 0.0 || minutes < 0.0 || seconds < 0.0;
        const long double size =
            std::abs(degrees) * 3600.0L + std::abs(minutes) * 60.0L + std::abs(seconds);
        return negative ? -size : size;
    }
};

/// Takes the number before `sign` off the front of `rest`; nothing when the sign is missing.
bool takePart(QString &rest, const char *sign, double *number)
{
    const int at = rest.indexOf(text(sign));
    if (at < 0)
        return true;
    bool ok = false;
    *number = rest.left(at).toDouble(&ok);
    rest = rest.mid(at + 1);
    return ok;
}

Shown read(const QString &angle)
{
    Shown shown;
    QString rest = angle;
    shown.readable = angle.endsWith(text("″")) && takePart(rest, "°", &shown.degrees)
                     && takePart(rest, "′", &shown.minutes) && takePart(rest, "″", &shown.seconds)
                     && rest.isEmpty();
    return shown;
}

/// Empty when the text of `value` at this precision is the value rounded to the decimals shown, and
/// otherwise what is wrong.
std::string whatIsWrong(double value, int precision, bool eraseTailZero)
{
    const QString printed = CoordStringHelper::GetFormatString(
        ValueType_Angle, value, Unit_Degree, Unit_Degree, Format_DegreeMinuteSecond,
        static_cast<unsigned char>(precision), eraseTailZero);
    const std::string where = QString::number(value, 'g', 17).toStdString() + " at "
                              + std::to_string(precision) + " decimals is " + printed.toStdString();
    const Shown shown = read(printed);
    if (!shown.readable)
        return where + ": not readable";
    if (!(std::abs(shown.minutes) < 60.0) || !(std::abs(shown.seconds) < 60.0))
        return where + ": 60 in minutes or seconds";
    if (printed.count(QLatin1Char('-')) > (value < 0.0 ? 1 : 0)
        || printed.lastIndexOf(QLatin1Char('-')) > 0)
        return where + ": a minus that is not in front";

    // Half a unit of the last decimal; half the distance to the neighbouring doubles, within which
    // noise is snapped; and what reading the seconds back as a double costs.
    const double neighbour = std::nextafter(std::abs(value), 1e9) - std::abs(value);
    const long double allowed =
        0.5L * std::pow(10.0L, -precision) + 3600.0L * neighbour / 2.0L + 1e-14L;
    if (std::abs(shown.arcSeconds() - 3600.0L * value) > allowed)
        return where + ": not the value rounded";
    return {};
}

constexpr int precisionsTested[] = {0, 1, 2, 3, 4, 6, 9, 12, 15};

TEST(AngleTextProperty, ARandomAngleIsPrintedRoundedToTheDecimalsShown)
{
    std::mt19937_64 random(1837);
    std::uniform_real_distribution<double> anyAngle(-360.0, 360.0);
    std::uniform_int_distribution<std::size_t> anyPrecision(0, std::size(precisionsTested) - 1);
    for (int i = 0; i < 100000; ++i) {
        const double value = i % 4 == 0 ? anyAngle(random) / 400.0 : anyAngle(random);
        ASSERT_EQ(whatIsWrong(value, precisionsTested[anyPrecision(random)], i % 2 == 0), "");
    }
}

TEST(AngleTextProperty, AroundEveryCarryTooInBothSigns)
{
    std::mt19937_64 random(4711);
    std::uniform_int_distribution<int> anyMinute(0, 60 * 360);
    std::uniform_real_distribution<double> decimalsAway(0.0, 16.0);
    for (int i = 0; i < 100000; ++i) {
        // A whole minute, less or more a distance anywhere between an arc second and nothing.
        const double distance = std::pow(10.0, -decimalsAway(random)) / 3600.0;
        const double minute = anyMinute(random) / 60.0;
        const double value = i % 2 == 0 ? minute - distance : minute + distance;
        const int precision =
            precisionsTested[static_cast<std::size_t>(i) % std::size(precisionsTested)];
        ASSERT_EQ(whatIsWrong(value, precision, true), "");
        ASSERT_EQ(whatIsWrong(-value, precision, false), "");
    }
}

TEST(AngleTextProperty, TheDoublesBesideEveryWholeMinuteToo)
{
    for (int minute = 0; minute <= 60 * 181; minute += 7) {
        const double at = minute / 60.0;
        for (const double value : {at, std::nextafter(at, 1000.0), std::nextafter(at, -1000.0)}) {
            for (const int precision : precisionsTested)
                ASSERT_EQ(whatIsWrong(value, precision, true), "");
        }
    }
}

TEST(AngleTextProperty, TheReaderOfThisTestSeesWhatIsWrong)
{
    EXPECT_FALSE(read(text("30°30′")).readable);
    EXPECT_FALSE(read(text("30°x′0″")).readable);
    EXPECT_EQ(read(text("-30°30′15″")).arcSeconds(), -109815.0L);
    EXPECT_EQ(read(text("-30′15″")).arcSeconds(), -1815.0L);
    EXPECT_EQ(read(text("29°59′60″")).seconds, 60.0);
}

} // namespace
} // namespace KelStd
