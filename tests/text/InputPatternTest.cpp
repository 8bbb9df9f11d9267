#include "support/Printers.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

#include <set>

namespace KelStd {
namespace {

using test::text;

const std::set<int> integerTypes = {2, 3};
const std::set<int> realTypes = {4, 6, 7, 100, 101, 102, 103, 104, 105};

TEST(InputPattern, IsThisTextForEveryType)
{
    for (int number = -2; number <= 310; ++number) {
        const char *expected = integerTypes.count(number) != 0 ? R"(^(-?)(0|[1-9]\d+)$)"
                               : realTypes.count(number) != 0  ? R"(^(-?[0-9])|(-?\d+)(\.\d+)$)"
                                                               : "";
        ASSERT_EQ(CoordStringHelper::GetRegExp_by_ValueType(static_cast<EValueType>(number)),
                  text(expected))
            << number;
    }
}

/// Which texts a pattern takes, as an input field asks it.
struct Taken
{
    const char *typed;
    bool taken;
};

template <std::size_t count>
void expectTaken(EValueType type, const Taken (&rows)[count])
{
    const QRegularExpression pattern(CoordStringHelper::GetRegExp_by_ValueType(type));
    ASSERT_TRUE(pattern.isValid());
    for (const Taken &row : rows)
        EXPECT_EQ(pattern.match(text(row.typed)).hasMatch(), row.taken) << row.typed;
}

TEST(InputPattern, OfIntegersHasNoSingleDigitFromOneToNine)
{
    const Taken rows[] = {
        {"0", true},    {"-0", true},   {"42", true},   {"-42", true},  {"1000000", true},
        {"1", false},   {"7", false},   {"9", false},   {"-7", false},  {"007", false},
        {"", false},    {"-", false},   {"+42", false}, {"4 2", false}, {"42x", false},
        {"x42", false}, {"4.2", false}, {"٤٢", false}, // Arabic digits
    };
    expectTaken(ValueType_Int32, rows);
    expectTaken(ValueType_Int64, rows);
}

TEST(InputPattern, OfRealNumbersLooksAtTheBeginningOrAtTheEnd)
{
    const Taken rows[] = {
        {"1", true},         {"-1", true},      {"1.5", true}, {"-1.5", true},      {"5.", true},
        {"1 or more", true}, {"-5x", true},     {"1,5", true}, {"about 1.5", true}, {"x-1.5", true},
        {"+1.5", true},      {"x1.5x", false},  {"x5", false}, {".5", false},       {"", false},
        {"-", false},        {"number", false}, {"+5", false}, {"١٫٥", false}, // Arabic digits
    };
    for (const EValueType type : {ValueType_Double, ValueType_Distance, ValueType_Height,
                                  ValueType_Longitude, ValueType_Latitude, ValueType_EarthHeight,
                                  ValueType_X, ValueType_Y, ValueType_ElevationHeight}) {
        SCOPED_TRACE(type);
        expectTaken(type, rows);
    }
}

} // namespace
} // namespace KelStd
