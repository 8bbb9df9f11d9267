// Reference systems of layers held against frames of a system. What is right is what the EPSG
// Dataset says of the codes.

#include <cli/vector/ReferenceCheck.h>
#include <cli/vector/VectorModule.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using namespace cli::vector;
using positions::Frame;

constexpr Frame wgs84 = Frame::Wgs84Geographic;
constexpr Frame xyz = Frame::Wgs84Cartesian;
constexpr Frame local = Frame::LocalGeographic;
constexpr Frame plane = Frame::LocalProjected;

/// As ESRI writes it, without a code or a datum shift.
const char *const esriRd =
    "PROJCS[\"RD_New\",GEOGCS[\"GCS_Amersfoort\",DATUM[\"D_Amersfoort\",SPHEROID[\"Bessel_1841\","
    "6377397.155,299.1528128]],PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]],"
    "PROJECTION[\"Double_Stereographic\"],PARAMETER[\"False_Easting\",155000.0],PARAMETER["
    "\"False_Northing\",463000.0],PARAMETER[\"Central_Meridian\",5.38763888888889],PARAMETER["
    "\"Scale_Factor\",0.9999079],PARAMETER[\"Latitude_Of_Origin\",52.1561605555556],UNIT[\"Meter\","
    "1.0]]";

/// ED50 / UTM zone 31N with one datum shift and with another.
const char *const ed50Shift = "+proj=utm +zone=31 +ellps=intl +towgs84=-87,-98,-121 +type=crs";
const char *const ed50OtherShift = "+proj=utm +zone=31 +ellps=intl +towgs84=-84,-97,-117 +type=crs";
const char *const ed50NoShift = "+proj=utm +zone=31 +ellps=intl +type=crs";

/// A shift that is none of the database's, for a datum of that name.
const char *const amersfoortOtherShift =
    "GEOGCS[\"Amersfoort\",DATUM[\"Amersfoort\",SPHEROID[\"Bessel 1841\",6377397.155,"
    "299.1528128],TOWGS84[100,200,300,0,0,0,0]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\","
    "0.0174532925199433]]";
const char *const wgs84OtherShift =
    "GEOGCS[\"WGS 84\",DATUM[\"WGS_1984\",SPHEROID[\"WGS 84\",6378137,298.257223563],"
    "TOWGS84[100,200,300,0,0,0,0]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\","
    "0.0174532925199433]]";

/// Systems without a name, and the .prj that ESRI's form makes of the first one's.
const char *const namedShift = "+proj=tmerc +lat_0=0 +lon_0=5 +k=0.9999 +x_0=100000 +ellps=bessel "
                               "+towgs84=446.448,-125.157,542.06,0.15,0.247,0.842,-20.489 "
                               "+type=crs";
const char *const otherNamedShift =
    "+proj=tmerc +lat_0=0 +lon_0=5 +k=0.9999 +x_0=100000 +ellps=bessel "
    "+towgs84=346.448,-125.157,542.06,0.15,0.247,0.842,-20.489 +type=crs";
