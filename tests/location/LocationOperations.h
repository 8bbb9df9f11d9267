#pragma once

#include "location/PublishedFigures.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/location/LocationBuilder.h>

#include <algorithm>
#include <cstring>
#include <iterator>

/// The four location operations as a table, by the frame that each starts from, here and of a
/// builder that has its results.
namespace KelStd::test {

using MakeLocation = bool (*)(const Pos &, Location &, const Coord *, const Coord *, QString *);

struct LocationOperation
{
    Frame from;
    LocationBuilder::Frame ofBuilder;
    const char *name;
    MakeLocation make;
};

inline constexpr LocationOperation locationOperations[] = {
    {Frame::Wgs84LLH, LocationBuilder::Frame::Wgs84Geographic, "WGS84LatLongH",
     &Coord::MakeLocation_byWGS84LatLongH},
    {Frame::Wgs84XYZ, LocationBuilder::Frame::Wgs84Cartesian, "WGS84XYZ",
     &Coord::MakeLocation_byWGS84XYZ},
    {Frame::LocalLLH, LocationBuilder::Frame::LocalGeographic, "LocalLatLongH",
     &Coord::MakeLocation_byLocalLatLongH},
    {Frame::LocalNEH, LocationBuilder::Frame::LocalProjected, "LocalNEH",
     &Coord::MakeLocation_byLocalNEH},
};

inline const LocationOperation &operationFrom(Frame frame)
{
    return *std::find_if(
        std::begin(locationOperations), std::end(locationOperations),
        [frame](const LocationOperation &operation) { return operation.from == frame; });
}

/// Stricter than `==`, to which -0.0 is 0.0 and NaN is nothing.
inline bool sameBits(const Location &a, const Location &b)
{
    static_assert(sizeof(Location) == 12 * sizeof(double));
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace KelStd::test
