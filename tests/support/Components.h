#pragma once

#include <KelStd/coord/Pos.h>

#include <array>

namespace KelStd::test {

/// The first, second and third component of a position, whatever its reading.
inline std::array<double, 3> componentsOf(const Pos &pos)
{
    const stXYZ &p = pos.getXYZ();
    return {p.x, p.y, p.z};
}

} // namespace KelStd::test
