#pragma once

#include <QtCore/QCommandLineOption>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

/// What there is to tell of a command. Its lines have at most 80 characters, and its `shortHelp`
/// fits a screen of 40.
struct CommandHelp
{
    QString name;         ///< "kelstd convert"
    QString usage;        ///< the words after the name
    QString summary;      ///< sentences; the first one stands for the command in its manual page
    QStringList examples; ///< two command lines that can be typed as they are
    QList<QCommandLineOption> options;
    QStringList usual; ///< the long names of the options in `shortHelp`; all where it is empty
    QString details;
};

enum class HelpForm
{
    Short, ///< examples, usage and the usual options
    Full,  ///< all options and details, too
    Manual ///< the page of the manual, in roff
};

/// The form that a word behind --help asks for: "full", "man"; nothing for another word.
std::optional<HelpForm> helpForm(const QString &word);

/// Without the end of the last line.
QString helpText(const CommandHelp &help, HelpForm form);

/// The manual page of the program itself: `text` is its help, in which a line without an indent
/// that ends in a colon is the title of a section.
QString programPage(const QString &brief, const QString &text, const QStringList &commands);

} // namespace KelStd::cli
