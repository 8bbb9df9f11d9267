#pragma once

#include <QtCore/QString>

namespace KelStd::cli {

/// A text as it is printed: control characters but line ends and tabulators as "\x1B", so that
/// none that a document brings reaches the terminal as a command; and so those that turn the
/// direction of what stands behind them.
QString shownLines(const QString &text);

/// The same for what stands in one line, such as a name: line ends are shown, too.
QString shown(const QString &text);

/// `shown` in double quotes.
QString inQuotes(const QString &text);

} // namespace KelStd::cli
