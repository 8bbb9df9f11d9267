#include <KelStd/positions/LineSplitter.h>

#include <KelStd/positions/SpreadsheetText.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace KelStd::positions {

namespace {

constexpr QChar quote = QLatin1Char('"');
constexpr QChar blank = QLatin1Char(' ');
constexpr QChar semicolon = QLatin1Char(';');
constexpr QChar comma = QLatin1Char(',');
constexpr QChar tabulator = QLatin1Char('\t');
constexpr QChar lineBreak = QLatin1Char('\n');

bool isBlank(QChar c)
{
    return c == blank || c == tabulator;
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// True when the line's commas can only be decimal commas between tabulators. `separators`: where
/// its commas and tabulators outside quotation marks stand.
bool hasOnlyDecimalCommas(const QString &line, const QVector<int> &separators)
{
    bool hasTabulator = false;
    bool fieldHasComma = false;
    for (const int position : separators) {
        if (line.at(position) == tabulator) {
            // Tabulators at the line's ends separate nothing.
            hasTabulator = hasTabulator
                           || (!line.left(position).trimmed().isEmpty()
                               && !line.mid(position).trimmed().isEmpty());
            fieldHasComma = false;
            continue;
        }
        const bool isBetweenDigits = position > 0 && position + 1 < line.size()
                                     && isDigit(line.at(position - 1))
                                     && isDigit(line.at(position + 1));
        if (!isBetweenDigits || fieldHasComma)
            return false;
        fieldHasComma = true;
    }
    return hasTabulator;
}

/// The separator of `line`; a blank when it has none of the others.
QChar separatorOf(const QString &line)
{
    constexpr std::array candidates = {semicolon, comma, tabulator};
    auto best = candidates.size();
    bool quoted = false;
    bool atFieldStart = true;
    QVector<int> positions;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        const auto rank = static_cast<std::size_t>(
            std::find(candidates.begin(), candidates.end(), c) - candidates.begin());
        const bool isCandidate = rank < candidates.size();
        if (c == quote && (quoted || atFieldStart)) {
            quoted = !quoted;
        } else if (!quoted && isCandidate) {
            best = std::min(best, rank);
            if (c != semicolon)
                positions += i;
        }
        atFieldStart = isBlank(c) || isCandidate;
    }
    if (best == candidates.size())
        return blank;
    const QChar separator = candidates[best];
    return separator == comma && hasOnlyDecimalCommas(line, positions) ? tabulator : separator;
}

/// Reads one field after the other of a line.
class FieldScanner
{
public:
    FieldScanner(const QString &line, QChar separator)
        : m_line(line), m_separator(separator), m_hasBreaks(line.contains(lineBreak))
    {}

    SplitLine scan()
    {
        SplitLine result;
        result.separator = m_separator;
        result.byBlanks = m_separator == blank;
        bool more = true;
        while (more && result.mistake.isEmpty()) {
            skipBlanks();
            if (result.byBlanks && atEnd())
                break;
            const bool isQuoted = !atEnd() && m_line.at(m_position) == quote;
            result.isQuoted += isQuoted;
            result.fields += fromSpreadsheetText(isQuoted ? quotedField(result.mistake)
                                                          : plainField(result.mistake));
            more = !atEnd();
            ++m_position; // the separator
        }
        result.isOpen = m_isOpen;
        return result;
    }

private:
    bool atEnd() const { return m_position >= m_line.size(); }
    bool atSeparator() const
    {
        const QChar c = m_line.at(m_position);
        return c == m_separator || (m_separator == blank && isBlank(c));
    }

    void skipBlanks()
    {
        while (!atEnd() && isBlank(m_line.at(m_position)) && m_line.at(m_position) != m_separator)
            ++m_position;
        while (m_separator == blank && !atEnd() && isBlank(m_line.at(m_position)))
            ++m_position;
    }

    QString plainField(QString &mistake)
    {
        const int start = m_position;
        if (m_separator == blank) {
            while (!atEnd() && !atSeparator())
                ++m_position;
        } else {
            const auto end = m_line.indexOf(m_separator, m_position);
            m_position = static_cast<int>(end < 0 ? m_line.size() : end);
        }
        const auto text = m_line.mid(start, m_position - start);
        if (m_hasBreaks && text.contains(lineBreak))
            mistake = QStringLiteral("a line break stands outside quotation marks");
        return text.trimmed();
    }

    QString quotedField(QString &mistake)
    {
        QString field;
        for (++m_position; !atEnd(); ++m_position) {
            if (m_line.at(m_position) != quote) {
                field += m_line.at(m_position);
            } else if (m_line.mid(m_position + 1, 1) == QString(quote)) {
                field += quote;
                ++m_position;
            } else {
                ++m_position;
                if (m_separator != blank)
                    skipBlanks();
                if (!atEnd() && !atSeparator())
                    mistake = QStringLiteral("text follows a closing quotation mark");
                return field;
            }
        }
        mistake = QStringLiteral("a quotation mark is not closed");
        m_isOpen = true;
        return field;
    }

    const QString &m_line;
    QChar m_separator;
    int m_position = 0;
    bool m_isOpen = false;
    bool m_hasBreaks;
};

} // namespace

bool endsEmpty(const SplitLine &line)
{
    return !line.byBlanks && line.fields.size() > 1 && line.fields.last().isEmpty()
           && !line.isQuoted.last();
}

bool isEmptyRow(const SplitLine &line)
{
    return line.mistake.isEmpty() && !line.isQuoted.contains(true)
           && std::all_of(line.fields.cbegin(), line.fields.cend(),
                          [](const QString &field) { return field.isEmpty(); });
}

SplitLine splitLine(const QString &line)
{
    return FieldScanner(line, separatorOf(line)).scan();
}

bool hasShape(const SplitLine &line, const ListShape &shape)
{
    const auto count = line.fields.size();
    return line.mistake.isEmpty()
           && (count == shape.fields || (count == shape.fields + 1 && endsEmpty(line)));
}

SplitLine splitLine(const QString &line, const ListShape &shape, std::optional<SplitLine> *other)
{
    const QChar separator = separatorOf(line);
    SplitLine alone = FieldScanner(line, separator).scan();
    if (shape.separator.isNull() || separator == shape.separator)
        return alone;
    SplitLine asList = FieldScanner(line, shape.separator).scan();
    if (asList.isOpen && asList.fields.size() <= shape.fields)
        return asList; // the next line may give it its shape
    if (!hasShape(asList, shape))
        return alone;
    if (other != nullptr && hasShape(alone, shape))
        *other = std::move(alone);
    return asList;
}

SplitLine splitAt(const QString &line, QChar separator)
{
    return FieldScanner(line, separator).scan();
}

QString fieldCount(int count)
{
    return count == 1 ? QStringLiteral("1 field") : QStringLiteral("%1 fields").arg(count);
}

} // namespace KelStd::positions
