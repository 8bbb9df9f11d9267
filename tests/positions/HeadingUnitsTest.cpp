// Components, frames and units that headings name: what docs/values.md says of each.

#include "positions/ParsedInput.h"
#include "support/Mentions.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/text/UnitWords.h>

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using positions::Frame;
using positions::InputForm;
using positions::InputHeight;
using test::Mentions;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

/// The cells of a row of a table of the page, without their code marks.
QStringList cellsOf(const QString &row)
{
    QStringList cells = row.split(QLatin1Char('|'));
    cells = cells.mid(1, cells.size() - 2);
    for (QString &cell : cells)
        cell = cell.remove(QLatin1Char('`')).trimmed();
    return cells;
}

/// The rows of the page's table with that heading line.
QList<QStringList> tableOf(const QString &headings)
{
    const QString page =
        QString::fromUtf8(test::readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/docs/values.md")));
    const QStringList lines =
        page.section(headings + QLatin1Char('\n'), 1).split(QLatin1Char('\n'));
    QList<QStringList> rows;
    for (const QString &line : lines.mid(1)) {
        if (!line.startsWith(QLatin1Char('|')))
            break;
        rows += cellsOf(line);
    }
    return rows;
}

positions::PositionParser parserOf(const QString &from, const QString &options)
{
    const bool isAtSite = from == QLatin1String(positions::siteFrameName);
    InputForm form = isAtSite ? InputForm::atSite() : InputForm(positions::findFrame(from)->frame);
    form.missingHeight = positions::MissingHeight();
    QByteArray columns;
    qint64 skipped = 0;
    const QStringList words = options.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (int i = 0; i + 1 < words.size(); i += 2) {
        const QString &value = words.at(i + 1);
        if (words.at(i) == QLatin1String("--columns")) {
            columns = value.toUtf8();
        } else if (words.at(i) == QLatin1String("--skip")) {
            skipped = value.toInt();
        } else if (words.at(i) == QLatin1String("--length-unit")) {
            form.lengthUnit = findLengthUnit(value)->unit;
            form.hasLengthUnit = true;
        } else if (words.at(i) == QLatin1String("--height")) {
            form.missingHeight = positions::MissingHeight{value.toDouble(), true, {}};
        } else {
            ADD_FAILURE() << "unknown option " << words.at(i);
        }
    }
    return parserFor(form, columns.constData(), skipped);
}

TEST(HeadingUnits, AreReadOrRefusedAsThePageOnValuesSays)
{
    const QList<QStringList> rows =
        tableOf(QStringLiteral("| `--from` | options | headings | a line | read as |"));
    EXPECT_GT(rows.size(), 40);
    const QString refused = QStringLiteral("refused: ");
    const QString fails = QStringLiteral("fails: ");
    for (const QStringList &row : rows) {
        SCOPED_TRACE(row.join(QLatin1String(" | ")).toStdString());
        ASSERT_EQ(row.size(), 5);
        const QString headings = row.at(2).isEmpty() ? QString() : row.at(2) + QLatin1Char('\n');
        const ParsedInput all = parsed(parserOf(row.at(0), row.at(1)),
                                       (headings + row.at(3) + QLatin1Char('\n')).toUtf8());
        if (row.at(4).startsWith(refused)) {
            EXPECT_TRUE(all.positions.empty());
            const bool isFirst = all.end.startsWith(QLatin1String("1: "));
            EXPECT_TRUE(isFirst || all.end.startsWith(QLatin1String("2: "))) << all.end;
            EXPECT_THAT(all.end, Mentions(row.at(4).mid(refused.size()).toUtf8().constData()));
            continue;
        }
        if (row.at(4).startsWith(fails)) {
            ASSERT_EQ(all.failures.size(), 1U);
            EXPECT_THAT(all.failures.front(),
                        Mentions(row.at(4).mid(fails.size()).toUtf8().constData()));
            continue;
        }
        EXPECT_EQ(all.end, QString());
        ASSERT_EQ(all.positions.size(), 1U);
        const stXYZ &read = all.positions.front().getXYZ();
        const bool isPlane = row.at(0).endsWith(QLatin1String("-neh"));
        const QStringList numbers = row.at(4).split(QLatin1String(", "));
        ASSERT_EQ(numbers.size(), 3);
        EXPECT_NEAR(isPlane ? read.y : read.x, numbers.at(0).toDouble(), 1e-9);
        EXPECT_NEAR(isPlane ? read.x : read.y, numbers.at(1).toDouble(), 1e-9);
        EXPECT_NEAR(read.z, numbers.at(2).toDouble(), 1e-9);
    }
}

struct UnitWord
{
    const char *heading;
    const char *shown;
};

struct UnitOfHeight
{
    const char *heading;
    double metres; ///< of 40; 0: it is refused
    const char *shown;
};

/// The foot is 0.3048 m by definition, the US survey foot 1200/3937 m, the Clarke foot of the EPSG
/// Dataset (9005) 0.3047972654 m.
TEST(HeadingUnits, LengthsAreKnownInTheirSpellings)
{
    const UnitOfHeight rows[] = {
        {"height_ft", 12.192, ""},
        {"height [ft]", 12.192, ""},
        {"Height (feet)", 12.192, ""},
        {"h_foot", 12.192, ""},
        {"heightft", 12.192, ""},
        {"h_us_ft", 12.192024384048768, ""},
        {"h (US survey foot)", 12.192024384048768, ""},
        {"H US FT", 12.192024384048768, ""},
        {"h [ftUS]", 12.192024384048768, ""},
        {"h_usft", 12.192024384048768, ""},
        {"h_clarke_ft", 12.191890616, ""},
        {"height in cm", 0.4, ""},
        {"h_mm", 0.04, ""},
        {"h_km", 40000.0, ""},
        {"h_dm", 4.0, ""},
        {"h_yd", 0.0, "yd"},
        {"h (inches)", 0.0, "in"},
        {"h_link", 0.0, "links"},
        {"h_chains", 0.0, "chains"},
        {"h_fathoms", 0.0, "fathoms"},
        {"h_mile", 0.0, "mi"},
        {"h_deg", 0.0, "deg"},
    };
    for (const UnitOfHeight &row : rows) {
        for (const char *columns : {"", "n,e,3"}) {
            SCOPED_TRACE(row.heading);
            const ParsedInput all =
                parsed(parserFor(Frame::LocalProjected, columns),
                       "n;e;" + QByteArray(row.heading) + "\n463000;155000;40\n");
            if (row.metres == 0.0) {
                EXPECT_TRUE(all.positions.empty());
                EXPECT_THAT(all.end, Mentions(QByteArray("is in ") + row.shown
                                              + ", but height is read in m"));
                continue;
            }
            EXPECT_EQ(all.end, QString());
            ASSERT_EQ(all.positions.size(), 1U);
            EXPECT_NEAR(all.positions.front().getENU().u, row.metres, 1e-10);
        }
    }
}

/// A gon is 0.9 degrees.
TEST(HeadingUnits, AnglesAreKnownInTheirSpellings)
{
    const char *const rows[][3] = {{"lat_rad", "lon_rad", "0.9;0.1"},
                                   {"latrad", "lon (radians)", "0.9;0.1"},
                                   {"lat_rad", "lon_rad", "0.9N;E0.1"},
                                   {"lat_rad", "lon_rad", "0,9;0,1"}};
    for (const auto &row : rows) {
        for (const char *columns : {"", "2,1,3"}) {
            SCOPED_TRACE(testing::Message() << row[0] << row[2]);
            const ParsedInput all =
                parsed(parserFor(Frame::Wgs84Geographic, columns),
                       QByteArray(row[0]) + ';' + row[1] + ";h\n" + row[2] + ";40\n");
            EXPECT_EQ(all.end, QString());
            ASSERT_EQ(all.positions.size(), 1U);
            EXPECT_NEAR(all.positions.front().getXYZ().x, 5.729577951308232, 1e-12);
            EXPECT_NEAR(all.positions.front().getXYZ().y, 51.56620156177409, 1e-12);
        }
    }
    for (const char *heading : {"lat [gon];lon [gon]", "lat (grad);lon_grads"}) {
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic), heading + QByteArray(";h\n-58;200;40\n"));
        ASSERT_EQ(all.positions.size(), 1U) << heading;
        EXPECT_NEAR(all.positions.front().getXYZ().x, 180.0, 1e-12);
        EXPECT_NEAR(all.positions.front().getXYZ().y, -52.2, 1e-12);
    }
    for (const char *heading : {"lat_arcsec", "lat_mas", "lat (min)", "lat_m", "lat_ft"}) {
        SCOPED_TRACE(heading);
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic), QByteArray(heading) + ";lon;h\n0.9;0.1;40\n");
        EXPECT_TRUE(all.positions.empty());
        EXPECT_TRUE(all.end.startsWith(QLatin1String("1: "))) << all.end;
    }
}

