#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::cli {

class Console;

/// Writes a file whole or not at all, as `io::writeWholeFile` does; false after a report.
bool writeWholeFile(const QString &fileName, const QByteArray &bytes, Console &console);

} // namespace KelStd::cli
