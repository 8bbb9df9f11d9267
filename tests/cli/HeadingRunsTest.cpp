// What headings and units of the input make of a run of the program.

#include "cli/ProgramRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::numberIn;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

/// Far behind the first lines, on any number of threads, in the input's order.
TEST(HeadingRuns, HeadingsInALaterBlockEndTheRunThere)
{
    const ProgramRun program;
    const QByteArray line = "A,5.25,52.5,40\n";
    const QByteArray same = "# name,lon,lat,h\n";
    const QByteArray start = line.repeated(30000) + same + line.repeated(30000);
    const QString file =
        program.file(QStringLiteral("two.csv"), start + "name,lat,lon,h\n" + line.repeated(30000));
    for (const char *threads : {"--threads=1", "--threads=4"}) {
        const auto result = program.convert(system, {}, {QString::fromLatin1(threads), file});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.outLines().size(), 60001);
        EXPECT_THAT(result.err, Mentions(":60002: these headings give another order than line 1"));
        EXPECT_EQ(result.errLines().size(), 2);
    }
    const auto json = program.convert(system, {}, {QStringLiteral("--geojson"), file});
    EXPECT_TRUE(json.out.endsWith(QLatin1String("]}\n"))) << json.out.right(100);
}

TEST(HeadingRuns, TheProgramHasAnOptionToSkip)
{
    const QByteArray input = "Survey 2024 site B\n5.25,52.5,40\n";
    EXPECT_EQ(ProgramRun().convert(system, input).status, 2);
    EXPECT_EQ(ProgramRun().convert(system, input, {QStringLiteral("--skip=1")}).status, 0);
    for (const char *skip : {"--skip=x", "--skip=-1", "--skip=1.5", "--skip="}) {
        const auto result = ProgramRun().convert(system, input, {QString::fromLatin1(skip)});
        EXPECT_EQ(result.status, 2) << skip;
        EXPECT_THAT(result.err, Mentions("is no number of lines"));
    }
}

TEST(HeadingRuns, TheProgramSaysThatNothingIsLeftBehindTheSkippedLines)
{
    const auto result =
        ProgramRun().convert(system, "5.25,52.5,40\n5.25,52.5,40\n", {QStringLiteral("--skip=2")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errLines(),
              (QStringList{QStringLiteral(
                  "kelstd: warning: --skip 2 passes over all of <stdin>: line 2 is its last")}));
    EXPECT_EQ(ProgramRun().convert(system, "a\nlon,lat,h\n", {QStringLiteral("--skip=1")}).err,
              QString());
}

TEST(HeadingRuns, RejectsHaveTheHeadingsBehindASign)
{
    const ProgramRun program;
    const QString rejects = program.home().path(QStringLiteral("rejects.csv"));
    const auto result = program.convert(system, "# name,lat,lon,h\nA,52.5,5.25,40\nB,x,5.25,40\n",
                                        {QStringLiteral("--rejects"), rejects});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(test::readFile(rejects), QByteArray("# name,lat,lon,h\nB,x,5.25,40\n"));
    const auto allBad = program.convert(system, "# name,lat,lon,h\nB,x,5.25,40\n",
                                        {QStringLiteral("--rejects"), rejects});
    EXPECT_EQ(allBad.status, 1);
    EXPECT_EQ(test::readFile(rejects), QByteArray("# name,lat,lon,h\nB,x,5.25,40\n"));
}

/// The grid of 50 to 54 N and 3 to 7 E, which longitude and latitude exchanged would miss.
TEST(HeadingRuns, GeoidHeightsFindThemLikewise)
{
    const ProgramRun program;
    program.file(QStringLiteral("geoid_model_list/small.gtx"), test::gtxBytes(test::slopingGrid()));
    const auto heights = [&program](const QByteArray &input, const QStringList &options = {}) {
        return program.run(QStringList{QStringLiteral("geoid"), QStringLiteral("height"),
                                       QStringLiteral("--model"), QStringLiteral("small.gtx")}
                               + options,
                           input);
    };
    for (const char *headings : {"# name,lat,lon,h\n", "Survey 2024 site B\nname,lat,lon,h\n"}) {
        const auto result = heights(QByteArray(headings) + "A,52.5,3.5,100\n");
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.outLines().value(1),
                  QStringLiteral("A,3.50000000000,52.50000000000,100.00000,42.55000,57.45000"));
    }
    const auto noted = heights("name,code,lat,lon,h\nA,T,52.5,3.5,100\n");
    EXPECT_EQ(noted.status, 0);
    EXPECT_EQ(noted.err,
              QStringLiteral("kelstd: note: columns that are not in the output: \"code\"\n"));
    EXPECT_EQ(heights("Survey 2024 site B\nA,3.5,52.5,100\n").status, 2);
    EXPECT_EQ(heights("Survey 2024 site B\nA,3.5,52.5,100\n", {QStringLiteral("--skip=1")}).status,
              0);
    EXPECT_EQ(heights("A,3.5,52.5,100\nname,lat,lon,h\n").status, 2);
    EXPECT_EQ(heights("# lat,lon,ellipsoidal_height\n52.5,3.5,100\n", {"--inverse"}).status, 2);
    const auto doubtful = heights("5 30 52 10\n");
    EXPECT_EQ(doubtful.status, 1);
    EXPECT_THAT(doubtful.err, Mentions("; say it with a line of headings, or write angles"));
}

