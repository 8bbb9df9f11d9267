#pragma once

#include "location/PublishedFigures.h"

#include <KelStd/coord/Coord.h>

/// The four location operations as a table, by the frame that each starts from.
namespace KelStd::test {

using MakeLocation = bool (*)(const Pos &, Location &, const Coord *, const Coord *, QString *);

struct LocationOperation
{
    Frame from;
    const char *name;
    MakeLocation make;
};

inline constexpr LocationOperation locationOperations[] = {
    {Frame::Wgs84LLH, "WGS84LatLongH", &Coord::MakeLocation_byWGS84LatLongH},
    {Frame::Wgs84XYZ, "WGS84XYZ", &Coord::MakeLocation_byWGS84XYZ},
    {Frame::LocalLLH, "LocalLatLongH", &Coord::MakeLocation_byLocalLatLongH},
    {Frame::LocalNEH, "LocalNEH", &Coord::MakeLocation_byLocalNEH},
};

inline MakeLocation operationFrom(Frame frame)
{
    for (const LocationOperation &operation : locationOperations) {
        if (operation.from == frame)
            return operation.make;
    }
    return nullptr;
}

} // namespace KelStd::test
