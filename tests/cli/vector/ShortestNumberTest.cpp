#include <cli/vector/ShortestNumber.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using cli::vector::shortestDecimal;
using cli::vector::shortestNumber;

TEST(ShortestNumbers, HaveExponentsWhereTheyAreNoMeasuresOnly)
{
    const struct
    {
        double number;
        const char *text;
    } rows[] = {
        {0.0, "0"},
        {7.0, "7"},
        {-1.25, "-1.25"},
        {0.1, "0.1"},
        {1e6, "1000000"},
        {-2e6, "-2000000"},
        {123456789.0, "123456789"},
        {5780964.123456789, "5780964.123456789"},
        {1e15, "1000000000000000"},
        {1e-5, "0.00001"},
        {1.25e-7, "0.000000125"},
        {1e16, "1e+16"},
        {1e-8, "1e-08"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(shortestNumber(row.number).toStdString(), row.text);
}

TEST(ShortestNumbers, AsDecimalsHaveNone)
{
    EXPECT_EQ(shortestDecimal(1e16).toStdString(), "10000000000000000");
    EXPECT_EQ(shortestDecimal(1e-8).toStdString(), "0.00000001");
    EXPECT_EQ(shortestDecimal(0.1).toStdString(), "0.1");
}

} // namespace
} // namespace KelStd
