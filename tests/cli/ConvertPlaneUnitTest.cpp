// Systems whose northing and easting are customarily in a unit of their own.

#include "cli/LibraryRun.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::LibraryRun;
using test::Mentions;
using test::numberIn;

// EPSG Guidance Note 7-2, "Lambert Conic Conformal (2SP)", NAD27 / Texas South Central: 28 degrees
// 30' N, 96 degrees W is at 2963503.91, 254759.80 US survey feet.
constexpr double easting = 2963503.91;
constexpr double northing = 254759.80;
constexpr double halfDigit = 0.005;

class ConvertPlaneUnit : public LibraryRun
{
protected:
    QString texas(const char *unit = "<Plane_Unit name=\"US survey foot\" "
                                     "metres=\"0.304800609601219\"/>") const
    {
        const QString origin = text("<Origin ver=\"1\">%1</Origin></Coord>").arg(text(unit));
        return given("texas.xml", test::editedSystem(text("texas_south_central.xml"),
                                                     {{text("</Coord>"), origin}}));
    }

    test::ProgramResult convert(const QString &system, const QByteArray &input,
                                std::initializer_list<const char *> options) const
    {
        QStringList arguments = {text("convert"), text("--system"), system};
        for (const char *option : options)
            arguments += text(option);
        return m_program.run(arguments, input);
    }
};

