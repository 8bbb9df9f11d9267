#include <KelStd/io/XmlDocument.h>

#include <QtCore/QStringRef>

namespace KelStd::io {

namespace {

/// Walks over markup without judging it: what is not closed ends the walk, and the parser will say
/// so.
class MarkupWalker
{
public:
    explicit MarkupWalker(const QString &text) : m_text(text) {}

    bool isSafe()
    {
        int depth = 0;
        while (moveTo(QLatin1String("<"))) {
            if (startsWith("<!--")) {
                skip(4, "-->");
            } else if (startsWith("<![CDATA[")) {
                skip(9, "]]>");
            } else if (startsWith("<?")) {
                skip(2, "?>");
            } else if (startsWith("<!")) {
                if (!skipDeclaration())
                    return false;
            } else if (startsWith("</")) {
                --depth;
                skip(2, ">");
            } else {
                if (depth + 1 > deepestNesting)
                    return false;
                if (!skipTag())
                    ++depth;
            }
        }
        return true;
    }

private:
    bool moveTo(QLatin1String mark)
    {
        m_at = m_text.indexOf(mark, m_at);
        if (m_at < 0)
            m_at = m_text.size();
        return m_at < m_text.size();
    }

    bool startsWith(const char *mark) const
    {
        return m_text.midRef(m_at).startsWith(QLatin1String(mark));
    }

    void skip(int opening, const char *end)
    {
        m_at += opening;
        if (moveTo(QLatin1String(end)))
            m_at += static_cast<int>(qstrlen(end));
    }

    /// Moves behind the ">" that closes a tag or declaration; quoted texts may hold others. Calls
    /// `see` with each character outside quotes.
    template <typename See>
    void skipQuoted(See see)
    {
        QChar quote;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            const QChar c = m_text.at(m_at);
            if (!quote.isNull()) {
                if (c == quote)
                    quote = QChar();
            } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
                quote = c;
            } else if (c == QLatin1Char('>')) {
                ++m_at;
                return;
            } else {
                see(c);
            }
        }
    }

    /// False when the declaration has an internal subset.
    bool skipDeclaration()
    {
        bool plain = true;
        skipQuoted([&plain](QChar c) { plain = plain && c != QLatin1Char('['); });
        return plain;
    }

    /// True when the tag is an element of its own ("<x/>").
    bool skipTag()
    {
        QChar last;
        skipQuoted([&last](QChar c) { last = c; });
        return last == QLatin1Char('/');
    }

    const QString &m_text;
    int m_at = 0;
};

} // namespace

bool isSafeToParse(const QString &text)
{
    return MarkupWalker(text).isSafe();
}

} // namespace KelStd::io
