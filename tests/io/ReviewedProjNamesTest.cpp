// Names that PROJ is given. PROJ passes over a parameter that it does not know, or that the
// projection does not take, and its results look right.

#include "io/ReviewedDocument.h"

namespace KelStd::test {
namespace {

using Kind = io::FindingKind;

class ReviewedProjNames : public ReviewTest
{
protected:
    static QByteArray place(const char *name) { return QByteArray("proj4Param=\"") + name + '"'; }

    /// A projection with one parameter.
    QList<io::DocumentFinding> reviewedParameter(const char *projection, const char *name,
                                                 const char *type, const char *value) const
    {
        return reviewedProjections(
            QByteArray("<Projection_List ver=\"1\"><Projection ver=\"1\" projection_name=\"P\" "
                       "proj4Projection=\"")
            + projection + "\"><param name=\"p\" ver=\"1\" unit=\"None\" valType=\"" + type + "\">"
            + value + "</param><paramProj4 name=\"p\" proj4Param=\"" + name
            + "\"/></Projection></Projection_List>");
    }
};

struct Misspelling
{
    const char *right;
    const char *written;
    int line;
};

// What PROJ 9.1's `proj` ignores of +proj=sterea.
const Misspelling misspellings[] = {
    {"lat_0", "lat0", 13}, {"lat_0", "lat_1", 13}, {"lat_0", "lat_ts", 13}, {"y_0", "y_O", 11},
    {"x_0", "x0", 10},     {"x_0", "X_0", 10},     {"x_0", "south", 10},    {"k_0", "K_0", 12},
    {"k_0", "k0", 12},     {"k_0", "scale", 12},   {"k_0", "to_meter", 12}, {"lon_0", "lonc", 14},
    {"lon_0", "lon0", 14}, {"lon_0", "zone", 14},  {"x_0", "h_0", 10},      {"k_0", "alpha", 12},
};

TEST_F(ReviewedProjNames, OfNoUseToTheProjectionAreFound)
{
    for (const Misspelling &row : misspellings) {
        SCOPED_TRACE(row.written);
        const auto findings = reviewed(dutchGridWith(place(row.right), place(row.written)));
        ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
        EXPECT_EQ(findings.first().kind, Kind::UnusedProjName);
        EXPECT_EQ(findings.first().line, row.line);
        EXPECT_EQ(findings.first().written, QString::fromUtf8(place(row.written)));
    }
}

TEST_F(ReviewedProjNames, OfTheProjectionHaveNoFinding)
{
    EXPECT_TRUE(reviewed(dutchGridWith(place("k_0"), place("k"))).isEmpty());
    struct Row
    {
        const char *projection, *name, *type, *value;
    };
    const Row rows[] = {
        {"stere", "lat_ts", "Double", "-71"},
        {"merc", "lat_ts", "Double", "42"},
        {"omerc", "lonc", "Double", "115"},
        {"omerc", "gamma", "Double", "53.13"},
        {"omerc", "no_uoff", "Proj4_Param_Bool", "true"},
        {"utm", "zone", "Int32", "31"},
        {"utm", "south", "Proj4_Param_Bool", "true"},
        {"utm", "south", "String", "T"},
        {"utm", "south", "Int32", "0"},
        {"ups", "south", "Proj4_Param_Bool", "true"},
        {"tmerc", "approx", "Proj4_Param_Bool", "true"},
        {"krovak", "czech", "Proj4_Param_Bool", "true"},
        {"krovak", "alpha", "Double", "30.28813975"},
        {"aeqd", "guam", "Proj4_Param_Bool", "true"},
        {"labrd", "azi", "Double", "18.9"},
        {"col_urban", "h_0", "Double", "2550"},
        {"longlat", "datum", "String", "WGS84"},
        {"tmerc", "over", "Proj4_Param_Bool", "true"},
        {"tmerc", "pm", "String", "paris"},
        // They change nothing, and many systems state them.
        {"merc", "lat_0", "Double", "0"},
        {"poly", "k_0", "Double", "1"},
        {"utm", "x_0", "Double", "0"},
        {"utm", "lon_0", "Double", "0"},
        {"tmerc", "south", "Proj4_Param_Bool", "false"},
        // Of a projection that is not known, only what none has is found.
        {"new_one", "lat_1", "Double", "52"},
    };
    for (const Row &row : rows) {
        const auto findings = reviewedParameter(row.projection, row.name, row.type, row.value);
        EXPECT_TRUE(findings.isEmpty())
            << row.projection << ' ' << row.name << testing::PrintToString(findings);
    }
}

TEST_F(ReviewedProjNames, OfOtherProjectionsAreFound)
{
    struct Row
    {
        const char *projection, *name, *type, *value;
    };
    const Row rows[] = {
        {"merc", "lat_0", "Double", "10"},
        {"poly", "k_0", "Double", "0.9996"},
        {"utm", "x_0", "Double", "200000"},
        {"utm", "lon_0", "Double", "9"},
        {"utm", "k_0", "Double", "0.9999"},
        {"tmerc", "south", "Proj4_Param_Bool", "true"},
        {"tmerc", "zone", "Int32", "31"},
        {"tmerc", "no_uoff", "Proj4_Param_Bool", "true"},
        {"lcc", "lat_ts", "Double", "40"},
        {"laea", "k_0", "Double", "0.9996"},
        {"bonne", "lat_0", "Double", "40"},
        {"omerc", "lon_0", "Double", "115"},
        // `proj` takes +south=1 for north, and +lat_0 without a value for 0.
        {"utm", "south", "Int32", "1"},
        {"tmerc", "over", "Double", "155000"},
        {"tmerc", "lat_0", "Proj4_Param_Bool", "true"},
        // What no projection has is a misspelling whatever its value.
        {"tmerc", "lat0", "Double", "0"},
        {"tmerc", "aprox", "Proj4_Param_Bool", "false"},
        {"new_one", "lat0", "Double", "52"},
    };
    for (const Row &row : rows) {
        const auto findings = reviewedParameter(row.projection, row.name, row.type, row.value);
        ASSERT_EQ(findings.size(), 1) << row.projection << ' ' << row.name;
        EXPECT_EQ(findings.first().kind, Kind::UnusedProjName) << row.projection << row.name;
    }
}

// `cs2cs +proj=utm +zone=31 +lon_0=9` gives what +zone=31 alone does, whose meridian is 3.
TEST_F(ReviewedProjNames, AMeridianBesideAZoneIsFoundWhereItIsAnother)
{
    const auto beside = [this](const char *zone, const char *meridian) {
        return reviewedProjections(
            QByteArray("<Projection_List ver=\"1\"><Projection ver=\"1\" projection_name=\"P\" "
                       "proj4Projection=\"utm\">"
                       "<param name=\"Zone\" ver=\"1\" unit=\"None\" valType=\"Int32\">")
            + zone
            + "</param><param name=\"Meridian\" ver=\"1\" unit=\"Degree\" valType=\"Longitude\">"
            + meridian
            + "</param><paramProj4 name=\"Zone\" proj4Param=\"zone\"/>"
              "<paramProj4 name=\"Meridian\" proj4Param=\"lon_0\"/>"
              "</Projection></Projection_List>");
    };
    EXPECT_TRUE(beside("31", "3").isEmpty());
    EXPECT_TRUE(beside("1", "-177").isEmpty());
    EXPECT_TRUE(beside("60", "177").isEmpty());
    for (const auto &findings : {beside("31", "9"), beside("30", "3"), beside("31", "3.5")}) {
        ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
        EXPECT_EQ(findings.first().kind, Kind::UnusedProjName);
        EXPECT_EQ(findings.first().written, QStringLiteral("proj4Param=\"lon_0\""));
    }
}

// What `cs2cs` of PROJ 9.1 makes of a system with one of these: heights of 328.0833 and 50 instead
// of 100 m, a northing of 463 km, northing and easting exchanged, heights above a grid, another
// datum.
TEST_F(ReviewedProjNames, ThatOverruleTheRestOfTheSystemAreFound)
{
    struct Row
    {
        const char *name, *type, *value;
        const char *overruled;
    };
    const Row rows[] = {
        {"geoidgrids", "String", "egm96_15.gtx",
         "the geoid model: heights are those above this grid"},
        {"geoid_crs", "String", "EPSG:4979", "the geoid model: heights may be above a grid"},
        {"vunits", "String", "us-ft", "the metre of all heights"},
        {"vunits", "String", "0.3048", "the metre of all heights"},
        {"vto_meter", "Double", "2", "the metre of all heights"},
        {"vto_meter", "String", "1/3", "the metre of all heights"},
        {"units", "String", "km", "the metre of all northings and eastings"},
        {"units", "String", "us-ft", "the metre of all northings and eastings"},
        {"axis", "String", "neu", "the directions and the order of the axes"},
        {"axis", "String", "swu", "the directions and the order of the axes"},
        {"axis", "String", "end", "the directions and the order of the axes"},
        {"towgs84", "String", "600,0,0", "the datum shift"},
        {"nadgrids", "String", "@null", "the datum shift: this grid takes its place"},
        {"geoc", "Proj4_Param_Bool", "true", "the datum shift: there is none with it"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.name) + '=' + row.value);
        const auto findings = reviewedParameter("tmerc", row.name, row.type, row.value);
        ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
        EXPECT_EQ(findings.first().kind, Kind::Overruling);
        EXPECT_EQ(findings.first().written, QString::fromUtf8(place(row.name)));
        EXPECT_EQ(findings.first().understood, QString::fromLatin1(row.overruled));
    }
}

TEST_F(ReviewedProjNames, ThatOverruleNothingHaveNoFinding)
{
    struct Row
    {
        const char *name, *type, *value;
    };
    const Row rows[] = {
        {"vunits", "String", "m"},     {"vto_meter", "Double", "1"},
        {"units", "String", "m"},      {"axis", "String", "enu"},
        {"axis", "String", "wsu"},     {"pm", "String", "ferro"},
        {"ellps", "String", "intl"},   {"geoc", "Proj4_Param_Bool", "false"},
        {"geoc", "String", "F"},       {"over", "Proj4_Param_Bool", "true"},
        {"lon_wrap", "Double", "180"},
    };
    for (const Row &row : rows) {
        const auto findings = reviewedParameter("tmerc", row.name, row.type, row.value);
        EXPECT_TRUE(findings.isEmpty())
            << row.name << '=' << row.value << testing::PrintToString(findings);
    }
}

struct Smuggled
{
    const char *from;
    const char *to;
    const char *element;
    const char *written;
};

TEST_F(ReviewedProjNames, ThatHoldMoreThanANameAreFound)
{
    const char *const projection = "Coord/Projection";
    const Smuggled rows[] = {
        {"\"sterea\"", "\"sterea +lat_0=0\"", projection, "proj4Projection=\"sterea +lat_0=0\""},
        {"\"sterea\"", "\"sterea +x_0=1\"", projection, "proj4Projection=\"sterea +x_0=1\""},
        {"\"sterea\"", "\"sterea x_0=1\"", projection, "proj4Projection=\"sterea x_0=1\""},
        {"\"sterea\"", "\"sterea+x_0\"", projection, "proj4Projection=\"sterea+x_0\""},
        {"\"bessel\"", "\"bessel +towgs84=0,0,0\"", "Coord/Ellpsoid",
         "proj4EllpsName=\"bessel +towgs84=0,0,0\""},
        {"\"bessel\"", "\"bessel +nadgrids=\"", "Coord/Ellpsoid",
         "proj4EllpsName=\"bessel +nadgrids=\""},
        {"\"bessel\"", "\"bessel +nadgrids=@a.gsb\"", "Coord/Ellpsoid",
         "proj4EllpsName=\"bessel +nadgrids=@a.gsb\""},
        {"\"bessel\"", "\"bessel +nadgrids=a.gsb +x_0=1\"", "Coord/Ellpsoid",
         "proj4EllpsName=\"bessel +nadgrids=a.gsb +x_0=1\""},
        {"proj4Param=\"lat_0\"", "proj4Param=\"x_0=5 +lat_0\"",
         "Coord/Projection/paramProj4[lat_0]", "proj4Param=\"x_0=5 +lat_0\""},
        {"proj4Param=\"lat_0\"", "proj4Param=\"lat_0 \"", "Coord/Projection/paramProj4[lat_0]",
         "proj4Param=\"lat_0 \""},
    };
    for (const Smuggled &row : rows) {
        SCOPED_TRACE(row.to);
        auto findings = reviewed(dutchGridWith(row.from, row.to));
        if (findings.size() == 2 && findings.last().kind == Kind::NotUsed)
            findings.removeLast(); // the datum shift beside grids, see below
        ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
        EXPECT_EQ(findings.first().kind, Kind::NotOneProjName);
        EXPECT_EQ(findings.first().element, QString::fromUtf8(row.element));
        EXPECT_EQ(findings.first().written, QString::fromUtf8(row.written));
    }
    EXPECT_TRUE(reviewed(dutchGridWith("\"bessel\"", "\" bessel \"")).isEmpty());
}

// PROJ reads a definition as far as its first NUL.
TEST_F(ReviewedProjNames, WithControlCharactersAreFound)
{
    const Smuggled rows[] = {
        {"\"sterea\"", "\"sterea&#0;\"", "Coord/Projection", "proj4Projection"},
        {"\"sterea\"", "\"ster&#0;ea\"", "Coord/Projection", "proj4Projection"},
        {"\"sterea\"", "\"sterea&#7;\"", "Coord/Projection", "proj4Projection"},
        {"\"bessel\"", "\"bessel&#0;x\"", "Coord/Ellpsoid", "proj4EllpsName"},
        {"\"bessel\"", "\"bessel&#127;\"", "Coord/Ellpsoid", "proj4EllpsName"},
        {"\"bessel\"", "\"bessel +nadgrids=a.gsb&#0;\"", "Coord/Ellpsoid", "proj4EllpsName"},
        {"proj4Param=\"lat_0\"", "proj4Param=\"lat_0&#0;\"", "Coord/Projection/paramProj4[lat_0]",
         "proj4Param"},
    };
    for (const Smuggled &row : rows) {
        SCOPED_TRACE(row.to);
        const auto findings = reviewed(dutchGridWith(row.from, row.to));
        ASSERT_FALSE(findings.isEmpty());
        EXPECT_EQ(findings.first().kind, Kind::NotOneProjName);
        EXPECT_EQ(findings.first().element, QString::fromUtf8(row.element));
        EXPECT_TRUE(findings.first().written.startsWith(QLatin1String(row.written)));
    }
}

// Grids of a datum shift stand behind an ellipsoid's name. The system has seven parameters, too,
// which PROJ does not use then.
TEST_F(ReviewedProjNames, OfEllipsoidsMayBringGrids)
{
    const auto findings = reviewed(dutchGridWith("\"bessel\"", "\"bessel +nadgrids=a.gsb,b.tif\""));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().kind, Kind::NotUsed);
    EXPECT_EQ(findings.first().element, QStringLiteral("Coord/Ellipsoid_Transform"));
    EXPECT_EQ(findings.first().written, QStringLiteral("fuction=\"Seven\""));
    const auto other = reviewed(dutchGridWith("\"bessel\"", "\"intl +nadgrids=a.gsb\""));
    ASSERT_EQ(other.size(), 2) << testing::PrintToString(other);
    EXPECT_EQ(other.first().kind, Kind::Contradiction);
}

} // namespace
} // namespace KelStd::test
