#include "support/Printers.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using test::text;
using Helper = CoordStringHelper;

constexpr bool keep = false;
constexpr bool erase = true;

QString angle(EValueType type, double degrees, EFormat format, int precision, bool eraseTailZero)
{
    return Helper::GetFormatString(type, degrees, Unit_Degree, Unit_Degree, format,
                                   static_cast<unsigned char>(precision), eraseTailZero);
}

QString dms(double degrees, int precision, bool eraseTailZero = erase)
{
    return angle(ValueType_Angle, degrees, Format_DegreeMinuteSecond, precision, eraseTailZero);
}

TEST(AngleText, DegreesMinutesSecondsWithTrailingZerosErased)
{
    struct Row
    {
        double degrees;
        int precision;
        const char *expected;
    };
    const Row rows[] = {
        {30.5, 0, "30°30′0″"},
        {116.1, 15, "116°6′0″"},
        {30.0, 4, "30°0′0″"},
        {30.0 + 0.5 / 3600.0, 1, "30°0′0.5″"},
        {12.582438888888889, 0, "12°34′57″"},
        {12.582438888888889, 1, "12°34′56.8″"},
        {12.582438888888889, 4, "12°34′56.78″"},
        {180.0, 0, "180°0′0″"},
        {720.25, 0, "720°15′0″"}, // an angle is not brought into a range
        {100.0, 0, "100°0′0″"},
        {0.5, 0, "30′0″"},
        {0.1, 2, "6′0″"},
        {0.01, 0, "36″"},
        {0.0, 4, "0″"},
        {0.00025, 1, "0.9″"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(dms(row.degrees, row.precision), text(row.expected));
    }
}

TEST(AngleText, KeptZerosStandBehindDegreesAndMinutesToo)
{
    EXPECT_EQ(dms(30.5, 2, keep), text("30.00°30.00′0.00″"));
    EXPECT_EQ(dms(0.5, 1, keep), text("30.0′0.0″"));
    EXPECT_EQ(dms(0.0, 4, keep), text("0.0000″"));
    EXPECT_EQ(dms(12.582438888888889, 3, keep), text("12.000°34.000′56.780″"));
    EXPECT_EQ(dms(-30.5, 0, keep), text("-30°30′0″"));
}

TEST(AngleText, OnlyTheLeadingPartThatIsNotZeroCarriesTheMinus)
{
    EXPECT_EQ(dms(-30.5, 0), text("-30°30′0″"));
    EXPECT_EQ(dms(-12.582438888888889, 2), text("-12°34′56.78″"));
    EXPECT_EQ(dms(-30.0 - 1.0 / 3600.0, 2), text("-30°0′1″"));
    EXPECT_EQ(dms(-0.5, 0), text("-30′0″"));
    EXPECT_EQ(dms(-0.5 - 1.0 / 3600.0, 2), text("-30′1″"));
    EXPECT_EQ(dms(-0.01, 1), text("-36″"));
    EXPECT_EQ(dms(-1.5 / 3600.0, 1), text("-1.5″"));
}

TEST(AngleText, SecondsThatRoundTo60AreCarried)
{
    struct Row
    {
        double degrees;
        int precision;
        const char *expected;
    };
    const Row rows[] = {
        {30.0 + 59.9999 / 3600.0, 2, "30°1′0″"},
        {30.0 + 59.9999 / 3600.0, 4, "30°0′59.9999″"},
        {30.0 + 59.5 / 3600.0, 0, "30°1′0″"},
        {30.0 + 59.4 / 3600.0, 0, "30°0′59″"},
        {29.999999999, 2, "30°0′0″"},
        {29.999999999, 5, "30°0′0″"}, // 59.9999964 seconds
        {29.999999999, 6, "29°59′59.999996″"},
        {0.0166666, 0, "1′0″"}, // 59.99976 seconds: the minutes begin here
        {0.9999999, 1, "1°0′0″"},
        {-0.9999999, 1, "-1°0′0″"},
        {-0.0166666, 0, "-1′0″"},
        {-29.999999999, 2, "-30°0′0″"},
        {-30.0 - 59.9999 / 3600.0, 2, "-30°1′0″"},
        {359.9999999999999, 4, "360°0′0″"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(dms(row.degrees, row.precision), text(row.expected));
    }
}

TEST(AngleText, ACarryShowsInEveryPartWhereZerosAreKept)
{
    EXPECT_EQ(dms(29.999999999, 2, keep), text("30.00°0.00′0.00″"));
    EXPECT_EQ(dms(-0.9999999, 1, keep), text("-1.0°0.0′0.0″"));
}

TEST(AngleText, ACarryReachesTheHemispheresTextBeforeItsSignIsCleanedUp)
{
    EXPECT_EQ(angle(ValueType_Latitude, -29.999999999, Format_DegreeMinuteSecond, 2, erase),
              text("30°0′0″S"));
    EXPECT_EQ(angle(ValueType_Longitude, -0.9999999, Format_DegreeMinuteSecond, 1, erase),
              text("1°0′0″W"));
    EXPECT_EQ(angle(ValueType_Longitude, -0.0166666, Format_DegreeMinuteSecond, 0, erase),
              text("-1′0″W"));
}

TEST(AngleText, OfTheLargestPrecisionHasEveryDigitOfTheSeconds)
{
    EXPECT_EQ(dms(30.5, 255), text("30°30′0″"));
    const QString zeros(255, QLatin1Char('0'));
    EXPECT_EQ(dms(30.5, 255, keep),
              text("30.") + zeros + text("°30.") + zeros + text("′0.") + zeros + text("″"));
    // 0.25 of a second has two decimals in binary as in decimal.
    EXPECT_EQ(dms(1.0 / 14400.0, 255), text("0.25″"));
}

TEST(AngleText, DegreeStyleAppendsTheDegreeSign)
{
    EXPECT_EQ(angle(ValueType_Angle, 30.5, Format_Degree, 3, keep), text("30.500°"));
    EXPECT_EQ(angle(ValueType_Angle, -30.5, Format_Degree, 3, erase), text("-30.5°"));
    EXPECT_EQ(angle(ValueType_Angle, 100.0, Format_Degree, 0, erase), text("100°"));
    EXPECT_EQ(angle(ValueType_Angle, 0.1, Format_Degree, 15, erase), text("0.1°"));
    EXPECT_EQ(angle(ValueType_Angle, 29.999999999, Format_Degree, 4, keep), text("30.0000°"));
}

TEST(AngleText, SecondStyleAppendsTheSecondSignToTheNumberAsItStands)
{
    EXPECT_EQ(angle(ValueType_Angle, 1.5, Format_Second, 2, keep), text("1.50″"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Angle, 1.5, Unit_Degree, Unit_Second, Format_Second,
                                      2, erase),
              text("5400″"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Angle, -0.5, Unit_Second, Unit_Second,
                                      Format_Second, 1, keep),
              text("-0.5″"));
}

TEST(AngleText, RadianStyleAndEveryOtherIsThePlainNumberUnconverted)
{
    for (const int format : {24, 0, 1, 2, 21, 25, 30, 31, 32, 33, -1, 1000}) {
        SCOPED_TRACE(format);
        const auto style = static_cast<EFormat>(format);
        EXPECT_EQ(angle(ValueType_Angle, 180.5, style, 3, keep), text("180.500"));
        EXPECT_EQ(angle(ValueType_Angle, -180.5, style, 3, erase), text("-180.5"));
    }
}

TEST(AngleText, ConvertsBetweenDegreesAndSecondsOnly)
{
    const auto shown = [](EUnit from, EUnit to, EFormat format) {
        return Helper::GetFormatString(ValueType_Angle, 7200.0, from, to, format, 1, erase);
    };
    EXPECT_EQ(shown(Unit_Second, Unit_Degree, Format_Degree), text("2°"));
    EXPECT_EQ(shown(Unit_Second, Unit_Degree, Format_DegreeMinuteSecond), text("2°0′0″"));
    EXPECT_EQ(shown(Unit_Degree, Unit_Second, Format_Radian), text("25920000"));
    EXPECT_EQ(shown(Unit_Second, Unit_Second, Format_Second), text("7200″"));
    EXPECT_EQ(shown(Unit_Meter, Unit_Degree, Format_Degree), text("7200°"));
    EXPECT_EQ(shown(Unit_Second, Unit_Meter, Format_Degree), text("7200°"));
    // The number in the unit shown is what is split, whatever that unit is.
    EXPECT_EQ(shown(Unit_Second, Unit_Second, Format_DegreeMinuteSecond), text("7200°0′0″"));
}

struct HemisphereRow
{
    EFormat format;
    double degrees;
    const char *latitude;
    const char *longitude;
};

TEST(HemisphereText, FollowsTheSignOfTheValue)
{
    // Only whole degrees of the first style lose their minus; every other number keeps its own.
    const HemisphereRow rows[] = {
        {Format_DegreeMinuteSecond, 30.5, "30°30′0″N", "30°30′0″E"},
        {Format_DegreeMinuteSecond, -30.5, "30°30′0″S", "30°30′0″W"},
        {Format_DegreeMinuteSecond, 0.0, "0″N", "0″E"},
        {Format_DegreeMinuteSecond, -0.0, "0″N", "0″E"},
        {Format_DegreeMinuteSecond, -0.5, "-30′0″S", "-30′0″W"},
        {Format_DegreeMinuteSecond, -0.01, "-36″S", "-36″W"},
        {Format_Degree, 30.5, "30.5°N", "30.5°E"},
        {Format_Degree, -30.5, "-30.5°S", "-30.5°W"},
        {Format_Degree, 0.0, "0°N", "0°E"},
        {Format_Second, 30.5, "30.5″N", "30.5″E"},
        {Format_Second, -30.5, "-30.5″S", "-30.5″W"},
        {Format_Radian, 30.5, "30.5N", "30.5E"},
        {Format_Radian, -30.5, "-30.5S", "-30.5W"},
        {static_cast<EFormat>(21), -30.5, "-30.5S", "-30.5W"},
    };
    for (const HemisphereRow &row : rows) {
        SCOPED_TRACE(row.latitude);
        EXPECT_EQ(angle(ValueType_Latitude, row.degrees, row.format, 2, erase), text(row.latitude));
        EXPECT_EQ(angle(ValueType_Longitude, row.degrees, row.format, 2, erase),
                  text(row.longitude));
    }
}

TEST(HemisphereText, KeepsZerosWhereAsked)
{
    EXPECT_EQ(angle(ValueType_Latitude, -30.5, Format_DegreeMinuteSecond, 2, keep),
              text("30.00°30.00′0.00″S"));
    EXPECT_EQ(angle(ValueType_Longitude, -30.5, Format_Degree, 4, keep), text("-30.5000°W"));
}

TEST(HemisphereText, WithoutAFormatIsAPlainNumberWithoutALetter)
{
    EXPECT_EQ(angle(ValueType_Latitude, -30.5, Format_None, 2, keep), text("-30.50"));
    EXPECT_EQ(angle(ValueType_Longitude, 30.5, Format_None, 2, erase), text("30.5"));
}

TEST(AngleText, AValueThatIsNotFiniteCannotBeTakenForAnAngle)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const EFormat format :
         {Format_None, Format_DegreeMinuteSecond, Format_Degree, Format_Second, Format_Radian}) {
        for (const EValueType type : {ValueType_Angle, ValueType_Latitude, ValueType_Longitude}) {
            SCOPED_TRACE(type);
            for (const double value : {infinity, -infinity})
                EXPECT_TRUE(angle(type, value, format, 4, erase).contains(text("inf")));
            EXPECT_TRUE(angle(type, notANumber, format, 4, erase).contains(text("nan")));
        }
    }
}

TEST(AngleText, HugeAnglesAreWritten)
{
    EXPECT_EQ(dms(1e18, 2), text("1000000000000000000°0′0″"));
    EXPECT_EQ(dms(-1e18, 2), text("-1000000000000000000°0′0″"));
}

} // namespace
} // namespace KelStd
