#include <KelStd/text/UnitWords.h>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

constexpr LengthUnit lengthUnitRows[] = {
    {"m", Unit_Meter},
    {"ft", Unit_Foot},
    {"us-ft", Unit_USFoot},
    {"mm", Unit_MilliMeter},
};

constexpr AngleStyle angleStyleRows[] = {
    {"dms", Format_DegreeMinuteSecond, "dms", 6},
    {"degree", Format_Degree, "deg", 10},
    {"second", Format_Second, "arcsec", 6},
    {"radian", Format_Radian, "rad", 12},
};

template <typename Row, std::size_t count, typename Predicate>
const Row *findIn(const Row (&rows)[count], Predicate predicate)
{
    const auto found = std::find_if(std::begin(rows), std::end(rows), predicate);
    return found != std::end(rows) ? found : nullptr;
}

} // namespace

QVector<LengthUnit> lengthUnits()
{
    return {std::begin(lengthUnitRows), std::end(lengthUnitRows)};
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