TEST(HeadingUnits, ValuesOutsideTheirUnitFail)
{
    const char *const rows[][2] = {
        {"lat_rad,lon_rad,h", "1.6,0.1,40"},       // 91.7 degrees
        {"lat_rad,lon_rad,h", "52.5,5.25,40"},     // degrees
        {"lat_gon,lon_gon,h", "100.1,6,40"},       // 90.09 degrees
        {"lat_rad,lon_rad,h", "-0.9N,0.1,40"},     // two signs
        {"lat_rad,lon_rad,h", "0.9E,0.1,40"},      // a letter of the other angle
        {"lat_rad,lon_rad,h", "0.9\u00B0,0.1,40"}, // a sign of degrees
        {"lat_rad,lon_rad,h", ",0.1,40"},          {"lat_rad,lon_rad,h", "nan,0.1,40"},
        {"lat_dms,lon_dms,h", "523000,51500,40"},  {"lat_dms,lon_dms,h", "52 30 00,5 15 00,40"},
        {"lat_dms,lon_dms,h", "52:61,5:15,40"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row[1]);
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic), row[0] + QByteArray("\n") + row[1] + "\n");
        EXPECT_TRUE(all.positions.empty());
        EXPECT_EQ(all.failures.size(), 1U);
    }
}

TEST(HeadingUnits, AreMillimetresWhereTheInputIs)
{
    const InputForm millimetres(Frame::LocalProjected, InputHeight::OfFrame, Unit_MilliMeter);
    const QByteArray line = "463000250,155000125,40500\n";
    for (const char *headings : {"n_mm,e_mm,h_mm\n", "Northing [mm],Easting [mm],Height [mm]\n",
                                 "n (millimetres),e (millimetres),h (millimetres)\n", ""}) {
        SCOPED_TRACE(headings);
        const ParsedInput all = parsed(parserFor(millimetres), headings + line);
        EXPECT_EQ(all.end, QString());
        ASSERT_EQ(all.positions.size(), 1U);
        const stENU &read = all.positions.front().getENU(); // [m]
        EXPECT_NEAR(read.e, 155000.125, 1e-9);
        EXPECT_NEAR(read.n, 463000.25, 1e-9);
        EXPECT_NEAR(read.u, 40.5, 1e-9);
    }
    const ParsedInput metres = parsed(parserFor(millimetres), "n_mm,e_mm,h_m\n" + line);
    ASSERT_EQ(metres.positions.size(), 1U);
    EXPECT_NEAR(metres.positions.front().getENU().u, 40500.0, 1e-9);
    EXPECT_NEAR(metres.positions.front().getENU().n, 463000.25, 1e-9);
}

