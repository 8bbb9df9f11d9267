#include <KelStd/positions/OrderSearch.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/OtherHeadings.h>
#include <KelStd/positions/PickedColumns.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/positions/ReadUnits.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// Lines of a title and other lines in front of headings.
constexpr int maxOtherLines = 20;

/// Remarks in words of another language that are kept, to be known again further down; one more
/// ends the run there.
constexpr int maxKeptWords = 100;

bool isNumber(const QString &field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok;
}

} // namespace

HeadingsFound OrderSearch::headingsIn(const SplitLine &line, bool isRemark) const
{
    using Kind = HeadingsFound::Kind;
    HeadingsFound found;
    const QStringList fields = headingFields(line);
    FieldOrder usual;
    const bool isText = isRemark ? isSentenceOfRemark(line) : isSentence(line);
    const bool isRead = readHeader(fields, m_form, usual, found.mistake) && !isText;
    usual.separator = line.separator;
    // A remark counts only when it names all the components.
    const bool isComplete = isRead && (!isRemark || usual.hasHeight() || m_choice);
    const bool isIncomplete = !isRemark && !isComplete && !isText
                              && std::none_of(fields.cbegin(), fields.cend(), isValue)
                              && lookLikeHeadings(fields, m_form);
    if (!m_choice) {
        found.order = usual;
        const ComponentFields components = usual.componentFields();
        if (isComplete && isRemark && line.byBlanks && usual.name != 0
            && std::find(components.begin(), components.end(), 0) == components.end())
            found.order.doubtfulFirst = fields.first();
        found.kind = isComplete ? Kind::Order : isIncomplete ? Kind::Mistake : Kind::None;
        found.isRemarkWithoutHeight = isRead && !isComplete;
        return found;
    }
    // One picked heading may be a word of a title, and two known ones may stand in a remark.
    const int picked = countPicked(*m_choice, fields);
    const bool isRemarkOfHeadings = isRemark && !isText && countKnown(fields) >= componentsPerFrame
                                    && lookLikeHeadings(fields, m_form);
    const bool isMeant = isComplete || isIncomplete || isRemarkOfHeadings || picked > 1;
    if (!m_choice->hasHeadings() && !isMeant)
        return found;
    const bool isApplied = orderPicked(*m_choice, fields, static_cast<int>(fields.size()), m_form,
                                       found.order, found.mistake);
    found.order.separator = line.separator;
    if (isApplied && (isMeant || picked > 0))
        found.kind = Kind::Order;
    else if (isMeant && (!isRemark || !m_choice->hasHeadings() || picked > 1))
        found.kind = Kind::Mistake;
    return found;
}

bool OrderSearch::contradicts(const QString &remark, const SplitLine &line,
                              const FieldOrder &order) const
{
    const QStringList fields = headingFields(line);
    const bool areHeadings = !isSentenceOfRemark(line) && lookLikeHeadings(fields, m_form);
    const QVector<int> mentioned = componentsMentioned(
        areHeadings ? fields : normalisedHeading(remark).split(QLatin1Char('_')), areHeadings,
        m_form);
    const auto fieldOf = [&order](int component) {
        return order.components[static_cast<std::size_t>(component)];
    };
    const bool isInOrder =
        std::is_sorted(mentioned.cbegin(), mentioned.cend(),
                       [&](int one, int other) { return fieldOf(one) < fieldOf(other); });
    if (!isInOrder || !areHeadings)
        return !isInOrder;
    if (mentioned.size() < 2)
        return true; // headings of another frame
    for (int i = 0; i < fields.size(); ++i) {
        const Heading heading = headingOf(fields.at(i));
        const int component = componentHeaded(m_form, heading);
        if (component < 0)
            continue;
        const bool isElsewhere = fields.size() == order.fields && fieldOf(component) != i;
        const bool isInUnit =
            heading.unit == nullptr || isReadIn(m_form, order, component, *heading.unit);
        if (isElsewhere || !isInUnit)
            return true;
    }
    return false;
}

