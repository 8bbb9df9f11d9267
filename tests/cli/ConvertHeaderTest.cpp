// A header line says which column is which; it can never be overlooked or misunderstood.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

struct HeaderForm
{
    const char *testName;
    const char *from;
    const char *input; ///< a header and a line: "A" at 5.25, 52.5, 40 or at N 463000, E 155000, 40
};

void PrintTo(const HeaderForm &row, std::ostream *out)
{
    *out << row.testName;
}

class HeaderForms : public testing::TestWithParam<HeaderForm>
{};

TEST_P(HeaderForms, NameTheColumns)
{
    const QString from = QString::fromLatin1(GetParam().from);
    const auto result =
        ProgramRun().convert(system, GetParam().input, {QStringLiteral("--from"), from});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto row = csvRows(result.out).value(0);
    const bool isPlane = from == QLatin1String("local-neh");
    const QString frame = from.section(QLatin1Char('-'), 0, 0);
    EXPECT_EQ(row.value(isPlane ? QStringLiteral("local_northing_m")
                                : frame + QStringLiteral("_longitude_deg")),
              isPlane ? QStringLiteral("463000.00000") : QStringLiteral("5.25000000000"));
    EXPECT_EQ(row.value(isPlane ? QStringLiteral("local_easting_m")
                                : frame + QStringLiteral("_latitude_deg")),
              isPlane ? QStringLiteral("155000.00000") : QStringLiteral("52.50000000000"));
    EXPECT_EQ(row.value(frame == QLatin1String("wgs84") ? QStringLiteral("wgs84_height_m")
                        : isPlane                       ? QStringLiteral("local_height_m")
                                  : QStringLiteral("local_ellipsoidal_height_m")),
              QStringLiteral("40.00000"));
}

