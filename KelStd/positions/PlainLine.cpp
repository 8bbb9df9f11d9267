#include <KelStd/positions/PlainLine.h>

#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/PlainNumbers.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr char noSeparator = '\0';
constexpr char blank = ' ';
constexpr char tabulator = '\t';

bool isBlank(char c)
{
    return c == blank || c == tabulator;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// What separates the fields of a plain line; `noSeparator` for a line that is not plain. Two
/// candidates in one line may be decimal commas or blanks in a field.
char separatorOf(std::string_view line)
{
    bool hasComma = false;
    bool hasSemicolon = false;
    bool hasTabulator = false;
    for (const char c : line) {
        const bool isPlain = (c >= blank && c <= '~' && c != '"') || c == tabulator;
        if (!isPlain)
            return noSeparator;
        hasComma = hasComma || c == ',';
        hasSemicolon = hasSemicolon || c == ';';
        hasTabulator = hasTabulator || c == tabulator;
    }
    if (hasComma + hasSemicolon + hasTabulator > 1)
        return noSeparator;
    return hasComma ? ',' : hasSemicolon ? ';' : hasTabulator ? tabulator : blank;
}

/// Whether a field that is no component may be the piece of an angle that blanks tore apart.
bool mayBePiece(std::string_view field)
{
    constexpr std::string_view letters = "+-NSEWnsew";
    constexpr std::string_view signs = "dD':";
    const bool hasLetter = letters.find(field.front()) != std::string_view::npos;
    return field.find_first_of(signs) != std::string_view::npos || (hasLetter && field.size() == 1);
}

/// Whether a field begins as a hemisphere does, in a letter or a word of some language.
bool mayBeHemisphere(std::string_view field)
{
    constexpr std::string_view beginnings = "NSEWOZnsewoz([";
    constexpr std::size_t maxSize = 7; // "(north)"
    return !field.empty() && field.size() <= maxSize
           && beginnings.find(field.front()) != std::string_view::npos;
}

} // namespace

void PlainLine::split(std::string_view line, char separator)
{
    m_fields.clear();
    if (separator == blank) {
        for (line = trimmed(line); !line.empty(); line = trimmed(line)) {
            const std::size_t end = std::min(line.find(blank), line.size());
            m_fields.push_back(line.substr(0, end));
            line.remove_prefix(end);
        }
        return;
    }
    for (;;) {
        const std::size_t end = line.find(separator);
        m_fields.push_back(trimmed(line.substr(0, end)));
        if (end == std::string_view::npos)
            return;
        line.remove_prefix(end + 1);
    }
}

bool PlainLine::read(std::string_view line, const FieldOrder &order)
{
    const char separator = separatorOf(line);
    const std::string_view content = trimmed(line);
    if (separator == noSeparator || content.empty() || content.front() == '#')
        return false;
    // Blanks part any line, so that the list's own separator may be another one.
    if (separator != blank && order.separator == QLatin1Char(blank))
        return false;
    split(line, separator);
    const auto expected = static_cast<std::size_t>(order.fields);
    bool endsEmpty = order.endsEmpty;
    if (m_fields.size() == expected + 1 && separator != blank && m_fields.back().empty()
        && mayEndEmpty(m_fields.front(), order)) {
        m_fields.pop_back();
        endsEmpty = true;
    }
    if (m_fields.size() != expected || (order.endsEmpty && !m_fields.back().empty()))
        return false;
    if (endsEmpty && separator == ',' && mayLackOne(order, [this](int i) { return field(i); }))
        return false;
    const auto components = static_cast<std::size_t>(order.countComponents());
    for (std::size_t i = 0; i < components; ++i) {
        if (!readPlainNumber(field(order.components[i]), m_components[i]))
            return false;
    }
    const int read = order.countComponents();
    const bool hasOthers = order.fields > read + (order.name >= 0 ? 1 : 0);
    for (std::size_t i = 0; hasOthers && i < components; ++i) {
        for (const int beside : {order.components[i] - 1, order.components[i] + 1}) {
            if (beside >= 0 && beside < order.fields && beside != order.name
                && mayBeHemisphere(field(beside)))
                return false;
        }
    }
    const bool hasTwoOthers = order.fields > read + (order.name >= 0 ? 2 : 1);
    if (hasTwoOthers && std::count_if(m_fields.begin(), m_fields.end(), mayBeHemisphere) > 1)
        return false;
    if (separator != blank)
        return true;
    for (int i = 0; i < order.fields; ++i) {
        const ComponentFields fields = order.componentFields();
        const bool isComponent = std::find(fields.begin(), fields.end(), i) != fields.end();
        if (!isComponent && mayBePiece(field(i)))
            return false;
    }
    return true;
}

} // namespace KelStd::positions
