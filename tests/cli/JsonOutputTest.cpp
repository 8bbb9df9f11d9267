#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");
const QStringList json = {QStringLiteral("--json")};
const QStringList geojson = {QStringLiteral("--geojson")};
const QByteArray twoPoints = "A,5.25,52.5,-4.125\nB,-170.5,-12.5,100\n";

constexpr const char *numberKeys[] = {
    "wgs84_longitude_deg", "wgs84_latitude_deg", "wgs84_height_m",
    "wgs84_x_m",           "wgs84_y_m",          "wgs84_z_m",
    "local_longitude_deg", "local_latitude_deg", "local_ellipsoidal_height_m",
    "local_northing_m",    "local_easting_m",    "local_height_m"};
constexpr const char *referenceKey = "local_height_reference";

QJsonObject parsed(const QString &text)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString() << ": " << text;
    EXPECT_TRUE(document.isObject()) << text;
    return document.object();
}

QJsonArray features(const QString &text)
{
    const QJsonObject collection = parsed(text);
    EXPECT_EQ(collection.keys(), (QStringList{"features", "type"}));
    EXPECT_EQ(collection.value("type").toString(), QStringLiteral("FeatureCollection"));
    EXPECT_TRUE(collection.value("features").isArray());
    return collection.value("features").toArray();
}

QJsonArray coordinates(const QJsonValue &feature)
{
    const QJsonObject geometry = feature.toObject().value("geometry").toObject();
    EXPECT_EQ(geometry.keys(), (QStringList{"coordinates", "type"}));
    EXPECT_EQ(geometry.value("type").toString(), QStringLiteral("Point"));
    return geometry.value("coordinates").toArray();
}

TEST(JsonOutput, IsAnObjectALine)
{
    const auto result = ProgramRun().convert(system, twoPoints, json);
    ASSERT_EQ(result.status, 0) << result.err;
    ASSERT_EQ(result.outLines().size(), 2);
    EXPECT_TRUE(result.out.endsWith(QLatin1Char('\n')));
    const QJsonObject object = parsed(result.outLines().at(0));
    EXPECT_EQ(object.value("point"), QJsonValue("A"));
    EXPECT_EQ(object.value("wgs84_longitude_deg"), QJsonValue(5.25));
    EXPECT_EQ(object.value("wgs84_height_m"), QJsonValue(-4.125));
    EXPECT_EQ(parsed(result.outLines().at(1)).value("point"), QJsonValue("B"));
}

TEST(JsonOutput, HasTheColumnsOfTheCsvForKeys)
{
    const auto result = ProgramRun().convert(system, twoPoints, json);
    for (const QString &line : result.outLines()) {
        const QJsonObject object = parsed(line);
        for (const char *key : numberKeys)
            EXPECT_TRUE(object.value(QLatin1String(key)).isDouble()) << key;
        EXPECT_EQ(object.value(QLatin1String(referenceKey)), QJsonValue("ellipsoid"));
        EXPECT_EQ(object.size(), 14);
    }
}

/// Eleven and five decimals, which a number that was read would not show.
TEST(JsonOutput, HasTheNumbersOfTheCsvTextForText)
{
    const ProgramRun program;
    const auto rows = csvRows(program.convert(system, twoPoints).out);
    const QStringList lines = program.convert(system, twoPoints, json).outLines();
    ASSERT_EQ(lines.size(), rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        for (const char *key : numberKeys) {
            const QRegularExpression value(
                QStringLiteral("[{,]\"%1\":([^,}]*)[,}]").arg(QLatin1String(key)));
            EXPECT_EQ(value.match(lines.at(i)).captured(1), rows.at(i).value(QLatin1String(key)))
                << key;
        }
    }
    EXPECT_TRUE(lines.first().contains(QLatin1String("\"wgs84_longitude_deg\":5.25000000000,")));
    EXPECT_TRUE(lines.first().contains(QLatin1String("\"wgs84_height_m\":-4.12500,")));
}

