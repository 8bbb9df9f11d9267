#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

#include <ostream>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;

struct CommandWords
{
    const char *command;
    QList<const char *> mentioned;
};

const QList<CommandWords> &commands()
{
    static const QList<CommandWords> rows = {
        {"convert",
         {"--system FILE.xml|NAME",
          "--from FRAME",
          "--table",
          "--csv",
          "--format configured|exact",
          "--precision N[,M]",
          "--angle STYLE",
          "--length-unit UNIT",
          "--layer NAME",
          "--names WHAT",
          "-o, --output FILE ",
          "--force",
          "dms, degree, second, radian",
          "52d30'15.5\"",
          "--help",
          "INPUT",
          "wgs84-llh",
          "wgs84-xyz",
          "local-llh",
          "local-neh",
          "site-neh",
          "longitude [deg], latitude [deg], height [m]",
          "X [m], Y [m], Z [m]",
          "northing [m], easting [m], height [m]",
          "Exit status"}},
        {"format",
         {"--type TYPE", "--unit UNIT", "--to UNIT", "--style STYLE", "--precision N",
          "--erase-zeros", "--exact", "--table", "--int-digits N", "--show-unit", "--help",
          "ElevationHeight", "US Foot", "Exit status"}},
        {"formats", {"--help", "GDAL", "Exit status"}},
        {"parse",
         {"--type TYPE", "--unit UNIT", "--style STYLE", "--typed", "--help", "Latitude", "Degree",
          "Exit status"}},
        {"system show", {"FILE.xml|NAME", "--help"}},
        {"library list", {"--dir D", "--kind KIND", "--names", "--help"}},
        {"library show", {"--dir D", "--kind KIND", "NAME", "--help"}},
        {"library add",
         {"--dir D", "--kind KIND", "--as NAME", "--create", "FILE.xml", "--help", "Exit status"}},
        {"library replace", {"--dir D", "NAME FILE.xml", "--help", "Exit status"}},
        {"library remove", {"--force", "--dir D", "--kind KIND", "NAME", "--help", "Exit status"}},
        {"library restore", {"--dir D", "--kind KIND", "[NAME...]", "--help", "Exit status"}},
        {"library check", {"--dir D", "--help", "Exit status"}},
        {"system default",
         {"--utm-zone N", "--central-meridian D", "--scale K", "--false-easting E",
          "--false-northing N", "--name NAME", "-o, --output FILE ", "--force", "--help"}},
        {"system search",
         {"[WORDS...]", "--at LON,LAT", "--bbox W,S,E,N", "--deprecated", "--json", "Exit status"}},
        {"system shifts", {"SOURCE", "--at LON,LAT", "--json", "Exit status"}},
        {"system import",
         {"SOURCE", "--at LON,LAT", "--shift CODE|NUMBER", "--take-as-wgs84", "--fit",
          "-o, --output FILE", "--add", "--as NAME", "--dir D", "--json", "Exit status"}},
        {"system export",
         {"SYSTEM", "--as FORM", "wkt2", "projjson", "proj", "esri", "xml", "-o, --output FILE",
          "Exit status"}},
        {"system compose",
         {"--ellipsoid E", "A,RF", "--projection P", "--set KEY=VALUE", "--shift-parameters LIST",
          "X,Y,Z,RX,RY,RZ,S", "--geoid NAME", "--name NAME", "-o, --output FILE", "--add",
          "Exit status"}},
        {"site fit",
         {"--system S --points FILE", "--horizontal METHOD", "--vertical METHOD", "--sigma-h M",
          "--sigma-v M", "--without NAMES", "--name NAME", "--report FILE.html", "--json",
          "-o, --output FILE", "--add", "Exit status"}},
        {"site check", {"--system SITE --points FILE", "--json", "--dir D", "Exit status"}},
        {"datum fit",
         {"--system S --pairs FILE", "--parameters COUNT", "--name NAME", "--json",
          "-o, --output FILE", "--add", "Exit status"}},
        {"display show", {"--dir D", "--help", "Exit status"}},
        {"display set", {"--dir D", "NAME VALUE", "--help", "Exit status"}},
        {"display reset", {"--dir D", "--help", "Exit status"}},
        {"grid add", {"FILE", "--force", "--help", "Exit status"}},
        {"grid list", {"--help", "Exit status"}},
        {"geoid height",
         {"--model NAME|FILE", "--inverse", "--table", "--csv", "--help", "INPUT",
          "height above the geoid = ellipsoidal height - separation", "Exit status"}},
        {"geoid list", {"geoid_model_list", "--help"}},
        {"geoid info", {"FILE", "-88.8888", "--help", "Exit status"}},
        {"geoid convert", {"IN.ggf OUT.gtx", "--force", "--help", "Exit status"}},
        {"time leap-seconds", {"--list FILE", "--json", "--help", "Exit status"}},
        {"time",
         {"--from SCALE", "--offset SECONDS", "--json", "--help", "VALUE...|now|-", "utc", "gpst",
          "gpsw", "local", "2024-02-29T12:34:56.789Z", "2303:390914", "Exit status"}},
        {"doctor", {"--reinstall", "--help", "Exit status"}},
    };
    return rows;
}

