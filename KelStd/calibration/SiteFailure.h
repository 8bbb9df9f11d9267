#pragma once

#include <KelStd/Failure.h>

namespace KelStd::calibration {

/// Why the records of a site cannot be applied.
enum class SiteFailureKind
{
    None,            ///< no failure
    UnknownFunction, ///< a record's function code is none that is known
    BadParameter,    ///< a parameter is no finite number, or in a unit that it cannot have
    BadRatio,        ///< the ratio of a plane transformation is not positive
    NoPlane          ///< the system's coordinates are longitudes and latitudes
};

/// A failure of one of the kinds of `SiteFailureKind`.
using SiteFailure = Failure<SiteFailureKind>;

} // namespace KelStd::calibration
