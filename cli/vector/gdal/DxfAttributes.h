#pragma once

#include <cli/vector/VectorFiles.h>

#include <string>
#include <vector>

namespace KelStd::cli::vector {

/// An attribute in the extended data of a drawing's point, as DxfWriter writes it.
struct DxfAttribute
{
    std::string name; ///< UTF-8
    Value value;      ///< a text or a number
};

/// The attributes of the application KELSTD among the groups of an entity, each a code, a blank and
/// a value. Empty where another application wrote them.
std::vector<DxfAttribute> dxfAttributes(const char *const *groups);

} // namespace KelStd::cli::vector
