// Sites and datums fitted and checked by the program.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <sys/stat.h>

#include <cmath>

namespace KelStd {
namespace {

using test::csvRows;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

void expectMentions(const QString &all, std::initializer_list<const char *> texts)
{
    for (const char *each : texts)
        EXPECT_THAT(all, test::Mentions(each));
}

QString rdNew()
{
    return test::systemPath(text("rd_new.xml"));
}

struct Place
{
    const char *name;
    double east, north, height; ///< in the plane of the system
};

constexpr Place placesOfSite[] = {
    {"A", 155000.0, 463000.0, 41.0}, {"B", 155800.0, 463050.0, 43.0},
    {"C", 155750.0, 463900.0, 42.0}, {"D", 155030.0, 463870.0, 47.0},
    {"E", 155400.0, 463420.0, 45.0},
};

/// A quarter turn, as a surveyor writes it down: site north is the system's west.
struct AtSite
{
    double north, east, height;
};

AtSite atSite(const Place &place)
{
    return {2000.0 - (place.east - 155000.0), 1000.0 + (place.north - 463000.0),
            place.height + 0.25};
}

QString number(double value, int decimals = 5)
{
    return QString::number(value, 'f', decimals);
}

class SiteCommands : public testing::Test
{
protected:
    void SetUp() override
    {
        QByteArray input = "name,northing,easting,height\n";
        for (const Place &place : placesOfSite) {
            input += QStringLiteral("%1,%2,%3,%4\n")
                         .arg(text(place.name), number(place.north), number(place.east),
                              number(place.height))
                         .toLatin1();
        }
        const ProgramResult result =
            m_program.run({text("convert"), text("--system"), rdNew(), text("--from"),
                           text("local-neh"), text("--csv"), text("-")},
                          input);
        ASSERT_EQ(result.status, 0) << result.err;
        m_rows = csvRows(result.out);
        ASSERT_EQ(m_rows.size(), 5);
    }

    /// A list of the control points: the template's %1 to %7 are name, longitude, latitude, height,
    /// northing, easting and elevation.
    QByteArray listOf(const char *headings, const char *line, char mark = '.') const
    {
        QByteArray list = QByteArray(headings) + '\n';
        for (int i = 0; i < m_rows.size(); ++i) {
            const Place &place = placesOfSite[i];
            const AtSite site = atSite(place);
            QString row =
                text(line)
                    .arg(text(place.name), m_rows.at(i).value(text("wgs84_longitude_deg")),
                         m_rows.at(i).value(text("wgs84_latitude_deg")),
                         m_rows.at(i).value(text("wgs84_height_m")))
                    .arg(number(site.north, 4), number(site.east, 4), number(site.height, 4));
            list += row.replace(QLatin1Char('.'), QLatin1Char(mark)).toLatin1() + '\n';
        }
        return list;
    }

    QByteArray usualList() const
    {
        return listOf("name,longitude,latitude,height,northing,easting,elevation",
                      "%1,%2,%3,%4,%5,%6,%7");
    }

    ProgramResult fit(const QByteArray &list, const QStringList &options = {text("--json")}) const
    {
        return m_program.run(QStringList{text("site"), text("fit"), text("--system"), rdNew(),
                                         text("--points"), m_program.file(text("points.txt"), list)}
                             + options);
    }

    static QJsonObject objectOf(const ProgramResult &result)
    {
        EXPECT_EQ(result.status, 0) << result.err;
        return QJsonDocument::fromJson(result.out.toUtf8()).object();
    }