/// Another foot than that of the plane differs by metres; a heading that says which one is read.
TEST(HeadingUnits, FeetAreInDoubtWhereThePlaneHasOthers)
{
    InputForm form(Frame::LocalProjected);
    form.planeUnit = positions::PlaneUnit{QStringLiteral("us-ft"), 1200.0 / 3937.0};
    EXPECT_THAT(parsed(parserFor(form), "n_ft,e_ft,h_ft\n1000000,2000000,100\n").end,
                Mentions("is in ft, but northing is read in us-ft"));
    const ParsedInput said =
        parsed(parserFor(form), "n_ft_intl,e_ft_intl,h_ft\n1000000,2000000,100\n");
    ASSERT_EQ(said.positions.size(), 1U);
    EXPECT_NEAR(said.positions.front().getENU().n, 304800.0, 1e-9);
    // As it is printed with --length-unit ft.
    const ParsedInput own =
        parsed(parserFor(form),
               "local_northing_ft,local_easting_ft,local_height_ft\n1000000,2000000,100\n");
    ASSERT_EQ(own.positions.size(), 1U);
    EXPECT_NEAR(own.positions.front().getENU().e, 609600.0, 1e-9);
    EXPECT_NEAR(own.positions.front().getENU().u, 30.48, 1e-9);
}

/// A choice by numbers, against what longer headings say.
TEST(HeadingUnits, ColumnsArePickedAgainstNoDirectionInTheirHeadings)
{
    struct Row
    {
        Frame frame;
        const char *headings;
        const char *wrong; ///< columns
        const char *right;
    };
    const Row rows[] = {
        {Frame::Wgs84Geographic, "GPS Latitude,GPS Longitude,h", "1,2,3", "2,1,3"},
        {Frame::Wgs84Geographic, "Latitude WGS,Longitude WGS,h", "1,2,3", "2,1,3"},
        {Frame::Wgs84Geographic, "Lat_WGS,Lon_WGS,alt", "1,2,3", "2,1,3"},
        {Frame::Wgs84Geographic, "decimalLatitude,decimalLongitude,alt", "1,2,3", "2,1,3"},
        {Frame::Wgs84Geographic, "Y (lat),X (lon),alt", "1,2,3", "2,1,3"},
        {Frame::Wgs84Geographic, "Grid Easting,Grid Northing,alt", "1,2,3", ""},
        {Frame::LocalProjected, "Easting(X),Northing(Y),H", "1,2,3", "2,1,3"},
        {Frame::LocalProjected, "Grid Easting,Grid Northing,H", "1,2,3", "2,1,3"},
        {Frame::LocalProjected, "UTM_E,UTM_N,H", "1,2,3", "2,1,3"},
        {Frame::LocalProjected, "E_RD,N_RD,H", "1,2,3", "2,1,3"},
        {Frame::LocalProjected, "GPS Latitude,GPS Longitude,H", "1,2,3", ""},
        {Frame::Wgs84Geographic, "a,b,Latitude WGS", "1,2,3", ""},
        {Frame::LocalProjected, "hoch,rechts,oben", "", "1,2,3"},
        {Frame::LocalProjected, "Y_RD,X_RD,NAP", "", "1,2,3"},
        {Frame::LocalProjected, "n of the point,e of the point,h (e)", "", "1,2,3"},
        {Frame::Wgs84Geographic, "deg east,deg north,alt", "", "1,2,3"},
        {Frame::Wgs84Geographic, "x_e,y_n,alt", "", "1,2,3"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.headings);
        const QByteArray input = row.headings + QByteArray("\n52.5,5.25,40\n");
        if (*row.wrong != '\0') {
            const ParsedInput wrong = parsed(parserFor(row.frame, row.wrong), input);
            EXPECT_TRUE(wrong.positions.empty());
            EXPECT_TRUE(wrong.end.startsWith(QLatin1String("1: --columns picks the column")))
                << wrong.end;
        }
        if (*row.right != '\0') {
            const ParsedInput right = parsed(parserFor(row.frame, row.right), input);
            EXPECT_EQ(right.end, QString());
            EXPECT_EQ(right.positions.size(), 1U);
        }
    }
}

