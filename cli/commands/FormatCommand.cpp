#include <cli/commands/Command.h>

#include <cli/systems/SystemFile.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/UnknownWord.h>
#include <cli/terminal/WithoutRaising.h>
#include <cli/values/DisplayOptions.h>
#include <cli/values/ValueArguments.h>
#include <cli/values/ValueWords.h>

#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedNumber.h>

#include <limits>

namespace KelStd::cli {

namespace {

const QString typeOption = QStringLiteral("type");
const QString unitOption = QStringLiteral("unit");
const QString toOption = QStringLiteral("to");
const QString styleOption = QStringLiteral("style");
const QString precisionOption = QStringLiteral("precision");
const QString eraseZerosOption = QStringLiteral("erase-zeros");
const QString intDigitsOption = QStringLiteral("int-digits");
const QString exactOption = QStringLiteral("exact");
const QString tableOption = QStringLiteral("table");
const QString showUnitOption = QStringLiteral("show-unit");

constexpr unsigned char defaultPrecision = 4;
constexpr int maxPrecision = std::numeric_limits<unsigned char>::max();
constexpr int maxIntDigits = 309; // of a double

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--type TYPE [OPTIONS] VALUE...|-"),
        QStringLiteral("Prints values as the library shows them."),
        valueTypeAndUnitHelp()
            + QStringLiteral(
                "A VALUE is a plain number in UNIT, true or false, a word of its kind, or a text.\n"
                "With -, values are read from standard input, one a line. For example\n"
                "  kelstd format --type Latitude --table -30.5 45.25\n"
                "\n"
                "Exit status: 0 all printed, 1 some values cannot be shown (standard error says\n"
                "which), 2 usage."));
    line.setExamples(
        QStringLiteral("kelstd format --type Latitude --table -30.5 45.25"),
        QStringLiteral("kelstd format --type Distance --to \"US Foot\" --precision 3 1200"));
    line.addOption({typeOption, QStringLiteral("The kind of the values."), QStringLiteral("TYPE")},
                   Values::ofWords(valueTypeWords()));
    line.addOption({unitOption,
                    QStringLiteral("The unit of the values. Default: Degree, Meter,\n"
                                   "bar or Celsius as the kind needs it."),
                    QStringLiteral("UNIT")},
                   Values::ofWords(unitWords()));
    line.addOption({toOption,
                    QStringLiteral("The unit of what is printed. Default: that of the\n"
                                   "values."),
                    QStringLiteral("UNIT")},
                   Values::ofWords(unitWords()));
    line.addOption({styleOption,
                    QStringLiteral("The style of angles: %1\n"
                                   "or none, the default, a bare number.")
                        .arg(angleStyleNames().join(QLatin1String(", "))),
                    QStringLiteral("STYLE")},
                   Values::ofWords(angleStyleNames() + QStringList(QStringLiteral("none"))));
    line.addOption(
        {precisionOption,
         QStringLiteral("Decimals, 0 to %1. Default: %2.").arg(maxPrecision).arg(defaultPrecision),
         QStringLiteral("N")});
    line.addOption({eraseZerosOption, QStringLiteral("Remove trailing zeros of decimals.")});
    line.addOption({exactOption, QStringLiteral("Print every digit, without unit conversion and\n"
                                                "style.")});
    line.addOption(
        {tableOption, QStringLiteral("Print as in a table: letters for signs, leading\n"
                                     "zeros, and styles that convert. Unit, style and\n"
                                     "decimals are the configured defaults unless given.")});
    line.addOption({intDigitsOption,
                    QStringLiteral("With --table, fill a distance with zeros to so many\n"
                                   "digits before the point."),
                    QStringLiteral("N")});
    line.addOption({showUnitOption, QStringLiteral("Print the unit, or in a table what describes\n"
                                                   "it, after a tabulator.")});
    return line;
}

struct FormatOptions
{
    EValueType type = ValueType_None;
    EUnit unit = Unit_None;
    std::optional<EUnit> to;
    std::optional<EFormat> style;
    std::optional<unsigned char> precision;
    int intDigits = -1;
    bool erasesZeros = false;
    bool isExact = false;
    bool isTable = false;
    bool showsUnit = false;
};

/// The whole number of an option, 0 to `max`.
std::optional<int> numberFrom(const CommandLine &line, const QString &option, int max,
                              QString &mistake)
{
    if (!line.isSet(option))
        return std::nullopt;
    bool ok = false;
    const int number = line.value(option).toInt(&ok);
    if (ok && number >= 0 && number <= max)
        return number;
    mistake = QStringLiteral("--%1 '%2' is not a number from 0 to %3")
                  .arg(option, line.value(option))
                  .arg(max);
    return std::nullopt;
}

