// What a source may be, and what is refused of it.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <algorithm>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

class SystemSource : public CatalogueTest
{
protected:
    /// The code that a source is identified as.
    QString codeOf(const QByteArray &source) { return import(source).report.code; }

    bool warns(const QByteArray &source, const char *words)
    {
        const QStringList warnings = import(source).report.warnings;
        return std::any_of(warnings.cbegin(), warnings.cend(), [words](const QString &warning) {
            return warning.contains(QLatin1String(words));
        });
    }
};

/// As ESRI's programs write it.
const QByteArray esriRd =
    R"(PROJCS["RD_New",GEOGCS["GCS_Amersfoort",DATUM["D_Amersfoort",SPHEROID["Bessel_1841",)"
    R"(6377397.155,299.1528128]],PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]],)"
    R"(PROJECTION["Double_Stereographic"],PARAMETER["False_Easting",155000.0],)"
    R"(PARAMETER["False_Northing",463000.0],PARAMETER["Central_Meridian",5.38763888888889],)"
    R"(PARAMETER["Scale_Factor",0.9999079],PARAMETER["Latitude_Of_Origin",52.1561605555556],)"
    R"(UNIT["Meter",1.0]])";

/// The datum's own shift, with the numbers of EPSG:4833 by the position-vector method.
QByteArray rdString(const char *rotations)
{
    return QByteArray("+proj=sterea +lat_0=52.1561605555556 +lon_0=5.38763888888889 +k=0.9999079 "
                      "+x_0=155000 +y_0=463000 +ellps=bessel +towgs84=565.4171,50.3319,465.5524,")
           + rotations + ",4.0725 +units=m";
}

constexpr const char *rotations = "-0.398957388243134,0.343987817378283,-1.87740163998045";
constexpr const char *negated = "0.398957388243134,-0.343987817378283,1.87740163998045";

TEST_F(SystemSource, MayBeACodeAUrnOrAName)
{
    for (const char *source :
         {"EPSG:28992", "epsg:28992", " EPSG:28992\n", "28992", "urn:ogc:def:crs:EPSG::28992",
          "Amersfoort / RD New", "amersfoort / rd new"})
        EXPECT_EQ(codeOf(source), QStringLiteral("EPSG:28992")) << source;
    EXPECT_EQ(codeOf("IGNF:LAMB93"), QStringLiteral("IGNF:LAMB93"));
    EXPECT_EQ(codeOf("ESRI:102003"), QStringLiteral("ESRI:102003"));
}

TEST_F(SystemSource, MayBeAnEsriText)
{
    EXPECT_EQ(codeOf(esriRd), QStringLiteral("EPSG:28992"));
    EXPECT_EQ(import(esriRd).report.shift.code, QStringLiteral("EPSG:4833"));
    EXPECT_EQ(import(esriRd).report.area.west, 3.2);
}

TEST_F(SystemSource, MayBeginWithAByteOrderMarkOrBeUtf16)
{
    EXPECT_EQ(codeOf("\xef\xbb\xbf" + esriRd), QStringLiteral("EPSG:28992"));
    const QString text = QString::fromLatin1(esriRd);
    QByteArray little("\xff\xfe", 2);
    QByteArray big("\xfe\xff", 2);
    for (const QChar c : text) {
        little += QByteArray(1, static_cast<char>(c.cell())) + QByteArray(1, '\0');
        big += QByteArray(1, '\0') + QByteArray(1, static_cast<char>(c.cell()));
    }
    EXPECT_EQ(codeOf(little), QStringLiteral("EPSG:28992"));
    EXPECT_EQ(codeOf(big), QStringLiteral("EPSG:28992"));
}

TEST_F(SystemSource, KeepsATextsOwnShift)
{
    const ImportedSystem own = import(rdString(rotations));
    EXPECT_EQ(own.system->ellipsoidTransform.x_translate.value.toDouble(), -565.4171);
    EXPECT_EQ(own.report.shift.code, QStringLiteral("EPSG:4833"));
    const ImportedSystem wrong = import(rdString(negated));
    // Taken as it stands, and said.
    EXPECT_EQ(wrong.system->ellipsoidTransform.x_rotate.value.toDouble(), 0.398957388243134);
    EXPECT_TRUE(warns(rdString(negated), "rotations negated"));
    EXPECT_FALSE(warns(rdString(rotations), "rotations negated"));
    EXPECT_TRUE(warns(rdString("0,0,0"), "differs from the best"));
}

