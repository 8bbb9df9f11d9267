#include <KelStd/positions/UnitDoubts.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/positions/ReadUnits.h>
#include <KelStd/positions/SaidUnits.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <optional>

namespace KelStd::positions {

namespace {

bool isAbout(Said said, const InputForm &form, int component)
{
    const bool isOfAngle = isAngle(columnOf(form.frame, component));
    switch (said) {
    case Said::All: return true;
    case Said::Lengths: return !isOfAngle;
    case Said::Angles: return isOfAngle;
    case Said::Heights: break;
    }
    return component == componentsPerFrame - 1 && form.frame != Frame::Wgs84Cartesian;
}

/// Whether the unit may be that of the component at all.
bool measures(const NamedUnit &unit, const InputForm &form, int component)
{
    return (unit.kind == UnitKind::Length) != isAngle(columnOf(form.frame, component));
}

/// Whether a text that says the unit may mean the one in which the component is read: "feet" may be
/// US survey feet.
bool mayBeInputUnit(const NamedUnit &unit, const InputForm &form, int component)
{
    return isInputUnit(form, component, unit)
           || (unit.unit == Unit_Foot && form.unitText(component) == unitSymbol(Unit_USFoot));
}

/// A field without its brackets: "[deg]" and "(deg)" are "deg".
QString withoutBrackets(const QString &field)
{
    const bool isInBrackets =
        field.size() > 1
        && ((field.startsWith(QLatin1Char('[')) && field.endsWith(QLatin1Char(']')))
            || (field.startsWith(QLatin1Char('(')) && field.endsWith(QLatin1Char(')'))));
    return (isInBrackets ? field.mid(1, field.size() - 2) : field).trimmed();
}

const NamedUnit *unitOfField(const QString &field)
{
    static const QRegularExpression direction(
        QStringLiteral("\\s*\\b(N|S|E|W|north|south|east|west)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    QString text = withoutBrackets(field);
    text.replace(QLatin1String("U.S."), QLatin1String("US"));
    if (text.size() > 1)
        text.remove(direction); // "deg N"
    static const QStringList degreeSigns = {QStringLiteral("\u00B0"), QStringLiteral("\u00BA"),
                                            QStringLiteral("\u02DA")};
    if (degreeSigns.contains(text))
        return unitNamed(QStringLiteral("deg"));
    const NamedUnit *unit = unitNamed(normalisedHeading(text));
    return unit != nullptr ? unit : unitNamed(text);
}

/// The fields with those put together that blanks tore apart: "[US survey feet]".
QStringList withWholeBrackets(const SplitLine &line)
{
    if (!line.byBlanks)
        return line.fields;
    QStringList fields;
    bool isOpen = false;
    for (const QString &field : line.fields) {
        if (isOpen)
            fields.last() += QLatin1Char(' ') + field;
        else
            fields += field;
        const QString &last = fields.last();
        isOpen = (last.startsWith(QLatin1Char('[')) && !last.endsWith(QLatin1Char(']')))
                 || (last.startsWith(QLatin1Char('(')) && !last.endsWith(QLatin1Char(')')));
    }
    return fields;
}

Heading headingOfUnit(const QString &field)
{
    Heading heading;
    heading.text = field;
    heading.unit = unitOfField(field);
    return heading;
}

/// "deg W": what counts the other way than the component is read.
QString otherWayAt(const QString &field, const InputForm &form, int component)
{
    struct Way
    {
        QRegularExpression unit;
        QString text;
    };
    const auto endingWith = [](const char *words) {
        return QRegularExpression(
            QStringLiteral("(\\b|\u00B0|\u00BA|\u02DA)(%1)\\z").arg(QLatin1String(words)),
            QRegularExpression::CaseInsensitiveOption);
    };
    static const Way forward{endingWith("N|E|north|east"),
                             QStringLiteral("northwards or eastwards")};
    static const Way backward{endingWith("S|W|south|west"),
                              QStringLiteral("southwards or westwards")};
    const Column &column = columnOf(form.frame, component);
    const QString text = withoutBrackets(field);
    const bool isBackward = countsBackwards(column, form.localAxes);
    const Way &other = isBackward ? forward : backward;
    if (unitOfField(field) == nullptr || !isAngle(column) || text.size() < 2
        || !other.unit.match(text).hasMatch())
        return {};
    return QStringLiteral("%1 counts %2; %3 is read %4, with a minus otherwise")
        .arg(quoted(field), other.text, QLatin1String(column.label),
             (isBackward ? backward : forward).text);
}

/// "[gon]" in the place of a component that is read in another unit.
QString mistakeAt(const QString &field, const InputForm &form, const FieldOrder &order,
                  int component)
{
    const QString mistake = otherWayAt(field, form, component);
    const Heading heading = headingOfUnit(field);
    if (!mistake.isEmpty() || heading.unit == nullptr
        || isReadIn(form, order, component, *heading.unit))
        return mistake;
    return unitMistake(form, component, heading, unitTextOf(form, order, component));
}

/// Lets the component be read in the unit of the field, where its heading names none.
QString takeUnitAt(const QString &field, const InputForm &form, int component, FieldOrder &order)
{
    const auto index = static_cast<std::size_t>(component);
    const Heading heading = headingOfUnit(field);
    if (order.hasUnit[index] || heading.unit == nullptr || !canBeRead(form, component, heading))
        return mistakeAt(field, form, order, component);
    const NamedUnit *unit = otherUnitOf(form, component, heading);
    if (order.hasUnitOfLine[index] && order.otherUnits[index] != unit)
        return mistakeAt(field, form, order, component);
    order.otherUnits[index] = unit;
    order.hasUnitOfLine[index] = true;
    return otherWayAt(field, form, component);
}

/// In which field of a line of units that of each component stands; nothing where that is not
/// known.
std::optional<std::array<int, componentsPerFrame>> placesOfUnits(int units, const FieldOrder &order)
{
    std::array<int, componentsPerFrame> places = order.components;
    if (units == order.fields)
        return places;
    if (units != order.countComponents())
        return std::nullopt;
    const ComponentFields fields = order.componentFields();
    for (int &place : places) {
        place = static_cast<int>(std::count_if(fields.begin(), fields.end(),
                                               [place](int other) { return other < place; }));
    }
    return places;
}

} // namespace

QStringList unitsOfLine(const SplitLine &line)
{
    static const QRegularExpression announcement(QStringLiteral("\\Aunits?\\s*[:=]?\\s*"),
                                                 QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression nothing(QStringLiteral("\\A[-.?/]*\\z"));
    QStringList fields = withWholeBrackets(line);
    if (fields.isEmpty())
        return {};
    if (fields.first().contains(announcement)) {
        fields.first().remove(announcement);
        if (fields.first().isEmpty() && line.byBlanks)
            fields.removeFirst();
    }
    int units = 0;
    bool areInBrackets = true;
    for (const QString &field : fields) {
        const QString text = withoutBrackets(field);
        if (unitOfField(field) != nullptr) {
            ++units;
            areInBrackets = areInBrackets && text.size() != field.size();
        } else if (!nothing.match(text).hasMatch()) {
            return {};
        }
    }
    const int minUnits = line.byBlanks && !areInBrackets ? 3 : 2; // "in m" may be words
    return units >= minUnits ? fields : QStringList();
}

QString takeUnits(const QStringList &units, const InputForm &form, FieldOrder &order)
{
    const auto places = placesOfUnits(static_cast<int>(units.size()), order);
    if (!places)
        return unitsMistake(units, order, form);
    FieldOrder taken = order;
    for (int i = 0; i < order.countComponents(); ++i) {
        QString mistake =
            takeUnitAt(units.at((*places)[static_cast<std::size_t>(i)]), form, i, taken);
        if (!mistake.isEmpty())
            return mistake;
    }
    QString mistake = unitsInDoubt(form, taken, QStringList());
    if (mistake.isEmpty())
        order = taken;
    return mistake;
}

QString unitsMistake(const QStringList &units, const FieldOrder &order, const InputForm &form)
{
    const int count = order.countComponents();
    if (const auto places = placesOfUnits(static_cast<int>(units.size()), order)) {
        for (int i = 0; i < count; ++i) {
            QString mistake =
                mistakeAt(units.at((*places)[static_cast<std::size_t>(i)]), form, order, i);
            if (!mistake.isEmpty())
                return mistake;
        }
        return {};
    }
    for (const QString &field : units) {
        QString mistake;
        for (int i = 0; i < count; ++i) {
            mistake = mistakeAt(field, form, order, i);
            if (mistake.isEmpty())
                break;
        }
        if (!mistake.isEmpty())
            return mistake;
    }
    return {};
}

bool saysUnits(const QString &text)
{
    return !saidUnits(text).isEmpty();
}

QString saidUnitMistake(const QString &text, const FieldOrder &order, const InputForm &form)
{
    for (const SaidUnit &said : saidUnits(text)) {
        for (int i = 0; i < order.countComponents(); ++i) {
            const auto index = static_cast<std::size_t>(i);
            if (order.hasUnit[index] || order.hasUnitOfLine[index] || !isAbout(said.said, form, i)
                || !measures(*said.unit, form, i) || mayBeInputUnit(*said.unit, form, i))
                continue;
            return QStringLiteral("the line says %1, but %2 is read in %3%4")
                .arg(quoted(said.words), QLatin1String(columnOf(form.frame, i).label),
                     form.unitText(i), lengthUnitHint(form, *said.unit));
        }
    }
    return {};
}

QString unitFieldMistake(const SplitLine &line, const FieldOrder &order, const InputForm &form)
{
    for (const int field : order.units) {
        const QString &text = line.fields.at(field);
        const NamedUnit *unit = unitOfField(text);
        if (unit == nullptr)
            unit = unitWithin(text);
        if (unit == nullptr)
            continue;
        for (int i = 0; i < order.countComponents(); ++i) {
            if (!measures(*unit, form, i) || isReadIn(form, order, i, *unit)
                || unit->kind == UnitKind::TypedAngle)
                continue;
            return QStringLiteral("the line's unit is %1, but %2 is read in %3%4")
                .arg(quoted(line.fields.at(field)), QLatin1String(columnOf(form.frame, i).label),
                     unitTextOf(form, order, i), lengthUnitHint(form, *unit));
        }
    }
    return {};
}

} // namespace KelStd::positions
