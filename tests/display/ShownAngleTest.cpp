// stShowConfig::getParamValueString of longitudes, latitudes and angles.

#include "support/Printers.h"

#include <KelStd/coord/Param.h>
#include <KelStd/display/stShowConfig.h>

#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace KelStd {
namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The text of an angle of `type`; the settings of the other kinds of angle differ. Whether zeros
/// are kept must make no difference.
QString shown(EValueType type, const QVariant &value, EUnit unit, int format, int precision)
{
    const auto config = [&](bool keepZero) {
        stShowConfig result;
        result.angleFormat = static_cast<EFormat>(-1);
        result.latLongFormat = static_cast<EFormat>(-1);
        result.anglePrecision = 9;
        result.latLongPrecision = 9;
        result.angleKeepZero = keepZero;
        result.latLongKeepZero = keepZero;
        const bool isAngle = type == ValueType_Angle;
        (isAngle ? result.angleFormat : result.latLongFormat) = static_cast<EFormat>(format);
        (isAngle ? result.anglePrecision : result.latLongPrecision) =
            static_cast<unsigned char>(precision);
        return result;
    };
    const Param param(type, unit, value);
    const QString kept = config(true).getParamValueString(param, -1);
    EXPECT_EQ(config(false).getParamValueString(param, -1), kept);
    EXPECT_EQ(config(true).getParamValueString(param, 4), kept);
    return kept;
}

struct Row
{
    double value;
    EUnit unit;
    int precision;
    const char *expected;
};

template <std::size_t count>
void expectShown(EValueType type, int format, const Row (&rows)[count])
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(shown(type, row.value, row.unit, format, row.precision), text(row.expected))
            << row.value;
    }
}

/// Both numbers of the style; 12 34 56.78 is 12.582438888888889 degrees.
constexpr int sexagesimalFormats[] = {20, 0};

TEST(ShownLongitude, InDegreesMinutesSeconds)
{
    const Row rows[] = {
        {116.5, Unit_Degree, 4, "116°30′00.0000″E"},
        {116.5, Unit_Degree, 0, "116°30′00″E"},
        {116.1, Unit_Degree, 15, "116°06′00.000000000000000″E"},
        {-116.1, Unit_Degree, 1, "116°06′00.0″W"},
        {12.582438888888889, Unit_Degree, 0, "012°34′57″E"},
        {12.582438888888889, Unit_Degree, 1, "012°34′56.8″E"},
        {-12.582438888888889, Unit_Degree, 4, "012°34′56.7800″W"},
        {12.582438888888889, Unit_Degree, 15, "012°34′56.780000000000001″E"},
        {-0.5, Unit_Degree, 2, "000°30′00.00″W"},
        {-0.01, Unit_Degree, 1, "000°00′36.0″W"},
        {0.0, Unit_Degree, 2, "000°00′00.00″E"},
        {-0.0, Unit_Degree, 2, "000°00′00.00″E"},
        {5.0 + 1.0 / 60.0 + 2.0 / 3600.0, Unit_Degree, 3, "005°01′02.000″E"},
        // carried
        {29.999999999, Unit_Degree, 5, "030°00′00.00000″E"},
        {29.999999999, Unit_Degree, 6, "029°59′59.999996″E"},
        {-0.0166666, Unit_Degree, 0, "000°01′00″W"},
        {179.99999999, Unit_Degree, 2, "180°00′00.00″E"},
        // arc seconds
        {419400.0, Unit_Second, 2, "116°30′00.00″E"},
        {-36.0, Unit_Second, 0, "000°00′36″W"},
        // a unit that is no angle's: as it stands
        {116.5, Unit_None, 0, "116°30′00″E"},
        {116.5, Unit_Meter, 0, "116°30′00″E"},
    };
    for (const int format : sexagesimalFormats)
        expectShown(ValueType_Longitude, format, rows);
}