TEST_F(SystemSource, IsNotTakenForWhatItClaimsToBe)
{
    // The code of RD New on the numbers of another place.
    QByteArray lying = esriRd;
    lying.replace("155000.0", "0.0");
    lying.chop(1);
    lying += R"(,AUTHORITY["EPSG","28992"]])";
    const ImportedSystem imported = import(lying);
    EXPECT_NE(imported.report.code, QStringLiteral("EPSG:28992"));
    EXPECT_EQ(imported.system->projection.param.value(QStringLiteral("FalseEast")).value.toDouble(),
              0.0);
}

// EPSG Dataset: unit 9003 is 1200/3937 m, 9002 is 0.3048 m, 9102 is pi/180 rad.
TEST_F(SystemSource, HasUnitsOfTheirSize)
{
    struct Row
    {
        const char *unit;
        const char *written;
        const char *reason; ///< null: taken
    };
    const QByteArray plane = R"(UNIT["Meter",1.0])";
    const QByteArray angle = R"(UNIT["Degree",0.0174532925199433])";
    for (const Row &row : {
             Row{plane, R"(UNIT["Meter",0.0])", "its unit \"metre\" has the size 0, which is none"},
             Row{plane, R"(UNIT["Stride",0.0])",
                 "its unit \"Stride\" has the size 0, which is none"},
             Row{plane, R"(UNIT["Rod",-5.0])", "its unit \"Rod\" has the size -5, which is none"},
             Row{plane, R"(UNIT["Meter",2.0])",
                 "its unit \"metre\" has the size 2, but is 1; one of the two is wrong"},
             Row{plane, R"(UNIT["Foot_US",0.3048])",
                 "its unit \"US survey foot\" has the size 0.3048, but is 0.304800609601219; one "
                 "of the two is wrong"},
             Row{plane, R"(UNIT["Foot",0.3048006096012192])",
                 "its unit \"foot\" has the size 0.304800609601219, but is 0.3048; one of the two "
                 "is wrong"},
             Row{plane, R"(UNIT["Foot_US",0.304800609601])", nullptr},
             Row{plane, R"(UNIT["Foot",0.3048])", nullptr},
             Row{plane, R"(UNIT["Rod",5.0])", nullptr},
             Row{angle, R"(UNIT["Degree",0.0])",
                 "its unit \"Degree\" has the size 0, which is none"},
             Row{angle, R"(UNIT["Degree",0.017])",
                 "its unit \"Degree\" has the size 0.017, but is 0.0174532925199433; one of the "
                 "two is wrong"},
             Row{angle, R"(UNIT["Degree",0.01745329252])", nullptr},
             Row{angle, R"(UNIT["Degree",0.0174532925])", nullptr}, // ten digits
             Row{angle, R"(UNIT["Degree",0.01745329])",
                 "its unit \"Degree\" has the size 0.01745329, but is 0.0174532925199433; one of "
                 "the two is wrong"},
         }) {
        const QByteArray source = QByteArray(esriRd).replace(row.unit, row.written);
        ASSERT_NE(source, esriRd) << row.written;
        const ImportedSystem imported = catalogue().importSystem(source);
        if (row.reason == nullptr) {
            EXPECT_TRUE(imported.system.has_value())
                << row.written << ": " << imported.refusal.text.toStdString();
            continue;
        }
        EXPECT_FALSE(imported.system.has_value()) << row.written;
        EXPECT_EQ(imported.refusal.kind, CatalogueFailureKind::NotUnderstood) << row.written;
        EXPECT_EQ(imported.refusal.text, QLatin1String(row.reason));
    }
}

