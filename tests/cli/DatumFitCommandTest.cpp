// What a fitted datum shift leaves of its base system, and how well it is known.

#include "cli/ProgramRun.h"
#include "cli/SiteEdits.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd {
namespace {

using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::text;

// Local X, Y, Z and the same with 100, -50 and 25.5 added.
const QByteArray movedPairs = "wgs84_x,wgs84_y,wgs84_z,name,local_x,local_y,local_z\n"
                              "3903420.5,379950,5010365.5,A,3903320.5,380000,5010340\n"
                              "3903100.5,379150,5010635.5,B,3903000.5,379200,5010610\n"
                              "3902800.5,380950,5010725.5,C,3902700.5,381000,5010700\n"
                              "3903900.5,381050,5009925.5,D,3903800.5,381100,5009900\n";

class DatumFitCommand : public testing::Test
{
protected:
    ProgramResult fit(const QString &system, const QByteArray &pairs,
                      const QStringList &options) const
    {
        return m_program.run(QStringList{text("datum"), text("fit"), text("--system"), system,
                                         text("--pairs"), m_program.file(text("pairs.csv"), pairs)}
                             + options);
    }

    QString path(const char *name) const { return m_program.home().path(text(name)); }

    /// Easting and northing of a place, as the program converts.
    QMap<QString, QString> converted(const QString &system) const
    {
        const auto result = m_program.run(
            {text("convert"), text("--system"), system, text("--csv"), text("-")}, "5.5,52.1,0\n");
        EXPECT_EQ(result.status, 0) << result.err;
        return test::csvRows(result.out).value(0);
    }

    ProgramRun m_program;
};

TEST_F(DatumFitCommand, ASiteOfTheBaseIsLeftOutWithAWarning)
{
    const QString base = m_program.file(
        text("base.xml"), test::editedSystem(text("rd_new.xml"), test::quarterTurn()));
    const QString file = path("new.xml");
    const auto result = fit(base, movedPairs, {text("--parameters=three"), text("-o"), file});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, Mentions("warning: the base system has a site already"));
    EXPECT_TRUE(converted(base).contains(text("site_northing_m")));
    const auto row = converted(file);
    EXPECT_TRUE(row.contains(text("local_northing_m")));
    EXPECT_FALSE(row.contains(text("site_northing_m")));
}

// Who knows the code of a system takes a datum shift of their own, GDAL among them: here some
// hundred metres away.
TEST_F(DatumFitCommand, WhatIsExportedIsNoSystemOfTheDatabase)
{
    const QString file = path("new.xml");
    const auto result = fit(text("EPSG:28992"), movedPairs,
                            {text("--parameters=three"), text("--name=Y"), text("-o"), file});
    ASSERT_EQ(result.status, 0) << result.err;
    const QString document = QString::fromUtf8(test::readFile(file));
    EXPECT_FALSE(document.contains(text("28992")));
    EXPECT_THAT(document, Mentions("<Area ")); // it is where it was

    const QString exported = path("new.wkt");
    const auto written = m_program.run(
        {text("system"), text("export"), file, text("--as"), text("wkt2"), text("-o"), exported});
    ASSERT_EQ(written.status, 0) << written.err;
    EXPECT_FALSE(written.err.contains(text("28992"))) << written.err;
    EXPECT_FALSE(QString::fromUtf8(test::readFile(exported)).contains(text("28992")));
    QProcess gdal;
    gdal.start(text("gdaltransform"),
               {text("-s_srs"), text("EPSG:4979"), text("-t_srs"), exported, text("-output_xy")});
    gdal.write("5.5 52.1 0\n");
    gdal.closeWriteChannel();
    ASSERT_TRUE(gdal.waitForFinished(60000));
    const QString out = QString::fromUtf8(gdal.readAllStandardOutput());
    const QStringList place = out.simplified().split(QLatin1Char(' '));
    ASSERT_EQ(place.size(), 2) << out;
    const auto row = converted(file);
    EXPECT_NEAR(place.at(0).toDouble(), numberIn(row, text("local_easting_m")), 0.001);
    EXPECT_NEAR(place.at(1).toDouble(), numberIn(row, text("local_northing_m")), 0.001);
}

