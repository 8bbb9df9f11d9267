// Lines whose fields could stand in another order: without headings and --columns they are refused.

#include "positions/ParsedInput.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using positions::Frame;
using test::parsed;
using test::ParsedInput;
using test::parserFor;

struct Doubt
{
    Frame frame;
    const char *line;
    const char *reason; ///< its beginning
};

constexpr Frame llh = Frame::Wgs84Geographic;
constexpr Frame localLlh = Frame::LocalGeographic;
constexpr Frame xyz = Frame::Wgs84Cartesian;
constexpr Frame neh = Frame::LocalProjected;

TEST(OrderDoubts, AreRefusedWithTheReasonAndWhatToAdd)
{
    const Doubt rows[] = {
        {neh, "101,465682.96,183928.88", "height 183928.88 is beyond 20000 m"},
        {neh, "101 465682.96 183928.88", "height 183928.88 is beyond 20000 m"},
        {neh, "465682.96;183928.88;-20000.5", "height -20000.5 is beyond 20000 m"},
        {neh, "P1,1,465682.96,183928.88", "height 183928.88 is beyond 20000 m"},
        {neh, "101,4656.96,1839.88", "101 may be a point's number before northing and easting"},
        {llh, "101,5.81,52.17", "101 may be a point's number before longitude and latitude"},
        {llh, "101;-5.81;52.17", "101 may be a point's number"},
        {localLlh, "7 5.81 52.17", "7 may be a point's number"},
        {neh, "465 682.96 183928.88 47.5", "\"465\" and \"682.96\" may be one number"},
        {neh, "465 682 183928.88 47.5", "\"465\" and \"682\" may be one number"},
        {neh, "465,682.96,183928.88,47.5", "\"465\" and \"682.96\" may be one number"},
        {neh, "465 682.96 183 928.88", "\"465\" and \"682.96\" may be one number"},
        {neh, "1 465 682.96 1839.88", "\"1\" and \"465\" may be one number"},
        {neh, "465682.96 183 928.88 47.5", "\"183\" and \"928.88\" may be one number"},
        {xyz, "3 899 209.1 3967.2", "\"3\" and \"899\" may be one number"},
        {llh, "5 30 52 10", "the numbers may be degrees and minutes"},
        {llh, "5;30;52;10", "the numbers may be degrees and minutes"},
        {llh, "5\t30\t52\t10", "the numbers may be degrees and minutes"},
        {llh, "101;5,81;52,17", "101 may be a point's number before longitude and latitude"},
        {llh, "5;30,5;52;10,25", "the numbers may be degrees and minutes"},
        {llh, "5,81;52,17;47,5;0,02", "\"5.81\" may be the longitude or a point's name"},
        {llh, "5 30.5 52 10.25", "the numbers may be degrees and minutes"},
        {localLlh, "5,30.5,52,10.25", "the numbers may be degrees and minutes"},
        {llh, "5,52,5,10", "four whole numbers"},
        {neh, "5,52,5,10", "four whole numbers"},
        {neh, "465682,96,183928,88", "four whole numbers"},
        {xyz, "5,52,5,10", "four whole numbers"},
        {llh, "5.81,52.17,47.5,0.02", "\"5.81\" may be the longitude or a point's name"},
        {neh, "465682.96,183928.88,47.5,0.02", "\"465682.96\" may be the northing"},
        {xyz, "-3899209.1,396765.2,5015080.6,0.02", "\"-3899209.1\" may be the X"},
    };
    for (const Doubt &row : rows) {
        SCOPED_TRACE(row.line);
        const ParsedInput all = parsed(parserFor(row.frame), QByteArray(row.line) + '\n');
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.positions.empty());
        ASSERT_EQ(all.failures.size(), 1U);
        EXPECT_TRUE(
            all.failures.front().startsWith(QLatin1String("1: ") + QString::fromUtf8(row.reason)))
            << all.failures.front();
        EXPECT_TRUE(all.failures.front().contains(
            QLatin1String("say it with a line of headings or --columns")))
            << all.failures.front();
    }
}

struct Plain
{
    Frame frame;
    const char *line;
    Pos position;
};

