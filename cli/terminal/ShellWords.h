#pragma once

#include <QtCore/QChar>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

/// A command line up to the place where it is typed on, as a shell splits it. Quotation marks and
/// backslashes are taken as all shells have them; nothing is expanded.
struct ShellWords
{
    /// Without quotation marks; the last one is being typed and may be empty. What input and output
    /// are redirected to is not among them.
    QStringList words;

    bool isRedirection = false; ///< the last one is the name of a file behind < or >

    /// Of the last word: the quotation mark that is still open; null for none.
    QChar quote;

    /// How many characters of the last word stand before the part that the shell would replace by
    /// what it is proposed.
    int kept = 0;

    /// \param breaks characters which end a part of a word that the shell replaces by itself
    static ShellWords of(const QString &line, const QString &breaks = {});
};

/// A text without the quotation marks and backslashes of a shell's single word.
QString unquoted(const QString &word);

/// A text as a shell takes it for one word: as it stands where it may, else within quotation marks,
/// or behind the open `quote`. Null where there is no such form.
QString quotedForShell(const QString &text, QChar quote, bool always);

/// Whether a shell takes a text for something else than one word.
bool needsQuotes(const QString &text);

} // namespace KelStd::cli