INSTANTIATE_TEST_SUITE_P(
    WordsAndOrders, HeaderForms,
    testing::Values(
        HeaderForm{"FullWords", "wgs84-llh", "point,longitude,latitude,height\nA,5.25,52.5,40\n"},
        HeaderForm{"LatitudeFirst", "wgs84-llh", "lat,lon,h\n52.5,5.25,40\n"},
        HeaderForm{"NameLast", "wgs84-llh", "h,lat,lon,point\n40,52.5,5.25,A\n"},
        HeaderForm{"Capitals", "wgs84-llh", "POINT,LONGITUDE,LATITUDE,HEIGHT\nA,5.25,52.5,40\n"},
        HeaderForm{"UnitsInBrackets", "wgs84-llh",
                   "Name;Latitude [deg];Longitude [deg];Height (m)\nA;52.5;5.25;40\n"},
        HeaderForm{"UnitsInBracketsAfterBlanks", "wgs84-llh",
                   "Latitude [deg]  Longitude [deg]  Height (m)\n52.5 5.25 40\n"},
        HeaderForm{"UnitsInNames", "wgs84-llh", "lat_deg,lon_deg,height_m\n52.5,5.25,40\n"},
        HeaderForm{"OtherColumns", "wgs84-llh",
                   "id,code,lat,lon,h,remark\nA,tree,52.5,5.25,40,\"old and tall\"\n"},
        HeaderForm{"Blanks", "wgs84-llh", "name lat lon h\nA 52.5 5.25 40\n"},
        HeaderForm{"AfterCommentsAndBom", "wgs84-llh",
                   "\xEF\xBB\xBF# today\n\nlat,lon,h\r\n52.5,5.25,40\r\n"},
        HeaderForm{"LocalGeographic", "local-llh", "lat,lon,h\n52.5,5.25,40\n"},
        HeaderForm{"EastingFirst", "local-neh",
                   "point,easting,northing,height\nA,155000,463000,40\n"},
        HeaderForm{"NorthingFirst", "local-neh", "n,e,h\n463000,155000,40\n"},
        HeaderForm{"EastNorth", "local-neh", "East North Height\n155000 463000 40\n"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertHeader, CartesianColumnsAreTakenByName)
{
    const auto result =
        ProgramRun().convert(system, "Z,Y,X\n5015080.603,396765.257,3899209.111\n",
                             {QStringLiteral("--from"), QStringLiteral("wgs84-xyz")});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto row = csvRows(result.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("wgs84_x_m")), QStringLiteral("3899209.11100"));
    EXPECT_EQ(row.value(QStringLiteral("wgs84_y_m")), QStringLiteral("396765.25700"));
    EXPECT_EQ(row.value(QStringLiteral("wgs84_z_m")), QStringLiteral("5015080.60300"));
}

TEST(ConvertHeader, TheNameColumnIsFoundWhereverItStands)
{
    const auto result = ProgramRun().convert(system, "lat,lon,h,point\n52.5,5.25,40,A\n");
    EXPECT_EQ(csvRows(result.out).value(0).value(QStringLiteral("point")), QStringLiteral("A"));
}

TEST(ConvertHeader, WithoutANameColumnThereAreNoNames)
{
    const auto result = ProgramRun().convert(system, "code,lat,lon,h\ntree,52.5,5.25,40\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(csvRows(result.out).value(0).value(QStringLiteral("point")), QString());
}

struct RefusedHeader
{
    const char *testName;
    const char *from;
    const char *header;
    const char *reason; ///< a piece of the message
};

void PrintTo(const RefusedHeader &row, std::ostream *out)
{
    *out << row.testName;
}

class RefusedHeaders : public testing::TestWithParam<RefusedHeader>
{};

TEST_P(RefusedHeaders, EndTheRunBeforeAnythingIsConverted)
{
    const auto result =
        ProgramRun().convert(system, QByteArray(GetParam().header) + "\nA,5.25,52.5,40\n",
                             {QStringLiteral("--from"), QString::fromLatin1(GetParam().from)});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    ASSERT_EQ(result.errLines().size(), 1) << result.err;
    EXPECT_TRUE(result.err.startsWith(QLatin1String("kelstd: <stdin>:1: "))) << result.err;
    EXPECT_THAT(result.err, Mentions(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedHeaders,
    testing::Values(
        RefusedHeader{"UnknownWords", "wgs84-llh", "Punt,Lengte,Breedte,Hoogte",
                      "names no longitude"},
        RefusedHeader{"ListsWhatIsAccepted", "wgs84-llh", "a,b,c,d",
                      "latitude (latitude, lat, wgs84_latitude)"},
        RefusedHeader{"OneMissing", "wgs84-llh", "point,lon,lat,altitude", "names no height"},
        RefusedHeader{"OtherUnit", "wgs84-llh", "point,lon,lat,height [yd]", "names no height"},
        RefusedHeader{"OtherAngleUnit", "wgs84-llh", "point,lon_mas,lat_mas,h",
                      "names no longitude"},
        RefusedHeader{"Twice", "wgs84-llh", "lon,lat,longitude,h",
                      "names the longitude twice: \"lon\" and \"longitude\""},
        RefusedHeader{"ProjectedNames", "wgs84-llh", "point,easting,northing,height",
                      "these headings fit --from local-neh"},
        RefusedHeader{"GeographicNames", "local-neh", "point,lon,lat,h",
                      "these headings fit --from wgs84-llh and --from local-llh"},
        // In some countries x is the northing, in others the easting.
        RefusedHeader{"XAndYOfThePlane", "local-neh", "point,x,y,h", "names no northing"},
        RefusedHeader{"WithoutQuotes", "wgs84-llh", "\"point,lon,lat,h",
                      "the header cannot be read: a quotation mark is not closed"},
        RefusedHeader{"Latin1", "wgs84-llh", "Punkt,lat,lon,Normalh\xF6he", "names no height"},
        RefusedHeader{"OneWord", "wgs84-llh", "positions", "names no longitude"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertHeader, AnotherOrderFurtherDownEndsTheRun)
{
    const auto result = ProgramRun().convert(system, "5.25,52.5,40\nlat,lon,h\n5.5,52.25,41\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(csvRows(result.out).size(), 1);
    EXPECT_THAT(result.err, Mentions("<stdin>:2: these headings give another order than line 1"));
    EXPECT_THAT(result.err, Mentions("the run ended there: 0 of 1 positions before it failed"));
}

} // namespace
} // namespace KelStd