TEST(OrderDoubts, AreNotThereWhereALineHasOneReading)
{
    const Plain rows[] = {
        {llh, "1,5.81,52.17,90", Pos::fromLongLatH(5.81, 52.17, 90)},
        {neh, "465.682;183.928;47", Pos::fromENU(183.928, 465.682, 47)},
        {llh, "5,52,10", Pos::fromLongLatH(5, 52, 10)},
        {llh, "101 5.25 52.5 -4.125", Pos::fromLongLatH(5.25, 52.5, -4.125)},
        // Degrees and minutes have their ranges.
        {llh, "101 5 52 70", Pos::fromLongLatH(5, 52, 70)},
        {llh, "1001,5,52,10", Pos::fromLongLatH(5, 52, 10)},
        {llh, "inf,5.5,52,10", Pos::fromLongLatH(5.5, 52, 10)},
        {llh, "5.0,52.5,40.5", Pos::fromLongLatH(5, 52.5, 40.5)},
        {llh, "-5,52.5,40.5", Pos::fromLongLatH(-5, 52.5, 40.5)},
        {llh, "5,52.5,1000.5", Pos::fromLongLatH(5, 52.5, 1000.5)},
        {llh, "5,52.5,40", Pos::fromLongLatH(5, 52.5, 40)},
        {llh, "P1,5,52,10", Pos::fromLongLatH(5, 52, 10)},
        {llh, "\"5.81\",52.17,47.5,0.02", Pos::fromLongLatH(52.17, 47.5, 0.02)},
        {llh, "\"5\" 30 52 10", Pos::fromLongLatH(30, 52, 10)},
        {llh, "5.25,52.5,20200000", Pos::fromLongLatH(5.25, 52.5, 20200000)},
        {neh, "1 465682 183928 47", Pos::fromENU(183928, 465682, 47)},
        {neh, "1;465682;183928;47", Pos::fromENU(183928, 465682, 47)},
        {neh, "101 1682.96 1839.88 47.5", Pos::fromENU(1839.88, 1682.96, 47.5)},
        {neh, "465682.96,183928.88,20000", Pos::fromENU(183928.88, 465682.96, 20000)},
        {neh, "P1 682.96 839.88 47.5", Pos::fromENU(839.88, 682.96, 47.5)},
        {neh, "1465 682.96 839.88 47.5", Pos::fromENU(839.88, 682.96, 47.5)},
        {xyz, "3899209,396765.257,5015080.603", Pos::fromXYZ(3899209, 396765.257, 5015080.603)},
    };
    for (const Plain &row : rows) {
        SCOPED_TRACE(row.line);
        const ParsedInput all = parsed(parserFor(row.frame), QByteArray(row.line) + '\n');
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        ASSERT_EQ(all.positions.size(), 1U);
        EXPECT_EQ(all.positions.front(), row.position);
    }
}

TEST(OrderDoubts, HeadingsAndPickedColumnsRemoveThem)
{
    const Plain rows[] = {
        {neh, "101,465682.96,183928.88", Pos::fromENU(465682.96, 101, 183928.88)},
        {llh, "7,5.81,52.17", Pos::fromLongLatH(7, 5.81, 52.17)},
    };
    for (const Plain &row : rows) {
        const char *const headings = row.frame == neh ? "n,e,h\n" : "lon,lat,h\n";
        for (const char *columns : {"", "1,2,3"}) {
            const ParsedInput all =
                parsed(parserFor(row.frame, columns),
                       QByteArray(*columns == '\0' ? headings : "") + row.line + '\n');
            ASSERT_EQ(all.positions.size(), 1U) << row.line;
            EXPECT_EQ(all.positions.front(), row.position);
        }
    }
    EXPECT_EQ(parsed(parserFor(llh), "lon,lat,h,q\n5,30,52,10\n").positions.size(), 1U);
    EXPECT_EQ(parsed(parserFor(neh), "name n e h\n465 682.96 839.88 47.5\n").positions.size(), 1U);
    EXPECT_EQ(parsed(parserFor(llh, "1,2,3"), "5.81,52.17,47.5,0.02\n").positions.size(), 1U);
}

