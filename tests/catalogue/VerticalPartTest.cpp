// The heights of compound systems.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

namespace KelStd::catalogue {
namespace {

class VerticalPart : public test::CatalogueTest
{};

/// UTM zone 32 of WGS 84 with heights.
QByteArray compound(const QByteArray &vertical)
{
    return R"(COMPD_CS["c",PROJCS["WGS 84 / UTM zone 32N",GEOGCS["WGS 84",DATUM["WGS_1984",)"
           R"(SPHEROID["WGS 84",6378137,298.257223563]],PRIMEM["Greenwich",0],)"
           R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
           R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",9],)"
           R"(PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],)"
           R"(PARAMETER["false_northing",0],UNIT["metre",1]],)"
           + vertical + "]";
}

/// As ESRI's programs write it: no compound system around the two.
QByteArray esri(const QByteArray &vertical)
{
    return R"(PROJCS["WGS_1984_UTM_Zone_32N",GEOGCS["GCS_WGS_1984",DATUM["D_WGS_1984",)"
           R"(SPHEROID["WGS_1984",6378137.0,298.257223563]],PRIMEM["Greenwich",0.0],)"
           R"(UNIT["Degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
           R"(PARAMETER["False_Easting",500000.0],PARAMETER["False_Northing",0.0],)"
           R"(PARAMETER["Central_Meridian",9.0],PARAMETER["Scale_Factor",0.9996],)"
           R"(PARAMETER["Latitude_Of_Origin",0.0],UNIT["Meter",1.0]],)"
           R"(VERTCS["EGM96_Geoid",VDATUM["EGM96_Geoid"],)"
           + vertical + "]";
}

QByteArray gdal(const char *unit, const char *direction)
{
    return compound(QByteArray(R"(VERT_CS["EGM96 height",VERT_DATUM["EGM96 geoid",2005],)") + unit
                    + R"(,AXIS["H",)" + direction + "]]");
}

// `echo 47.5 9.4 500 | cs2cs EPSG:4979 "..."` has 453.677 of the first, its negative of depths, and
// 1488.440 feet.
TEST_F(VerticalPart, IsAGeoidOnlyWhereHeightsCountUpwardsFromIt)
{
    const char *const metre = R"(UNIT["metre",1])";
    const char *const foot = R"(UNIT["US survey foot",0.304800609601219])";
    const char *const esriFoot = R"(UNIT["Foot_US",0.3048006096012192])";
    const char *const inFeet = "Heights are in metres, those of \"EGM96 height\" in the unit \"US "
                               "survey foot\" of 0.304800609601219 m.";
    const char *const depths =
        "Heights are ellipsoidal, not those of \"EGM96 height\", which count downwards.";
    const auto parameters = [](const char *shift, const char *direction, const char *unit) {
        return QByteArray(R"(PARAMETER["Vertical_Shift",)") + shift + R"(],PARAMETER["Direction",)"
               + direction + "]," + unit;
    };
    const struct
    {
        QByteArray source;
        const char *warning; ///< null for none
        bool hasModel;
    } rows[] = {
        {gdal(metre, "UP"), nullptr, true},
        {gdal(metre, "DOWN"), depths, false},
        {gdal(foot, "UP"), inFeet, true},
        {gdal(foot, "DOWN"), depths, false},
        {esri(parameters("0.0", "1.0", R"(UNIT["Meter",1.0])")), nullptr, true},
        {esri(parameters("0.0", "1.0", esriFoot)), inFeet, true},
        {esri(parameters("0.0", "-1.0", R"(UNIT["Meter",1.0])")), depths, false},
        {esri(parameters("5.0", "1.0", esriFoot)),
         "Heights are ellipsoidal, not those of \"EGM96 height\", which are shifted by 5 US survey "
         "foot.",
         false},
        {esri(parameters("5.0", "-1.0", esriFoot)), depths, false},
    };
    for (const auto &row : rows) {
        const ImportedSystem imported = import(row.source);
        ASSERT_TRUE(imported.system.has_value());
        const QString model = row.hasModel ? QStringLiteral("egm96_15.gtx") : QString();
        EXPECT_EQ(imported.system->geoidModel.modelFileName, model) << row.source.toStdString();
        EXPECT_EQ(imported.report.geoidModel, model);
        QStringList heights;
        for (const QString &warning : imported.report.warnings) {
            if (warning.startsWith(QLatin1String("Heights are")))
                heights += warning;
        }
        EXPECT_EQ(heights, row.warning == nullptr ? QStringList()
                                                  : QStringList(QString::fromUtf8(row.warning)))
            << row.source.toStdString();
    }
}

TEST_F(VerticalPart, HasNoParametersThatProjPassesOver)
{
    const CatalogueFailure failure =
        catalogue()
            .importSystem(esri(R"(PARAMETER["Vertikal_Shift",5.0],UNIT["Meter",1.0])"))
            .refusal;
    EXPECT_EQ(failure.kind, CatalogueFailureKind::NotUnderstood);
    EXPECT_EQ(failure.text, QStringLiteral("PROJ would pass over the parameter \"Vertikal_Shift\" "
                                           "of \"EGM96_Geoid\""));
    // Nothing but heights stands beside a projected system.
    const QByteArray twice = esri(R"(UNIT["Meter",1.0])") + R"(,VERTCS["x",VDATUM["x"]])";
    EXPECT_EQ(refusal(twice), QStringLiteral("not-understood"));
}

} // namespace
} // namespace KelStd::catalogue
