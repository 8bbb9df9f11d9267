#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <KelStd/io/Coord_IO.h>

#include <QtCore/QFileInfo>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

class SystemDefault : public testing::Test
{
protected:
    SystemDefault() : m_file(m_program.home().path(QStringLiteral("system.xml"))) {}

    /// Runs with these options, blank-separated, and the file of the test.
    ProgramResult run(const char *options) const
    {
        return m_program.run(QStringList{QStringLiteral("system"), QStringLiteral("default"),
                                         QStringLiteral("-o"), m_file}
                             + QString::fromLatin1(options).split(QLatin1Char(' ')));
    }

    Coord written() const
    {
        Coord coord;
        QString error;
        EXPECT_TRUE(Coord_IO::xml_read(m_file, coord, &error)) << error;
        return coord;
    }

    static double parameter(const Coord &coord, const char *key)
    {
        return coord.projection.param.value(QString::fromLatin1(key)).value.toDouble();
    }

    ProgramRun m_program;
    QString m_file;
};

struct Choice
{
    const char *options;
    const char *name;
    double meridian;
    double scale;
    double easting;
    double northing;
};

// The meridian of UTM zone n is 6n - 183; scale and false origin are those of every UTM zone.
TEST_F(SystemDefault, HoldsWhatWasChosen)
{
    const Choice choices[] = {
        {"--utm-zone 31", "WGS 84 / UTM zone 31N", 3.0, 0.9996, 500000.0, 0.0},
        {"--utm-zone 31N", "WGS 84 / UTM zone 31N", 3.0, 0.9996, 500000.0, 0.0},
        {"--utm-zone 31n", "WGS 84 / UTM zone 31N", 3.0, 0.9996, 500000.0, 0.0},
        {"--utm-zone 55S", "WGS 84 / UTM zone 55S", 147.0, 0.9996, 500000.0, 10000000.0},
        {"--utm-zone 1", "WGS 84 / UTM zone 1N", -177.0, 0.9996, 500000.0, 0.0},
        {"--utm-zone 60s", "WGS 84 / UTM zone 60S", 177.0, 0.9996, 500000.0, 10000000.0},
        {"--central-meridian 9.5", "WGS 84 / transverse Mercator 9.5 deg", 9.5, 1.0, 0.0, 0.0},
        {"--central-meridian -71.25", "WGS 84 / transverse Mercator -71.25 deg", -71.25, 1.0, 0.0,
         0.0},
        {"--central-meridian 0 --scale 0.9999 --false-easting 200000 --false-northing -5000.5",
         "WGS 84 / transverse Mercator 0 deg", 0.0, 0.9999, 200000.0, -5000.5},
        {"--central-meridian 0 --false-easting 130000000 --false-northing -130000000",
         "WGS 84 / transverse Mercator 0 deg", 0.0, 1.0, 130000000.0, -130000000.0},
        {"--utm-zone 32 --name Site", "Site", 9.0, 0.9996, 500000.0, 0.0},
    };
    for (const Choice &choice : choices) {
        SCOPED_TRACE(choice.options);
        const auto result = run((std::string(choice.options) + " --force").c_str());
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out,
                  QStringLiteral("Wrote %1: %2\n").arg(m_file, QString::fromLatin1(choice.name)));
        const Coord coord = written();
        EXPECT_EQ(coord.coord_name, QString::fromLatin1(choice.name));
        EXPECT_EQ(parameter(coord, "lon_0"), choice.meridian);
        EXPECT_EQ(parameter(coord, "k"), choice.scale);
        EXPECT_EQ(parameter(coord, "FalseEast"), choice.easting);
        EXPECT_EQ(parameter(coord, "FalseNorth"), choice.northing);
    }
}

TEST_F(SystemDefault, IsTheLibrarysDefaultInEverythingElse)
{
    ASSERT_EQ(run("--utm-zone 31").status, 0);
    Coord coord = written();
    Coord expected;
    Coord::CreateDefaultTMercCoordination(expected);
    for (const char *key : {"lon_0", "k", "FalseEast"}) {
        const QString name = QString::fromLatin1(key);
        expected.projection.param[name].value = coord.projection.param.value(name).value;
    }
    EXPECT_TRUE(coord == expected);
}

