#pragma once

#include <cli/terminal/Values.h>

#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>

namespace KelStd::cli {

/// Loads records of these kinds from the library that a typed line means, or from the delivered one
/// where there is none yet: nothing is laid out. False where they cannot be listed.
bool loadForProposals(const TypedLine &line, const QList<RecordKind> &kinds);

/// The names of a library's records of these kinds, or of those that --kind of the line names.
Values recordValues(const QList<RecordKind> &kinds, Values::Files files = Values::Files::None);

/// The same of all kinds.
Values recordValues();

} // namespace KelStd::cli