QStringList words(const char *command)
{
    return QString::fromLatin1(command).split(QLatin1Char(' '));
}

TEST(Help, ListsCommandsStatusesAndVariables)
{
    const ProgramRun program;
    const auto result = program.run({QStringLiteral("--help")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    for (const CommandWords &row : commands())
        EXPECT_THAT(result.out, Mentions((std::string("\n  ") + row.command + ' ').c_str()));
    for (const char *text : {"--version", "--help", "KELSTD_HOME_DIR", "KELSTD_BIN_DIR",
                             "PROJ_DEBUG", "  0  ", "  1  ", "  2  ", "  3  "})
        EXPECT_THAT(result.out, Mentions(text));
    EXPECT_EQ(program.run({QStringLiteral("-h")}).out, result.out);
    EXPECT_EQ(program.run({QStringLiteral("help")}).out, result.out);
}

TEST(Help, OfEachCommandMentionsItsArgumentsAndOptions)
{
    const ProgramRun program;
    for (const CommandWords &row : commands()) {
        SCOPED_TRACE(row.command);
        const QStringList help = {QStringLiteral("--help"), QStringLiteral("full")};
        const auto result = program.run(words(row.command) + help);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, QString());
        EXPECT_THAT(result.out,
                    Mentions((std::string("\n\nUsage: kelstd ") + row.command + ' ').c_str()));
        for (const char *text : row.mentioned)
            EXPECT_THAT(result.out, Mentions(text));
        EXPECT_EQ(program
                      .run(QStringList(QStringLiteral("help")) + words(row.command)
                           + QStringList(QStringLiteral("full")))
                      .out,
                  result.out);
        EXPECT_EQ(program.run(words(row.command) + QStringList(QStringLiteral("--help=full"))).out,
                  result.out);
    }
}

TEST(Help, NamesAllCommands)
{
    QStringList names;
    for (const CommandWords &row : commands())
        names += QLatin1String(row.command);
    QStringList told =
        ProgramRun().run({QStringLiteral("help"), QStringLiteral("names")}).outLines();
    names.sort();
    told.sort();
    EXPECT_EQ(told, names);
}

TEST(Help, FitsATerminalOfEightyColumns)
{
    const ProgramRun program;
    QString all = program.run({QStringLiteral("--help")}).out;
    for (const CommandWords &row : commands()) {
        const QStringList help = QStringList(QStringLiteral("help")) + words(row.command);
        all += program.run(help).out;
        all += program.run(help + QStringList(QStringLiteral("full"))).out;
    }
    for (const QString &line : all.split(QLatin1Char('\n')))
        EXPECT_LE(line.size(), 80) << line;
}

TEST(Help, BeginsWithTwoExamplesAndFitsAScreen)
{
    const ProgramRun program;
    for (const CommandWords &row : commands()) {
        SCOPED_TRACE(row.command);
        const QStringList lines =
            program.run(words(row.command) + QStringList(QStringLiteral("--help"))).outLines();
        EXPECT_LE(lines.size(), 40);
        EXPECT_EQ(lines.value(0), QStringLiteral("Examples:"));
        const QString command = QLatin1String("kelstd ") + QLatin1String(row.command);
        EXPECT_TRUE(lines.value(1).contains(command)) << lines.value(1);
        EXPECT_TRUE(lines.value(2).contains(command)) << lines.value(2);
        EXPECT_NE(lines.value(1), lines.value(2));
        EXPECT_EQ(lines.value(3), QString());
        EXPECT_TRUE(lines.value(4).startsWith(QLatin1String("Usage: ") + command));
        EXPECT_THAT(lines.join(QLatin1Char('\n')), Mentions("--help"));
    }
}

// roff's instructions begin with a point; a page's other lines must not.
TEST(Help, ManualPagesHaveTheirSections)
{
    const ProgramRun program;
    QList<QStringList> pages = {{}};
    for (const CommandWords &row : commands())
        pages += words(row.command);
    for (const QStringList &page : pages) {
        SCOPED_TRACE(page.join(QLatin1Char(' ')).toStdString());
        const auto result = program.run(QStringList(QStringLiteral("help")) + page
                                        + QStringList(QStringLiteral("man")));
        EXPECT_EQ(result.status, 0);
        EXPECT_TRUE(result.out.startsWith(QLatin1String(".TH \"KELSTD")));
        for (const char *section : {"NAME", "SYNOPSIS", "OPTIONS", "EXAMPLES", "SEE ALSO"})
            EXPECT_THAT(result.out, Mentions((std::string(".SH \"") + section + "\"\n").c_str()));
        for (const QString &line : result.outLines()) {
            EXPECT_TRUE(QRegularExpression(QStringLiteral("\\A(\\.(TH|SH|TP|B|BR|nf|fi|sp)( .+)?|"
                                                          "[^.'].*)?\\z"))
                            .match(line)
                            .hasMatch())
                << line;
            for (const QChar c : line)
                EXPECT_LT(c.unicode(), 0x7F) << line;
        }
    }
}

TEST(Help, OfAGroupListsItsCommands)
{
    for (const QStringList &arguments :
         {QStringList{QStringLiteral("system"), QStringLiteral("--help")},
          QStringList{QStringLiteral("help"), QStringLiteral("system")}}) {
        const auto result = ProgramRun().run(arguments);
        EXPECT_EQ(result.status, 0);
        const char *const members[] = {"system show",   "system default", "system search",
                                       "system shifts", "system import",  "system export",
                                       "system compose"};
        ASSERT_EQ(result.outLines().size(), 7);
        for (int i = 0; i < 7; ++i)
            EXPECT_THAT(result.outLines().at(i), Mentions(members[i]));
    }
}

TEST(Help, OfAGroupHasTheFormsOfItsCommands)
{
    const auto run = [](const char *words) {
        return ProgramRun().run(QString::fromLatin1(words).split(QLatin1Char(' ')));
    };
    const auto listed = run("display --help");
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(run("display --dir nowhere --help").out, listed.out);
    EXPECT_EQ(run("display -h").out, listed.out);
    const auto full = run("display --help full");
    EXPECT_EQ(full.status, 0);
    EXPECT_EQ(full.err, QString());
    EXPECT_EQ(run("help display full").out, full.out);
    EXPECT_EQ(full.out, run("display show --help full").out + QLatin1Char('\n')
                            + run("display set --help full").out + QLatin1Char('\n')
                            + run("display reset --help full").out);
    EXPECT_EQ(run("display --help nothing").status, 2);
    EXPECT_EQ(run("display --full").status, 2);
}

TEST(Help, TheVersionsAreThoseOfTheProgramAndOfWhatItRunsOn)
{
    for (const char *option : {"--version", "-v"}) {
        const auto result = ProgramRun().run({QString::fromLatin1(option)});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, QString());
        EXPECT_EQ(result.outLines().value(0), QStringLiteral("kelstd " KELSTD_TEST_VERSION));
        EXPECT_EQ(result.outLines().value(1), QStringLiteral("Qt: ") + QLatin1String(qVersion()));
        // What PROJ's own program says of itself: "Rel. 9.1.1, December 1st, 2022".
        QProcess proj;
        proj.setProcessChannelMode(QProcess::MergedChannels);
        proj.start(QStringLiteral("proj"), QStringList());
        proj.closeWriteChannel();
        ASSERT_TRUE(proj.waitForFinished());
        const QString release = QString::fromLatin1(proj.readAll()).section(QLatin1Char(' '), 1, 1);
        EXPECT_EQ(result.outLines().value(2),
                  QStringLiteral("PROJ: ") + release.section(QLatin1Char(','), 0, 0));
        EXPECT_TRUE(QRegularExpression(QStringLiteral("\\APROJ database: EPSG v1\\d\\.\\d+\\z"))
                        .match(result.outLines().value(3))
                        .hasMatch())
            << result.outLines().value(3);
        // What GDAL's own program says: "GDAL 3.6.2, released 2023/01/02", where there is one.
        QProcess gdal;
        gdal.start(QStringLiteral("ogrinfo"), {QStringLiteral("--version")});
        ASSERT_TRUE(gdal.waitForFinished());
        const QString gdalRelease =
            QString::fromLatin1(gdal.readAll()).section(QLatin1Char(' '), 1, 1);
        EXPECT_EQ(result.outLines().value(4),
                  QStringLiteral("GDAL: ") + gdalRelease.section(QLatin1Char(','), 0, 0));
        EXPECT_EQ(result.outLines().size(), 5);
    }
}

