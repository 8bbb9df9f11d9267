#include <KelStd/positions/ReadUnits.h>

#include <KelStd/positions/PlaneUnit.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QStringList>

#include <cstring>

namespace KelStd::positions {

namespace {

constexpr double degreesPerRadian = 57.295779513082320876798; // 180 / pi
constexpr double degreesPerGon = 0.9;
constexpr double secondsPerDegree = 3600.0;

struct Measure
{
    const char *symbol;
    double measure; ///< [m], [deg]
};

/// Those that no other table has. Feet, yards and links of other definitions are plane units.
constexpr Measure measures[] = {
    {"cm", 0.01},
    {"dm", 0.1},
    {"km", 1000.0},
    {"deg", 1.0},
    {"rad", degreesPerRadian},
    {"gon", degreesPerGon},
    {"dms", 1.0}, // in one field with its signs
    {"degrees and minutes", 1.0},
    {"seconds", 1.0 / secondsPerDegree},
};

bool isSame(const NamedUnit &unit, const char *symbol)
{
    return std::strcmp(unit.symbol, symbol) == 0;
}

/// Words by which several lengths go: links and chains are those of the foot of a country.
bool isOfManyFeet(const NamedUnit &unit)
{
    return isSame(unit, "links") || isSame(unit, "chains");
}

/// "ft" may mean another foot where the form has one: they differ by metres in a northing.
bool mayBeAnotherFoot(const InputForm &form, int component, const Heading &heading)
{
    const QString read = form.unitText(component);
    const bool hasOtherFoot =
        read.endsWith(QLatin1String("-ft")) && heading.unit->unit == Unit_Foot;
    const QStringList words = normalisedHeading(heading.text).split(QLatin1Char('_'));
    const bool isSaid = words.contains(QLatin1String("int"))
                        || words.contains(QLatin1String("intl"))
                        || words.contains(QLatin1String("international"));
    return hasOtherFoot && !isSaid && !isOfLocations(heading);
}

/// Which components are of one kind: those of the plane, of the cartesian frame, the two angles.
int endOfKind(Frame frame)
{
    return frame == Frame::Wgs84Cartesian ? componentsPerFrame : componentsPerFrame - 1;
}

QString labelOf(const InputForm &form, int component)
{
    return QString::fromLatin1(columnOf(form.frame, component).label);
}

QString without(const InputForm &form, const QStringList &headings, const FieldOrder &order,
                int bare, int named)
{
    const auto headingOf = [&](int component) {
        const int field = order.components[static_cast<std::size_t>(component)];
        return field >= 0 && field < headings.size() ? quoted(headings.at(field))
                                                     : labelOf(form, component);
    };
    return QStringLiteral("%1 names no unit, and %2 is in %3: name the unit in both headings")
        .arg(headingOf(bare), headingOf(named), unitTextOf(form, order, named));
}

} // namespace

std::optional<double> measureOf(const NamedUnit &unit)
{
    if (unit.kind == UnitKind::Length && unit.unit != Unit_None)
        return CoordStringHelper::ConvertUnit_Length(1.0, unit.unit, Unit_Meter);
    for (const Measure &row : measures) {
        if (isSame(unit, row.symbol))
            return row.measure;
    }
    if (isOfManyFeet(unit))
        return std::nullopt;
    for (const PlaneUnit &row : planeUnits()) {
        if (unitNamed(normalisedHeading(row.symbol)) == &unit)
            return row.metres;
    }
    return std::nullopt;
}

bool canBeRead(const InputForm &form, int component, const Heading &heading)
{
    if (hasInputUnit(form, component, heading))
        return true;
    const NamedUnit &unit = *heading.unit;
    const bool isOfAngle = isAngle(columnOf(form.frame, component));
    if (isOfAngle == (unit.kind == UnitKind::Length) || !measureOf(unit))
        return false;
    // Seconds of arc are an angle by themselves; "sec" stands beside minutes.
    if (unit.isPartOfDegree) {
        return isSame(unit, "seconds")
               && normalisedHeading(heading.text).contains(QLatin1String("arcsec"));
    }
    return isOfAngle || !mayBeAnotherFoot(form, component, heading);
}

const NamedUnit *otherUnitOf(const InputForm &form, int component, const Heading &heading)
{
    return hasInputUnit(form, component, heading) ? nullptr : heading.unit;
}

bool isReadIn(const InputForm &form, const FieldOrder &order, int component, const NamedUnit &unit)
{
    const NamedUnit *other = order.otherUnits[static_cast<std::size_t>(component)];
    return other != nullptr ? other == &unit : isInputUnit(form, component, unit);
}

QString unitTextOf(const InputForm &form, const FieldOrder &order, int component)
{
    const NamedUnit *other = order.otherUnits[static_cast<std::size_t>(component)];
    return other != nullptr ? QString::fromLatin1(other->symbol) : form.unitText(component);
}

double measureOf(const InputForm &form, const FieldOrder &order, int component)
{
    const NamedUnit *other = order.otherUnits[static_cast<std::size_t>(component)];
    return other != nullptr ? measureOf(*other).value_or(1.0) : form.metresPerUnit(component);
}

QString unitsInDoubt(const InputForm &form, const FieldOrder &order, const QStringList &headings)
{
    const auto isNamed = [&order](int i) {
        const auto index = static_cast<std::size_t>(i);
        return order.hasUnit[index] || order.hasUnitOfLine[index];
    };
    const auto otherUnit = [&order](int i) {
        return order.otherUnits[static_cast<std::size_t>(i)];
    };
    const int end = endOfKind(form.frame);
    for (int bare = 0; bare < end; ++bare) {
        for (int named = 0; named < end && !isNamed(bare); ++named) {
            if (isNamed(named) && otherUnit(named) != nullptr)
                return without(form, headings, order, bare, named);
        }
    }
    // Who measures a plane in feet rarely gives its heights in metres.
    const int height = componentsPerFrame - 1;
    const bool mayBeInUnitOfPlane = form.frame == Frame::LocalProjected && order.hasHeight()
                                    && !isNamed(height) && otherUnit(0) != nullptr
                                    && !form.isLengthUnitSaid();
    if (!mayBeInUnitOfPlane)
        return {};
    const QString doubt = without(form, headings, order, height, 0);
    return form.height == InputHeight::OfFrame
               ? doubt
                     + QStringLiteral(", or that of other lengths with %1")
                           .arg(form.words.lengthUnit)
               : doubt;
}

QString noteOnUnits(const InputForm &form, const FieldOrder &order)
{
    QStringList parts;
    for (int i = 0; i < order.countComponents(); ++i) {
        const NamedUnit *other = order.otherUnits[static_cast<std::size_t>(i)];
        if (other != nullptr)
            parts += QStringLiteral("%1 in %2").arg(labelOf(form, i), QLatin1String(other->symbol));
    }
    return parts.isEmpty() ? QString()
                           : QStringLiteral("as its units are named, the input is read with %1")
                                 .arg(parts.join(QLatin1String(", ")));
}

} // namespace KelStd::positions