TEST(JsonOutput, NamesAreTheTextsThatTheyAre)
{
    struct Row
    {
        const char *field;
        const char *name;
    };
    const Row rows[] = {
        {"\"say \"\"so\"\"\"", "say \"so\""},
        {"back\\slash\\n", "back\\slash\\n"},
        {"\"tab\ttab\"", "tab\ttab"},
        {"a/b", "a/b"},
        {"Gr\xC3\xB6\xC3\x9F"
         "e",
         "Gr\xC3\xB6\xC3\x9F"
         "e"},
        {"\xF0\x9F\x93\x8D pin", "\xF0\x9F\x93\x8D pin"},
        {"line\xE2\x80\xA8separator", "line\xE2\x80\xA8separator"},
        {"{\"}", "{\"}"},
        {"", ""},
        {"null", "null"},
        {"101", "101"},
    };
    QByteArray input = "first,5,52,1\n";
    for (const Row &row : rows)
        input += QByteArray(row.field) + ",5,52,1\n";
    for (const QStringList &form : {json, geojson}) {
        const auto result = ProgramRun().convert(system, input, form);
        EXPECT_EQ(result.status, 0) << result.err;
        int line = 1;
        for (const Row &row : rows) {
            const QJsonObject object =
                form == json
                    ? parsed(result.outLines().value(line))
                    : features(result.out).at(line).toObject().value("properties").toObject();
            EXPECT_EQ(object.value("point"), QJsonValue(QString::fromUtf8(row.name))) << row.name;
            ++line;
        }
    }
}

TEST(JsonOutput, WithoutNamesThereIsNoPoint)
{
    const auto result = ProgramRun().convert(system, "5.25,52.5,1\n", json);
    const QJsonObject object = parsed(result.outLines().value(0));
    EXPECT_EQ(object.size(), 13);
    EXPECT_FALSE(object.contains("point"));
    EXPECT_EQ(object.value("wgs84_longitude_deg"), QJsonValue(5.25));
    EXPECT_EQ(object.value(QLatin1String(referenceKey)), QJsonValue("ellipsoid"));
}

TEST(JsonOutput, OfNoPositionsIsEmpty)
{
    const auto result = ProgramRun().convert(system, "# nothing\n", json);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, QString());
}

TEST(JsonOutput, AnglesInDegreesMinutesAndSecondsAreTexts)
{
    const auto result = ProgramRun().convert(
        system, twoPoints, json + QStringList{QStringLiteral("--angle"), QStringLiteral("dms")});
    ASSERT_EQ(result.status, 0) << result.err;
    const QJsonObject object = parsed(result.outLines().value(0));
    EXPECT_EQ(object.value("wgs84_longitude_dms"),
              QJsonValue(QString::fromUtf8("005\xC2\xB0"
                                           "15\xE2\x80\xB2"
                                           "00.000000\xE2\x80\xB3"
                                           "E")));
    EXPECT_TRUE(object.value("local_latitude_dms").isString());
    for (const char *key : {"wgs84_height_m", "wgs84_x_m", "local_northing_m", "local_height_m"})
        EXPECT_TRUE(object.value(QLatin1String(key)).isDouble()) << key;
    EXPECT_EQ(object.value("wgs84_height_m"), QJsonValue(-4.125));
}

TEST(JsonOutput, EveryFormIsValid)
{
    const ProgramRun program;
    for (const char *options : {"--format=exact", "--format=configured", "--angle=degree",
                                "--angle=radian", "--length-unit=us-ft", "--precision=0"}) {
        SCOPED_TRACE(options);
        const auto result =
            program.convert(system, twoPoints, json + QStringList{QString::fromLatin1(options)});
        EXPECT_EQ(result.status, 0) << result.err;
        ASSERT_EQ(result.outLines().size(), 2);
        for (const QString &line : result.outLines())
            EXPECT_EQ(parsed(line).size(), 14);
    }
}

