#pragma once

#include <QtCore/QString>

#include <optional>

/// What the program says of the pieces of the PROJ environment, and what to do about them.
namespace KelStd::cli {

/// What to do about a private PROJ directory that holds something else.
QString makeRoomAdvice();

/// Why the library loads no code from a file or directory, and what to do about it.
struct AccessProblem
{
    QString text;
    QString advice;
};

/// Nothing where it does.
std::optional<AccessProblem> accessProblem(const QString &path);

/// Converts a position whose result is known; false with the reason. PROJ has to be ready.
bool convertsKnownPosition(QString &reason);

} // namespace KelStd::cli
