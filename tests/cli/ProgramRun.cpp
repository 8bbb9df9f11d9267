#include "cli/ProgramRun.h"

#include "location/PublishedFigures.h"
#include "support/Printers.h"

namespace KelStd::test {

namespace {

constexpr int patience = 240000; // [ms], for a machine under load, and with a sanitizer

/// A process that does something between its birth and the start of the program.
class PreparedProcess : public QProcess
{
public:
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    explicit PreparedProcess(std::function<void()> action) : m_action(std::move(action)) {}

protected:
    void setupChildProcess() override
    {
        if (m_action)
            m_action();
    }

private:
    std::function<void()> m_action;
#else
    explicit PreparedProcess(const std::function<void()> &action)
    {
        setChildProcessModifier(action);
    }
#endif
};

QStringList linesOf(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

QStringList ProgramResult::outLines() const
{
    return linesOf(out);
}

QStringList ProgramResult::errLines() const
{
    return linesOf(err);
}

ProgramRun::ProgramRun()
    : m_home(TemporaryHome::PreparedProj), m_environment(QProcessEnvironment::systemEnvironment())
{
    setVariable(QStringLiteral("KELSTD_HOME_DIR"), m_home.path());
    setVariable(QStringLiteral("KELSTD_BIN_DIR"), QStringLiteral(KELSTD_TEST_BIN_DIR));
    setVariable(QStringLiteral("PROJ_DEBUG"), {}); // the program's own choice is tested
}

void ProgramRun::setVariable(const QString &name, const QString &value)
{
    if (value.isNull())
        m_environment.remove(name);
    else
        m_environment.insert(name, value);
}

QString ProgramRun::file(const QString &name, const QByteArray &bytes) const
{
    writeFile(m_home.path(name), bytes);
    return m_home.path(name);
}

std::unique_ptr<QProcess> ProgramRun::process(const QStringList &arguments) const
{
    auto process = std::make_unique<PreparedProcess>(m_beforeStart);
    process->setProcessEnvironment(m_environment);
    process->setProgram(QStringLiteral(KELSTD_TEST_PROGRAM));
    process->setArguments(arguments);
    return process;
}

ProgramResult ProgramRun::run(const QStringList &arguments, const QByteArray &input) const
{
    const auto program = process(arguments);
    program->start();
    program->write(input);
    program->closeWriteChannel();
    ProgramResult result;
    if (program->waitForFinished(patience) && program->exitStatus() == QProcess::NormalExit)
        result.status = program->exitCode();
    else
        ADD_FAILURE() << "the program did not end as a program does: " << program->errorString();
    result.out = QString::fromUtf8(program->readAllStandardOutput());
    result.err = QString::fromUtf8(program->readAllStandardError());
    return result;
}

ProgramResult ProgramRun::convert(const QString &system, const QByteArray &input,
                                  const QStringList &options) const
{
    return run(
        QStringList{QStringLiteral("convert"), QStringLiteral("--system"), systemPath(system)}
            + options,
        input);
}

QByteArray editedSystem(const QString &system, const QMap<QString, QString> &replacements)
{
    QString text = QString::fromUtf8(readFile(systemPath(system)));
    for (auto entry = replacements.constBegin(); entry != replacements.constEnd(); ++entry) {
        EXPECT_TRUE(text.contains(entry.key())) << system << " has no " << entry.key();
        text.replace(entry.key(), entry.value());
    }
    return text.toUtf8();
}

QList<QMap<QString, QString>> csvRows(const QString &csv)
{
    QStringList lines = linesOf(csv);
    const QStringList names = lines.takeFirst().split(QLatin1Char(','));
    QList<QMap<QString, QString>> rows;
    for (const QString &line : lines) {
        const QStringList fields = line.split(QLatin1Char(','));
        EXPECT_EQ(fields.size(), names.size()) << line;
        QMap<QString, QString> row;
        for (int i = 0; i < names.size(); ++i)
            row.insert(names.at(i), fields.value(i));
        rows += row;
    }
    return rows;
}

double numberIn(const QMap<QString, QString> &row, const QString &column)
{
    bool ok = false;
    const double number = row.value(column).toDouble(&ok);
    EXPECT_TRUE(ok) << column << " holds \"" << row.value(column) << '"';
    return number;
}

} // namespace KelStd::test
