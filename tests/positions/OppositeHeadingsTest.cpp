// Headings of numbers that count the other way than they would be read.

#include "positions/ParsedInput.h"
#include "support/Mentions.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::Frame;
using positions::InputForm;
using test::Mentions;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

/// The three picked columns under these headings, the one at `component` being in question.
ParsedInput read(Frame frame, int component, const QString &heading,
                 EEllipsoidDirection axes = EllipsoidDirection_ENU)
{
    InputForm form(frame);
    form.localAxes = axes;
    QStringList headings{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    headings[component] = heading;
    return parsed(parserFor(form, "1,2,3"),
                  headings.join(QLatin1Char(';')).toUtf8() + "\n73.5;40.5;7\n");
}

struct Row
{
    Frame frame;
    int component;
    const char16_t *heading;
    const char *reason; ///< empty: it is read
};

void expectRow(const Row &row, EEllipsoidDirection axes = EllipsoidDirection_ENU)
{
    const QString heading = QString::fromUtf16(row.heading);
    SCOPED_TRACE(heading.toStdString());
    const ParsedInput result = read(row.frame, row.component, heading, axes);
    if (*row.reason == '\0') {
        EXPECT_EQ(result.end, QString());
        EXPECT_EQ(result.positions.size(), 1U);
        return;
    }
    EXPECT_THAT(result.end, Mentions(row.reason));
    EXPECT_TRUE(result.positions.empty());
}

constexpr auto llh = Frame::Wgs84Geographic;
constexpr auto localLlh = Frame::LocalGeographic;
constexpr auto neh = Frame::LocalProjected;

constexpr char west[] = "\"west\", but longitude is read eastwards";
constexpr char letterW[] = "\"W\", but longitude is read eastwards";
constexpr char letterS[] = "\"S\", but latitude is read northwards";
constexpr char southing[] = "\"southing\", but northing is read northwards";

TEST(OppositeHeadings, AreRefusedWhereTheyArePicked)
{
    const Row rows[] = {
        {llh, 0, u"West Longitude", west},
        {llh, 0, u"westLongitude", west},
        {llh, 0, u"Longitude west of Greenwich", west},
        {llh, 0, u"Longitude (W)", letterW},
        {llh, 0, u"Longitude [deg W]", letterW},
        {llh, 0, u"Longitude (\u00B0W)", letterW},
        {llh, 0, u"lon_W", letterW},
        {llh, 0, u"lonW", letterW},
        {llh, 0, u"lon_w_deg", letterW},
        {llh, 0, u"lon_W_wgs84", letterW},
        {llh, 0, u"W Longitude", letterW},
        {llh, 0, u"LONW", "\"lonw\", but longitude"},
        {llh, 0, u"W", letterW},
        {llh, 0, u"lon (+W)", letterW},
        {llh, 0, u"lon (W+, E-)", letterW},
        {llh, 0, u"lon (positive west, negative east)", west},
        {llh, 0, u"lon (E-)", "\"E negative\", but longitude is read eastwards"},
        {llh, 0, u"lon - W", letterW},
        {llh, 0, u"Longitude (O)", "\"O\", but longitude is read eastwards"},
        {llh, 0, u"lon (W deg)", letterW},
        {llh, 0, u"Westl\u00E4nge", "\"westl\u00E4nge\", but longitude"},
        {llh, 0, u"westliche L\u00E4nge", "\"westliche\", but longitude"},
        {llh, 0, u"BATI BOYLAMI", "\"bati\", but longitude"},
        {llh, 0, u"longitude ouest", "\"ouest\", but longitude"},
        {llh, 1, u"Latitude South", "\"south\", but latitude is read northwards"},
        {llh, 1, u"Lat (deg S)", letterS},
        {llh, 1, u"lat_S", letterS},
        {llh, 1, u"G\u00FCney enlemi", "\"g\u00FCney\", but latitude"},
        {neh, 0, u"southing", southing},
        {neh, 0, u"Northing (South)", "\"south\", but northing is read northwards"},
        {neh, 0, u"Southing [m]", southing},
        {neh, 0, u"local_southing_m", southing},
        {neh, 0, u"S", "\"S\", but northing is read northwards"},
        {neh, 1, u"westing", "\"westing\", but easting is read eastwards"},
        {neh, 1, u"Easting (W)", "\"W\", but easting is read eastwards"},
        {neh, 1, u"southing", "its heading says \"southing\""},
        {neh, 0, u"Tiefe", "its heading says \"tiefe\""},
        {neh, 2, u"westing", "its heading says \"westing\""},
        {neh, 2, u"depth", "\"depth\", but height is read upwards"},
        {neh, 2, u"Depth_m", "\"depth\", but height is read upwards"},
        {neh, 2, u"Wassertiefe", "\"wassertiefe\", but height is read upwards"},
        {neh, 2, u"derinlik", "\"derinlik\", but height"},
        {neh, 2, u"profondeur", "\"profondeur\", but height"},
        {neh, 2, u"diepte", "\"diepte\", but height"},
        {neh, 2, u"down", "\"down\", but height is read upwards"},
        {llh, 2, u"depth", "\"depth\", but height is read upwards"},
    };
    for (const Row &row : rows)
        expectRow(row);
}

TEST(OppositeHeadings, AreNotSeenInOrdinaryOnes)
{
    const Row rows[] = {
        {llh, 0, u"East Longitude", ""},
        {llh, 0, u"Longitude (E/W)", ""},
        {llh, 0, u"lon E/W", ""},
        {llh, 0, u"Longitude (+E, -W)", ""},
        {llh, 0, u"Longitude (-W)", ""},
        {llh, 0, u"Longitude (West negative)", ""},
        {llh, 0, u"lon, west is negative", ""},
        {llh, 0, u"Weston lon", ""},
        {llh, 0, u"lon_neg_W", ""},
        {llh, 0, u"lon (E+ W-)", ""},
        {llh, 0, u"Geogr. L\u00E4nge [\u00B0O]", ""},
        {llh, 1, u"Latitude (N/S)", ""},
        {llh, 1, u"lat of W gate", ""},
        {llh, 2, u"height (depth negative)", ""},
        {llh, 2, u"height of the west wall", ""},
        {neh, 0, u"Northing(s)", ""},
        {neh, 0, u"S_id", ""},
        {neh, 0, u"X (S-JTSK)", ""},
        {neh, 0, u"N UTM 34 S", ""},
        {neh, 0, u"N (UTM zone 34 South)", ""},
        {neh, 1, u"Y_O", ""},
        {neh, 0, u"Series", ""},
        {neh, 0, u"W-Nr", ""},
        {neh, 0, u"South Grid Northing", ""},
        {neh, 1, u"UTM 33S East", ""},
        {neh, 1, u"Southampton East", ""},
        {neh, 2, u"H south pier", ""},
    };
    for (const Row &row : rows)
        expectRow(row);
    // Of columns that are not picked they say nothing.
    EXPECT_EQ(parsed(parserFor(InputForm(neh), "S,n,e,h"), "S;n;e;h;depth;W\nA;1;2;3;4;5\n").end,
              QString());
}

/// As the plane of Hartebeesthoek94 is measured, and its own columns are called.
TEST(OppositeHeadings, AreTheOthersWhereASystemCountsBackwards)
{
    const Row rows[] = {
        {neh, 0, u"southing", ""},
        {neh, 1, u"westing", ""},
        {neh, 0, u"S", ""},
        {neh, 0, u"local_northing_m", ""},
        {neh, 1, u"local_easting_m", ""},
        {neh, 0, u"northing", ""},
        {neh, 1, u"westing", ""},
        {neh, 0, u"westing", "its heading says \"westing\""},
        {neh, 2, u"depth", "\"depth\", but height is read upwards"},
        {localLlh, 0, u"West Longitude", ""},
        {localLlh, 0, u"lon_W", ""},
        {localLlh, 0, u"local_longitude_deg", ""},
        {localLlh, 0, u"Longitude (E)", "\"E\", but longitude is read westwards"},
        {localLlh, 1, u"North latitude", "\"north\", but latitude is read southwards"},
        {llh, 0, u"West Longitude", west},
    };
    for (const Row &row : rows)
        expectRow(row, EllipsoidDirection_WSU);
    // Only the longitudes count westwards.
    expectRow({localLlh, 0, u"lon_W", ""}, EllipsoidDirection_WNU);
    expectRow({localLlh, 1, u"lat_S", letterS}, EllipsoidDirection_WNU);
    expectRow({neh, 0, u"southing", southing}, EllipsoidDirection_WNU);
    expectRow({neh, 1, u"westing", ""}, EllipsoidDirection_WNU);
}

TEST(OppositeHeadings, AreNotThoseOfALineOfUnitsWhereASystemCountsBackwards)
{
    InputForm form(localLlh);
    form.localAxes = EllipsoidDirection_WSU;
    const ParsedInput own = parsed(parserFor(form), "lon;lat;h\ndeg W;deg S;m\n29.5;25.5;1\n");
    EXPECT_EQ(own.end, QString());
    EXPECT_EQ(own.positions, (std::vector<Pos>{Pos::fromLongLatH(29.5, 25.5, 1)}));
    EXPECT_THAT(
        parsed(parserFor(form), "lon;lat;h\ndeg E;deg S;m\n29.5;25.5;1\n").end,
        Mentions("\"deg E\" counts northwards or eastwards; longitude is read southwards or "
                 "westwards, with a minus otherwise"));
}

TEST(OppositeHeadings, AreRefusedWithWhatToDo)
{
    EXPECT_EQ(
        read(llh, 0, QStringLiteral("West Longitude")).end,
        QStringLiteral(
            "1: --columns picks the column \"West Longitude\" as longitude; its heading says "
            "\"west\", but longitude is read eastwards: write its numbers with the other sign "
            "below another heading, or pick another column; --skip 1 passes over the line"));
    // Nor are they proposed where nothing is picked.
    const QString unpicked =
        parsed(parserFor(InputForm(llh)), "West Longitude;North Latitude;h\n73.5;40.5;7\n").end;
    EXPECT_THAT(unpicked,
                Mentions("it names no longitude; \"West Longitude\" says \"west\", but "
                         "longitude is read eastwards; --columns picks columns with other "
                         "headings of these: \"North Latitude\", \"h\". Accepted"));
}

} // namespace
} // namespace KelStd