/// 52°30′ in two columns would be read as 52°.
TEST(HeadingUnits, MinutesAndSecondsBehindAnAngleAreRefused)
{
    const UnitWord rows[] = {
        {"lat,min,lon,min,h", "3,1,5"},
        {"lat_deg,min,lon_deg,min,h", "3,1,5"},
        {"lat,Minutes,lon,Minutes,h", "3,1,5"},
        {"lat,m,lon,m,h", "3,1,5"},
        {"lat,',lon,',h", "3,1,5"},
        {"lat,\u2032,lon,\u2032,h", "3,1,5"},
        {"lat,(min),lon,(min),h", "3,1,5"},
        {"lat,minutes of lat,lon,b,h", "3,1,5"},
        {"lat;minuten;lon;minuten;h", "3,1,5"},
        {"lat,lat ('),lon,lon ('),h", "3,1,5"},
        {"lat (deg),lat (min),lon (deg),lon (min),h", "3,1,5"},
        {"lat,min,sec,lon,min,sec,h", "4,1,7"},
        {"lat,m,s,lon,m,s,h", "4,1,7"},
        {"lat ('),lon ('),h", "2,1,3"},
        {"lat (\"),lon (\"),h", "2,1,3"},
        {"lat [\u2032],lon [\u2032],h", "2,1,3"},
        {"lat,lon,h (')", "2,1,3"},
    };
    for (const UnitWord &row : rows) {
        const QByteArray headings = row.heading;
        const QByteArray numbers =
            headings.count(',') + headings.count(';') == 6   ? "52,30,0,5,15,0,40\n"
            : headings.count(',') + headings.count(';') == 4 ? "52,30,5,15,40\n"
                                                             : "52.5,5.25,40\n";
        for (const char *columns : {"", row.shown}) {
            SCOPED_TRACE(testing::Message() << row.heading << " by " << columns);
            const ParsedInput all =
                parsed(parserFor(Frame::Wgs84Geographic, columns), headings + '\n' + numbers);
            EXPECT_TRUE(all.positions.empty());
            EXPECT_TRUE(all.end.startsWith(QLatin1String("1: "))) << all.end;
        }
    }
}

TEST(HeadingUnits, OtherColumnsBesideAnglesAndSignsOfDegreesAreNoMinutes)
{
    for (const char *headings :
         {"lat,lon,h,min", "lat,lon,h,m", "lat,lon,h,s", "lat,lon,h,'", "lat,lon,h,min_sats",
          "lat (\u00B0),lon (\u00B0),h,x", "lat (\u00B0 ' \"),lon (\u00B0 ' \"),h (m),x",
          "'lat','lon','h','q'", "\"lat\",\"lon\",\"h\",\"q\""}) {
        SCOPED_TRACE(headings);
        const ParsedInput all =
            parsed(parserFor(Frame::Wgs84Geographic), QByteArray(headings) + "\n52.5,5.25,40,7\n");
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.positions, (std::vector<Pos>{Pos::fromLongLatH(5.25, 52.5, 40)}));
    }
}

struct Said
{
    Frame frame;
    const char *columns;
    QByteArray input;
    const char *end; ///< empty: one position is read
    Pos read = {};   ///< that one, where its numbers count
};

