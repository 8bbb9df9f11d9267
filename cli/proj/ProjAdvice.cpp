#include <cli/proj/ProjAdvice.h>

#include <cli/terminal/WithoutRaising.h>

#include <KelStd/proj/ProjInspection.h>

namespace KelStd::cli {

QString makeRoomAdvice()
{
    return QStringLiteral("move it away, or set KELSTD_HOME_DIR to another directory");
}

std::optional<AccessProblem> accessProblem(const QString &path)
{
    switch (ProjInspection::accessFault(path)) {
    case ProjInspection::AccessFault::OfAnotherUser:
        return AccessProblem{QStringLiteral("%1 belongs to another user").arg(path),
                             QStringLiteral("change its owner, or set KELSTD_HOME_DIR to a "
                                            "directory of your own")};
    case ProjInspection::AccessFault::WritableByAll:
        return AccessProblem{QStringLiteral("%1 can be changed by every user").arg(path),
                             QStringLiteral("run 'chmod o-w %1'").arg(path)};
    case ProjInspection::AccessFault::None: break;
    }
    return std::nullopt;
}

bool convertsKnownPosition(QString &reason)
{
    bool isRight = false;
    const auto convert = [&] { isRight = ProjInspection::convertsKnownPosition(&reason); };
    return withoutRaising(convert, reason) && isRight;
}

} // namespace KelStd::cli
