#include <KelStd/positions/HeadedList.h>

#include <KelStd/positions/DecodedLine.h>
#include <KelStd/positions/EnclosedPositions.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/OtherColumns.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/positions/ReadUnits.h>
#include <KelStd/positions/UnitDoubts.h>
#include <KelStd/text/TypedNumber.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr QChar comma = QLatin1Char(',');

QString unreadUnit(const Heading &heading, const QString &label)
{
    return QStringLiteral("%1 is in %2, in which the %3 is not read")
        .arg(quoted(heading.text), QLatin1String(heading.unit->symbol), label);
}

} // namespace

HeadedList::Result HeadedList::take(std::string_view bytes, QString &mistake)
{
    if (isUtf16(bytes, m_isFirst)) {
        mistake = QStringLiteral("the list is in UTF-16; save it as UTF-8");
        return Result::Mistake;
    }
    if (m_isFirst && bytes.substr(0, byteOrderMark.size()) == byteOrderMark)
        bytes.remove_prefix(byteOrderMark.size());
    m_isFirst = false;
    m_line = textLineOf(bytes, m_shape);
    if (!m_line.flaw.isEmpty()) {
        mistake = m_line.flaw;
        return Result::Mistake;
    }
    if (m_line.isEmpty)
        return Result::Nothing;
    if (m_line.isRemark) {
        // Of a list in another unit a number would move a point without a word.
        if (saysUnits(m_line.text))
            m_remarks += m_line.text;
        if (!m_hasHeadings && countKnown(m_line.split.fields) > 2)
            takeHeadings(headingFields(m_line.split));
        return Result::Nothing;
    }
    if (!m_hasHeadings) {
        mistake = takeHeadings(joinUnits(m_line.split.fields));
        return m_hasHeadings ? Result::Nothing : Result::Mistake;
    }
    if (!unitsOfLine(m_line.split).isEmpty()) {
        mistake = QStringLiteral("units in a line of their own are not read; write them into the "
                                 "headings");
        return Result::Mistake;
    }
    const auto fields = m_line.split.fields.size() - (endsEmpty(m_line.split) ? 1 : 0);
    if (fields != m_count && m_line.split.fields.size() != m_count) {
        mistake = QStringLiteral("the line has %1, and there are %2 headings%3")
                      .arg(fieldCount(static_cast<int>(m_line.split.fields.size())))
                      .arg(m_count)
                      .arg(hintOnPieces(m_line.split));
        return Result::Mistake;
    }
    mistake = chooseSeparator();
    if (mistake.isEmpty() && m_line.text.contains(QLatin1Char('\n')))
        mistake = doubtOnBreaks();
    if (mistake.isEmpty())
        mistake = settleDecimalMark();
    if (mistake.isEmpty())
        m_shape.separator = m_line.split.separator;
    return mistake.isEmpty() ? Result::Row : Result::Mistake;
}

/// Takes the line for that of the headings. Empty, or why it is none.
QString HeadedList::takeHeadings(const QStringList &headings)
{
    QString mistake = readHeadings(headings);
    m_hasHeadings = mistake.isEmpty();
    if (m_hasHeadings)
        m_shape = {m_line.split.separator, m_count};
    return mistake;
}

/// Whether the line has values where numbers are to stand, as far as it has anything there.
bool HeadedList::hasValues(const SplitLine &line) const
{
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const QString field = m_fields[i] < 0 ? QString() : line.fields.value(m_fields[i]);
        if (!m_columns[i].isText && !field.isEmpty() && !isValue(field))
            return false;
    }
    return true;
}

/// Empty, or why lines that belong together by their quotation marks may be several rows: every
/// column that is needed has a value in one of them.
QString HeadedList::doubtOnBreaks() const
{
    const auto isRow = [this](const SplitLine &alone) {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (m_columns[i].isNeeded && !m_columns[i].isText
                && (m_fields[i] >= alone.fields.size() || alone.fields.at(m_fields[i]).isEmpty()))
                return false;
        }
        return hasValues(alone);
    };
    const EnclosedPosition found =
        enclosedPosition(m_line.text, {m_line.split.separator, m_count}, isRow);
    return found.mayStandAlone ? enclosedDoubt(found.line) : QString();
}

/// Of a line that has as many fields by the list's separator as by another one. The first row may
/// be separated otherwise than the headings. Empty, or why neither is taken.
QString HeadedList::chooseSeparator()
{
    if (!m_line.other || !hasValues(*m_line.other))
        return {};
    if (hasValues(m_line.split))
        return separatorDoubt(m_line.split, *m_line.other);
    if (!m_hasRow)
        m_line.split = *m_line.other;
    return {};
}

/// An angle with a comma says that the commas of all numbers of its line stand before decimals:
/// there are no thousands of degrees. They become points. Empty, or why the line is refused.
QString HeadedList::settleDecimalMark()
{
    SplitLine &line = m_line.split;
    m_hasRow = true;
    if (line.separator != QLatin1Char(';') && line.separator != QLatin1Char('\t'))
        return {};
    QString withComma;
    QString withPoint;
    bool isSure = false;
    std::vector<int> numbers;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (m_fields[i] < 0 || m_columns[i].isText)
            continue;
        const QString &field = line.fields.at(m_fields[i]);
        numbers.push_back(m_fields[i]);
        if (field.contains(QLatin1Char('.')))
            withPoint = field;
        if (!field.contains(comma))
            continue;
        withComma = field;
        isSure = isSure || m_columns[i].isAngle;
    }
    if (!withComma.isEmpty() && !withPoint.isEmpty()) {
        return QStringLiteral("%1 has a comma and %2 a point; write every number with a decimal "
                              "point, or every one with a decimal comma")
            .arg(quoted(withComma), quoted(withPoint));
    }
    const QString &marked = withComma.isEmpty() ? withPoint : withComma;
    if (!marked.isEmpty() && !m_marked.isEmpty()
        && marked.contains(comma) != m_marked.contains(comma)) {
        return QStringLiteral("%1 and %2 of a line before have different decimal marks; a comma or "
                              "a point may set thousands apart")
            .arg(quoted(marked), quoted(m_marked));
    }
    if (m_marked.isEmpty())
        m_marked = marked;
    for (const int field : numbers) {
        if (isSure)
            line.fields[field] = withDecimalPoint(line.fields.at(field), DecimalMark::Comma);
    }
    return {};
}

