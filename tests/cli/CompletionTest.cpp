// What the program proposes to shells that complete its command lines.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

#include <sys/resource.h>

#include <ostream>

namespace KelStd {
namespace {

using test::ProgramRun;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;

struct Answer
{
    QString instructions;
    QStringList texts;
    QStringList remarks;
};

/// Of the program to zsh, in which `line` is split at its blanks; the last word is the one typed.
Answer answerTo(const ProgramRun &program, const QStringList &words)
{
    const auto result =
        program.run(QStringList{QStringLiteral("complete"), QStringLiteral("zsh")} + words);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    QStringList lines = result.outLines();
    Answer answer;
    answer.instructions = lines.takeFirst();
    for (const QString &line : lines) {
        answer.texts += line.section(QLatin1Char('\t'), 0, 0);
        answer.remarks += line.section(QLatin1Char('\t'), 1);
    }
    return answer;
}

Answer answerTo(const ProgramRun &program, const char *line)
{
    return answerTo(program, QString::fromUtf8(line).split(QLatin1Char(' ')));
}

QStringList commandNames(const ProgramRun &program)
{
    return program.run({QStringLiteral("help"), QStringLiteral("names")}).outLines();
}

// The words are those that the help of the commands has.
struct Words
{
    const char *testName;
    const char *line;
    QStringList proposed;
};

void PrintTo(const Words &row, std::ostream *out)
{
    *out << row.line;
}

class Completion : public testing::TestWithParam<Words>
{};

TEST_P(Completion, ProposesTheWords)
{
    QStringList proposed = answerTo(ProgramRun(), GetParam().line).texts;
    QStringList expected = GetParam().proposed;
    proposed.sort();
    expected.sort();
    EXPECT_EQ(proposed, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, Completion,
    testing::Values(
        Words{"Command", "conv", {"convert"}}, Words{"Group", "sys", {"system"}},
        Words{"Member", "system im", {"import"}},
        Words{"MembersOfAGroup", "site ", {"fit", "check"}},
        Words{"CommandThatBeginsAnother", "time ", {"leap-seconds", "now"}},
        Words{"Option", "convert --thr", {"--threads"}},
        Words{"ShortOption", "system export -o", {"-o"}},
        Words{"Frames", "convert --from local-", {"local-llh", "local-neh"}},
        Words{"ValueBehindASign", "convert --from=site", {"--from=site-neh"}},
        Words{"FramesInAList",
              "convert --frames local-neh,wgs",
              {"local-neh,wgs84-llh", "local-neh,wgs84-xyz"}},
        Words{"NoneTwiceInAList", "convert --frames site-neh,site", {}},
        Words{"Forms", "system export x --as ", {"wkt2", "projjson", "proj", "esri", "xml"}},
        Words{"WordsOfAnOption", "convert --format ", {"configured", "exact"}},
        Words{"Styles", "convert --angle ", {"dms", "degree", "second", "radian"}},
        Words{"Units", "convert --length-unit ", {"m", "ft", "us-ft"}},
        Words{"PlanMethods", "site fit --horizontal ", {"four", "rotation", "shift", "none"}},
        Words{"HeightMethods", "site fit --vertical ", {"fixed", "plane", "curve", "none"}},
        Words{"Counts", "datum fit --parameters ", {"three", "seven"}},
        Words{"Scales", "time --from ", {"utc", "gpst", "gpsw", "local"}},
        Words{"Kinds",
              "library list --kind ",
              {"systems", "custom", "standard", "ellipsoids", "projections"}},
        Words{"KindsToChange", "library remove --kind ", {"system", "ellipsoid", "projection"}},
        Words{"PointNames", "convert --names ", {"number", "utc"}},
        Words{"ValueTypes", "format --type Lat", {"Latitude"}},
        Words{"Columns", "convert --fields local_n", {"local_northing"}},
        Words{"ColumnsInAList", "convert --fields point,wgs84_lat", {"point,wgs84_latitude"}},
        Words{"ColumnsOfAReceiver", "convert --nmea --fields utc,qual", {"utc,quality"}},
        Words{"NoColumnsOfAReceiver", "convert --fields qual", {}},
        Words{"GeoidModels", "geoid info egm", {"egm96_15.gtx"}},
        Words{"GeoidModelsOfAnOption", "geoid height --model egm", {"egm96_15.gtx"}},
        Words{"Settings", "display set latlong-s", {"latlong-style"}},
        Words{"ValuesOfASetting",
              "display set latlong-style ",
              {"dms", "degree", "second", "radian"}},
        Words{"FormsOfHelp", "convert --help ", {"full", "man"}},
        Words{"CommandsBehindHelp", "help geoid in", {"info"}},
        Words{"NothingBehindTheEnd", "convert -- --thr", {}},
        Words{"NothingForAnUnknownCommand", "frobnicate --", {}},
        Words{"NothingForANumber", "convert --threads ", {}},
        Words{"GivenOptionsNotAgain", "convert --threads 2 --thr", {}},
        Words{"ThoseThatMayBeRepeated", "site fit --without A --witho", {"--without"}}),
    [](const auto &row) { return std::string(row.param.testName); });

// A new option is completed without further work.
TEST(CompletionOfOptions, HasAllThatTheHelpLists)
{
    const ProgramRun program;
    static const QRegularExpression option(QStringLiteral("^  (?:-\\w, )?(--[\\w-]+)"),
                                           QRegularExpression::MultilineOption);
    for (const QString &name : commandNames(program)) {
        const QStringList words = name.split(QLatin1Char(' '));
        const QString help = program.run(words + QStringList{QStringLiteral("--help=full")}).out;
        // Behind the list of options stand examples in some helps.
        const QString list = help.section(QStringLiteral("\nOptions:\n"), 1).section("\n\n", 0, 0);
        QStringList listed;
        auto matches = option.globalMatch(list);
        while (matches.hasNext())
            listed += matches.next().captured(1);
        QStringList proposed = answerTo(program, words + QStringList{QStringLiteral("--")}).texts;
        listed.sort();
        proposed.sort();
        EXPECT_EQ(proposed, listed) << name;
        EXPECT_THAT(proposed, Contains(QStringLiteral("--help")));
    }
}

// Whoever adds an option decides what is proposed for its value: these are numbers, names that
// nobody knows yet, and texts of the user's own.
TEST(CompletionOfOptions, HasValuesForAllButThese)
{
    const QStringList free = {"skip",
                              "layer",
                              "height",
                              "precision",
                              "threads",
                              "int-digits",
                              "utm-zone",
                              "central-meridian",
                              "scale",
                              "false-easting",
                              "false-northing",
                              "name",
                              "at",
                              "bbox",
                              "shift",
                              "set",
                              "shift-parameters",
                              "sigma-h",
                              "sigma-v",
                              "without",
                              "offset"};
    const ProgramRun program;
    const QString points = program.file(QStringLiteral("points.csv"), "name;lat;lon\n");
    static const QRegularExpression option(QStringLiteral("^  (?:-\\w, )?--([\\w-]+) [^ ]"),
                                           QRegularExpression::MultilineOption);
    for (const QString &name : commandNames(program)) {
        const QStringList words = name.split(QLatin1Char(' '));
        const QString help = program.run(words + QStringList{QStringLiteral("--help=full")}).out;
        const QString list = help.section(QStringLiteral("\nOptions:\n"), 1).section("\n\n", 0, 0);
        auto matches = option.globalMatch(list);
        while (matches.hasNext()) {
            const QString each = matches.next().captured(1);
            const Answer answer = answerTo(
                program, words + QStringList{points, QStringLiteral("--") + each, QString()});
            const bool isNewName = each == QLatin1String("as") && name != "system export";
            EXPECT_EQ(answer.texts.isEmpty() && answer.instructions.isEmpty(),
                      free.contains(each) || isNewName)
                << name << " --" << each;
        }
    }
}

TEST(CompletionOfFiles, IsLeftToTheShell)
{
    const ProgramRun program;
    for (const char *line : {"convert ", "convert x.csv ", "convert --rejects ", "convert -o ",
                             "site fit --points ", "geoid convert ", "geoid convert a.ggf ",
                             "grid add ", "library replace X ", "system import "}) {
        EXPECT_EQ(answerTo(program, line).instructions, QStringLiteral("files")) << line;
        EXPECT_EQ(answerTo(program, line).texts, QStringList()) << line;
    }
    EXPECT_EQ(answerTo(program, "convert --dir ").instructions, QStringLiteral("directories"));
    EXPECT_EQ(answerTo(program, "convert --fields ").instructions, QStringLiteral("open"));
}

TEST(CompletionOfSystems, HasTheNamesOfTheLibrary)
{
    const ProgramRun program;
    const QString rdNew = QStringLiteral("Amersfoort / RD New");
    for (const QStringList &words :
         {QStringList{"convert", "--system", "Amersf"}, QStringList{"convert", "--to", "amers"},
          QStringList{"convert", "--system", "\"Amersfoort / R"},
          QStringList{"convert", "--system", "'Amersfoort / R"},
          QStringList{"convert", "--system", "Amersfoort\\ /\\ R"},
          QStringList{"system", "show", "Am"}, QStringList{"system", "export", "Am"},
          QStringList{"site", "check", "--system", "Am"}, QStringList{"library", "show", "Am"},
          QStringList{"library", "restore", "Am"}, QStringList{"library", "remove", "Am"}})
        EXPECT_THAT(answerTo(program, words).texts, Contains(rdNew))
            << words.join(QLatin1Char(' '));
    // A system that a user added stands beside them.
    program.run(
        {"library", "add", test::systemPath("ed50_utm_31n.xml"), "--as", "My \"quoted\" $ite"});
    EXPECT_EQ(answerTo(program, "library show My").texts,
              QStringList(QStringLiteral("My \"quoted\" $ite")));
    EXPECT_EQ(answerTo(program, "library show --kind ellipsoids My").texts, QStringList());
    EXPECT_THAT(answerTo(program, "system compose --ellipsoid Bess").texts,
                Contains(QStringLiteral("Bessel 1841")));
    EXPECT_THAT(answerTo(program, "system compose --ellipsoid GRS8").texts,
                Contains(QStringLiteral("GRS80")));
    EXPECT_THAT(answerTo(program, "system compose --projection UTM").texts,
                UnorderedElementsAre(QStringLiteral("UTM North"), QStringLiteral("UTM South")));
}

/// What PROJ's own program lists of the systems whose codes begin so.
QStringList codesOfProj(const QString &beginning)
{
    QProcess projinfo;
    projinfo.start(QStringLiteral("projinfo"), {"--list-crs", "--authority", "EPSG"});
    EXPECT_TRUE(projinfo.waitForFinished());
    QStringList codes;
    for (const QString &line :
         QString::fromUtf8(projinfo.readAllStandardOutput()).split(QLatin1Char('\n'))) {
        const QString code = line.section(QLatin1Char(' '), 0, 0);
        if (code.startsWith(beginning) && !line.contains(QLatin1String("[deprecated]")))
            codes += code;
    }
    codes.sort();
    codes.removeDuplicates(); // a system of two areas is listed twice
    return codes;
}

TEST(CompletionOfSystems, HasTheCodesOfPROJsDatabase)
{
    const ProgramRun program;
    for (const char *beginning : {"EPSG:2899", "EPSG:326", "EPSG:5"}) {
        QStringList proposed =
            answerTo(program, QStringList{"convert", "--system", beginning}).texts;
        proposed.sort();
        EXPECT_EQ(proposed, codesOfProj(QString::fromLatin1(beginning))) << beginning;
        EXPECT_GE(proposed.size(), 3) << beginning;
    }
    EXPECT_EQ(answerTo(program, "system import 2899").texts,
              (QStringList{"2899", "28991", "28992"}));
    EXPECT_THAT(answerTo(program, "system shifts EPSG:28992").remarks,
                ElementsAre(QStringLiteral("Amersfoort / RD New")));
    // Its names where the library has none.
    EXPECT_THAT(answerTo(program, QStringList{"convert", "--system", "\"ED50 / UTM zone 3"}).texts,
                IsSupersetOf({QStringLiteral("ED50 / UTM zone 31N"),
                              QStringLiteral("ED50 / UTM zone 32N")}));
}

// A key that is pressed by the way unpacks nothing and lays nothing out.
TEST(CompletionOfSystems, ChangesNothing)
{
    ProgramRun program;
    const QString fresh = program.home().path(QStringLiteral("fresh"));
    QDir().mkpath(fresh);
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), fresh);
    EXPECT_THAT(answerTo(program, "convert --system Am").texts,
                ElementsAre(QStringLiteral("Amersfoort / RD New")));
    EXPECT_THAT(answerTo(program, "convert --system EPSG:2899").texts,
                ElementsAre(QStringLiteral("EPSG:28992"))); // the library's own
    EXPECT_THAT(answerTo(program, "convert --system EPSG:2399").texts, ElementsAre());
    EXPECT_EQ(QDir(fresh).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/no/such/home"));
    program.setVariable(QStringLiteral("KELSTD_BIN_DIR"), QStringLiteral("/no/such/program"));
    EXPECT_EQ(answerTo(program, "convert --system Am").texts, QStringList());
    EXPECT_EQ(answerTo(program, "conv").texts, QStringList(QStringLiteral("convert")));
}

TEST(CompletionOfColumns, HasTheHeadingsOfTheInput)
{
    const ProgramRun program;
    const auto headings = [&program](const QByteArray &content, const char *option) {
        const QString file = program.file(QStringLiteral("input.csv"), content);
        return answerTo(program, {"convert", file, QString::fromLatin1(option), "St"}).texts;
    };
    EXPECT_EQ(headings("Station;Northing;Easting\nA;1;2\n", "--columns"),
              QStringList(QStringLiteral("Station")));
    EXPECT_EQ(headings("\xEF\xBB\xBF\n# Station id,North,East\n", "--fields"),
              QStringList(QStringLiteral("Station id")));
    EXPECT_EQ(headings("1;2;3\nSt;1;2\n", "--columns"), QStringList());
    EXPECT_EQ(headings("\"a, St b\",\"St\",c\nA,1,2\n", "--columns"),
              QStringList(QStringLiteral("St")));
    EXPECT_EQ(headings(QByteArray("St\0;x", 5), "--columns"), QStringList());
    EXPECT_EQ(headings("", "--columns"), QStringList());
}

struct BashLine
{
    const char *line;
    QStringList printed; ///< all lines of the answer
};

// Bash replaces what stands behind its last break (":", "=") or behind an open quotation mark.
TEST(CompletionForBash, IsWrittenAsTheLineHasIt)
{
    const QString breaks = QStringLiteral(" \t\n\"'@><=;|&(:");
    ProgramRun program;
    program.run(
        {"library", "add", test::systemPath("ed50_utm_31n.xml"), "--as", "My \"quoted\" $ite"});
    const BashLine rows[] = {
        {"kelstd convert --system Amersf", {"files", "\"Amersfoort / RD New\""}},
        {"kelstd convert --system \"Amersf", {"files", "Amersfoort / RD New"}},
        {"kelstd convert --system 'Amersf", {"files", "Amersfoort / RD New"}},
        {"kelstd convert --system Amersfoort\\ /\\ R", {"files", "\"Amersfoort / RD New\""}},
        {"kelstd convert --system=Amersf", {"files", "\"Amersfoort / RD New\""}},
        {"kelstd convert --system EPSG:28992", {"files", "28992"}},
        {"kelstd convert --system \"EPSG:28992", {"files", "EPSG:28992"}},
        {"kelstd convert --from=site", {"", "site-neh"}},
        {"kelstd library show My", {"", "\"My \\\"quoted\\\" \\$ite\""}},
        {"kelstd library show \"My", {"", "My \\\"quoted\\\" \\$ite"}},
        {"kelstd library show 'My", {"", "My \"quoted\" $ite"}},
        {"kelstd convert x.csv >", {"files"}},
        {"kelstd convert x.csv 2>er", {"files"}},
        {"kelstd convert x.csv > y --thr", {"", "--threads"}},
        {"./build/kelstd conv", {"", "convert"}},
        {"kelstd  site   ch", {"", "check"}},
    };
    for (const BashLine &row : rows) {
        const auto result = program.run({"complete", "bash", breaks, QString::fromUtf8(row.line)});
        EXPECT_EQ(result.outLines(), row.printed) << row.line;
    }
}

TEST(CompletionCommand, IsForShellsAlone)
{
    const ProgramRun program;
    for (const QStringList &arguments :
         {QStringList{"complete"}, QStringList{"complete", "tcsh", "x"},
          QStringList{"complete", "bash", "x"}, QStringList{"complete", "zsh"}}) {
        const auto result = program.run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, test::Mentions("'bash BREAKS LINE'"));
    }
    EXPECT_THAT(program.run({"--help"}).out, Not(test::Mentions("complete")));
}

#ifndef KELSTD_TEST_SANITIZED
TEST(CompletionCommand, IsDoneBeforeAPersonWaits)
{
    const ProgramRun program;
    const auto milliseconds = [] {
        rusage usage{};
        getrusage(RUSAGE_CHILDREN, &usage);
        return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000
               + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
    };
    program.run({"library", "list"}); // which lays the library out
    for (const char *line : {"convert --", "convert --from ", "convert --system Amers",
                             "convert --fields ", "library show Am"}) {
        const auto before = milliseconds();
        answerTo(program, line);
        EXPECT_LT(milliseconds() - before, 150) << line;
    }
}
#endif

} // namespace
} // namespace KelStd
