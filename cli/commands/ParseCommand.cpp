#include <cli/commands/Command.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/UnknownWord.h>
#include <cli/values/DisplayOptions.h>
#include <cli/values/ValueArguments.h>
#include <cli/values/ValueWords.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedAngle.h>

#include <QtCore/QLocale>
#include <QtCore/QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace KelStd::cli {

namespace {

const QString typeOption = QStringLiteral("type");
const QString unitOption = QStringLiteral("unit");
const QString styleOption = QStringLiteral("style");
const QString typedOption = QStringLiteral("typed");

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--type TYPE [OPTIONS] TEXT...|-"),
        QStringLiteral("Reads values and prints them with every digit."),
        valueTypeAndUnitHelp()
            + QStringLiteral(
                "With -, texts are read from standard input, one a line. The library adds the\n"
                "parts of an angle with their own signs, -30\u00B015\u2032 being -29.75. With "
                "--typed the\n"
                "sign counts for the whole angle, -30.25, and the forms are those that\n"
                "'kelstd convert' reads: 52\u00B030\u203215.5\u2033, 52d30'15.5\", 52:30:15.5, N, "
                "S, E or W\n"
                "before or behind, and decimals behind a point or a comma. Without --typed N, S,\n"
                "E or W may stand behind an angle with signs, as 'kelstd format' prints it; any\n"
                "other text behind the last sign is refused; nan and inf are numbers, and no\n"
                "angle is too large.\n"
                "\n"
                "Exit status: 0 all read, 1 some texts are no such values (standard error says\n"
                "which), 2 usage."));
    line.setExamples(QStringLiteral("kelstd parse --typed 52:30:15.5 -0:15"),
                     QStringLiteral("kelstd parse --type Distance --unit Foot 1200.5"));
    line.addOption({typeOption,
                    QStringLiteral("The kind of the values. With --style or --typed\n"
                                   "the default is Angle."),
                    QStringLiteral("TYPE")},
                   Values::ofWords(valueTypeWords()));
    line.addOption({unitOption,
                    QStringLiteral("The unit of the values. Default: Degree, Meter,\n"
                                   "bar or Celsius as the kind needs it."),
                    QStringLiteral("UNIT")},
                   Values::ofWords(unitWords()));
    line.addOption({styleOption,
                    QStringLiteral("Read angles written in one style, to degrees:\n%1.")
                        .arg(angleStyleNames().join(QLatin1String(", "))),
                    QStringLiteral("STYLE")},
                   Values::ofWords(angleStyleNames()));
    line.addOption({typedOption, QStringLiteral("Read angles as people type them.")});
    return line;
}

struct ParseOptions
{
    EValueType type = ValueType_Angle;
    EUnit unit = Unit_Degree;
    const AngleStyle *style = nullptr;
    bool isTyped = false;
};

/// What of --style and --typed does not fit the rest; empty when all does.
QString contradictionIn(const ParseOptions &options)
{
    const bool isAngle = options.style != nullptr || options.isTyped;
    if (options.style != nullptr && options.isTyped)
        return QStringLiteral("--style and --typed exclude each other");
    if (isAngle && !isAngleType(options.type))
        return QStringLiteral("--style and --typed are for Angle, Longitude and Latitude");
    if (isAngle && options.unit != Unit_Degree)
        return QStringLiteral("--style and --typed read degrees; --unit can only be Degree");
    return {};
}

std::optional<ParseOptions> optionsFrom(const CommandLine &line, QString &mistake)
{
    ParseOptions options;
    options.isTyped = line.isSet(typedOption);
    if (line.isSet(styleOption)) {
        const QString name = line.value(styleOption);
        options.style = findAngleStyle(name);
        if (options.style == nullptr) {
            mistake = unknownWord(styleOption, name, QStringLiteral("style of angles"),
                                  angleStyleNames());
        }
    }
    const auto type = valueTypeFrom(line, mistake);
    if (!type && mistake.isEmpty() && options.style == nullptr && !options.isTyped)
        mistake = QStringLiteral("--type TYPE is missing");
    options.type = type.value_or(ValueType_Angle);
    options.unit = unitFrom(line, unitOption, mistake).value_or(usualUnitOf(options.type));
    if (mistake.isEmpty())
        mistake = contradictionIn(options);
    return mistake.isEmpty() ? std::optional(options) : std::nullopt;
}

