#pragma once

#include <KelStd/Failure.h>

namespace KelStd {

/// Why a geoid grid file cannot be read, or must not be used.
enum class GridFailureKind
{
    None,         ///< no failure
    Unreadable,   ///< not there, or the system refuses to read it; the text is the system's
    NotAFile,     ///< a directory, or something else that is no regular file
    TooShort,     ///< for a header
    NoGrid,       ///< its header has no rows, columns, spacings or place on the earth
    CutShort,     ///< it has fewer values than its header promises
    TooLong,      ///< a layout that ends with its last value goes on behind it
    OffTheEarth,  ///< its nodes lead beyond a pole or more than once around the earth
    TooManyNodes, ///< more than PROJ counts
    OnlyForProj   ///< a layout that PROJ alone reads (GeoTIFF)
};

/// A failure of one of the kinds of `GridFailureKind`.
using GridFailure = Failure<GridFailureKind>;

} // namespace KelStd
