#include <cli/LineSplitter.h>

namespace KelStd::cli {

namespace {

constexpr QChar quote = QLatin1Char('"');
constexpr QChar blank = QLatin1Char(' ');

bool isBlank(QChar c)
{
    return c == blank || c == QLatin1Char('\t');
}

/// The separator of `line`; a blank when it has none of the others.
QChar separatorOf(const QString &line)
{
    const QString candidates = QStringLiteral(";,\t");
    int best = candidates.size();
    bool quoted = false;
    bool atFieldStart = true;
    for (const QChar c : line) {
        if (c == quote && (quoted || atFieldStart)) {
            quoted = !quoted;
        } else if (!quoted) {
            const int rank = candidates.indexOf(c);
            if (rank >= 0 && rank < best)
                best = rank;
        }
        atFieldStart = isBlank(c) || candidates.contains(c);
    }
    return best < candidates.size() ? candidates.at(best) : blank;
}

/// Reads one field after the other of a line.
class FieldScanner
{
public:
    FieldScanner(const QString &line, QChar separator) : m_line(line), m_separator(separator) {}

    SplitLine scan()
    {
        SplitLine result;
        result.byBlanks = m_separator == blank;
        bool more = true;
        while (more && result.mistake.isEmpty()) {
            skipBlanks();
            if (result.byBlanks && atEnd())
                break;
            result.fields += !atEnd() && m_line.at(m_position) == quote
                                 ? quotedField(result.mistake)
                                 : plainField();
            more = !atEnd();
            ++m_position; // the separator
        }
        if (!result.mistake.isEmpty())
            result.fields.clear();
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

    QString plainField()
    {
        const int start = m_position;
        while (!atEnd() && !atSeparator())
            ++m_position;
        return m_line.mid(start, m_position - start).trimmed();
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
        return field;
    }

    const QString &m_line;
    QChar m_separator;
    int m_position = 0;
};

} // namespace

SplitLine splitLine(const QString &line)
{
    return FieldScanner(line, separatorOf(line)).scan();
}

} // namespace KelStd::cli