TEST(ShownLatitude, InDegreesMinutesSeconds)
{
    const Row rows[] = {
        {-45.25, Unit_Degree, 0, "45°15′00″S"},
        {45.25, Unit_Degree, 1, "45°15′00.0″N"},
        {5.5, Unit_Degree, 4, "05°30′00.0000″N"},
        {-0.5, Unit_Degree, 2, "00°30′00.00″S"},
        {0.0, Unit_Degree, 0, "00°00′00″N"},
        {-0.0, Unit_Degree, 0, "00°00′00″N"},
        {-12.582438888888889, Unit_Degree, 15, "12°34′56.780000000000001″S"},
        {-29.999999999, Unit_Degree, 2, "30°00′00.00″S"},
        {-162900.0, Unit_Second, 1, "45°15′00.0″S"},
    };
    for (const int format : sexagesimalFormats)
        expectShown(ValueType_Latitude, format, rows);
}

TEST(ShownLongitude, InDegrees)
{
    const Row rows[] = {
        {-0.5, Unit_Degree, 2, "000.50°W"},
        {116.4, Unit_Degree, 0, "116°E"},
        {5.7, Unit_Degree, 0, "006°E"},
        {12.582438888888889, Unit_Degree, 1, "012.6°E"},
        {-12.582438888888889, Unit_Degree, 4, "012.5824°W"},
        {12.582438888888889, Unit_Degree, 15, "012.582438888888889°E"},
        {0.0, Unit_Degree, 1, "000.0°E"},
        {-0.0, Unit_Degree, 1, "000.0°E"},
        {5400.0, Unit_Second, 2, "001.50°E"},
        {-180.0, Unit_Degree, 1, "180.0°W"},
    };
    expectShown(ValueType_Longitude, 22, rows);
}

TEST(ShownLatitude, InDegrees)
{
    const Row rows[] = {
        {-0.5, Unit_Degree, 2, "00.50°S"},
        {45.4, Unit_Degree, 0, "45°N"},
        {5.7, Unit_Degree, 0, "06°N"},
        {12.582438888888889, Unit_Degree, 4, "12.5824°N"},
        {12.582438888888889, Unit_Degree, 15, "12.582438888888889°N"},
        {-5400.0, Unit_Second, 2, "01.50°S"},
        {90.0, Unit_Degree, 1, "90.0°N"},
    };
    expectShown(ValueType_Latitude, 22, rows);
}

TEST(ShownLongitude, InArcSeconds)
{
    const Row rows[] = {
        {116.5, Unit_Degree, 0, "419400″E"},
        {116.5, Unit_Degree, 2, "419400.00″E"},
        {0.01, Unit_Degree, 2, "000036.00″E"},
        {0.01, Unit_Degree, 0, "000036″E"},
        {-36.25, Unit_Second, 1, "000036.3″W"}, // 36.25 is a tie, which is rounded away from zero
        {-36.25, Unit_Second, 4, "000036.2500″W"},
        {36.25, Unit_Second, 15, "000036.250000000000000″E"},
        {36.0, Unit_None, 0, "000036″E"},
        {-180.0, Unit_Degree, 1, "648000.0″W"},
        {-0.0, Unit_Second, 0, "000000″E"},
    };
    expectShown(ValueType_Longitude, 23, rows);
}

TEST(ShownLatitude, InArcSeconds)
{
    const Row rows[] = {
        {45.0, Unit_Degree, 0, "162000″N"},
        {-0.01, Unit_Degree, 2, "000036.00″S"},
        {36.25, Unit_Second, 4, "000036.2500″N"},
        {90.0, Unit_Degree, 1, "324000.0″N"},
    };
    expectShown(ValueType_Latitude, 23, rows);
}

TEST(ShownLatitude, InRadiansHasALetterAndNoSymbol)
{
    // 45 degrees are 0.78539816339744831 radians.
    const Row rows[] = {
        {45.0, Unit_Degree, 4, "0.7854N"},
        {-45.0, Unit_Degree, 4, "0.7854S"},
        {45.0, Unit_Degree, 0, "1N"},
        {45.0, Unit_Degree, 1, "0.8N"},
        {45.0, Unit_Degree, 15, "0.785398163397448N"},
        {162000.0, Unit_Second, 4, "0.7854N"},
        {-90.0, Unit_Degree, 4, "1.5708S"},
        {0.0, Unit_Degree, 2, "0.00N"},
    };
    expectShown(ValueType_Latitude, 24, rows);
}

