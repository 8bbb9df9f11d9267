#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/PositionHeader.h>

#include <array>
#include <string_view>
#include <vector>

namespace KelStd::positions {

/// A line that can be read in one way only: printable ASCII without quotation marks, the expected
/// number of fields, and plain numbers for the components. Nearly every line is such a one, and
/// reading it takes no time. What is read of it is what the careful way reads.
class KELSTD_EXPORT PlainLine
{
public:
    /// False when the line is not plain: it may be right, wrong or in doubt.
    bool read(std::string_view line, const FieldOrder &order);

    double component(int index) const { return m_components[static_cast<std::size_t>(index)]; }

    /// In the line that was read.
    std::string_view field(int index) const { return m_fields[static_cast<std::size_t>(index)]; }

private:
    void split(std::string_view line, char separator);

    std::vector<std::string_view> m_fields;
    std::array<double, componentsPerFrame> m_components{};
};

} // namespace KelStd::positions