TEST(Help, NeedsNoProjAndNoHome)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/no/such/home"));
    program.setVariable(QStringLiteral("KELSTD_BIN_DIR"), QStringLiteral("/no/such/program"));
    EXPECT_EQ(program.run({QStringLiteral("--help")}).status, 0);
    EXPECT_EQ(program.run({QStringLiteral("convert"), QStringLiteral("--help")}).status, 0);
}

struct Mistake
{
    const char *testName;
    QList<const char *> arguments;
    const char *message;
};

void PrintTo(const Mistake &row, std::ostream *out)
{
    *out << row.testName;
}

class Mistakes : public testing::TestWithParam<Mistake>
{};

TEST_P(Mistakes, AreUsageErrorsThatHelp)
{
    QStringList arguments;
    for (const char *argument : GetParam().arguments)
        arguments += QString::fromLatin1(argument);
    const auto result = ProgramRun().run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err, QStringLiteral("kelstd: ") + QString::fromLatin1(GetParam().message)
                              + QLatin1Char('\n'));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, Mistakes,
    testing::Values(
        Mistake{"Nothing", {}, "a command is missing; 'kelstd --help' lists them"},
        Mistake{"UnknownCommand",
                {"frobnicate"},
                "there is no command 'frobnicate'; 'kelstd --help' lists the commands"},
        Mistake{"MisspelledCommand",
                {"convrt", "--csv"},
                "there is no command 'convrt'; did you mean 'convert' or 'geoid convert'?"},
        Mistake{"MisspelledGroup",
                {"sytem", "show", "x.xml"},
                "there is no command 'sytem'; did you mean 'system show'?"},
        Mistake{"CommandByItsWord",
                {"lst"},
                "there is no command 'lst'; did you mean 'library list', 'geoid list' or "
                "'grid list'?"},
        Mistake{"MisspelledMember",
                {"system", "shw", "x.xml"},
                "there is no command 'system shw'; did you mean 'system show'?"},
        Mistake{"HalfACommand",
                {"system"},
                "there is no command 'system'; there are 'system show', 'system default', "
                "'system search', 'system shifts', 'system import', 'system export', 'system "
                "compose'"},
        Mistake{"HelpOnNothing",
                {"help", "docter"},
                "there is no command 'docter'; did you mean 'doctor'?"},
        Mistake{"UnknownOption",
                {"convert", "--sytem", "x.xml"},
                "Unknown option 'sytem'; did you mean '--system'? 'kelstd convert --help' tells "
                "more"},
        Mistake{"OptionLikeNoOther",
                {"doctor", "--frobnicate"},
                "Unknown option 'frobnicate'; 'kelstd doctor --help' tells more"},
        Mistake{"MisspelledStyle",
                {"convert", "--system", "a.xml", "--angle", "degre"},
                "--angle 'degre' is no style of angles; did you mean degree? There are dms, "
                "degree, second, radian; 'kelstd convert --help' tells more"},
        Mistake{"MisspelledFrame",
                {"convert", "--system", "a.xml", "--from", "local neh"},
                "--from 'local neh' is no frame; did you mean local-neh? There are wgs84-llh, "
                "wgs84-xyz, local-llh, local-neh, site-neh; 'kelstd convert --help' tells more"},
        Mistake{"MisspelledScale",
                {"time", "--from", "gps", "now"},
                "--from 'gps' is no time scale; did you mean gpst or gpsw? There are utc, gpst, "
                "gpsw, local; 'kelstd time --help' tells more"},
        Mistake{"MisspelledKind",
                {"library", "list", "--kind", "elipsoid"},
                "--kind 'elipsoid' is no kind; did you mean ellipsoids? There are systems, custom, "
                "standard, ellipsoids, projections; 'kelstd library list --help' tells more"},
        Mistake{
            "MisspelledForm",
            {"system", "export", "a.xml", "--as", "wkt"},
            "--as 'wkt' is no form; did you mean wkt2? There are wkt2, projjson, proj, esri, xml; "
            "'kelstd system export --help' tells more"},
        Mistake{"ValueMissing",
                {"convert", "--system"},
                "Missing value after '--system'; 'kelstd convert --help' tells more"},
        Mistake{"OptionTwice",
                {"convert", "--system", "a.xml", "--system", "b.xml"},
                "--system is given twice; 'kelstd convert --help' tells more"},
        Mistake{"TwoInputs",
                {"geoid", "height", "--model", "a.gtx", "a.csv", "b.csv"},
                "'b.csv' is one argument too many; 'kelstd geoid height --help' tells more"},
        Mistake{"DoctorWithArgument",
                {"doctor", "now"},
                "'now' is one argument too many; 'kelstd doctor --help' tells more"}),
    [](const auto &row) { return row.param.testName; });

} // namespace
} // namespace KelStd
