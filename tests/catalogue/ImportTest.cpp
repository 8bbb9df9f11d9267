// Imports of single systems. Numbers of datum shifts are those that `projinfo EPSG:CODE -k
// operation` shows, those of projections what `projinfo EPSG:CODE` does.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentReview.h>

#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

class SystemImport : public CatalogueTest
{};

double number(const Projection &projection, const char *key)
{
    return projection.param.value(QString::fromLatin1(key)).value.toDouble();
}

bool hasWarning(const ImportReport &report, const char *words)
{
    return std::any_of(report.warnings.cbegin(), report.warnings.cend(),
                       [words](const QString &warning) {
                           return warning.contains(QLatin1String(words), Qt::CaseInsensitive);
                       });
}

TEST_F(SystemImport, FillsTheRecordsOfASystem)
{
    const ImportedSystem rd = import("EPSG:28992");
    ASSERT_TRUE(rd.system);
    const Coord &coord = *rd.system;
    EXPECT_EQ(coord.coord_name, QStringLiteral("Amersfoort / RD New"));
    EXPECT_EQ(coord.ellipsoid.proj4EllpsName, QStringLiteral("bessel"));
    EXPECT_EQ(coord.ellipsoid.biggerHalfAxle.value.toDouble(), 6377397.155);
    EXPECT_EQ(coord.ellipsoid.reciprocal, 299.1528128);
    EXPECT_EQ(coord.projection.proj4Projection, QStringLiteral("sterea"));
    EXPECT_EQ(number(coord.projection, "FalseEast"), 155000.0);
    EXPECT_EQ(number(coord.projection, "FalseNorth"), 463000.0);
    EXPECT_EQ(number(coord.projection, "k_0"), 0.9999079);
    EXPECT_NEAR(number(coord.projection, "lat_0"), 52.0 + 9.0 / 60 + 22.178 / 3600, 1e-14);
    EXPECT_EQ(rd.report.code, QStringLiteral("EPSG:28992"));
    EXPECT_EQ(rd.report.area.west, 3.2);
    EXPECT_EQ(rd.report.area.north, 53.7);
    EXPECT_EQ(rd.report.axisUnit, QStringLiteral("metre"));
    EXPECT_TRUE(rd.report.databaseVersion.startsWith(QLatin1String("EPSG ")));
}

/// A system, the operation that has to be taken and what the record has of it.
struct ShiftRow
{
    const char *system;
    ShiftKind kind;
    const char *operation;
    double x, y, z;  ///< stored translations [m]: the published ones the other way round
    double rotation; ///< stored rotation about x ["], by the position-vector method
};

TEST_F(SystemImport, TakesThePublishedShift)
{
    constexpr ShiftRow rows[] = {
        {"EPSG:28992", ShiftKind::Seven, "EPSG:4833", -565.4171, -50.3319, -465.5524,
         -0.398957388243134},
        {"EPSG:27561", ShiftKind::Three, "EPSG:8094", 168.0, 60.0, -320.0, 0.0},
        {"EPSG:2039", ShiftKind::Seven, "EPSG:9676", -23.772, -17.49, -17.859, -0.3132},
        {"EPSG:30161", ShiftKind::Three, "EPSG:15484", 146.414, -507.337, -680.507, 0.0},
        {"EPSG:29385", ShiftKind::Three, "EPSG:1226", -616.0, -97.0, 251.0, 0.0},
        {"EPSG:2154", ShiftKind::None, "EPSG:1671", 0.0, 0.0, 0.0, 0.0},
    };
    for (const ShiftRow &row : rows) {
        const ImportedSystem imported = import(row.system);
        ASSERT_TRUE(imported.system) << row.system;
        EXPECT_EQ(imported.report.shift.kind, row.kind) << row.system;
        EXPECT_EQ(imported.report.shift.code, QLatin1String(row.operation)) << row.system;
        const stEllipsoinTransform &record = imported.system->ellipsoidTransform;
        EXPECT_EQ(record.x_translate.value.toDouble(), row.x) << row.system;
        EXPECT_EQ(record.y_translate.value.toDouble(), row.y) << row.system;
        EXPECT_EQ(record.z_translate.value.toDouble(), row.z) << row.system;
        EXPECT_NEAR(record.x_rotate.value.toDouble(), row.rotation, 1e-14) << row.system;
    }
}

