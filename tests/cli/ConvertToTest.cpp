// From one system to another in one run.

#include "cli/LibraryRun.h"
#include "location/PublishedFigures.h"

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;

class ConvertTo : public LibraryRun
{
protected:
    static QString system(const char *name) { return test::systemPath(text(name)); }

    test::ProgramResult convert(const QString &from, const QString &to, const QByteArray &input,
                                std::initializer_list<const char *> options = {}) const
    {
        QStringList arguments{text("convert"), text("--system"), from, text("--to"), to};
        for (const char *option : options)
            arguments += text(option);
        return m_program.run(arguments, input);
    }
};

const QByteArray dutch = "n,e,h\n557179.10146,196139.43635,1.71622\n"
                         "501375.71087,145683.14313,-41.74971\n";

// Of PROJ's program cct, release 9.1.1, by the steps +inv +proj=sterea, +proj=cart, +proj=helmert
// (+exact), its inverse, +inv +proj=cart and the other projection, with the systems' parameters.
TEST_F(ConvertTo, HasTheNumbersOfProjsOwnSteps)
{
    struct
    {
        const char *to;
        const char *rows;
    } const systems[] = {
        {"ed50_utm_31n.xml", ",5876691.71056,701399.10478,0.97314,ellipsoid\n"
                             ",5819241.77729,652819.75294,-42.95609,ellipsoid\n"},
        {"belge_lambert_72.xml", ",411568.03828,259605.68162,2.28072,ellipsoid\n"
                                 ",355037.72329,209875.89175,-40.33733,ellipsoid\n"},
    };
    for (const auto &row : systems) {
        const auto result = convert(system("rd_new.xml"), system(row.to), dutch,
                                    {"--from=local-neh", "--frames=local-neh"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, text("point,local_northing_m,local_easting_m,local_height_m,"
                                   "local_height_reference\n")
                                  + text(row.rows));
    }
}

TEST_F(ConvertTo, HasTheSameWgs84FramesAsTheInputsSystem)
{
    const auto own = m_program.convert(text("rd_new.xml"), dutch,
                                       {text("--from=local-neh"), text("--frames=wgs84-llh")});
    EXPECT_EQ(convert(system("rd_new.xml"), system("ed50_utm_31n.xml"), dutch,
                      {"--from=local-neh", "--frames=wgs84-llh"})
                  .out,
              own.out);
}

TEST_F(ConvertTo, ComesBack)
{
    const auto there = convert(system("rd_new.xml"), system("belge_lambert_72.xml"), dutch,
                               {"--from=local-neh", "--fields=local_northing,local_easting,"
                                                    "local_height"});
    ASSERT_EQ(there.status, 0) << there.err;
    const auto back =
        convert(system("belge_lambert_72.xml"), system("rd_new.xml"), there.out.toUtf8(),
                {"--from=local-neh", "--precision=4",
                 "--fields=local_northing,local_easting,local_height"});
    EXPECT_EQ(back.out, text("local_northing_m,local_easting_m,local_height_m\n"
                             "557179.1015,196139.4363,1.7162\n"
                             "501375.7109,145683.1431,-41.7497\n"));
}

TEST_F(ConvertTo, ComputesTheFactorsOfTheOtherSystem)
{
    const auto result = convert(system("rd_new.xml"), system("ed50_utm_31n.xml"), dutch,
                                {"--from=local-neh", "--fields=point_scale,convergence"});
    const auto utm =
        m_program.convert(text("ed50_utm_31n.xml"), "n,e,h\n5876691.71056,701399.10478,0.97314\n",
                          {text("--from=local-neh"), text("--fields=point_scale,convergence")});
    EXPECT_EQ(result.outLines().value(1), utm.outLines().value(1));
}

QByteArray withOrigin(const char *name, const char *origin)
{
    return test::editedSystem(QString::fromLatin1(name),
                              {{QStringLiteral("</Coord>"), QStringLiteral("<Origin ver=\"1\">%1"
                                                                           "</Origin></Coord>")
                                                                .arg(QLatin1String(origin))}});
}

const char *const foot = "<Plane_Unit name=\"US survey foot\" metres=\"0.304800609601219\"/>";

// EPSG Guidance Note 7-2, "Lambert Conic Conformal (2SP)": 28 degrees 30' N, 96 degrees W is at
// 2963503.91, 254759.80 US survey feet.
TEST_F(ConvertTo, ReadsAndPrintsEachPlaneInItsOwnUnit)
{
    const QString texas = given("texas.xml", withOrigin("texas_south_central.xml", foot));
    // The same ellipsoid in metres; neither has a datum shift.
    const QString metric = system("texas_south_central.xml");
    const auto there = convert(texas, metric, "n,e,h\n254759.80,2963503.91,5\n",
                               {"--from=local-neh", "--precision=2", "--frames=local-neh"});
    EXPECT_EQ(there.outLines().value(1), text(",77650.94,903277.80,5.00,ellipsoid"));
    EXPECT_EQ(there.err, text("kelstd: note: northing and easting are read in us-ft, the unit of "
                              "%1, all other lengths in m; --length-unit overrules that\n")
                             .arg(texas));
    const auto back = convert(metric, texas, "n,e,h\n77650.94,903277.80,5\n",
                              {"--from=local-neh", "--precision=1", "--frames=local-neh"});
    EXPECT_EQ(back.outLines().value(0),
              text("point,local_northing_us_ft,local_easting_us_ft,local_height_m,"
                   "local_height_reference"));
    EXPECT_EQ(back.outLines().value(1), text(",254759.8,2963503.9,5.0,ellipsoid"));
    EXPECT_THAT(back.err, Mentions("are printed in us-ft, the unit of "));
    EXPECT_EQ(
        convert(metric, texas, "77650.94,903277.80,5\n", {"--from=local-neh", "--frames=local-llh"})
            .err,
        QString());
}

TEST_F(ConvertTo, HoldsPositionsAgainstBothAreas)
{
    const char *area = "<Area west=\"%1\" south=\"50\" east=\"%2\" north=\"54\"/>";
    const auto with = [&](const char *file, const char *west, const char *east) {
        return given(file,
                     withOrigin("rd_new.xml", text(area).arg(text(west), text(east)).toUtf8()));
    };
    const QString west = with("west.xml", "3", "6");
    const QString east = with("east.xml", "5", "8");
    const auto result = convert(west, east, "4,52,0\n5.5,52,0\n7,52,0\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(
        result.err,
        Mentions(qPrintable(
            text("warning: 1 of 3 positions lie outside the area of use of %1, ").arg(west))));
    EXPECT_THAT(result.err, Mentions("; the first is <stdin>:3"));
    EXPECT_THAT(
        result.err,
        Mentions(qPrintable(
            text("warning: 1 of 3 positions lie outside the area of use of %1, ").arg(east))));
    EXPECT_THAT(result.err, Mentions("; the first is <stdin>:1"));
    EXPECT_THAT(convert(system("rd_new.xml"), east, "52,5.5,0\n").err,
                Mentions("WARNING: 1 position would lie inside the area of use with longitude and "
                         "latitude swapped"));
}

// UTM zone 31 is one-to-one there, the Dutch grid is not; and the other way round.
TEST_F(ConvertTo, RefusesWhatIsNotOneToOneInEither)
{
    const QString rd = system("rd_new.xml");
    const QString utm = system("ed50_utm_31n.xml");
    const QByteArray far = "-174.7,-52.1,0\n";
    const auto second = convert(utm, rd, far);
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.err, Mentions(qPrintable(text("<stdin>:1: "))));
    EXPECT_THAT(second.err, Mentions("outside where the projection is one-to-one"));
    EXPECT_EQ(second.outLines().size(), 1);
}

