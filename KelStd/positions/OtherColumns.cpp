#include <KelStd/positions/OtherColumns.h>

#include <KelStd/positions/PointNames.h>

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// The best first: of several columns one is that of the names.
const QStringList &nameWords()
{
    static const QStringList words =
        QStringLiteral(
            "point name id point_name pt station no number point_id "
            "pointname pointid pt_name pt_id ptid point_no point_number pt_no ptno pointno "
            "pointnumber point_nr ptnr "
            "station_name station_id label nr nummer pkt punkt punktname punktnummer "
            "punktnr punkt_nr pktnr pkt_nr bezeichnung nokta nokta_no nokta_ad\u0131 nokta_adi")
            .split(QLatin1Char(' '));
    return words;
}

} // namespace

bool isNameWord(const QString &word)
{
    return nameWords().contains(word);
}

int pointNameAmong(const QStringList &headings)
{
    QStringList words = headings;
    for (QString &word : words)
        word = normalisedHeading(word);
    for (const QString &word : nameWords()) {
        if (words.contains(word))
            return static_cast<int>(words.indexOf(word));
    }
    return -1;
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

QVector<int> fieldsNotTaken(const QVector<Heading> &headings, const FieldOrder &order)
{
    QVector<int> found;
    const auto &components = order.components;
    for (int i = 0; i < headings.size(); ++i) {
        const bool isTaken =
            i == order.name
            || std::find(components.begin(), components.end(), i) != components.end()
            || std::find(order.units.begin(), order.units.end(), i) != order.units.end();
        if (!isTaken)
            found += i;
    }
    return found;
}

QStringList headingsNotTaken(const QVector<Heading> &headings, const FieldOrder &order)
{
    QStringList found;
    for (const int field : fieldsNotTaken(headings, order)) {
        const Heading &heading = headings.at(field);
        if (!heading.text.isEmpty() && !isOfOutput(heading))
            found += heading.text;
    }
    return found;
}

int fieldOfHeightReference(const QStringList &headings, const InputForm &form,
                           const FieldOrder &order)
{
    if (form.frame != Frame::LocalProjected || !order.hasHeight())
        return FieldOrder::noField;
    const auto heading = std::find_if(headings.cbegin(), headings.cend(), [](const QString &text) {
        return normalisedHeading(text) == QLatin1String(heightReferenceName);
    });
    return heading == headings.cend() ? FieldOrder::noField
                                      : static_cast<int>(heading - headings.cbegin());
}

void carry(int field, const QStringList &headings, FieldOrder &order)
{
    const QString heading = headings.value(field);
    order.carried.push_back(field);
    order.carriedHeadings +=
        heading.isEmpty() ? QStringLiteral("column_%1").arg(field + 1) : heading;
}

} // namespace KelStd::positions
