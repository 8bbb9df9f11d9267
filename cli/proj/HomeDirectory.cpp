#include <cli/proj/HomeDirectory.h>

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KelStd::cli {

std::optional<HomeProblem> homeProblem()
{
    const QString path = AppConfig::getInstance().homeDir().absolutePath();
    if (QFileInfo(path).isDir())
        return std::nullopt;
    return HomeProblem{QStringLiteral("the home directory %1 is no directory").arg(path),
                       QStringLiteral("create it, or set KELSTD_HOME_DIR to another one")};
}

QString homeFailure()
{
    const auto problem = homeProblem();
    return problem ? QStringLiteral("%1; %2").arg(problem->text, problem->advice) : QString();
}

} // namespace KelStd::cli