    ProgramRun m_program;
    QList<QMap<QString, QString>> m_rows;
};

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

QStringList words(const char *list)
{
    return sorted(text(list).split(QLatin1Char(' ')));
}

TEST_F(SiteCommands, AFitPrintsOneObjectOfJson)
{
    const QJsonObject object = objectOf(fit(usualList()));
    EXPECT_EQ(object.keys(), words("horizontal vertical points warnings"));
    const QJsonObject plan = object.value(text("horizontal")).toObject();
    EXPECT_EQ(plan.keys(), words("method east_shift_m north_shift_m rotation_arcsec scale points "
                                 "redundancy s0_m rms_m max_m max_point"));
    EXPECT_EQ(plan.value(text("method")).toString(), text("four"));
    // E' = 1000 + N - 463000, N' = 2000 - E + 155000: a turn by 90 degrees.
    EXPECT_NEAR(plan.value(text("rotation_arcsec")).toDouble(), 324000.0, 0.01);
    EXPECT_NEAR(plan.value(text("scale")).toDouble(), 1.0, 1e-7);
    EXPECT_NEAR(plan.value(text("east_shift_m")).toDouble(), -462000.0, 0.05);
    EXPECT_NEAR(plan.value(text("north_shift_m")).toDouble(), 157000.0, 0.05);
    EXPECT_EQ(plan.value(text("redundancy")).toInt(), 6);
    EXPECT_LT(plan.value(text("rms_m")).toDouble(), 1e-4);

    const QJsonObject height = object.value(text("vertical")).toObject();
    EXPECT_EQ(height.keys(),
              words("method a b c d e f origin_north_m origin_east_m shift_at_centroid_m "
                    "slope_north_ppm slope_east_ppm points redundancy s0_m rms_m max_m max_point"));
    EXPECT_EQ(height.value(text("method")).toString(), text("plane"));
    EXPECT_NEAR(height.value(text("shift_at_centroid_m")).toDouble(), 0.25, 1e-4);
    EXPECT_TRUE(height.value(text("d")).isNull());
    EXPECT_TRUE(height.value(text("origin_east_m")).isNull());

    const QJsonArray points = object.value(text("points")).toArray();
    ASSERT_EQ(points.size(), 5);
    EXPECT_EQ(points.at(0).toObject().keys(),
              words("name use residual_north_m residual_east_m residual_height_m redundancy_h "
                    "redundancy_v test_h test_v left_out_north_m left_out_east_m left_out_height_m "
                    "suspect"));
    EXPECT_EQ(points.at(2).toObject().value(text("use")).toString(), text("hv"));
    EXPECT_FALSE(points.at(2).toObject().value(text("suspect")).toBool(true));
    const QJsonArray warnings = object.value(text("warnings")).toArray();
    ASSERT_EQ(warnings.size(), 1);
    expectMentions(warnings.at(0).toString(), {"plane", "5 points"});
}

TEST_F(SiteCommands, StandardDeviationsReplaceTheUnitOfS0)
{
    const QJsonObject object = objectOf(
        fit(usualList(), {text("--json"), text("--sigma-h"), text("0.01"), text("--sigma-v"),
                          text("0.02"), text("--vertical"), text("fixed")}));
    for (const char *part : {"horizontal", "vertical"}) {
        const QJsonObject half = object.value(text(part)).toObject();
        EXPECT_TRUE(half.contains(text("s0_m")));
        EXPECT_TRUE(half.value(text("s0_m")).isNull());
        EXPECT_TRUE(half.value(text("s0")).isDouble());
    }
    const QJsonObject height = object.value(text("vertical")).toObject();
    EXPECT_NEAR(height.value(text("a")).toDouble(), 0.25, 1e-4);
    EXPECT_TRUE(height.value(text("b")).isNull());
    EXPECT_TRUE(height.value(text("slope_north_ppm")).isNull());
}

TEST_F(SiteCommands, WhatIsNotUsedIsNull)
{
    QByteArray list = listOf("name;use;longitude;latitude;height;northing;easting;elevation",
                             "%1;hv;%2;%3;%4;%5;%6;%7");
    list.replace("A;hv", "A;h").replace("B;hv", "B;v").replace("C;hv", "C;-");
    const QJsonArray points = objectOf(fit(list)).value(text("points")).toArray();
    const auto valueOf = [&points](int point, const char *key) {
        return points.at(point).toObject().value(text(key));
    };
    EXPECT_EQ(valueOf(0, "use").toString(), text("h"));
    EXPECT_TRUE(valueOf(0, "residual_height_m").isNull());
    EXPECT_TRUE(valueOf(0, "residual_north_m").isDouble());
    EXPECT_TRUE(valueOf(1, "test_h").isNull());
    EXPECT_TRUE(valueOf(1, "residual_height_m").isDouble());
    for (const char *key :
         {"residual_north_m", "residual_height_m", "redundancy_h", "test_v", "left_out_east_m"})
        EXPECT_TRUE(valueOf(2, key).isNull()) << key;
}

TEST_F(SiteCommands, ListsAreReadByTheirHeadings)
{
    const QJsonObject expected = objectOf(fit(usualList())).value(text("horizontal")).toObject();
    const double east = expected.value(text("east_shift_m")).toDouble();
    const struct
    {
        const char *headings;
        const char *line;
        char mark;
    } rows[] = {
        {"elevation;easting;northing;h;lat;lon;point", "%7;%6;%5;%4;%3;%2;%1", '.'},
        {"name;longitude;latitude;height;northing;easting;elevation", "%1;%2;%3;%4;%5;%6;%7", ','},
        {"name\tlongitude\tlatitude\theight\tnorthing\teasting\televation",
         "%1\t%2\t%3\t%4\t%5\t%6\t%7", '.'},
        {"# measured on Monday\nname longitude latitude height northing easting elevation",
         "P%1 %2 %3 %4 %5 %6 %7", '.'},
        {"\xEF\xBB\xBFname,longitude,latitude,height,northing,easting,elevation\r",
         "%1,%2,%3,%4,%5,%6,%7\r", '.'},
        {"code,name,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,site_northing_m,"
         "site_easting_m,site_height_m",
         "x,%1,%2,%3,%4,%5,%6,%7", '.'},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.headings);
        const QJsonObject object = objectOf(fit(listOf(row.headings, row.line, row.mark)));
        EXPECT_EQ(
            object.value(text("horizontal")).toObject().value(text("east_shift_m")).toDouble(),
            east);
        EXPECT_EQ(object.value(text("vertical")).toObject().value(text("method")).toString(),
                  text("plane"));
    }
}

TEST_F(SiteCommands, LengthsHaveTheUnitOfTheirHeading)
{
    QByteArray list = "name,longitude,latitude,height,northing_ft,easting_us_ft,sigma_h_mm\n";
    for (int i = 0; i < m_rows.size(); ++i) {
        const AtSite site = atSite(placesOfSite[i]);
        list +=
            QStringLiteral("%1,%2,%3,%4,%5,%6,5\n")
                .arg(text(placesOfSite[i].name), m_rows.at(i).value(text("wgs84_longitude_deg")),
                     m_rows.at(i).value(text("wgs84_latitude_deg")),
                     m_rows.at(i).value(text("wgs84_height_m")), number(site.north / 0.3048, 4),
                     number(site.east * 3937.0 / 1200.0, 4))
                .toLatin1();
    }
    const QJsonObject object = objectOf(fit(list));
    EXPECT_NEAR(object.value(text("horizontal")).toObject().value(text("scale")).toDouble(), 1.0,
                1e-6);
    EXPECT_EQ(object.value(text("vertical")).toObject().value(text("method")).toString(),
              text("none"));
    EXPECT_TRUE(object.value(text("vertical")).toObject().value(text("a")).isNull());
}

// A site whose origin lies at N 190000, E 990000 of EPSG:2263, in US survey feet. By cs2cs.
TEST_F(SiteCommands, LengthsWithoutAHeadingsUnitHaveTheSystems)
{
    const QByteArray list = "name,longitude,latitude,height,northing,easting\n"
                            "A,-73.95,40.70,20,4309.2957,8114.0406\n"
                            "B,-73.94,40.70,20,4311.0367,10886.8484\n"
                            "C,-73.94,40.71,20,7954.3356,10884.3529\n";
    const QString file = m_program.file(text("feet.csv"), list);
    const auto result = m_program.run({text("site"), text("fit"), text("--system"),
                                       text("EPSG:2263"), text("--points"), file, text("--json")});
    ASSERT_EQ(result.status, 0) << result.err;
    expectMentions(result.err, {"northing and easting are read in us-ft, the unit of the system"});
    const QJsonObject plane = objectOf(result).value(text("horizontal")).toObject();
    EXPECT_NEAR(plane.value(text("scale")).toDouble(), 1.0, 1e-6);
    EXPECT_NEAR(plane.value(text("north_shift_m")).toDouble(), -190000.0 * 1200.0 / 3937.0, 0.02);
    EXPECT_NEAR(plane.value(text("east_shift_m")).toDouble(), -990000.0 * 1200.0 / 3937.0, 0.02);
}

TEST_F(SiteCommands, DoubtfulListsAreRefusedWhole)
{
    const QByteArray good = usualList();
    QByteArray comma =
        listOf("name;longitude;latitude;height;northing;easting;elevation", "%1;%2;%3;%4;%5;%6;%7");
    const struct
    {
        const char *title;
        QByteArray list;
        int status;
        const char *says;
    } rows[] = {
        {"nothing", "", 2, "no headings"},
        {"no headings", good.mid(good.indexOf('\n') + 1), 2, "headings"},
        {"no easting", QByteArray(good).replace("easting", "rechts"), 2, "no easting"},
        {"two northings", QByteArray(good).replace("elevation", "north"), 2, "northing twice"},
        {"a field too few", good + "F,5.4,52.1\n", 1, "3 fields"},
        {"no number", good + "F,5.4,52.1,1,2,x,3\n", 1, "\"x\""},
        {"no name", good + ",5.4,52.1,1,2,3,4\n", 1, "name"},
        {"a latitude of 95", good + "F,5.4,95,1,2,3,4\n", 1, "95"},
        {"degrees and minutes in one", good + "F,00530.25,52.1,1,2,3,4\n", 1, "00530.25"},
        {"an unknown use",
         listOf("name,longitude,latitude,height,northing,easting,use", "%1,%2,%3,%4,%5,%6,both"), 1,
         "\"both\""},
        {"thousands or decimals", comma + "F;5.4;52.1;1;2,345;3;4\n", 1, "comma"},
        {"a name twice", good + "A,5.4,52.1,1,2,3,4\n", 1, "\"A\" is there twice"},
        {"radians", QByteArray(good).replace("longitude", "longitude_rad"), 1, "rad"},
        {"minutes in a column", QByteArray(good).replace("latitude", "minutes,latitude"), 2,
         "minutes"},
        {"UTF-16", QByteArray("\xFF\xFEn\0a\0m\0e\0\n\0", 12), 2, "no longitude"},
        {"nan", good + "F,5.4,52.1,nan,2,3,4\n", 1, "nan"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.title);
        const ProgramResult result = fit(row.list);
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_TRUE(result.out.isEmpty());
        expectMentions(result.err, {row.says});
    }
}

TEST_F(SiteCommands, ASiteIsFittedStoredCheckedAndUsed)
{
    const QString site = m_program.home().path(text("site.xml"));
    const ProgramResult fitted =
        fit(usualList(), {text("-o"), site, text("--name"), text("Building 7")});
    EXPECT_EQ(fitted.status, 0) << fitted.err;
    expectMentions(fitted.out, {"Plan", "four", "Height", "plane", "RMS", "Wrote"});
    EXPECT_EQ(fit(usualList(), {text("-o"), site}).status, 2); // it exists

    const QJsonObject check = objectOf(
        m_program.run({text("site"), text("check"), text("--system"), site, text("--points"),
                       m_program.file(text("check.csv"), usualList()), text("--json")}));
    EXPECT_EQ(check.keys(), words("points horizontal vertical"));
    EXPECT_EQ(check.value(text("horizontal")).toObject().keys(), words("rms_m max_m max_point"));
    EXPECT_EQ(check.value(text("points")).toArray().at(0).toObject().keys(),
              words("name difference_north_m difference_east_m difference_height_m"));
    EXPECT_LT(check.value(text("horizontal")).toObject().value(text("max_m")).toDouble(), 1e-4);
    EXPECT_LT(check.value(text("vertical")).toObject().value(text("rms_m")).toDouble(), 1e-4);

    // Inside the hull nothing is said, outside a warning.
    const QStringList convert = {text("convert"),   text("--system"), site,     text("--from"),
                                 text("local-neh"), text("--csv"),    text("-")};
    // So of the control points themselves, whose residuals put them on either side of it.
    QByteArray input = "northing,easting,height\n463420,155400,45\n";
    for (const Place &place : placesOfSite)
        input += (number(place.north) + text(",") + number(place.east) + text(",1\n")).toLatin1();
    const ProgramResult inside = m_program.run(convert, input);
    EXPECT_EQ(inside.status, 0) << inside.err;
    EXPECT_FALSE(inside.err.contains(text("hull"))) << inside.err;
    const auto row = csvRows(inside.out).first();
    const AtSite expected = atSite(placesOfSite[4]);
    EXPECT_NEAR(numberIn(row, text("site_northing_m")), expected.north, 1e-4);
    EXPECT_NEAR(numberIn(row, text("site_easting_m")), expected.east, 1e-4);
    EXPECT_NEAR(numberIn(row, text("site_height_m")), expected.height, 1e-4);
    const ProgramResult outside =
        m_program.run(convert, "northing,easting,height\n463420,155400,45\n463420,154000,45\n");
    EXPECT_EQ(outside.status, 0);
    expectMentions(outside.err, {"outside the hull", "1 of 2", ":3"});
}

TEST_F(SiteCommands, ALibraryTakesASiteByItsOwnNameOnly)
{
    expectMentions(fit(usualList(), {text("--add")}).err, {"--add needs --name"});
    EXPECT_EQ(fit(usualList(), {text("--add")}).status, 2);
    const ProgramResult added =
        fit(usualList(), {text("--add"), text("--name"), text("Building 7")});
    EXPECT_EQ(added.status, 0) << added.err;
    EXPECT_EQ(fit(usualList(), {text("--add"), text("--name"), text("Building 7")}).status, 1);
    const ProgramResult used = m_program.run(
        {text("convert"), text("--system"), text("Building 7"), text("--csv"), text("-")},
        "5.39,52.16,90\n");
    EXPECT_EQ(used.status, 0) << used.err;
    expectMentions(used.out, {"site_northing_m"});
}

TEST_F(SiteCommands, PointsAreLeftOutByName)
{
    const QJsonObject object =
        objectOf(fit(usualList(), {text("--json"), text("--without"), text("A, C"),
                                   text("--without"), text("E")}));
    EXPECT_EQ(object.value(text("horizontal")).toObject().value(text("points")).toInt(), 2);
    EXPECT_EQ(object.value(text("horizontal")).toObject().value(text("redundancy")).toInt(), 0);
    EXPECT_TRUE(object.value(text("horizontal")).toObject().value(text("s0_m")).isNull());
    expectMentions(fit(usualList(), {text("--without"), text("Z")}).err, {"\"Z\""});
}

TEST_F(SiteCommands, UsageIsRefused)
{
    const struct
    {
        QStringList options;
        const char *says;
    } rows[] = {
        {{text("--horizontal"), text("five")}, "--horizontal 'five'"},
        {{text("--vertical"), text("Plane")}, "--vertical 'Plane'"},
        {{text("--sigma-h"), text("0")}, "--sigma-h is not positive"},
        {{text("--sigma-v"), text("x")}, "--sigma-v"},
        {{text("--report"), text("")}, "--report"},
        {{text("--report"), rdNew()}, "another file"},
        {{text("-o"), rdNew(), text("--force")}, "source"},
    };
    for (const auto &row : rows) {
        const ProgramResult result = fit(usualList(), row.options);
        EXPECT_EQ(result.status, 2) << result.err;
        expectMentions(result.err, {row.says});
    }
}

TEST_F(SiteCommands, NothingIsLeftBehindWhereAReportCannotBeWritten)
{
    const QString missing = m_program.home().path(text("no/such/report.html"));
    EXPECT_EQ(fit(usualList(), {text("--report"), missing}).status, 3);
    EXPECT_FALSE(QFile::exists(missing));

    // A pipe, as a device, is no place for a report, and stays what it is.
    const QString pipe = m_program.home().path(text("pipe"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const ProgramResult result = fit(usualList(), {text("--report"), pipe, text("--force")});
    EXPECT_EQ(result.status, 3) << result.err;
    expectMentions(result.err, {"no regular file"});
    struct stat status
    {};
    ASSERT_EQ(stat(QFile::encodeName(pipe).constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));

    // What is there stays where it is not to be replaced.
    const QString report = m_program.file(text("report.html"), "mine");
    EXPECT_EQ(fit(usualList(), {text("--report"), report}).status, 2);
    EXPECT_EQ(test::readFile(report), QByteArray("mine"));
    EXPECT_EQ(fit(usualList(), {text("--report"), report, text("--force")}).status, 0);
    const QString written = QString::fromUtf8(test::readFile(report));
    expectMentions(written, {"Site calibration", "+proj=pipeline"});
}

TEST_F(SiteCommands, ADatumIsFittedToPairsOfEitherKind)
{
    // Three translations, by hand: local X, Y, Z and the same with 100, -50 and 25.5 added.
    const QByteArray cartesian = "wgs84_x,wgs84_y,wgs84_z,name,local_x,local_y,local_z\n"
                                 "3903420.5,379950,5010365.5,A,3903320.5,380000,5010340\n"
                                 "3903100.5,379150,5010635.5,B,3903000.5,379200,5010610\n"
                                 "3902800.5,380950,5010725.5,C,3902700.5,381000,5010700\n"
                                 "3903900.5,381050,5009925.5,D,3903800.5,381100,5009900\n";
    const auto fitPairs = [this](const QByteArray &list, const QStringList &options) {
        return m_program.run(QStringList{text("datum"), text("fit"), text("--system"), rdNew(),
                                         text("--pairs"), m_program.file(text("pairs.csv"), list)}
                             + options);
    };
    const QJsonObject object =
        objectOf(fitPairs(cartesian, {text("--json"), text("--parameters"), text("three")}));
    for (const char *key : {"x_m", "y_m", "z_m", "rx_arcsec", "ry_arcsec", "rz_arcsec", "scale_ppm",
                            "linear", "s0_m", "points"})
        EXPECT_TRUE(object.contains(text(key))) << key;
    EXPECT_NEAR(object.value(text("x_m")).toDouble(), 100.0, 1e-6);
    EXPECT_NEAR(object.value(text("y_m")).toDouble(), -50.0, 1e-6);
    EXPECT_NEAR(object.value(text("z_m")).toDouble(), 25.5, 1e-6);
    EXPECT_EQ(object.value(text("linear")).toObject().keys(),
              words("x_m y_m z_m rx_arcsec ry_arcsec rz_arcsec scale_ppm"));
    EXPECT_EQ(object.value(text("points")).toArray().at(0).toObject().keys(),
              words("name residual_x_m residual_y_m residual_z_m suspect"));

    // The program's own conversions as pairs: the document's shift, published for the system.
    QByteArray geographic = "name;local_longitude;local_latitude;local_height;wgs84_longitude;"
                            "wgs84_latitude;wgs84_height\n";
    for (int i = 0; i < m_rows.size(); ++i) {
        geographic += placesOfSite[i].name;
        for (const char *key :
             {"local_longitude_deg", "local_latitude_deg", "local_ellipsoidal_height_m",
              "wgs84_longitude_deg", "wgs84_latitude_deg", "wgs84_height_m"})
            geographic += ';' + m_rows.at(i).value(text(key)).toLatin1();
        geographic += '\n';
    }
    const QString file = m_program.home().path(text("shifted.xml"));
    const ProgramResult result = fitPairs(geographic, {text("-o"), file});
    EXPECT_EQ(result.status, 0) << result.err;
    const ProgramResult converted =
        m_program.run({text("convert"), text("--system"), file, text("--from"), text("local-neh"),
                       text("--csv"), text("-")},
                      "name,northing,easting,height\nE,463420,155400,45\n");
    ASSERT_EQ(converted.status, 0) << converted.err;
    const auto row = csvRows(converted.out).first();
    for (const char *key : {"wgs84_x_m", "wgs84_y_m", "wgs84_z_m"})
        EXPECT_NEAR(numberIn(row, text(key)), numberIn(m_rows.at(4), text(key)), 1e-4);

    const ProgramResult headless = fitPairs("name,local_x,local_y,local_z\nA,1,2,3\nB,4,5,6\n", {});
    expectMentions(headless.err, {":1: the headings have to name wgs84_x"});
    EXPECT_EQ(headless.errLines().size(), 1);
    EXPECT_EQ(headless.status, 2);
    EXPECT_EQ(fitPairs(geographic.left(geographic.lastIndexOf(';')), {}).status, 1);
    EXPECT_EQ(fitPairs(cartesian, {text("--parameters"), text("six")}).status, 2);
}

} // namespace
} // namespace KelStd
