#pragma once

#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Adds the option --kind.
void addKindOption(CommandLine &line);

/// The kinds that --kind names, all without it; none and the `mistake` when it names none.
QList<RecordKind> kindsFrom(const CommandLine &line, QString &mistake);

/// The kinds that a value of --kind means: "systems" are custom and standard ones. Singular or
/// plural; empty for another word.
QList<RecordKind> kindsNamed(const QString &word);

/// Loads all records into the registry; false after a report.
bool loadRecords(const LibraryDirectory &library, Console &console);

} // namespace KelStd::cli