TEST_F(SystemImport, ChoosesTheShiftForThePlaceOfUse)
{
    ImportOptions vienna;
    vienna.at = GroundPoint{16.4, 48.2};
    const ImportedSystem east = import("EPSG:31256", vienna);
    EXPECT_TRUE(east.report.shift.accuracy.has_value());
    const auto shifts = catalogue().datumShifts("EPSG:31256", vienna.at);
    ASSERT_TRUE(shifts);
    ASSERT_FALSE(shifts->shifts.empty());
    // Best first: what contains the place, then by accuracy, then by coverage.
    for (std::size_t index = 1; index < shifts->shifts.size(); ++index) {
        const DatumShift &before = shifts->shifts[index - 1];
        const DatumShift &after = shifts->shifts[index];
        EXPECT_EQ(after.number, before.number + 1);
        EXPECT_GE(before.containsPoint, after.containsPoint);
        if (before.containsPoint && after.containsPoint) {
            EXPECT_LE(before.accuracy.value_or(1e9), after.accuracy.value_or(1e9));
        }
    }
}

TEST_F(SystemImport, TakesTheShiftThatIsAskedFor)
{
    ImportOptions options;
    options.shift = QStringLiteral("EPSG:15934");
    const ImportedSystem byCode = import("EPSG:28992", options);
    EXPECT_EQ(byCode.report.shift.code, options.shift);
    // projinfo EPSG:15934 -k operation: x = 565.2369
    EXPECT_EQ(byCode.system->ellipsoidTransform.x_translate.value.toDouble(), -565.2369);
    const auto shifts = catalogue().datumShifts("EPSG:28992");
    ASSERT_TRUE(shifts);
    for (const DatumShift &shift : shifts->shifts) {
        if (shift.code == options.shift)
            options.shift = QString::number(shift.number);
    }
    EXPECT_EQ(import("EPSG:28992", options).report.shift.code, QStringLiteral("EPSG:15934"));
    options.shift = QStringLiteral("EPSG:1");
    EXPECT_EQ(catalogue().importSystem("EPSG:28992", options).refusal.kind,
              CatalogueFailureKind::NoSuchShift);
}

TEST_F(SystemImport, NeverTakesAShiftOfAnotherPartOfTheWorld)
{
    // NAD27 / Alaska zone 9, in the Bering Sea: the most accurate shift of NAD27 is that of Cuba.
    const ImportedSystem alaska = import("EPSG:26739");
    EXPECT_TRUE(alaska.report.shift.name.contains(QLatin1String("NAD27 to WGS 84")));
    EXPECT_GT(alaska.report.shift.coverage, 0.0);
    EXPECT_NE(alaska.report.shift.code, QStringLiteral("EPSG:15978"));
    EXPECT_TRUE(hasWarning(alaska.report, "covers"));
    EXPECT_FALSE(hasWarning(alaska.report, "..")); // the areas' descriptions are sentences
}

struct RefusalRow
{
    const char *source;
    const char *word;
};

TEST_F(SystemImport, RefusesWhatItCannotVouchFor)
{
    constexpr RefusalRow rows[] = {
        {"EPSG:4490", "not-projected"},     {"EPSG:4978", "not-projected"},
        {"EPSG:5773", "not-projected"},     {"EPSG:2221", "no-projection"},
        {"EPSG:32700", "no-projection"},    {"EPSG:5017", "no-projection"},
        {"EPSG:2159", "no-shift"},          {"EPSG:4533", "no-shift"},
        {"EPSG:2000", "no-shift"},          {"EPSG:2017", "grid-only"},
        {"EPSG:9943", "grid-only"},         {"EPSG:6784", "time-specific"},
        {"EPSG:6632", "time-specific"},     {"EPSG:1", "not-understood"},
        {"NOSUCH:28992", "not-understood"},
    };
    for (const RefusalRow &row : rows)
        EXPECT_EQ(refusal(row.source), QLatin1String(row.word)) << row.source;
}

