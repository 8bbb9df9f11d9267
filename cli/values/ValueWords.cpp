#include <cli/values/ValueWords.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/UnknownWord.h>

#include <KelStd/text/CoordStringHelper.h>

namespace KelStd::cli {

namespace {

using Helper = CoordStringHelper;

/// Words with commas between them, in lines that fit a terminal.
QString wrapped(const QStringList &words)
{
    constexpr int maxColumns = 78;
    QString text;
    QString line;
    for (const QString &word : words) {
        const QString piece = word + (word == words.last() ? QString() : QStringLiteral(","));
        if (!line.isEmpty() && 2 + line.size() + 1 + piece.size() > maxColumns) {
            text += QLatin1String("  ") + line + QLatin1Char('\n');
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + piece;
    }
    return text + QLatin1String("  ") + line + QLatin1Char('\n');
}

} // namespace

QStringList valueTypeWords()
{
    return Helper::s_forCoordIO_valTypeAsciiStrings.values();
}

QStringList unitWords()
{
    return Helper::s_forCoordIO_unitDescriptionAsciiStrings.values();
}

std::optional<EValueType> findValueType(const QString &word)
{
    const EValueType type = Helper::ForCoordIO_ValueType_from_AsciiString(word);
    return Helper::ForCoordIO_ValueType_to_AsciiString(type) == word ? std::optional(type)
                                                                     : std::nullopt;
}

std::optional<EUnit> findUnit(const QString &word)
{
    const EUnit unit = Helper::ForCoordIO_Unit_from_DescriptionAsciiString(word);
    return Helper::ForCoordIO_Unit_to_DescriptionAsciiString(unit) == word ? std::optional(unit)
                                                                           : std::nullopt;
}

std::optional<EUnit> unitFrom(const CommandLine &line, const QString &option, QString &mistake)
{
    if (!line.isSet(option))
        return std::nullopt;
    const QString word = line.value(option);
    const auto unit = findUnit(word);
    if (!unit)
        mistake = unknownWord(option, word, QStringLiteral("unit"), unitWords());
    return unit;
}

std::optional<EValueType> valueTypeFrom(const CommandLine &line, QString &mistake)
{
    const QString option = QStringLiteral("type");
    if (!line.isSet(option))
        return std::nullopt;
    const QString word = line.value(option);
    const auto type = findValueType(word);
    if (!type)
        mistake = unknownWord(option, word, QStringLiteral("kind of value"), valueTypeWords());
    return type;
}

bool isAngleType(EValueType type)
{
    return type == ValueType_Angle || type == ValueType_Longitude || type == ValueType_Latitude;
}

bool isLengthType(EValueType type)
{
    return type == ValueType_Distance || type == ValueType_Height || type == ValueType_X
           || type == ValueType_Y || type == ValueType_EarthHeight
           || type == ValueType_ElevationHeight;
}

EUnit usualUnitOf(EValueType type)
{
    if (isAngleType(type))
        return Unit_Degree;
    if (isLengthType(type))
        return Unit_Meter;
    if (type == ValueType_Pressure)
        return Unit_Bar;
    return type == ValueType_Temprature ? Unit_Celsius : Unit_None;
}

bool isUnitOf(EValueType type, EUnit unit)
{
    constexpr int band = 100; // lengths lie below 100, pressures below 200, and so on
    const EUnit usual = usualUnitOf(type);
    return usual == Unit_None ? unit == Unit_None
                              : unit != Unit_None && unit / band == usual / band;
}

QString valueTypeAndUnitHelp()
{
    return QStringLiteral("A TYPE is one of\n") + wrapped(valueTypeWords())
           + QStringLiteral("and a UNIT one of\n") + wrapped(unitWords());
}

} // namespace KelStd::cli
