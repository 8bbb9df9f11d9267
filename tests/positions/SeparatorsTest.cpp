// How the lines of a list are separated, and what stands before their decimals, is what its
// headings and its first position have shown.

#include "positions/ParsedInput.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using positions::Frame;
using positions::InputForm;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

struct Point
{
    const char *name;
    double northing;
    double easting;
    double height;
};

struct List
{
    const char *testName;
    QByteArray input;
    std::vector<Point> points;
    std::vector<const char *> failures = {}; ///< "LINE: " and the beginning of the reason
};

void PrintTo(const List &list, std::ostream *out)
{
    *out << list.testName;
}

class SeparatorsOfLists : public testing::TestWithParam<List>
{};

TEST_P(SeparatorsOfLists, AreThoseOfTheirFirstLines)
{
    const List &list = GetParam();
    const ParsedInput all = parsed(parserFor(InputForm(Frame::LocalProjected)), list.input);
    EXPECT_EQ(all.end, QString());
    ASSERT_EQ(all.positions.size(), list.points.size());
    for (std::size_t i = 0; i < list.points.size(); ++i) {
        const Point &point = list.points[i];
        EXPECT_EQ(all.names[i], point.name);
        EXPECT_DOUBLE_EQ(all.positions[i].getENU().n, point.northing);
        EXPECT_DOUBLE_EQ(all.positions[i].getENU().e, point.easting);
        EXPECT_DOUBLE_EQ(all.positions[i].getENU().u, point.height);
    }
    ASSERT_EQ(all.failures.size(), list.failures.size());
    for (std::size_t i = 0; i < list.failures.size(); ++i)
        EXPECT_TRUE(all.failures[i].startsWith(QString::fromUtf8(list.failures[i])))
            << all.failures[i];
}

const QByteArray headings = "point,northing,easting,height,remark\n";

const List lists[] = {
    {"SemicolonsInARemark",
     headings + "1,463000,155000,1,x\n2,463001,155001,2,oak;d=3;h=4;x;y\n3,463002,155002,3,a;b\n",
     {{"1", 463000, 155000, 1}, {"2", 463001, 155001, 2}, {"3", 463002, 155002, 3}}},
    {"InTheFirstLineBelowHeadings",
     headings + "1,463000,155000,1,a;b\n",
     {{"1", 463000, 155000, 1}}},
    {"BelowHeadingsBehindASign",
     "# " + headings + "1,463000,155000,1,a;b\n",
     {{"1", 463000, 155000, 1}}},
    {"WithoutHeadings",
     "A,463000,155000,1\nB;2,463001,155001,2\n",
     {{"A", 463000, 155000, 1}, {"B;2", 463001, 155001, 2}}},
    {"CommasBetweenTabulators",
     "point\tnorthing\teasting\theight\tremark\n"
     "1\t463000.5\t155000.5\t1.5\toak, old\n2\t463001\t155001\t2\tnail,pk\n",
     {{"1", 463000.5, 155000.5, 1.5}, {"2", 463001, 155001, 2}}},
    {"CommasBesideDecimalCommas",
     "point\tnorthing\teasting\theight\tremark\n"
     "1\t463000,5\t155000,5\t1,5\toak\n2\t463001,5\t155001,5\t2,5\tnail, pk\n",
     {{"1", 463000.5, 155000.5, 1.5}, {"2", 463001.5, 155001.5, 2.5}}},
    {"CommasBetweenBlanks",
     "point northing easting height remark\n1 463000 155000 1 oak,old;7\n",
     {{"1", 463000, 155000, 1}}},
    {"ALineOfItsOwn",
     headings + "1,463000,155000,1,x\n2;463001;155001;2;x\n3,463002,155002,3,x\n",
     {{"1", 463000, 155000, 1}, {"2", 463001, 155001, 2}, {"3", 463002, 155002, 3}}},
    // Split at commas the first position has as many fields, and none of them is a number.
    {"PositionsSeparatedOtherwiseThanTheirHeadings",
     "point,northing,easting,height\n1;463000,5;155000,5;1,5\n2;463001,5;155001,5;2,5\n",
     {{"1", 463000.5, 155000.5, 1.5}, {"2", 463001.5, 155001.5, 2.5}}},
    {"BothWaysAPosition",
     headings + "1,463000,155000,1,x\n2,463001,155001,2,oak;1;2;3;y\n",
     {{"1", 463000, 155000, 1}},
     {"3: separated by commas and by semicolons the line is a position"}},
    // Without the settled separator it would be the point "x" at 1, 2.
    {"NeitherWayOfAsManyFields",
     headings + "1,463000,155000,1,x\n2,463001,155001,oak;7\n",
     {{"1", 463000, 155000, 1}},
     {"3: 2 fields found; line 1 has 5"}},
    {"ThePointOfThousandsBelowDecimalCommas",
     "P1;463000,5;155000,5;1,2\nP2;463000;155000;2\nP3;463000;155000;1.234\nP4;463.000;155.000;"
     "12\n",
     {{"P1", 463000.5, 155000.5, 1.2}, {"P2", 463000, 155000, 2}},
     {"3: \"1.234\" has a point, and line 1 has decimal commas",
      "4: \"463.000\" has a point, and line 1 has decimal commas"}},
    {"DecimalCommasBelowHeadings",
     "point;northing;easting;height\nP1;463000,5;155000,5;1,2\nP4;463.000;155.000;12\n",
     {{"P1", 463000.5, 155000.5, 1.2}},
     {"3: \"463.000\" has a point, and line 2 has decimal commas"}},
    {"DecimalCommasInQuotationMarks",
     "P1,\"463000,5\",\"155000,5\",\"1,2\"\nP4,463.000,155.000,12\n",
     {{"P1", 463000.5, 155000.5, 1.2}},
     {"2: \"463.000\" has a point, and line 1 has decimal commas"}},
    {"PointsInARemarkBelowDecimalCommas",
     "point;northing;easting;height;remark\nP1;463000,5;155000,5;1,2;1.5\nP2;463001;155001;2;v1."
     "2\n",
     {{"P1", 463000.5, 155000.5, 1.2}, {"P2", 463001, 155001, 2}}},
};

INSTANTIATE_TEST_SUITE_P(, SeparatorsOfLists, testing::ValuesIn(lists),
                         [](const auto &test) { return test.param.testName; });

} // namespace
} // namespace KelStd
