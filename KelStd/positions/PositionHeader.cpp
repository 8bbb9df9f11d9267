#include <KelStd/positions/PositionHeader.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/OppositeHeadings.h>
#include <KelStd/positions/OtherColumns.h>
#include <KelStd/positions/PointNames.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/positions/ReadUnits.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QVector>

#include <algorithm>
#include <array>

namespace KelStd::positions {

namespace {

QVector<Heading> headingsOf(const QStringList &fields)
{
    QVector<Heading> headings;
    for (const QString &field : fields)
        headings += headingOf(field);
    return headings;
}

/// How the unit that a heading names stands to the one of the form.
enum class UnitFit
{
    OfForm, ///< the same, or none is named
    CanBeRead,
    CannotBeRead
};

UnitFit fitOf(const InputForm &form, int component, const Heading &heading)
{
    return hasInputUnit(form, component, heading) ? UnitFit::OfForm
           : canBeRead(form, component, heading)  ? UnitFit::CanBeRead
                                                  : UnitFit::CannotBeRead;
}

/// The fields that name the component with a unit that fits so.
QVector<int> fieldsNaming(const InputForm &form, int component, const QVector<Heading> &headings,
                          UnitFit fit)
{
    QVector<int> found;
    for (int i = 0; i < headings.size(); ++i) {
        if (isNamedBy(form, component, headings.at(i))
            && fitOf(form, component, headings.at(i)) == fit)
            found += i;
    }
    return found;
}

/// The fields that may hold the component: a unit that is to be converted counts where there is no
/// other.
QVector<int> fieldsHolding(const InputForm &form, int component, const QVector<Heading> &headings)
{
    const QVector<int> ofForm = fieldsNaming(form, component, headings, UnitFit::OfForm);
    return ofForm.isEmpty() ? fieldsNaming(form, component, headings, UnitFit::CanBeRead) : ofForm;
}

/// The fields headed by the very names of the printed columns, one for each component: beside all
/// three of them another word, such as the "h" of a column that was carried through, names nothing.
/// Empty where one is not there, or where other words name all three as well.
QVector<int> fieldsOfOutput(const InputForm &form, const QVector<Heading> &headings)
{
    QVector<int> own;
    int withOthers = 0;
    for (int i = 0; i < componentsPerFrame; ++i) {
        bool hasOther = false;
        int found = 0;
        for (int field = 0; field < headings.size(); ++field) {
            const Heading &heading = headings.at(field);
            const bool isOwn = heading.whole == QLatin1String(inputColumn(form, i).csvName);
            hasOther = hasOther || (!isOwn && isNamedBy(form, i, heading));
            if (!isOwn || fitOf(form, i, heading) == UnitFit::CannotBeRead)
                continue;
            own += field;
            ++found;
        }
        if (found != 1)
            return {};
        withOthers += hasOther ? 1 : 0;
    }
    return withOthers == componentsPerFrame ? QVector<int>() : own;
}

QString acceptedWords(const InputForm &form)
{
    QStringList accepted;
    for (int i = 0; i < componentsPerFrame; ++i) {
        const Column column = inputColumn(form, i);
        accepted += QStringLiteral("%1 (%2)").arg(QString::fromLatin1(column.label),
                                                  wordsFor(form, i).join(QLatin1String(", ")));
    }
    return accepted.join(QLatin1String("; "));
}

bool fits(const InputForm &form, const QVector<Heading> &headings)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (fieldsHolding(form, i, headings).size() != 1)
            return false;
    }
    return true;
}

/// "; these headings fit the frame local-neh", or nothing.
QString otherFrames(const InputForm &form, const QVector<Heading> &headings)
{
    QStringList fitting;
    for (const FrameRow &row : frames()) {
        if (fits(row.frame, headings))
            fitting += form.words.frame + QLatin1Char(' ') + QLatin1String(row.option);
    }
    // All words but the names of its columns are those of the plane.
    if (fitting.isEmpty() && fits(InputForm::atSite(), headings))
        fitting += form.words.frame + QLatin1Char(' ') + QLatin1String(siteFrameName);
    return fitting.isEmpty() ? QString()
                             : QStringLiteral("; these headings fit %1")
                                   .arg(fitting.join(QLatin1String(" and ")));
}

/// What a heading that speaks of the component says of the other way: the letter S may head
/// anything.
QString otherWayOfHeading(const Heading &heading, const InputForm &form, int component)
{
    const QString label = QString::fromLatin1(columnOf(form.frame, component).label);
    return directionIn(heading) == label ? otherWayIn(heading, form, component) : QString();
}