// EPSG Dataset: 9096 (yard), 9097 (chain), 9098 (link), 9003, 9033 and 9034 (of the US survey);
// PROJ's table of units has "us-ft" and "us-yd".
TEST_F(SystemSource, KnowsUnitsByTheirShortAndOtherNames)
{
    const struct
    {
        const char *name;
        double size;  ///< [m]
        double wrong; ///< [m], that of the other foot
    } rows[] = {
        {"ftUS", 0.304800609601219, 0.3048},        {"us-ft", 0.304800609601219, 0.3048},
        {"survey_foot", 0.304800609601219, 0.3048}, {"US Survey Feet", 0.304800609601219, 0.3048},
        {"ft", 0.3048, 0.304800609601219},          {"Yard", 0.9144, 0.914401828803658},
        {"us-yd", 0.914401828803658, 0.9144},       {"link", 0.201168, 0.201168402336805},
        {"chain", 20.1168, 20.1168402336805},       {"Chain_US", 20.1168402336805, 20.1168},
        {"Link_US", 0.201168402336805, 0.201168},   {"km", 1000.0, 100.0},
    };
    for (const auto &row : rows) {
        const auto imported = [&](double size) {
            const QByteArray unit =
                QByteArray("UNIT[\"") + row.name + "\"," + QByteArray::number(size, 'g', 15) + "]";
            // A false easting that is one in kilometres, too.
            return catalogue().importSystem(QByteArray(esriRd)
                                                .replace("155000.0", "155.0")
                                                .replace("463000.0", "463.0")
                                                .replace(R"(UNIT["Meter",1.0])", unit));
        };
        const ImportedSystem good = imported(row.size);
        EXPECT_TRUE(good.system.has_value()) << row.name << ": " << good.refusal.text.toStdString();
        const ImportedSystem wrong = imported(row.wrong);
        EXPECT_FALSE(wrong.system.has_value()) << row.name;
        EXPECT_EQ(wrong.refusal.kind, CatalogueFailureKind::NotUnderstood) << row.name;
        EXPECT_TRUE(wrong.refusal.text.endsWith(QLatin1String("one of the two is wrong")))
            << wrong.refusal.text.toStdString();
    }
}

// What a degree with ten digits is off would put a central meridian of 147 degrees 13 mm aside.
TEST_F(SystemSource, ADegreeWithFewerDigitsIsADegree)
{
    const QByteArray east = QByteArray(esriRd).replace("5.38763888888889", "147.0");
    for (const char *size : {"0.0174532925199433", "0.01745329252", "0.0174532925"}) {
        const ImportedSystem imported =
            catalogue().importSystem(QByteArray(east).replace("0.0174532925199433", size));
        ASSERT_TRUE(imported.system.has_value()) << imported.refusal.text.toStdString();
        const auto &values = imported.system->projection.param;
        EXPECT_EQ(values.value(QStringLiteral("lon_0")).value.toDouble(), 147.0) << size;
        EXPECT_EQ(values.value(QStringLiteral("lat_0")).value.toDouble(), 52.1561605555556) << size;
    }
}

TEST_F(SystemSource, TellsTheSystemsThatANameMayMean)
{
    const CatalogueFailure failure = catalogue().importSystem("MGA zone 55").refusal;
    EXPECT_EQ(failure.kind, CatalogueFailureKind::NotUnderstood);
    EXPECT_TRUE(failure.text.contains(QLatin1String("EPSG:28355")));
    EXPECT_TRUE(failure.text.contains(QLatin1String("EPSG:7855")));
}

TEST_F(SystemSource, RefusesPROJStringsThatAreMoreThanASystem)
{
    for (const char *source : {
             "+proj=pipeline +step +proj=utm +zone=31",
             "proj=pipeline step proj=utm zone=31",
             "+step +proj=utm +zone=31",
             "+init=epsg:28992",
             "+init=/etc/passwd:x",
             "+proj=utm +zone=31 +ellps=GRS80 +nadgrids=@foo.gsb",
             "+proj=utm +zone=31 +ellps=GRS80 +nadgrids=/etc/passwd",
             "+proj=utm +zone=31 +ellps=GRS80 +geoidgrids=foo.gtx",
             "+proj=utm +zone=31 +ellps=GRS80 +towgs84=1,2,3 +towgs84=4,5,6",
             "+proj=tmerc +lat_O=52 +lon_0=9 +ellps=bessel +towgs84=0,0,0",
             "+proj=nosuch +ellps=GRS80",
             "+proj=",
             "+",
             "+title=x",
         })
        EXPECT_EQ(refusal(source), QStringLiteral("not-understood")) << source;
}

