#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

namespace KelStd {
namespace {

using test::editedSystem;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const QString rdNew = QStringLiteral("rd_new.xml");

/// Shows also what no definition uses, which is what some of these tests are about.
ProgramResult show(const QByteArray &document)
{
    const ProgramRun program;
    return program.run({QStringLiteral("system"), QStringLiteral("show"),
                        QStringLiteral("--lenient"),
                        program.file(QStringLiteral("system.xml"), document)});
}

ProgramResult showSystem(const char *name)
{
    return show(test::readFile(test::systemPath(QString::fromLatin1(name))));
}

/// Whether a line of the output, its blanks taken together, is this.
MATCHER_P(HasLine, line, "")
{
    for (const QString &shown : arg.outLines()) {
        if (shown.simplified() == QString::fromUtf8(line))
            return true;
    }
    return false;
}

TEST(SystemShow, NamesEllipsoidAndProjection)
{
    const auto result = showSystem("rd_new.xml");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    for (const char *line :
         {"Coordinate system Amersfoort / RD New", "Ellipsoid Bessel 1841", "PROJ name bessel",
          "semi-major axis 6377397.155 m", "1/flattening 299.1528128",
          "(not used: PROJ has its own numbers for \"bessel\")",
          "positive axes ENU (east and north)", "Projection Double stereographic (RD)",
          "PROJ name sterea", "positions X_Y_ElevationHeight", "unit meter"})
        EXPECT_THAT(result, HasLine(line));
}

TEST(SystemShow, ASpelledOutEllipsoidIsUsed)
{
    const auto result = showSystem("british_national_grid.xml");
    EXPECT_THAT(result, HasLine("PROJ name (none)"));
    EXPECT_THAT(result, HasLine("semi-major axis 6377563.396 m"));
    EXPECT_FALSE(result.out.contains(QLatin1String("not used")));
}

TEST(SystemShow, ParametersHaveProjNameValueUnitAndKey)
{
    const auto result = showSystem("rd_new.xml");
    for (const char *line :
         {"parameters x_0 155000 m FalseEast", "y_0 463000 m FalseNorth", "k_0 0.9999079 k_0",
          "lat_0 52.1561605555556 \xC2\xB0 lat_0", "lon_0 5.38763888888889 \xC2\xB0 lon_0"})
        EXPECT_THAT(result, HasLine(line));
}

TEST(SystemShow, AParameterThatProjDoesNotGetIsMarked)
{
    const auto result = show(editedSystem(
        rdNew, {{QStringLiteral("<paramProj4 name=\"k_0\" proj4Param=\"k_0\"/>"), QString()}}));
    EXPECT_THAT(result, HasLine("- 0.9999079 k_0 (not used: it has no PROJ name)"));
}

TEST(SystemShow, ASevenParameterShiftWithItsSignConvention)
{
    const auto result = showSystem("rd_new.xml");
    for (const char *line :
         {"Datum shift seven parameters, WGS84 to local",
          "translations x, y, z -565.04 m, -49.91 m, -465.84 m",
          "rotations x, y, z -0.40939 \xE2\x80\xB3, 0.35971 \xE2\x80\xB3, -1.86849 \xE2\x80\xB3",
          "scale -4.0772 ppm",
          "sign convention Stored is the shift from WGS84 to local. PROJ's +towgs84 goes",
          "from local to WGS84 (position vector): there translations and",
          "scale are reversed, rotations stand as stored."})
        EXPECT_THAT(result, HasLine(line));
}

TEST(SystemShow, AThreeParameterShiftHasNoRotations)
{
    const auto result = showSystem("ch1903plus_lv95.xml");
    EXPECT_THAT(result, HasLine("Datum shift three parameters, WGS84 to local"));
    EXPECT_THAT(result, HasLine("translations x, y, z -674374 mm, -15056 mm, -405346 mm"));
    EXPECT_FALSE(result.out.contains(QLatin1String("rotations x")));
    EXPECT_FALSE(result.out.contains(QLatin1String("ppm")));
}

TEST(SystemShow, WithoutADatumShiftThereIsNoConvention)
{
    const auto result = showSystem("hartebeesthoek94_lo29.xml");
    EXPECT_THAT(result, HasLine("Datum shift none"));
    EXPECT_FALSE(result.out.contains(QLatin1String("sign convention")));
}

TEST(SystemShow, WhereASystemCameFrom)
{
    const auto result = show(editedSystem(
        rdNew,
        {{QStringLiteral("</Coord>"),
          QStringLiteral(
              "<Origin ver=\"1\" authority=\"EPSG\" code=\"28992\" database=\"EPSG v10.076\">"
              "<Operation code=\"EPSG:4833\" name=\"Amersfoort to WGS 84 (4)\" "
              "accuracy_m=\"0.25\"/><Area west=\"3.2\" south=\"50.75\" east=\"7.22\" "
              "north=\"53.7\" name=\"Netherlands.\"/><Country name=\"Netherlands\"/>"
              "<Country name=\"Holland\"/><Plane_Unit name=\"foot\" metres=\"0.3048\"/>"
              "</Origin></Coord>")}}));
    EXPECT_EQ(result.status, 0);
    for (const char *line :
         {"Origin EPSG:28992", "database EPSG v10.076",
          "datum shift Amersfoort to WGS 84 (4) (EPSG:4833), accuracy 0.25 m",
          "area of use Netherlands.", "longitudes 3.2 to 7.22, latitudes 50.75 to 53.7",
          "countries Netherlands, Holland", "unit of the plane foot, 0.3048 m"})
        EXPECT_THAT(result, HasLine(line));
}

TEST(SystemShow, WhatIsKnownOfAnOriginOnly)
{
    const auto result = show(editedSystem(
        rdNew, {{QStringLiteral("</Coord>"),
                 QStringLiteral("<Origin ver=\"1\"><Operation name=\"a site's\"/><Area "
                                "west=\"177\" south=\"-20\" east=\"-178\" north=\"-12\"/>"
                                "</Origin></Coord>")}}));
    for (const char *line : {"Origin (no code)", "datum shift a site's, accuracy not known",
                             "area of use longitudes 177 to -178, latitudes -20 to -12"})
        EXPECT_THAT(result, HasLine(line));
    EXPECT_FALSE(showSystem("rd_new.xml").out.contains(QLatin1String("Origin")));
}

// The translations and the scale with reversed signs, the rotations as stored.
TEST(SystemShow, TheFourProjDefinitions)
{
    const auto result = showSystem("rd_new.xml");
    for (const char *line :
         {"WGS84 geographic +proj=longlat +datum=WGS84 +axis=enu",
          "WGS84 cartesian +proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m",
          "local geographic +proj=longlat +ellps=bessel +axis=enu "
          "+towgs84=565.04,49.91,465.84,-0.40939,0.35971,-1.86849,4.0772 +units=m"})
        EXPECT_THAT(result, HasLine(line));
    EXPECT_THAT(result.out, Mentions("  local projected         +proj=sterea +x_0=155000 "
                                     "+y_0=463000 +k_0=0.9999"));
}

TEST(SystemShow, CorrectionsThatAreNone)
{
    const auto result = showSystem("rd_new.xml");
    for (const char *line :
         {"planar transformation none", "height fitting none", "geoid model none"})
        EXPECT_THAT(result, HasLine(line));
    EXPECT_FALSE(result.out.contains(QLatin1String("Take care")));
}

TEST(SystemShow, CorrectionsAtTheSite)
{
    const auto result = show(editedSystem(
        rdNew,
        {{QStringLiteral("<Plane_Transform ver=\"1\" fuction=\"None\""),
          QStringLiteral("<Plane_Transform ver=\"1\" fuction=\"Four\"")},
         {QStringLiteral("<Elevation_Fitting ver=\"1\" function=\"None\""),
          QStringLiteral("<Elevation_Fitting ver=\"1\" function=\"Plane\"")},
         {QStringLiteral("modelFileName=\"\""), QStringLiteral("modelFileName=\"local.gtx\"")}}));
    for (const char *line : {"planar transformation Four (at the site)", "north, east 0 m, 0 m",
                             "height fitting Plane (at the site)", "origin north, east 0 m, 0 m",
                             "geoid model local.gtx (cannot be used)", "Take care"})
        EXPECT_THAT(result, HasLine(line));
    EXPECT_THAT(result.out,
                Mentions("- The planar transformation is not applied to the four frames"));
    EXPECT_THAT(result.out, Mentions("- The height fitting is not applied to the four frames"));
    // The scale of a record that nobody filled.
    EXPECT_THAT(result.out, Mentions("- There are no coordinates at the site: the ratio of the "
                                     "planar transformation is 0"));
    EXPECT_THAT(result.out,
                Mentions("- The geoid model \"local.gtx\" cannot be used: it is not in "));
}

TEST(SystemShow, WarnsOfAParameterThatWinsInsideProj)
{
    const auto result = show(editedSystem(
        rdNew, {{QStringLiteral("proj4Param=\"k_0\""), QStringLiteral("proj4Param=\"axis\"")}}));
    EXPECT_THAT(result.out, Mentions("- The parameter \"k_0\" is PROJ's \"axis\": it comes first "
                                     "and wins over the directions and the order of the axes."));
}

TEST(SystemShow, WarnsOfAxesThatPointWestAndSouth)
{
    const auto result = showSystem("hartebeesthoek94_lo29.xml");
    EXPECT_THAT(result, HasLine("positive axes WSU (west and south)"));
    EXPECT_THAT(result.out, Mentions("- The axes of this system point west and south"));
}

TEST(SystemShow, WarnsOfMixedUnitsInAThreeParameterShift)
{
    const auto result =
        show(editedSystem(QStringLiteral("ch1903plus_lv95.xml"),
                          {{QStringLiteral("<z_translate ver=\"1\" unit=\"Milli Meter\""),
                            QStringLiteral("<z_translate ver=\"1\" unit=\"Meter\"")}}));
    EXPECT_THAT(result.out, Mentions("- The z translation is stored in meter"));
}

TEST(SystemShow, WithoutDefinitionsItSaysWhyAndShowsTheRest)
{
    const auto result =
        show(editedSystem(rdNew, {{QStringLiteral("<x_translate ver=\"1\" unit=\"Meter\""),
                                   QStringLiteral("<x_translate ver=\"1\" unit=\"Degree\"")}}));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result, HasLine("There are none: a length has a unit that is no unit of length."));
    EXPECT_THAT(result, HasLine("Ellipsoid Bessel 1841"));
}

TEST(SystemShow, ATimeAmongTheParametersIsSaidToBeOne)
{
    const auto result =
        show(editedSystem(rdNew, {{QStringLiteral("valType=\"Double\" isDictionary=\"false\">"
                                                  "0.9999079"),
                                   QStringLiteral("valType=\"TimeSpan\" isDictionary=\"false\">"
                                                  "0.9999079")}}));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result, HasLine("k_0 (No Time Value In Coordinate) k_0"));
}