void expectSaid(const Said &row)
{
    SCOPED_TRACE(row.input.toStdString() + row.columns);
    const ParsedInput all = parsed(parserFor(row.frame, row.columns), row.input);
    if (*row.end == '\0') {
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        ASSERT_EQ(all.positions.size(), 1U);
        if (!(row.read == Pos())) {
            const stXYZ &read = all.positions.front().getXYZ();
            EXPECT_NEAR(read.x, row.read.getXYZ().x, 1e-9);
            EXPECT_NEAR(read.y, row.read.getXYZ().y, 1e-9);
            EXPECT_NEAR(read.z, row.read.getXYZ().z, 1e-9);
        }
        return;
    }
    EXPECT_TRUE(all.positions.empty());
    EXPECT_TRUE(all.failures.empty()) << all.failures.front();
    EXPECT_TRUE(all.end.startsWith(QString::fromUtf8(row.end))) << all.end;
}

/// 50 gon are 45 degrees: read as degrees the point would lie elsewhere, without a word.
TEST(HeadingUnits, OfALineOfTheirOwnAreThoseOfItsColumns)
{
    constexpr Frame llh = Frame::Wgs84Geographic;
    constexpr Frame neh = Frame::LocalProjected;
    const Pos degrees = Pos::fromLongLatH(6, 58, 40);
    const Pos gons = Pos::fromLongLatH(5.4, 52.2, 40);
    const Pos feet = Pos::fromLongLatH(6, 58, 12.192);
    const Pos surveyFeet = Pos::fromLongLatH(6, 58, 12.192024384048768);
    const Pos radians = Pos::fromLongLatH(51.56620156177409, 5.729577951308232, 40);
    const Said rows[] = {
        {llh, "", "lat,lon,h\n[gon],[gon],[m]\n58,6,40\n", "", gons},
        {llh, "", "lat,lon,h\n# [deg],[deg],[ft]\n58,6,40\n", "", feet},
        {llh, "", "lat lon h\n(deg) (deg) (US survey feet)\n58 6 40\n", "", surveyFeet},
        {llh, "", "lat,lon,h\ndeg,deg,ft\n58,6,40\n", "", feet},
        {llh, "", "lat,lon,h\n\n# measured\ndeg,deg,ft\n58,6,40\n", "", feet},
        {llh, "", "lat,lon,h\n[deg],[deg],[U.S. ft]\n58,6,40\n", "", surveyFeet},
        {llh, "", "lat,lon,h_m\n[deg],[deg],[ft]\n58,6,40\n", "2: \"[ft]\" is in ft, but height"},
        {llh, "", "lat,lon,h\n[deg],[deg],[ft]\n[deg],[deg],[m]\n58,6,40\n",
         "3: \"[m]\" is in m, but height is read in ft"},
        {llh, "", "lat,lon,h\n[rad],[deg],[m]\n0.9,6,40\n", "",
         Pos::fromLongLatH(6, 51.56620156177409, 40)},
        {llh, "", "lat,lon,h\n[rad],-,[m]\n0.9,6,40\n", "2: longitude names no unit"},
        {llh, "", "lat,lon,h\ndeg S,deg W,m\n33.9,18.4,40\n", "2: \"deg W\" counts southwards or"},
        {llh, "",
         "lat,lon,h\n[\xC2\xB0S],[\xC2\xB0"
         "E],[m]\n33.9,18.4,40\n",
         "2: \"[\xC2\xB0S]\" counts southwards or westwards; latitude is read"},
        {llh, "", "lat,lon,h\ndeg,deg,feet (US)\n58,6,40\n", "", surveyFeet},
        {llh, "", "name;lat;lon;h\n;deg;deg;ft\nA;58;6;40\n", "", feet},
        {llh, "", "# [deg],[deg],[ft]\nlat,lon,h\n58,6,40\n", "", feet},
        {llh, "", "# units: deg deg ft\n6 58 40\n", "", feet},
        {llh, "", "[rad],[rad],[m]\n0.9,0.1,40\n", "", radians},
        {llh, "", "# (rad) (rad) (m)\nA 0.9 0.1 40\n", "", radians},
        {llh, "", "# lat,lon,h\n[gon],[gon],[m]\n58,6,40\n", "", gons},
        {llh, "2,1,3", "[gon],[gon],[m]\n58,6,40\n", "", gons},
        {llh, "2,1,3", "hoch,rechts,oben\n[deg],[deg],[ft]\n58,6,40\n", "", feet},
        {llh, "b,a,c", "a;b;c;d\ndeg;deg;ft;m\n58;6;40;7\n", "", feet},
        {neh, "", "n,e,h\nm,m,ft\n465682.96,183928.88,40\n", "",
         Pos::fromENU(183928.88, 465682.96, 12.192)},
        {neh, "", "n,e,h\n[km],[km],[m]\n465.6,183.9,40\n", "", Pos::fromENU(183900, 465600, 40)},
        {neh, "", "n,e,h\n[km],[km],-\n465.6,183.9,40\n", "2: height names no unit"},
        {neh, "", "n,e,h\n[chains],[chains],[m]\n465.6,183.9,40\n",
         "2: \"[chains]\" is in chains, but northing is read in m"},
        {neh, "", "# ft,ft\nn,e,h\n465682.96,183928.88,40\n", "1: \"ft\" is in ft"},
        {llh, "", "lat,lon,h\n[deg],[deg],[m]\n58,6,40\n", "", degrees},
        {llh, "", "lat,lon,h\n# [\xC2\xB0],[\xC2\xB0],[m]\n58,6,40\n", ""},
        {llh, "", "lat lon h\n(deg) (decimal degrees) (m)\n58 6 40\n", ""},
        {llh, "", "lat,lon,h\ndeg N,deg E,m\n58,6,40\n", ""},
        {llh, "", "lat;lon;h\n[gon N];[gon E];[m]\n58;6;40\n", "", gons},
        {llh, "", "deg,deg,m\n58,6,40\n", ""},
        {llh, "", "id,lat,lon,h,dist\n-,deg,deg,m,km\nA,58,6,40,7\n", ""},
        {llh, "", "# units: degrees, degrees, metres\nA,58,6,40\n", ""},
        {llh, "2,1,3", "hoch,rechts,oben\n[deg],[deg],[m]\n58,6,40\n", ""},
        {neh, "", "n,e,h\n[m],[m],[m]\n465682.96,183928.88,40\n", ""},
        {neh, "", "# in m\n465682.96,183928.88,40\n", ""},
    };
    for (const Said &row : rows)
        expectSaid(row);
    const ParsedInput again =
        parsed(parserFor(llh), "lon,lat,h\n[deg],[deg],[m]\n5,52,1\n[deg],[deg],[m]\n5,53,1\n"
                               "# [gon],[gon],[m]\n5,54,1\n");
    EXPECT_EQ(again.positions.size(), 2U);
    EXPECT_TRUE(again.failures.empty());
    EXPECT_TRUE(again.end.startsWith(QLatin1String("6: \"[gon]\" is in gon"))) << again.end;
    // What was reported was read in the units before.
    const ParsedInput late = parsed(parserFor(llh), "lat,lon,h\n58,6,x\n[deg],[deg],[ft]\n");
    EXPECT_EQ(late.failures.size(), 1U);
    EXPECT_TRUE(late.end.startsWith(QLatin1String("3: \"[ft]\" is in ft"))) << late.end;
    // Below the same headings again, the same units.
    const ParsedInput twice = parsed(parserFor(llh), "lat,lon,h\n[deg],[deg],[ft]\n58,6,40\n"
                                                     "lat,lon,h\n[deg],[deg],[ft]\n58,6,40\n");
    EXPECT_EQ(twice.end, QString());
    ASSERT_EQ(twice.positions.size(), 2U);
    EXPECT_EQ(twice.positions[0], twice.positions[1]);
    EXPECT_TRUE(parsed(parserFor(llh), "lat,lon,h_ft\n58,6,40\nlat,lon,h\n58,6,40\n")
                    .end.startsWith(QLatin1String("3: these headings give another order")));
}