// Positions by PROJ's program cct: "+proj=cart +ellps=bessel" at 15, 50, 200; 16, 49, 300; 14.5,
// 49.5, 400; and with 572.213, 85.334, 461.94 added.
const QByteArray cartesianInBohemia =
    "name,local_x,local_y,local_z,wgs84_x,wgs84_y,wgs84_z\n"
    "A,3967532.547364,1063097.142010,4862447.458652,3968104.760364,1063182.476010,4862909.398652\n"
    "B,4029725.792759,1155505.276947,4790298.554255,4030298.005759,1155590.610947,4790760.494255\n"
    "C,4017873.887891,1039092.839133,4826670.279124,4018446.100891,1039178.173133,4827132.219124\n";
const QByteArray anglesInBohemia =
    "name,local_longitude,local_latitude,local_height,wgs84_x,wgs84_y,wgs84_z\n"
    "A,15,50,200,3968104.760364,1063182.476010,4862909.398652\n"
    "B,16,49,300,4030298.005759,1155590.610947,4790760.494255\n"
    "C,14.5,49.5,400,4018446.100891,1039178.173133,4827132.219124\n";

TEST_F(DatumFitCommand, AxesToTheWestAndSouthDoNotMatter)
{
    const QString base = path("krovak.xml");
    ASSERT_EQ(
        m_program.run({text("system"), text("import"), text("EPSG:2065"), text("-o"), base}).status,
        0);
    QByteArray opposite = anglesInBohemia;
    for (const char *number : {"15,50", "16,49", "14.5,49.5"})
        opposite.replace(number, QByteArray("-") + QByteArray(number).replace(",", ",-"));
    const struct
    {
        QByteArray pairs;
        const char *note; ///< what is said of the directions of angles
    } rows[] = {{cartesianInBohemia, nullptr},
                {anglesInBohemia, "are read as counting positive to the east and north"},
                {opposite, "are read as counting positive to the west and south"}};
    for (const auto &row : rows) {
        const auto result = fit(base, row.pairs, {text("--parameters=three")});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.out, Mentions("572.2130 m"));
        EXPECT_THAT(result.out, Mentions("85.3340 m"));
        EXPECT_THAT(result.out, Mentions("461.9400 m"));
        EXPECT_EQ(result.err.contains(text("are read as counting")), row.note != nullptr);
        if (row.note != nullptr) {
            EXPECT_THAT(result.err, Mentions(row.note));
        }
    }
}

// Some hundred metres apart, three translations are known to their rounding, seven parameters are
// not.
TEST_F(DatumFitCommand, PrintsHowWellParametersAreKnown)
{
    // With 30 mm more in X of one pair: 7.5 mm of the mean, s0 the root of 675e-6 over 9.
    QByteArray pairs = movedPairs;
    pairs.replace("3903900.5,", "3903900.53,");
    const QString base = test::systemPath(text("rd_new.xml"));
    const auto three = fit(base, pairs, {text("--parameters=three")});
    EXPECT_EQ(three.status, 0) << three.err;
    EXPECT_THAT(three.out, Mentions("100.0075 m (standard deviation 0.0043, linear: 100.0075)"));
    EXPECT_THAT(three.out, Mentions("Scale                   0.000000 ppm (linear: 0.000000)"));
    EXPECT_FALSE(three.err.contains(text("too near"))) << three.err;
    const auto objectOf = [](const ProgramResult &result) {
        return QJsonDocument::fromJson(result.out.toUtf8()).object();
    };
    const auto json = objectOf(fit(base, pairs, {text("--parameters=three"), text("--json")}));
    const QJsonObject deviations = json.value(text("standard_deviations")).toObject();
    EXPECT_EQ(deviations.keys(),
              (QStringList{text("rx_arcsec"), text("ry_arcsec"), text("rz_arcsec"),
                           text("scale_ppm"), text("x_m"), text("y_m"), text("z_m")}));
    EXPECT_NEAR(deviations.value(text("x_m")).toDouble(), 0.00433013, 1e-6); // s0 over 2
    EXPECT_TRUE(deviations.value(text("scale_ppm")).isNull());

    const auto seven = fit(base, pairs, {});
    EXPECT_EQ(seven.status, 0);
    EXPECT_THAT(seven.err, Mentions("warning: the translation is known to"));
    EXPECT_THAT(seven.err, Mentions("the pairs lie too near each other"));
    // One pair tells nothing of it.
    const QByteArray one = pairs.left(pairs.indexOf('\n', pairs.indexOf('\n') + 1) + 1);
    const auto single = objectOf(fit(base, one, {text("--parameters=three"), text("--json")}));
    EXPECT_TRUE(single.value(text("standard_deviations")).isNull());
    EXPECT_TRUE(single.contains(text("standard_deviations")));
}

} // namespace
} // namespace KelStd
