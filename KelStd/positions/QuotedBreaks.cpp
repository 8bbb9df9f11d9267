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

/// Characters that become blanks or are left out when a line is decoded.
bool isControl(char c)
{
    constexpr unsigned char firstPlain = 0x20;
    return static_cast<unsigned char>(c) < firstPlain;
}

/// Whether the line has the fields of its list and no open quotation mark, found without decoding
/// it; false for a line that needs more care. `holdsQuoted`: whether a field has such marks.
bool isPlainlyWhole(std::string_view line, const ListShape &shape, bool &holdsQuoted)
{
    constexpr unsigned char lastAscii = 0x7E;
    const char separator = shape.separator.toLatin1();
    if (shape.separator.isNull() || separator == ' ' || line.empty() || line.front() == '#'
        || isBlank(line.front()) || static_cast<unsigned char>(line.front()) > lastAscii)
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
            if (i < line.size() && isControl(line[i]) && line[i] != separator)
                return false;
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

} // namespace KelStd::positions
