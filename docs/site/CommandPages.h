#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::site {

/// The page of a command in Markdown, from what its help says in full.
/// \param command "site fit"; empty for the program itself, whose page lists all commands
QString commandPage(const QString &command, const QString &fullHelp);

/// The name of that page: "command-site-fit", "commands".
QString commandPageName(const QString &command);

/// The entries of the site's menu for all commands, in the form of the generator's layout; those
/// that share their first word stand together.
QString commandTabs(const QStringList &commands);

} // namespace KelStd::site