TEST_F(SystemSource, DoesNotInventADatum)
{
    EXPECT_EQ(refusal("+proj=utm +zone=31 +ellps=bessel"), QStringLiteral("no-shift"));
    // PROJ would take WGS 84.
    EXPECT_EQ(refusal("+proj=tmerc +lon_0=9 +x_0=3500000"), QStringLiteral("not-understood"));
    EXPECT_EQ(refusal("+proj=longlat +datum=WGS84"), QStringLiteral("not-projected"));
    EXPECT_EQ(import("+proj=utm +zone=31 +datum=WGS84").report.shift.kind, ShiftKind::None);
}

TEST_F(SystemSource, RefusesWhatIsNoText)
{
    const QByteArray sources[] = {
        "",
        "  \n\t ",
        QByteArray(1, '\0'),
        QByteArray("EPSG:28992\0EPSG:4326", 21),
        QByteArray("\xff\xfe"
                   "E\0P\0S",
                   7),
        "\xef\xbb\xbf",
        QByteArray(Catalogue::maxSourceBytes + 1, 'A'),
        QByteArray(5000, 'A'),
        "EPSG:",
        ":28992",
        "EPSG:28992+",
        "EPSG:28992+EPSG:28992",
        "EPSG:-1",
        "EPSG:99999999999999999999",
        "no such system at all",
        "a\nb",
    };
    for (const QByteArray &source : sources)
        EXPECT_EQ(refusal(source), QStringLiteral("not-understood"))
            << source.left(60).toStdString();
}

TEST_F(SystemSource, RefusesTextsThatAreCutShort)
{
    // Never anything but a refusal or the whole; and never a crash.
    for (int length = 1; length < esriRd.size(); length += 7) {
        const QString word = refusal(esriRd.left(length));
        EXPECT_NE(word, QStringLiteral("imported")) << length;
    }
}

TEST_F(SystemSource, RefusesWhatStandsBehindADefinition)
{
    EXPECT_EQ(refusal(esriRd + "\r\n \t\n"), QStringLiteral("imported"));
    for (const QByteArray &rest : {QByteArray("]"), QByteArray("garbage"), QByteArray(",\"x\""),
                                   QByteArray("\n") + esriRd, QByteArray("[")}) {
        const CatalogueFailure failure = catalogue().importSystem(esriRd + rest).refusal;
        EXPECT_EQ(failure.kind, CatalogueFailureKind::NotUnderstood) << rest.toStdString();
        EXPECT_TRUE(failure.text.startsWith(
            QLatin1String("there is something behind the end of the definition: \"")))
            << failure.text.toStdString();
    }
}