/// Lines that are kept to be mended are read in the same units again.
TEST(HeadingUnits, OfALineOfTheirOwnBelongToTheHeaderLine)
{
    for (const QByteArray &lines : {QByteArray("lat,lon,h\n[deg],[deg],[ft]\n"),
                                    QByteArray("# [deg],[deg],[ft]\nlat,lon,h\n"),
                                    QByteArray("# lat,lon,h\n# [deg],[deg],[ft]\n")}) {
        SCOPED_TRACE(lines.toStdString());
        positions::PositionParser parser = parserFor(Frame::Wgs84Geographic);
        qint64 number = 0;
        for (const QByteArray &line : (lines + "58,6,40").split('\n'))
            parser.parse({line.constData(), static_cast<std::size_t>(line.size())}, ++number);
        const ParsedInput again =
            parsed(parserFor(Frame::Wgs84Geographic), parser.headerLine() + "\n58,6,40\n");
        ASSERT_EQ(again.positions.size(), 1U);
        EXPECT_EQ(again.positions.front(), parser.position());
        EXPECT_NEAR(again.positions.front().getXYZ().z, 12.192, 1e-12);
    }
}

TEST(HeadingUnits, InTitlesAndRemarksAreNotPassedOver)
{
    constexpr Frame llh = Frame::Wgs84Geographic;
    constexpr Frame xyz = Frame::Wgs84Cartesian;
    constexpr Frame neh = Frame::LocalProjected;
    struct Text
    {
        Frame frame;
        const char *text;
        const char *mistake; ///< empty: none
    };
    const Text rows[] = {
        {neh, "All lengths in feet", "says \"lengths in feet\", but northing is read in m"},
        {neh, "Units: US survey feet", "--length-unit us-ft reads and prints lengths in it"},
        {neh, "Job 12, linear units = ft", "says \"units ft\""},
        {neh, "coordinates in km", "says \"coordinates in km\""},
        {neh, "Northing and easting are given in cm.", "but northing is read in m"},
        {neh, "coordinates (ft)", "says \"coordinates ft\""},
        {neh, "Units: U.S. Survey Feet", "--length-unit us-ft reads"},
        {neh, "US survey feet", "says \"US survey feet\""},
        {neh, "in feet", "says \"in feet\""},
        {neh, "ALL COORDINATES IN FEET ABOVE DATUM", "says \"COORDINATES IN FEET\""},
        {xyz, "positions, units mm", "but X is read in m"},
        {llh, "coordinates in gon", "says \"coordinates in gon\", but longitude is read in deg"},
        {llh, "Latitude and longitude in radians, height in m", "longitude is read in deg"},
        {llh, "angular units: grad", "longitude is read in deg"},
        {llh, "Ellipsoidal heights in ft", "but height is read in m"},
        {llh, "lat/lon in decimal degrees; heights above the ellipsoid in feet (surveyed)",
         "but height is read in m"},
        {llh, "height unit: foot", "but height is read in m"},
        {llh, "Site in Foot Lane", ""},
        {llh, "Heights in Foot Lane", ""},
        {llh, "Longitude and latitude in degrees, heights in metres", ""},
        {llh, "Units: degrees and metres", ""},
        {llh, "antenna heights in mm", ""},
        {llh, "accuracy of heights in mm", ""},
        {llh, "standard deviation of the height in mm", ""},
        {neh, "Precision of coordinates in cm", ""},
        {neh, "Coordinates (cm accuracy)", ""},
        {neh, "Project units: US survey feet", "but northing is read in m"},
        {neh, "Distance units: USFeet", "but northing is read in m"},
        {neh, "All dimensions in feet", "but northing is read in m"},
        {neh, "Coordinates (cm), as delivered", "but northing is read in m"},
        {neh, "The units of the coordinates: feet", "but northing is read in m"},
        {llh, "the height of the wall is three feet", ""},
        {llh, "set up on foot, at two chains from the gate", ""},
        {llh, "the unit of Mr Grad", ""},
        {llh, "Coordinates in decimal degrees", ""},
        {llh, "latitudes as degrees minutes seconds", ""},
        {llh, "links", ""},
        {neh, "all units: metres", ""},
        {neh, "angles in gon, coordinates in metres", ""},
        {neh, "in", ""},
    };
    for (const Text &row : rows) {
        const QByteArray headings = row.frame == llh   ? "lon,lat,h\n"
                                    : row.frame == xyz ? "x,y,z\n"
                                                       : "n,e,h\n";
        const QByteArray text = row.text + QByteArray("\n");
        for (const QByteArray &lines : {text + headings, "# " + text + headings,
                                        headings + "# " + text, "# " + text, "# b\n## " + text}) {
            SCOPED_TRACE(lines.toStdString());
            const ParsedInput all = parsed(parserFor(row.frame), lines + "5,52,40\n");
            if (*row.mistake == '\0') {
                EXPECT_EQ(all.end, QString());
                EXPECT_EQ(all.positions.size(), 1U);
                continue;
            }
            EXPECT_TRUE(all.positions.empty());
            EXPECT_THAT(all.end, Mentions("the line says "));
            EXPECT_THAT(all.end, Mentions(row.mistake));
        }
    }
    // Passed over with --skip, unless the headings stand in front of it.
    EXPECT_THAT(
        parsed(parserFor(llh), "# b\n# heights in ft\nlat,lon,h\n52,5,40\n").end,
        Mentions("2: the line says \"heights in ft\", but height is read in m; --length-unit ft "
                 "reads and prints lengths in it; --skip 2 "));
    EXPECT_FALSE(parsed(parserFor(llh), "# lat,lon,h\n# heights in ft\n52,5,40\n")
                     .end.contains(QLatin1String("--skip")));
    EXPECT_EQ(parsed(parserFor(llh, "", 1), "# heights in ft\n5,52,40\n").positions.size(), 1U);
    // Headings say more than a title.
    EXPECT_EQ(parsed(parserFor(llh), "Heights in feet\nlat,lon,h_m,h_ft\n52,5,40,131\n").end,
              QString());
    EXPECT_EQ(parsed(parserFor(InputForm(neh, InputHeight::OfFrame, Unit_USFoot)),
                     "# Units: US survey feet\n3937,7874,39.37\n")
                  .positions.size(),
              1U);
    EXPECT_EQ(parsed(parserFor(InputForm(neh, InputHeight::OfFrame, Unit_USFoot)),
                     "# all heights in feet\n3937,7874,39.37\n")
                  .positions.size(),
              1U);
    EXPECT_THAT(parsed(parserFor(InputForm(neh, InputHeight::OfFrame, Unit_Foot)),
                       "# all heights in US feet\n3937,7874,39.37\n")
                    .end,
                Mentions("but height is read in ft"));
    EXPECT_THAT(parsed(parserFor(InputForm(neh, InputHeight::OfFrame, Unit_USFoot)),
                       "# lengths in metres\n3937,7874,39.37\n")
                    .end,
                Mentions("but northing is read in us-ft"));
}

