// Systems with a site as pipelines, run by PROJ's own program cct, and as derived systems, read by
// cs2cs.

#include "calibration/SiteRecords.h"
#include "catalogue/CatalogueTest.h"
#include "location/PointsOfSystem.h"
#include "location/PublishedFigures.h"
#include "proj/ProjPrograms.h"
#include "support/Printers.h"

#include <KelStd/calibration/SiteBuilder.h>
#include <KelStd/io/Coord_IO.h>

#include <QtCore/QProcess>

namespace KelStd::catalogue {
namespace {

using Frame = LocationBuilder::Frame;
using test::CatalogueTest;

Coord systemOf(const std::string &document)
{
    Coord coord;
    QString error;
    EXPECT_TRUE(
        Coord_IO::xml_read(test::systemPath(QString::fromStdString(document)), coord, &error))
        << error;
    return coord;
}

QList<Pos> pointsOf(const std::string &document, const Coord &coord)
{
    test::PointsOfSystem points(QString::fromStdString(document), coord, 1);
    QList<Pos> list;
    for (int i = 0; i < 20; ++i)
        list += points.next();
    return list;
}

QList<Pos> atSite(const Coord &coord, const QList<Pos> &points)
{
    auto builder = calibration::SiteBuilder::of(coord);
    QList<Pos> made;
    for (const Pos &point : points) {
        Location location;
        Pos place;
        calibration::SiteBuilder::Outcome outcome;
        EXPECT_TRUE(builder->make(Frame::Wgs84Geographic, point, location, place, outcome))
            << outcome.reason;
        made += place;
    }
    return made;
}

class SiteExport : public CatalogueTest
{
protected:
    QString exported(const Coord &coord, ExportForm form = ExportForm::Proj)
    {
        CatalogueFailure failure;
        const auto text = catalogue().exportSystem(coord, form, QString(), &failure);
        EXPECT_TRUE(text.has_value()) << failure.text;
        return text ? text->text : QString();
    }

    QString refusalOf(const Coord &coord, ExportForm form = ExportForm::Proj)
    {
        CatalogueFailure failure;
        EXPECT_FALSE(catalogue().exportSystem(coord, form, QString(), &failure).has_value());
        EXPECT_EQ(failure.kind, CatalogueFailureKind::NotExportable);
        return failure.text;
    }
};

class SiteExportOfSystem : public SiteExport, public testing::WithParamInterface<std::string>
{};

INSTANTIATE_TEST_SUITE_P(Published, SiteExportOfSystem, testing::ValuesIn(test::publishedSystems()),
                         [](const auto &system) {
                             return test::testName(QString::fromStdString(system.param));
                         });

const stPlaneTransform turned = test::similarity(98765.4321, -123456.789, -54321.987, 1.00012345);

TEST_P(SiteExportOfSystem, PipelineGivesTheCoordinatesAtTheSite)
{
    Coord coord = systemOf(GetParam());
    const QList<Pos> points = pointsOf(GetParam(), coord);
    const struct
    {
        stPlaneTransform plane;
        stElevationFitting fitting;
    } sites[] = {{turned, test::inclinedPlane(-12.345, 1.5e-5, -2.5e-5)},
                 {turned, test::fixedHeight(0.125)},
                 {turned, stElevationFitting()},
                 {stPlaneTransform(), test::inclinedPlane(3.0, -1e-4, 1e-4)}};
    for (const char *model : {"", "egm96_15.gtx"}) {
        coord.geoidModel.modelFileName = QString::fromLatin1(model);
        for (const auto &site : sites) {
            coord.planeTransform = site.plane;
            coord.elevationFitting = site.fitting;
            const QString pipeline = exported(coord);
            test::expectNear(test::runCct(pipeline, points), atSite(coord, points), 1e-6);
        }
    }
}

TEST_P(SiteExportOfSystem, DerivedSystemHasThePlaneOfTheSite)
{
    Coord coord = systemOf(GetParam());
    coord.planeTransform = turned;
    const QList<Pos> points = pointsOf(GetParam(), coord);
    const QList<Pos> expected = atSite(coord, points);
    for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson}) {
        QByteArray lines;
        for (const Pos &point : points) {
            const stLongLatH &place = point.getLongLatH();
            for (const double value : {place.latitude, place.longitude, place.height})
                lines += QByteArray::number(value, 'g', 17) + ' ';
            lines += '\n';
        }
        QProcess process;
        process.start(QStringLiteral("cs2cs"),
                      {QStringLiteral("-f"), QStringLiteral("%.7f"), QStringLiteral("EPSG:4326"),
                       QStringLiteral("+to"), exported(coord, form)});
        process.write(lines);
        process.closeWriteChannel();
        ASSERT_TRUE(process.waitForFinished());
        const QList<QByteArray> results = process.readAllStandardOutput().trimmed().split('\n');
        ASSERT_EQ(results.size(), points.size()) << process.readAllStandardError().toStdString();
        for (int i = 0; i < points.size(); ++i) {
            const QList<QByteArray> words = results.at(i).simplified().split(' ');
            // Readers apply seven parameters linearly, and leave heights and GRS 80 out of it.
            EXPECT_NEAR(words.value(0).toDouble(), expected.at(i).getENU().e, 0.001);
            EXPECT_NEAR(words.value(1).toDouble(), expected.at(i).getENU().n, 0.001);
        }
    }
}