TEST_F(SystemImport, NamesTheGridThatMisses)
{
    const ImportedSystem refused = catalogue().importSystem("EPSG:2017");
    EXPECT_TRUE(refused.refusal.text.contains(QLatin1String("ca_nrc_MAY76V20.tif")))
        << refused.refusal.text.toStdString();
}

TEST_F(SystemImport, TakesPositionsAsWgs84OnlyByConsent)
{
    ImportOptions consent;
    consent.takeAsWgs84 = true;
    const ImportedSystem china = import("EPSG:4533", consent); // CGCS2000
    EXPECT_EQ(china.report.shift.kind, ShiftKind::None);
    EXPECT_EQ(china.system->ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
    EXPECT_FALSE(hasWarning(china.report, "classical"));
    EXPECT_TRUE(hasWarning(import("EPSG:2159", consent).report, "classical"));
    // Where there is a shift, consent changes nothing.
    EXPECT_EQ(import("EPSG:28992", consent).report.shift.code, QStringLiteral("EPSG:4833"));
}

TEST_F(SystemImport, FitsSevenParametersOnRequest)
{
    // Rotations of a minute of arc, which the linear method and the full matrix apply differently.
    const ImportedSystem published = import("EPSG:3303");
    EXPECT_GT(published.report.difference, 0.1);
    EXPECT_TRUE(hasWarning(published.report, "a fit makes up for it"));
    ImportOptions fit;
    fit.fit = true;
    EXPECT_LT(import("EPSG:3303", fit).report.difference, 0.001);
}

TEST_F(SystemImport, TakesAGridThatIsThere)
{
    // Delivered with PROJ: the German grid. `echo 48.7 9 | cs2cs -f %.4f EPSG:4326 EPSG:31467` with
    // it: 5395825.9643 3500075.3611.
    const ImportedSystem german = import("EPSG:31467");
    EXPECT_EQ(german.report.shift.kind, ShiftKind::Grid);
    EXPECT_EQ(german.report.shift.grids, QStringList(QStringLiteral("BETA2007.gsb")));
    EXPECT_EQ(german.report.shift.frame, QStringLiteral("ETRS89")); // SYSTEM_T of its header
    EXPECT_EQ(german.report.shift.operationFrame, QStringLiteral("WGS 84"));
    EXPECT_EQ(german.system->ellipsoid.proj4EllpsName,
              QStringLiteral("bessel +nadgrids=BETA2007.gsb"));
    Location location;
    QString error;
    ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(9.0, 48.7, 300.0), location,
                                                    nullptr, &*german.system, &error));
    EXPECT_NEAR(location.get_NEH_N(), 5395825.9643, 1e-4);
    EXPECT_NEAR(location.get_NEH_E(), 3500075.3611, 1e-4);
    EXPECT_NEAR(location.get_NEH_H(), 300.0, 1e-4); // heights are untouched
    EXPECT_FALSE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(30.0, 60.0, 0.0), location,
                                                     nullptr, &*german.system, &error))
        << "outside of the grid";
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(SystemImport, KeepsDirectionsUnitsAndPrimeMeridians)
{
    const ImportedSystem krovak = import("EPSG:5513");
    EXPECT_EQ(krovak.system->ellipsoid.positiveDir, EllipsoidDirection_WSU);
    EXPECT_EQ(import("EPSG:5514").system->ellipsoid.positiveDir, EllipsoidDirection_ENU);
    const ImportedSystem paris = import("EPSG:27561");
    EXPECT_NEAR(number(paris.system->projection, "lon_0"), 2.0 + 20.0 / 60.0 + 14.025 / 3600.0,
                1e-12);
    const ImportedSystem feet = import("EPSG:3991");
    EXPECT_EQ(feet.report.axisUnit, QStringLiteral("US survey foot"));
    EXPECT_NEAR(feet.report.metresPerUnit, 1200.0 / 3937.0, 1e-15);
    EXPECT_NEAR(number(feet.system->projection, "FalseEast"), 500000.0 * 1200.0 / 3937.0, 1e-9);
}

