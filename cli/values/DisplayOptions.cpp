#include <cli/values/DisplayOptions.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/UnknownWord.h>

#include <algorithm>
#include <iterator>

namespace KelStd::cli {

namespace {

/// An application's configuration may have the millimetre, and nobody asks for it here.
bool isOffered(const LengthUnit &unit)
{
    return unit.unit != Unit_MilliMeter;
}

struct FormRow
{
    const char *option;
    DisplayOptions::Form form;
};

constexpr FormRow forms[] = {
    {"configured", DisplayOptions::Form::Configured},
    {"exact", DisplayOptions::Form::Exact},
};

const QString formatOption = QStringLiteral("format");
const QString precisionOption = QStringLiteral("precision");
const QString angleOption = QStringLiteral("angle");
const QString lengthUnitOption = QStringLiteral("length-unit");

const FormRow *findForm(const QString &option)
{
    const auto found = std::find_if(std::begin(forms), std::end(forms), [&](const FormRow &row) {
        return QLatin1String(row.option) == option;
    });
    return found != std::end(forms) ? found : nullptr;
}

QStringList formNames()
{
    QStringList names;
    for (const FormRow &row : forms)
        names += QString::fromLatin1(row.option);
    return names;
}

QStringList lengthUnitNames()
{
    QStringList names;
    for (const LengthUnit &row : lengthUnits()) {
        if (isOffered(row))
            names += QString::fromLatin1(row.symbol);
    }
    return names;
}

/// The row that an option names; null when it is not given, and with a `mistake` when it names
/// none.
template <typename Row>
const Row *rowFrom(const CommandLine &line, const QString &option,
                   const Row *(*find)(const QString &), QStringList (*names)(), const char *kind,
                   QString &mistake)
{
    if (!line.isSet(option))
        return nullptr;
    const QString name = line.value(option);
    const Row *row = find(name);
    if (row == nullptr && mistake.isEmpty()) {
        mistake = unknownWord(option, name, QString::fromLatin1(kind), names());
    }
    return row;
}

/// "N" or "N,M".
bool readPrecision(const QString &text, DisplayOptions &options)
{
    const QStringList numbers = text.split(QLatin1Char(','));
    if (numbers.size() > 2)
        return false;
    int decimals[2] = {};
    for (int i = 0; i < numbers.size(); ++i) {
        bool ok = false;
        decimals[i] = numbers.at(i).toInt(&ok);
        if (!ok || decimals[i] < 0 || decimals[i] > DisplayOptions::maxDecimals)
            return false;
    }
    options.lengthDecimals = decimals[0];
    if (numbers.size() > 1)
        options.angleDecimals = decimals[1];
    return true;
}

} // namespace

QStringList angleStyleNames()
{
    QStringList names;
    for (const AngleStyle &row : angleStyles())
        names += QString::fromLatin1(row.name);
    return names;
}

const LengthUnit *findOfferedLengthUnit(const QString &option)
{
    const LengthUnit *unit = findLengthUnit(option);
    return unit != nullptr && isOffered(*unit) ? unit : nullptr;
}

void DisplayOptions::addTo(CommandLine &line)
{
    line.addOption({formatOption,
                    QStringLiteral("How numbers are printed: configured, as the library\n"
                                   "shows values in tables, or exact, decimal degrees\n"
                                   "and metres that read back to the same numbers."),
                    formNames().join(QLatin1Char('|'))});
    line.addOption({precisionOption,
                    QStringLiteral("Decimals of lengths, 0 to %1. Angles have as many\n"
                                   "as show the same on the ground (for 3 of a metre 8\n"
                                   "of a degree), or M.")
                        .arg(maxDecimals),
                    QStringLiteral("N[,M]")});
    line.addOption({angleOption,
                    QStringLiteral("The style of longitudes and latitudes:\n%1.")
                        .arg(angleStyleNames().join(QLatin1String(", "))),
                    QStringLiteral("STYLE")},
                   Values::ofWords(angleStyleNames()));
    line.addOption({lengthUnitOption,
                    QStringLiteral("The unit of all lengths: m, ft (0.3048 m) or\n"
                                   "us-ft (1200/3937 m)."),
                    QStringLiteral("UNIT")},
                   Values::ofWords(lengthUnitNames()));
}

std::optional<DisplayOptions> DisplayOptions::from(const CommandLine &line, QString &mistake)
{
    DisplayOptions options;
    if (const auto row = rowFrom(line, formatOption, &findForm, &formNames, "format", mistake))
        options.form = row->form;
    options.angleStyle = rowFrom<AngleStyle>(line, angleOption, &findAngleStyle, &angleStyleNames,
                                             "style of angles", mistake);
    options.lengthUnit = rowFrom(line, lengthUnitOption, &findOfferedLengthUnit, &lengthUnitNames,
                                 "unit of lengths", mistake);
    const bool hasPrecision = line.isSet(precisionOption);
    const QString precision = line.value(precisionOption);
    if (hasPrecision && mistake.isEmpty() && !readPrecision(precision, options)) {
        mistake = QStringLiteral("--precision '%1' is not N or N,M with numbers from 0 to %2")
                      .arg(precision)
                      .arg(maxDecimals);
    }
    if (mistake.isEmpty() && options.form == Form::Exact
        && (hasPrecision || options.angleStyle != nullptr || options.lengthUnit != nullptr)) {
        mistake = QStringLiteral("--format exact prints all digits of decimal degrees and metres; "
                                 "it excludes --precision, --angle and --length-unit");
    }
    return mistake.isEmpty() ? std::optional(options) : std::nullopt;
}

} // namespace KelStd::cli
