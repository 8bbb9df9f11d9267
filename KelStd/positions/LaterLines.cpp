#include <KelStd/positions/DecodedLine.h>
#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/OtherHeadings.h>
#include <KelStd/positions/PositionReading.h>

/// The lines behind the one that decided the order: positions, and what may stand between them.
namespace KelStd::positions {

/// A line behind the order: a position, or else what may stand between positions.
PositionParser::Result PositionParser::Reading::takeLater(const TextLine &line)
{
    const Result result = readFields(line.split, *m_order);
    if (result == Result::Position && m_waitsForPosition)
        return takeFirstBelowHeadings(line.split);
    if (result == Result::Position) {
        const QString height =
            m_emptyBehind >= 0 ? heightBehind(line.split, *m_order, m_form) : QString();
        return height.isEmpty() ? result : badHeader({m_lineNumber, height});
    }
    const HeadingsFound found = m_search.headingsIn(line.split, false);
    if (found.kind != HeadingsFound::Kind::None)
        return takeLaterHeadings(found);
    if (const auto units = takeLaterUnits(line, QString()))
        return *units;
    const std::string_view headerLine(m_headerLine.constData(),
                                      static_cast<std::size_t>(m_headerLine.size()));
    if (mayBeOtherHeadings(line.split) && line.bytes != headerLine)
        return takeOtherHeadings();
    m_mayTakeUnits = false; // what was reported was read in the units before
    return result;
}

/// The first position below headings, which may show that they do not say all.
PositionParser::Result PositionParser::Reading::takeFirstBelowHeadings(const SplitLine &line)
{
    const QString height = heightBehind(line, *m_order, m_form);
    if (!height.isEmpty())
        return badHeader({m_lineNumber, height});
    watchBehind(line);
    keepMark();
    m_order->separator = line.separator;
    m_waitsForPosition = false;
    m_mayTakeUnits = false;
    return Result::Position;
}

/// What is empty behind the first position may be the height of a later one: columns of texts show
/// what they are, and every line has to be read alike, on whatever thread.
void PositionParser::Reading::watchBehind(const SplitLine &line)
{
    const int field = fieldOfHeightBehind(*m_order, m_form);
    const bool isEmpty = field >= 0 && line.fields.value(field).isEmpty();
    m_emptyBehind = isEmpty ? field : FieldOrder::noField;
}

PositionParser::Result PositionParser::Reading::takeLaterRemark(const TextLine &line,
                                                                const HeadingsFound &found)
{
    if (found.kind != HeadingsFound::Kind::None)
        return takeLaterHeadings(found);
    if (const auto units = takeLaterUnits(line, line.text))
        return *units;
    if (m_search.contradictsAsHeadings(line.text, line.split, *m_order)) {
        return badHeader(
            {m_lineNumber,
             QStringLiteral("these headings do not give the order of line %1").arg(m_orderLine)});
    }
    if (isRemarkOfOtherOrder(line.text, line.split))
        return takeOtherHeadings();
    return line.flaw.isEmpty() ? Result::Nothing : bad(line.flaw);
}

/// A line that is no text, or has broken quotation marks.
PositionParser::Result PositionParser::Reading::takeDamagedLater(const TextLine &line)
{
    const HeadingsFound found = m_search.headingsIn(line.split, false);
    if (found.kind == HeadingsFound::Kind::None) {
        if (!line.isSplit)
            return bad(line.flaw);
        if (const auto units = takeLaterUnits(line, QString()))
            return *units;
        return mayBeOtherHeadings(line.split) ? takeOtherHeadings() : bad(line.flaw);
    }
    // Columns that are carried through keep their headings, which are damaged.
    if (line.isSplit && found.kind == HeadingsFound::Kind::Order && found.order.carried.empty())
        return takeLaterHeadings(found);
    return badHeader(
        {m_lineNumber, QStringLiteral("the header cannot be read: %1").arg(line.flaw)});
}

/// A line of units is passed over when positions are read in these units. No result for another
/// line, unless its remark `text` names units that contradict.
std::optional<PositionParser::Result> PositionParser::Reading::takeLaterUnits(const TextLine &line,
                                                                              const QString &text)
{
    bool isUnits = false;
    const QString mistake = m_mayTakeUnits
                                ? m_search.takeUnits(text, line.split, *m_order, isUnits)
                                : m_search.unitsAgainst(text, line.split, *m_order, isUnits);
    if (mistake.isEmpty() && !isUnits)
        return std::nullopt;
    if (!mistake.isEmpty())
        return badHeader({m_lineNumber, mistake});
    if (m_mayTakeUnits) {
        m_components.follow(*m_order);
        m_unitLines.append(line.bytes.data(), static_cast<int>(line.bytes.size()));
        m_unitLines += '\n';
    }
    m_reason.clear();
    return Result::Nothing;
}

/// Headings behind the order are passed over when they agree with it.
PositionParser::Result PositionParser::Reading::takeLaterHeadings(const HeadingsFound &found)
{
    if (found.kind == HeadingsFound::Kind::Mistake)
        return badHeader({m_lineNumber, found.mistake});
    if (agree(*m_order, found.order)) {
        m_reason.clear();
        return Result::Nothing;
    }
    return badHeader(
        {m_lineNumber, QStringLiteral("these headings give another order than line %1: %2 stand "
                                      "elsewhere, or other columns beside them")
                           .arg(m_orderLine)
                           .arg(labelsOf(m_form.frame))});
}

/// Whether a later line may be headings in words that are not known.
bool PositionParser::Reading::mayBeOtherHeadings(const SplitLine &line) const
{
    return standInPlaceOfComponents(line, *m_order)
           || (line.fields.size() != m_order->fields && areHeadingsOfAnyLanguage(line));
}

/// The same of a remark, which may say again what stood in front of the positions.
bool PositionParser::Reading::isRemarkOfOtherOrder(const QString &remark,
                                                   const SplitLine &line) const
{
    if (!isRemarkOfOtherHeadings(remark, line, *m_order) || m_search.hasWords(line.fields)
        || lookLikeHeadings(headingFields(line), m_form))
        return false;
    const DecodedLine headings = decoded(m_headerLine);
    return splitLine(remarkOf(headings.text.trimmed())).fields != line.fields;
}

PositionParser::Result PositionParser::Reading::takeOtherHeadings()
{
    return badHeader(
        {m_lineNumber,
         QStringLiteral("words stand in place of %1: these may be headings that give "
                        "another order than line %2; put the files through one by one, "
                        "or take out a line that is none")
             .arg(labelsOf(m_form.frame))
             .arg(m_orderLine)});
}

} // namespace KelStd::positions
