#include "cli/RunningProgram.h"

#include <QtCore/QElapsedTimer>

#include <csignal>

namespace KelStd::test {

namespace {

constexpr int patience = 60000; // [ms], for a machine under load
constexpr int moment = 20;      // [ms]

} // namespace

RunningProgram::RunningProgram(const ProgramRun &program, const QStringList &arguments,
                               Errors errors)
    : m_process(program.process(arguments))
{
    if (errors == Errors::IntoOutput)
        m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->start();
    EXPECT_TRUE(m_process->waitForStarted(patience));
}

RunningProgram::~RunningProgram()
{
    m_process->kill();
    m_process->waitForFinished(patience);
}

void RunningProgram::takeOutput()
{
    m_out += m_process->readAllStandardOutput();
    m_err += m_process->readAllStandardError();
}

void RunningProgram::send(const QByteArray &bytes)
{
    m_process->write(bytes);
    while (isRunning() && m_process->bytesToWrite() > 0)
        m_process->waitForBytesWritten(moment);
    takeOutput();
}

void RunningProgram::closeInput()
{
    m_process->closeWriteChannel();
}

bool RunningProgram::sendUntilWritten(const QByteArray &lines, int bytes)
{
    const int before = m_out.size();
    QElapsedTimer clock;
    clock.start();
    while (m_out.size() < before + bytes && isRunning() && clock.elapsed() < patience)
        send(lines);
    return m_out.size() >= before + bytes;
}

bool RunningProgram::waitFor(const QByteArray &stream, const QByteArray &text)
{
    QElapsedTimer clock;
    clock.start();
    while (!stream.contains(text) && isRunning() && clock.elapsed() < patience) {
        m_process->waitForReadyRead(moment);
        takeOutput();
    }
    return stream.contains(text);
}

void RunningProgram::signal(int number) const
{
    EXPECT_EQ(kill(static_cast<pid_t>(m_process->processId()), number), 0);
}

bool RunningProgram::waitForEnd()
{
    const bool ended = !isRunning() || m_process->waitForFinished(patience);
    takeOutput();
    return ended;
}

int RunningProgram::endedBy() const
{
    // Qt gives the signal for the exit code of a process that was ended by one.
    return !isRunning() && m_process->exitStatus() == QProcess::CrashExit ? m_process->exitCode()
                                                                          : 0;
}

int RunningProgram::status() const
{
    return !isRunning() && m_process->exitStatus() == QProcess::NormalExit ? m_process->exitCode()
                                                                           : -1;
}

} // namespace KelStd::test
