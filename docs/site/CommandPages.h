#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::site {

/// The page of a command in Markdown, from what its help says in full.
/// \param command "site fit"; empty for the program itself, whose page lists all commands
QString commandPage(const QString &command, const QString &fullHelp);

/// The name of that page: "command-site-fit", "commands".
QString commandPageName(const QString &command);

} // namespace KelStd::site
