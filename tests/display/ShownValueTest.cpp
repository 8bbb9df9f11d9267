// stShowConfig::getParamValueString for everything but angles and times.

#include "support/Printers.h"

#include <KelStd/coord/Param.h>
#include <KelStd/display/stShowConfig.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <climits>
#include <iterator>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace KelStd {
namespace {

using C = stShowConfig;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

constexpr bool keep = true;
constexpr bool erase = false;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A kind of number, and its settings.
struct Kind
{
    EValueType type;
    EUnit C::*unit; ///< null: without a unit
    unsigned char C::*precision;
    bool C::*keepZero;
};

const Kind plainNumber = {ValueType_Double, nullptr, &C::doublePrecision, &C::doubleKeepZero};

const Kind lengths[] = {
    {ValueType_Distance, &C::distanceUnit, &C::distancePrecision, &C::distanceKeepZero},
    {ValueType_Height, &C::heightUnit, &C::heightPrecision, &C::heightKeepZero},
    {ValueType_EarthHeight, &C::earthHeightUnit, &C::earthHeightPrecision, &C::earthHeightKeepZero},
    {ValueType_X, &C::xyUnit, &C::xyPrecision, &C::xyKeepZero},
    {ValueType_Y, &C::xyUnit, &C::xyPrecision, &C::xyKeepZero},
    {ValueType_ElevationHeight, &C::elevationHeightUnit, &C::elevationHeightPrecision,
     &C::elevationHeightKeepZero},
};

const Kind pressure = {ValueType_Pressure, &C::pressureUnit, &C::pressurePrecision,
                       &C::pressureKeepZero};
const Kind temperature = {ValueType_Temprature, &C::tempratureUnit, &C::tempraturePrecision,
                          &C::tempratureKeepZero};

std::vector<Kind> everyKind()
{
    std::vector<Kind> all(std::begin(lengths), std::end(lengths));
    all.insert(all.end(), {plainNumber, pressure, temperature});
    return all;
}

/// The text of `value` with the settings of its own kind; those of every other kind differ.
QString shown(const Kind &kind, const QVariant &value, EUnit from, EUnit to, int precision,
              bool keepZero, int intDigits = -1)
{
    C config;
    for (const Kind &other : everyKind()) {
        if (other.unit != nullptr)
            config.*other.unit = Unit_Mile;
        config.*other.precision = static_cast<unsigned char>(precision == 7 ? 8 : 7);
        config.*other.keepZero = !keepZero;
    }
    if (kind.unit != nullptr)
        config.*kind.unit = to;
    config.*kind.precision = static_cast<unsigned char>(precision);
    config.*kind.keepZero = keepZero;
    return config.getParamValueString(Param(kind.type, from, value), intDigits);
}

QString distance(double metres, int precision, bool keepZero, int intDigits)
{
    return shown(lengths[0], metres, Unit_Meter, Unit_Meter, precision, keepZero, intDigits);
}

TEST(ShownNumber, HasThePrecisionAndTheTrailingZeroRuleOfItsKind)
{
    struct Row
    {
        double value;
        int precision;
        const char *kept;
        const char *erased;
    };
    const Row rows[] = {
        {1.5, 3, "1.500", "1.5"},
        {1.5, 1, "1.5", "1.5"},
        {12.7, 0, "13", "13"},
        {100.0, 0, "100", "100"},
        {100.0, 4, "100.0000", "100"},
        {12.582438888888889, 0, "13", "13"},
        {12.582438888888889, 1, "12.6", "12.6"},
        {12.582438888888889, 4, "12.5824", "12.5824"},
        {12.582438888888889, 15, "12.582438888888889", "12.582438888888889"},
        {1e15, 1, "1000000000000000.0", "1000000000000000"},
    };
    for (const Kind &kind : everyKind()) {
        // Pressures and temperatures stay as they are between equal units.
        const EUnit unit = kind.type == ValueType_Pressure     ? Unit_Bar
                           : kind.type == ValueType_Temprature ? Unit_Kelvin
                                                               : Unit_Meter;
        for (const Row &row : rows) {
            SCOPED_TRACE(std::to_string(kind.type) + ": " + row.kept);
            EXPECT_EQ(shown(kind, row.value, unit, unit, row.precision, keep), text(row.kept));
            EXPECT_EQ(shown(kind, row.value, unit, unit, row.precision, erase), text(row.erased));
            EXPECT_EQ(shown(kind, -row.value, unit, unit, row.precision, keep),
                      text("-") + text(row.kept));
            EXPECT_EQ(shown(kind, -row.value, unit, unit, row.precision, erase),
                      text("-") + text(row.erased));
        }
        EXPECT_EQ(shown(kind, 2.5, unit, unit, 255, keep),
                  text("2.5").leftJustified(2 + 255, QLatin1Char('0')));
        EXPECT_EQ(shown(kind, 2.5, unit, unit, 255, erase), text("2.5"));
    }
}

TEST(ShownNumber, WithoutAUnitIsNotConverted)
{
    EXPECT_EQ(shown(plainNumber, 1.5, Unit_Foot, Unit_Meter, 2, keep), text("1.50"));
    EXPECT_EQ(shown(plainNumber, 1.5, Unit_None, Unit_None, 2, keep), text("1.50"));
}

TEST(ShownLength, IsConvertedIntoTheUnitOfItsKind)
{
    for (const Kind &kind : lengths) {
        SCOPED_TRACE(kind.type);
        EXPECT_EQ(shown(kind, 1.0, Unit_Meter, Unit_MilliMeter, 1, keep), text("1000.0"));
        EXPECT_EQ(shown(kind, 10.0, Unit_Foot, Unit_Meter, 4, erase), text("3.048"));
        EXPECT_EQ(shown(kind, 1200.0, Unit_Meter, Unit_USFoot, 4, keep), text("3937.0000"));
        EXPECT_EQ(shown(kind, 3.0, Unit_Yard, Unit_Foot, 2, erase), text("9"));
        EXPECT_EQ(shown(kind, -36.0, Unit_Inch, Unit_Yard, 2, erase), text("-1"));
        EXPECT_EQ(shown(kind, 1609.344, Unit_Meter, Unit_Mile, 2, keep), text("1.00"));
        // 6378137 m are 20925646.3254593... international feet.
        EXPECT_EQ(shown(kind, 6378137.0, Unit_Meter, Unit_Foot, 4, keep), text("20925646.3255"));
    }
}

TEST(ShownLength, WhoseUnitHasNoFactorIsEmptyAndRaisesNothing)
{
    for (const Kind &kind : lengths) {
        for (const EUnit unit : {Unit_None, Unit_Bar, Unit_Kelvin, Unit_Degree, Unit_Second,
                                 static_cast<EUnit>(-1), static_cast<EUnit>(999)}) {
            SCOPED_TRACE(std::to_string(kind.type) + " in " + std::to_string(unit));
            for (const int intDigits : {-1, 0, 4}) {
                EXPECT_EQ(shown(kind, 1.0, unit, Unit_Meter, 2, keep, intDigits), QString());
                EXPECT_EQ(shown(kind, 1.0, Unit_Meter, unit, 2, keep, intDigits), QString());
                EXPECT_EQ(shown(kind, 1.0, unit, unit, 2, keep, intDigits), QString());
            }
        }
    }
}

TEST(ShownPressure, IsConvertedByTheMatrix)
{
    EXPECT_EQ(shown(pressure, 1.0, Unit_Bar, Unit_MmHg, 4, keep), text("750.0617"));
    EXPECT_EQ(shown(pressure, 1013.25, Unit_MilliBar, Unit_Pascal, 1, keep), text("101325.0"));
    EXPECT_EQ(shown(pressure, 1.5, Unit_Meter, Unit_Bar, 2, erase), text("1.5"));
    EXPECT_EQ(shown(pressure, 1.5, Unit_Bar, Unit_None, 2, erase), text("1.5"));
}

TEST(ShownTemperature, IsConvertedByTheTable)
{
    EXPECT_EQ(shown(temperature, 100.0, Unit_Celsius, Unit_Fahrenheit, 1, keep), text("212.0"));
    EXPECT_EQ(shown(temperature, 0.0, Unit_Kelvin, Unit_Celsius, 2, erase), text("-273.15"));
    EXPECT_EQ(shown(temperature, 21.5, Unit_None, Unit_Kelvin, 2, erase), text("21.5"));
}

TEST(ShownDistance, IsPaddedToTheIntegerDigitsAskedFor)
{
    struct Row
    {
        double metres;
        int precision;
        int intDigits;
        const char *kept;
        const char *erased;
    };
    const Row rows[] = {
        {3.5, 3, 4, "0003.500", "0003.5"},
        {3.5, 3, -1, "3.500", "3.5"},
        {3.5, 3, 0, "3.500", "3.5"},
        {0.25, 3, 0, "0.250", "0.25"}, // a number has its own integer digit at least
        {3.5, 3, 1, "3.500", "3.5"},
        {3.7, 0, 4, "0004", "0004"},
        {3.7, 0, 0, "4", "4"},
        {100.0, 0, 6, "000100", "000100"}, // the zeros of a whole number stay
        {100.0, 2, 6, "000100.00", "000100"},
        {0.0, 2, 3, "000.00", "000"},
        {123456.5, 1, 3, "123456.5", "123456.5"}, // no digit is lost
        {123456.5, 4, 8, "00123456.5000", "00123456.5"},
        {-3.5, 3, 4, "-003.500", "-003.5"}, // the width includes the sign
        {-3.5, 3, -1, "-3.500", "-3.5"},
        {3.5, 3, -5, "3.500", "3.5"}, // below zero there is nothing to fill
        {3.7, 0, -5, "4", "4"},
        {3.7, 0, INT_MIN, "4", "4"},
        {3.5, 3, INT_MIN, "3.500", "3.5"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.kept) + " of " + std::to_string(row.intDigits));
        EXPECT_EQ(distance(row.metres, row.precision, keep, row.intDigits), text(row.kept));
        EXPECT_EQ(distance(row.metres, row.precision, erase, row.intDigits), text(row.erased));
    }
}

