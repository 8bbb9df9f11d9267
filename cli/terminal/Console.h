#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

struct CommandDescription;

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

    /// The same of a line that tells of a change that was made. Where it cannot be written,
    /// standard error tells of the change.
    void printChange(const QString &line);

    /// A change of which the lines that are printed next tell by the way: where they cannot be
    /// written, standard error tells of it in these words.
    void noteChange(const QString &text);

    /// Whole lines of standard output, in UTF-8, as they are.
    void write(const QByteArray &lines);

    /// A line of standard error, under the program's name, with its control characters as texts.
    void report(const QString &message);

    /// Shows a text in the last line of the terminal of standard error, in place of the one before;
    /// an empty text removes it. Reports stand above it.
    void showStatus(const QString &text);

    /// False once standard output cannot be written.
    bool canPrint() const { return m_canPrint; }

    /// True when a change was made of which standard output could not tell.
    bool hasUnreportedChange() const { return m_hasUnreportedChange; }

    /// Writes what is pending; false when any write failed.
    bool flush();

    /// Writes what is pending, unless more is about to come.
    void flushUnless(bool moreComes)
    {
        if (!moreComes)
            flush();
    }

    bool isTerminal() const { return m_isTerminal; }

    /// A command that is run with this console from now on does nothing but tell what it accepts.
    void setDescription(CommandDescription *told) { m_description = told; }
    CommandDescription *description() const { return m_description; } ///< null without this

private:
    void reportChanges();

    QByteArray m_pending;
    QStringList m_changes; ///< of which what is pending tells
    QString m_status;
    bool m_isTerminal;
    bool m_canPrint = true;
    bool m_hasUnreportedChange = false;
    CommandDescription *m_description = nullptr;
};

} // namespace KelStd::cli
