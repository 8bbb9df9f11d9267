#pragma once

#include <string_view>

/// The grid files that PROJ is about to be given, held against their headers: PROJ itself believes
/// those, and sets room aside for a row of any length that one announces.
namespace KelStd::proj {

/// Whether PROJ can be given these grids, as "grids=" has them: names after each other with commas.
/// Names are looked up as PROJ does it, relative ones from the private directory. A file that PROJ
/// will not find is PROJ's to refuse: true.
bool areGridsWhole(std::string_view names);

/// The same of all grids that a definition names, in "+nadgrids=", "+geoidgrids=" and the like.
bool areGridsOfDefinitionWhole(std::string_view definition);

} // namespace KelStd::proj