QString HeadedList::lacking(const QStringList &missing) const
{
    QStringList all;
    for (const ListColumn &column : m_columns)
        all += column.isNeeded ? column.label : QStringLiteral("%1 (not needed)").arg(column.label);
    return QStringLiteral("the first line has to be headings; they name no %1. Columns: %2")
        .arg(missing.join(QLatin1String(", no ")), all.join(QLatin1String(", ")));
}

QString HeadedList::readHeadings(const QStringList &headings)
{
    m_count = static_cast<int>(headings.size());
    m_fields.assign(m_columns.size(), -1);
    m_measures.assign(m_columns.size(), 0.0);
    m_headings = headings;
    m_notRead.clear();
    m_units = fieldsOfUnits(headings);
    for (int i = 0; i < headings.size(); ++i) {
        if (i == headings.size() - 1 && headings.at(i).isEmpty()) { // a separator ends each line
            --m_count;
            break;
        }
        const Heading heading = headingOf(headings.at(i));
        const auto column =
            std::find_if(m_columns.begin(), m_columns.end(),
                         [&heading](const ListColumn &row) { return row.isHeadedBy(heading); });
        if (column == m_columns.end()) {
            if (std::find(m_units.begin(), m_units.end(), i) == m_units.end())
                m_notRead += headings.at(i);
            continue;
        }
        const auto index = static_cast<std::size_t>(column - m_columns.begin());
        if (m_fields[index] >= 0) {
            return QStringLiteral("the headings name the %1 twice: %2 and %3")
                .arg(column->label, quoted(headings.at(m_fields[index])), quoted(headings.at(i)));
        }
        m_fields[index] = i;
        if (column->isAngle && i + 1 < headings.size()
            && isPartOfAngleBefore(headingOf(headings.at(i + 1))))
            return partOfAngleMistake(headingOf(headings.at(i + 1)));
        if (heading.unit == nullptr || column->isText)
            continue;
        const auto measure = measureOf(*heading.unit);
        if (!measure || column->isAngle == (heading.unit->kind == UnitKind::Length))
            return unreadUnit(heading, column->label);
        m_measures[index] = *measure;
    }
    QStringList missing;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i].isNeeded && m_fields[i] < 0)
            missing += m_columns[i].label;
    }
    return missing.isEmpty() ? QString() : lacking(missing);
}

QString HeadedList::textOf(int column) const
{
    const int field = fieldOf(column);
    return field >= 0 ? m_line.split.fields.value(field) : QString();
}

std::optional<double> HeadedList::measureOfHeading(int column) const
{
    const double measure = m_measures[static_cast<std::size_t>(column)];
    return measure > 0.0 ? std::optional(measure) : std::nullopt;
}

QString HeadedList::readPosition(const InputForm &given,
                                 const std::array<int, componentsPerFrame> &columns,
                                 Components &components) const
{
    InputForm form = given;
    form.missingHeight = MissingHeight();
    form.words.height.clear();
    SplitLine line = m_line.split;
    FieldOrder order;
    order.hasHeadings = true;
    order.units = m_units;
    order.name = fieldOf(nameColumn); // a point may be called N or E
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int field = fieldOf(columns[i]);
        const bool isAbsent = field < 0 || line.fields.at(field).isEmpty();
        order.components[i] = field;
        if (field >= 0) {
            const Heading heading = headingOf(m_headings.at(field));
            const int component = static_cast<int>(i);
            if (!canBeRead(form, component, heading))
                return unitMistake(form, component, heading, form.unitText(component));
            order.hasUnit[i] = heading.unit != nullptr;
            order.otherUnits[i] = otherUnitOf(form, component, heading);
        }
        if (isAbsent && !m_columns[static_cast<std::size_t>(columns[i])].isNeeded) {
            if (i + 1 == columns.size() && form.mayLackHeight()) {
                order.components[i] = FieldOrder::noField;
            } else {
                line.fields += QStringLiteral("0");
                line.isQuoted += false;
                order.components[i] = static_cast<int>(line.fields.size()) - 1;
            }
        }
    }
    const QString doubt = unitsInDoubt(form, order, m_headings);
    if (!doubt.isEmpty())
        return doubt;
    order.fields = static_cast<int>(line.fields.size());
    for (const QString &remark : m_remarks) {
        const QString mistake = saidUnitMistake(remark, order, form);
        if (!mistake.isEmpty())
            return mistake;
    }
    ComponentReader reader(form);
    reader.follow(order);
    return reader.read(line, order, components);
}

QString HeadedList::readNumberOf(int column, std::optional<double> &value) const
{
    const QString text = textOf(column);
    value.reset();
    if (text.isEmpty())
        return {};
    const bool mayHaveComma =
        m_line.split.separator == QLatin1Char(';') || m_line.split.separator == QLatin1Char('\t');
    TypedValueFailure failure;
    value = readNumber(text, mayHaveComma ? DecimalMark::Comma : DecimalMark::Point, failure);
    if (value)
        return {};
    return QStringLiteral("%1 %2").arg(m_columns[static_cast<std::size_t>(column)].label,
                                       failure.text);
}

} // namespace KelStd::positions