TEST(ShownDistance, IsConvertedBeforeItIsPadded)
{
    EXPECT_EQ(shown(lengths[0], 10.0, Unit_Foot, Unit_MilliMeter, 1, keep, 6), text("003048.0"));
}

TEST(ShownDistance, IsNotPaddedBeyondTheDigitsOfADouble)
{
    for (const int intDigits : {310, 100000, INT_MAX - 1, INT_MAX}) {
        for (const int precision : {0, 3, 255}) {
            const QString padded = distance(3.0, precision, keep, intDigits);
            EXPECT_EQ(padded.size(), precision == 0 ? 309 : 309 + 1 + precision);
            EXPECT_EQ(padded.left(309), text("3").rightJustified(309, QLatin1Char('0')));
        }
    }
    EXPECT_EQ(distance(3.0, 2, erase, 309), text("3").rightJustified(309, QLatin1Char('0')));
    EXPECT_EQ(distance(std::numeric_limits<double>::max(), 0, keep, 4).size(), 309);
}

TEST(ShownDistance, AloneIsPadded)
{
    for (const Kind &kind : everyKind()) {
        if (kind.type == ValueType_Distance)
            continue;
        const EUnit unit = kind.type == ValueType_Pressure     ? Unit_Bar
                           : kind.type == ValueType_Temprature ? Unit_Kelvin
                                                               : Unit_Meter;
        for (const int intDigits : {-1, 0, 4, -5, INT_MAX})
            EXPECT_EQ(shown(kind, 3.5, unit, unit, 3, keep, intDigits), text("3.500")) << kind.type;
    }
    const C config;
    for (const int intDigits : {-1, 0, 4, -5, INT_MAX})
        EXPECT_EQ(config.getParamValueString(Param(ValueType_Int32, Unit_None, 7), intDigits),
                  text("7"));
}