TEST(GeoJsonOutput, IsOneDocumentOfAnyNumberOfPositions)
{
    struct Row
    {
        const char *input;
        int features;
        int status;
    };
    const Row rows[] = {
        {"", 0, 0},
        {"# nothing\n", 0, 0},
        {"5,52\n5,95,1\n", 0, 1},
        {"A,5,52,1\n", 1, 0},
        {"A,5,52,1\nB,5,52,1\nC,5,52,1\n", 3, 0},
        {"A,5,95,1\nB,5,52,1\nC,5,52,1\n", 2, 1},
        {"A,5,52,1\nB,5,x,1\nC,5,52,1\n", 2, 1},
        {"A,5,52,1\nB,5,52,1\nC,5,95,1\n", 2, 1},
    };
    const ProgramRun program;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.input);
        const auto result = program.convert(system, row.input, geojson);
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_EQ(features(result.out).size(), row.features);
        EXPECT_TRUE(result.out.endsWith(QLatin1Char('\n')));
        // A feature in a line, between that of the beginning and that of the end.
        EXPECT_EQ(result.outLines().size(), 2 + row.features);
    }
}

TEST(GeoJsonOutput, AFeatureHasTheObjectOfJsonForProperties)
{
    const ProgramRun program;
    const QStringList objects = program.convert(system, twoPoints, json).outLines();
    const QJsonArray found = features(program.convert(system, twoPoints, geojson).out);
    ASSERT_EQ(found.size(), 2);
    for (int i = 0; i < found.size(); ++i) {
        const QJsonObject feature = found.at(i).toObject();
        EXPECT_EQ(feature.keys(), (QStringList{"geometry", "properties", "type"}));
        EXPECT_EQ(feature.value("type"), QJsonValue("Feature"));
        EXPECT_EQ(feature.value("properties").toObject(), parsed(objects.at(i)));
    }
}

TEST(GeoJsonOutput, CoordinatesAreLongitudeLatitudeAndHeight)
{
    const auto result = ProgramRun().convert(system, twoPoints, geojson);
    EXPECT_TRUE(result.out.contains(
        QLatin1String("\"coordinates\":[5.25000000000,52.50000000000,-4.12500]")));
    EXPECT_EQ(coordinates(features(result.out).at(1)), (QJsonArray{-170.5, -12.5, 100.0}));
}

TEST(GeoJsonOutput, LongitudesLieWithin180Degrees)
{
    const auto result = ProgramRun().convert(
        system, "359,52,1\n-359,52,1\n180,52,1\n-180,52,1\n180.5,52,1\n360,52,1\n", geojson);
    ASSERT_EQ(result.status, 0) << result.err;
    const double expected[] = {-1.0, 1.0, 180.0, -180.0, -179.5, 0.0};
    const QJsonArray found = features(result.out);
    ASSERT_EQ(found.size(), 6);
    for (int i = 0; i < found.size(); ++i)
        EXPECT_EQ(coordinates(found.at(i)).at(0).toDouble(), expected[i]) << i;
}

/// Coordinates are plain degrees, whatever the style of the properties.
TEST(GeoJsonOutput, CoordinatesFollowNoOption)
{
    const auto result = ProgramRun().convert(
        system, "name,lon,lat,h_m\n" + QByteArray(twoPoints),
        geojson + QStringList{QStringLiteral("--angle=dms"), QStringLiteral("--length-unit=ft")});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(coordinates(features(result.out).at(0)), (QJsonArray{5.25, 52.5, -4.125}));
}

TEST(GeoJsonOutput, NamesNoReferenceSystem)
{
    const auto result = ProgramRun().convert(system, twoPoints, geojson);
    EXPECT_FALSE(result.out.contains(QLatin1String("crs")));
}

TEST(OutputForms, ExcludeEachOther)
{
    const ProgramRun program;
    const QStringList forms = {"--table", "--csv", "--json", "--geojson"};
    for (int i = 0; i < forms.size(); ++i) {
        for (int j = i + 1; j < forms.size(); ++j) {
            const auto result = program.convert(system, twoPoints, {forms.at(j), forms.at(i)});
            EXPECT_EQ(result.status, 2);
            EXPECT_EQ(result.out, QString());
            EXPECT_THAT(
                result.err,
                Mentions((forms.at(i) + " and " + forms.at(j) + " exclude each other").toUtf8()));
        }
    }
}

} // namespace
} // namespace KelStd
