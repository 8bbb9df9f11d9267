#pragma once

/// The roots of list documents.
namespace KelStd::io {

inline constexpr const char *ellipsoidListName = "Ellipsoid_List";
inline constexpr const char *projectionListName = "Projection_List";

} // namespace KelStd::io
