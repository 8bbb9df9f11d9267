#include <KelStd/positions/EnclosedPositions.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/PositionReading.h>

#include <algorithm>

/// What the first lines show of all others: what separates their fields and their decimals.
namespace KelStd::positions {

/// The order as far as headings or a position have shown it; null where none have.
const FieldOrder *PositionParser::Reading::knownOrder() const
{
    if (m_order)
        return &*m_order;
    const auto &headings = m_search.headings();
    return headings ? &headings->order : nullptr;
}

ListShape PositionParser::Reading::shape() const
{
    const FieldOrder *const order = knownOrder();
    return order != nullptr ? order->shape() : ListShape();
}

/// Empty, or why lines that belong together by their quotation marks may be several positions.
QString PositionParser::Reading::doubtOnBreaks(const TextLine &line)
{
    const FieldOrder *const order = knownOrder();
    if (order == nullptr)
        return {};
    const ComponentFields fields = order->componentFields();
    const int last = *std::max_element(fields.begin(), fields.end());
    const EnclosedPosition found = enclosedPosition(
        line.text, {line.split.separator, order->fields}, [&](const SplitLine &alone) {
            return alone.fields.size() > last && isAttempt(alone, *order);
        });
    if (found.line == 0)
        return {};
    m_enclosedLine = m_lineNumber + found.line;
    return found.mayStandAlone ? enclosedDoubt(found.line) : QString();
}

/// Takes the fields of a line that has as many by the list's separator as by another one: those
/// of the list, but for a first position, which may be separated otherwise than its headings.
/// Empty, or why neither is taken.
QString PositionParser::Reading::chooseSeparator(TextLine &line) const
{
    const FieldOrder &order = *knownOrder();
    const auto isRead = [&](const SplitLine &split) {
        Components components{};
        return m_components.read(split, order, components).isEmpty();
    };
    if (!isRead(*line.other))
        return {};
    if (isRead(line.split))
        return separatorDoubt(line.split, *line.other);
    if (!isSettled())
        line.split = *line.other;
    return {};
}

/// Keeps the decimal mark of the first position.
void PositionParser::Reading::keepMark()
{
    m_listMark = m_mark;
    m_markLine = m_lineNumber;
}

/// Empty, or why a point may not stand before decimals: the list has decimal commas.
QString PositionParser::Reading::doubtOnMark(const SplitLine &line, const FieldOrder &order,
                                             std::optional<DecimalMark> mark) const
{
    if (m_listMark != DecimalMark::Comma || mark != DecimalMark::Point)
        return {};
    const ComponentFields fields = order.componentFields();
    const int *const field = std::find_if(fields.begin(), fields.end(), [&line](int i) {
        return line.fields.at(i).contains(QLatin1Char('.'));
    });
    return QStringLiteral("%1 has a point, and line %2 has decimal commas: the point may stand "
                          "before decimals or thousands; write a decimal comma")
        .arg(quoted(line.fields.at(*field)))
        .arg(m_markLine);
}

} // namespace KelStd::positions
