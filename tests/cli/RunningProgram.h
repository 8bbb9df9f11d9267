#pragma once

#include "cli/ProgramRun.h"

namespace KelStd::test {

/// The program while it runs, with pipes to its standard streams: a test writes its input piece by
/// piece and sees what it has answered by then.
class RunningProgram
{
public:
    enum class Errors
    {
        Apart,
        IntoOutput ///< standard error ends where standard output does
    };

    RunningProgram(const ProgramRun &program, const QStringList &arguments,
                   Errors errors = Errors::Apart);
    ~RunningProgram();
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

    /// Writes to its standard input, and waits until all of it is in the pipe or read.
    void send(const QByteArray &bytes);
    /// The same without waiting.
    void startToSend(const QByteArray &bytes) { m_process->write(bytes); }
    void closeInput();

    /// Sends the lines over and over until the program has written so many bytes more; false when
    /// it never does.
    bool sendUntilWritten(const QByteArray &lines, int bytes);

    /// Waits until standard output, or standard error, contains `text`; false when it never does.
    bool waitForOutput(const QByteArray &text) { return waitFor(m_out, text); }
    bool waitForError(const QByteArray &text) { return waitFor(m_err, text); }

    void signal(int number) const;

    /// Waits for its end; false when it never comes.
    bool waitForEnd();

    bool isRunning() const { return m_process->state() != QProcess::NotRunning; }
    /// The signal that ended it, or 0.
    int endedBy() const;
    /// Its exit status, or -1.
    int status() const;

    QByteArray out() const { return m_out; }
    QByteArray err() const { return m_err; }

private:
    void takeOutput();
    bool waitFor(const QByteArray &stream, const QByteArray &text);

    std::unique_ptr<QProcess> m_process;
    QByteArray m_out;
    QByteArray m_err;
};

} // namespace KelStd::test
