#pragma once

#include <KelStd/coord/Pos.h>

#include <string_view>
#include <vector>

namespace KelStd::positions {

/// For positions that have no further fields.
inline const std::vector<std::string_view> noFields;

/// A position of an input and what came with it. Texts are UTF-8; all of it is valid only while the
/// position is taken.
struct ReadPosition
{
    /// Longitude, latitude [deg], height [m], or X, Y, Z [m], or of the plane easting, northing,
    /// height [m].
    const Pos &position;
    std::string_view name;                                   ///< empty for none
    const std::vector<std::string_view> &carried = noFields; ///< one for each heading
    const std::vector<std::string_view> &extras = noFields;  ///< one for each extra column
    /// What a projected height is above, in the words of `heightReference`; empty where the input
    /// does not say.
    std::string_view heightReference = {};
};

} // namespace KelStd::positions