/// Neither has a letter; both are brought into 0 to 360 degrees; neither is refused for its size.
TEST(ShownLongitudeAndAngle, InRadiansAreAlike)
{
    const Row rows[] = {
        {45.0, Unit_Degree, 4, "0.7854"},     {45.0, Unit_Degree, 0, "1"},
        {45.0, Unit_Degree, 1, "0.8"},        {45.0, Unit_Degree, 15, "0.785398163397448"},
        {162000.0, Unit_Second, 4, "0.7854"}, {0.0, Unit_Degree, 4, "0.0000"},
        {-90.0, Unit_Degree, 4, "4.7124"},    {180.0, Unit_Degree, 4, "3.1416"},
        {-180.0, Unit_Degree, 4, "3.1416"},   {190.0, Unit_Degree, 4, "3.3161"},
        {360.0, Unit_Degree, 4, "6.2832"}, // a whole turn stays one
        {361.0, Unit_Degree, 4, "0.0175"},    {720.0, Unit_Degree, 4, "6.2832"},
        {-360.0, Unit_Degree, 4, "0.0000"},   {-720.0, Unit_Degree, 4, "0.0000"},
        {-721.0, Unit_Degree, 4, "6.2657"}, // 359 degrees
        {1e18, Unit_Degree, 4, "4.8869"},   // 10^18 leaves 280 when it is divided by 360
        {-1e18, Unit_Degree, 4, "1.3963"},  // 80 degrees
    };
    expectShown(ValueType_Longitude, 24, rows);
    expectShown(ValueType_Angle, 24, rows);
}

TEST(ShownLongitudeAndAngle, InRadiansEndForEveryFiniteValue)
{
    for (const double value : {1e300, -1e300, std::numeric_limits<double>::max(),
                               -std::numeric_limits<double>::max(), 1e17, -5e-324}) {
        for (const EValueType type : {ValueType_Longitude, ValueType_Angle}) {
            for (const EUnit unit : {Unit_Degree, Unit_Second}) {
                bool isNumber = false;
                const double radians = shown(type, value, unit, 24, 4).toDouble(&isNumber);
                EXPECT_TRUE(isNumber && radians >= 0.0 && radians <= 6.2832) << value;
            }
        }
    }
}

TEST(ShownAngle, InDegreesMinutesSecondsHasTheMinusOnItsLeadingPart)
{
    const Row rows[] = {
        {30.5, Unit_Degree, 0, "30°30′00″"},
        {-30.5, Unit_Degree, 0, "-30°30′00″"},
        {-0.5, Unit_Degree, 2, "0°-30′00.00″"},
        {0.5, Unit_Degree, 2, "0°30′00.00″"},
        {-0.01, Unit_Degree, 1, "0°00′-36.0″"},
        {-5.0 / 3600.0, Unit_Degree, 0, "0°00′-5″"}, // the width includes the sign
        {-5.0 / 60.0, Unit_Degree, 1, "0°-5′00.0″"},
        {5.0 / 60.0, Unit_Degree, 1, "0°05′00.0″"},
        {0.0, Unit_Degree, 1, "0°00′00.0″"},
        {-0.0, Unit_Degree, 1, "0°00′00.0″"},
        {12.582438888888889, Unit_Degree, 1, "12°34′56.8″"},
        {-12.582438888888889, Unit_Degree, 4, "-12°34′56.7800″"},
        {12.582438888888889, Unit_Degree, 15, "12°34′56.780000000000001″"},
        {-0.5 - 1.0 / 3600.0, Unit_Degree, 2, "0°-30′01.00″"},
        {-29.999999999, Unit_Degree, 2, "-30°00′00.00″"},
        {-0.0166666, Unit_Degree, 0, "0°-1′00″"},
        {-0.9999999, Unit_Degree, 1, "-1°00′00.0″"},
        {720.25, Unit_Degree, 0, "720°15′00″"}, // there is no range
        {-1e18, Unit_Degree, 0, "-1000000000000000000°00′00″"},
        {109800.0, Unit_Second, 1, "30°30′00.0″"},
        {30.5, Unit_None, 0, "30°30′00″"},
    };
    for (const int format : sexagesimalFormats)
        expectShown(ValueType_Angle, format, rows);
}