TEST_F(ConvertTo, NamesTheSystemThatCannotBeUsed)
{
    const auto none = convert(system("rd_new.xml"), text("no such system"), dutch);
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(none.out, QString());
    EXPECT_THAT(none.err, Mentions("no such system"));
    const QString bad =
        given("bad.xml",
              test::editedSystem(text("rd_new.xml"), {{text("\"sterea\""), text("\"nope\"")}}));
    const auto refused = convert(system("rd_new.xml"), bad, dutch);
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, Mentions("bad.xml"));
    const auto empty = convert(system("rd_new.xml"), QString(), dutch);
    EXPECT_EQ(empty.status, 2);
    EXPECT_THAT(empty.err, Mentions("--to has no system"));
}

QByteArray withGeoid(const char *name)
{
    return test::editedSystem(
        QString::fromLatin1(name),
        {{QStringLiteral("modelFileName=\"\""), QStringLiteral("modelFileName=\"egm96_15.gtx\"")}});
}

// The model of the one counts for heights that are read, that of the other for those that are
// printed.
TEST_F(ConvertTo, KeepsHeightsAboveTheGeoidApart)
{
    const QString rd = system("rd_new.xml");
    const QString utm = system("ed50_utm_31n.xml");
    const QString rdAbove = given("rd_above.xml", withGeoid("rd_new.xml"));
    const QString utmAbove = given("utm_above.xml", withGeoid("ed50_utm_31n.xml"));
    const std::initializer_list<const char *> options{"--from=local-neh", "--frames=local-neh"};
    const auto heightOf = [&](const QString &from, const QString &to) {
        const auto result = convert(from, to, "n,e,h\n463000,155000,0\n", options);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, QString());
        const QString reference = result.outLines().value(1).section(QLatin1Char(','), -1);
        EXPECT_EQ(reference, to == utmAbove ? text("geoid egm96_15.gtx") : text("ellipsoid"));
        return result.outLines().value(1).section(QLatin1Char(','), 3, 3).toDouble();
    };
    // PROJ's program cct gives 43.29724 m for the separation there (+proj=vgridshift), and
    // 43.34753 m for the WGS84 height of 0 m on the Dutch grid's ellipsoid.
    constexpr double separation = 43.29724;
    constexpr double dutchEllipsoid = 43.34753;
    constexpr double digit = 2e-5;
    const double plain = heightOf(rd, utm);
    EXPECT_NEAR(heightOf(rdAbove, utm), plain + separation - dutchEllipsoid, digit);
    EXPECT_NEAR(heightOf(rdAbove, utmAbove), 0.0, digit);
    EXPECT_NEAR(heightOf(rd, utmAbove), dutchEllipsoid - separation, digit);
}