TEST(ShownDistance, IsNotPaddedUnlessAsked)
{
    EXPECT_EQ(C().getParamValueString(Param(ValueType_Distance, Unit_Meter, 3.5)), text("3.5"));
}

TEST(ShownValue, OfNoFiniteNumberIsEmpty)
{
    for (const Kind &kind : everyKind()) {
        for (const double value : {infinity, -infinity, notANumber}) {
            for (const int intDigits : {-1, 0, 4}) {
                for (const bool keepZero : {true, false})
                    EXPECT_EQ(shown(kind, value, Unit_Meter, Unit_Meter, 2, keepZero, intDigits),
                              QString())
                        << kind.type;
            }
        }
    }
    for (const Kind &kind : lengths) // a value that leaves the doubles when it is converted
        EXPECT_EQ(shown(kind, 1e308, Unit_Mile, Unit_MilliMeter, 2, keep), QString()) << kind.type;
}

QString plain(EValueType type, const QVariant &value)
{
    return C().getParamValueString(Param(type, Unit_None, value), -1);
}

TEST(ShownValue, OfATextOrAnIntegerIsItself)
{
    for (const char *own : {"", "a text", "1.5", "高程 Höhe ارتفاع", "\n"})
        EXPECT_EQ(plain(ValueType_String, text(own)), text(own));
    EXPECT_EQ(plain(ValueType_String, 1.5), text("1.5"));
    EXPECT_EQ(plain(ValueType_String, QVariant()), QString());
    EXPECT_EQ(plain(ValueType_Int32, 100), text("100"));
    EXPECT_EQ(plain(ValueType_Int32, -7), text("-7"));
    EXPECT_EQ(plain(ValueType_Int32, INT_MIN), text("-2147483648"));
    EXPECT_EQ(plain(ValueType_Int32, text("17")), text("17"));
    EXPECT_EQ(plain(ValueType_Int32, text("no number")), text("0"));
}

