#pragma once

#include <cli/commands/Command.h>
#include <cli/terminal/CommandHelp.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd::cli {

/// A command's line in a list.
QString listed(const Command &command);

/// The help of the program itself; its short form is the full one.
QString programHelp(const QList<const Command *> &commands, HelpForm form);

} // namespace KelStd::cli
