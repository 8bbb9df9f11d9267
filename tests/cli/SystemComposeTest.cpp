// Systems put together on the command line.

#include "cli/ProgramRun.h"
#include "proj/ProjPrograms.h"
#include "support/Printers.h"

#include <KelStd/io/Coord_IO.h>

#include <QtCore/QFileInfo>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

class SystemCompose : public testing::Test
{
protected:
    SystemCompose()
        : m_file(m_program.home().path(QStringLiteral("site.xml"))),
          m_library(m_program.home().path(QStringLiteral("lib")))
    {
        QDir().mkpath(m_library + QStringLiteral("/custom"));
        test::writeFile(m_library + QStringLiteral("/projections/site.xml"),
                        "<Projection_List ver=\"1\"><Projection ver=\"1\" "
                        "projection_name=\"Site grid\" proj4Projection=\"tmerc\" "
                        "locationType=\"X_Y_ElevationHeight\" loc_or_height_unit=\"Meter\">"
                        "<param name=\"FalseEast\" ver=\"1\" unit=\"Meter\" valType=\"Distance\" "
                        "isDictionary=\"false\">500000</param>"
                        "<param name=\"lon_0\" ver=\"1\" unit=\"Degree\" valType=\"Longitude\" "
                        "isDictionary=\"false\">9</param>"
                        "<paramProj4 name=\"FalseEast\" proj4Param=\"x_0\"/>"
                        "<paramProj4 name=\"lon_0\" proj4Param=\"lon_0\"/>"
                        "</Projection></Projection_List>");
    }

    /// Options are separated by bars.
    ProgramResult compose(const char *options) const
    {
        return m_program.run(QStringList{QStringLiteral("system"), QStringLiteral("compose"),
                                         QStringLiteral("--dir"), m_library}
                             + QString::fromUtf8(options).split(QLatin1Char('|')));
    }

    ProgramResult write(const char *options) const
    {
        return compose((std::string(options) + "|--force|-o|" + m_file.toStdString()).c_str());
    }

    Pos converted(const QByteArray &position) const
    {
        const auto result = m_program.run(
            {QStringLiteral("convert"), QStringLiteral("--system"), m_file}, position + '\n');
        EXPECT_EQ(result.status, 0) << result.err;
        const auto row = test::csvRows(result.out).value(0);
        return Pos::fromXYZ(test::numberIn(row, QStringLiteral("local_easting_m")),
                            test::numberIn(row, QStringLiteral("local_northing_m")),
                            test::numberIn(row, QStringLiteral("local_height_m")));
    }

    /// The composed system gives northings and eastings that cs2cs gives for a definition. PROJ
    /// keeps heights between systems of two dimensions.
    void expectAsProj(const QString &definition, double tolerance) const
    {
        const auto theirs =
            test::componentsOf(test::runCs2cs(QStringLiteral("+proj=longlat +datum=WGS84"),
                                              definition, {Pos::fromLongLatH(15.5, 48.25, 0.0)})
                                   .value(0));
        const auto ours = test::componentsOf(converted("15.5,48.25,0"));
        EXPECT_NEAR(ours[0], theirs[0], tolerance) << definition;
        EXPECT_NEAR(ours[1], theirs[1], tolerance) << definition;
    }

    ProgramRun m_program;
    QString m_file;
    QString m_library;
};

struct Composition
{
    const char *options;
    const char *definition;
    double tolerance; ///< [m]
};

/// By way of GRS 80 instead of WGS 84, whose semi-minor axes differ by 0.1 mm.
constexpr double nearly = 0.0002;

/// PROJ reads rotations of +towgs84 linearly, a document's are a matrix: the square of five seconds
/// of arc is 4 mm on the ground.
constexpr double nearlyByRotations = 0.004;

TEST_F(SystemCompose, GivesWhatProjGivesForTheSameDefinition)
{
    const Composition rows[] = {
        {"--ellipsoid|GRS80|--projection|tmerc|--set|lon_0=15|--set|k=0.9996|--set|x_0=500000",
         "+proj=tmerc +lon_0=15 +k=0.9996 +x_0=500000 +ellps=GRS80 +towgs84=0,0,0", nearly},
        {"--ellipsoid|6377397.155,299.1528128|--projection|tmerc|--set|lon_0=16d20'E|"
         "--set|y_0=-5000000|--shift-parameters|577.326,90.129,463.919,5.137,1.474,5.297,2.4232",
         "+proj=tmerc +lon_0=16.3333333333333 +y_0=-5000000 +a=6377397.155 +rf=299.1528128 "
         "+towgs84=577.326,90.129,463.919,5.137,1.474,5.297,2.4232",
         nearlyByRotations},
        {"--ellipsoid|intl|--projection|utm|--set|zone=33|--shift-parameters|-87,-98,-121",
         "+proj=utm +zone=33 +ellps=intl +towgs84=-87,-98,-121", nearly},
        {"--ellipsoid|clrk66|--projection|lcc|--set|lat_1=49N|--set|lat_2=46|--set|lat_0=47.5|"
         "--set|lon_0=13:20",
         "+proj=lcc +lat_1=49 +lat_2=46 +lat_0=47.5 +lon_0=13.3333333333333 +ellps=clrk66 "
         "+towgs84=0,0,0",
         nearly},
        {"--ellipsoid|intl|--projection|utm|--set|zone=33|--set|south",
         "+proj=utm +zone=33 +south +ellps=intl +towgs84=0,0,0", nearly},
        {"--ellipsoid|bessel|--projection|omerc|--set|lat_0=47|--set|lonc=15|--set|alpha=40|--set|"
         "gamma=40|--set|no_uoff",
         "+proj=omerc +lat_0=47 +lonc=15 +alpha=40 +gamma=40 +no_uoff +ellps=bessel "
         "+towgs84=0,0,0",
         nearly},
        {"--ellipsoid|bessel|--projection|Site grid|--set|lon_0=15",
         "+proj=tmerc +lon_0=15 +x_0=500000 +ellps=bessel +towgs84=0,0,0", nearly},
    };
    for (const Composition &row : rows) {
        SCOPED_TRACE(row.options);
        const auto result = write(row.options);
        ASSERT_EQ(result.status, 0) << result.err;
        expectAsProj(QString::fromLatin1(row.definition), row.tolerance);
    }
}