// Where the central meridian meets the equator, a system has its false easting and northing.
TEST_F(SystemDefault, CanBeConvertedWith)
{
    ASSERT_EQ(run("--utm-zone 31S").status, 0);
    const auto result =
        m_program.run({QStringLiteral("convert"), QStringLiteral("--system"), m_file}, "3,0,0\n");
    ASSERT_EQ(result.status, 0) << result.err;
    const auto row = test::csvRows(result.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("local_easting_m")), QStringLiteral("500000.00000"));
    EXPECT_EQ(row.value(QStringLiteral("local_northing_m")), QStringLiteral("10000000.00000"));
    EXPECT_EQ(row.value(QStringLiteral("local_height_m")), QStringLiteral("0.00000"));
}

TEST_F(SystemDefault, KeepsAFileThatExists)
{
    m_program.file(QStringLiteral("system.xml"), "mine");
    const auto result = run("--utm-zone 31");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err, QStringLiteral("kelstd: %1 exists; --force replaces it\n").arg(m_file));
    EXPECT_EQ(test::readFile(m_file), QByteArray("mine"));

    EXPECT_EQ(run("--utm-zone 31 --force").status, 0);
    EXPECT_EQ(written().coord_name, QStringLiteral("WGS 84 / UTM zone 31N"));
}

TEST_F(SystemDefault, AFileThatCannotBeWrittenIsReported)
{
    const auto result =
        m_program.run({QStringLiteral("system"), QStringLiteral("default"),
                       QStringLiteral("--utm-zone"), QStringLiteral("31"), QStringLiteral("-o"),
                       QStringLiteral("/no/such/directory/system.xml")});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("cannot write /no/such/directory/system.xml: "));
}

TEST_F(SystemDefault, MistakesAreUsageErrorsAndWriteNothing)
{
    struct Row
    {
        const char *options;
        const char *message;
    };
    const Row rows[] = {
        {"--force", "give one of --utm-zone and --central-meridian"},
        {"--utm-zone 31 --central-meridian 3", "give one of --utm-zone and --central-meridian"},
        {"--utm-zone 0", "'0' is no zone"},
        {"--utm-zone 61", "'61' is no zone"},
        {"--utm-zone -1", "'-1' is no zone"},
        {"--utm-zone 31X", "'31X' is no zone"},
        {"--utm-zone N", "'N' is no zone"},
        {"--utm-zone 31.5", "'31.5' is no zone"},
        {"--central-meridian east", "--central-meridian \"east\" is not a number"},
        {"--central-meridian 9,5", "write a decimal point, not a comma"},
        {"--central-meridian nan", "\"nan\" is not a finite number"},
        {"--central-meridian 180.5", "\"180.5\" is not between -180 and 180"},
        {"--central-meridian -181", "\"-181\" is not between -180 and 180"},
        {"--central-meridian 9 --scale 0", "--scale \"0\" is not between 0.9 and 1.1"},
        {"--central-meridian 9 --scale 0.5", "--scale \"0.5\" is not between 0.9 and 1.1"},
        {"--central-meridian 9 --scale 2", "--scale \"2\" is not between 0.9 and 1.1"},
        {"--central-meridian 9 --scale 999.6", "--scale \"999.6\" is not between 0.9 and 1.1"},
        {"--central-meridian 9 --false-easting x", "--false-easting \"x\" is not a number"},
        {"--central-meridian 9 --false-northing inf", "--false-northing \"inf\" is not a finite"},
        {"--central-meridian 9 --false-easting 130000001",
         "--false-easting \"130000001\" is not between -130000000 and 130000000"},
        {"--central-meridian 9 --false-northing -130000001",
         "--false-northing \"-130000001\" is not between -130000000 and 130000000"},
        {"--utm-zone 31 --scale 1", "--scale belongs to --central-meridian"},
        {"--utm-zone 31 --false-easting 0", "--false-easting belongs to --central-meridian"},
        {"--utm-zone 31 more", "'more' is one argument too many"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.options);
        const auto result = run(row.options);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(row.message));
        EXPECT_FALSE(QFileInfo::exists(m_file));
    }
}

TEST_F(SystemDefault, NeedsAFile)
{
    const QStringList zone = {QStringLiteral("system"), QStringLiteral("default"),
                              QStringLiteral("--utm-zone"), QStringLiteral("31")};
    const auto none = m_program.run(zone);
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, Mentions("-o FILE is missing"));
    const auto dash = m_program.run(zone + QStringList{QStringLiteral("-o"), QStringLiteral("-")});
    EXPECT_EQ(dash.status, 2);
    EXPECT_THAT(dash.err, Mentions("not to standard output"));
}

} // namespace
} // namespace KelStd
