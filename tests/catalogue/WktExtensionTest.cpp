// PROJ strings within a WKT 1.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

namespace KelStd::catalogue {
namespace {

class WktExtension : public test::CatalogueTest
{
protected:
    ImportedSystem imported(const QByteArray &source)
    {
        ImportOptions consent;
        consent.takeAsWgs84 = true;
        return catalogue().importSystem(source, consent);
    }
};

QByteArray transverseMercator(const QByteArray &extension, const char *shift = "")
{
    return QByteArray(R"(PROJCS["P",GEOGCS["X",DATUM["D",)"
                      R"(SPHEROID["Bessel 1841",6377397.155,299.1528128])")
           + shift
           + R"(],PRIMEM["Greenwich",0],)"
             R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
             R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",9],)"
             R"(PARAMETER["scale_factor",1],PARAMETER["false_easting",500000],)"
             R"(PARAMETER["false_northing",0],UNIT["metre",1],EXTENSION["PROJ4",")"
           + extension + R"("]])";
}

constexpr const char *plane = "+proj=tmerc +lat_0=0 +lon_0=9 +k=1 +x_0=500000 +y_0=0 ";

// cs2cs follows each of these strings, up to 200 m from the WKT around it.
TEST_F(WktExtension, IsRefusedWhereItSaysSomethingElse)
{
    const QByteArray common = plane;
    const struct
    {
        QByteArray extension;
        const char *otherwise;
    } rows[] = {
        {common + "+ellps=bessel +towgs84=598.1,73.7,418.2,0,0,0,0 +units=m",
         "+towgs84=598.1,73.7,418.2,0,0,0,0"},
        {common + "+ellps=bessel +nadgrids=BETA2007.gsb +units=m", "+nadgrids=BETA2007.gsb"},
        {common + "+ellps=bessel +geoidgrids=egm96_15.gtx +units=m", "+geoidgrids=egm96_15.gtx"},
        {common + "+ellps=bessel +units=us-ft", "+units=us-ft"},
        {common + "+ellps=bessel +to_meter=0.3048", "+to_meter=0.3048"},
        {common + "+ellps=bessel +pm=ferro", "+pm=ferro"},
        {common + "+ellps=GRS80", "+ellps=GRS80"},
        {common + "+a=6378137 +b=6378137", "+a=6378137"},
        {QByteArray(common).replace("lon_0=9", "lon_0=12") + "+ellps=bessel", "+lon_0=12"},
        {QByteArray(common).replace("x_0=500000", "x_0=0") + "+ellps=bessel", "+x_0=0"},
        {QByteArray(common).replace("k=1", "k=0.9997") + "+ellps=bessel", "+k=0.9997"},
        {"+proj=utm +zone=32 +ellps=bessel", "+proj=utm"},
    };
    for (const auto &row : rows) {
        const ImportedSystem result = imported(transverseMercator(row.extension));
        EXPECT_FALSE(result.system.has_value()) << row.otherwise;
        EXPECT_EQ(result.refusal.kind, CatalogueFailureKind::NotUnderstood);
        EXPECT_EQ(result.refusal.text,
                  QStringLiteral("its EXTENSION[\"PROJ4\"] has \"%1\", which the definition around "
                                 "it does not say, and programs take either: remove one of them")
                      .arg(QLatin1String(row.otherwise)));
    }
    // The first of two is right.
    const ImportedSystem second = imported(transverseMercator(
        common + R"(+ellps=bessel"],EXTENSION["Proj4","+proj=tmerc +lon_0=12 +ellps=bessel)"));
    EXPECT_EQ(second.refusal.kind, CatalogueFailureKind::NotUnderstood);
    EXPECT_TRUE(second.refusal.text.contains(QLatin1String("+lon_0=12")))
        << second.refusal.text.toStdString();
    for (const char *extension : {"", "+init=/etc/passwd:x", "+proj=pipeline +step +proj=tmerc"})
        EXPECT_EQ(imported(transverseMercator(extension)).refusal.kind,
                  CatalogueFailureKind::NotUnderstood)
            << extension;
    EXPECT_EQ(imported(transverseMercator("garbage")).refusal.text,
              QStringLiteral("its EXTENSION[\"PROJ4\"] is no system that PROJ understands"));
}

// echo 47.5 9.4 | cs2cs -f %.6f EPSG:4326 "PROJCS[...]" of the text with TOWGS84.
TEST_F(WktExtension, MaySayTheSame)
{
    const QByteArray common = plane;
    const char *const shift = ",TOWGS84[598.1,73.7,418.2,0,0,0,0]";
    for (const QByteArray &extension :
         {common + "+ellps=bessel +units=m +no_defs",
          common + "+ellps=bessel +towgs84=598.1,73.7,418.2,0,0,0,0 +units=m +no_defs",
          common + "+a=6377397.155 +rf=299.1528128 +towgs84=598.1,73.7,418.2 +wktext",
          QByteArray("+proj=tmerc +lon_0=9 +x_0=500000 +ellps=bessel +type=crs")}) {
        const ImportedSystem result = import(transverseMercator(extension, shift));
        ASSERT_TRUE(result.system.has_value());
        Location location;
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(9.4, 47.5, 0.0), location,
                                                        nullptr, &*result.system));
        EXPECT_NEAR(location.get_NEH_E(), 530158.230852, 1e-4) << extension.toStdString();
        EXPECT_NEAR(location.get_NEH_N(), 5262471.558996, 1e-4) << extension.toStdString();
    }
}

/// `projinfo -o WKT1:GDAL EPSG:3857` without its codes.
QByteArray webMercator(const char *falseEasting, const char *name = "Web")
{
    return QByteArray(R"(PROJCS[")") + name
           + QByteArray(R"(",GEOGCS["WGS 84",DATUM["WGS_1984",)"
                        R"(SPHEROID["WGS 84",6378137,298.257223563]],PRIMEM["Greenwich",0],)"
                        R"(UNIT["degree",0.0174532925199433]],PROJECTION["Mercator_1SP"],)"
                        R"(PARAMETER["central_meridian",0],PARAMETER["scale_factor",1],)"
                        R"(PARAMETER["false_easting",)")
           + falseEasting
           + R"(],PARAMETER["false_northing",0],UNIT["metre",1],)"
             R"(AXIS["Easting",EAST],AXIS["Northing",NORTH],)"
             R"(EXTENSION["PROJ4","+proj=merc +a=6378137 +b=6378137 +lat_ts=0 +lon_0=0 +x_0=0 )"
             R"(+y_0=0 +k=1 +units=m +nadgrids=@null +wktext +no_defs"]])";
}

// EPSG Guidance Note 7-2, Popular Visualisation Pseudo Mercator.
TEST_F(WktExtension, MayBeThatOfWebMaps)
{
    for (const char *name : {"Web", "WGS 84 / Pseudo-Mercator"}) { // PROJ knows the second one
        const ImportedSystem result = import(webMercator("0", name));
        ASSERT_TRUE(result.system.has_value());
        Location location;
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(
            Pos::fromLongLatH(-100.0 - 20.0 / 60.0, 24.0 + 22.0 / 60.0 + 54.433 / 3600.0, 0.0),
            location, nullptr, &*result.system));
        EXPECT_NEAR(location.get_NEH_E(), -11169055.58, 0.02);
        EXPECT_NEAR(location.get_NEH_N(), 2800000.00, 0.02);
        EXPECT_FALSE(imported(webMercator("1000", name)).system.has_value());
    }
    EXPECT_TRUE(imported(webMercator("1000")).refusal.text.contains(QLatin1String("+x_0=0")));
}

} // namespace
} // namespace KelStd::catalogue
