#include "support/Printers.h"
#include "support/Raised.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

namespace KelStd {
namespace {

using test::messageRaisedByPointer;
using test::messageRaisedByValue;
using Helper = CoordStringHelper;

struct UnitRow
{
    EUnit unit;
    const char *symbol;
    std::optional<const char *> projWord;
    std::optional<double> metres;

    friend void PrintTo(const UnitRow &row, std::ostream *out) { *out << row.unit; }
};

constexpr auto raises = std::nullopt;

const UnitRow units[] = {
    {Unit_None, "", raises, raises},
    {Unit_Meter, "m", "m", 1.0},
    {Unit_MilliMeter, "mm", raises, 0.001},
    {Unit_Foot, "ft", "in", 0.3048},
    {Unit_Yard, "", raises, 0.9144},
    {Unit_Inch, "", raises, 0.0254},
    {Unit_Mile, "", raises, 1609.344},
    {Unit_USFoot, "U.S ft", "us-in", 0.3048006096012192},
    {Unit_Bar, "bar", raises, raises},
    {Unit_Pascal, "par", raises, raises},
    {Unit_MilliBar, "mbar", raises, raises},
    {Unit_MmHg, "mmHg", raises, raises},
    {Unit_InHg, "inHg", raises, raises},
    {Unit_Celsius, "°C", raises, raises},
    {Unit_Fahrenheit, "°F", raises, raises},
    {Unit_Kelvin, "K", raises, raises},
    {Unit_Degree, "°", raises, raises},
    {Unit_Second, "″", raises, raises},
    // Numbers that are no units.
    {static_cast<EUnit>(-1), "", raises, raises},
    {static_cast<EUnit>(1), "", raises, raises},
    {static_cast<EUnit>(12), "", raises, raises},
    {static_cast<EUnit>(105), "", raises, raises},
    {static_cast<EUnit>(203), "", raises, raises},
    {static_cast<EUnit>(302), "", raises, raises},
    {static_cast<EUnit>(2147483647), "", raises, raises},
};

class Unit : public testing::TestWithParam<UnitRow>
{};

TEST_P(Unit, HasItsSymbol)
{
    EXPECT_EQ(Helper::Unit_to_String(GetParam().unit), test::text(GetParam().symbol));
}

TEST_P(Unit, HasItsProjWordOrRaisesAnExceptionByPointer)
{
    const UnitRow &row = GetParam();
    QString word;
    const auto raised =
        messageRaisedByPointer([&] { word = Helper::Unit_to_Proj4String(row.unit); });
    if (row.projWord) {
        EXPECT_EQ(raised, std::nullopt);
        EXPECT_EQ(word, QString::fromLatin1(*row.projWord));
    } else {
        EXPECT_EQ(raised, std::optional<std::string>("Error unit for proj4"));
    }
}

TEST_P(Unit, HasItsMetresOrRaisesAnExceptionByValue)
{
    const UnitRow &row = GetParam();
    double metres = 0.0;
    const auto raised =
        messageRaisedByValue([&] { metres = Helper::LengthRatio_otherToMeter(row.unit); });
    if (row.metres) {
        EXPECT_EQ(raised, std::nullopt);
        EXPECT_EQ(metres, *row.metres);
    } else {
        EXPECT_EQ(raised, std::optional<std::string>(""));
    }
}

std::string nameOf(const testing::TestParamInfo<UnitRow> &row)
{
    const int number = row.param.unit;
    return number < 0 ? std::string("minus_1") : std::to_string(number);
}

INSTANTIATE_TEST_SUITE_P(EveryUnit, Unit, testing::ValuesIn(units), nameOf);

TEST(UnitTable, UsSurveyFootIsTwelveHundredOver3937Metres)
{
    EXPECT_EQ(Helper::LengthRatio_otherToMeter(Unit_USFoot), 1200.0 / 3937.0);
}

TEST(UnitTable, DeliberateOdditiesStand)
{
    EXPECT_EQ(Helper::Unit_to_String(Unit_Pascal), QStringLiteral("par"));
    EXPECT_EQ(Helper::Unit_to_String(Unit_Yard), QString());
    EXPECT_EQ(Helper::Unit_to_Proj4String(Unit_Foot), QStringLiteral("in"));
    EXPECT_EQ(Helper::Unit_to_Proj4String(Unit_USFoot), QStringLiteral("us-in"));
    EXPECT_EQ(messageRaisedByPointer([] { Helper::Unit_to_Proj4String(Unit_MilliMeter); }),
              std::optional<std::string>("Error unit for proj4"));
}

} // namespace
} // namespace KelStd