std::optional<EFormat> styleFrom(const CommandLine &line, QString &mistake)
{
    if (!line.isSet(styleOption))
        return std::nullopt;
    const QString name = line.value(styleOption);
    if (name == QLatin1String("none"))
        return Format_None;
    if (const AngleStyle *style = findAngleStyle(name))
        return style->format;
    mistake = unknownWord(styleOption, name, QStringLiteral("style of angles"),
                          angleStyleNames() + QStringList(QStringLiteral("none")));
    return std::nullopt;
}

/// Options that contradict each other; empty when none do.
QString contradictionIn(const FormatOptions &options)
{
    if (options.isExact && options.isTable)
        return QStringLiteral("--exact and --table exclude each other");
    if (options.isExact
        && (options.to || options.style || options.precision || options.erasesZeros))
        return QStringLiteral("--exact excludes --to, --style, --precision and --erase-zeros");
    if (options.intDigits >= 0 && !options.isTable)
        return QStringLiteral("--int-digits needs --table");
    if (options.isTable && options.to && isAngleType(options.type))
        return QStringLiteral("--table shows an angle in the unit of its style; --style takes the "
                              "place of --to");
    if (options.isTable && options.style == Format_None)
        return QStringLiteral("--table has no style none");
    return {};
}

/// The unit that the kind of value cannot have, where the value is to be converted: the library
/// leaves such a number as it is, and the result would look right. Empty when both units fit.
QString strangeUnitIn(const FormatOptions &options)
{
    const EUnit to = options.to.value_or(options.unit);
    const bool converts = !options.isExact && (options.isTable || options.unit != to);
    const auto mistake = [&options](const QString &option, EUnit unit) {
        return QStringLiteral("--%1 '%2' is no unit of the kind %3")
            .arg(option, CoordStringHelper::ForCoordIO_Unit_to_DescriptionAsciiString(unit),
                 CoordStringHelper::ForCoordIO_ValueType_to_AsciiString(options.type));
    };
    if (converts && !isUnitOf(options.type, options.unit))
        return mistake(unitOption, options.unit);
    return converts && !isUnitOf(options.type, to) ? mistake(toOption, to) : QString();
}

std::optional<FormatOptions> optionsFrom(const CommandLine &line, QString &mistake)
{
    FormatOptions options;
    const auto type = valueTypeFrom(line, mistake);
    if (!type && mistake.isEmpty())
        mistake = QStringLiteral("--type TYPE is missing");
    if (!mistake.isEmpty())
        return std::nullopt;
    options.type = *type;
    options.unit = unitFrom(line, unitOption, mistake).value_or(usualUnitOf(*type));
    options.to = unitFrom(line, toOption, mistake);
    options.style = styleFrom(line, mistake);
    if (const auto precision = numberFrom(line, precisionOption, maxPrecision, mistake))
        options.precision = static_cast<unsigned char>(*precision);
    options.intDigits = numberFrom(line, intDigitsOption, maxIntDigits, mistake).value_or(-1);
    options.erasesZeros = line.isSet(eraseZerosOption);
    options.isExact = line.isSet(exactOption);
    options.isTable = line.isSet(tableOption);
    options.showsUnit = line.isSet(showUnitOption);
    if (mistake.isEmpty())
        mistake = contradictionIn(options);
    if (mistake.isEmpty())
        mistake = strangeUnitIn(options);
    return mistake.isEmpty() ? std::optional(options) : std::nullopt;
}

/// An enumerator by its word in files; -1 for none.
template <typename Enumeration>
int enumerator(const QMap<Enumeration, QString> &words, const QString &word)
{
    for (auto row = words.cbegin(); row != words.cend(); ++row) {
        if (row.value() == word)
            return static_cast<int>(row.key());
    }
    return -1;
}

/// A value of a kind whose values are words; invalid for a word that it does not have.
QVariant wordValue(EValueType type, const QString &text)
{
    using Helper = CoordStringHelper;
    int value = -1;
    switch (static_cast<int>(type)) {
    case ValueType_LocationZeroType:
        value = enumerator(Helper::s_forCoordIO_ELocationZeroType_asciiStrings, text);
        break;
    case ValueType_WhichHalfEarth:
        value = enumerator(Helper::s_forCoordIO_EWhichHalfEarth_asciiStrings, text);
        break;
    case ValueType_EllipsoidDirection:
        value = enumerator(Helper::s_forCoordIO_EEllipsoidDirection_asciiStrings, text);
        break;
    default:
        return text == QLatin1String("true") || text == QLatin1String("false")
                   ? QVariant(text == QLatin1String("true"))
                   : QVariant();
    }
    return value >= 0 ? QVariant(value) : QVariant();
}

