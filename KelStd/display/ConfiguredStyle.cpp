#include <KelStd/display/ConfiguredStyle.h>

#include <KelStd/display/ShowConfigInUse.h>
#include <KelStd/display/ShowConfigRows.h>

namespace KelStd::display {

std::optional<ConfiguredStyle> configuredStyle(EValueType type)
{
    const ShowConfigRow *row = findShowConfigRow(type);
    if (row == nullptr || row->precision == nullptr)
        return std::nullopt;
    const stShowConfig &config = showConfigInUse();
    const auto unit = row->unit != nullptr ? std::optional(config.*row->unit) : std::nullopt;
    return ConfiguredStyle{unit, config.*row->precision};
}

} // namespace KelStd::display
