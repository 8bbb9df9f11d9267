#include <cli/PositionHeader.h>

namespace KelStd::cli {

namespace {

const QStringList &nameWords()
{
    static const QStringList words = {
        QStringLiteral("point"),      QStringLiteral("name"),   QStringLiteral("id"),
        QStringLiteral("point_name"), QStringLiteral("pt"),     QStringLiteral("station"),
        QStringLiteral("no"),         QStringLiteral("number"), QStringLiteral("point_id")};
    return words;
}

QStringList wordsOf(const Column &column)
{
    return QString::fromLatin1(column.headerWords).split(QLatin1Char(' '))
           + QStringList(QString::fromLatin1(column.csvName));
}

/// True when the heading names the column, with or without the unit that the program reads. Another
/// unit makes another word, which no column has.
bool isNamedBy(const Column &column, const QString &heading)
{
    const QString unit = QLatin1Char('_') + QLatin1String(column.quantity->unit);
    for (const QString &word : wordsOf(column)) {
        if (heading == word || heading == word + unit)
            return true;
    }
    return false;
}

/// The fields that name the column.
QList<int> fieldsNaming(const Column &column, const QStringList &headings)
{
    QList<int> found;
    for (int i = 0; i < headings.size(); ++i) {
        if (isNamedBy(column, headings.at(i)))
            found += i;
    }
    return found;
}

/// The column that a component is read as.
Column inputColumn(Frame frame, int component, InputHeight height)
{
    Column column = columnOf(frame, component);
    if (height == InputHeight::AboveGeoid && component == componentsPerFrame - 1) {
        column.csvName = "height_above_geoid";
        column.headerWords = "height h orthometric_height";
    }
    return column;
}

QString acceptedWords(Frame frame, InputHeight height)
{
    QStringList columns;
    for (int i = 0; i < componentsPerFrame; ++i) {
        const Column column = inputColumn(frame, i, height);
        columns += QStringLiteral("%1 (%2)").arg(QString::fromLatin1(column.label),
                                                 wordsOf(column).join(QLatin1String(", ")));
    }
    return columns.join(QLatin1String("; "));
}

bool fits(Frame frame, const QStringList &headings)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (fieldsNaming(columnOf(frame, i), headings).size() != 1)
            return false;
    }
    return true;
}

/// "; these headings fit --from local-neh", or nothing.
QString otherFrames(const QStringList &headings)
{
    QStringList fitting;
    for (const FrameRow &row : frames()) {
        if (fits(row.frame, headings))
            fitting += QLatin1String("--from ") + QLatin1String(row.option);
    }
    return fitting.isEmpty() ? QString()
                             : QStringLiteral("; these headings fit %1")
                                   .arg(fitting.join(QLatin1String(" and ")));
}

} // namespace

QString normalisedHeading(const QString &heading)
{
    QString word;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber())
            word += c;
        else if (!word.isEmpty() && !word.endsWith(QLatin1Char('_')))
            word += QLatin1Char('_');
    }
    if (word.endsWith(QLatin1Char('_')))
        word.chop(1);
    return word;
}

int componentHeaded(const QString &heading, Frame frame)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (isNamedBy(columnOf(frame, i), normalisedHeading(heading)))
            return i;
    }
    return -1;
}

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
    const int first = fields - componentsPerFrame;
    order.name = first > 0 ? 0 : -1;
    for (int i = 0; i < componentsPerFrame; ++i)
        order.components[static_cast<std::size_t>(i)] = first + i;
    return order;
}

QStringList joinUnits(const QStringList &fields)
{
    QStringList joined;
    for (const QString &field : fields) {
        const bool isUnit =
            field.startsWith(QLatin1Char('[')) || field.startsWith(QLatin1Char('('));
        if (isUnit && !joined.isEmpty())
            joined.last() += QLatin1Char(' ') + field;
        else
            joined += field;
    }
    return joined;
}

bool readHeader(const QStringList &fields, Frame frame, FieldOrder &order, QString &mistake,
                InputHeight height)
{
    QStringList headings;
    for (const QString &field : fields)
        headings += normalisedHeading(field);

    order = {};
    order.fields = fields.size();
    for (int i = 0; i < componentsPerFrame; ++i) {
        const Column column = inputColumn(frame, i, height);
        const QList<int> found = fieldsNaming(column, headings);
        if (found.size() != 1) {
            const QString label = QString::fromLatin1(column.label);
            const bool isChosen = height == InputHeight::OfFrame;
            mistake = found.isEmpty()
                          ? QStringLiteral("the line holds no number, so it is a header; it names "
                                           "no %1. Accepted%2: %3%4")
                                .arg(label,
                                     isChosen ? QLatin1String(" for --from ")
                                                    + QLatin1String(rowOf(frame).option)
                                              : QString(),
                                     acceptedWords(frame, height),
                                     isChosen ? otherFrames(headings) : QString())
                          : QStringLiteral("the header names the %1 twice: \"%2\" and \"%3\"")
                                .arg(label, fields.at(found.at(0)), fields.at(found.at(1)));
            return false;
        }
        order.components[static_cast<std::size_t>(i)] = found.first();
    }
    for (const QString &word : nameWords()) {
        if (order.name < 0)
            order.name = headings.indexOf(word);
    }
    return true;
}

} // namespace KelStd::cli