/// However many lines say what is read, one that says another unit is never passed over.
TEST(HeadingUnits, OfManyLinesAreAllHeldAgainstTheOrder)
{
    constexpr Frame llh = Frame::Wgs84Geographic;
    const auto remarks = [](int count) {
        QByteArray lines;
        for (int i = 0; i < count; ++i)
            lines += "# heights in metres, sheet " + QByteArray::number(i) + "\n";
        return lines;
    };
    const QByteArray feet = "# heights in ft\n";
    const QByteArray position = "5,52,40\n";
    EXPECT_EQ(parsed(parserFor(llh), remarks(1000) + position).end, QString());
    EXPECT_EQ(parsed(parserFor(llh), remarks(900) + remarks(900) + position).end, QString());
    EXPECT_THAT(parsed(parserFor(llh), remarks(150) + feet + position).end,
                Mentions("151: the line says \"heights in ft\", but height is read in m"));
    EXPECT_THAT(parsed(parserFor(llh), remarks(1000) + feet + position).end,
                Mentions("1001: more than 1000 different lines in front of the positions name "
                         "units"));
    EXPECT_THAT(parsed(parserFor(llh), remarks(1000) + feet + "lon,lat,h\n" + position).end,
                Mentions("1001: more than 1000 different lines"));
}

