#include <KelStd/positions/PickedColumns.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/OppositeHeadings.h>
#include <KelStd/positions/OtherColumns.h>
#include <KelStd/positions/ReadUnits.h>
#include <KelStd/text/NearNames.h>
#include <KelStd/text/TypedNumber.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// What stands before the list of the headings that there are.
QString beforeList(const QString &column, const QStringList &headings)
{
    QStringList near;
    for (const QString &heading : nearNames(column, headings))
        near += quoted(heading);
    return near.isEmpty() ? QStringLiteral("there are")
                          : hintAt(near) + QStringLiteral(" There are");
}

/// A heading as a choice of columns has it.
QString asPicked(const QString &heading)
{
    const bool isPlain =
        !heading.contains(QLatin1Char(',')) && !heading.startsWith(QLatin1Char('"'));
    return isPlain ? heading
                   : QLatin1Char('"')
                         + QString(heading).replace(QLatin1Char('"'), QLatin1String("\"\""))
                         + QLatin1Char('"');
}

/// The one heading that is written like this, or else the one that differs in case, blanks and
/// signs alone.
int fieldHeaded(const QString &column, const QStringList &headings, const InputWords &words,
                QString &mistake)
{
    QStringList compared = headings;
    QString wanted = column;
    if (headings.count(column) == 0) {
        wanted = normalisedHeading(column);
        for (QString &heading : compared)
            heading = normalisedHeading(heading);
    }
    const auto count = compared.count(wanted);
    if (count == 1)
        return static_cast<int>(compared.indexOf(wanted));
    QStringList listed;
    for (const QString &heading : headings)
        listed += asPicked(heading);
    mistake = count > 1 ? QStringLiteral("%1: %2 is the heading of %3 columns; pick one by "
                                         "its number")
                              .arg(words.columns, quoted(column), QString::number(count))
                        : QStringLiteral("%1: no column is headed %2; %3 %4")
                              .arg(words.columns, quoted(column), beforeList(column, headings),
                                   listed.join(QLatin1String(", ")));
    return -1;
}

/// "x" may be the northing or the easting of the plane, and an elevation any height, which only the
/// user knows.
bool isForTheUserToKnow(const Heading &heading, Frame frame)
{
    if (heading.frame.isEmpty()
        && (heading.word == QLatin1String("elevation") || heading.word == QLatin1String("elev")))
        return true;
    return frame == Frame::LocalProjected && heading.frame.isEmpty()
           && (heading.word == QLatin1String("x") || heading.word == QLatin1String("y")
               || heading.word == QLatin1String("z"));
}

/// Whether a heading that speaks of the direction may head the component: east is where longitudes
/// and eastings grow, and a height may be that of the north wall.
bool mayHold(const InputForm &form, int component, const QString &direction)
{
    if (direction.isEmpty() || direction == QLatin1String(columnOf(form.frame, component).label))
        return true;
    const bool isNorth = direction == QLatin1String("north");
    if (!isNorth && direction != QLatin1String("east"))
        return false;
    if (form.frame == Frame::Wgs84Cartesian)
        return false;
    const int northward = form.frame == Frame::LocalProjected ? 0 : 1;
    return component == componentsPerFrame - 1 || (component == northward) == isNorth;
}

/// Why a column with this heading does not hold the component; empty when it may.
QString contradiction(const Heading &heading, const InputForm &form, int component)
{
    const QString label = QString::fromLatin1(columnOf(form.frame, component).label);
    const int meant = componentHeaded(form, heading);
    if (meant >= 0 && meant != component) {
        return QStringLiteral("%1 picks the column %2 as %3; the order is %4")
            .arg(form.words.columns, quoted(heading.text), label, labelsOf(form.frame));
    }
    if (meant < 0 && !isForTheUserToKnow(heading, form.frame)) {
        const QString other = otherMeaning(form, heading);
        if (!other.isEmpty()) {
            return QStringLiteral("%1 picks the column %2 as the %3 of %4; its heading names "
                                  "%5")
                .arg(form.words.columns, quoted(heading.text), label, form.frameName(), other);
        }
    }
    const QString otherWay = otherWayIn(heading, form, component);
    if (!otherWay.isEmpty()) {
        return QStringLiteral(
                   "%1 picks the column %2 as %3; its heading %4: write its numbers with the other "
                   "sign below another heading, or pick another column")
            .arg(form.words.columns, quoted(heading.text), label, otherWay);
    }
    const QString direction = meant < 0 ? directionIn(heading) : QString();
    if (!mayHold(form, component, direction)) {
        return QStringLiteral("%1 picks the column %2 as %3, but its heading says %4; "
                              "%5 passes over headings that are wrong")
            .arg(form.words.columns, quoted(heading.text), label, direction, form.words.skip);
    }
    if (!canBeRead(form, component, heading))
        return form.words.columns + QLatin1String(": ")
               + unitMistake(form, component, heading, form.unitText(component));
    return {};
}

