#include <KelStd/positions/PositionReading.h>

#include <KelStd/positions/DecodedLine.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/OrderDoubts.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// "sep=;", with which spreadsheets are told the separator.
bool isSeparatorLine(std::string_view bytes)
{
    constexpr std::string_view word = "sep=";
    if (bytes.size() > 2 && bytes.front() == '"' && bytes.back() == '"')
        bytes = bytes.substr(1, bytes.size() - 2);
    return bytes.size() == word.size() + 1
           && qstrnicmp(bytes.data(), word.data(), static_cast<uint>(word.size())) == 0;
}

} // namespace

PositionParser::Reading::Reading(const InputForm &form, std::optional<ColumnChoice> choice)
    : m_form(form), m_components(form), m_choice(std::move(choice)), m_search(m_form, m_choice)
{}

PositionParser::Result PositionParser::Reading::bad(const QString &reason)
{
    m_reason = reason;
    return Result::BadLine;
}

PositionParser::Result PositionParser::Reading::badHeader(const LineMistake &mistake)
{
    m_reason = mistake.reason;
    m_reasonLine = mistake.line;
    return Result::BadHeader;
}

PositionParser::Result PositionParser::Reading::parseWithCare(std::string_view bytes,
                                                              qint64 lineNumber)
{
    m_lineNumber = lineNumber;
    m_reasonLine = lineNumber;
    m_reason.clear();
    m_isInWindows1252 = false;
    m_mark.reset();
    m_enclosedLine = 0;
    const bool isFirst = lineNumber == m_skippedLines + 1;
    if (lineNumber <= m_skippedLines)
        return Result::Nothing;
    if (bytes.size() > maxLineBytes) {
        m_lastText = lineNumber;
        const QString mistake =
            QStringLiteral("the line is longer than %1 bytes").arg(maxLineBytes);
        return m_order ? bad(mistake) : takeTooLongOpening(mistake);
    }
    if (lineNumber == 1 && bytes.substr(0, byteOrderMark.size()) == byteOrderMark)
        bytes.remove_prefix(byteOrderMark.size());
    if (!m_order && isUtf16(bytes, lineNumber == 1))
        return badHeader({lineNumber, QStringLiteral("the input is UTF-16 text; convert it to "
                                                     "UTF-8")});

    if (isFirst && isSeparatorLine(bytes))
        return takeSeparatorLine(bytes);

    TextLine line = textLineOf(bytes, shape());
    m_isInWindows1252 = !line.isUtf8 && !line.isRemark && line.flaw.isEmpty();
    if (line.isEmpty)
        return Result::Nothing;
    if (line.isRemark)
        return takeRemark(line);
    m_lastText = lineNumber;
    if (!line.flaw.isEmpty())
        return m_order ? takeDamagedLater(line) : takeDamagedOpening(line);
    QString doubt = line.other ? chooseSeparator(line) : QString();
    if (doubt.isEmpty() && line.text.contains(QLatin1Char('\n')))
        doubt = doubtOnBreaks(line);
    if (!doubt.isEmpty())
        return bad(doubt);
    return m_order ? takeLater(line) : takeOpening(line);
}

/// The separator is found in the lines themselves, so that this line need only not say another
/// one.
PositionParser::Result PositionParser::Reading::takeSeparatorLine(std::string_view bytes)
{
    constexpr std::string_view known = ",;\t";
    const std::size_t end = bytes.back() == '"' && bytes.front() == '"' ? 2 : 1;
    if (known.find(bytes[bytes.size() - end]) != std::string_view::npos)
        return Result::Nothing;
    return badHeader({m_lineNumber, QStringLiteral("fields are separated by commas, semicolons or "
                                                   "tabulators, not as this line says")});
}

/// A remark is passed over, unless it is a line of headings.
PositionParser::Result PositionParser::Reading::takeRemark(const TextLine &line)
{
    const HeadingsFound found = m_search.headingsIn(line.split, true);
    if (found.kind == HeadingsFound::Kind::Mistake)
        return badHeader({m_lineNumber, found.mistake});
    return m_order ? takeLaterRemark(line, found) : takeOpeningRemark(line, found);
}