const char *const esriUnknownShift =
    "PROJCS[\"unknown\",GEOGCS[\"GCS_unknown\",DATUM[\"D_Unknown_based_on_Bessel_1841_ellipsoid_"
    "using_towgs84_446_448_-125_157_542_06_0_15_0_247_0_842_-20_489\",SPHEROID[\"Bessel_1841\","
    "6377397.155,299.1528128]],PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]],"
    "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",100000.0],PARAMETER["
    "\"False_Northing\",0.0],PARAMETER[\"Central_Meridian\",5.0],PARAMETER[\"Scale_Factor\","
    "0.9999],PARAMETER[\"Latitude_Of_Origin\",0.0],UNIT[\"Meter\",1.0]]";

/// EPSG:2263 with a height in the same feet.
const char *const feetInThree =
    "PROJCRS[\"NY in three\",BASEGEOGCRS[\"NAD83\",DATUM[\"North American Datum 1983\",ELLIPSOID["
    "\"GRS 1980\",6378137,298.257222101]]],CONVERSION[\"c\",METHOD[\"Lambert Conic Conformal "
    "(2SP)\"],PARAMETER[\"Latitude of false origin\",40.1666666666667,ANGLEUNIT[\"degree\","
    "0.0174532925199433]],PARAMETER[\"Longitude of false origin\",-74,ANGLEUNIT[\"degree\","
    "0.0174532925199433]],PARAMETER[\"Latitude of 1st standard parallel\",41.0333333333333,"
    "ANGLEUNIT[\"degree\",0.0174532925199433]],PARAMETER[\"Latitude of 2nd standard parallel\","
    "40.6666666666667,ANGLEUNIT[\"degree\",0.0174532925199433]],PARAMETER[\"Easting at false "
    "origin\",984250,LENGTHUNIT[\"US survey foot\",0.304800609601219]],PARAMETER[\"Northing at "
    "false origin\",0,LENGTHUNIT[\"US survey foot\",0.304800609601219]]],CS[Cartesian,3],AXIS["
    "\"easting\",east],AXIS[\"northing\",north],AXIS[\"ellipsoidal height\",up],LENGTHUNIT[\"US "
    "survey foot\",0.304800609601219]]";

/// Longitudes and latitudes about another pole.
const char *const turnedPole =
    "GEOGCRS[\"Turned\",BASEGEOGCRS[\"WGS 84\",DATUM[\"World Geodetic System 1984\",ELLIPSOID["
    "\"WGS 84\",6378137,298.257223563]]],DERIVINGCONVERSION[\"Pole rotation\",METHOD[\"Pole "
    "rotation (GRIB convention)\"],PARAMETER[\"Latitude of the southern pole (GRIB convention)\","
    "-39.25,ANGLEUNIT[\"degree\",0.0174532925199433]],PARAMETER[\"Longitude of the southern pole "
    "(GRIB convention)\",18,ANGLEUNIT[\"degree\",0.0174532925199433]],PARAMETER[\"Axis rotation "
    "(GRIB convention)\",0,ANGLEUNIT[\"degree\",0.0174532925199433]]],CS[ellipsoidal,2],AXIS["
    "\"latitude\",north],AXIS[\"longitude\",east],ANGLEUNIT[\"degree\",0.0174532925199433]]";

struct Held
{
    const char *layer;
    Frame frame;
    const char *system;
    bool fits;
    const char *mention; ///< in the mistake or the notes; empty: there are none
};

void PrintTo(const Held &row, std::ostream *out)
{
    *out << std::string(row.layer).substr(0, 40) << " as " << static_cast<int>(row.frame) << " of "
         << std::string(row.system).substr(0, 60);
}

class ReferenceChecks : public testing::TestWithParam<Held>
{
protected:
    ReferenceChecks()
    {
        QString reason;
        m_files = vectorFiles(reason);
        EXPECT_NE(m_files, nullptr) << reason;
    }

    Reference facts(const std::string &text) const
    {
        Reference reference;
        std::string error;
        EXPECT_TRUE(text.empty() || m_files->describe(text, reference, error)) << error;
        return reference;
    }

    ReferenceCheck check(const char *system, bool hasGeoid = false) const
    {
        return {facts(system), QStringLiteral("S"), hasGeoid,
                [this](const std::string &one, const std::string &other) {
                    return m_files->haveSameDatum(one, other);
                }};
    }

    VectorFiles *m_files = nullptr;
};

TEST_P(ReferenceChecks, FitOrSayWhy)
{
    const ReferenceFit fit =
        check(GetParam().system).fit(facts(GetParam().layer), GetParam().frame, true);
    const QString said = fit.mistake + fit.notes.join(QLatin1Char('\n'));
    EXPECT_EQ(fit.mistake.isEmpty(), GetParam().fits) << said;
    EXPECT_TRUE(said.contains(QLatin1String(GetParam().mention))) << said;
    EXPECT_EQ(said.isEmpty(), *GetParam().mention == '\0') << said;
}

// Longitudes of the program are counted from Greenwich, also in a system whose projection is not.
INSTANTIATE_TEST_SUITE_P(
    Meridians, ReferenceChecks,
    testing::Values(
        Held{"EPSG:4312", local, "EPSG:31281", true, ""}, // MGI
        Held{"EPSG:4805", local, "EPSG:31281", false, "-17.6666666667 degrees east of Greenwich"},
        Held{"EPSG:4805", local, "EPSG:31257", false, "degrees east of Greenwich"},
        Held{"EPSG:4289", local, "EPSG:31281", false, "Amersfoort"},
        Held{"EPSG:31281", plane, "EPSG:31281", true, ""},
        Held{"EPSG:4275", local, "EPSG:27561", true, ""}, // NTF
        Held{"EPSG:4807", local, "EPSG:27561", false, "2.33722917 degrees east of Greenwich"},
        Held{"+proj=longlat +ellps=clrk80ign +pm=paris +type=crs", local, "EPSG:27561", false,
             "degrees east of Greenwich"},
        Held{"+proj=longlat +datum=WGS84 +pm=paris +type=crs", wgs84, "EPSG:28992", false,
             "degrees east of Greenwich"},
        Held{"EPSG:4265", local, "EPSG:26591", true, ""}, // Monte Mario
        Held{"EPSG:4806", local, "EPSG:26591", false, "12.4523333333 degrees"},
        Held{"EPSG:4273", local, "EPSG:27392", true, ""}, // NGO 1948
        Held{"EPSG:4817", local, "EPSG:27392", false, "10.7229166667 degrees"}));

INSTANTIATE_TEST_SUITE_P(
    Wgs84, ReferenceChecks,
    testing::Values(Held{"EPSG:4326", wgs84, "EPSG:28992", true, ""},
                    Held{turnedPole, wgs84, "EPSG:28992", false, "no system of the earth"},
                    Held{wgs84OtherShift, wgs84, "EPSG:28992", false, "shift 100,200,300"},
                    Held{"EPSG:4979", wgs84, "EPSG:28992", true, ""},
                    Held{"EPSG:4978", xyz, "EPSG:28992", true, ""},
                    Held{"OGC:CRS84", wgs84, "EPSG:28992", true, ""},
                    Held{"EPSG:4258", wgs84, "EPSG:28992", true, "taken as WGS 84"},
                    Held{"EPSG:4936", xyz, "EPSG:28992", true, "taken as WGS 84"},
                    Held{"EPSG:9057", wgs84, "EPSG:28992", true, "decimetres"}, // WGS 84 (G1762)
                    Held{"EPSG:4674", wgs84, "EPSG:28992", true, "taken as WGS 84"}, // SIRGAS 2000
                    Held{"EPSG:4269", wgs84, "EPSG:28992", false, "North American Datum 1983"},
                    Held{"EPSG:4289", wgs84, "EPSG:28992", false, "Amersfoort"},
                    Held{"EPSG:4322", wgs84, "EPSG:28992", false, "1972"},
                    Held{"EPSG:32632", wgs84, "EPSG:28992", false, "longitude and latitude"},
                    Held{"EPSG:4978", wgs84, "EPSG:28992", false, "geocentric"},
                    Held{"EPSG:4326", xyz, "EPSG:28992", false, "geocentric"},
                    Held{"EPSG:4807", wgs84, "EPSG:28992", false, "Paris"},
                    Held{"EPSG:9518", wgs84, "EPSG:28992", false, "EGM2008 height"},
                    Held{"", wgs84, "EPSG:28992", true, "names no coordinate reference system"}));

INSTANTIATE_TEST_SUITE_P(
    Local, ReferenceChecks,
    testing::Values(
        Held{"EPSG:28992", plane, "EPSG:28992", true, ""},
        Held{esriRd, plane, "EPSG:28992", true, ""}, Held{"EPSG:28992", plane, esriRd, true, ""},
        Held{"EPSG:4289", local, "EPSG:28992", true, ""},
        Held{"EPSG:4326", local, "EPSG:28992", false, "Amersfoort"},
        Held{"EPSG:28991", plane, "EPSG:28992", false, "x_0 is 0 there and 155000 here"},
        Held{"EPSG:32631", plane, "EPSG:32632", false, "lon_0 is 3 there and 9 here"},
        Held{"EPSG:25832", plane, "EPSG:32632", true, "some decimetres"},
        Held{"EPSG:23032", plane, "EPSG:32632", false, "European Datum 1950"},
        Held{"EPSG:31467", plane, "EPSG:31467", true, ""},
        Held{"EPSG:5683", plane, "EPSG:31467", false, "Deutsches Hauptdreiecksnetz"}, // DB_REF
        Held{"EPSG:2263", plane, "EPSG:2263", true, ""},
        Held{"EPSG:32118", plane, "EPSG:2263", false, "counts in the unit"}, // the same in metres
        Held{"EPSG:5514", plane, "EPSG:5514", true, ""},
        Held{"EPSG:5513", plane, "EPSG:5513", false, "not east and north"},
        Held{"EPSG:2193", plane, "EPSG:2193", true, ""}, // names the northing first
        Held{"EPSG:3031", plane, "EPSG:3031", true, ""}, // both axes to the north
        Held{"EPSG:7415", plane, "EPSG:28992", false, "NAP height"},
        Held{ed50NoShift, plane, ed50Shift, true, "does not name its datum"},
        Held{ed50Shift, plane, ed50NoShift, true, "does not name its datum"},
        Held{ed50Shift, plane, ed50Shift, true, ""},
        Held{ed50OtherShift, plane, ed50Shift, false, "states the datum shift -84,-97,-117"},
        Held{"EPSG:23031", plane, ed50NoShift, true, "the system does not name its datum"},
        Held{"EPSG:32631", plane, ed50NoShift, false, "WGS 84"},
        Held{amersfoortOtherShift, local, namedShift, false, "datum shift 100,200,300"},
        Held{esriUnknownShift, plane, namedShift, true, "does not name its datum"},
        Held{esriUnknownShift, plane, otherNamedShift, false, "346.448"},
        Held{"EPSG:32631+5861", plane, "EPSG:32631", false, "downwards"},
        Held{"LOCAL_CS[\"site\",UNIT[\"metre\",1]]", plane, "EPSG:28992", false,
             "no system of the earth"}));

TEST_F(ReferenceChecks, TakeHeightsOfAVerticalSystemOnlyWithAGeoid)
{
    const Reference layer = facts("EPSG:7415");
    EXPECT_NE(check("EPSG:28992", false).fit(layer, plane, true).mistake, "");
    EXPECT_EQ(check("EPSG:28992", false).fit(layer, plane, false).mistake, "");
    const ReferenceFit fit = check("EPSG:28992", true).fit(layer, plane, true);
    EXPECT_EQ(fit.mistake, "");
    EXPECT_TRUE(fit.warnings.join(QString()).contains(QLatin1String("NAP height")));
}

TEST_F(ReferenceChecks, KnowTheAxisOfHeights)
{
    struct Row
    {
        const char *text;
        bool hasUnit;
        double metres; ///< of one unit
        bool isDown;
    };
    const Row rows[] = {
        {"EPSG:2263", false, 1.0, false},
        {feetInThree, true, 1200.0 / 3937.0, false},
        {"EPSG:4979", true, 1.0, false},
        {"EPSG:7415", true, 1.0, false},
        {"EPSG:2263+6360", true, 1200.0 / 3937.0, false}, // NAVD88 height (ftUS)
        {"EPSG:2263+8228", true, 0.3048, false},          // NAVD88 height (ft)
        {"EPSG:32631+5861", true, 1.0, true},             // LAT depth
        {"EPSG:32631+5831", true, 1.0, true},             // Instantaneous Water Level depth
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        const Reference reference = facts(row.text);
        EXPECT_EQ(reference.hasHeightUnit, row.hasUnit);
        EXPECT_NEAR(reference.heightFactor, row.metres, 1e-12);
        EXPECT_EQ(reference.countsDown, row.isDown);
    }
}

TEST_F(ReferenceChecks, NeverTakeDepthsAsHeights)
{
    const ReferenceFit fit = check("EPSG:32631", true).fit(facts("EPSG:32631+5861"), plane, true);
    EXPECT_TRUE(fit.mistake.contains(QLatin1String("downwards"))) << fit.mistake;
}

struct Derived
{
    const char *layer;
    const char *system;
    int frame;           ///< -1 for none
    const char *mistake; ///< a part of it
};

TEST_F(ReferenceChecks, FindTheOneFrame)
{
    const Derived rows[] = {
        {"EPSG:4326", "EPSG:28992", static_cast<int>(wgs84), ""},
        {"EPSG:4289", "EPSG:28992", static_cast<int>(local), ""},
        {"EPSG:28992", "EPSG:28992", static_cast<int>(plane), ""},
        {"EPSG:4978", "EPSG:28992", static_cast<int>(xyz), ""},
        {"EPSG:4326", "EPSG:32631", static_cast<int>(wgs84), ""},
        {"EPSG:4258", "EPSG:25832", static_cast<int>(local), ""},
        {"EPSG:4258", "EPSG:28992", static_cast<int>(wgs84), ""},
        {"EPSG:4258", "EPSG:32632", static_cast<int>(wgs84), ""},
        {"EPSG:4258", "EPSG:31985", -1, "wgs84-llh or local-llh"}, // SIRGAS 2000
        {"", "EPSG:28992", -1, "--from says what"},
        {"EPSG:4326+5709", "EPSG:28992", -1, "NAP height"},
        {"EPSG:32631", "EPSG:28992", -1, "Amersfoort"},
    };
    for (const Derived &row : rows) {
        SCOPED_TRACE(std::string(row.layer) + " of " + row.system);
        QString mistake;
        const auto frame = check(row.system).onlyFrame(facts(row.layer), true, mistake);
        EXPECT_EQ(frame ? static_cast<int>(*frame) : -1, row.frame) << mistake;
        EXPECT_TRUE(mistake.contains(QLatin1String(row.mistake))) << mistake;
    }
}

} // namespace
} // namespace KelStd
