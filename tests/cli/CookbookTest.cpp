// The jobs of docs/cookbook.md: each prints what the page shows, and other programs get the same.

#include "cli/Kitchen.h"
#include "cli/vector/VectorRun.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <cmath>

namespace KelStd {
namespace {

using test::Kitchen;
using test::numberIn;
using test::toolOutput;
using test::words;

constexpr double printed =
    6e-6; ///< half of the last digit of a length in CSV, and its rounding [m]

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The values of a field as ogrinfo shows them, empty ones alike.
QStringList ogrValues(const QString &file, const QString &field)
{
    const QRegularExpression line(QStringLiteral("^  %1 \\(\\w+\\) = (.*)$").arg(field),
                                  QRegularExpression::MultilineOption);
    QStringList values;
    auto matches = line.globalMatch(
        toolOutput(text("ogrinfo"), {text("-al"), file, text("-oo"), text("AUTODETECT_TYPE=NO")}));
    while (matches.hasNext())
        values += matches.next().captured(1).replace(text("(null)"), QString());
    return values;
}

/// Numbers that a field holds, with points or commas.
QList<double> ogrNumbers(const QString &file, const QString &field)
{
    QList<double> numbers;
    for (QString value : ogrValues(file, field))
        numbers += value.replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
    return numbers;
}

/// The numbers in a line that a program of PROJ gives for `input`.
QList<double> projNumbers(const char *program, const QString &arguments, const QList<double> &input)
{
    QByteArray line;
    for (const double number : input)
        line += QByteArray::number(number, 'g', 17) + ' ';
    QList<double> numbers;
    const QString output = toolOutput(text(program), words(arguments), line + '\n');
    for (const QString &word : words(output.simplified()))
        numbers += word.toDouble();
    return numbers;
}

TEST(Cookbook, HasTheseJobs)
{
    EXPECT_EQ(test::cookbookHeadings(),
              (QStringList{text("Positions of a receiver, live"),
                           text("A controller's list to a drawing and back"),
                           text("A Shapefile of one system to a GeoPackage of another"),
                           text("State plane feet to WGS84"), text("To a spreadsheet and back"),
                           text("Distances reduced to the ellipsoid and to the plane"),
                           text("A whole survey in every format")}));
}

TEST(Readme, ItsCommandsPrintWhatItShows)
{
    const Kitchen kitchen;
    const auto commands = test::commandsOf(test::sourceText(text("README.md")));
    EXPECT_EQ(kitchen.cook(commands, kitchen.path(text(".."))).size(), 3);
}

// GPSBabel reads the same log. It has no heights above the ellipsoid; those are gpsd's.
TEST(Cookbook, ReadsALiveReceiver)
{
    const Kitchen kitchen;
    const auto rows =
        test::printedRows(kitchen.cook(text("Positions of a receiver, live")).value(0));
    const QString log = kitchen.path(text("receiver.nmea"));
    static const QRegularExpression point(
        text("<trkpt lat=\"([-\\d.]+)\" lon=\"([-\\d.]+)\">.*?<time>([^<]+)</time>"),
        QRegularExpression::DotMatchesEverythingOption);
    auto peer = point.globalMatch(
        toolOutput(text("gpsbabel"), {text("-i"), text("nmea"), text("-f"), log, text("-o"),
                                      text("gpx"), text("-F"), text("-")}));
    QMap<QString, double> heights;
    for (const QString &line : toolOutput(text("gpsdecode"), {text("-j")}, test::readFile(log))
                                   .split(QLatin1Char('\n'))) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        if (object.contains(text("altHAE")))
            heights.insert(object.value(text("time")).toString(),
                           object.value(text("altHAE")).toDouble());
    }
    ASSERT_EQ(rows.size(), 2);
    EXPECT_FALSE(heights.isEmpty());
    for (const auto &row : rows) {
        ASSERT_TRUE(peer.hasNext());
        const auto match = peer.next();
        const QDateTime time = QDateTime::fromString(match.captured(3), Qt::ISODateWithMs);
        EXPECT_EQ(QDateTime::fromString(row.value(text("utc")), Qt::ISODateWithMs), time);
        const auto plane = test::cs2csEastNorth(text("EPSG:32631"), match.captured(2).toDouble(),
                                                match.captured(1).toDouble());
        constexpr double ninthDecimal = 1.2e-4; // of a degree, that GPSBabel prints [m]
        EXPECT_NEAR(numberIn(row, text("local_easting_m")), plane.first, ninthDecimal);
        EXPECT_NEAR(numberIn(row, text("local_northing_m")), plane.second, ninthDecimal);
        const QString key = time.toUTC().toString(Qt::ISODateWithMs);
        if (heights.contains(key)) {
            EXPECT_NEAR(numberIn(row, text("local_height_m")), heights.take(key), 6e-5);
        }
    }
    EXPECT_TRUE(heights.isEmpty());
}

TEST(Cookbook, DrawsAControllersListAndReadsItBack)
{
    const Kitchen kitchen;
    const QStringList printedTexts =
        kitchen.cook(text("A controller's list to a drawing and back"));
    const QString list = kitchen.path(text("controller.csv"));
    const QStringList names = ogrValues(list, text("Point"));
    ASSERT_EQ(names.size(), 4);

    const auto drawn = test::ogrRows(kitchen.path(text("plan.dxf")));
    ASSERT_EQ(drawn.size(), 8);
    for (int i = 0; i < 4; ++i) {
        const auto &point = drawn[2 * i];
        EXPECT_EQ(point.value(text("Layer")), text("POINTS"));
        EXPECT_EQ(drawn[2 * i + 1].value(text("Layer")), text("NAMES"));
        EXPECT_EQ(drawn[2 * i + 1].value(text("Text")), QLatin1Char('"') + names[i] + '"');
        EXPECT_NEAR(numberIn(point, text("X")), ogrNumbers(list, text("Easting"))[i], printed);
        EXPECT_NEAR(numberIn(point, text("Y")), ogrNumbers(list, text("Northing"))[i], printed);
        EXPECT_NEAR(numberIn(point, text("Z")), ogrNumbers(list, text("Height"))[i], printed);
    }

    // Back as it went, by GDAL's reading of both lists.
    QString csv;
    for (const QString &line : printedTexts.value(1).split(QLatin1Char('\n'))) {
        if (!line.startsWith(QLatin1String("kelstd: ")))
            csv += line + QLatin1Char('\n');
    }
    const QString back = kitchen.path(text("back.csv"));
    test::writeFile(back, csv.toUtf8());
    EXPECT_EQ(ogrValues(back, text("point")), names);
    for (const char *field : {"Code", "Remark"})
        EXPECT_EQ(ogrValues(back, text(field)), ogrValues(list, text(field)));
    const char *const columns[][2] = {{"local_northing_m", "Northing"},
                                      {"local_easting_m", "Easting"},
                                      {"local_height_m", "Height"}};
    for (const auto &column : columns)
        EXPECT_EQ(ogrNumbers(back, text(column[0])), ogrNumbers(list, text(column[1])));
}

// ED50 to WGS 84 (18), EPSG:1311, as the EPSG Dataset has it: position vector transformation.
TEST(Cookbook, TakesAShapefileToAGeoPackage)
{
    const Kitchen kitchen;
    kitchen.cook(text("A Shapefile of one system to a GeoPackage of another"));
    const QString wells = kitchen.path(text("wells.shp"));
    const QString result = kitchen.path(text("wells.gpkg"));
    const auto ogr = [&](const QStringList &options) {
        return test::csvRows(
            toolOutput(text("ogr2ogr"), QStringList{text("-f"), text("CSV"), text("/vsistdout/"),
                                                    wells, text("-lco"), text("GEOMETRY=AS_XY"),
                                                    text("-t_srs"), text("EPSG:32631")}
                                            + options));
    };
    const auto peer =
        ogr({text("-ct"), text("+proj=pipeline +step +inv +proj=utm +zone=31 +ellps=intl "
                               "+step +proj=cart +ellps=intl +step +proj=helmert +x=-89.5 "
                               "+y=-93.8 +z=-123.1 +rx=0 +ry=0 +rz=-0.156 +s=1.2 "
                               "+convention=position_vector +step +inv +proj=cart "
                               "+ellps=WGS84 +step +proj=utm +zone=31 +ellps=WGS84")});
    const auto others = ogr({});
    const auto rows = test::ogrRows(result);
    ASSERT_EQ(rows.size(), 3);
    ASSERT_EQ(peer.size(), 3);
    ASSERT_EQ(others.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const double easting = numberIn(rows[i], text("X"));
        const double northing = numberIn(rows[i], text("Y"));
        EXPECT_NEAR(easting, numberIn(peer[i], text("X")), printed);
        EXPECT_NEAR(northing, numberIn(peer[i], text("Y")), printed);
        EXPECT_NEAR(std::hypot(easting - numberIn(others[i], text("X")),
                               northing - numberIn(others[i], text("Y"))),
                    0.5, 0.05); // what the page says of the other shift
        EXPECT_NEAR(numberIn(rows[i], text("Z")), 44, 0.6);
        EXPECT_EQ(rows[i].value(text("point")), peer[i].value(text("well")));
        EXPECT_EQ(rows[i].value(text("status")), peer[i].value(text("status")));
        EXPECT_EQ(numberIn(rows[i], text("depth")), numberIn(peer[i], text("depth")));
        EXPECT_EQ(rows[i].value(text("spud")), peer[i].value(text("spud")));
    }
    EXPECT_EQ(toolOutput(text("gdalsrsinfo"), {text("-o"), text("epsg"), result}).trimmed(),
              text("EPSG:32631"));
}

TEST(Cookbook, TakesFeetToWgs84)
{
    const Kitchen kitchen;
    const auto rows = test::printedRows(kitchen.cook(text("State plane feet to WGS84")).value(0));
    const QString list = kitchen.path(text("state_plane.csv"));
    ASSERT_EQ(rows.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const auto place = projNumbers("cs2cs", text("-f %.11f EPSG:2263 +to EPSG:4326"),
                                       {ogrNumbers(list, text("easting_usft")).value(i),
                                        ogrNumbers(list, text("northing_usft")).value(i)});
        // PROJ takes latitudes of GRS 1980 as those of WGS 84, 0.1 mm away.
        constexpr double degrees = 2e-9;
        EXPECT_NEAR(numberIn(rows[i], text("wgs84_latitude_deg")), place.value(0), degrees);
        EXPECT_NEAR(numberIn(rows[i], text("wgs84_longitude_deg")), place.value(1), degrees);
        EXPECT_NEAR(numberIn(rows[i], text("wgs84_height_m")),
                    ogrNumbers(list, text("elevation_usft")).value(i) * 1200 / 3937, 1e-4);
    }
    EXPECT_EQ(ogrValues(list, text("description")).value(2), rows[2].value(text("description")));
}

TEST(Cookbook, GoesToASpreadsheetAndBack)
{
    const Kitchen kitchen;
    const QStringList printedTexts = kitchen.cook(text("To a spreadsheet and back"));
    const QString list = kitchen.path(text("controller.csv"));
    const QString office = kitchen.path(text("office.csv"));
    const QByteArray bytes = test::readFile(office);
    EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBFpoint;"));
    EXPECT_EQ(bytes.count("\r\n"), 5);
    EXPECT_EQ(bytes.count('\n'), 5);
    const char *const columns[][2] = {{"local_northing_m", "Northing"},
                                      {"local_easting_m", "Easting"},
                                      {"local_height_m", "Height"}};
    for (const auto &column : columns)
        EXPECT_EQ(ogrNumbers(office, text(column[0])), ogrNumbers(list, text(column[1])));
    for (const char *field : {"Code", "Remark"})
        EXPECT_EQ(ogrValues(office, text(field)), ogrValues(list, text(field)));
    const auto latitudes = ogrNumbers(office, text("wgs84_latitude_deg"));
    const auto longitudes = ogrNumbers(office, text("wgs84_longitude_deg"));
    ASSERT_EQ(latitudes.size(), 4);
    for (int i = 0; i < 4; ++i) {
        const auto place = projNumbers(
            "cs2cs", text("-f %.11f EPSG:28992 +to EPSG:4326"),
            {ogrNumbers(list, text("Easting"))[i], ogrNumbers(list, text("Northing"))[i]});
        // cs2cs has no height to shift, which moves the foot of the plumb line by 0.1 mm.
        EXPECT_NEAR(latitudes[i], place.value(0), 2e-9);
        EXPECT_NEAR(longitudes[i], place.value(1), 2e-9);
    }
    // Behind a note on the columns of the frame that is not wanted any more.
    ASSERT_TRUE(printedTexts.value(2).startsWith(text("kelstd: note: ")));
    const QString back = kitchen.path(text("back.csv"));
    test::writeFile(back, printedTexts.value(2).section(QLatin1Char('\n'), 1).toUtf8());
    for (const auto &column : columns)
        EXPECT_EQ(ogrNumbers(back, text(column[0])), ogrNumbers(list, text(column[1])));
    for (const char *field : {"Code", "Remark"})
        EXPECT_EQ(ogrValues(back, text(field)), ogrValues(list, text(field)));
}

// W. Torge, "Geodesy", reduction of distances: s0^2 = (D^2 - dh^2) / ((1 + h1/R) (1 + h2/R)). The
// distance on the ellipsoid is geod's, scale and convergence are those of proj -V.
TEST(Cookbook, ReducesDistances)
{
    const Kitchen kitchen;
    const QString heading = text("Distances reduced to the ellipsoid and to the plane");
    const auto rows = test::printedRows(kitchen.cook(heading).value(0));
    ASSERT_EQ(rows.size(), 2);
    const QString list = kitchen.path(text("traverse.csv"));
    const QString utm = text("+proj=utm +zone=32 +ellps=GRS80");
    QList<QList<double>> planes;
    QList<QList<double>> places;
    QList<QList<double>> xyz;
    for (int i = 0; i < 2; ++i) {
        planes += {ogrNumbers(list, text("easting"))[i], ogrNumbers(list, text("northing"))[i],
                   ogrNumbers(list, text("height"))[i]};
        places += projNumbers(
            "cs2cs", text("-f %.12f ") + utm + text(" +to +proj=longlat +ellps=GRS80"), planes[i]);
        xyz += projNumbers(
            "cs2cs", text("-f %.6f ") + utm + text(" +to +proj=geocent +ellps=GRS80"), planes[i]);
        const QString factors = toolOutput(text("proj"), QStringList(text("-V")) + words(utm),
                                           QByteArray::number(places[i][0], 'g', 17) + ' '
                                               + QByteArray::number(places[i][1], 'g', 17) + '\n');
        static const QRegularExpression scale(text("Meridian scale \\(h\\) : ([\\d.]+)"));
        static const QRegularExpression angle(text("Convergence : .* \\[ ([-\\d.]+) \\]"));
        EXPECT_NEAR(numberIn(rows[i], text("point_scale")),
                    scale.match(factors).captured(1).toDouble(), 6e-9);
        EXPECT_NEAR(numberIn(rows[i], text("convergence_deg")),
                    angle.match(factors).captured(1).toDouble(), 6e-8);
    }
    const double slope =
        std::hypot(xyz[1][0] - xyz[0][0], std::hypot(xyz[1][1] - xyz[0][1], xyz[1][2] - xyz[0][2]));
    const double rise = planes[1][2] - planes[0][2];
    const double horizontal = std::sqrt(slope * slope - rise * rise);
    const auto mean = [&rows](const char *column) {
        return (numberIn(rows[0], text(column)) + numberIn(rows[1], text(column))) / 2;
    };
    const double onEllipsoid = horizontal * mean("elevation_factor");
    const double inPlane = horizontal * mean("combined_factor");
    // 1/R along the line is not that of the mean radius: 3e-3 of h/R at most, 0.2 mm here.
    const auto geod = projNumbers("geod", text("-I -F %.6f -f %.9f +ellps=GRS80"),
                                  {places[0][1], places[0][0], places[1][1], places[1][0]});
    EXPECT_NEAR(onEllipsoid, geod.value(2), 2e-4);
    EXPECT_NEAR(inPlane, std::hypot(planes[1][0] - planes[0][0], planes[1][1] - planes[0][1]),
                2e-4);

    const QString part = test::cookbookPart(heading);
    for (const double shown : {slope, rise, horizontal, onEllipsoid, inPlane})
        EXPECT_TRUE(part.contains(QString::number(shown, 'f', 3))) << shown;
    for (const char *column : {"elevation_factor", "combined_factor"})
        EXPECT_TRUE(part.contains(QString::number(mean(column) + 1e-12, 'f', 9))) << column;
}

} // namespace
} // namespace KelStd
