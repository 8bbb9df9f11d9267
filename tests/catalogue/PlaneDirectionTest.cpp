// Which way easting and northing count in imported systems, against what PROJ's cs2cs prints.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

namespace KelStd::catalogue {
namespace {

class PlaneDirection : public test::CatalogueTest
{
protected:
    /// Easting and northing of a place on WGS 84, in the directions of the system's axes.
    void expectPlane(const QByteArray &source, double longitude, double latitude, double easting,
                     double northing)
    {
        ImportOptions consent;
        consent.takeAsWgs84 = true;
        const ImportedSystem imported = import(source, consent);
        ASSERT_TRUE(imported.system.has_value());
        EXPECT_LE(imported.report.difference, 1e-3);
        Location location;
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(longitude, latitude, 0.0),
                                                        location, nullptr, &*imported.system));
        EXPECT_NEAR(location.get_NEH_E(), easting, 1e-4) << source.right(60).toStdString();
        EXPECT_NEAR(location.get_NEH_N(), northing, 1e-4) << source.right(60).toStdString();
    }
};

QByteArray transverseMercator(const char *axes, const char *falseEasting = "500000")
{
    return QByteArray(R"(PROJCS["P",GEOGCS["X",DATUM["D",)"
                      R"(SPHEROID["Bessel 1841",6377397.155,299.1528128],)"
                      R"(TOWGS84[598.1,73.7,418.2,0,0,0,0]],PRIMEM["Greenwich",0],)"
                      R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
                      R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",9],)"
                      R"(PARAMETER["scale_factor",1],PARAMETER["false_easting",)")
           + falseEasting + R"(],PARAMETER["false_northing",0],UNIT["metre",1])" + axes + "]";
}

// echo 47.5 9.4 | cs2cs -f %.6f EPSG:4326 "PROJCS[...]", whose axes come in their order.
TEST_F(PlaneDirection, OfATextIsThatOfItsAxes)
{
    constexpr double e = 530158.230852;
    constexpr double n = 5262471.558996;
    const struct
    {
        const char *axes;
        double easting;
        double northing;
    } rows[] = {
        {"", e, n},
        {R"(,AXIS["X",NORTH],AXIS["Y",EAST])", e, n},
        {R"(,AXIS["X",NORTH],AXIS["Y",WEST])", -e, n},
        {R"(,AXIS["Y",WEST],AXIS["X",NORTH])", -e, n},
        {R"(,AXIS["X",SOUTH],AXIS["Y",EAST])", e, -n},
        {R"(,AXIS["Y",EAST],AXIS["X",SOUTH])", e, -n},
    };
    for (const auto &row : rows)
        expectPlane(transverseMercator(row.axes), 9.4, 47.5, row.easting, row.northing);
}

// The same of a false easting of 0. PROJ 9.1 cannot compute "+proj=tmerc +axis=wsu +x_0=500000": it
// takes it for EPSG's method 9808.
TEST_F(PlaneDirection, ToTheWestAndSouthIsThatOfATransverseMercatorWithoutFalseOrigin)
{
    for (const char *axes :
         {R"(,AXIS["X",SOUTH],AXIS["Y",WEST])", R"(,AXIS["Y",WEST],AXIS["X",SOUTH])"}) {
        expectPlane(transverseMercator(axes, "0"), 9.4, 47.5, -30158.230852, -5262471.558996);
        const CatalogueFailure failure = catalogue().importSystem(transverseMercator(axes)).refusal;
        EXPECT_EQ(failure.kind, CatalogueFailureKind::NoProjection) << axes;
        EXPECT_TRUE(failure.text.startsWith(QLatin1String("its axes point west and south and")))
            << failure.text.toStdString();
    }
}

// projinfo -o WKT2:2019 EPSG:8044: southing (X), westing (Y). Against these axes,
// echo 48.1 14 | cs2cs EPSG:4326 +to $(projinfo -q -o PROJ EPSG:8044) +towgs84=0,0,0, and 48.1 16.4
// to EPSG:8045.
TEST_F(PlaneDirection, OfASystemOfTheDatabaseIsThatOfItsAxes)
{
    expectPlane("EPSG:8044", 14.0, 48.1, 10239.540111, -6037.407025);
    expectPlane("EPSG:8045", 16.4, 48.1, -1916.980233, 12901.843100);
}

// A system that counts otherwise is not the database's.
TEST_F(PlaneDirection, IsHeldAgainstThatOfTheDatabase)
{
    ImportOptions consent;
    consent.takeAsWgs84 = true;
    for (const char *code : {"EPSG:8044", "EPSG:5513", "EPSG:28992"}) {
        Coord coord = *import(code, consent).system;
        const auto exportedAs = [&] {
            const auto text =
                catalogue().exportSystem(coord, ExportForm::Wkt2, QLatin1String(code));
            return text ? text->code : QString();
        };
        EXPECT_EQ(exportedAs(), QLatin1String(code));
        coord.ellipsoid.positiveDir = coord.ellipsoid.positiveDir == EllipsoidDirection_ENU
                                          ? EllipsoidDirection_WNU
                                          : EllipsoidDirection_ENU;
        EXPECT_EQ(exportedAs(), QString()) << code;
    }
}

// cs2cs has neither a swap nor a sign for axes that both point along meridians.
// echo -75 120 | cs2cs -f %.6f EPSG:4326 EPSG:3031; 85 20 EPSG:3413; 85 20 EPSG:5041; of EPSG:32661
// (northing first) the same as of EPSG:5041.
TEST_F(PlaneDirection, AboutAPoleIsThatOfTheProjection)
{
    expectPlane("EPSG:3031", 120.0, -75.0, 1419227.915757, -819391.619204);
    expectPlane("EPSG:3413", 20.0, 85.0, 491188.641081, -229045.024935);
    expectPlane("EPSG:5041", 20.0, 85.0, 2189977.616612, 1478040.788157);
    expectPlane("EPSG:32661", 20.0, 85.0, 2189977.616612, 1478040.788157);
}

// cs2cs cannot compute with the first, and takes the others for east and north.
TEST_F(PlaneDirection, IsNotGuessed)
{
    for (const char *axes :
         {R"(,AXIS["X",NORTH],AXIS["Y",SOUTH])", R"(,AXIS["X",OTHER],AXIS["Y",OTHER])",
          R"(,AXIS["X",UP],AXIS["Y",EAST])", R"(,AXIS["X",EAST],AXIS["Y",EAST])"}) {
        const CatalogueFailure failure = catalogue().importSystem(transverseMercator(axes)).refusal;
        EXPECT_EQ(failure.kind, CatalogueFailureKind::NoProjection) << axes;
        EXPECT_TRUE(failure.text.startsWith(QLatin1String("the system's axes point \"")))
            << axes << ' ' << failure.text.toStdString();
    }
}

} // namespace
} // namespace KelStd::catalogue
