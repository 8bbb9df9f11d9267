#pragma once

#include <cli/terminal/Values.h>

namespace KelStd::cli {

/// The columns that --fields can name: without their units, which other options may change. Behind
/// them stand those of an input's headings.
QList<Proposal> fieldProposals(const TypedLine &line);

} // namespace KelStd::cli
