#pragma once

#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjSymbols.h>

#include <QtCore/QString>

#include <cmath>

/// What PROJ's answer for a position means, and how a failure is told.
namespace KelStd::proj {

/// False for PROJ's marks of a failure (1e30 in its older functions, an infinity in newer ones) and
/// for NaN.
inline bool isResult(double component)
{
    constexpr double projErrorValue = 1e30;
    // Nearly every component is smaller: one comparison is enough.
    return std::abs(component) < projErrorValue
           || (std::isfinite(component) && component != projErrorValue);
}

/// Why PROJ could not transform the last position. PROJ does not always know, and then there is a
/// text of our own.
QString failureText(const PJ *transformation);

/// Logs a failure under the module name of all PROJ operations. `type` is the operation's own.
void logFailure(const QString &text, ELogType type);

} // namespace KelStd::proj
