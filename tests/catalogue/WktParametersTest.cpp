// Parameters of a projection that PROJ would read otherwise than a WKT means them.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

#include <vector>

namespace KelStd::catalogue {
namespace {

class WktParameters : public test::CatalogueTest
{
protected:
    /// The reason of a refusal; empty where the text is imported.
    std::string reason(const QByteArray &source)
    {
        ImportOptions consent;
        consent.takeAsWgs84 = true;
        const ImportedSystem imported = catalogue().importSystem(source, consent);
        if (imported.system)
            return {};
        EXPECT_EQ(imported.refusal.kind, CatalogueFailureKind::NotUnderstood);
        return imported.refusal.text.toStdString();
    }
};

/// Bessel's ellipsoid with a shift of its own.
QByteArray projected(const QByteArray &projection, const QByteArray &unit = R"(UNIT["metre",1])")
{
    return R"(PROJCS["P",GEOGCS["X",DATUM["D",SPHEROID["Bessel 1841",6377397.155,299.1528128],)"
           R"(TOWGS84[598.1,73.7,418.2,0,0,0,0]],PRIMEM["Greenwich",0],)"
           R"(UNIT["degree",0.0174532925199433]],)"
           + projection + "," + unit + "]";
}

QByteArray parameter(const char *name, const char *value)
{
    return QByteArray(R"(,PARAMETER[")") + name + R"(",)" + value + "]";
}

struct Value
{
    const char *name;
    const char *value;
};

QByteArray transverseMercator(const std::vector<Value> &values)
{
    QByteArray text = R"(PROJECTION["Transverse_Mercator"])";
    for (const Value &value : values)
        text += parameter(value.name, value.value);
    return projected(text);
}

const std::vector<Value> complete = {{"latitude_of_origin", "0"},
                                     {"central_meridian", "9"},
                                     {"scale_factor", "1"},
                                     {"false_easting", "500000"},
                                     {"false_northing", "0"}};

// What PROJ would take is what `projinfo -o PROJ` prints of each text.
TEST_F(WktParameters, AreRefusedWhereTheyAreMisspelt)
{
    struct Row
    {
        std::size_t place;
        const char *name;
        const char *taken;
    };
    for (const Row &row : {Row{3, "falseeastng", "0 for its false easting"},
                           Row{3, "x_offset", "0 for its false easting"},
                           Row{4, "false_nothing", "0 for its false northing"},
                           Row{1, "central_meridan", "0 for its central meridian"},
                           Row{0, "lat_of_orign", "0 for its latitude of origin"},
                           Row{2, "scale", "1 for its scale factor"}}) {
        std::vector<Value> values = complete;
        values[row.place].name = row.name;
        const std::string text = std::string("PROJ would pass over the parameter \"") + row.name
                                 + "\" of \"Transverse_Mercator\" and take " + row.taken;
        EXPECT_EQ(reason(transverseMercator(values)), text);
        values.erase(values.begin() + static_cast<std::ptrdiff_t>(row.place));
        EXPECT_EQ(reason(transverseMercator(values)),
                  std::string("a parameter of \"Transverse_Mercator\" is missing, and PROJ would "
                              "take ")
                      + row.taken);
    }
}

TEST_F(WktParameters, AreRefusedWhereThereAreTooMany)
{
    for (const Value &extra : {Value{"rotation", "30"}, Value{"XY_Plane_Rotation", "30"},
                               Value{"azimuth", "45"}, Value{"false_height", "0"}}) {
        std::vector<Value> values = complete;
        values.push_back(extra);
        EXPECT_EQ(reason(transverseMercator(values)),
                  std::string("PROJ would pass over the parameter \"") + extra.name
                      + "\" of \"Transverse_Mercator\"");
    }
    for (const Value &extra : {Value{"false_easting", "0"}, Value{"False_Easting", "500000"}}) {
        std::vector<Value> values = complete;
        values.push_back(extra);
        const std::string text = std::string("the parameter \"") + extra.name + "\" is given twice";
        EXPECT_EQ(reason(transverseMercator(values)), text);
    }
    EXPECT_EQ(
        reason(projected(R"(PROJECTION["Transverse_Mercator"],)"
                         R"(PARAMETER["false_easting",500,UNIT["km",1000]])")),
        "the parameter \"false_easting\" has a unit of its own, which PROJ passes over in WKT "
        "1");
    QByteArray many = R"(PROJECTION["Transverse_Mercator"])";
    for (int count = 0; count < 5000; ++count)
        many += parameter(("p" + QByteArray::number(count)).constData(), "1");
    EXPECT_EQ(reason(projected(many)), "the projection has more than 40 parameters");
}

// As programs write them: what one value alone makes sense of, or says nothing.
TEST_F(WktParameters, MayBeWithoutEffectWhereTheySayNothing)
{
    std::vector<Value> values = complete;
    EXPECT_EQ(reason(transverseMercator(values)), "");
    values.push_back({"XY_Plane_Rotation", "0"});
    values.push_back({"X_Scale", "1"});
    EXPECT_EQ(reason(transverseMercator(values)), "");
    const QByteArray plane = parameter("False_Easting", "600000")
                             + parameter("False_Northing", "200000")
                             + parameter("Central_Meridian", "9");
    const QByteArray conic = QByteArray(R"(PROJECTION["Lambert_Conformal_Conic"])") + plane;
    // One parallel, which is the latitude of the origin.
    EXPECT_EQ(reason(projected(conic + parameter("Standard_Parallel_1", "49.5")
                               + parameter("Scale_Factor", "0.99987734")
                               + parameter("Latitude_Of_Origin", "49.5"))),
              "");
    // Two parallels, with a scale factor that changes nothing.
    const QByteArray two = conic + parameter("Standard_Parallel_1", "48")
                           + parameter("Standard_Parallel_2", "50")
                           + parameter("Latitude_Of_Origin", "49.5");
    EXPECT_EQ(reason(projected(two)), "");
    EXPECT_EQ(reason(projected(two + parameter("Scale_Factor", "1.0"))), "");
}

QByteArray wkt2(const QByteArray &parameters, const QByteArray &planeUnit,
                const QByteArray &baseUnit)
{
    return R"(PROJCRS["P",BASEGEOGCRS["WGS 84",DATUM["World Geodetic System 1984",)"
           R"(ELLIPSOID["WGS 84",6378137,298.257223563]],UNIT[)"
           + baseUnit
           + R"(]],CONVERSION["C",METHOD["Transverse Mercator"],)"
             R"(PARAMETER["Scale factor at natural origin",0.9999],)"
             R"(PARAMETER["False northing",0],)"
           + parameters + R"(],CS[Cartesian,2],AXIS["easting",east],AXIS["northing",north],UNIT[)"
           + planeUnit + "]]";
}

// ISO 19162: a parameter without a unit has that of the coordinate system, or of the base.
TEST_F(WktParameters, NeedAUnitWhereItIsNoMetreAndNoDegree)
{
    const QByteArray metre = R"("metre",1)";
    const QByteArray foot = R"("US survey foot",0.304800609601219)";
    const QByteArray degree = R"("degree",0.0174532925199433)";
    const QByteArray grad = R"("grad",0.0157079632679489)";
    const QByteArray angles = R"(PARAMETER["Latitude of natural origin",30],)"
                              R"(PARAMETER["Longitude of natural origin",-82],)";
    const QByteArray origin = R"(PARAMETER["Latitude of natural origin",0],)"
                              R"(PARAMETER["Longitude of natural origin",0],)";
    const QByteArray easting = R"(PARAMETER["False easting",600000])";
    EXPECT_EQ(reason(wkt2(angles + easting, metre, degree)), "");
    EXPECT_EQ(reason(wkt2(angles + easting, foot, degree)),
              "the parameter \"False easting\" has no unit, where it would be that of the plane "
              "and PROJ takes metres: add its LENGTHUNIT");
    EXPECT_EQ(reason(wkt2(angles + R"(PARAMETER["False easting",0])", foot, degree)), "");
    EXPECT_EQ(reason(wkt2(angles + R"(PARAMETER["False easting",600000,LENGTHUNIT[)" + foot + "]]",
                          foot, degree)),
              "");
    EXPECT_EQ(reason(wkt2(angles + easting, metre, grad)),
              "the parameter \"Latitude of natural origin\" has no unit, where it would be that of "
              "the base and PROJ takes degrees: add its ANGLEUNIT");
    EXPECT_EQ(reason(wkt2(origin + easting, metre, grad)), "");
    EXPECT_EQ(reason(wkt2(angles + R"(PARAMETER["False eastng",600000])", metre, degree)),
              "PROJ would pass over the parameter \"False eastng\" of \"Transverse Mercator\" and "
              "take 0 for its false easting");
}

// `projinfo -o WKT2:2019_SIMPLIFIED EPSG:25832`, 32633 and 28355; the numbers are those of UTM.
TEST_F(WktParameters, MayHaveNamesWithoutCodes)
{
    struct Row
    {
        const char *meridian;
        const char *northing;
    };
    for (const Row &row : {Row{"9", "0"}, Row{"15", "0"}, Row{"147", "10000000"}}) {
        const QByteArray text =
            QByteArray(R"(PROJCRS["UTM",BASEGEOGCRS["WGS 84",)"
                       R"(DATUM["World Geodetic System 1984",)"
                       R"(ELLIPSOID["WGS 84",6378137,298.257223563]],)"
                       R"(UNIT["degree",0.0174532925199433]],)"
                       R"(CONVERSION["UTM",METHOD["Transverse Mercator"],)"
                       R"(PARAMETER["Latitude of natural origin",0],)"
                       R"(PARAMETER["Longitude of natural origin",)")
            + row.meridian
            + R"(],PARAMETER["Scale factor at natural origin",0.9996],)"
              R"(PARAMETER["False easting",500000],PARAMETER["False northing",)"
            + row.northing
            + R"(]],CS[Cartesian,2],AXIS["E",east],AXIS["N",north],UNIT["metre",1]])";
        const ImportedSystem imported = import(text);
        ASSERT_TRUE(imported.system.has_value());
        const auto &values = imported.system->projection.param;
        const auto number = [&values](const char *key) {
            return values.value(QLatin1String(key)).value.toDouble();
        };
        EXPECT_EQ(imported.system->projection.proj4Projection, QStringLiteral("tmerc"));
        EXPECT_EQ(number("lat_0"), 0.0);
        EXPECT_EQ(number("lon_0"), QByteArray(row.meridian).toDouble());
        EXPECT_EQ(number("k_0"), 0.9996);
        EXPECT_EQ(number("FalseEast"), 500000.0);
        EXPECT_EQ(number("FalseNorth"), QByteArray(row.northing).toDouble());
    }
}

// EPSG's method 9803 without its code: PROJ leaves out its turn, which the import puts back.
TEST_F(WktParameters, OfBelgiumsMethodMayHaveNamesWithoutCodes)
{
    const ImportedSystem imported =
        import(R"(PROJCRS["B",BASEGEOGCRS["WGS 84",DATUM["World Geodetic System 1984",)"
               R"(ELLIPSOID["WGS 84",6378137,298.257223563]],UNIT["degree",0.0174532925199433]],)"
               R"wkt(CONVERSION["B",METHOD["Lambert Conic Conformal (2SP Belgium)"],)wkt"
               R"(PARAMETER["Latitude of false origin",90],)"
               R"(PARAMETER["Longitude of false origin",4.35693972222222],)"
               R"(PARAMETER["Latitude of 1st standard parallel",49.8333333333333],)"
               R"(PARAMETER["Latitude of 2nd standard parallel",51.1666666666667],)"
               R"(PARAMETER["Easting at false origin",150000.01],)"
               R"(PARAMETER["Northing at false origin",5400088.44]],CS[Cartesian,2],)"
               R"(AXIS["x",east],AXIS["y",north],UNIT["metre",1]])");
    ASSERT_TRUE(imported.system.has_value());
    // 29.2985" over the cone's constant of 0.77164219 (EPSG Guidance Note 7-2).
    EXPECT_NEAR(imported.system->projection.param.value(QStringLiteral("lon_0")).value.toDouble(),
                4.35693972222222 + 29.2985 / 3600.0 / 0.77164219, 1e-6);
}

// The same in PROJJSON, as `projinfo -o PROJJSON EPSG:32632` prints it but for a letter.
TEST_F(WktParameters, OfProjJsonAreRefusedLikewise)
{
    const auto text = [](const char *name) {
        return QByteArray(R"({"type":"ProjectedCRS","name":"P","base_crs":{"name":"WGS 84",)"
                          R"("datum":{"type":"GeodeticReferenceFrame",)"
                          R"("name":"World Geodetic System 1984","ellipsoid":{"name":"WGS 84",)"
                          R"("semi_major_axis":6378137,"inverse_flattening":298.257223563}},)"
                          R"("coordinate_system":{"subtype":"ellipsoidal","axis":[)"
                          R"({"name":"Geodetic latitude","abbreviation":"Lat",)"
                          R"("direction":"north","unit":"degree"},)"
                          R"({"name":"Geodetic longitude","abbreviation":"Lon",)"
                          R"("direction":"east","unit":"degree"}]}},"conversion":{"name":"C",)"
                          R"("method":{"name":"Transverse Mercator"},"parameters":[)"
                          R"({"name":"Latitude of natural origin","value":0,"unit":"degree"},)"
                          R"({"name":"Longitude of natural origin","value":9,"unit":"degree"},)"
                          R"({"name":"Scale factor at natural origin","value":0.9996,)"
                          R"("unit":"unity"},{"name":"False northing","value":0,"unit":"metre"},)"
                          R"({"name":")")
               + name
               + R"(","value":500000,"unit":"metre"}]},"coordinate_system":)"
                 R"({"subtype":"Cartesian","axis":[{"name":"Easting","abbreviation":"E",)"
                 R"("direction":"east","unit":"metre"},{"name":"Northing","abbreviation":"N",)"
                 R"("direction":"north","unit":"metre"}]}})";
    };
    EXPECT_EQ(reason(text("False easting")), "");
    EXPECT_EQ(reason(text("False eastng")),
              "PROJ would pass over the parameter \"False eastng\" of \"Transverse Mercator\" and "
              "take 0 for its false easting");
}

} // namespace
} // namespace KelStd::catalogue
