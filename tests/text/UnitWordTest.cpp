#include <KelStd/text/UnitWords.h>

#include "support/Printers.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>

namespace KelStd {
namespace {

struct Symbol
{
    EUnit unit;
    const char *symbol;
};

TEST(UnitWords, LengthsHaveTheirSymbols)
{
    const Symbol rows[] = {
        {Unit_Meter, "m"}, {Unit_Foot, "ft"}, {Unit_USFoot, "us-ft"}, {Unit_MilliMeter, "mm"}};
    ASSERT_EQ(lengthUnits().size(), static_cast<int>(std::size(rows)));
    for (const Symbol &row : rows) {
        const QString symbol = QString::fromLatin1(row.symbol);
        EXPECT_EQ(unitSymbol(row.unit), symbol);
        const LengthUnit *unit = findLengthUnit(symbol);
        ASSERT_NE(unit, nullptr) << symbol;
        EXPECT_EQ(unit->unit, row.unit);
    }
    for (const EUnit unit : {Unit_None, Unit_Yard, Unit_Degree, Unit_Celsius, Unit_Pascal})
        EXPECT_EQ(unitSymbol(unit), QString());
    for (const char *word : {"", "M", "metre", "deg", "U.S ft"})
        EXPECT_EQ(findLengthUnit(QString::fromLatin1(word)), nullptr) << word;
}

TEST(UnitWords, EveryLengthCanBeConverted)
{
    for (const EUnit unit : {Unit_Meter, Unit_Foot, Unit_USFoot, Unit_MilliMeter})
        EXPECT_GT(CoordStringHelper::LengthRatio_otherToMeter(unit), 0.0) << unit;
}

TEST(UnitWords, AngleStylesAreFoundByNameAndFormat)
{
    struct Style
    {
        EFormat format;
        const char *name;
        const char *unit;
    };
    const Style rows[] = {{Format_DegreeMinuteSecond, "dms", "dms"},
                          {Format_Degree, "degree", "deg"},
                          {Format_Second, "second", "arcsec"},
                          {Format_Radian, "radian", "rad"}};
    ASSERT_EQ(angleStyles().size(), static_cast<int>(std::size(rows)));
    for (const Style &row : rows) {
        for (const AngleStyle *style :
             {findAngleStyle(row.format), findAngleStyle(QString::fromLatin1(row.name))}) {
            ASSERT_NE(style, nullptr) << row.name;
            EXPECT_EQ(style->format, row.format);
            EXPECT_STREQ(style->name, row.name);
            EXPECT_STREQ(style->unit, row.unit);
        }
    }
    EXPECT_EQ(findAngleStyle(QStringLiteral("deg")), nullptr);
    EXPECT_EQ(findAngleStyle(Format_UTC), nullptr);
    EXPECT_EQ(findAngleStyle(Format_None), nullptr);
}

// A circle has 1296000 arc seconds.
TEST(UnitWords, TheDecimalsOfAStyleShowAMillionthOfAnArcSecond)
{
    struct Size
    {
        EFormat format;
        double unitsPerArcSecond;
    };
    for (const Size &row : {Size{Format_DegreeMinuteSecond, 1.0}, Size{Format_Second, 1.0},
                            Size{Format_Degree, 1 / 3600.0}, Size{Format_Radian, 4.84813681e-6}}) {
        const double step = std::pow(10.0, -findAngleStyle(row.format)->decimals);
        EXPECT_LE(step, 1.0000001e-6 * row.unitsPerArcSecond);
        EXPECT_GT(10 * step, 1e-6 * row.unitsPerArcSecond);
    }
}

} // namespace
} // namespace KelStd