QString missing(const InputForm &form, int component, const QVector<Heading> &headings)
{
    const bool isChosen = form.height == InputHeight::OfFrame;
    QString text = QStringLiteral("the line holds no number, so it is a header; it names no %1")
                       .arg(QString::fromLatin1(inputColumn(form, component).label));
    if (isChosen)
        text += otherFrames(form, headings);
    const QVector<int> otherUnit = fieldsNaming(form, component, headings, UnitFit::CannotBeRead);
    if (!otherUnit.isEmpty())
        text += QLatin1String("; ")
                + unitMistake(form, component, headings.at(otherUnit.first()),
                              form.unitText(component));
    QStringList found; // those that may be picked
    for (const Heading &heading : headings) {
        const QString otherWay = otherWayOfHeading(heading, form, component);
        if (otherWay.isEmpty())
            found += heading.text;
        else
            text += QStringLiteral("; %1 %2").arg(quoted(heading.text), otherWay);
    }
    const bool hasXY = std::any_of(headings.begin(), headings.end(), [](const Heading &heading) {
        return heading.word == QLatin1String("x") || heading.word == QLatin1String("y");
    });
    if (hasXY && form.frame == Frame::LocalProjected) {
        text += QStringLiteral("; x is the northing in some countries and the easting in others, "
                               "which %1 says")
                    .arg(form.words.columns);
    } else if (isChosen) {
        text += QStringLiteral("; %1 picks columns with other headings").arg(form.words.columns);
        if (std::any_of(headings.begin(), headings.end(), isKnown)) {
            text += QStringLiteral(" of these: ") + listedHeadings(found);
        }
    }
    return text
           + QStringLiteral(". Accepted%1: %2")
                 .arg(isChosen
                          ? QStringLiteral(" for %1 %2").arg(form.words.frame, form.frameName())
                          : QString(),
                      acceptedWords(form));
}

/// Degrees in one column and their minutes in another: the degrees alone are another angle.
QString partsOfAngles(const InputForm &form, const QVector<Heading> &headings,
                      const FieldOrder &order)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (!isAngle(columnOf(form.frame, i)))
            continue;
        const int read = order.components[static_cast<std::size_t>(i)];
        for (const UnitFit fit : {UnitFit::CannotBeRead, UnitFit::CanBeRead}) {
            for (const int field : fieldsNaming(form, i, headings, fit)) {
                if (field != read && headings.at(field).unit->isPartOfDegree)
                    return partOfAngleMistake(headings.at(field));
            }
        }
        const int next = read + 1;
        const ComponentFields fields = order.componentFields();
        const bool isComponent = std::find(fields.begin(), fields.end(), next) != fields.end();
        if (next < headings.size() && !isComponent && isPartOfAngleBefore(headings.at(next)))
            return partOfAngleMistake(headings.at(next));
    }
    return {};
}

/// Whether headings that name two components are those of positions without heights: none speaks
/// of a height of any kind.
bool mayBeWithoutHeight(const InputForm &form, const QVector<Heading> &headings)
{
    return form.mayLackHeight() && std::none_of(headings.begin(), headings.end(), speaksOfHeight);
}

int distinctNamed(const InputForm &form, const QVector<Heading> &headings)
{
    std::array<bool, componentsPerFrame> isNamed{};
    for (const Heading &heading : headings) {
        const int component = componentHeaded(form, heading);
        if (component >= 0)
            isNamed[static_cast<std::size_t>(component)] = true;
    }
    return static_cast<int>(std::count(isNamed.begin(), isNamed.end(), true));
}

} // namespace

QString labelsOf(Frame frame)
{
    QStringList labels;
    for (int i = 0; i < componentsPerFrame; ++i)
        labels += QString::fromLatin1(columnOf(frame, i).label);
    return labels.join(QLatin1String(", "));
}

FieldOrder plainOrder(int fields, int components)
{
    FieldOrder order;
    order.fields = fields;
    order.isPlain = true;
    const int first = fields - components;
    order.name = first > 0 ? 0 : FieldOrder::noField;
    order.components.back() = FieldOrder::noField;
    for (int i = 0; i < components; ++i)
        order.components[static_cast<std::size_t>(i)] = first + i;
    return order;
}

QString listedHeadings(const QStringList &headings)
{
    constexpr int maxShown = 8;
    QStringList listed;
    for (const QString &heading : headings.mid(0, maxShown))
        listed += quoted(heading);
    if (headings.size() > maxShown)
        listed += QStringLiteral("%1 more").arg(headings.size() - maxShown);
    return listed.join(QLatin1String(", "));
}

QStringList joinUnits(const QStringList &fields)
{
    QStringList joined;
    bool isOpen = false; // "(US survey feet)"
    for (const QString &field : fields) {
        const bool isUnit =
            field.startsWith(QLatin1Char('[')) || field.startsWith(QLatin1Char('('));
        if ((isUnit || isOpen) && !joined.isEmpty())
            joined.last() += QLatin1Char(' ') + field;
        else
            joined += field;
        if (isUnit)
            isOpen = true;
        if (field.endsWith(QLatin1Char(']')) || field.endsWith(QLatin1Char(')')))
            isOpen = false;
    }
    return joined;
}

