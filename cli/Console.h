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

    /// A line of standard output, without its end.
    void print(const QString &line);

    /// A line of standard error, under the program's name.
    void report(const QString &message);

    /// False once standard output cannot be written.
    bool canPrint() const { return m_canPrint; }

    /// Writes what is pending; false when any write failed.
    bool flush();

    bool isTerminal() const { return m_isTerminal; }

private:
    QByteArray m_pending;
    bool m_isTerminal;
    bool m_canPrint = true;
};

} // namespace KelStd::cli