bool OrderSearch::contradictsAsHeadings(const QString &remark, const SplitLine &line,
                                        const FieldOrder &order) const
{
    return !m_choice && !isSentenceOfRemark(line) && lookLikeHeadings(headingFields(line), m_form)
           && contradicts(remark, line, order);
}

void OrderSearch::keepRemark(const QString &remark, const SplitLine &line, qint64 lineNumber)
{
    const auto fields = headingFields(line).size();
    const bool hasName = fields > componentsPerFrame;
    const FieldOrder usual = plainOrder(componentsPerFrame + (hasName ? 1 : 0));
    const bool isForeign = areHeadingsOfAnyLanguage(line) && !isSentence(line)
                           && !lookLikeHeadings(headingFields(line), m_form);
    if (isForeign && m_words.size() < maxKeptWords)
        m_words += line.fields;
    const bool hasMoreColumns = fields > usual.fields && !isSentenceOfRemark(line)
                                && lookLikeHeadings(headingFields(line), m_form);
    if (m_choice || m_remark.isThere()
        || !(isForeign || hasMoreColumns || contradicts(remark, line, usual)))
        return;
    m_remark = {lineNumber,
                QStringLiteral("this remark names other columns or units than %1, or in another "
                               "order, and no headings follow; say the order with %2")
                    .arg(labelsOf(m_form.frame), waysToSayOrder(m_form))};
}

const HeadingsLine *OrderSearch::headingsOf(const FieldOrder &order) const
{
    if (m_headings)
        return &*m_headings;
    return m_withoutHeight && order.hasHeadings ? &*m_withoutHeight : nullptr;
}

bool OrderSearch::keepHeadings(const HeadingsLine &headings, LineMistake &mistake)
{
    if (m_headings && m_headings->isSure) {
        if (!headings.isSure || agree(m_headings->order, headings.order))
            return true;
        mistake = {headings.line,
                   QStringLiteral("these headings give another order than those of line %1")
                       .arg(m_headings->line)};
        return false;
    }
    m_headings = headings;
    m_other = {};
    m_others = 0;
    m_holdsData = false;
    return true;
}

bool OrderSearch::keepOther(const LineMistake &line, bool holdsData)
{
    m_holdsData = m_holdsData || holdsData;
    if (!m_other.isThere())
        m_other = line;
    m_lastOther = line.line;
    return ++m_others <= maxOtherLines;
}

void OrderSearch::keepFailed(const SplitLine &line, qint64 lineNumber)
{
    if (line.fields.size() > m_failedFields) {
        m_failedFields = static_cast<int>(line.fields.size());
        m_failure = lineNumber;
    }
    if (line.fields.size() > componentsPerFrame && isNumber(line.fields.first())
        && m_numberedFailure == 0)
        m_numberedFailure = lineNumber;
}

qint64 OrderSearch::failureOfMore(const FieldOrder &order, int &fields) const
{
    fields = m_failedFields;
    return m_failedFields > order.fields ? m_failure : 0;
}

namespace {

/// Whether the first field is a text before two numbers, by its marks: "101",5.25,52.5. Marks that
/// all fields have, or that a comma needs, say nothing.
bool isQuotedName(const SplitLine &line)
{
    const QString &first = line.fields.at(0);
    return line.isQuoted.at(0) && !line.isQuoted.at(1) && !line.isQuoted.at(2)
           && !first.contains(QLatin1Char(',')) && !first.contains(QLatin1Char(';'))
           && isValue(line.fields.at(1)) && isValue(line.fields.at(2));
}

/// The order of a line without headings that has no height; nothing for another line.
std::optional<FieldOrder> orderWithoutHeight(const SplitLine &line, const InputForm &form)
{
    constexpr int components = componentsPerFrame - 1;
    const int count = static_cast<int>(line.fields.size());
    if (!form.mayLackHeight() || endsEmpty(line) || count < components || count > components + 1)
        return std::nullopt;
    // Where a height may follow, a name is what can be no component.
    const bool isNamed = count > components
                         && (form.lacksHeight() || isQuotedName(line)
                             || (!isValue(line.fields.at(0)) && isValue(line.fields.at(1))
                                 && isValue(line.fields.at(2))));
    return count == components || isNamed ? std::optional(plainOrder(count, components))
                                          : std::nullopt;
}

} // namespace

