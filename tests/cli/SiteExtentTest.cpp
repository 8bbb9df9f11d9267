// What is said of positions where the fit of a site does not hold.

#include "cli/ProgramRun.h"
#include "cli/SiteEdits.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;
using test::text;

/// Control points at the corners of a rectangle of 400 m to the north and 300 m to the east, whose
/// coordinates at the site are those of the plane.
struct Row
{
    const char *name;
    const char *method;
    const char *uses[4]; ///< "hv", "h" or "v"; null for no such point
    const char *inside;  ///< northing and easting
    const char *outside;
    QList<const char *> told; ///< of the one outside
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class SiteExtentOf : public testing::TestWithParam<Row>
{};

TEST_P(SiteExtentOf, IsWarnedOfOutside)
{
    const Row &row = GetParam();
    const ProgramRun program;
    const QString base = test::systemPath(text("rd_new.xml"));
    const char *const places[] = {"463000,155000", "463000,155300", "463400,155000",
                                  "463400,155300"};
    QByteArray input;
    for (int i = 0; i < 4; ++i)
        input += QByteArray("P") + QByteArray::number(i) + ',' + places[i] + ",10\n";
    const auto made =
        program.run({text("convert"), text("--system"), base, text("--from=local-neh"),
                     text("--csv"), text("--no-header"), text("--frames=wgs84-llh"), text("-")},
                    input);
    ASSERT_EQ(made.status, 0) << made.err;
    QByteArray list = "name,longitude,latitude,height,northing,easting,elevation,use\n";
    for (int i = 0; i < 4; ++i) {
        if (row.uses[i] != nullptr)
            list +=
                made.outLines().value(i).toLatin1() + ',' + places[i] + ",10," + row.uses[i] + '\n';
    }
    const QString site = program.home().path(text("site.xml"));
    QStringList fit = {text("site"),     text("fit"),
                       text("--system"), base,
                       text("--points"), program.file(text("points.csv"), list),
                       text("-o"),       site};
    fit += text(row.method).split(QLatin1Char(' '));
    const auto fitted = program.run(fit);
    ASSERT_EQ(fitted.status, 0) << fitted.err;

    const auto told = [&](const char *place) {
        return program
            .run({text("convert"), text("--system"), site, text("--from=site-neh"), text("--csv"),
                  text("-")},
                 QByteArray(place) + ",10\n")
            .err;
    };
    EXPECT_FALSE(told(row.inside).contains(text("not hold"))) << told(row.inside);
    const QString outside = told(row.outside);
    for (const char *words : row.told)
        EXPECT_THAT(outside, Mentions(words));
    EXPECT_EQ(outside.count(text("not hold")), row.told.size());
}

INSTANTIATE_TEST_SUITE_P(
    Sites, SiteExtentOf,
    testing::Values(
        Row{"OnePoint",
            "--horizontal shift --vertical fixed",
            {"hv", nullptr, nullptr, nullptr},
            "463000,155099",
            "463000,155101",
            {"1 of 1 position lies more than 100 m from the only one of the site's control points, "
             "where the fit does not hold; the first is <stdin>:1"}},
        Row{"TwoPoints",
            "--horizontal four --vertical fixed",
            {"hv", "hv", nullptr, nullptr},
            "463299,155150",
            "463301,155150",
            {"1 of 1 position lies farther from the line of the site's control points than it is "
             "long, where the fit does not hold"}},
        Row{"Area",
            "--horizontal four --vertical plane",
            {"hv", "hv", "hv", nullptr},
            "463100,155100",
            "463400,155300",
            {"1 of 1 position lies outside the hull of the site's control points, where the fit "
             "does not hold"}},
        Row{"HeightsOfLess",
            "--horizontal four --vertical plane",
            {"hv", "hv", "hv", "h"},
            "463100,155100",
            "463390,155290",
            {"1 of 1 position lies outside the hull of the site's control points used in height, "
             "where heights of the fit do not hold"}},
        Row{"PlanOfLess",
            "--horizontal four --vertical plane",
            {"hv", "hv", "hv", "v"},
            "463100,155100",
            "463390,155290",
            {"1 of 1 position lies outside the hull of the site's control points used in plan, "
             "where northing and easting of the fit do not hold"}},
        Row{"OneShiftOfHeights",
            "--horizontal four --vertical fixed",
            {"hv", "h", "h", "h"},
            "463390,155290",
            "463390,155310",
            {"1 of 1 position lies outside the hull of the site's control points, where"}},
        Row{"Both",
            "--horizontal four --vertical plane",
            {"hv", "hv", "hv", "h"},
            "463100,155100",
            "463500,155400",
            {"used in plan, where", "used in height, where"}}),
    [](const auto &row) { return std::string(row.param.name); });

} // namespace
} // namespace KelStd