TEST_F(SystemImport, AddsALongitudeRotationThatIsNoPrimeMeridian)
{
    // Tokyo 1892 lies 10.405" beside Tokyo: 266 m.
    const ImportedSystem korea = import("EPSG:5172");
    EXPECT_NEAR(number(korea.system->projection, "lon_0"), 131.0 + 10.405 / 3600.0, 1e-9);
}

TEST_F(SystemImport, MakesAKnownGeoidTheSystemsModel)
{
    const ImportedSystem compound = import("EPSG:28992+5773");
    EXPECT_EQ(compound.report.geoidModel, QStringLiteral("egm96_15.gtx"));
    EXPECT_EQ(compound.system->geoidModel.modelFileName, QStringLiteral("egm96_15.gtx"));
    const ImportedSystem nap = import("EPSG:7415");
    EXPECT_EQ(nap.report.missingGrid, QStringLiteral("nl_nsgi_nlgeo2018.tif"));
    EXPECT_TRUE(nap.system->geoidModel.modelFileName.isEmpty());
    EXPECT_TRUE(hasWarning(nap.report, "ellipsoidal"));
}

TEST_F(SystemImport, SaysThatAnotherShiftIsAsGood)
{
    EXPECT_TRUE(hasWarning(import("EPSG:28992").report, "as good as"));
}

TEST_F(SystemImport, MakesASphereOfItsRadius)
{
    ImportOptions consent;
    consent.takeAsWgs84 = true;
    const ImportedSystem sphere = import("EPSG:3408", consent); // NSIDC EASE-Grid North
    EXPECT_EQ(sphere.system->ellipsoid.biggerHalfAxle.value.toDouble(), 6371228.0);
    EXPECT_EQ(sphere.system->ellipsoid.proj4EllpsName, QStringLiteral("sphere +R=6371228"));
    Location location;
    ASSERT_TRUE(Coord::MakeLocation_byLocalLatLongH(Pos::fromLongLatH(10.0, 60.0, 0.0), location,
                                                    nullptr, &*sphere.system));
    // echo "10 60" | cs2cs +proj=longlat +R=6371228 +to +proj=laea +lat_0=90 +lon_0=0 +R=6371228
    EXPECT_NEAR(location.get_NEH_E(), 572690.004548, 1e-6);
    EXPECT_NEAR(location.get_NEH_N(), -3247886.411068, 1e-6);
}

TEST_F(SystemImport, SaysHowFarProjIsFromThePublishedMethod)
{
    // The arc of the meridian is the northing of `proj +proj=tmerc +ellps=WGS84` at longitude 0.
    // From that of the sphere, 6378137 m times the latitude, it differs most at 54.8 N: by 25342.12
    // m.
    const ImportedSystem world = import("EPSG:4087");
    EXPECT_NEAR(world.report.methodDifference, 25342.12, 0.5);
    EXPECT_TRUE(hasWarning(world.report, "on a sphere, which differs by up to 25342 m"));
    // At 10 N 6378137 m x 10 deg are 1113194.908, and the arc 1105854.833: 7340.07 m.
    const ImportedSystem site =
        import("PROJCRS[\"a\",BASEGEOGCRS[\"WGS 84\",DATUM[\"World Geodetic System 1984\","
               "ELLIPSOID[\"WGS 84\",6378137,298.257223563]],ID[\"EPSG\",4326]],CONVERSION[\"b\","
               "METHOD[\"Equidistant Cylindrical\",ID[\"EPSG\",1028]],PARAMETER[\"Latitude of 1st "
               "standard parallel\",0,ANGLEUNIT[\"degree\",0.0174532925199433],ID[\"EPSG\",8823]],"
               "PARAMETER[\"Longitude of natural origin\",0],PARAMETER[\"False easting\",0],"
               "PARAMETER[\"False northing\",0]],"
               "CS[Cartesian,2],AXIS[\"x\",east],AXIS[\"y\",north],LENGTHUNIT[\"metre\",1],"
               "USAGE[SCOPE[\"c\"],AREA[\"d\"],BBOX[2,8,10,12]]]");
    EXPECT_NEAR(site.report.methodDifference, 7340.07, 0.5);
    // The Transverse Mercator of the same datum is what it should be.
    EXPECT_EQ(import("EPSG:32631").report.methodDifference, 0.0);
}

