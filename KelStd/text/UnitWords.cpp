#include <KelStd/text/UnitWords.h>

#include <KelStd/text/UnitNames.h>

#include <QtCore/QHash>

#include <algorithm>
#include <array>
#include <iterator>

namespace KelStd {

namespace {

constexpr bool isOffered(const NamedUnit &row)
{
    return row.kind == UnitKind::Length && row.unit != Unit_None;
}

constexpr std::size_t countOffered()
{
    std::size_t count = 0;
    for (const NamedUnit &row : unitNames)
        count += isOffered(row) ? 1 : 0;
    return count;
}

constexpr auto makeLengthUnits()
{
    std::array<LengthUnit, countOffered()> units{};
    std::size_t count = 0;
    for (const NamedUnit &row : unitNames) {
        if (isOffered(row))
            units[count++] = {row.symbol, row.unit};
    }
    return units;
}

constexpr auto lengthUnitRows = makeLengthUnits();

constexpr double second = 1.0 / 3600.0;
constexpr double radian = 57.295779513082323;

constexpr AngleStyle angleStyleRows[] = {
    {"dms", Format_DegreeMinuteSecond, "dms", 6, second},
    {"degree", Format_Degree, "deg", 10, 1.0},
    {"second", Format_Second, "arcsec", 6, second},
    {"radian", Format_Radian, "rad", 12, radian},
};

/// The row of a table; null when there is none.
template <typename Rows, typename Predicate>
auto findIn(const Rows &rows, Predicate predicate) -> decltype(&*std::begin(rows))
{
    const auto found = std::find_if(std::begin(rows), std::end(rows), predicate);
    return found != std::end(rows) ? &*found : nullptr;
}

} // namespace

const NamedUnit *unitNamed(const QString &word)
{
    static const QHash<QString, const NamedUnit *> units = [] {
        QHash<QString, const NamedUnit *> all;
        for (const NamedUnit &row : unitNames) {
            for (const QString &name : QString::fromUtf16(row.words).split(QLatin1Char(' ')))
                all.insert(name, &row);
        }
        return all;
    }();
    return units.value(word);
}

QVector<LengthUnit> lengthUnits()
{
    return {lengthUnitRows.begin(), lengthUnitRows.end()};
}

const LengthUnit *findLengthUnit(const QString &symbol)
{
    return findIn(lengthUnitRows,
                  [&](const LengthUnit &row) { return symbol == QLatin1String(row.symbol); });
}

QString unitSymbol(EUnit unit)
{
    const LengthUnit *row =
        findIn(lengthUnitRows, [unit](const LengthUnit &length) { return length.unit == unit; });
    return row != nullptr ? QString::fromLatin1(row->symbol) : QString();
}

QVector<AngleStyle> angleStyles()
{
    return {std::begin(angleStyleRows), std::end(angleStyleRows)};
}

const AngleStyle *findAngleStyle(const QString &name)
{
    return findIn(angleStyleRows,
                  [&](const AngleStyle &row) { return name == QLatin1String(row.name); });
}

const AngleStyle *findAngleStyle(EFormat format)
{
    return findIn(angleStyleRows, [format](const AngleStyle &row) { return row.format == format; });
}

} // namespace KelStd
