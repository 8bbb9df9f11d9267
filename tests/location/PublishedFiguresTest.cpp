#include "location/LocationOperations.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using test::ExpectedFrame;
using test::Frame;
using test::PublishedCase;

TEST(PublishedFiguresFile, IsReadWithoutAnUnknownWord)
{
    for (const std::string &error : test::publishedFigures().errors)
        ADD_FAILURE() << error;
    EXPECT_GE(test::publishedFigures().cases.size(), 57U);
    EXPECT_GE(test::publishedSystems().size(), 25U);
}

/// The whole chain: document, coordinate system, location.
class PublishedFigures : public test::ProjTest, public testing::WithParamInterface<PublishedCase>
{};

TEST_P(PublishedFigures, ComeOutToTheLastDigit)
{
    const PublishedCase &published = GetParam();
    QString error;
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(test::systemPath(published.system), coord, &error)) << error;

    Location location;
    ASSERT_TRUE(test::operationFrom(published.from)
                    .make(published.start, location, nullptr, &coord, &error))
        << error;

    for (const ExpectedFrame &expected : published.expected) {
        const auto computed = test::componentsOf(test::frameOf(location, expected.frame));
        for (std::size_t i = 0; i < computed.size(); ++i) {
            if (!expected.figures[i])
                continue;
            const auto [value, halfUnit] = *expected.figures[i];
            // Half a unit of the last printed digit, and what binary rounding of a figure that lies
            // just at that half adds.
            const double binary = 4e-16 * std::abs(value);
            EXPECT_NEAR(computed[i] / expected.metresPerUnit[i], value,
                        std::max(halfUnit, published.allowed[i]) + binary)
                << published.source << ", component " << i;
            if (published.allowed[i] > 0.0) {
                EXPECT_GT(published.allowed[i], halfUnit) << "an allowance that allows nothing";
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, PublishedFigures, testing::ValuesIn(test::publishedFigures().cases),
                         [](const auto &row) {
                             return "Line" + std::to_string(row.param.line) + "_"
                                    + test::testName(row.param.system);
                         });

} // namespace
} // namespace KelStd
