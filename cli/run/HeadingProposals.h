#pragma once

#include <cli/terminal/Values.h>

namespace KelStd::cli {

/// The fields of the first line of the input that a typed line names, where that is a file of text:
/// what --columns can pick. None where they are numbers.
QList<Proposal> headingProposals(const TypedLine &line);

} // namespace KelStd::cli
