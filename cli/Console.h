#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::cli {

/// Standard output and standard error, in UTF-8 whatever the locale says.
///
/// Output is written line by line on a terminal and in pieces otherwise. The first write that fails
/// is reported, and nothing is written after it: a command that writes much asks `canPrint` now and
/// then.
class Console
{
public:
    Console();
    ~Console();
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;

    /// A line of standard output, without its end. Its control characters are shown as texts.
    void print(const QString &line);

    /// Whole lines of standard output, in UTF-8, as they are.
    void write(const QByteArray &lines);

    /// A line of standard error, under the program's name, with its control characters as texts.
    void report(const QString &message);

    /// Shows a text in the last line of the terminal of standard error, in place of the one before;
    /// an empty text removes it. Reports stand above it.
    void showStatus(const QString &text);

    /// False once standard output cannot be written.
    bool canPrint() const { return m_canPrint; }

    /// Writes what is pending; false when any write failed.
    bool flush();

    /// Writes what is pending, unless more is about to come.
    void flushUnless(bool moreComes)
    {
        if (!moreComes)
            flush();
    }

    bool isTerminal() const { return m_isTerminal; }

private:
    QByteArray m_pending;
    QString m_status;
    bool m_isTerminal;
    bool m_canPrint = true;
};

} // namespace KelStd::cli