bool readHeader(const QStringList &fields, const InputForm &form, FieldOrder &order,
                QString &mistake)
{
    const QVector<Heading> headings = headingsOf(fields);
    order = {};
    order.fields = static_cast<int>(fields.size());
    order.hasHeadings = true;
    const QVector<int> ofOutput = fieldsOfOutput(form, headings);
    for (int i = 0; i < componentsPerFrame; ++i) {
        const QVector<int> found =
            ofOutput.isEmpty() ? fieldsHolding(form, i, headings) : QVector<int>{ofOutput.at(i)};
        const auto index = static_cast<std::size_t>(i);
        if (i == componentsPerFrame - 1 && mayBeWithoutHeight(form, headings)) {
            order.components[index] = FieldOrder::noField;
            continue;
        }
        if (found.size() != 1) {
            mistake = found.isEmpty()
                          ? missing(form, i, headings)
                          : QStringLiteral("the header names the %1 twice: \"%2\" and \"%3\"")
                                .arg(QString::fromLatin1(inputColumn(form, i).label),
                                     fields.at(found.at(0)), fields.at(found.at(1)));
            return false;
        }
        const Heading &heading = headings.at(found.first());
        order.components[index] = found.first();
        order.hasUnit[index] = heading.unit != nullptr;
        order.otherUnits[index] = otherUnitOf(form, i, heading);
    }
    mistake = unitsInDoubt(form, order, fields);
    if (!mistake.isEmpty())
        return false;
    order.units = fieldsOfUnits(fields);
    mistake = partsOfAngles(form, headings, order);
    if (!mistake.isEmpty())
        return false;
    static_assert(FieldOrder::noField == -1);
    order.name = pointNameAmong(fields);
    order.heightReference = fieldOfHeightReference(fields, form, order);
    if (form.height != InputHeight::OfFrame) {
        order.notTaken = headingsNotTaken(headings, order);
        return true;
    }
    for (const int field : fieldsNotTaken(headings, order)) {
        if (!isOfLocations(headings.at(field)))
            carry(field, fields, order);
        else if (field != order.heightReference)
            order.computedAnew += headings.at(field).text;
    }
    return true;
}

int countKnown(const QStringList &fields)
{
    return static_cast<int>(std::count_if(fields.cbegin(), fields.cend(), [](const QString &field) {
        return isKnown(headingOf(field));
    }));
}

bool lookLikeHeadings(const QStringList &fields, const InputForm &form)
{
    QVector<Heading> headings;
    for (const QString &field : fields) {
        const Heading heading = headingOf(field);
        if (isKnown(heading))
            headings += heading;
    }
    if (headings.size() < 2)
        return false;
    return distinctNamed(form, headings) > 1
           || std::any_of(
               frames().begin(), frames().end(),
               [&headings](const FrameRow &row) { return distinctNamed(row.frame, headings) > 1; })
           || distinctNamed(InputForm::atSite(), headings) > 1;
}

namespace {

/// Where a line below the headings names the units, the headings need not name them again.
bool haveSameUnits(const FieldOrder &one, const FieldOrder &other)
{
    for (std::size_t i = 0; i < one.otherUnits.size(); ++i) {
        const bool isOfLine = (one.hasUnitOfLine[i] && !other.hasUnit[i])
                              || (other.hasUnitOfLine[i] && !one.hasUnit[i]);
        if (!isOfLine && one.otherUnits[i] != other.otherUnits[i])
            return false;
    }
    return true;
}

} // namespace

bool agree(const FieldOrder &one, const FieldOrder &other)
{
    const bool haveNames = one.name >= 0 && other.name >= 0;
    const bool haveHeadings = one.hasHeadings && other.hasHeadings;
    return one.fields == other.fields && one.components == other.components
           && haveSameUnits(one, other) && (!haveNames || one.name == other.name)
           && one.carried == other.carried
           && (!haveHeadings || one.heightReference == other.heightReference)
           && (!haveHeadings || one.carriedHeadings == other.carriedHeadings);
}

QVector<int> componentsMentioned(const QStringList &words, bool areHeadings, const InputForm &form)
{
    static const QStringList longer = {QStringLiteral("latitude"),  QStringLiteral("lat"),
                                       QStringLiteral("longitude"), QStringLiteral("lon"),
                                       QStringLiteral("lng"),       QStringLiteral("northing"),
                                       QStringLiteral("easting")};
    QVector<int> mentioned;
    for (const QString &word : words) {
        if (!areHeadings && !longer.contains(word))
            continue;
        const int component = componentHeaded(form, headingOf(word));
        if (component >= 0 && !mentioned.contains(component))
            mentioned += component;
    }
    return mentioned;
}

} // namespace KelStd::positions
