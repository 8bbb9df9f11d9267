#include <cli/run/LineGroups.h>

#include <KelStd/positions/PositionParser.h>

#include <cstring>
#include <string_view>

namespace KelStd::cli {

namespace {

constexpr char lineEnd = '\n';
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Where the line at `begin` ends, without its line feed; nothing when that was not yet read.
std::optional<int> feedBehind(const QByteArray &bytes, int begin, bool isAtEnd)
{
    const auto end = static_cast<int>(bytes.indexOf(lineEnd, begin));
    if (end >= 0)
        return end;
    return isAtEnd ? std::optional(static_cast<int>(bytes.size())) : std::nullopt;
}

/// The line's bytes from `begin` to `end`, without a carriage return there.
std::string_view viewOf(const QByteArray &bytes, int begin, int end)
{
    if (end > begin && bytes.at(end - 1) == '\r')
        --end;
    return {bytes.constData() + begin, static_cast<std::size_t>(end - begin)};
}

/// Longer than what a cell of a spreadsheet holds, 32,767 characters.
constexpr int maxFieldBytes = 1 << 17;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

/// Where the line ends in which a field is closed that was open at `begin`, without its line feed,
/// whatever its length, or breaks off; `begin` where it is not closed, or text follows the
/// mark. Nothing when more bytes have to be read.
std::optional<int> endOfLongField(const QByteArray &bytes, int begin, bool isAtEnd)
{
    constexpr std::string_view separators = ",;\t";
    const auto size = static_cast<int>(bytes.size());
    auto mark = static_cast<int>(bytes.indexOf('"', begin));
    while (mark >= 0 && mark + 1 < size && bytes.at(mark + 1) == '"')
        mark = static_cast<int>(bytes.indexOf('"', mark + 2));
    const bool isKnown = mark >= 0 && bytes.indexOf(lineEnd, mark) >= 0;
    if (!isKnown && !isAtEnd && size - begin <= maxFieldBytes)
        return std::nullopt;
    if (mark < 0 && size - begin <= maxFieldBytes && bytes.at(size - 1) != lineEnd)
        return size; // it breaks off
    if (mark < 0 || mark - begin > maxFieldBytes)
        return begin;
    int behind = mark + 1;
    while (behind < size && isBlank(bytes.at(behind)))
        ++behind;
    const bool closes = behind == size || bytes.at(behind) == lineEnd
                        || separators.find(bytes.at(behind)) != std::string_view::npos;
    if (!closes)
        return begin;
    const auto end = static_cast<int>(bytes.indexOf(lineEnd, mark));
    return end < 0 ? size : end;
}

} // namespace

QString pieceMistake(qint64 opener)
{
    return QStringLiteral(
               "the line may be a piece of the field that line %1 opens, whose quotation "
               "mark is not closed, or too far behind")
        .arg(opener);
}

positions::QuotationMarks LineGroups::marksOf(const QByteArray &bytes, int begin, int end,
                                              bool isFirst) const
{
    std::string_view line = viewOf(bytes, begin, end);
    if (isFirst && line.substr(0, byteOrderMark.size()) == byteOrderMark)
        line.remove_prefix(byteOrderMark.size());
    return positions::quotationMarksOf(line, m_shape);
}

std::optional<int> LineGroups::endOf(const QByteArray &bytes, int begin, qint64 line, bool isAtEnd,
                                     std::vector<LineGroup> &groups) const
{
    const auto size = static_cast<int>(bytes.size());
    const auto behind = [size](int end) { return end < size ? end + 1 : size; };
    const auto end = feedBehind(bytes, begin, isAtEnd);
    if (!end)
        return std::nullopt;
    const int length = *end - begin;
    const bool mayBeOpen =
        line > m_skipped && length <= positions::maxLineBytes
        && std::memchr(bytes.constData() + begin, '"', static_cast<std::size_t>(length)) != nullptr;
    if (!mayBeOpen || !marksOf(bytes, begin, *end, line == 1).areOpen)
        return behind(*end);
    for (int next = behind(*end); next < size || !isAtEnd;) {
        const auto nextEnd = feedBehind(bytes, next, isAtEnd);
        if ((nextEnd ? *nextEnd : size) - begin > positions::maxLineBytes) {
            const auto fieldEnd = endOfLongField(bytes, *end, isAtEnd);
            if (fieldEnd && *fieldEnd > *end)
                groups.push_back({behind(*end), *fieldEnd, line});
            return fieldEnd ? std::optional(behind(*fieldEnd)) : std::nullopt;
        }
        if (!nextEnd)
            return std::nullopt;
        const positions::QuotationMarks marks = marksOf(bytes, begin, *nextEnd, line == 1);
        const bool isLast = behind(*nextEnd) == size && isAtEnd;
        if (!marks.areOpen && !marks.areBroken) {
            groups.push_back({begin, *nextEnd});
            return behind(*nextEnd);
        }
        int pieces = 0; // where what may be a piece ends
        if (marks.areBroken) {
            const positions::QuotationMarks own = marksOf(bytes, next, *nextEnd, false);
            const bool isOwn = own.areOpen || own.areBroken || own.holdFields;
            pieces = isOwn ? next - 1 : *nextEnd;
        } else if (isLast) {
            const bool breaksOff = *nextEnd == size && size > next;
            pieces = breaksOff ? size : *end;
        } else {
            next = behind(*nextEnd);
            continue;
        }
        if (pieces <= *end)
            return behind(*end);
        groups.push_back({behind(*end), pieces, line});
        return behind(pieces);
    }
    return behind(*end);
}

} // namespace KelStd::cli
