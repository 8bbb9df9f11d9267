#pragma once

#include <KelStd/coord/Enumerations.h>
#include <KelStd/display/stShowConfig.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;

/// A style of angles by its name on the command line. A new one is a row in DisplayOptions.cpp.
struct AngleStyle
{
    const char *option;
    EFormat format;
    const char *unit; ///< in headings and column names
    int decimals;     ///< as many as show 0.000001 of an arc second
};

/// The style of that name, or null.
const AngleStyle *findAngleStyle(const QString &option);

/// The style of that format, or null.
const AngleStyle *findAngleStyle(EFormat format);

/// "dms|degree|..."
QString angleStyleNames(const QString &separator);

/// A unit of lengths by its name on the command line, which is also that in headings.
struct LengthUnit
{
    const char *option;
    EUnit unit;
};

/// The unit of that name on the command line, or null.
const LengthUnit *findLengthUnit(const QString &option);

/// A unit of lengths in headings: "m", "us-ft", "mm". Empty for what is none that can be shown.
QString unitSymbol(EUnit unit);

/// How the numbers of locations are to be printed, as the options of a command say it.
struct DisplayOptions
{
    enum class Form
    {
        Configured, ///< as the library's display configuration shows values in tables
        Exact       ///< decimal degrees and metres with all the digits of a double
    };

    static constexpr int mostDecimals = 17;

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