TEST_F(ConvertPlaneUnit, IsPrintedByDefault)
{
    const auto result = convert(texas(), "-96,28.5,12\n", {"--from=local-llh"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, text("kelstd: note: northing and easting are printed in us-ft, the unit "
                               "of the system, all other lengths in m; --length-unit overrules "
                               "that\n"));
    const auto row = csvRows(result.out).value(0);
    EXPECT_NEAR(numberIn(row, text("local_easting_us_ft")), easting, halfDigit);
    EXPECT_NEAR(numberIn(row, text("local_northing_us_ft")), northing, halfDigit);
    EXPECT_NEAR(numberIn(row, text("local_height_m")), 12.0, 1e-5);
    EXPECT_NEAR(numberIn(row, text("local_ellipsoidal_height_m")), 12.0, 1e-5);
    const auto json = convert(texas(), "-96,28.5,12\n", {"--from=local-llh", "--json"});
    EXPECT_THAT(json.out, Mentions("\"local_easting_us_ft\":2963503.9"));
    const auto table = convert(texas(), "-96,28.5,12\n", {"--from=local-llh", "--table"});
    EXPECT_THAT(table.out, Mentions("us-ft"));
    EXPECT_THAT(table.out, Mentions("2963503.9"));
}

/// 1 ft = 0.3048 m, 1 us-ft = 1200/3937 m: 2.0 ppm.
TEST_F(ConvertPlaneUnit, AnotherFootIsNeverAdvisedAndAlwaysNoted)
{
    const QByteArray headed = "northing_ft,easting_ft,h\n254759.80,2963503.91,12\n";
    const auto refused = convert(texas(), headed, {"--from=local-neh"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out, QString());
    EXPECT_THAT(refused.err, Mentions("\"northing_ft\" is in ft, but northing is read in us-ft"));
    EXPECT_THAT(refused.err, Mentions("write the heading with us-ft, or without a unit"));
    EXPECT_FALSE(refused.err.contains(text("--length-unit ft"))) << refused.err;

    const QByteArray said = "northing_usft,easting_usft,h\n254759.80,2963503.91,12\n";
    const auto read = convert(texas(), said, {"--from=local-neh"});
    ASSERT_EQ(read.status, 0) << read.err;
    EXPECT_NEAR(numberIn(csvRows(read.out).value(0), text("wgs84_longitude_deg")), -96.0, 0.01);

    const auto other = convert(texas(), "-96,28.5,12\n", {"--from=local-llh", "--length-unit=ft"});
    EXPECT_THAT(other.err, Mentions("note: --length-unit ft is another unit than that of"));
    EXPECT_THAT(other.err, Mentions("differ by 2.0 ppm"));
    for (const char *unit : {"--length-unit=us-ft", "--length-unit=m"}) {
        const auto same = convert(texas(), "-96,28.5,12\n", {"--from=local-llh", unit});
        EXPECT_FALSE(same.err.contains(text("another unit"))) << same.err;
    }
}

TEST_F(ConvertPlaneUnit, IsReadByDefault)
{
    const auto result = convert(texas(), "254759.80,2963503.91,12\n", {"--from=local-neh"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, Mentions("northing and easting are read and printed in us-ft"));
    const auto row = csvRows(result.out).value(0);
    // Half a hundredth of a foot is 1.5 mm, 1.6e-8 degrees.
    EXPECT_NEAR(numberIn(row, text("local_longitude_deg")), -96.0, 2e-8);
    EXPECT_NEAR(numberIn(row, text("local_latitude_deg")), 28.5, 2e-8);
    EXPECT_NEAR(numberIn(row, text("local_ellipsoidal_height_m")), 12.0, 1e-5);
}

TEST_F(ConvertPlaneUnit, WhatIsPrintedIsReadBack)
{
    const auto printed = convert(texas(), "P,-96,28.5,12\n", {"--from=local-llh"});
    const auto again = convert(texas(), printed.out.toUtf8(),
                               {"--from=local-neh", "--columns",
                                "point,local_northing_us_ft,local_easting_us_ft,local_height_m"});
    ASSERT_EQ(again.status, 0) << again.err;
    const auto row = csvRows(again.out).value(0);
    EXPECT_NEAR(numberIn(row, text("local_longitude_deg")), -96.0, 1e-9);
    // Numbers in metres are not taken for feet.
    const auto metres = convert(
        texas(), printed.out.toUtf8().replace("us_ft", "m"),
        {"--from=local-neh", "--columns", "point,local_northing_m,local_easting_m,local_height_m"});
    EXPECT_THAT(metres.err, Mentions("the input is read with northing in m, easting in m"));
}

TEST_F(ConvertPlaneUnit, IsOverruledByTheOption)
{
    const auto metres =
        convert(texas(), "-96,28.5,12\n", {"--from=local-llh", "--length-unit", "m"});
    EXPECT_EQ(metres.err, QString());
    EXPECT_NEAR(numberIn(csvRows(metres.out).value(0), text("local_easting_m")),
                easting * 1200.0 / 3937.0, halfDigit);
    EXPECT_EQ(metres.out, convert(texas(""), "-96,28.5,12\n", {"--from=local-llh"}).out);
    const auto feet = convert(texas(), "254759.80,2963503.91,39.37\n",
                              {"--from=local-neh", "--length-unit", "us-ft"});
    EXPECT_EQ(feet.err, QString());
    // 39.37 US survey feet are 12 m.
    EXPECT_NEAR(numberIn(csvRows(feet.out).value(0), text("local_height_us_ft")), 39.37, 1e-5);
    const auto read = convert(texas(), "77650.94234,903277.79832,12\n",
                              {"--from=local-neh", "--length-unit", "m"});
    EXPECT_NEAR(numberIn(csvRows(read.out).value(0), text("local_longitude_deg")), -96.0, 2e-8);
}

// A link is 0.66 ft of 0.3048 m.
TEST_F(ConvertPlaneUnit, MayBeTheLink)
{
    const auto result = convert(texas("<Plane_Unit name=\"link\" metres=\"0.201168\"/>"),
                                "-96,28.5,12\n", {"--from=local-llh"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NEAR(numberIn(csvRows(result.out).value(0), text("local_easting_link")),
                easting * 1200.0 / 3937.0 / 0.201168, halfDigit / 0.66);
}

TEST_F(ConvertPlaneUnit, ThatTheProgramLacksIsNamed)
{
    const auto result = convert(texas("<Plane_Unit name=\"vara\" metres=\"0.8359\"/>"),
                                "-96,28.5,12\n", {"--from=local-llh"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, text("kelstd: note: plane coordinates of the system are customarily in "
                               "a unit of 0.8359 m (vara); here they are in metres\n"));
    EXPECT_TRUE(csvRows(result.out).value(0).contains(text("local_easting_m")));
}

TEST_F(ConvertPlaneUnit, ThatIsTheMetreChangesNothing)
{
    const auto result = convert(texas("<Plane_Unit name=\"metre\" metres=\"1\"/>"), "-96,28.5,12\n",
                                {"--from=local-llh"});
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.out, convert(texas(""), "-96,28.5,12\n", {"--from=local-llh"}).out);
}

// A unit that nobody can tell is refused, and not read as metres.
TEST_F(ConvertPlaneUnit, ThatIsNoneIsRefused)
{
    const auto result = convert(texas("<Plane_Unit name=\"foot\" metres=\"0,3048\"/>"),
                                "-96,28.5,12\n", {"--from=local-llh"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("metres=\"0,3048\" is no number that can be read"));
}

} // namespace
} // namespace KelStd
