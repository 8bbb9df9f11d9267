#include <KelStd/positions/UnitDoubts.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/positions/SaidUnits.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>

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

/// "[gon]" in the place of a component that is read in another unit.
QString mistakeAt(const QString &field, const InputForm &form, int component)
{
    Heading heading;
    heading.text = field;
    heading.unit = unitOfField(field);
    static const QRegularExpression otherWay(
        QStringLiteral("(\\b|\u00B0|\u00BA|\u02DA)(S|W|south|west)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const QString text = withoutBrackets(field);
    if (heading.unit != nullptr && isAngle(columnOf(form.frame, component)) && text.size() > 1
        && otherWay.match(text).hasMatch()) {
        return QStringLiteral("%1 counts southwards or westwards; %2 is read northwards or "
                              "eastwards, with a minus otherwise")
            .arg(quoted(field), QLatin1String(columnOf(form.frame, component).label));
    }
    return heading.unit == nullptr || isInputUnit(form, component, *heading.unit)
               ? QString()
               : unitMistake(form, component, heading);
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

QString unitsMistake(const QStringList &units, const FieldOrder &order, const InputForm &form)
{
    std::array<int, componentsPerFrame> places = order.components;
    if (units.size() != order.fields && units.size() == componentsPerFrame) {
        for (int &place : places) {
            place = static_cast<int>(std::count_if(order.components.begin(), order.components.end(),
                                                   [place](int other) { return other < place; }));
        }
    } else if (units.size() != order.fields) {
        for (const QString &field : units) {
            QString mistake;
            for (int i = 0; i < componentsPerFrame; ++i) {
                mistake = mistakeAt(field, form, i);
                if (mistake.isEmpty())
                    break;
            }
            if (!mistake.isEmpty())
                return mistake;
        }
        return {};
    }
    for (int i = 0; i < componentsPerFrame; ++i) {
        QString mistake = mistakeAt(units.at(places[static_cast<std::size_t>(i)]), form, i);
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
        for (int i = 0; i < componentsPerFrame; ++i) {
            if (order.hasUnit[static_cast<std::size_t>(i)] || !isAbout(said.said, form, i)
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
        for (int i = 0; i < componentsPerFrame; ++i) {
            if (!measures(*unit, form, i) || isInputUnit(form, i, *unit)
                || unit->kind == UnitKind::TypedAngle)
                continue;
            return QStringLiteral("the line's unit is %1, but %2 is read in %3%4")
                .arg(quoted(line.fields.at(field)), QLatin1String(columnOf(form.frame, i).label),
                     form.unitText(i), lengthUnitHint(form, *unit));
        }
    }
    return {};
}

} // namespace KelStd::positions
