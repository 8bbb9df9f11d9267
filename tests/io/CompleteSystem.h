#pragma once

#include <KelStd/coord/Coord.h>

namespace KelStd::test {

/// The system of tests/data/documents/complete.xml: every member has a value of its own, no two
/// numbers are the same.
Coord completeSystem();

/// Everything that a document holds is the same in both, display names included.
void expectSameSystem(const Coord &actual, const Coord &expected);

/// Type, unit, value (and its variant's type) and dictionary.
void expectSameParam(const Param &actual, const Param &expected);

} // namespace KelStd::test
