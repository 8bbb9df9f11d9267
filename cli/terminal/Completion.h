#pragma once

#include <cli/terminal/Values.h>

namespace KelStd::cli {

struct CommandDescription;

/// How a word of a command line can go on.
struct Completion
{
    QList<Proposal> proposals; ///< for the whole word; each begins as it does, but for case
    Values::Files files = Values::Files::None; ///< their names besides
    bool isOpen = false;                       ///< more may follow in the same word
};

/// The ways in which `word` can go on behind the words `before` it, which follow the name of the
/// command.
Completion completionOf(const CommandDescription &command, const QStringList &before,
                        const QString &word);

/// The proposals that begin with `beginning`; where none does, those that do so in other case.
QList<Proposal> beginningWith(const QString &beginning, const QList<Proposal> &proposals);

} // namespace KelStd::cli
