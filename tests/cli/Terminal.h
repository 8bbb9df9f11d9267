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

    /// The program's stream that ends in the terminal; the others do not.
    enum class Stream
    {
        Output,
        Error
    };

    /// Runs the program with `input` for its standard input. The result has what the terminal shows
    /// for the stream that ends there.
    ProgramResult run(const ProgramRun &program, const QStringList &arguments,
                      const QByteArray &input = {}, Stream stream = Stream::Output);

    enum class Errors
    {
        Hidden,
        Shown ///< on the terminal, too
    };

    /// Starts the program with the terminal as its standard input and output.
    void start(const ProgramRun &program, const QStringList &arguments,
               Errors errors = Errors::Hidden);
    /// The same of another program, as it is set up.
    void start(std::unique_ptr<QProcess> process, Errors errors = Errors::Hidden);
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