/// Without its letter 33.9 S would be read as 33.9 N: on the first line and on every other one.
TEST(LoneHemispheres, BesideAnglesAreRefused)
{
    struct Row
    {
        const char *headings;
        const char *columns;
        const char *line;
        const char *plain; ///< with something else in the letters' columns
    };
    const Row rows[] = {
        {"lat,NS,lon,EW,h\n", "", "33.9,S,151.2,E,40\n", "33.9,,151.2,x,40\n"},
        {"lat,N/S,lon,E/W,h\n", "", "33.9,s,151.2,e,40\n", "33.9,1,151.2,1,40\n"},
        {"lat;hem;lon;hem;h\n", "", "33.9;S;151.2;E;40\n", "33.9;-;151.2;-;40\n"},
        {"lat,lat_ref,lon,lon_ref,h\n", "", "33.9,N,151.2,W,40\n", "33.9,?,151.2,?,40\n"},
        {"lat,lat_dir,lon,lon_dir,h\n", "", "33.9,\"S\",151.2,\"E\",40\n", "33.9,a,151.2,b,40\n"},
        {"lat,GPSLatitudeRef,lon,GPSLongitudeRef,h\n", "", "33.9,South,151.2,East,40\n",
         "33.9,Sydney,151.2,Stone,40\n"},
        {"lat,,lon,,h\n", "", "33.9,S,151.2,E,40\n", "33.9,S1,151.2,E2,40\n"},
        {"lat,NS,lon,EW,h\n", "lon,lat,h", "33.9,S,151.2,E,40\n", "33.9,,151.2,,40\n"},
        {"lat,NS,lon,EW,h\n", "3,1,5", "33.9,S,151.2,E,40\n", "33.9,,151.2,,40\n"},
        {"", "3,1,5", "33.9,S,151.2,E,40\n", "33.9,,151.2,,40\n"},
        {"", "3,1,5", "33.9\tS\t151.2\tE\t40\n", "33.9\t\t151.2\t\t40\n"},
        {"NS,lat,EW,lon,h\n", "", "S,33.9,E,151.2,40\n", ",33.9,x,151.2,40\n"},
        {"N/S;lat;h;E/W;lon\n", "", "n;33.9;40;\"East\";151.2\n", "E;33.9;40;N;151.2\n"},
        {"NS,lat,EW,lon,h\n", "lon,lat,h", "S,33.9,E,151.2,40\n", "1,33.9,1,151.2,40\n"},
        {"", "4,2,5", "S,33.9,E,151.2,40\n", ",33.9,,151.2,40\n"},
        {"", "4,2,5", "S;33.9;E;151.2;40\n", ";33.9;;151.2;40\n"},
        {"NS lat EW lon h\n", "", "S 33.9 E 151.2 40\n", "? 33.9 ? 151.2 40\n"},
        {"lat NS lon EW h\n", "", "33.9 S 151.2 E 40\n", "33.9 ? 151.2 ? 40\n"},
        {"lat,lon,h,NS,EW\n", "", "33.9,151.2,40,S,E\n", "33.9,151.2,40,S,\n"},
        {"lat;lon;h;lat_ref;lon_ref\n", "", "33.9;151.2;40;South;East\n",
         "33.9;151.2;40;South;Eastern wall\n"},
        {"lat,lon,h,NS,EW\n", "2,1,3", "33.9,151.2,40,S,E\n", "33.9,151.2,40,,E\n"},
        {"lat,NS,lon,EW,h\n", "", "33.9,(S),151.2,E.,40\n", "33.9,(1),151.2,.,40\n"},
        {"lat,ns,lon,ew,h\n", "", "33.9,\xC2\xB0S,151.2,deg E,40\n",
         "33.9,\xC2\xB0,151.2,deg,40\n"},
        {"lat,NS,lon,EW,h\n", "", "33.9,Sued,151.2,Ost,40\n", "33.9,Suede,151.2,Osten 1,40\n"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.headings << row.columns << ' ' << row.line);
        const QByteArray headings = row.headings;
        const ParsedInput first = parsed(parserFor(llh, row.columns), headings + row.line);
        EXPECT_TRUE(first.positions.empty());
        EXPECT_TRUE(!first.failures.empty() || !first.end.isEmpty());
        const ParsedInput later = parsed(parserFor(llh, row.columns),
                                         headings + row.plain + row.line + row.plain + row.line);
        EXPECT_EQ(later.end, QString());
        EXPECT_EQ(later.failures.size(), 2U);
        EXPECT_EQ(later.positions, (std::vector<Pos>(2, Pos::fromLongLatH(151.2, 33.9, 40))));
    }
}