TEST_F(SystemImport, MakesDocumentsThatAReviewHasNothingAgainst)
{
    QTemporaryDir directory;
    ImportOptions consent;
    consent.takeAsWgs84 = true;
    // Seven parameters, a grid, a sphere, axes to the west and south, feet, web maps.
    for (const char *code : {"EPSG:28992", "EPSG:31467", "EPSG:3408", "EPSG:5513", "EPSG:3991",
                             "EPSG:3857", "EPSG:3303"}) {
        const ImportedSystem imported = import(code, consent);
        const QString file = directory.filePath(QStringLiteral("system.xml"));
        ASSERT_TRUE(Coord_IO::xml_write(*imported.system, file, nullptr));
        Coord back;
        QList<io::DocumentFinding> findings;
        ASSERT_TRUE(io::reviewCoord(file, back, findings));
        for (const io::DocumentFinding &finding : findings)
            ADD_FAILURE() << code << ' ' << io::describedFinding(finding).toStdString();
        EXPECT_EQ(back.ellipsoid, imported.system->ellipsoid) << code;
    }
}

TEST_F(SystemImport, LeavesEllipsoidsThatHideSomethingToTheReview)
{
    QTemporaryDir directory;
    Coord coord = *import("EPSG:28992").system;
    const QString file = directory.filePath(QStringLiteral("system.xml"));
    for (const char *name :
         {"bessel +nadgrids=@a.gsb", "bessel +nadgrids=a.gsb +pm=paris", "bessel +pm=paris",
          "bessel +nadgrids=", "sphere +R=x", "sphere +R=1 +R=2", "a b +R=1"}) {
        coord.ellipsoid.proj4EllpsName = QString::fromLatin1(name);
        ASSERT_TRUE(Coord_IO::xml_write(coord, file, nullptr));
        Coord back;
        QList<io::DocumentFinding> findings;
        ASSERT_TRUE(io::reviewCoord(file, back, findings));
        EXPECT_FALSE(findings.isEmpty()) << name;
    }
}

TEST_F(SystemImport, KeepsItsResultsInADocument)
{
    QTemporaryDir directory;
    for (const char *code : {"EPSG:28992", "EPSG:27561", "EPSG:5513", "EPSG:3857", "EPSG:3991"}) {
        const ImportedSystem imported = import(code);
        const QString file = directory.filePath(QStringLiteral("system.xml"));
        ASSERT_TRUE(Coord_IO::xml_write(*imported.system, file, nullptr));
        Coord back;
        ASSERT_TRUE(Coord_IO::xml_read(file, back, nullptr));
        Location first;
        Location second;
        const GroundPoint at = imported.report.area.centre();
        const Pos place = Pos::fromLongLatH(at.longitude, at.latitude, 100.0);
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(place, first, nullptr, &*imported.system));
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(place, second, nullptr, &back));
        // A document has fifteen digits.
        EXPECT_NEAR(first.get_NEH_E(), second.get_NEH_E(), 1e-6) << code;
        EXPECT_NEAR(first.get_NEH_N(), second.get_NEH_N(), 1e-6) << code;
    }
}

} // namespace
} // namespace KelStd::catalogue