TEST_F(ConvertTo, SaysWhichModelHasNoValue)
{
    const QString rd =
        given("rd_above.xml", test::editedSystem(text("rd_new.xml"),
                                                 {{text("modelFileName=\"\""),
                                                   text("modelFileName=\"no_such_model.gtx\"")}}));
    const auto result = convert(system("ed50_utm_31n.xml"), rd, "5.4,52.1,0\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        result.err,
        Mentions(qPrintable(text("warning: the geoid model \"no_such_model.gtx\" of %1 cannot be "
                                 "used: ")
                                .arg(rd))));
}

TEST_F(ConvertTo, SaysWhichSystemANoteIsAbout)
{
    const auto result =
        convert(system("rd_new.xml"), system("hartebeesthoek94_lo29.xml"), "29.5,-25,0\n");
    EXPECT_THAT(result.err,
                Mentions(qPrintable(text("note: %1: ").arg(system("hartebeesthoek94_lo29.xml")))));
}

TEST_F(ConvertTo, DoesNotOverwriteTheOtherSystemWithRejects)
{
    const QString other = given("other.xml", test::editedSystem(text("rd_new.xml"), {}));
    const auto result = m_program.run({text("convert"), text("--system"), system("rd_new.xml"),
                                       text("--to"), other, text("--rejects"), other},
                                      "1,2\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("it is the coordinate system"));
}

} // namespace
} // namespace KelStd