TEST(LoneHemispheres, AreLettersBehindAnglesOnly)
{
    const Plain rows[] = {
        {llh, "lat,lon,h,code\n52.5,5.25,40,N\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {llh, "lat,lon,name,h\n52.5,5.25,E,40\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {llh, "lat,lon,code,h\n52.5,5.25,East 1,40\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {llh, "lat,lon,h\n52.5N,5.25E,40\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {llh, "N,5.25,52.5,40\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {llh, "name,lat,lon,h\nN,52.5,5.25,40\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {llh, "code,lat,lon,h\nE,52.5,5.25,40\n", Pos::fromLongLatH(5.25, 52.5, 40)},
        {neh, "n;code;e;h\n463000;S;155000;40\n", Pos::fromENU(155000, 463000, 40)},
        {neh, "n;e;h;a;b\n463000;155000;40;N;E\n", Pos::fromENU(155000, 463000, 40)},
        {xyz, "x;y;code;z\n3899209;396765;W;5015080\n", Pos::fromXYZ(3899209, 396765, 5015080)},
    };
    for (const Plain &row : rows) {
        SCOPED_TRACE(row.line);
        const ParsedInput all = parsed(parserFor(row.frame), row.line);
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        EXPECT_EQ(all.positions, (std::vector<Pos>{row.position}));
    }
}

/// What has signs of an angle, or of a time, may be a point's name or the first component.
TEST(OrderDoubts, AnglesAndNamesThatLookAlikeAreRefused)
{
    for (const char *line :
         {"W5.25,52.5,40,7\n", "5.25W,52.5,40,7\n", "5:15:30,52:30:10,40,1\n",
          "12:30 5.5 52.5 40\n", "E12,5.25,52.5\n", "12w;5,25;52,5\n", "10:00:00,5.25,52.5\n"}) {
        SCOPED_TRACE(line);
        EXPECT_TRUE(parsed(parserFor(llh), line).positions.empty());
        const QByteArray first = QByteArray(line).contains(';')   ? "A;5,5;52,5;40\n"
                                 : QByteArray(line).contains(' ') ? "A 5.5 52.5 40\n"
                                                                  : "A,5.5,52.5,40\n";
        const ParsedInput later = parsed(parserFor(llh), first + line);
        EXPECT_EQ(later.positions.size(), 1U);
        EXPECT_EQ(later.failures.size(), 1U);
    }
    // Names that begin or end as such letters.
    for (const char *line : {"E12,5.25,52.5,40\n", "S.1,5.25,52.5,40\n", "3W,5.25,52.5,40\n",
                             "P1.5,5.25,52.5,40\n", "Well:2,5.25,52.5,40\n"}) {
        SCOPED_TRACE(line);
        EXPECT_EQ(parsed(parserFor(llh), line).positions.size(), 1U);
        EXPECT_EQ(parsed(parserFor(llh), QByteArray("A,5.5,52.5,40\n") + line).positions.size(),
                  2U);
    }
}

/// Merged headings of spreadsheets: degrees below one of them, minutes and seconds below none.
TEST(OrderDoubts, MinutesInColumnsThatAreNotReadAreRefused)
{
    const char *const rows[][3] = {
        {"", "lat,,lon,,h\n", "52,30,5,15,40\n"},
        {"", "id;lat;;;lon;;;h\n", "1;52;30;15,5;5;15;0;40\n"},
        {"", "lat,Column2,lon,Column4,h\n", "-33,30,18,24.5,40\n"},
        {"4,1,7", "", "52,30,15,5,15,0,40\n"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row[1] << row[2]);
        EXPECT_TRUE(parsed(parserFor(llh, row[0]), QByteArray(row[1]) + row[2]).positions.empty());
    }
    const ParsedInput later =
        parsed(parserFor(llh), "lat,,lon,,h\n52.5,30,5.25,15,40\n52,30,5,15,40\n52,x,5,-1,40\n");
    EXPECT_EQ(later.positions.size(), 2U);
    EXPECT_EQ(later.failures.size(), 1U);
    EXPECT_TRUE(parsed(parserFor(llh), "lat,,lon,,h\n(deg),(min),(deg),(min),(m)\n52,30,5,15,40\n")
                    .positions.empty());
}

/// A line that settles what the first field is settles it for all: a longitude of 6 among 5.75 and
/// 6.25, the point 101 behind the point P1.
TEST(OrderDoubts, AreSettledByTheFirstPosition)
{
    const ParsedInput grid =
        parsed(parserFor(llh), "5.75,52.5,40.1\n6,52.5,40.2\n6.25,52.5,40.3\n");
    EXPECT_TRUE(grid.failures.empty());
    EXPECT_EQ(grid.positions.size(), 3U);
    const ParsedInput named =
        parsed(parserFor(neh), "P1 682.96 839.88 47.5\n101 682.96 839.88 47.5\n");
    EXPECT_EQ(named.positions.size(), 2U);
    // A height is never so high.
    const ParsedInput high =
        parsed(parserFor(neh), "465682.96,183928.88,47.5\n101,465682.96,183928.88\n");
    EXPECT_EQ(high.positions.size(), 1U);
    EXPECT_EQ(high.failures.size(), 1U);
    // Refused lines settle nothing.
    const ParsedInput later =
        parsed(parserFor(llh), "5 30 52 10\n6 31 52 11\n5 30.5 52.5 10\n6 31 52 11\n");
    EXPECT_EQ(later.failures.size(), 2U);
    EXPECT_EQ(later.positions.size(), 2U);
}

/// A line of another file may have its quality where the others have their height.
TEST(OrderDoubts, ADecimalNumberForANameIsRefusedOnEveryLine)
{
    const Plain rows[] = {
        {neh, "P1,463000,155000,40\n465682.96,183928.88,47.5,0.1\n", {}},
        {neh, "P1;463000;155000;40\n465682,96;183928,88;47,5;0,1\n", {}},
        {llh, "P1 5.5 52.5 40\n5.81 52.17 47.5 0.02\n", {}},
    };
    for (const Plain &row : rows) {
        SCOPED_TRACE(row.line);
        const ParsedInput all = parsed(parserFor(row.frame), QByteArray(row.line));
        EXPECT_EQ(all.positions.size(), 1U);
        ASSERT_EQ(all.failures.size(), 1U);
        EXPECT_TRUE(all.failures.front().contains(QLatin1String("or a point's name")));
    }
    for (const char *name : {"\"5.81\"", "101", "1.2.3", "P1.5", "1.5a", "."}) {
        const ParsedInput all =
            parsed(parserFor(llh), QByteArray("P1,5.5,52.5,40\n") + name + ",5.5,52.5,40\n");
        EXPECT_EQ(all.positions.size(), 2U) << name;
    }
    EXPECT_EQ(parsed(parserFor(llh), "name,lon,lat,h\n5.81,5.5,52.5,40\n").positions.size(), 1U);
}

/// As spreadsheets end their lines. What stands behind the last separator belongs to no line alone.
TEST(TrailingSeparators, EndLinesOfOneReading)
{
    const Pos position = Pos::fromLongLatH(5.25, 52.5, 40);
    for (const char *input :
         {"5.25;52.5;40;\n", "5,25;52,5;40;\n", "5.25,52.5,40,\n", "5.25\t52.5\t40\t\n",
          "P1;5.25;52.5;40;\n", "101,5.25,52.5,40,\n",
          "5\xC2\xB0"
          "15';52\xC2\xB0"
          "30';40;\n",
          "lon;lat;h;\n5.25;52.5;40;\n", "lon;lat;h\n5.25;52.5;40;\n",
          "# name,lon,lat,h\nA,5.25,52.5,40,\n", "name;lat;lon;h\nA;52,5;5,25;40;\n"}) {
        SCOPED_TRACE(input);
        const QByteArray bytes = input;
        const QByteArray last = bytes.mid(bytes.lastIndexOf('\n', bytes.size() - 2) + 1);
        const ParsedInput all = parsed(parserFor(llh), bytes + last);
        EXPECT_EQ(all.end, QString());
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        EXPECT_EQ(all.positions, (std::vector<Pos>{position, position}));
    }
    // The point 5 without its height?
    for (const char *input : {"5;52.5;40;\n", "101;5.25;52.5;\n", "P1;5.25;52.5;\n", "5.25;52.5;\n",
                              "E5;52.5;40;\n", "P1;5.25;52.5;;\n", "5.25;52.5;40;;;\n"}) {
        EXPECT_TRUE(parsed(parserFor(llh), input).positions.empty()) << input;
    }
    for (const char *later : {"101;5.25;52.5;40\n", "5.25;52.5;40;x\n", "5.25;52.5;;\n",
                              "5.25;52.5;\n", "5.25 52.5 40 7\n", "5.25;52.5;40;\"\"\n"}) {
        const ParsedInput all = parsed(parserFor(llh), QByteArray("5.25;52.5;40;\n") + later);
        EXPECT_EQ(all.positions.size(), 1U) << later;
        EXPECT_EQ(all.failures.size(), 1U) << later;
    }
    EXPECT_TRUE(parsed(parserFor(llh), "lat;lon;h\n51;5.25;52.5;\n").positions.empty());
    EXPECT_TRUE(parsed(parserFor(llh), "# lat;lon;h\n51;5.25;52.5;\n").positions.empty());
    // Behind the height stands another column, which may be empty: one comma too many.
    for (const char *columns : {"", "2,3,4", "name,n,e,h"}) {
        for (const char *line : {"P1,1,463.5,155.2,40,\n", "P1,1463.5,155.2,40,,\n"}) {
            SCOPED_TRACE(testing::Message() << columns << ' ' << line);
            const QByteArray headings = "name,n,e,h,note\n";
            EXPECT_TRUE(parsed(parserFor(neh, columns), headings + line).positions.empty());
            const ParsedInput later =
                parsed(parserFor(neh, columns), headings + "P0,1463.5,155.2,40,x\n" + line);
            EXPECT_EQ(later.positions.size(), 1U);
            EXPECT_EQ(later.failures.size(), 1U);
        }
    }
    // The comma of thousands in the place of the height's.
    EXPECT_TRUE(parsed(parserFor(neh), "name,n,e,h\nP1,463,000.5,155000.2,\n").positions.empty());
    EXPECT_EQ(parsed(parserFor(neh), "P1,1463.5,155.2,40,\nP1,1,463.5,155.2,\n").positions.size(),
              1U);
    EXPECT_EQ(parsed(parserFor(neh), "P1,1463.5,155.2,40,\nP2,1464.5,155.2,41,\n").positions.size(),
              2U);
    for (const char *later : {"A;5.25;52.5;40;x\n", "A;5.25;52.5;40;;\n", "A;5.25;52.5;\n"}) {
        const ParsedInput all =
            parsed(parserFor(llh), QByteArray("name;lon;lat;h\nA;5.25;52.5;40;\n") + later);
        EXPECT_EQ(all.positions.size(), 1U) << later;
        EXPECT_EQ(all.failures.size(), 1U) << later;
    }
}

TEST(TrailingSeparators, AloneInALineAreNothing)
{
    for (const char *row : {",,\n", ";;;\n", " , , ,\n", ";\n", "\t;\t;\n"}) {
        for (const char *columns : {"", "1,2,3", "lon,lat,h"}) {
            SCOPED_TRACE(testing::Message() << row << columns);
            const QByteArray first = QByteArray(columns) == "1,2,3" ? "" : "lon,lat,h\n";
            const ParsedInput all =
                parsed(parserFor(llh, columns), row + first + row + "5.25,52.5,40\n" + row);
            EXPECT_EQ(all.end, QString());
            EXPECT_TRUE(all.failures.empty());
            EXPECT_EQ(all.positions.size(), 1U);
        }
    }
    EXPECT_EQ(parsed(parserFor(llh), "5.25,52.5,40\n\"\",,\n").failures.size(), 1U);
}

TEST(OrderDoubts, LettersThatSayThatLatitudeStandsFirstAreRefused)
{
    for (const char *line : {"52.5N,5.25E,40\n", "P;N52.5;E 5.25;40\n", "52:30s 5:15w 40\n"}) {
        const ParsedInput all = parsed(parserFor(llh), QByteArray(line) + line);
        EXPECT_TRUE(all.positions.empty());
        ASSERT_EQ(all.failures.size(), 2U) << line << all.end.toStdString();
        EXPECT_TRUE(all.failures.back().contains(
            QLatin1String("say the order with a line of headings or --columns (")))
            << all.failures.back();
    }
}

/// The time of a position is none of its angles.
TEST(OrderDoubts, TimesBesideAnglesAreNoPieces)
{
    const Pos position = Pos::fromLongLatH(5.25, 52.5, 40);
    struct Row
    {
        const char *columns;
        const char *input;
    };
    for (const Row &row : {
             Row{"4,3,5", "2024/01/01 10:00:00.000 52.5 5.25 40 1 2\n"},
             Row{"3,2,4", "10:00 52.5 5.25 40\n"},
             Row{"3,2,4", "2024-01-01T10:00:00Z 52.5 5.25 40\n"},
             Row{"1,2,4", "5.25 52.5 10:00:00 40\n"},
             Row{"", "date time lat lon h\n2024/01/01 10:00:00 52.5 5.25 40\n"},
             Row{"", "2024-01-01T10:00:00 5.25 52.5 40\n"},
         }) {
        SCOPED_TRACE(row.input);
        const ParsedInput all = parsed(parserFor(llh, row.columns), row.input);
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        EXPECT_EQ(all.positions, (std::vector<Pos>{position}));
    }
    for (const Row &row : {Row{"3,2,4", "5d 52.5 5.25 40\n"}, Row{"3,2,4", "S 52.5 5.25 40\n"},
                           Row{"3,2,4", "52:30' 15 5.25 40\n"}, Row{"", "10:00 5.25 52.5 40\n"},
                           Row{"1,3,2,4", "10:00 52.5 5.25 40\n"}}) {
        EXPECT_TRUE(parsed(parserFor(llh, row.columns), row.input).positions.empty()) << row.input;
    }
}

/// As where a file of degrees and minutes stands behind one of named points.
TEST(OrderDoubts, PairsAreRefusedBehindNamesThatAreNoNumbers)
{
    const Plain refused[] = {
        {llh, "P1 5.5 52.25 10\n5 30 52 10\n", {}},
        {llh, "P1;5.5;52.25;10\n5;30,5;52;10,25\n", {}},
        {llh, "P1,5.5,52.25,10\n5,52,5,10\n", {}},
        {llh, "P1,5.5,52.25,10\n5,70,52,80\n", {}},
        {localLlh, "P1\t5.5\t52.25\t10\n5\t30.5\t52\t10\n", {}},
        {neh, "P1,463000.5,155000.5,40\n465682,96,183928,88\n", {}},
    };
    for (const Plain &row : refused) {
        SCOPED_TRACE(row.line);
        const ParsedInput all = parsed(parserFor(row.frame), row.line);
        EXPECT_EQ(all.end, QString());
        EXPECT_EQ(all.positions.size(), 1U);
        ASSERT_EQ(all.failures.size(), 1U);
        EXPECT_TRUE(all.failures.front().contains(QLatin1String("; say it with"))) << row.line;
    }
    for (const Plain &row : {
             Plain{llh, "P1 5.5 52.25 10\n101 5.25 52.5 10\n", {}},
             Plain{llh, "P1 5.5 52.25 10\n1001 5 52 10\n", {}},
             Plain{llh, "P1,5.5,52.25,10\n101,5.25,52.5,40\n", {}},
             Plain{llh, "P1 5.5 52.25 10\n\"5\" 30 52 10\n", {}},
             Plain{llh, "P1 5 52 10\n101 5 52 10\n", {}},
             Plain{llh, "name lon lat h\nP1 5.5 52.25 10\n5 30 52 10\n", {}},
             Plain{llh, "101 5.5 52.25 10.5\n5 30 52 10\n", {}},
             Plain{neh, "P1,463000,155000,40\n101,463000,155000,47\n", {}},
             Plain{neh, "P1 463000 155000 40\n101 463000 155000 47\n", {}},
         }) {
        SCOPED_TRACE(row.line);
        const ParsedInput all = parsed(parserFor(row.frame), row.line);
        EXPECT_TRUE(all.failures.empty()) << all.failures.front();
        EXPECT_GE(all.positions.size(), 2U);
    }
}

TEST(OrderDoubts, AreThoseOfThePageOnValues)
{
    const QString page =
        QString::fromUtf8(test::readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/docs/values.md")));
    const QStringList rows =
        page.section(QLatin1String("| line | `--from` | why |\n|---|---|---|\n"), 1)
            .section(QLatin1String("\n\n"), 0, 0)
            .split(QLatin1Char('\n'));
    EXPECT_EQ(rows.size(), 10);
    for (const QString &row : rows) {
        const QString line = row.section(QLatin1Char('`'), 1, 1);
        const auto frame = positions::findFrame(row.section(QLatin1Char('`'), 3, 3));
        const bool isOfAny = row.section(QLatin1Char('|'), 2, 2).trimmed() == QLatin1String("any");
        ASSERT_TRUE(isOfAny || frame != nullptr) << row;
        const ParsedInput all =
            parsed(parserFor(isOfAny ? llh : frame->frame), line.toUtf8() + '\n');
        EXPECT_EQ(all.failures.size(), 1U) << row;
        EXPECT_TRUE(all.positions.empty()) << row;
    }
}

} // namespace
} // namespace KelStd
