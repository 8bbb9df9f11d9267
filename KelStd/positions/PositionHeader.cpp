#include <KelStd/positions/PositionHeader.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QVector>

#include <algorithm>
#include <array>

namespace KelStd::positions {

namespace {

/// The best first: of several columns one is that of the names.
const QStringList &nameWords()
{
    static const QStringList words =
        QStringLiteral("point name id point_name pt station no number point_id "
                       "pointname pointid pt_name pt_id ptid point_no point_number pt_no "
                       "station_name station_id label nr nummer pkt punkt punktname punktnummer "
                       "punktnr punkt_nr pktnr pkt_nr bezeichnung")
            .split(QLatin1Char(' '));
    return words;
}

QVector<Heading> headingsOf(const QStringList &fields)
{
    QVector<Heading> headings;
    for (const QString &field : fields)
        headings += headingOf(field);
    return headings;
}

/// The fields that name the component, with a unit that is read or with another.
QVector<int> fieldsNaming(const InputForm &form, int component, const QVector<Heading> &headings,
                          bool inItsUnit)
{
    QVector<int> found;
    for (int i = 0; i < headings.size(); ++i) {
        if (isNamedBy(form, component, headings.at(i))
            && hasInputUnit(form, component, headings.at(i)) == inItsUnit)
            found += i;
    }
    return found;
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
        if (fieldsNaming(form, i, headings, true).size() != 1)
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

QString missing(const InputForm &form, int component, const QVector<Heading> &headings)
{
    const bool isChosen = form.height == InputHeight::OfFrame;
    QString text =
        QStringLiteral("the line holds no number, so it is a header; it names no %1. Accepted%2: "
                       "%3%4")
            .arg(QString::fromLatin1(inputColumn(form, component).label),
                 isChosen ? QStringLiteral(" for %1 %2").arg(form.words.frame, form.frameName())
                          : QString(),
                 acceptedWords(form), isChosen ? otherFrames(form, headings) : QString());
    const QVector<int> otherUnit = fieldsNaming(form, component, headings, false);
    if (!otherUnit.isEmpty())
        text += QLatin1String("; ") + unitMistake(form, component, headings.at(otherUnit.first()));
    if (isChosen)
        text += QStringLiteral("; %1 picks columns with other headings").arg(form.words.columns);
    return text;
}

/// Degrees in one column and their minutes in another: the degrees alone are another angle.
QString partsOfAngles(const InputForm &form, const QVector<Heading> &headings,
                      const FieldOrder &order)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (!isAngle(columnOf(form.frame, i)))
            continue;
        for (const int field : fieldsNaming(form, i, headings, false)) {
            if (headings.at(field).unit->isPartOfDegree)
                return partOfAngleMistake(headings.at(field));
        }
        const int next = order.components[static_cast<std::size_t>(i)] + 1;
        if (next < headings.size() && isPartOfAngleBefore(headings.at(next)))
            return partOfAngleMistake(headings.at(next));
    }
    return {};
}

/// The headings of what neither is read nor stands in the program's own output.
QStringList headingsNotTaken(const QVector<Heading> &headings, const FieldOrder &order)
{
    QStringList found;
    const auto &components = order.components;
    for (int i = 0; i < headings.size(); ++i) {
        const Heading &heading = headings.at(i);
        const bool isTaken =
            i == order.name
            || std::find(components.begin(), components.end(), i) != components.end()
            || std::find(order.units.begin(), order.units.end(), i) != order.units.end();
        if (!isTaken && !heading.text.isEmpty() && !isOfOutput(heading))
            found += heading.text;
    }
    return found;
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

FieldOrder plainOrder(int fields)
{
    FieldOrder order;
    order.fields = fields;
    order.isPlain = true;
    const int first = fields - componentsPerFrame;
    order.name = first > 0 ? 0 : -1;
    for (int i = 0; i < componentsPerFrame; ++i)
        order.components[static_cast<std::size_t>(i)] = first + i;
    return order;
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
    order.fields = fields.size();
    order.hasHeadings = true;
    for (int i = 0; i < componentsPerFrame; ++i) {
        const QVector<int> found = fieldsNaming(form, i, headings, true);
        if (found.size() != 1) {
            mistake = found.isEmpty()
                          ? missing(form, i, headings)
                          : QStringLiteral("the header names the %1 twice: \"%2\" and \"%3\"")
                                .arg(QString::fromLatin1(inputColumn(form, i).label),
                                     fields.at(found.at(0)), fields.at(found.at(1)));
            return false;
        }
        order.components[static_cast<std::size_t>(i)] = found.first();
        order.hasUnit[static_cast<std::size_t>(i)] = headings.at(found.first()).unit != nullptr;
    }
    order.units = fieldsOfUnits(fields);
    mistake = partsOfAngles(form, headings, order);
    if (!mistake.isEmpty())
        return false;
    for (const QString &word : nameWords()) {
        for (int i = 0; i < fields.size() && order.name < 0; ++i) {
            if (normalisedHeading(fields.at(i)) == word)
                order.name = i;
        }
    }
    order.notTaken = headingsNotTaken(headings, order);
    return true;
}

std::vector<int> fieldsOfUnits(const QStringList &headings)
{
    static const QRegularExpression unit(
        QStringLiteral("\\A((h|heights?|lengths?|linear|elevations?|coord|coordinates?|angles?|"
                       "angular|xyz|horizontal|vertical)_)?(units?|uom)\\z"));
    std::vector<int> fields;
    for (int i = 0; i < headings.size(); ++i) {
        if (unit.match(normalisedHeading(headings.at(i))).hasMatch())
            fields.push_back(i);
    }
    return fields;
}

bool isNameWord(const QString &word)
{
    return nameWords().contains(word);
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

bool agree(const FieldOrder &one, const FieldOrder &other)
{
    const bool haveNames = one.name >= 0 && other.name >= 0;
    const bool haveHeadings = one.hasHeadings && other.hasHeadings;
    return one.fields == other.fields && one.components == other.components
           && (!haveNames || one.name == other.name) && one.carried == other.carried
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
