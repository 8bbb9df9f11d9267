#include "cli/Terminal.h"

#include <QtCore/QElapsedTimer>

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace KelStd::test {

namespace {

constexpr int patience = 60000; // [ms]
constexpr int moment = 20;      // [ms]

} // namespace

Terminal::Terminal(int columns)
{
    winsize size{};
    size.ws_col = static_cast<unsigned short>(columns);
    size.ws_row = 24;
    termios settings{};
    EXPECT_EQ(openpty(&m_master, &m_slave, nullptr, nullptr, &size), 0);
    EXPECT_EQ(tcgetattr(m_slave, &settings), 0);
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);  // only what the program writes is shown
    settings.c_oflag &= ~static_cast<tcflag_t>(ONLCR); // and as it writes it
    EXPECT_EQ(tcsetattr(m_slave, TCSANOW, &settings), 0);
    EXPECT_EQ(fcntl(m_master, F_SETFL, O_NONBLOCK), 0);
}

Terminal::~Terminal()
{
    if (m_process) {
        m_process->kill();
        m_process->waitForFinished(patience);
    }
    close(m_master);
    close(m_slave);
}

void Terminal::takeOutput()
{
    char buffer[4096];
    for (ssize_t count = 0; (count = read(m_master, buffer, sizeof buffer)) > 0;)
        m_shown += QString::fromUtf8(buffer, static_cast<int>(count));
}

ProgramResult Terminal::run(const ProgramRun &program, const QStringList &arguments,
                            const QByteArray &input, Stream stream)
{
    const auto process = program.process(arguments);
    const QString name = QString::fromLocal8Bit(ttyname(m_slave));
    if (stream == Stream::Output)
        process->setStandardOutputFile(name);
    else
        process->setStandardErrorFile(name);
    process->start();
    process->write(input);
    process->closeWriteChannel();
    QElapsedTimer clock;
    clock.start();
    while (process->state() != QProcess::NotRunning && clock.elapsed() < patience) {
        process->waitForFinished(moment);
        takeOutput();
    }
    takeOutput();
    ProgramResult result;
    if (process->exitStatus() == QProcess::NormalExit && process->state() == QProcess::NotRunning)
        result.status = process->exitCode();
    const bool isOutput = stream == Stream::Output;
    result.out = isOutput ? m_shown : QString::fromUtf8(process->readAllStandardOutput());
    result.err = isOutput ? QString::fromUtf8(process->readAllStandardError()) : m_shown;
    return result;
}

void Terminal::start(const ProgramRun &program, const QStringList &arguments, Errors errors)
{
    start(program.process(arguments), errors);
}

void Terminal::start(std::unique_ptr<QProcess> process, Errors errors)
{
    const QString name = QString::fromLocal8Bit(ttyname(m_slave));
    m_process = std::move(process);
    m_process->setStandardInputFile(name);
    m_process->setStandardOutputFile(name);
    if (errors == Errors::Shown)
        m_process->setStandardErrorFile(name);
    m_process->start();
    EXPECT_TRUE(m_process->waitForStarted(patience));
}

void Terminal::type(const QByteArray &keys)
{
    EXPECT_EQ(write(m_master, keys.constData(), static_cast<std::size_t>(keys.size())),
              keys.size());
}

bool Terminal::waitFor(const QString &text)
{
    QElapsedTimer clock;
    clock.start();
    while (!m_shown.contains(text) && clock.elapsed() < patience
           && m_process->state() != QProcess::NotRunning) {
        m_process->waitForFinished(moment);
        takeOutput();
    }
    takeOutput();
    return m_shown.contains(text);
}

int Terminal::finish()
{
    type("\x04");
    const bool ended = m_process->waitForFinished(patience);
    takeOutput();
    return ended && m_process->exitStatus() == QProcess::NormalExit ? m_process->exitCode() : -1;
}

} // namespace KelStd::test