/// Whether a column that is not picked holds the minutes or seconds of the component.
bool isRestOf(const Heading &heading, const InputForm &form, int component)
{
    return heading.unit != nullptr && heading.unit->isPartOfDegree
           && isAngle(columnOf(form.frame, component)) && isNamedBy(form, component, heading);
}

/// How many of the picked columns are components; 0 with the mistake where they are too few or too
/// many.
int countPickedComponents(int picked, const InputForm &form, QString &mistake)
{
    constexpr int withoutHeight = componentsPerFrame - 1;
    if (form.lacksHeight() && picked <= componentsPerFrame)
        return withoutHeight;
    if (form.lacksHeight()) {
        mistake = QStringLiteral("%1 picks a height beside %2")
                      .arg(form.words.columns, form.words.height);
        return 0;
    }
    if (picked >= componentsPerFrame)
        return componentsPerFrame;
    if (!form.mayLackHeight()) {
        mistake = QStringLiteral("%1 picks two columns; there are %2")
                      .arg(form.words.columns, labelsOf(form.frame));
        return 0;
    }
    return withoutHeight;
}

} // namespace

int columnNumber(const QString &text)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number > 0 ? number - 1 : -1;
}

bool isColumnNumber(const QString &text)
{
    bool ok = false;
    text.toInt(&ok);
    return ok;
}

int countPicked(const ColumnChoice &choice, const QStringList &headings)
{
    QStringList compared = headings;
    for (QString &heading : compared)
        heading = normalisedHeading(heading);
    return static_cast<int>(std::count_if(
        choice.columns().cbegin(), choice.columns().cend(), [&](const QString &column) {
            return !isColumnNumber(column)
                   && (headings.contains(column) || compared.contains(normalisedHeading(column)));
        }));
}

bool orderPicked(const ColumnChoice &choice, const QStringList &headings, int fields,
                 const InputForm &form, FieldOrder &order, QString &mistake)
{
    order = {};
    order.fields = fields;
    order.hasHeadings = !headings.isEmpty();
    order.isPicked = true;
    mistake.clear();
    QVector<int> picked;
    for (const QString &column : choice.columns()) {
        const int field = isColumnNumber(column)
                              ? columnNumber(column)
                              : fieldHeaded(column, headings, form.words, mistake);
        if (field < 0)
            return false;
        if (field >= fields) {
            mistake = QStringLiteral("%1: there is no column %2; the line has %3")
                          .arg(form.words.columns, column, QString::number(fields));
            return false;
        }
        if (picked.contains(field)) {
            mistake =
                QStringLiteral("%1 picks column %2 twice").arg(form.words.columns).arg(field + 1);
            return false;
        }
        picked += field;
    }

    const auto components = countPickedComponents(static_cast<int>(picked.size()), form, mistake);
    if (components == 0)
        return false;
    const auto first = picked.size() - components;
    order.name = first > 0 ? picked.first() : FieldOrder::noField;
    order.components.back() = FieldOrder::noField;
    for (int i = 0; i < components; ++i) {
        const int field = picked.at(first + i);
        const auto index = static_cast<std::size_t>(i);
        order.components[index] = field;
        if (headings.isEmpty())
            continue;
        const Heading heading = headingOf(headings.at(field));
        mistake = contradiction(heading, form, i);
        if (!mistake.isEmpty())
            return false;
        if (i + 1 == componentsPerFrame && speaksOfGeoid(heading))
            order.geoidHeight = heading.text;
        order.hasUnit[index] = heading.unit != nullptr;
        order.otherUnits[index] = otherUnitOf(form, i, heading);
    }
    mistake = unitsInDoubt(form, order, headings);
    if (!mistake.isEmpty())
        return false;
    order.units = fieldsOfUnits(headings);
    order.heightReference = fieldOfHeightReference(headings, form, order);
    for (int field = 0; field < fields; ++field) {
        if (picked.contains(field))
            continue;
        const Heading heading = headings.isEmpty() ? Heading() : headingOf(headings.at(field));
        for (int i = 0; i < order.countComponents(); ++i) {
            const bool isBehind = field == order.components[static_cast<std::size_t>(i)] + 1
                                  && isAngle(columnOf(form.frame, i));
            if (isRestOf(heading, form, i) || (isBehind && isPartOfAngleBefore(heading))) {
                mistake = form.words.columns + QLatin1String(": ") + partOfAngleMistake(heading);
                return false;
            }
        }
        carry(field, headings, order);
    }
    return true;
}

} // namespace KelStd::positions