// Documents keep the way from WGS 84: of +towgs84 the translations and the scale reversed.
TEST_F(SystemCompose, KeepsTheShiftAsDocumentsDo)
{
    ASSERT_EQ(write("--ellipsoid|bessel|--projection|tmerc|--shift-parameters|1,2,3,4,5,6,7|"
                    "--name|Site / 7")
                  .status,
              0);
    Coord coord;
    QString error;
    ASSERT_TRUE(Coord_IO::xml_read(m_file, coord, &error)) << error;
    EXPECT_EQ(coord.coord_name, QStringLiteral("Site / 7"));
    const stEllipsoinTransform &shift = coord.ellipsoidTransform;
    const double kept[] = {shift.x_translate.value.toDouble(), shift.y_translate.value.toDouble(),
                           shift.z_translate.value.toDouble(), shift.x_rotate.value.toDouble(),
                           shift.y_rotate.value.toDouble(),    shift.z_rotate.value.toDouble(),
                           shift.ratio_ppm.value.toDouble()};
    const double expected[] = {-1, -2, -3, 4, 5, 6, -7};
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(kept[i], expected[i]) << i;
    const auto shown = m_program.run({QStringLiteral("system"), QStringLiteral("show"), m_file});
    EXPECT_THAT(shown.out, Mentions("+towgs84=1,2,3,4,5,6,7"));
}

TEST_F(SystemCompose, NamesWhatALibrarysProjectionBrings)
{
    const auto result = write("--ellipsoid|bessel|--projection|Site grid|--set|lon_0=15");
    EXPECT_EQ(result.err,
              QStringLiteral("kelstd: note: from the library's projection: x_0=500000\n"));
    EXPECT_EQ(result.out, QStringLiteral("Wrote %1: bessel / Site grid\n").arg(m_file));
}

TEST_F(SystemCompose, TheHelpSaysWhichSignsTheShiftHas)
{
    const auto help = compose("--help|full");
    for (const char *text : {"+towgs84", "position\nvector", "coordinate frame", "reversed"})
        EXPECT_THAT(help.out, Mentions(text));
}

struct Refused
{
    const char *options;
    int status;
    const char *message;
};

TEST_F(SystemCompose, RefusesWhatItDoesNotUnderstandAndWritesNothing)
{
    const Refused rows[] = {
        {"--projection|tmerc", 2, "--ellipsoid is missing"},
        {"--ellipsoid|GRS80", 2, "--projection is missing"},
        {"--ellipsoid|GRS81|--projection|tmerc", 2, "--ellipsoid \"GRS81\" is neither"},
        {"--ellipsoid|6378137,x|--projection|tmerc", 2, "\"x\" is not a number"},
        {"--ellipsoid|6378,298|--projection|tmerc", 1, "\"6378\" cannot be meant"},
        {"--ellipsoid|6378137,0.003|--projection|tmerc", 1, "cannot be meant"},
        {"--ellipsoid|GRS80|--projection|longlat", 2, "is no projection"},
        {"--ellipsoid|GRS80|--projection|nosuch", 1, "PROJ refuses its definition"},
        {"--ellipsoid|GRS80|--projection|utm +zone=33", 1, "is not one name of PROJ"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|lon_0", 2, "is no PARAMETER=VALUE"},
        {"--ellipsoid|GRS80|--projection|utm|--set|zone=32|--set|south=1", 2,
         "south has no value, '--set south' sets it"},
        {"--ellipsoid|GRS80|--projection|utm|--set|zone=32|--set|south=true", 2, "has no value"},
        {"--ellipsoid|GRS80|--projection|utm|--set|zone=32|--set|south|--set|south", 2, "twice"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|south", 1, "no parameter that PROJ uses"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|R_A", 2, "that of --ellipsoid"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|lon_0=east", 2, "lon_0 \"east\" is not"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|lon_0=15,5", 2, "not a comma"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|k=1|--set|k_0=0.9996", 2, "is set twice"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|a=6370000", 2, "that of --ellipsoid"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|lat_1=45", 1, "no parameter that PROJ uses"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|towgs84=1", 1, "refused"},
        {"--ellipsoid|GRS80|--projection|tmerc|--set|k=999.6", 1, "cannot be meant"},
        {"--ellipsoid|GRS80|--projection|lcc|--set|lat_1=45|--set|lat_2=-45", 1,
         "PROJ refuses its definition"},
        {"--ellipsoid|GRS80|--projection|tmerc|--shift-parameters|1,2", 2, "three or seven"},
        {"--ellipsoid|GRS80|--projection|tmerc|--shift-parameters|1,2,z", 2, "\"z\" is not"},
        {"--ellipsoid|GRS80|--projection|tmerc|--geoid|nosuch.gtx", 2, "--geoid \"nosuch.gtx\""},
    };
    for (const Refused &row : rows) {
        SCOPED_TRACE(row.options);
        const auto result = write(row.options);
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions(row.message));
        EXPECT_FALSE(QFileInfo::exists(m_file));
    }
}

} // namespace
} // namespace KelStd
