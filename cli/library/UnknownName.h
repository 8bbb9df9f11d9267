#pragma once

#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace KelStd::cli {

class CommandLine;

/// "the library has no custom system \"harbour\"; did you mean ...?", with the names of the loaded
/// registry, and how the command `line` could have listed them. `elsewhere` has names of other
/// things that may have been meant, best first, each with what it is called in the text.
QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line,
                    const QList<QPair<QString, QString>> &elsewhere = {});

} // namespace KelStd::cli