TEST(ShownAngle, InDegreesAndInArcSeconds)
{
    const Row degrees[] = {
        {30.5, Unit_Degree, 4, "30.5000°"},
        {-30.5, Unit_Degree, 1, "-30.5°"},
        {-5400.0, Unit_Second, 2, "-1.50°"},
        {400.0, Unit_Degree, 0, "400°"},
        {12.582438888888889, Unit_Degree, 15, "12.582438888888889°"},
    };
    expectShown(ValueType_Angle, 22, degrees);
    const Row arcSeconds[] = {
        {1.5, Unit_Degree, 2, "5400.00″"},
        {-1.5, Unit_Degree, 0, "-5400″"},
        {-36.0, Unit_Second, 1, "-36.0″"},
        {36.0, Unit_None, 0, "36″"},
        {12.25, Unit_Second, 15, "12.250000000000000″"},
        {400.0, Unit_Degree, 4, "1440000.0000″"},
    };
    expectShown(ValueType_Angle, 23, arcSeconds);
}

TEST(ShownAngle, OfTheLargestPrecisionHasEveryDigit)
{
    const QString zeros(255, QLatin1Char('0'));
    EXPECT_EQ(shown(ValueType_Longitude, -116.5, Unit_Degree, 20, 255),
              text("116°30′00.") + zeros + text("″W"));
    EXPECT_EQ(shown(ValueType_Latitude, 6.0, Unit_Degree, 22, 255),
              text("06.") + zeros + text("°N"));
    EXPECT_EQ(shown(ValueType_Latitude, 0.0, Unit_Degree, 24, 255), text("0.") + zeros + text("N"));
    EXPECT_EQ(shown(ValueType_Longitude, 36.0, Unit_Second, 23, 255),
              text("000036.") + zeros + text("″E"));
    EXPECT_EQ(shown(ValueType_Angle, -0.5, Unit_Degree, 20, 255),
              text("0°-30′00.") + zeros + text("″"));
    EXPECT_EQ(shown(ValueType_Angle, 36.0, Unit_Second, 23, 255), text("36.") + zeros + text("″"));
}

struct LimitRow
{
    EValueType type;
    int format;
    double limit; ///< in the unit of the value
    EUnit unit;
    const char *atLimit;
};

TEST(ShownLimits, AreShownAndBeyondThemNothingIs)
{
    const LimitRow rows[] = {
        {ValueType_Longitude, 20, 180.0, Unit_Degree, "180°00′00.0″E"},
        {ValueType_Longitude, 0, 180.0, Unit_Degree, "180°00′00.0″E"},
        {ValueType_Longitude, 22, 180.0, Unit_Degree, "180.0°E"},
        {ValueType_Longitude, 23, 180.0, Unit_Degree, "648000.0″E"},
        {ValueType_Longitude, 20, 648000.0, Unit_Second, "180°00′00.0″E"},
        {ValueType_Longitude, 22, 648000.0, Unit_Second, "180.0°E"},
        {ValueType_Longitude, 23, 648000.0, Unit_Second, "648000.0″E"},
        {ValueType_Latitude, 20, 90.0, Unit_Degree, "90°00′00.0″N"},
        {ValueType_Latitude, 0, 90.0, Unit_Degree, "90°00′00.0″N"},
        {ValueType_Latitude, 22, 90.0, Unit_Degree, "90.0°N"},
        {ValueType_Latitude, 23, 90.0, Unit_Degree, "324000.0″N"},
        {ValueType_Latitude, 24, 90.0, Unit_Degree, "1.6N"},
        {ValueType_Latitude, 20, 324000.0, Unit_Second, "90°00′00.0″N"},
        {ValueType_Latitude, 22, 324000.0, Unit_Second, "90.0°N"},
        {ValueType_Latitude, 23, 324000.0, Unit_Second, "324000.0″N"},
        {ValueType_Latitude, 24, 324000.0, Unit_Second, "1.6N"},
    };
    for (const LimitRow &row : rows) {
        SCOPED_TRACE(row.atLimit);
        const QString atLimit = text(row.atLimit);
        const QString opposite =
            atLimit.chopped(1) + (row.type == ValueType_Longitude ? text("W") : text("S"));
        EXPECT_EQ(shown(row.type, row.limit, row.unit, row.format, 1), atLimit);
        EXPECT_EQ(shown(row.type, -row.limit, row.unit, row.format, 1), opposite);
        // Two doubles beyond, so that a division by 3600 does not bring it back.
        const double beyond = std::nextafter(std::nextafter(row.limit, 1e9), 1e9);
        for (const double value : {beyond, row.limit * 1.1, row.limit * 2.0, 1e300, infinity}) {
            EXPECT_EQ(shown(row.type, value, row.unit, row.format, 1), QString()) << value;
            EXPECT_EQ(shown(row.type, -value, row.unit, row.format, 1), QString()) << value;
        }
    }
}