bool PositionParser::Reading::finish()
{
    m_waitsForPosition = false;
    if (m_order)
        return true;
    const LineMistake mistake = m_search.otherLinesAtEnd(m_lastText);
    if (mistake.isThere()) {
        badHeader(mistake);
        return false;
    }
    if (const auto &headings = m_search.headings())
        decide(headings->order, headings->line, headings->bytes);
    return true;
}

void PositionParser::Reading::decide(const FieldOrder &order, qint64 line,
                                     const QByteArray &headerLine)
{
    m_order = order;
    m_orderLine = line;
    m_headerLine = headerLine;
    m_components.follow(order);
    m_carriedFields = order.carried;
    m_carriedHeadings = order.carriedHeadings;
}

void PositionParser::Reading::arrangeCarried(const QStringList &headings)
{
    QStringList own = m_carriedHeadings;
    QStringList wanted = headings;
    own.sort();
    wanted.sort();
    if (!m_order || own != wanted || wanted.removeDuplicates() > 0)
        return;
    std::vector<int> fields;
    std::vector<std::string_view> carried;
    for (const QString &heading : headings) {
        const auto at = static_cast<std::size_t>(m_carriedHeadings.indexOf(heading));
        fields.push_back(m_carriedFields[at]);
        if (at < m_carried.size())
            carried.push_back(m_carried[at]);
    }
    m_carriedFields = fields;
    m_carried = carried;
    m_carriedHeadings = headings;
}

namespace {

/// The same of a line that was split with care.
bool mayLackOneOf(const SplitLine &line, const FieldOrder &order)
{
    return line.separator == QLatin1Char(',')
           && mayLackOne(order, [&line](int field) { return line.fields.at(field).toStdString(); });
}

QString thousandsDoubt()
{
    return QStringLiteral("a comma may set thousands apart, and the last field is empty: the line "
                          "may lack one of its numbers");
}

} // namespace

PositionParser::Result PositionParser::Reading::readFields(const SplitLine &line,
                                                           const FieldOrder &order)
{
    const int count = static_cast<int>(line.fields.size());
    if (count == order.fields + 1 && endsEmpty(line)
        && mayEndEmpty(line.fields.first().toStdString(), order)) {
        SplitLine shorter = line;
        shorter.fields.removeLast();
        shorter.isQuoted.removeLast();
        return mayLackOneOf(shorter, order) ? bad(thousandsDoubt()) : readFields(shorter, order);
    }
    if (count != order.fields) {
        return bad(QStringLiteral("%1 found; line %2 has %3")
                       .arg(fieldCount(count))
                       .arg(m_orderLine)
                       .arg(order.fields)
                   + hintOnPieces(line));
    }

    if (order.endsEmpty && !endsEmpty(line)) {
        return bad(QStringLiteral("%1 stands where line %2 has an empty field")
                       .arg(quoted(line.fields.last()))
                       .arg(m_orderLine));
    }
    if (order.endsEmpty && mayLackOneOf(line, order))
        return bad(thousandsDoubt());

    Components components{};
    QString mistake = m_components.read(line, order, components);
    if (mistake.isEmpty() && m_order)
        mistake = doubtOnName(line, order);
    const std::optional<DecimalMark> mark = shownMark(line, order);
    if (mistake.isEmpty())
        mistake = doubtOnMark(line, order, mark);
    if (!mistake.isEmpty())
        return bad(mistake);
    keepTexts(line, order);
    m_mark = mark;
    m_isHeightTaken = order.hasHeight() && line.fields.at(order.components.back()).isEmpty();
    m_position = rowOf(m_form.frame).position(components[0], components[1], components[2]);
    return Result::Position;
}