TEST(HeadingUnits, AColumnOfUnitsIsHeldAgainstTheOneThatIsRead)
{
    constexpr Frame llh = Frame::Wgs84Geographic;
    struct Row
    {
        InputForm form;
        const char *columns;
        const char *headings;
        const char *good;
        const char *bad;
    };
    const Row rows[] = {
        {llh, "", "lon,lat,h,unit\n", "5,52,40,m\n", "5,52,40,ft\n"},
        {llh, "", "lon,lat,h,UNITS\n", "5,52,40,metres\n", "5,52,40,US ft\n"},
        {llh, "", "uom;lon;lat;h\n", ";5;52;40\n", "mm;5;52;40\n"},
        {llh, "", "lon,lat,h,height_unit\n", "5,52,40,pcs\n", "5,52,40,[ft]\n"},
        {llh, "", "lon lat h angle_unit\n", "5 52 40 deg\n", "5 52 40 gon\n"},
        {llh, "lon,lat,h", "lon,lat,h,unit\n", "5,52,40,m\n", "5,52,40,ft\n"},
        {llh, "1,2,3", "lon,lat,h,unit\n", "5,52,40,m\n", "5,52,40,\"ft\"\n"},
        {{Frame::LocalProjected, InputHeight::OfFrame, Unit_Foot},
         "",
         "n,e,h,unit\n",
         "5,52,40,ft\n",
         "5,52,40,m\n"},
        {Frame::Wgs84Cartesian, "", "x,y,z,unit\n", "5,52,40,m\n", "5,52,40,km\n"},
        {llh, "", "lon,lat,h,unit\n", "5,52,40,meters\n", "5,52,40,U.S. ft\n"},
        {llh, "", "lon,lat,h,unit\n", "5,52,40,(m)\n", "5,52,40,feet(US)\n"},
        {llh, "", "lon,lat,h,unit\n", "5,52,40,metre above datum\n", "5,52,40,int. feet\n"},
        {llh, "", "lon,lat,h,height unit\n", "5,52,40,each\n", "5,52,40,feet as surveyed\n"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.headings << row.columns);
        const ParsedInput all = parsed(parserFor(row.form, row.columns),
                                       QByteArray(row.headings) + row.good + row.bad + row.good);
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.positions.size(), 2U);
        ASSERT_EQ(all.failures.size(), 1U);
        EXPECT_THAT(all.failures.front(), Mentions("3: the line's unit is "));
    }
    EXPECT_EQ(parsed(parserFor(llh), "lon,lat,h,unit_price\n5,52,40,ft\n").positions.size(), 1U);
}

TEST(LengthUnitOfThePlane, HasTheLimitOfHeightsInMetres)
{
    const InputForm feet(Frame::LocalProjected, InputHeight::OfFrame, Unit_Foot);
    // 65616 ft are 19999.8 m, 65617 ft 20000.06 m.
    EXPECT_EQ(parsed(parserFor(feet), "1527559,602362,65616\n").positions.size(), 1U);
    EXPECT_THAT(parsed(parserFor(feet), "1527559,602362,65617\n").failures.at(0),
                Mentions("height 65617 is beyond 20000 m"));
}

} // namespace
} // namespace KelStd