/// The value that a text holds for the kind; without one, `reason` says why.
QVariant valueOf(EValueType type, const QString &text, QString &reason)
{
    bool ok = false;
    QVariant value;
    TypedValueFailure failure;
    switch (static_cast<int>(type)) {
    case ValueType_None:
    case ValueType_String: return text;
    case ValueType_Int32: value = text.toInt(&ok); break;
    case ValueType_Int64:
    case ValueType_TimeSpan: value = text.toLongLong(&ok); break;
    case ValueType_Boolean:
    case ValueType_Proj4_Param_Bool:
    case ValueType_LocationZeroType:
    case ValueType_WhichHalfEarth:
    case ValueType_EllipsoidDirection:
        value = wordValue(type, text);
        ok = value.isValid();
        break;
    default:
        if (const auto number = readNumber(text, failure))
            return *number;
        reason = failure.text;
        return {};
    }
    if (ok)
        return value;
    reason = QStringLiteral("%1 is no %2")
                 .arg(quoted(text), CoordStringHelper::ForCoordIO_ValueType_to_AsciiString(type));
    return {};
}

/// A display configuration of the program's own: the registry's reaches PROJ definitions.
stShowConfig configOf(const FormatOptions &options)
{
    stShowConfig config;
    if (options.to) {
        config.distanceUnit = config.heightUnit = config.xyUnit = config.earthHeightUnit =
            config.elevationHeightUnit = config.pressureUnit = config.tempratureUnit = *options.to;
    }
    if (options.style)
        config.latLongFormat = config.angleFormat = *options.style;
    if (options.precision) {
        config.doublePrecision = config.latLongPrecision = config.anglePrecision =
            config.distancePrecision = config.heightPrecision = config.xyPrecision =
                config.earthHeightPrecision = config.elevationHeightPrecision =
                    config.pressurePrecision = config.tempraturePrecision = *options.precision;
    }
    // Who asks for a number of decimals gets them.
    config.doubleKeepZero = config.latLongKeepZero = config.angleKeepZero =
        config.distanceKeepZero = config.heightKeepZero = config.xyKeepZero =
            config.earthHeightKeepZero = config.elevationHeightKeepZero = config.pressureKeepZero =
                config.tempratureKeepZero = options.precision && !options.erasesZeros;
    return config;
}

QString formatted(const FormatOptions &options, const QVariant &value, QString *unitText)
{
    const Param param(options.type, options.unit, value);
    if (options.isExact)
        return CoordStringHelper::GetNoFormatString(param, unitText);
    if (!options.isTable) {
        return CoordStringHelper::GetFormatString(
            param, options.to.value_or(options.unit), options.style.value_or(Format_None),
            options.precision.value_or(defaultPrecision), options.erasesZeros, unitText);
    }
    const stShowConfig config = configOf(options);
    *unitText = config.getParamShowFormatDescription(param);
    return config.getParamValueString(param, options.intDigits);
}

/// The line of a value, or nothing and the reason.
std::optional<QString> lineOf(const FormatOptions &options, const QString &text, QString &reason)
{
    const QVariant value = valueOf(options.type, text, reason);
    if (!value.isValid())
        return std::nullopt;
    QString shown;
    QString unit;
    QString raised;
    if (!withoutRaising([&] { shown = formatted(options, value, &unit); }, raised)) {
        reason = QStringLiteral("%1 cannot be shown: %2").arg(quoted(text), raised);
        return std::nullopt;
    }
    const bool isText = options.type == ValueType_String || options.type == ValueType_None;
    if (shown.isEmpty() && !(isText && text.isEmpty())) {
        reason = QStringLiteral("%1 cannot be shown as %2 in the unit %3")
                     .arg(quoted(text),
                          CoordStringHelper::ForCoordIO_ValueType_to_AsciiString(options.type),
                          CoordStringHelper::ForCoordIO_Unit_to_DescriptionAsciiString(
                              options.to.value_or(options.unit)));
        return std::nullopt;
    }
    return options.showsUnit ? shown + QLatin1Char('\t') + unit : shown;
}

} // namespace

ExitStatus runFormat(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, std::numeric_limits<int>::max()))
        return *status;
    QString mistake;
    const auto options = optionsFrom(line, mistake);
    if (!options)
        return line.refuse(mistake, console);
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("a VALUE is missing"), console);

    return printValues(line.positionals(), console, [&](const QString &value, QString &reason) {
        return lineOf(*options, value, reason);
    });
}

} // namespace KelStd::cli