TEST(ShownLimits, OfALongitudeOf190DegreesIsEmptyInEveryStyleButRadians)
{
    for (const int format : {0, 20, 22, 23})
        EXPECT_EQ(shown(ValueType_Longitude, 190.0, Unit_Degree, format, 2), QString()) << format;
    EXPECT_EQ(shown(ValueType_Longitude, 190.0, Unit_Degree, 24, 2), text("3.32"));
}

TEST(ShownAngleStyle, OfAnyOtherNumberIsEmpty)
{
    for (int format = -2; format <= 40; ++format) {
        if (format == 0 || format == 20 || (format >= 22 && format <= 24))
            continue;
        for (const EValueType type : {ValueType_Longitude, ValueType_Latitude, ValueType_Angle}) {
            for (const double value : {0.0, 30.5, 1e18, notANumber})
                ASSERT_EQ(shown(type, value, Unit_Degree, format, 2), QString()) << format;
        }
    }
}

TEST(ShownAngle, OfNoFiniteNumberIsZeroOrEmpty)
{
    for (const int format : sexagesimalFormats) {
        EXPECT_EQ(shown(ValueType_Longitude, notANumber, Unit_Degree, format, 2),
                  text("000°00′00.00″E"));
        EXPECT_EQ(shown(ValueType_Latitude, notANumber, Unit_Second, format, 0),
                  text("00°00′00″N"));
    }
    for (const int format : {0, 20, 22, 23, 24}) {
        for (const double value : {infinity, -infinity}) {
            for (const EValueType type : {ValueType_Longitude, ValueType_Latitude, ValueType_Angle})
                EXPECT_EQ(shown(type, value, Unit_Degree, format, 2), QString()) << format;
        }
        EXPECT_EQ(shown(ValueType_Angle, notANumber, Unit_Degree, format, 2), QString()) << format;
    }
    for (const int format : {22, 23, 24}) {
        EXPECT_EQ(shown(ValueType_Longitude, notANumber, Unit_Degree, format, 2), QString());
        EXPECT_EQ(shown(ValueType_Latitude, notANumber, Unit_Degree, format, 2), QString());
    }
}

TEST(ShownAngle, OfTheWrongKindIsAZero)
{
    for (const QVariant &value : {QVariant(), QVariant(text("no number")), QVariant(text("30°30′")),
                                  QVariant(QStringList({text("1"), text("2")}))}) {
        EXPECT_EQ(shown(ValueType_Longitude, value, Unit_Degree, 20, 0), text("000°00′00″E"));
        EXPECT_EQ(shown(ValueType_Latitude, value, Unit_Degree, 22, 1), text("00.0°N"));
        EXPECT_EQ(shown(ValueType_Angle, value, Unit_Degree, 23, 1), text("0.0″"));
    }
    EXPECT_EQ(shown(ValueType_Angle, text("30.5"), Unit_Degree, 20, 0), text("30°30′00″"));
}

TEST(ShownAngle, OfTheDefaultSets)
{
    const auto of = [](const stShowConfig &config, EValueType type, double value) {
        return config.getParamValueString(Param(type, Unit_Degree, value), -1);
    };
    stShowConfig cleared;
    cleared.clear();
    EXPECT_EQ(of(stShowConfig(), ValueType_Angle, 1.5), text("5400.00″"));
    EXPECT_EQ(of(cleared, ValueType_Angle, 1.5), text("1.500000000000000°"));
    EXPECT_EQ(of(stShowConfig(), ValueType_Longitude, 116.1), text("116°06′00.000000″E"));
    EXPECT_EQ(of(cleared, ValueType_Latitude, -45.25), text("45°15′00.000000000000000″S"));
}

} // namespace
} // namespace KelStd
