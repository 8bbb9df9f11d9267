#pragma once

#include <KelStd/coord/Enumerations.h>

/// Which way the horizontal axes of a system count.
namespace KelStd {

/// Whether longitudes and eastings grow to the west.
constexpr bool countsWest(EEllipsoidDirection axes)
{
    return axes == EllipsoidDirection_WSU || axes == EllipsoidDirection_WNU;
}

/// Whether latitudes and northings grow to the south.
constexpr bool countsSouth(EEllipsoidDirection axes)
{
    return axes == EllipsoidDirection_WSU || axes == EllipsoidDirection_ESU;
}

} // namespace KelStd
