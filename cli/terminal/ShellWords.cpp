#include <cli/terminal/ShellWords.h>

#include <QtCore/QRegularExpression>

namespace KelStd::cli {

namespace {

constexpr char singleQuote = '\'';
constexpr char doubleQuote = '"';
constexpr char backslash = '\\';

bool isIn(const char *characters, QChar c)
{
    return QString::fromLatin1(characters).contains(c);
}

/// Takes a line a character at a time.
class Splitter
{
public:
    explicit Splitter(const QString &breaks) : m_breaks(breaks) {}

    void take(QChar c)
    {
        if (m_isEscaped)
            takeEscaped(c);
        else if (c == QLatin1Char(backslash) && m_quote != QLatin1Char(singleQuote))
            m_isEscaped = m_isWord = true;
        else if (!m_quote.isNull())
            takeQuoted(c);
        else
            takePlain(c);
    }

    ShellWords finished()
    {
        if (m_isEscaped)
            takeEscaped(QLatin1Char(backslash));
        m_found.words += m_word;
        m_found.quote = m_quote;
        m_found.kept = m_kept;
        m_found.isRedirection = m_isRedirection;
        return m_found;
    }

private:
    void add(QChar c)
    {
        m_word += c;
        m_isWord = true;
    }

    void takeEscaped(QChar c)
    {
        m_isEscaped = false;
        // Within double quotation marks it stands for itself before most characters.
        if (m_quote == QLatin1Char(doubleQuote) && !isIn("\"\\$`", c))
            add(QLatin1Char(backslash));
        add(c);
    }

    void takeQuoted(QChar c)
    {
        if (c == m_quote)
            m_quote = QChar();
        else
            add(c);
    }

    void takePlain(QChar c)
    {
        if (c == QLatin1Char(singleQuote) || c == QLatin1Char(doubleQuote)) {
            m_quote = c;
            m_isWord = true;
            m_kept = static_cast<int>(m_word.size());
        } else if (c.isSpace()) {
            endWord();
        } else if (isIn("<>", c)) {
            // A number before it is that of a stream: 2>file.
            static const QRegularExpression stream(QStringLiteral("\\A[0-9]*\\z"));
            if (stream.match(m_word).hasMatch())
                m_word.clear();
            m_isWord = !m_word.isEmpty();
            endWord();
            m_isRedirection = true;
        } else {
            add(c);
            if (m_breaks.contains(c))
                m_kept = static_cast<int>(m_word.size());
        }
    }

    void endWord()
    {
        if (m_isWord && !m_isRedirection)
            m_found.words += m_word;
        if (m_isWord)
            m_isRedirection = false;
        m_word.clear();
        m_kept = 0;
        m_isWord = false;
    }

    QString m_breaks;
    ShellWords m_found;
    QString m_word;
    QChar m_quote;
    int m_kept = 0;
    bool m_isEscaped = false;
    bool m_isWord = false; ///< an empty one in quotation marks is a word, too
    bool m_isRedirection = false;
};

} // namespace

ShellWords ShellWords::of(const QString &line, const QString &breaks)
{
    Splitter splitter(breaks);
    for (const QChar c : line)
        splitter.take(c);
    return splitter.finished();
}

QString unquoted(const QString &word)
{
    // Blanks outside of quotation marks are the word's own: the shell has split it off already.
    return ShellWords::of(word).words.join(QLatin1Char(' '));
}

bool needsQuotes(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("\\A[\\w@%+=:,./-]+\\z"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    return !plain.match(text).hasMatch();
}

QString quotedForShell(const QString &text, QChar quote, bool always)
{
    if (quote == QLatin1Char(singleQuote))
        return text.contains(quote) ? QString() : text;
    // An exclamation mark is one of the history in double quotation marks.
    if (text.contains(QLatin1Char('!')))
        return {};
    if (quote.isNull() && !always)
        return text;
    QString quoted;
    for (const QChar c : text) {
        if (isIn("\"\\$`", c))
            quoted += QLatin1Char(backslash);
        quoted += c;
    }
    return quote.isNull() ? QLatin1Char(doubleQuote) + quoted + QLatin1Char(doubleQuote) : quoted;
}

} // namespace KelStd::cli
