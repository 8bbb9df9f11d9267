#pragma once

#include <cli/terminal/CommandHelp.h>
#include <cli/terminal/ExitStatus.h>
#include <cli/terminal/Values.h>

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

namespace KelStd::cli {

class Console;

/// What a command accepts, told to those who do not run it.
struct CommandDescription
{
    CommandHelp help;
    QStringList repeated;         ///< the last names of options that may be given several times
    QMap<QString, Values> values; ///< of options, by their last names
    QList<Values> positionals;    ///< in their order; the last one stands for those behind it, too
    int maxPositionals = 0;

    Values valuesOf(const QCommandLineOption &option) const
    {
        return values.value(option.names().last());
    }
};

/// What a command accepts, its help text and what it was given.
class CommandLine
{
public:
    /// `usage`: the words after the command's name. `summary` and `details` stand before and after
    /// the list of options in the help, the details in the full one alone.
    CommandLine(const QString &usage, const QString &summary, const QString &details);

    /// Two command lines with which the help begins, complete and of 76 characters at most.
    void setExamples(const QString &first, const QString &second);

    /// The long names of the options that the short help lists: it fits a screen of 40 lines.
    /// Without this it lists all.
    void setUsual(const QStringList &options) { m_command.help.usual = options; }

    /// A description may have several lines. What shells propose for its value is what the word for
    /// it tells.
    void addOption(const QCommandLineOption &option);
    void addOption(const QCommandLineOption &option, const Values &proposed);

    /// The same of one that may be given several times; `values` has them all.
    void addRepeatedOption(const QCommandLineOption &option);

    /// What shells propose for the arguments that are no options, in their order; the last one
    /// stands for those behind it. Without this it is what the words of the usage tell.
    void setPositionals(const QList<Values> &proposed) { m_command.positionals = proposed; }

    /// Nothing when the command goes on. Otherwise the help was shown, the console was told what
    /// the command accepts, or a mistake was reported, and this is how the program ends. A word
    /// that begins as a negative number is a value, not an option.
    std::optional<ExitStatus> parse(const QStringList &arguments, Console &console,
                                    int maxPositionals);

    bool isSet(const QString &option) const { return m_parser->isSet(option); }
    /// Empty when the option was not given.
    QString value(const QString &option) const { return m_parser->value(option); }
    /// In their order.
    QStringList values(const QString &option) const { return m_parser->values(option); }
    QStringList positionals() const { return m_parser->positionalArguments(); }

    /// Reports a mistake on the command line.
    ExitStatus refuse(const QString &mistake, Console &console) const;

private:
    QString misreading() const;
    QString mistake(int maxPositionals) const;
    QStringList withValuesLast(const QStringList &arguments) const;
    bool takesValue(const QString &word) const;

    CommandDescription m_command;
    std::unique_ptr<QCommandLineParser> m_parser; ///< a parser itself cannot be moved
};

} // namespace KelStd::cli