TEST_F(SystemSource, RefusesTextsThatAreDeepOrLong)
{
    QByteArray deepWkt;
    for (int depth = 0; depth < 5000; ++depth)
        deepWkt += "COMPD_CS[\"x\",";
    EXPECT_EQ(refusal(deepWkt), QStringLiteral("not-understood"));
    EXPECT_EQ(refusal("{" + QByteArray(100'000, '[')), QStringLiteral("not-understood"));
    QByteArray deepJson;
    for (int depth = 0; depth < 5000; ++depth)
        deepJson += "{\"type\":\"BoundCRS\",\"source_crs\":";
    EXPECT_EQ(refusal(deepJson), QStringLiteral("not-understood"));
    QByteArray longName = esriRd;
    longName.replace("RD_New", QByteArray(900'000, 'x'));
    EXPECT_NE(refusal(longName), QString());
    QByteArray manyAxes = "PROJCS[\"x\"";
    for (int count = 0; count < 20'000; ++count)
        manyAxes += ",AXIS[\"x\",EAST]";
    EXPECT_EQ(refusal(manyAxes + "]"), QStringLiteral("not-understood"));
    EXPECT_EQ(refusal("+proj=utm +zone=31 " + QByteArray(100'000, 'x')),
              QStringLiteral("not-understood"));
}

TEST_F(SystemSource, RefusesTextsWithImpossibleNumbers)
{
    for (const char *number : {"0", "-1", "1e400", "nan", "abc", "1e-300", "1e300"}) {
        QByteArray text = esriRd;
        text.replace("6377397.155", number);
        EXPECT_NE(refusal(text), QStringLiteral("imported")) << number;
    }
}

// The bounds are those of docs/documents.md, beyond which a document is refused.
TEST_F(SystemSource, RefusesWhatADocumentWouldBeRefusedFor)
{
    const auto text = [](const char *projection, const char *shift) {
        return QByteArray("+proj=tmerc ") + projection + " +ellps=bessel +towgs84=" + shift;
    };
    EXPECT_EQ(refusal(text("+lon_0=9 +x_0=500000", "1,2,3")), QStringLiteral("imported"));
    EXPECT_EQ(refusal(text("+lon_0=9 +k=0.9", "1,2,3,0,0,600,0")), QStringLiteral("imported"));
    const struct
    {
        QByteArray source;
        const char *doubt;
    } rows[] = {
        {text("+lon_0=369 +x_0=500000", "1,2,3"), "[lon_0]: \"369\" cannot be meant"},
        {text("+lon_0=9 +k=0.5", "1,2,3"), "[k_0]: \"0.5\" cannot be meant"},
        {text("+lon_0=9", "1,2,3,0,0,700,0"), "z_rotate: \"700\" cannot be meant"},
        {text("+lon_0=9", "1,20000,3"), "y_translate: \"-20000\" cannot be meant"},
    };
    for (const auto &row : rows) {
        const CatalogueFailure failure = catalogue().importSystem(row.source).refusal;
        EXPECT_EQ(failure.kind, CatalogueFailureKind::NotUnderstood) << row.doubt;
        EXPECT_TRUE(failure.text.startsWith(
            QLatin1String("a document of the system would not be understood: ")))
            << failure.text.toStdString();
        EXPECT_TRUE(failure.text.contains(QLatin1String(row.doubt))) << failure.text.toStdString();
    }
}

// ESRI's Lo systems turn their axes about by a scale factor of -1; EPSG:2048 counts to the west and
// south by its axes.
TEST_F(SystemSource, TellsWhatANegativeScaleFactorIs)
{
    const CatalogueFailure failure = catalogue().importSystem("ESRI:102482").refusal;
    EXPECT_EQ(failure.kind, CatalogueFailureKind::NoProjection);
    EXPECT_TRUE(failure.text.startsWith(QLatin1String("its scale factor is -1, ")))
        << failure.text.toStdString();
    EXPECT_EQ(refusal("EPSG:2048"), QStringLiteral("imported"));
}

TEST_F(SystemSource, DoesNotMixADatumWithAnotherEllipsoid)
{
    // The datum's name leads to the database's shift, which is one of Bessel's ellipsoid.
    QByteArray text = esriRd;
    text.replace("6377397.155,299.1528128", "6378388.0,297.0");
    EXPECT_NE(refusal(text), QStringLiteral("imported"));
    text = esriRd;
    text.replace("52.1561605555556", "92.1561605555556");
    EXPECT_EQ(refusal(text), QStringLiteral("not-understood"));
}

TEST_F(SystemSource, RefusesAGridOfTheTextsOwnChoice)
{
    const QByteArray bound =
        R"(BOUNDCRS[SOURCECRS[)" + esriRd
        + R"(],TARGETCRS[GEOGCRS["WGS 84",DATUM["World Geodetic System 1984",)"
          R"(ELLIPSOID["WGS 84",6378137,298.257223563]],CS[ellipsoidal,2],AXIS["latitude",north],)"
          R"(AXIS["longitude",east],ANGLEUNIT["degree",0.0174532925199433],ID["EPSG",4326]]],)"
          R"(ABRIDGEDTRANSFORMATION["x",METHOD["NTv2",ID["EPSG",9615]],)"
          R"(PARAMETERFILE["Latitude and longitude difference file","/etc/passwd"]]])";
    EXPECT_EQ(refusal(bound), QStringLiteral("not-understood"));
}

} // namespace
} // namespace KelStd::catalogue
