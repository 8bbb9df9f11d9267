// Command lines completed by real shells with the files that are installed for them: what is typed
// ends with the tabulator, and what the shell then runs is looked at.

#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <ostream>

namespace KelStd {
namespace {

using test::ProgramRun;
using test::Terminal;

QString completionFile(const char *name)
{
    return QStringLiteral(KELSTD_TEST_SOURCE_DIR "/packaging/completions/") + QLatin1String(name);
}

/// A desk with files, on which a program `kelstd` completes as the real one does and otherwise
/// shows the arguments that it gets.
class Desk
{
public:
    Desk()
    {
        m_program.file(QStringLiteral("points.csv"), "Station,lon,lat\n");
        m_program.file(QStringLiteral("data/levels.csv"), "");
        const QString shim =
            m_program.file(QStringLiteral("bin/kelstd"),
                           "#!/bin/sh\n"
                           "[ \"$1\" = complete ] && exec '" KELSTD_TEST_PROGRAM "' \"$@\"\n"
                           "echo; printf '<%s>' \"$@\"; echo ' is run'\n");
        QFile::setPermissions(shim, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    std::unique_ptr<QProcess> shell(const QString &name, const QStringList &arguments) const
    {
        auto process = m_program.process(arguments);
        QProcessEnvironment environment = process->processEnvironment();
        environment.insert(QStringLiteral("PATH"), m_program.home().path(QStringLiteral("bin:"))
                                                       + environment.value(QStringLiteral("PATH")));
        environment.insert(QStringLiteral("HOME"), m_program.home().path());
        environment.insert(QStringLiteral("ZDOTDIR"), m_program.home().path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_program.home().path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_program.home().path());
        environment.insert(QStringLiteral("TERM"), QStringLiteral("dumb"));
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(m_program.home().path());
        process->setProgram(name);
        return process;
    }

    const ProgramRun &program() const { return m_program; }

private:
    ProgramRun m_program;
};

struct Typed
{
    const char *testName;
    const char *keys; ///< before the tabulator
    const char *run;  ///< the arguments that the program then gets
};

void PrintTo(const Typed &row, std::ostream *out)
{
    *out << row.keys;
}

/// Types into a shell that has shown its prompt; what it runs is shown behind.
QString runBy(std::unique_ptr<QProcess> shell, const char *keys)
{
    Terminal terminal(200);
    terminal.start(std::move(shell), Terminal::Errors::Shown);
    EXPECT_TRUE(terminal.waitFor(QStringLiteral("READY> "))) << terminal.shown();
    terminal.type(QByteArray(keys) + "\t\n");
    EXPECT_TRUE(terminal.waitFor(QStringLiteral(" is run"))) << terminal.shown();
    const QString shown = terminal.shown();
    terminal.type("exit\n");
    const int end = shown.indexOf(QLatin1String(" is run"));
    return shown.mid(shown.lastIndexOf(QLatin1Char('\n'), end) + 1).section(" is run", 0, 0);
}

class BashCompletion : public testing::TestWithParam<Typed>
{};

TEST_P(BashCompletion, RunsWhatWasMeant)
{
    const Desk desk;
    const QString startup = desk.program().file(
        QStringLiteral("bashrc"), "PS1='READY> '; bind 'set enable-bracketed-paste off'\n"
                                  "source '"
                                      + completionFile("kelstd.bash").toUtf8() + "'\n");
    EXPECT_EQ(runBy(desk.shell(QStringLiteral("bash"), {"--noprofile", "--rcfile", startup, "-i"}),
                    GetParam().keys),
              QString::fromLatin1(GetParam().run));
}

class ZshCompletion : public testing::TestWithParam<Typed>
{};

TEST_P(ZshCompletion, RunsWhatWasMeant)
{
    const Desk desk;
    desk.program().file(QStringLiteral(".zshrc"),
                        "PS1='READY> '; unsetopt prompt_cr prompt_sp\n"
                        "fpath=('"
                            + QFileInfo(completionFile("_kelstd")).path().toUtf8()
                            + "' $fpath); autoload -U compinit; compinit -D -u\n");
    EXPECT_EQ(runBy(desk.shell(QStringLiteral("zsh"), {"-d", "-i"}), GetParam().keys),
              QString::fromLatin1(GetParam().run));
}

/// What every shell completes.
const Typed lines[] = {
    {"Command", "kelstd conv", "<convert>"},
    {"FrameBehindASign", "kelstd convert --from=local-n", "<convert><--from=local-neh>"},
    {"Name", "kelstd convert --system Amersf", "<convert><--system><Amersfoort / RD New>"},
    {"NameInQuotationMarks", "kelstd convert --system \"Amersf",
     "<convert><--system><Amersfoort / RD New>"},
    {"NameWithBackslashes", "kelstd convert --system Amersfoort\\ /\\ R",
     "<convert><--system><Amersfoort / RD New>"},
    {"Code", "kelstd convert --system EPSG:2899", "<convert><--system><EPSG:2899>"},
    {"File", "kelstd convert po", "<convert><points.csv>"},
    {"ListOfColumns", "kelstd convert --fields point,local_no",
     "<convert><--fields><point,local_northing>"},
};

/// What bash needs the program's help for, beyond these.
const Typed linesOfBash[] = {
    {"Member", "kelstd system sea", "<system><search>"},
    {"Frame", "kelstd convert --from local-n", "<convert><--from><local-neh>"},
    {"NameBehindASign", "kelstd convert --system=Amersf",
     "<convert><--system=Amersfoort / RD New>"},
    {"NameInApostrophes", "kelstd convert --system 'Amersf",
     "<convert><--system><Amersfoort / RD New>"},
    {"CodeInQuotationMarks", "kelstd convert --system \"EPSG:28992",
     "<convert><--system><EPSG:28992>"},
    {"FileOfAnOption", "kelstd convert --rejects po", "<convert><--rejects><points.csv>"},
    {"FileInAFolder", "kelstd convert data/l", "<convert><data/levels.csv>"},
    {"FileBesideNames", "kelstd convert --system data/l", "<convert><--system><data/levels.csv>"},
    {"Directory", "kelstd library list --dir da", "<library><list><--dir><data/>"},
    {"Heading", "kelstd convert points.csv --columns Sta",
     "<convert><points.csv><--columns><Station>"},
};

const auto nameOfRow = [](const auto &row) { return std::string(row.param.testName); };
INSTANTIATE_TEST_SUITE_P(Lines, BashCompletion, testing::ValuesIn(lines), nameOfRow);
INSTANTIATE_TEST_SUITE_P(LinesOfBash, BashCompletion, testing::ValuesIn(linesOfBash), nameOfRow);
INSTANTIATE_TEST_SUITE_P(Lines, ZshCompletion, testing::ValuesIn(lines), nameOfRow);

// fish tells without a terminal what it would propose.
TEST(FishCompletion, ProposesWhatWasMeant)
{
    const Desk desk;
    const struct
    {
        const char *typed;
        const char *proposed; ///< the last one
    } rows[] = {
        {"kelstd conv", "convert\tPositions of one frame in all frames of a coordinate system"},
        {"kelstd system imp", "import\tMake a document of a system that PROJ knows"},
        {"kelstd convert --from local-n", "local-neh\tnorthing [m], easting [m], height [m]"},
        {"kelstd convert --from=site", "--from=site-neh\tnorthing [m], easting [m], height [m]"},
        {"kelstd convert --system Amersf", "Amersfoort / RD New\tEPSG:28992"},
        {"kelstd convert --system \\\"Amersf", "Amersfoort / RD New\tEPSG:28992"},
        {"kelstd convert --system EPSG:28992", "EPSG:28992\tAmersfoort / RD New"},
        {"kelstd convert po", "points.csv"},
        {"kelstd library list --dir da", "data/"},
        {"kelstd convert --fields point,local_no", "point,local_northing\tnorthing"},
    };
    QString script = QStringLiteral("source '%1'\n").arg(completionFile("kelstd.fish"));
    for (const auto &row : rows)
        script += QStringLiteral("complete -C \"%1\" | tail -n 1; echo end\n").arg(row.typed);
    const auto fish = desk.shell(QStringLiteral("fish"), {"--no-config", "-c", script});
    fish->start();
    ASSERT_TRUE(fish->waitForFinished(60000));
    EXPECT_EQ(fish->readAllStandardError(), QByteArray());
    const QStringList answers =
        QString::fromUtf8(fish->readAllStandardOutput()).split(QStringLiteral("end\n"));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(answers.value(static_cast<int>(i)).trimmed(),
                  QString::fromLatin1(rows[i].proposed))
            << rows[i].typed;
    }
}

} // namespace
} // namespace KelStd
