// The examples that a newcomer runs first.

#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "support/Printers.h"

#include <QtCore/QDir>

namespace KelStd {
namespace {

using test::numberIn;
using test::ProgramRun;

QString example(const char *name)
{
    return QStringLiteral(KELSTD_TEST_SOURCE_DIR "/examples/") + QString::fromLatin1(name);
}

// Meetkundige Dienst, report MDGAP-2000.31: the test point TM08, on Bessel 1841 at
// 5d48'38.3390"E 52d10'46.2700"N, 47.582 m.
TEST(Examples, MeasuredPositionsBecomeRdCoordinates)
{
    const auto result = ProgramRun().run({QStringLiteral("convert"), QStringLiteral("--system"),
                                          example("rd_new.xml"), example("rd_new_points.csv")});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    ASSERT_EQ(result.outLines().size(), 6);
    const auto row = test::csvRows(result.outLines().mid(0, 2).join(QLatin1Char('\n'))).value(0);
    EXPECT_EQ(row.value(QStringLiteral("point")), QStringLiteral("TM08"));
    // Half of the published 0.0001" and what the rounded parameters of the report add to it.
    const double angle = 0.0001 / 3600;
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_longitude_deg")),
                5 + 48 / 60.0 + 38.3390 / 3600, angle);
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_latitude_deg")),
                52 + 10 / 60.0 + 46.2700 / 3600, angle);
    EXPECT_NEAR(numberIn(row, QStringLiteral("local_ellipsoidal_height_m")), 47.582, 0.0015);
}

// Ordnance Survey, "A guide to coordinate systems in Great Britain", annex C:
// 651409.903 313177.270 is 52d39'27.2531"N 1d43'4.5177"E.
TEST(Examples, GridPositionsBecomeGeographicOnes)
{
    const auto result = ProgramRun().run({QStringLiteral("convert"), QStringLiteral("--from"),
                                          QStringLiteral("local-neh"), QStringLiteral("--system"),
                                          example("british_national_grid.xml"),
                                          example("british_national_grid_points.txt")});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto rows = test::csvRows(result.out);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows.first().value(QStringLiteral("point")), QStringLiteral("Caister"));
    const double halfUnit = 0.00005 / 3600;
    EXPECT_NEAR(numberIn(rows.first(), QStringLiteral("local_longitude_deg")),
                1 + 43 / 60.0 + 4.5177 / 3600, halfUnit);
    EXPECT_NEAR(numberIn(rows.first(), QStringLiteral("local_latitude_deg")),
                52 + 39 / 60.0 + 27.2531 / 3600, halfUnit);
}

/// The first point as the README shows it on a terminal of 80 columns.
TEST(Examples, LookOnATerminalAsTheReadmeShows)
{
    const auto result =
        test::Terminal(80).run(ProgramRun(), {QStringLiteral("convert"), QStringLiteral("--system"),
                                              example("rd_new.xml"), example("rd_new_points.csv")});
    ASSERT_EQ(result.status, 0) << result.err;
    const QString firstPoint = QStringList(result.outLines().mid(0, 9)).join(QLatin1Char('\n'));
    EXPECT_TRUE(firstPoint.startsWith(QLatin1String("TM08\n"))) << firstPoint;
    const QString readme =
        QString::fromUtf8(test::readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/README.md")));
    EXPECT_TRUE(readme.contains(QLatin1Char('\n') + firstPoint + QLatin1String("\n```")))
        << firstPoint;
}

/// Every command that the page on values shows, with what it shows below it.
TEST(Examples, SingleValuesAreAsThePageOnValuesShows)
{
    const QString page =
        QString::fromUtf8(test::readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/docs/values.md")));
    const QStringList shown = page.section(QLatin1String("```text\n"), 1)
                                  .section(QLatin1String("```"), 0, 0)
                                  .split(QLatin1String("$ kelstd "), Qt::SkipEmptyParts);
    EXPECT_EQ(shown.size(), 8);
    for (const QString &example : shown) {
        const QString command = example.section(QLatin1Char('\n'), 0, 0);
        const auto result = ProgramRun().run(QProcess::splitCommand(command));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, example.section(QLatin1Char('\n'), 1)) << command;
    }
}

TEST(Examples, AreTheSystemsOfThePublishedFigures)
{
    for (const char *name : {"rd_new.xml", "british_national_grid.xml"}) {
        EXPECT_EQ(test::readFile(example(name)),
                  test::readFile(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/")
                                 + QString::fromLatin1(name)));
    }
}

} // namespace
} // namespace KelStd
