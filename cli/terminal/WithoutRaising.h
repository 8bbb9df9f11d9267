#pragma once

#include <QtCore/QString>

#include <exception>
#include <memory>

namespace KelStd::cli {

/// Runs what may raise, by value or by pointer, as some text operations of the library do for units
/// and kinds of value that have no place in a coordinate system. True when nothing was raised.
template <typename Action>
bool withoutRaising(Action action, QString &reason)
{
    try {
        action();
        return true;
    } catch (const std::exception *raised) {
        const std::unique_ptr<const std::exception> owned(raised);
        reason = QString::fromUtf8(owned->what());
    } catch (const std::exception &raised) {
        reason = QString::fromUtf8(raised.what());
    }
    // What is raised by value for a length has no text.
    if (reason.isEmpty())
        reason = QStringLiteral("a length has a unit that is no unit of length");
    return false;
}

} // namespace KelStd::cli
