#pragma once

#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// "dms|degree|..."
QString angleStyleNames(const QString &separator);

/// The unit of that name on the command line; null for one that is not offered there.
const LengthUnit *findOfferedLengthUnit(const QString &option);

/// How the numbers of locations are to be printed, as the options of a command say it.
struct DisplayOptions
{
    enum class Form
    {
        Configured, ///< as the library's display configuration shows values in tables
        Exact       ///< decimal degrees and metres with all the digits of a double
    };

    static constexpr int maxDecimals = 17;

    /// What was not given is what the output has for a default.
    std::optional<Form> form;
    std::optional<int> lengthDecimals;
    std::optional<int> angleDecimals;
    const AngleStyle *angleStyle = nullptr;
    const LengthUnit *lengthUnit = nullptr;

    /// What a configured output has where no option was given, instead of the program's defaults.
    std::optional<stShowConfig> configured;

    /// Adds the options --format, --precision, --angle and --length-unit.
    static void addTo(CommandLine &line);

    /// What the options say; nothing and the `mistake` when they cannot be followed.
    static std::optional<DisplayOptions> from(const CommandLine &line, QString &mistake);
};

/// The style of an output for which none is given: degrees, minutes and seconds.
const AngleStyle &defaultAngleStyle();
/// The unit of an output for which none is given: metres.
const LengthUnit &defaultLengthUnit();

} // namespace KelStd::cli
