#pragma once

#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd::cli {

class CommandLine;

/// "the library has no custom system \"harbour\"; did you mean ...?", with the names of the loaded
/// registry, and how the command `line` could have listed them.
QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line);

} // namespace KelStd::cli