QString exactText(const QVariant &value)
{
    return static_cast<QMetaType::Type>(value.userType()) == QMetaType::Double
               ? QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest)
               : value.toString();
}

AngleSense senseOf(EValueType type)
{
    if (type == ValueType_Longitude)
        return AngleSense::Longitude;
    return type == ValueType_Latitude ? AngleSense::Latitude : AngleSense::Plain;
}

/// The angle [deg] as `kelstd convert` reads it, or an invalid value and the reason.
QVariant typedAngle(EValueType type, const QString &text, QString &reason)
{
    const bool hasComma = text.contains(QLatin1Char(','));
    TypedValueFailure failure;
    const auto degrees = readTypedAngle(
        text, senseOf(type), hasComma ? DecimalMark::Comma : DecimalMark::Point, failure);
    reason = failure.text;
    if (!degrees)
        return {};
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const positions::Column &column = positions::columnOf(positions::Frame::Wgs84Geographic, i);
        if (column.valueType == type && !(std::abs(*degrees) <= column.limit)) {
            reason =
                QStringLiteral("%1 is not between -%2 and %2").arg(quoted(text)).arg(column.limit);
            return {};
        }
    }
    return *degrees;
}

/// What the library passes over behind the last sign of an angle.
QString behindSigns(const ParseOptions &options, const QString &text)
{
    if (!isAngleType(options.type))
        return {};
    auto last = text.indexOf(CoordStringHelper::s_specialSymbol_degree);
    // In that style nothing is read behind the sign of degrees.
    if (options.style == nullptr || options.style->format != Format_Degree) {
        last = std::max({last, text.indexOf(CoordStringHelper::s_specialSymbol_Minute),
                         text.indexOf(CoordStringHelper::s_specialSymbol_Second)});
    }
    return last < 0 ? QString() : text.mid(last + 1).trimmed();
}

/// An angle with a hemisphere letter behind it, which `kelstd format` prints; any other text there
/// is refused, since it may be a part of the angle.
QVariant angleWithText(const ParseOptions &options, const QString &text, const QString &behind,
                       QString &reason)
{
    const bool isLetter =
        behind.size() == 1 && QStringLiteral("NSEW").contains(behind, Qt::CaseInsensitive);
    if (!isLetter) {
        reason = QStringLiteral("%1 has %2 behind the angle; --typed reads angles as people type "
                                "them")
                     .arg(quoted(text), quoted(behind));
        return {};
    }
    const QVariant degrees = typedAngle(options.type, text, reason);
    constexpr double secondsPerDegree = 3600.0;
    return degrees.isValid() && options.unit == Unit_Second
               ? QVariant(degrees.toDouble() * secondsPerDegree)
               : degrees;
}

/// The value of a text, or an invalid one and the reason.
QVariant valueOf(const ParseOptions &options, const QString &text, QString &reason)
{
    if (options.isTyped)
        return typedAngle(options.type, text, reason);
    const QString behind = behindSigns(options, text);
    if (!behind.isEmpty())
        return angleWithText(options, text, behind, reason);
    if (options.style != nullptr) {
        double degrees = 0.0;
        if (CoordStringHelper::GetAngleValue(text, options.style->format, degrees))
            return degrees;
        reason = QStringLiteral("%1 is no angle in the style %2")
                     .arg(quoted(text), QString::fromLatin1(options.style->name));
        return {};
    }
    QVariant value;
    if (CoordStringHelper::GetValueFromString(options.type, options.unit, text, value))
        return value;
    reason =
        QStringLiteral("%1 is no %2 in the unit %3")
            .arg(quoted(text), CoordStringHelper::ForCoordIO_ValueType_to_AsciiString(options.type),
                 CoordStringHelper::ForCoordIO_Unit_to_DescriptionAsciiString(options.unit));
    return {};
}

} // namespace

ExitStatus runParse(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, std::numeric_limits<int>::max()))
        return *status;
    QString mistake;
    const auto options = optionsFrom(line, mistake);
    if (!options)
        return line.refuse(mistake, console);
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("a TEXT is missing"), console);

    return printValues(line.positionals(), console, [&](const QString &text, QString &reason) {
        const QVariant value = valueOf(*options, text, reason);
        return value.isValid() ? std::optional(exactText(value)) : std::nullopt;
    });
}

} // namespace KelStd::cli
