#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/text/EnumerationTables.h>

#include <optional>

namespace KelStd {

namespace {

constexpr double minutesPerDegree = 60.0;
constexpr double secondsPerDegree = 3600.0;
constexpr double secondsPerMinute = 60.0;
constexpr double degreesPerRadian = 57.29577951308232;

/// Kinds outside these numbers are never typed.
constexpr int firstTypedKind = ValueType_String;
constexpr int lastTypedKind = ValueType_ElevationHeight;

std::optional<double> toNumber(const QString &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok ? std::optional<double>(number) : std::nullopt;
}

/// Minutes and seconds of an angle; a NaN is not among them.
bool isBelowSixty(double number)
{
    return number >= 0.0 && number < 60.0;
}

/// Where the degree, minute and second symbols stand in a text, -1 for none.
struct Symbols
{
    explicit Symbols(const QString &text)
        : degree(static_cast<int>(text.indexOf(CoordStringHelper::s_specialSymbol_degree))),
          minute(static_cast<int>(text.indexOf(CoordStringHelper::s_specialSymbol_Minute))),
          second(static_cast<int>(text.indexOf(CoordStringHelper::s_specialSymbol_Second)))
    {}

    bool hasAny() const { return degree >= 0 || minute >= 0 || second >= 0; }
    bool hasAll() const { return degree >= 0 && minute >= 0 && second >= 0; }

    int degree;
    int minute;
    int second;
};

/// The number between the symbol at `previous` (or the text's start, where that is -1) and the one
/// at `at`. Symbols in another order than degree, minute, second have no number between them.
std::optional<double> numberBefore(const QString &text, int previous, int at)
{
    const int begin = previous + 1; // a symbol is one character
    return at > begin ? toNumber(text.mid(begin, at - begin)) : std::nullopt;
}

/// Degrees, minutes and seconds as they were typed, each with its own sign.
struct TypedParts
{
    double degrees = 0.0;
    double minutes = 0.0;
    double seconds = 0.0;

    double inDegrees() const
    {
        return minutes / minutesPerDegree + degrees + seconds / secondsPerDegree;
    }
    double inSeconds() const
    {
        return minutes * secondsPerMinute + degrees * secondsPerDegree + seconds;
    }
};

/// The parts whose symbols are there; nothing when one of them has no number before it.
std::optional<TypedParts> readParts(const QString &text, const Symbols &symbols)
{
    TypedParts parts;
    struct Part
    {
        int symbol;
        int previous;
        double &number;
    };
    const Part all[] = {
        {symbols.degree, -1, parts.degrees},
        {symbols.minute, symbols.degree, parts.minutes},
        {symbols.second, symbols.minute >= 0 ? symbols.minute : symbols.degree, parts.seconds},
    };
    for (const Part &part : all) {
        if (part.symbol < 0)
            continue;
        const std::optional<double> number = numberBefore(text, part.previous, part.symbol);
        if (!number)
            return std::nullopt;
        part.number = *number;
    }
    return parts;
}

/// An angle in `unit`; a text without symbols is in degrees.
std::optional<double> angleInUnit(const QString &text, EUnit unit)
{
    if (unit != Unit_Degree && unit != Unit_Second)
        return std::nullopt;
    const Symbols symbols(text);
    if (symbols.hasAny()) {
        const std::optional<TypedParts> parts = readParts(text, symbols);
        if (!parts)
            return std::nullopt;
        return unit == Unit_Degree ? parts->inDegrees() : parts->inSeconds();
    }
    const std::optional<double> degrees = toNumber(text);
    if (!degrees)
        return std::nullopt;
    return unit == Unit_Degree ? *degrees : *degrees * secondsPerDegree;
}

/// An angle without symbols, whose unit the format tells.
bool plainAngle(double number, EFormat format, double &degrees)
{
    switch (static_cast<int>(format)) {
    case Format_DegreeMinuteSecond:
    case Format_Degree: degrees = number; return true;
    case Format_Second: degrees = number / secondsPerDegree; return true;
    case Format_Radian: degrees = number * degreesPerRadian; return true;
    default: return false;
    }
}

bool sexagesimalAngle(const QString &text, double &degrees)
{
    const Symbols symbols(text);
    if (!symbols.hasAll())
        return false;
    const std::optional<TypedParts> parts = readParts(text, symbols);
    if (!parts || !isBelowSixty(parts->minutes) || !isBelowSixty(parts->seconds))
        return false;
    degrees = parts->inDegrees();
    return true;
}

/// Stores what was read, if anything was.
template <typename Number>
bool store(std::optional<Number> number, QVariant &value)
{
    if (number)
        value = QVariant::fromValue(*number);
    return number.has_value();
}

template <typename Number>
std::optional<Number> toInteger(const QString &text, Number (QString::*convert)(bool *, int) const)
{
    bool ok = false;
    const Number number = (text.*convert)(&ok, 10);
    return ok ? std::optional<Number>(number) : std::nullopt;
}

} // namespace

QString CoordStringHelper::GetRegExp_by_ValueType(EValueType type)
{
    switch (kindOf(type)) {
    case ValueKind::Int32:
    case ValueKind::Int64: return QStringLiteral("^(-?)(0|[1-9]\\d+)$");
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Longitude:
    case ValueKind::Latitude: return QStringLiteral("^(-?[0-9])|(-?\\d+)(\\.\\d+)$");
    default: return {}; // angles, pressures and temperatures too
    }
}

bool CoordStringHelper::GetValueFromString(EValueType type, EUnit unit, const QString &text,
                                           QVariant &value)
{
    if (type < firstTypedKind || type > lastTypedKind)
        return false;
    switch (kindOf(type)) {
    case ValueKind::Text: value = text; return true;
    case ValueKind::Int32: return store(toInteger(text, &QString::toInt), value);
    case ValueKind::Int64: return store(toInteger(text, &QString::toLongLong), value);
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Pressure:
    case ValueKind::Temperature: return store(toNumber(text), value);
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude: return store(angleInUnit(text, unit), value);
    default: return false;
    }
}

bool CoordStringHelper::GetAngleValue(const QString &text, EFormat format, double &degrees)
{
    if (const std::optional<double> number = toNumber(text))
        return plainAngle(*number, format, degrees);

    const Symbols symbols(text);
    switch (static_cast<int>(format)) {
    case Format_DegreeMinuteSecond: return sexagesimalAngle(text, degrees);
    case Format_Degree: {
        if (symbols.degree < 0)
            return false;
        // Written in any case, deliberately: an infinity for a number that no double holds.
        bool ok = false;
        degrees = text.left(symbols.degree).toDouble(&ok);
        return ok;
    }
    case Format_Second: {
        const std::optional<double> number = numberBefore(text, -1, symbols.second);
        if (number)
            degrees = *number / secondsPerDegree;
        return number.has_value();
    }
    default: return false;
    }
}

} // namespace KelStd
