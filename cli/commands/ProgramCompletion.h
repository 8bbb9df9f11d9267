#pragma once

#include <cli/commands/Command.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

/// Answers a shell that asks how a command line can go on; packaging/completions has those who do.
/// `arguments` are one of
///   bash BREAKS LINE   the line up to the cursor, and what bash breaks words at
///   zsh WORD...        the words behind the program's, with their quotation marks; the last one up
///   fish WORD...       to the cursor
/// The first line that is printed has words for what else there is to do: "files", "directories"
/// (whose names can stand there, too), "open" (no blank behind). Each further line is a proposal:
/// for bash what takes the place of the part of the word that it replaces; for the others the whole
/// word, and behind a tabulator a remark.
ExitStatus completeLine(const QStringList &arguments, const QList<const Command *> &commands,
                        Console &console);

} // namespace KelStd::cli
