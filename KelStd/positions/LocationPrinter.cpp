#include <KelStd/positions/LocationPrinter.h>

namespace KelStd::positions {

namespace {

PrintOptions withUnit(PrintOptions options, const LengthUnit *unit)
{
    options.lengthUnit = unit;
    return options;
}

} // namespace

LocationPrinter::LocationPrinter(const PrintOptions &options, ValuePrinter::Output output,
                                 const LengthUnit *planeUnit)
    : m_printer(options, output),
      m_planePrinter(hasOwnPlaneUnit(options, output, planeUnit) ? withUnit(options, planeUnit)
                                                                 : options,
                     output)
{}

bool LocationPrinter::hasOwnPlaneUnit(const PrintOptions &options, ValuePrinter::Output output,
                                      const LengthUnit *planeUnit)
{
    if (planeUnit == nullptr || options.lengthUnit != nullptr
        || options.form == PrintOptions::Form::Exact)
        return false;
    const bool isConfigured =
        output == ValuePrinter::Output::Table || options.form == PrintOptions::Form::Configured;
    return !(isConfigured && options.configured);
}

} // namespace KelStd::positions