TEST(SystemShow, EverySystemOfTheTestDataIsShown)
{
    const ProgramRun program;
    for (const std::string &system : test::publishedSystems()) {
        const auto result = program.run({QStringLiteral("system"), QStringLiteral("show"),
                                         test::systemPath(QString::fromStdString(system))});
        EXPECT_EQ(result.status, 0) << system << result.err.toStdString();
        EXPECT_THAT(result.out, Mentions("  local projected         +proj="));
    }
}

TEST(SystemShow, NeedsNoProj)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/no/such/home"));
    EXPECT_EQ(
        program.run({QStringLiteral("system"), QStringLiteral("show"), test::systemPath(rdNew)})
            .status,
        0);
}

TEST(SystemShow, MistakesHaveTheirStatuses)
{
    const ProgramRun program;
    const auto none = program.run({QStringLiteral("system"), QStringLiteral("show")});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, Mentions("FILE.xml is missing"));
    const auto missing = program.run(
        {QStringLiteral("system"), QStringLiteral("show"), QStringLiteral("no-such.xml")});
    EXPECT_EQ(missing.status, 3);
    EXPECT_THAT(missing.err, Mentions("no-such.xml: No such file or directory"));
    const auto empty = show({});
    EXPECT_EQ(empty.status, 3);
    EXPECT_EQ(empty.out, QString());
    EXPECT_THAT(empty.err, Mentions("the file is empty"));
}

} // namespace
} // namespace KelStd
