#include <cli/proj/ProjAdvice.h>

#include <cli/terminal/WithoutRaising.h>

#include <KelStd/proj/ProjInspection.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// A path as a word of a shell's command line.
QString shellWord(const QString &path)
{
    const auto isPlain = [](QChar c) {
        return c.isLetterOrNumber() || QStringLiteral("/._-+").contains(c);
    };
    if (std::all_of(path.cbegin(), path.cend(), isPlain))
        return path;
    QString word = QStringLiteral("-- \"");
    for (const QChar c : path) {
        if (QStringLiteral("\\\"$`").contains(c))
            word += QLatin1Char('\\');
        word += c;
    }
    return word + QLatin1Char('"');
}

} // namespace

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
                             QStringLiteral("run 'chmod o-w %1'").arg(shellWord(path))};
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
