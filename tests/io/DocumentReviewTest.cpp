// What a document says and its reader does not understand so. Every row is one change of a document
// that has no finding: the text on the left becomes the one beside it.

#include "io/ReviewedDocument.h"

#include <ostream>

namespace KelStd::test {
namespace {

using io::DocumentFinding;
using Kind = io::FindingKind;

struct Row
{
    const char *name;
    const char *from;
    const char *to;
    Kind kind;
    const char *element;
    int line;
    const char *written;
    const char *understood;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class DocumentReview : public ReviewTest, public testing::WithParamInterface<Row>
{};

TEST_P(DocumentReview, FindsIt)
{
    const Row &row = GetParam();
    const auto findings = reviewed(dutchGridWith(row.from, row.to));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    const DocumentFinding &finding = findings.first();
    EXPECT_EQ(finding.kind, row.kind) << testing::PrintToString(finding);
    EXPECT_EQ(finding.element, QString::fromUtf8(row.element));
    EXPECT_EQ(finding.line, row.line);
    EXPECT_EQ(finding.written, QString::fromUtf8(row.written));
    EXPECT_EQ(finding.understood, QString::fromUtf8(row.understood));
}

std::string nameOf(const testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

constexpr const char *x = "Coord/Ellipsoid_Transform/x_translate";
constexpr const char *xRotation = "Coord/Ellipsoid_Transform/x_rotate";
constexpr const char *scale = "Coord/Projection/param[k_0]";

// The reader takes the number for 0, or for less than there is.
const Row numbers[] = {
    {"DecimalComma", ">-565.04<", ">-565,04<", Kind::NotANumber, x, 17, "-565,04", "0"},
    {"UnitBehindTheNumber", ">-565.04<", ">-565.04 m<", Kind::NotANumber, x, 17, "-565.04 m", "0"},
    {"Thousands", ">155000<", ">155 000<", Kind::NotANumber, "Coord/Projection/param[FalseEast]", 5,
     "155 000", "0"},
    {"GroupedThousands", ">155000<", ">155,000<", Kind::NotANumber,
     "Coord/Projection/param[FalseEast]", 5, "155,000", "0"},
    {"DegreesMinutesSeconds", ">52.1561605555556<", ">52 09 22.178<", Kind::NotANumber,
     "Coord/Projection/param[lat_0]", 8, "52 09 22.178", "0"},
    {"Hexadecimal", ">-565.04<", ">0x235<", Kind::NotANumber, x, 17, "0x235", "0"},
    {"NotANumber", ">-565.04<", ">nan<", Kind::NotANumber, x, 17, "nan", "nan"},
    {"Infinite", ">-565.04<", ">-inf<", Kind::NotANumber, x, 17, "-inf", "-inf"},
    {"TooSmall", ">-565.04<", ">1e-400<", Kind::NotANumber, x, 17, "1e-400", "0"},
    {"MinusOfAWordProcessor", ">-565.04<",
     ">\xE2\x80\x93"
     "565.04<",
     Kind::NotANumber, x, 17,
     "\xE2\x80\x93"
     "565.04",
     "0"},
    {"IntegerOverflow", "valType=\"Double\" isDictionary=\"false\">-4.0772<",
     "valType=\"Int32\" isDictionary=\"false\">99999999999<", Kind::NotANumber,
     "Coord/Ellipsoid_Transform/ratio_ppm", 23, "99999999999", "0"},
    {"LongIntegerOverflow", "valType=\"Double\" isDictionary=\"false\">-4.0772<",
     "valType=\"Int64\" isDictionary=\"false\">9223372036854775808<", Kind::NotANumber,
     "Coord/Ellipsoid_Transform/ratio_ppm", 23, "9223372036854775808", "0"},
    {"DecimalsOfAnInteger", "valType=\"Double\" isDictionary=\"false\">-4.0772<",
     "valType=\"Int32\" isDictionary=\"false\">-4.0772<", Kind::NotANumber,
     "Coord/Ellipsoid_Transform/ratio_ppm", 23, "-4.0772", "0"},
    {"TextThatIsNoNumber", "valType=\"Distance\" isDictionary=\"false\">-565.04<",
     "valType=\"String\" isDictionary=\"false\">-565,04<", Kind::NotANumber, x, 17, "-565,04", "0"},
    {"TextThatProjReadsAPartOf", "valType=\"Latitude\" isDictionary=\"false\">52.1561605555556<",
     "valType=\"String\" isDictionary=\"false\">52,15<", Kind::NotANumber,
     "Coord/Projection/param[lat_0]", 8, "52,15", "lat_0=52,15"},
    {"NumberInAnAttribute", "reciprocal=\"299.1528128\"", "reciprocal=\"299,1528128\"",
     Kind::NotANumber, "Coord/Ellpsoid", 3, "reciprocal=\"299,1528128\"", "0"},
    {"UnusedNumber", "<a ver=\"1\" unit=\"None\" valType=\"Double\" isDictionary=\"false\">0<",
     "<a ver=\"1\" unit=\"None\" valType=\"Double\" isDictionary=\"false\">0,5<", Kind::NotANumber,
     "Coord/Elevation_Fitting/a", 32, "0,5", "0"},
    {"CommentWithin", ">-565.04<", ">-565<!-- m -->.04<", Kind::SplitText, x, 17, "-565.04",
     "-565"},
    {"CommentBefore", ">-565.04<", "><!-- m -->-565.04<", Kind::SplitText, x, 17, "-565.04",
     "nothing"},
    {"CommentBehindABlank", ">-565.04<", "> <!-- m --> -565.04<", Kind::SplitText, x, 17,
     " -565.04", "nothing"},
    {"InstructionWithin", ">-565.04<", ">-565<?m?>.04<", Kind::SplitText, x, 17, "-565.04", "-565"},
    {"CharacterDataWithin", ">-565.04<", ">-565<![CDATA[.04]]><", Kind::SplitText, x, 17, "-565.04",
     "-565"},
    {"NoValue", ">-565.04<", "><", Kind::MissingValue, x, 17, "<x_translate>", "0"},
    {"NoValueForProj", ">0.9999079<", "><", Kind::MissingValue, scale, 7, "<param>", "k_0=0"},
};

INSTANTIATE_TEST_SUITE_P(Numbers, DocumentReview, testing::ValuesIn(numbers), nameOf);

const Row words[] = {
    {"FunctionInSmallLetters", "fuction=\"Seven\"", "fuction=\"seven\"", Kind::UnknownWord,
     "Coord/Ellipsoid_Transform", 16, "fuction=\"seven\"", "None"},
    {"FunctionWithABlank", "fuction=\"Seven\"", "fuction=\"Seven \"", Kind::UnknownWord,
     "Coord/Ellipsoid_Transform", 16, "fuction=\"Seven \"", "None"},
    {"FunctionByItsNumber", "fuction=\"Seven\"", "fuction=\"7\"", Kind::UnknownWord,
     "Coord/Ellipsoid_Transform", 16, "fuction=\"7\"", "None"},
    {"Transition", "nofuction_transtion=\"XYZ\"", "nofuction_transtion=\"xyz\"", Kind::UnknownWord,
     "Coord/Ellipsoid_Transform", 16, "nofuction_transtion=\"xyz\"", "XYZ"},
    {"Axes", "positiveDir=\"ENU\"", "positiveDir=\"NEU\"", Kind::UnknownWord, "Coord/Ellpsoid", 3,
     "positiveDir=\"NEU\"", "ENU"},
    {"AxesOfTheFirstRelease", "positiveDir=\"ENU\"", "positiveDir=\"EEllipsoidHeadDirection_WSU\"",
     Kind::UnknownWord, "Coord/Ellpsoid", 3, "positiveDir=\"EEllipsoidHeadDirection_WSU\"", "ENU"},
    {"KindOfPositions", "locationType=\"X_Y_ElevationHeight\"", "locationType=\"XYH\"",
     Kind::UnknownWord, "Coord/Projection", 4, "locationType=\"XYH\"", "X_Y_ElevationHeight"},
    {"UnitOfTheProjection", "loc_or_height_unit=\"Meter\"", "loc_or_height_unit=\"meter\"",
     Kind::UnknownWord, "Coord/Projection", 4, "loc_or_height_unit=\"meter\"", "None"},
    {"UnitOfAShift", "<x_translate ver=\"1\" unit=\"Meter\"", "<x_translate ver=\"1\" unit=\"m\"",
     Kind::UnknownWord, x, 17, "unit=\"m\"", "None"},
    {"RadiansOfARotation", "<x_rotate ver=\"1\" unit=\"Second\"",
     "<x_rotate ver=\"1\" unit=\"Radian\"", Kind::UnknownWord, xRotation, 20, "unit=\"Radian\"",
     "None"},
    {"KindOfValue", "valType=\"Double\" isDictionary=\"false\">0.9999079<",
     "valType=\"double\" isDictionary=\"false\">0.9999079<", Kind::UnknownWord, scale, 7,
     "valType=\"double\"", "None"},
    {"Dictionary", "isDictionary=\"false\">0.9999079<", "isDictionary=\"no\">0.9999079<",
     Kind::UnknownWord, scale, 7, "isDictionary=\"no\"", "false"},
    {"Flag", "valType=\"Double\" isDictionary=\"false\">0.9999079<",
     "valType=\"Proj4_Param_Bool\" isDictionary=\"false\">yes<", Kind::UnknownWord, scale, 7, "yes",
     "false"},
    {"Hemisphere", "valType=\"Double\" isDictionary=\"false\">-4.0772<",
     "valType=\"WhichHalfEarth\" isDictionary=\"false\">South<", Kind::UnknownWord,
     "Coord/Ellipsoid_Transform/ratio_ppm", 23, "South", "N"},
    // The format reads directions by the words of the hemispheres.
    {"DirectionAsAParameter", "valType=\"Double\" isDictionary=\"false\">-4.0772<",
     "valType=\"EllipsoidDirection\" isDictionary=\"false\">WNU<", Kind::UnknownWord,
     "Coord/Ellipsoid_Transform/ratio_ppm", 23, "WNU", "ENU"},
};

INSTANTIATE_TEST_SUITE_P(Words, DocumentReview, testing::ValuesIn(words), nameOf);

const Row names[] = {
    {"Attribute", "proj4EllpsName=\"bessel\"", "proj4EllpsName=\"bessel\" proj4ElpsName=\"GRS80\"",
     Kind::UnknownAttribute, "Coord/Ellpsoid", 3, "proj4ElpsName=\"GRS80\"", ""},
    {"AttributeInAnotherCase", "coord_name=", "Coord_Name=", Kind::UnknownAttribute, "Coord", 2,
     "Coord_Name=\"Amersfoort / RD New\"", ""},
    {"AttributeWithAPrefix", "positiveDir=\"ENU\"", "k:positiveDir=\"WSU\"", Kind::UnknownAttribute,
     "Coord/Ellpsoid", 3, "k:positiveDir=\"WSU\"", ""},
    {"Element", "<Geoid_Model ver=\"1\" modelFileName=\"\"/>",
     "<GeoidModel ver=\"1\" modelFileName=\"g.gtx\"/>", Kind::UnknownElement, "Coord/GeoidModel",
     41, "<GeoidModel>", ""},
    {"ElementOfARecord", "<x_translate ver=\"1\" ", "<dx/><x_translate ver=\"1\" ",
     Kind::UnknownElement, "Coord/Ellipsoid_Transform/dx", 17, "<dx>", ""},
    {"ElementOfAParameter", ">-565.04<", ">-565.04<m/><", Kind::UnknownElement,
     "Coord/Ellipsoid_Transform/x_translate/m", 17, "<m>", ""},
    {"EntryWithoutADictionary", ">0.9999079<", ">0.9999079<key key_name=\"a\">1</key><",
     Kind::UnknownElement, "Coord/Projection/param[k_0]/key[a]", 7, "<key>", ""},
    {"Text", "<Plane_Transform ver=\"1\" fuction=\"None\">",
     "<Plane_Transform ver=\"1\" fuction=\"None\">Four", Kind::StrayText, "Coord/Plane_Transform",
     25, "Four", ""},
    {"SecondRecord", "<Geoid_Model ver=\"1\" modelFileName=\"\"/>",
     "<Geoid_Model ver=\"1\" modelFileName=\"\"/>\n<Geoid_Model ver=\"1\" "
     "modelFileName=\"g.gtx\"/>",
     Kind::Repeated, "Coord/Geoid_Model", 42, "<Geoid_Model>", "the first one"},
    {"SecondParameterOfARecord", "<y_translate ",
     "<x_translate ver=\"1\" unit=\"Meter\" valType=\"Distance\" isDictionary=\"false\">1"
     "</x_translate>\n<y_translate ",
     Kind::Repeated, x, 18, "<x_translate>", "the first one"},
    {"SecondParameterOfAProjection", "<paramProj4 name=\"FalseEast\"",
     "<param name=\"k_0\" ver=\"1\" unit=\"None\" valType=\"Double\" isDictionary=\"false\">1"
     "</param>\n<paramProj4 name=\"FalseEast\"",
     Kind::Repeated, scale, 10, "name=\"k_0\"", "the last one"},
    {"SecondPlaceForAParameter", "<paramProj4 name=\"lat_0\" proj4Param=\"lat_0\"/>",
     "<paramProj4 name=\"lat_0\" proj4Param=\"lat_0\"/>\n"
     "<paramProj4 name=\"lat_0\" proj4Param=\"lat_0\"/>",
     Kind::Repeated, "Coord/Projection/paramProj4[lat_0]", 14, "name=\"lat_0\"", "the last one"},
    {"OnePlaceForTwoParameters", "<paramProj4 name=\"FalseEast\"",
     "<param name=\"scale\" ver=\"1\" unit=\"None\" valType=\"Double\" isDictionary=\"false\">1"
     "</param>\n<paramProj4 name=\"scale\" proj4Param=\"k\"/>\n<paramProj4 name=\"FalseEast\"",
     Kind::Repeated, "Coord/Projection/paramProj4[scale]", 11, "proj4Param=\"k\"", "the first one"},
    {"NoVersion", "<x_translate ver=\"1\" ", "<x_translate ", Kind::WrongVersion, x, 17,
     "<x_translate>", "nothing"},
    {"AnotherVersion", "<x_translate ver=\"1\" ", "<x_translate ver=\"2\" ", Kind::WrongVersion, x,
     17, "ver=\"2\"", "nothing"},
    {"NoUnit", "<x_translate ver=\"1\" unit=\"Meter\" ", "<x_translate ver=\"1\" ",
     Kind::MissingAttribute, x, 17, "unit", "None"},
    {"NoKindOfValue", "unit=\"None\" valType=\"Double\" isDictionary=\"false\">0.9999079<",
     "unit=\"None\" isDictionary=\"false\">0.9999079<", Kind::MissingAttribute, scale, 7, "valType",
     "None"},
};

INSTANTIATE_TEST_SUITE_P(Names, DocumentReview, testing::ValuesIn(names), nameOf);

const Row unused[] = {
    {"FeetOfAFalseEasting", "<param name=\"FalseEast\" ver=\"1\" unit=\"Meter\"",
     "<param name=\"FalseEast\" ver=\"1\" unit=\"Foot\"", Kind::UnitNotUsed,
     "Coord/Projection/param[FalseEast]", 5, "unit=\"Foot\"", "x_0=155000 (Meter)"},
    {"SecondsOfALatitude", "<param name=\"lat_0\" ver=\"1\" unit=\"Degree\"",
     "<param name=\"lat_0\" ver=\"1\" unit=\"Second\"", Kind::UnitNotUsed,
     "Coord/Projection/param[lat_0]", 8, "unit=\"Second\"", "lat_0=52.1561605555556 (Degree)"},
    {"MetresOfALatitude", "<param name=\"lat_0\" ver=\"1\" unit=\"Degree\"",
     "<param name=\"lat_0\" ver=\"1\" unit=\"Meter\"", Kind::UnitNotUsed,
     "Coord/Projection/param[lat_0]", 8, "unit=\"Meter\"", "lat_0=52.1561605555556 (Degree)"},
    {"NoUnitOfARotation", "<x_rotate ver=\"1\" unit=\"Second\"",
     "<x_rotate ver=\"1\" unit=\"None\"", Kind::UnitNotUsed, xRotation, 20, "unit=\"None\"",
     "Second"},
    {"UnitOfTheScale", "<ratio_ppm ver=\"1\" unit=\"None\"", "<ratio_ppm ver=\"1\" unit=\"Meter\"",
     Kind::UnitNotUsed, "Coord/Ellipsoid_Transform/ratio_ppm", 23, "unit=\"Meter\"", "ppm"},
    {"DegreesOfATranslation", "<x_translate ver=\"1\" unit=\"Meter\"",
     "<x_translate ver=\"1\" unit=\"Degree\"", Kind::UnitNotUsed, x, 17, "unit=\"Degree\"",
     "no definition can be made"},
    {"ParameterThatProjIsNotGiven", "        <paramProj4 name=\"k_0\" proj4Param=\"k_0\"/>\n", "",
     Kind::NotUsed, scale, 7, "0.9999079", ""},
    // Weather has two decimals in a definition.
    {"KindOfValueThatIsRounded", "valType=\"Double\" isDictionary=\"false\">0.9999079<",
     "valType=\"Pressure\" isDictionary=\"false\">0.9999079<", Kind::NotUsed, scale, 7, "0.9999079",
     "k_0=1"},
    {"AxisOfAnotherEllipsoid", "biggerHalfAxle=\"6377397.155\"", "biggerHalfAxle=\"6378137\"",
     Kind::Contradiction, "Coord/Ellpsoid", 3, "biggerHalfAxle=\"6378137\"", "bessel: 6377397.155"},
    {"FlatteningOfAnotherEllipsoid", "reciprocal=\"299.1528128\"", "reciprocal=\"298.257222101\"",
     Kind::Contradiction, "Coord/Ellpsoid", 3, "reciprocal=\"298.257222101\"",
     "bessel: 299.1528128"},
};

INSTANTIATE_TEST_SUITE_P(Unused, DocumentReview, testing::ValuesIn(unused), nameOf);

const Row implausible[] = {
    {"AxisInKilometres",
     "biggerHalfAxle=\"6377397.155\" reciprocal=\"299.1528128\" "
     "positiveDir=\"ENU\" proj4EllpsName=\"bessel\"",
     "biggerHalfAxle=\"6377.397155\" reciprocal=\"299.1528128\" "
     "positiveDir=\"ENU\" proj4EllpsName=\"\"",
     Kind::Implausible, "Coord/Ellpsoid", 3, "biggerHalfAxle=\"6377.397155\"", "6377.397155"},
    {"AxisInMillimetres",
     "biggerHalfAxle=\"6377397.155\" reciprocal=\"299.1528128\" "
     "positiveDir=\"ENU\" proj4EllpsName=\"bessel\"",
     "biggerHalfAxle=\"6377397155\" reciprocal=\"299.1528128\" "
     "positiveDir=\"ENU\" proj4EllpsName=\"\"",
     Kind::Implausible, "Coord/Ellpsoid", 3, "biggerHalfAxle=\"6377397155\"", "6377397155"},
    {"NoAxis",
     "biggerHalfAxle=\"6377397.155\" reciprocal=\"299.1528128\" "
     "positiveDir=\"ENU\" proj4EllpsName=\"bessel\"",
     "reciprocal=\"299.1528128\" positiveDir=\"ENU\"", Kind::MissingAttribute, "Coord/Ellpsoid", 3,
     "biggerHalfAxle", "0"},
    {"HalfAsTheReciprocal",
     "reciprocal=\"299.1528128\" positiveDir=\"ENU\" "
     "proj4EllpsName=\"bessel\"",
     "reciprocal=\"0.5\" positiveDir=\"ENU\" proj4EllpsName=\"\"", Kind::Implausible,
     "Coord/Ellpsoid", 3, "reciprocal=\"0.5\"", "0.5"},
    {"TheFlatteningItself",
     "reciprocal=\"299.1528128\" positiveDir=\"ENU\" "
     "proj4EllpsName=\"bessel\"",
     "reciprocal=\"0.0033427731\" positiveDir=\"ENU\" proj4EllpsName=\"\"", Kind::Implausible,
     "Coord/Ellpsoid", 3, "reciprocal=\"0.0033427731\"", "0.0033427731"},
    {"ScaleOfAThousand", ">0.9999079<", ">999.9079<", Kind::Implausible, scale, 7, "999.9079",
     "k_0=999.9079"},
    {"ScaleBelowNineTenths", ">0.9999079<", ">0.89<", Kind::Implausible, scale, 7, "0.89",
     "k_0=0.89"},
    {"ScaleAboveElevenTenths", ">0.9999079<", ">1.11<", Kind::Implausible, scale, 7, "1.11",
     "k_0=1.11"},
    {"Latitude", ">52.1561605555556<", ">152.1561605555556<", Kind::Implausible,
     "Coord/Projection/param[lat_0]", 8, "152.1561605555556", "lat_0=152.1561605555556"},
    {"Longitude", ">5.38763888888889<", ">538.763888888889<", Kind::Implausible,
     "Coord/Projection/param[lon_0]", 9, "538.763888888889", "lon_0=538.763888888889"},
    {"FalseEasting", ">155000<", ">155000000000<", Kind::Implausible,
     "Coord/Projection/param[FalseEast]", 5, "155000000000", "x_0=1.55e+11"},
    {"FalseEastingBeyondEveryZone", ">155000<", ">130000001<", Kind::Implausible,
     "Coord/Projection/param[FalseEast]", 5, "130000001", "x_0=130000001"},
    {"Translation", ">-565.04<", ">-565040<", Kind::Implausible, x, 17, "-565040", "-565040"},
    {"Rotation", ">-0.40939<", ">-4093.9<", Kind::Implausible, xRotation, 20, "-4093.9", "-4093.9"},
    {"ScaleDifference", ">-4.0772<", ">-40772<", Kind::Implausible,
     "Coord/Ellipsoid_Transform/ratio_ppm", 23, "-40772", "-40772"},
};

INSTANTIATE_TEST_SUITE_P(Implausible, DocumentReview, testing::ValuesIn(implausible), nameOf);

} // namespace
} // namespace KelStd::test
