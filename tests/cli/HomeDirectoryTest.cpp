// A home directory that is not there, or in which nothing can be made, in all commands.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QFileInfo>

#include <ostream>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;

struct Row
{
    const char *testName;
    QList<const char *> words;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.testName;
}

const QByteArray point = "5.4,52.2,43\n";

QStringList wordsOf(const Row &row)
{
    QStringList words;
    for (const char *word : row.words)
        words += QString::fromUtf8(word);
    return words;
}

class NeedsAHome : public testing::TestWithParam<Row>
{};

TEST_P(NeedsAHome, SaysThatThereIsNoneAndMakesNone)
{
    ProgramRun program;
    const QString home = program.home().path(QStringLiteral("nowhere"));
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home);
    const auto result = program.run(wordsOf(GetParam()), point);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.errLines().value(0),
              QStringLiteral("kelstd: the home directory %1 is no directory; create it, or set "
                             "KELSTD_HOME_DIR to another one")
                  .arg(home));
    EXPECT_FALSE(QFileInfo::exists(home));
}

// /proc is a directory in which nobody can make anything.
TEST_P(NeedsAHome, SaysThatNothingCanBeMadeInIt)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/proc"));
    const auto result = program.run(wordsOf(GetParam()), point);
    if (QLatin1String(GetParam().testName) == QLatin1String("GeoidList")) {
        EXPECT_EQ(result.status, 0); // those that are delivered
        return;
    }
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("/proc"));
}

INSTANTIATE_TEST_SUITE_P(
    Commands, NeedsAHome,
    testing::Values(Row{"Convert", {"convert", "--system", "EPSG:28992"}},
                    Row{"SystemShow", {"system", "show", "Amersfoort / RD New"}},
                    Row{"SystemSearch", {"system", "search", "mga 55"}},
                    Row{"SystemShifts", {"system", "shifts", "EPSG:28992"}},
                    Row{"SystemImport", {"system", "import", "EPSG:28992"}},
                    Row{"SystemExport", {"system", "export", "EPSG:28992", "--as", "wkt2"}},
                    Row{"LibraryList", {"library", "list"}},
                    Row{"LibraryShow", {"library", "show", "WGS 84"}},
                    Row{"LibraryAdd", {"library", "add", "WGS 84", "--kind", "ellipsoid"}},
                    Row{"LibraryRemove", {"library", "remove", "WGS 84"}},
                    Row{"LibraryRestore", {"library", "restore"}},
                    Row{"LibraryCheck", {"library", "check"}},
                    Row{"DisplayShow", {"display", "show"}},
                    Row{"DisplaySet", {"display", "set", "plane-decimals", "3"}},
                    Row{"DisplayReset", {"display", "reset"}},
                    Row{"GeoidHeight", {"geoid", "height", "--model", "egm96_15.gtx"}},
                    Row{"GeoidList", {"geoid", "list"}}, Row{"GridList", {"grid", "list"}}),
    [](const auto &row) { return row.param.testName; });

class NeedsNoHome : public testing::TestWithParam<Row>
{};

TEST_P(NeedsNoHome, WorksWithoutOne)
{
    ProgramRun program;
    for (const QString &home :
         {program.home().path(QStringLiteral("nowhere")), QStringLiteral("/proc")}) {
        program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home);
        const auto result = program.run(wordsOf(GetParam()));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, QString());
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, NeedsNoHome,
                         testing::Values(Row{"Format", {"format", "--type", "Double", "3"}},
                                         Row{"Parse", {"parse", "--typed", "3"}},
                                         Row{"Time", {"time", "now"}},
                                         Row{"LeapSeconds", {"time", "leap-seconds"}},
                                         Row{"Help", {"convert", "--help"}},
                                         Row{"Version", {"--version"}}),
                         [](const auto &row) { return row.param.testName; });

} // namespace
} // namespace KelStd
