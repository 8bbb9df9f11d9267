#pragma once

#include "cli/ProgramRun.h"

namespace KelStd::test {

/// A pseudo-terminal in which the program runs.
class Terminal
{
public:
    /// `columns` 0: the terminal does not know its width.
    explicit Terminal(int columns);
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    /// What the program shows on the terminal when its standard output is one; its standard input
    /// is `input`, not the terminal.
    ProgramResult run(const ProgramRun &program, const QStringList &arguments,
                      const QByteArray &input = {});

    /// Starts the program with the terminal as its standard input and output.
    void start(const ProgramRun &program, const QStringList &arguments);
    void type(const QByteArray &keys);
    /// Waits until the terminal shows `text`; false when it never does.
    bool waitFor(const QString &text);
    /// Types the end-of-file key; the program's exit status.
    int finish();

    QString shown() const { return m_shown; }

private:
    void takeOutput();

    int m_master = -1;
    int m_slave = -1;
    std::unique_ptr<QProcess> m_process;
    QString m_shown;
};

} // namespace KelStd::test