TEST(ShownValue, OfAProjFlagIsYesOrNo)
{
    EXPECT_EQ(plain(ValueType_Proj4_Param_Bool, true), text("Yes"));
    EXPECT_EQ(plain(ValueType_Proj4_Param_Bool, false), text("No"));
    EXPECT_EQ(plain(ValueType_Proj4_Param_Bool, 1), text("Yes"));
    EXPECT_EQ(plain(ValueType_Proj4_Param_Bool, text("false")), text("No"));
    EXPECT_EQ(plain(ValueType_Proj4_Param_Bool, QVariant()), text("No"));
}

TEST(ShownValue, OfEveryOtherTypeIsEmpty)
{
    const std::set<int> shownTypes = {1,  2,   4,   6,   7,   8,   9,   10, 11,
                                      12, 100, 101, 102, 103, 104, 105, 300};
    for (int number = -2; number <= 310; ++number) {
        if (shownTypes.count(number) != 0)
            continue;
        for (const QVariant &value : {QVariant(1), QVariant(text("text")), QVariant(true)})
            ASSERT_EQ(plain(static_cast<EValueType>(number), value), QString()) << number;
    }
    for (const int number : {INT_MIN, INT_MAX})
        EXPECT_EQ(plain(static_cast<EValueType>(number), 1), QString());
}

TEST(ShownValue, OfTheWrongKindIsAZero)
{
    for (const QVariant &value :
         {QVariant(), QVariant(text("no number")), QVariant(QStringList({text("1"), text("2")})),
          QVariant(QVariantList({1, 2})), QVariant(text("١٫٥")), QVariant(text("1,5"))}) {
        for (const Kind &kind : everyKind())
            EXPECT_EQ(shown(kind, value, Unit_Meter, Unit_Meter, 2, keep), text("0.00"))
                << kind.type;
        EXPECT_EQ(plain(ValueType_Int32, value), text("0"));
    }
    for (const Kind &kind : everyKind())
        EXPECT_EQ(shown(kind, text("1.25"), Unit_Meter, Unit_Meter, 3, keep), text("1.250"));
}

TEST(ShownValue, OfAMegabyteIsShownAtOnce)
{
    QElapsedTimer clock;
    clock.start();
    constexpr int million = 1000000;
    for (const QString &value :
         {QString(million, QLatin1Char('9')), QString(million, QChar(0x6E2C)),
          QString(million, QChar(0x00B0))}) {
        EXPECT_EQ(plain(ValueType_String, value), value);
        for (const int number : {-1, 0, 2, 3, 4, 5, 6, 8, 9, 10, 11, 12, 100, 101, 103, 200, 300})
            EXPECT_LT(plain(static_cast<EValueType>(number), value).size(), 1000) << number;
    }
    EXPECT_LT(clock.elapsed(), 20000) << "milliseconds"; // under the sanitizers, too
}

} // namespace
} // namespace KelStd
