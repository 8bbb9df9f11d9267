#pragma once

#include <cli/terminal/ExitStatus.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <optional>

namespace KelStd::cli {

class Console;

/// Gives `take` one value after the other: the words of a command line and, for the word "-", the
/// lines of standard input, without those that are blank or begin with #. `place` is empty or what
/// stands before a message about the value, "<stdin>:3: ".
///
/// False, after a report, when standard input could not be read to its end.
bool takeValues(const QStringList &words, Console &console,
                const std::function<void(const QString &value, const QString &place)> &take);

/// Prints a line for each of these values: what `lineOf` makes of it, or on standard error why it
/// makes nothing.
ExitStatus printValues(
    const QStringList &words, Console &console,
    const std::function<std::optional<QString>(const QString &value, QString &reason)> &lineOf);

} // namespace KelStd::cli
