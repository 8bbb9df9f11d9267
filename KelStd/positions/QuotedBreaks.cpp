#include <KelStd/positions/QuotedBreaks.h>

#include <KelStd/positions/DecodedLine.h>
#include <KelStd/positions/TextLine.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// Whether there are characters that become blanks or are left out when the line is decoded.
bool holdsControls(std::string_view line)
{
    constexpr unsigned char firstPlain = 0x20;
    return std::any_of(line.begin(), line.end(), [](char c) {
        return static_cast<unsigned char>(c) < firstPlain && c != '\t';
    });
}

/// Whether the line has the fields of its list and no open quotation mark, found without decoding
/// it; false for a line that needs more care. `holdsQuoted`: whether a field has such marks.
bool isPlainlyWhole(std::string_view line, const ListShape &shape, bool &holdsQuoted)
{
    constexpr unsigned char lastAscii = 0x7E;
    const char separator = shape.separator.toLatin1();
    if (shape.separator.isNull() || separator == ' ' || line.empty() || line.front() == '#'
        || isBlank(line.front()) || static_cast<unsigned char>(line.front()) > lastAscii
        || holdsControls(line))
        return false;
    std::size_t i = 0;
    const auto skipBlanks = [&] {
        while (i < line.size() && isBlank(line[i]) && line[i] != separator)
            ++i;
    };
    for (int fields = 1;; ++fields) {
        skipBlanks();
        if (i < line.size() && line[i] == '"') {
            std::size_t end = line.find('"', i + 1);
            while (end != std::string_view::npos && line.substr(end + 1, 1) == "\"")
                end = line.find('"', end + 2);
            if (end == std::string_view::npos)
                return false;
            holdsQuoted = true;
            i = end + 1;
            skipBlanks();
            if (i < line.size() && line[i] != separator)
                return false;
        } else {
            i = std::min(line.find(separator, i), line.size());
        }
        if (i >= line.size())
            return fields == shape.fields;
        ++i;
    }
}

} // namespace

QuotationMarks quotationMarksOf(std::string_view line, const ListShape &shape)
{
    bool holdsQuoted = false;
    if (isPlainlyWhole(line, shape, holdsQuoted))
        return {false, false, holdsQuoted};
    const QString text =
        decoded(QByteArray::fromRawData(line.data(), static_cast<int>(line.size()))).text;
    if (isRemark(text))
        return {};
    const SplitLine split = splitLine(text, shape);
    return {split.isOpen, !split.isOpen && !split.mistake.isEmpty(), split.isQuoted.contains(true)};
}

namespace {

/// Where the mark stands that closes a field which goes on in `line`; its end where none does.
int closingMark(const QString &line)
{
    for (int i = 0; i < line.size(); ++i) {
        if (line.at(i) != QLatin1Char('"'))
            continue;
        if (line.mid(i + 1, 1) != QLatin1String("\""))
            return i;
        ++i; // a doubled one
    }
    return static_cast<int>(line.size());
}

/// Whether a field would begin behind `text`.
bool endsBeforeField(const QString &text, const SplitLine &split)
{
    return split.byBlanks ? text.isEmpty() || text.back().isSpace()
                          : !split.fields.isEmpty() && split.fields.last().isEmpty();
}

} // namespace

EnclosedPosition enclosedPosition(const QString &text, const ListShape &shape,
                                  const std::function<bool(const SplitLine &)> &isPosition)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    EnclosedPosition found;
    for (int i = 1; i < lines.size() && !found.mayStandAlone; ++i) {
        const QString &line = lines.at(i);
        const int mark = closingMark(line);
        const QString inside = line.left(mark);
        const SplitLine split = splitAt(inside, shape.separator);
        if (!split.mistake.isEmpty() || split.fields.size() > shape.fields || !isPosition(split))
            continue;
        const bool mayOpen = mark < line.size() && endsBeforeField(inside, split);
        if (found.line == 0 || mayOpen)
            found = {i, mayOpen};
    }
    return found;
}

QString enclosedDoubt(int line)
{
    return QStringLiteral(
               "a quotation mark opens a field that goes on in the next line, and %1 may "
               "be a position of its own: the mark that closes the field may open one")
        .arg(line == 1 ? QStringLiteral("that line")
                       : QStringLiteral("the line %1 below").arg(line));
}

} // namespace KelStd::positions