/// Empty, or what the name of a line behind the order may be instead.
QString PositionParser::Reading::doubtOnName(const SplitLine &line, const FieldOrder &order) const
{
    if (!order.isPlain || order.name != 0 || line.isQuoted.at(0))
        return {};
    const QString &field = line.fields.at(0);
    const QString name =
        line.separator == QLatin1Char(',') ? field : withDecimalPoint(field, DecimalMark::Comma);
    if (mayBeDecimalNumber(name.toStdString()) && isOtherNumber(name))
        return nameDoubt(name, m_form);
    if (isAngle(columnOf(m_form.frame, 0)) && mayBeAngle(name))
        return nameDoubt(field, m_form);
    if (!order.hasHeight())
        return laterNameDoubt(line, order, m_form);
    return mayBePair(field.toStdString()) ? laterPairsDoubt(line, m_form) : QString();
}

/// Whether the name is a whole number and that of the line that decided the order is not: then
/// it may be the first number of a pair.
bool PositionParser::Reading::mayBePair(std::string_view name) const
{
    return m_isUnlikeWholeNumbers && isWhole(name);
}

/// The name and the carried fields of a line that was read with care.
void PositionParser::Reading::keepTexts(const SplitLine &line, const FieldOrder &order)
{
    m_texts.clear();
    for (const int field : {order.name, order.heightReference})
        m_texts.push_back(field >= 0 ? line.fields.at(field).toUtf8() : QByteArray());
    const std::vector<int> &carried = m_order ? m_carriedFields : order.carried;
    for (const int field : carried)
        m_texts.push_back(line.fields.at(field).toUtf8());
    const auto view = [this](std::size_t i) {
        return std::string_view(m_texts[i].constData(),
                                static_cast<std::size_t>(m_texts[i].size()));
    };
    m_name = view(0);
    m_heightReference = view(1);
    m_carried.clear();
    for (std::size_t i = 2; i < m_texts.size(); ++i)
        m_carried.push_back(view(i));
}

/// Whether a component of the line that was read in the short way has a decimal point.
bool PositionParser::Reading::hasPlainPoint() const
{
    const ComponentFields fields = m_order->componentFields();
    return std::any_of(fields.begin(), fields.end(), [this](int field) {
        return m_plain.field(field).find('.') != std::string_view::npos;
    });
}

/// Reads what nearly every line is; false, with nothing changed, for a line that needs more
/// care.
bool PositionParser::Reading::readPlain(std::string_view line, qint64 lineNumber)
{
    if (line.size() > maxLineBytes || !m_plain.read(line, *m_order))
        return false;
    Components components{};
    if (!m_components.readPlain(m_plain, *m_order, components))
        return false;
    m_name = m_order->name >= 0 ? m_plain.field(m_order->name) : std::string_view();
    // Of two pairs the second one begins in a whole number, too.
    if (m_order->isPlain
        && (mayBeDecimalNumber(m_name) || (m_order->name >= 0 && !isNoAngle(m_name))
            || (!m_order->hasHeight() && m_order->name >= 0 && mayBeginValue(m_name))
            || (mayBePair(m_name) && isWhole(m_plain.field(m_order->components[1])))))
        return false;
    if (m_emptyBehind >= 0 && !m_plain.field(m_emptyBehind).empty())
        return false;
    m_mark = m_listMark;
    if (m_listMark != DecimalMark::Point && hasPlainPoint()) {
        if (m_listMark)
            return false;
        m_mark = DecimalMark::Point;
    }
    for (const int field : m_order->units) {
        if (m_plain.field(field) != "m" || !m_components.isInMetres())
            return false;
    }
    m_heightReference = m_order->heightReference >= 0 ? m_plain.field(m_order->heightReference)
                                                      : std::string_view();
    m_carried.clear();
    for (const int field : m_carriedFields)
        m_carried.push_back(m_plain.field(field));
    m_isHeightTaken = false;
    m_position = rowOf(m_form.frame).position(components[0], components[1], components[2]);
    m_lineNumber = lineNumber;
    m_reasonLine = lineNumber;
    m_reason.clear();
    m_isInWindows1252 = false;
    m_enclosedLine = 0;
    return true;
}

} // namespace KelStd::positions
