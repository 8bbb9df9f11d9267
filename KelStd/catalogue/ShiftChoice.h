#pragma once

#include <KelStd/catalogue/ImportWork.h>
#include <KelStd/coord/Ellipsoid.h>

namespace KelStd::catalogue {

/// Chooses the datum shift of an import, whose system lies on `ellipsoid`: the one that is asked
/// for, else a definition's own, else the best that a system can carry, else none where that is
/// consented to. Fills the report and warns of what speaks against it. False where the import is
/// refused.
bool chooseShift(ImportWork &work, const Ellipsoid &ellipsoid);

} // namespace KelStd::catalogue