std::optional<FieldOrder> OrderSearch::orderFor(const SplitLine &line, QString &reason) const
{
    const int count = static_cast<int>(line.fields.size());
    if (m_headings) {
        if (count == m_headings->order.fields
            || (count == m_headings->order.fields + 1 && endsEmpty(line)
                && mayEndEmpty(line.fields.first().toStdString(), m_headings->order)))
            return m_headings->order;
        reason = QStringLiteral("%1 found; line %2 has %3 headings")
                     .arg(fieldCount(count))
                     .arg(m_headings->line)
                     .arg(m_headings->order.fields)
                 + hintOnPieces(line);
        return std::nullopt;
    }
    FieldOrder order;
    if (m_choice) {
        const QStringList headings = m_choice->hasHeadings() ? headingFields(line) : QStringList();
        if (m_choice->hasHeadings()) {
            orderPicked(*m_choice, headings, count, m_form, order, reason);
            return std::nullopt; // a position is no line of headings
        }
        return orderPicked(*m_choice, {}, count, m_form, order, reason) ? std::optional(order)
                                                                        : std::nullopt;
    }
    if (m_withoutHeight && count == m_withoutHeight->order.fields)
        return m_withoutHeight->order;
    if (const auto withoutHeight = orderWithoutHeight(line, m_form))
        return withoutHeight;
    if (m_form.lacksHeight()) {
        reason = QStringLiteral("%1 found; with %2 expected are %3 and %4, after a point name if "
                                "there is one")
                     .arg(fieldCount(count), m_form.words.height,
                          QLatin1String(columnOf(m_form.frame, 0).label),
                          QLatin1String(columnOf(m_form.frame, 1).label));
        return std::nullopt;
    }
    const int filled = endsEmpty(line) ? count - 1 : count;
    const bool isNamed = filled == componentsPerFrame + 1;
    // "5;52;40;" may be the point 5 without its height.
    if (filled < count && (isNamed || (filled == componentsPerFrame && beginsAsPosition(line)))) {
        order = plainOrder(filled);
        order.fields = count;
        order.endsEmpty = true;
        return order;
    }
    if (count != componentsPerFrame && count != componentsPerFrame + 1) {
        reason = QStringLiteral("%1 found; expected are %2, after a point name if there is one")
                     .arg(fieldCount(count), labelsOf(m_form.frame))
                 + hintOnPieces(line) + hintOnColumns(line, m_form);
        return std::nullopt;
    }
    return plainOrder(count);
}

LineMistake OrderSearch::settle(FieldOrder &order) const
{
    if (m_other.isThere())
        return otherLines();
    const LineMistake units = settleUnits(order);
    return units.isThere() ? units : order.isPlain ? m_remark : LineMistake();
}

LineMistake OrderSearch::otherLines() const
{
    if (!m_other.isThere() || m_holdsData)
        return m_other;
    return {m_other.line, withSkipHint(m_other.reason, m_lastOther)};
}

LineMistake OrderSearch::otherLinesAtEnd(qint64 lastLine) const
{
    // Nothing would be left of the input.
    return m_lastOther == lastLine ? m_other : otherLines();
}

QString OrderSearch::withSkipHint(const QString &reason, qint64 lines) const
{
    return reason
           + (lines == 1 ? QStringLiteral("; %1 1 passes over the line").arg(m_form.words.skip)
                         : QStringLiteral("; %1 %2 passes over the first %2 lines")
                               .arg(m_form.words.skip)
                               .arg(lines));
}

} // namespace KelStd::positions
