#include <KelStd/io/XmlDocument.h>

#include <algorithm>

namespace KelStd::io {

namespace {

/// Walks over markup without judging it: what is not closed ends the walk, and the parser will say
/// so.
class MarkupWalker
{
public:
    explicit MarkupWalker(const QString &text)
        : m_at(text.constData()), m_end(text.constData() + text.size())
    {}

    bool isSafe()
    {
        int depth = 0;
        while (moveToTag()) {
            switch (second().unicode()) {
            case '/':
                --depth;
                skip(2, QLatin1String(">"));
                break;
            case '?': skip(2, QLatin1String("?>")); break;
            case '!':
                if (!skipSpecial())
                    return false;
                break;
            default:
                if (depth + 1 > deepestNesting)
                    return false;
                if (!skipTag())
                    ++depth;
            }
        }
        return true;
    }

private:
    bool moveToTag()
    {
        m_at = std::find(m_at, m_end, QLatin1Char('<'));
        return m_at != m_end;
    }

    /// The character behind a "<".
    QChar second() const { return m_at + 1 < m_end ? m_at[1] : QChar(); }

    bool startsWith(QLatin1String mark) const
    {
        return m_end - m_at >= mark.size() && std::equal(mark.begin(), mark.end(), m_at, isSame);
    }

    void skip(int opening, QLatin1String end)
    {
        m_at += std::min<std::ptrdiff_t>(opening, m_end - m_at);
        m_at = std::search(m_at, m_end, end.begin(), end.end(),
                           [](QChar c, char mark) { return isSame(mark, c); });
        m_at += std::min<std::ptrdiff_t>(end.size(), m_end - m_at);
    }

    static bool isSame(char mark, QChar c) { return c == QLatin1Char(mark); }

    /// Skips what begins with "<!". False when that is a declaration that is refused.
    bool skipSpecial()
    {
        if (startsWith(QLatin1String("<!--")))
            skip(4, QLatin1String("-->"));
        else if (startsWith(QLatin1String("<![CDATA[")))
            skip(9, QLatin1String("]]>"));
        else
            return skipDeclaration();
        return true;
    }

    /// Moves behind the ">" that closes a tag or declaration; quoted texts may hold others. Calls
    /// `see` with each character outside quotes.
    template <typename See>
    void skipQuoted(See see)
    {
        for (++m_at; m_at != m_end; ++m_at) {
            const QChar c = *m_at;
            if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
                m_at = std::find(m_at + 1, m_end, c);
                if (m_at == m_end)
                    return;
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

    const QChar *m_at;
    const QChar *const m_end;
};

} // namespace

bool isSafeToParse(const QString &text)
{
    return MarkupWalker(text).isSafe();
}

} // namespace KelStd::io