// PROJ's null grid shifts by nothing, and takes the way of all grids.
TEST_F(SiteExport, PipelineShiftsByTheGridThatIsNamed)
{
    const struct
    {
        const char *document;
        const char *ellipsoid;
    } rows[] = {{"ed50_utm_31n.xml", "intl"},
                {"rd_new.xml", "bessel"},
                {"hartebeesthoek94_lo29.xml", "WGS84"}}; // whose axes point west and south
    for (const auto &row : rows) {
        Coord coord = systemOf(row.document);
        const QList<Pos> points = pointsOf(row.document, coord);
        coord.ellipsoid.proj4EllpsName =
            QLatin1String(row.ellipsoid) + QLatin1String(" +nadgrids=@null");
        coord.planeTransform = turned;
        coord.elevationFitting = test::fixedHeight(1.0);
        const QString pipeline = exported(coord);
        EXPECT_TRUE(pipeline.contains(QLatin1String("+grids=@null"))) << pipeline;
        test::expectNear(test::runCct(pipeline, points), atSite(coord, points), 1e-6);
    }
}

TEST_F(SiteExport, PipelineLeadsBackToo)
{
    Coord coord = systemOf("rd_new.xml");
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    coord.planeTransform = test::similarity(-154000.0, -462000.0, 108000.0, 0.9999);
    coord.elevationFitting = test::inclinedPlane(-3.5, 1e-5, 2e-5);
    auto builder = calibration::SiteBuilder::of(coord);
    const QList<Pos> places = {Pos::fromENU(1000.0, -500.0, 12.0), Pos::fromENU(0.0, 0.0, -3.0)};
    const QList<Pos> back = test::runCct(QStringLiteral("-I ") + exported(coord), places);
    for (int i = 0; i < places.size(); ++i) {
        Location location;
        calibration::SiteBuilder::Outcome outcome;
        ASSERT_TRUE(builder->makeFromSite(places.at(i), location, outcome));
        EXPECT_NEAR(back.at(i).getLongLatH().longitude, location.get_WGS84_LLH_Long(), 1e-11);
        EXPECT_NEAR(back.at(i).getLongLatH().latitude, location.get_WGS84_LLH_Lat(), 1e-11);
        EXPECT_NEAR(back.at(i).getLongLatH().height, location.get_WGS84_LLH_Height(), 1e-6);
    }
}

TEST_F(SiteExport, WhatHasNoStepIsRefused)
{
    Coord coord = systemOf("rd_new.xml");
    coord.elevationFitting = test::curvedSurface(1.0, 0.0, 0.0, 1e-9, 0.0, 0.0, 0.0, 0.0);
    EXPECT_TRUE(refusalOf(coord).contains(QLatin1String("curved surface")));
    coord.elevationFitting = test::fixedHeight(1.0);
    EXPECT_FALSE(exported(coord).isEmpty());

    Coord withoutModel = coord;
    withoutModel.geoidModel.modelFileName = QStringLiteral("nowhere.gtx");
    EXPECT_TRUE(refusalOf(withoutModel).contains(QLatin1String("nowhere.gtx")));

    Coord geographic = coord;
    geographic.projection.proj4Projection = QStringLiteral("longlat");
    EXPECT_TRUE(refusalOf(geographic).contains(QLatin1String("longitudes and latitudes")));

    Coord unknown = coord;
    unknown.projection.proj4Projection = QStringLiteral("nosuch");
    refusalOf(unknown);
}

TEST_F(SiteExport, RecordsThatCannotBeAppliedAreRefusedInEveryForm)
{
    Coord coord = systemOf("rd_new.xml");
    coord.planeTransform.fuction = PlaneTransformFunction_Four; // with the ratio of a fresh record
    for (const ExportForm form :
         {ExportForm::Wkt2, ExportForm::ProjJson, ExportForm::Proj, ExportForm::Esri})
        EXPECT_TRUE(refusalOf(coord, form).contains(QLatin1String("ratio")));
}

TEST_F(SiteExport, SaysWhatIsLost)
{
    Coord coord = systemOf("rd_new.xml");
    coord.planeTransform = turned;
    coord.elevationFitting = test::fixedHeight(1.0);
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    const auto lost = [&](ExportForm form) {
        const auto text = catalogue().exportSystem(coord, form, QStringLiteral("EPSG:28992"));
        return text ? text->lost.join(QLatin1Char(' ')) + text->code : QString();
    };
    for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson}) {
        EXPECT_TRUE(lost(form).contains(QLatin1String("height fitting")));
        EXPECT_FALSE(lost(form).contains(QLatin1String("plane transformation")));
        EXPECT_FALSE(
            lost(form).contains(QLatin1String("28992"))); // its site is no system of EPSG's
    }
    EXPECT_FALSE(lost(ExportForm::Proj).contains(QLatin1String("height fitting")));
    EXPECT_TRUE(lost(ExportForm::Proj).contains(QLatin1String("egm96_15.gtx")));
    EXPECT_TRUE(lost(ExportForm::Esri).contains(QLatin1String("plane transformation")));
    EXPECT_TRUE(lost(ExportForm::Esri).contains(QLatin1String("height fitting")));
}

} // namespace
} // namespace KelStd::catalogue