QStringList plane(const QStringList &more)
{
    return QStringList{QStringLiteral("--from=local-neh")} + more;
}

/// 3937 US survey feet are 1200 m, 10000 feet 3048 m.
TEST(LengthUnitOfThePlane, IsThatOfTheInputAndOfTheOutput)
{
    const ProgramRun program;
    const auto metres =
        program.convert(system, "465600,183600,12\n", plane({QStringLiteral("--csv")}));
    ASSERT_EQ(metres.status, 0) << metres.err;
    const auto expected = csvRows(metres.out).value(0);
    struct Row
    {
        const char *unit;
        const char *suffix;
        QByteArray line;
    };
    const Row rows[] = {{"us-ft", "us_ft", "1527556,602361,39.37\n"},
                        {"ft", "ft", "1527559.0551181102,602362.2047244095,39.37007874015748\n"}};
    for (const Row &row : rows) {
        const QString unit = QStringLiteral("--length-unit=") + QString::fromLatin1(row.unit);
        const auto feet = program.convert(system, row.line, plane({unit}));
        ASSERT_EQ(feet.status, 0) << feet.err;
        const auto values = csvRows(feet.out).value(0);
        for (const char *angle : {"wgs84_longitude_deg", "wgs84_latitude_deg"}) {
            EXPECT_NEAR(numberIn(values, QString::fromLatin1(angle)),
                        numberIn(expected, QString::fromLatin1(angle)), 2e-11);
        }
        const QString northing =
            QStringLiteral("local_northing_") + QString::fromLatin1(row.suffix);
        EXPECT_NEAR(numberIn(values, northing), row.line.split(',').first().toDouble(), 1e-5);
        // What is printed so is read so.
        const auto again = program.convert(system, feet.out.toUtf8(), plane({unit}));
        ASSERT_EQ(again.status, 0) << again.err;
        EXPECT_NEAR(numberIn(csvRows(again.out).value(0), northing),
                    row.line.split(',').first().toDouble(), 2e-5);
        // The headings say it as well.
        const auto headed = program.convert(system, feet.out.toUtf8(), plane({}));
        ASSERT_EQ(headed.status, 0) << headed.err;
        EXPECT_NEAR(numberIn(csvRows(headed.out).value(0), QStringLiteral("local_northing_m")),
                    465600.0, 1e-5);
        // Of every frame, and of heights.
        const auto typed = program.convert(system, "5.25,52.5,1000\n", {unit});
        EXPECT_NEAR(numberIn(csvRows(typed.out).value(0),
                             QStringLiteral("wgs84_height_") + QString::fromLatin1(row.suffix)),
                    1000.0, 1e-5);
    }
}

} // namespace
} // namespace KelStd
