#include <KelStd/io/XmlDocument.h>

#include <QtCore/QStringView>

#include <algorithm>
#include <iterator>
#include <vector>

namespace KelStd::io {

namespace {

/// U+FFFE and U+FFFF are no characters of XML.
constexpr ushort firstThatIsNone = 0xFFFE;

/// A reference to a character that takes two places in a text, or to one of the two.
struct WideReference
{
    int at;
    int size;
    uint character;
};

/// Walks over markup without judging it: what is not closed ends the walk, and the parser will say
/// so. Judged is only what the parser would take and should not.
class MarkupWalker
{
public:
    MarkupWalker(const QString &text, int maxAttributes)
        : m_begin(text.constData()), m_at(m_begin), m_end(m_begin + text.size()),
          m_hasReferences(text.contains(QLatin1Char('&'))), m_maxAttributes(maxAttributes)
    {}

    bool isSafe()
    {
        int depth = 0;
        while (moveToTag()) {
            if (++m_markup > maxMarkup)
                return exceed(Bound::Markup);
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
                    return exceed(Bound::Nesting);
                if (!skipTag())
                    ++depth;
            }
        }
        return m_isSafe;
    }

    const std::vector<WideReference> &wideReferences() const { return m_wide; }

    /// Of a text that is not safe.
    Bound exceeded() const { return m_markup > maxMarkup ? Bound::Markup : m_exceeded; }

private:
    bool exceed(Bound bound)
    {
        m_exceeded = bound;
        return false;
    }

    bool moveToTag()
    {
        const QChar *const before = m_at;
        m_at = std::find(m_at, m_end, QLatin1Char('<'));
        judgeReferences(before);
        return m_isSafe && m_at != m_end;
    }

    /// Looks at the references from `at` to the present place, in an element's text or tag.
    void judgeReferences(const QChar *at)
    {
        if (!m_hasReferences)
            return;
        while ((at = std::find(at, m_at, QLatin1Char('&'))) != m_at && m_isSafe) {
            const QChar *const end = std::find(at, m_at, QLatin1Char(';'));
            m_isSafe = end != m_at && judgeReference(at, QStringView(at + 1, end));
            ++at;
        }
    }

    bool judgeReference(const QChar *at, QStringView name)
    {
        constexpr const char *predefined[] = {"amp", "lt", "gt", "quot", "apos"};
        if (!name.startsWith(QLatin1Char('#'))) {
            return std::any_of(std::begin(predefined), std::end(predefined),
                               [name](const char *each) { return name == QLatin1String(each); });
        }
        const bool isHexadecimal = name.mid(1).startsWith(QLatin1Char('x'));
        bool isNumber = false;
        const uint character =
            name.mid(isHexadecimal ? 2 : 1).toString().toUInt(&isNumber, isHexadecimal ? 16 : 10);
        if (character > 0xFFFF || QChar::isSurrogate(character))
            m_wide.push_back({int(at - m_begin), int(name.size()) + 2, character});
        return isNumber && character <= QChar::LastValidCodePoint
               && (character < firstThatIsNone || character > 0xFFFF);
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
            if (c > QLatin1Char('>')) { // as most are, and no quote or end is
                see(c);
            } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
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
        const QChar *const before = m_at;
        m_attributes.clear();
        skipQuoted([this](QChar c) {
            if (c == QLatin1Char('=') && ++m_markup <= maxMarkup)
                m_attributes.push_back(nameBefore(m_at));
        });
        m_isSafe = m_isSafe && m_markup <= maxMarkup
                   && m_attributes.size() <= std::size_t(m_maxAttributes)
                   && !hasOneTwice(m_attributes);
        judgeReferences(before);
        return m_at - before > 2 && m_at[-2] == QLatin1Char('/');
    }

    static bool hasOneTwice(std::vector<QStringView> &names)
    {
        // In any order that puts the same ones side by side; lengths are quickest to compare.
        std::sort(names.begin(), names.end(), [](QStringView a, QStringView b) {
            return a.size() != b.size() ? a.size() < b.size() : a < b;
        });
        return std::adjacent_find(names.begin(), names.end()) != names.end();
    }

    /// The name that ends before `at`, which may have blanks behind it.
    static QStringView nameBefore(const QChar *at)
    {
        const auto isPartOfName = [](QChar c) {
            return !c.isSpace() && c != QLatin1Char('"') && c != QLatin1Char('\'');
        };
        while (at[-1].isSpace())
            --at;
        const QChar *const end = at;
        while (isPartOfName(at[-1]) && at[-1] != QLatin1Char('<'))
            --at;
        return QStringView(at, end);
    }

    const QChar *const m_begin;
    const QChar *m_at;
    const QChar *const m_end;
    const bool m_hasReferences;
    const int m_maxAttributes;
    bool m_isSafe = true;
    Bound m_exceeded = Bound::None;
    int m_markup = 0; ///< tags, comments, instructions and attributes so far
    std::vector<WideReference> m_wide;
    std::vector<QStringView> m_attributes; ///< names of the present tag
};

/// The text with the characters in place of the references.
QString withCharacters(const QString &text, const std::vector<WideReference> &references)
{
    QString replaced;
    replaced.reserve(text.size());
    int done = 0;
    for (const WideReference &reference : references) {
        replaced.append(text.constData() + done, reference.at - done);
        if (QChar::requiresSurrogates(reference.character)) {
            replaced += QChar(QChar::highSurrogate(reference.character));
            replaced += QChar(QChar::lowSurrogate(reference.character));
        } else {
            replaced += QChar(reference.character);
        }
        done = reference.at + reference.size;
    }
    return replaced.append(text.constData() + done, text.size() - done);
}

} // namespace

bool isXmlText(const QString &text)
{
    constexpr ushort firstSurrogate = 0xD800;
    const auto isOrdinary = [](QChar c) { return c < QChar(firstSurrogate); };
    if (std::all_of(text.cbegin(), text.cend(), isOrdinary))
        return true;
    return text.isValidUtf16() && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
               return c < QChar(firstThatIsNone);
           });
}

bool makeSafeToParse(QString &text, int maxAttributes, Bound *exceeded)
{
    MarkupWalker walker(text, maxAttributes);
    const bool isSafe = walker.isSafe();
    if (exceeded != nullptr)
        *exceeded = walker.exceeded();
    if (!isSafe)
        return false;
    if (!walker.wideReferences().empty())
        text = withCharacters(text, walker.wideReferences());
    return isXmlText(text);
}

} // namespace KelStd::io
