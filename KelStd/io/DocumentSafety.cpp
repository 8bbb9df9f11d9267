// Looks for what must not reach Qt's DOM parser.
//
// `QXmlStreamReader` is not asked instead, because it refuses documents that this look and the
// parser accept: with control characters, as our writer writes them, of XML 1.1, and in other
// encodings. Where they differ the rows of tests/io/XmlTableTest.cpp say.

#include <KelStd/io/XmlDocument.h>

#include <KelStd/io/DocumentLimits.h>
#include <KelStd/io/ShortenedText.h>

#include <QtCore/QStringView>

#include <algorithm>
#include <iterator>
#include <vector>

namespace KelStd::io {

namespace {

/// U+FFFE and U+FFFF are no characters of XML.
constexpr ushort firstNonCharacter = 0xFFFE;

/// The line of a place in a text, from 1; it may end in a line feed, a carriage return or both.
int lineOf(const QChar *begin, const QChar *place)
{
    int line = 1;
    for (const QChar *at = begin; at < place; ++at) {
        if (*at == QLatin1Char('\n')
            || (*at == QLatin1Char('\r') && (at + 1 == place || at[1] != QLatin1Char('\n'))))
            ++line;
    }
    return line;
}

/// A reference to a character that takes two places in a text, or to one of the two.
struct WideReference
{
    int at;
    int size;
    uint character;
};

/// Walks over markup and refuses what the parser would take and should not. Markup that is not
/// closed ends the walk: the parser reports it.
class MarkupWalker
{
public:
    explicit MarkupWalker(const QString &text)
        : m_begin(text.constData()), m_at(m_begin), m_end(m_begin + text.size()),
          m_hasReferences(text.contains(QLatin1Char('&')))
    {}

    /// Goes to the end, or to the first thing that is refused.
    DocumentFailure walk()
    {
        int depth = 0;
        while (moveToTag()) {
            countMarkup();
            switch (second().unicode()) {
            case '/':
                --depth;
                skip(2, QLatin1String(">"));
                break;
            case '?': skip(2, QLatin1String("?>")); break;
            case '!': skipSpecial(); break;
            default:
                if (depth + 1 > deepestNesting) {
                    refuse(DocumentFault::NestedTooDeeply,
                           QStringLiteral("its elements are nested deeper than %1")
                               .arg(deepestNesting));
                }
                if (!skipTag())
                    ++depth;
            }
        }
        return m_failure;
    }

    const std::vector<WideReference> &wideReferences() const { return m_wide; }

private:
    /// Only the first thing counts.
    void refuse(DocumentFault kind, const QString &text, const QChar *place)
    {
        if (!m_failure)
            m_failure = {kind, text, lineOf(m_begin, place)};
    }
    void refuse(DocumentFault kind, const QString &text) { refuse(kind, text, m_at); }

    void refuseXml(const QString &what, const QChar *place)
    {
        refuse(DocumentFault::NotWellFormed, QStringLiteral("no well-formed XML: ") + what, place);
    }

    void countMarkup()
    {
        if (++m_markup > maxMarkup) {
            refuse(DocumentFault::TooMuchMarkup,
                   QStringLiteral("it has more tags and attributes than %1").arg(maxMarkup));
        }
    }

    bool moveToTag()
    {
        const QChar *const before = m_at;
        m_at = std::find(m_at, m_end, QLatin1Char('<'));
        judgeReferences(before);
        return !m_failure && m_at != m_end;
    }

    /// Looks at the references from `at` to the present place, in an element's text or tag.
    void judgeReferences(const QChar *at)
    {
        if (!m_hasReferences)
            return;
        while ((at = std::find(at, m_at, QLatin1Char('&'))) != m_at && !m_failure) {
            const QChar *const end = std::find(at, m_at, QLatin1Char(';'));
            if (end == m_at) {
                refuseXml(QStringLiteral("a \"&\" without \";\""), at);
            } else if (!takeReference(at, QStringView(at + 1, end))) {
                const QString known = QStringView(at, end + 1).left(maxShown + 1).toString();
                refuseXml(QStringLiteral("\"%1\" stands for no character").arg(shortened(known)),
                          at);
            }
            ++at;
        }
    }

    /// Keeps a reference that the parser would misread. False for a reference that means nothing.
    bool takeReference(const QChar *at, QStringView name)
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
               && (character < firstNonCharacter || character > 0xFFFF);
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

    /// Skips what begins with "<!".
    void skipSpecial()
    {
        if (startsWith(QLatin1String("<!--")))
            skip(4, QLatin1String("-->"));
        else if (startsWith(QLatin1String("<![CDATA[")))
            skip(9, QLatin1String("]]>"));
        else
            skipDeclaration();
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

    /// Skips a declaration, and refuses one that holds others.
    void skipDeclaration()
    {
        skipQuoted([this](QChar c) {
            if (c == QLatin1Char('[')) {
                refuse(DocumentFault::HasDeclarations,
                       QStringLiteral("it declares entities or elements of its own"));
            }
        });
    }

    /// True when the tag is an element of its own ("<x/>").
    bool skipTag()
    {
        const QChar *const before = m_at;
        m_attributes.clear();
        skipQuoted([this](QChar c) {
            if (c == QLatin1Char('=') && m_markup <= maxMarkup) {
                countMarkup();
                m_attributes.push_back(nameBefore(m_at));
            }
        });
        refuseOneTwice(m_attributes);
        judgeReferences(before);
        return m_at - before > 2 && m_at[-2] == QLatin1Char('/');
    }

    void refuseOneTwice(std::vector<QStringView> &names)
    {
        // In any order that puts the same ones side by side; lengths are quickest to compare.
        std::sort(names.begin(), names.end(), [](QStringView a, QStringView b) {
            return a.size() != b.size() ? a.size() < b.size() : a < b;
        });
        const auto twice = std::adjacent_find(names.begin(), names.end());
        if (twice == names.end())
            return;
        refuseXml(QStringLiteral("the attribute \"%1\" stands twice in a tag")
                      .arg(shortened(twice->left(maxShown + 1).toString())),
                  std::max(twice[0].data(), twice[1].data()));
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
    DocumentFailure m_failure;
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
               return c < QChar(firstNonCharacter);
           });
}

namespace {

DocumentFailure foreignText(const QString &text)
{
    // The characters up to the first foreign one are a text of XML.
    int known = 0;
    while (known < text.size()) {
        const bool isPair = text.at(known).isHighSurrogate() && known + 1 < text.size()
                            && text.at(known + 1).isLowSurrogate();
        const QChar c = text.at(known);
        if (!isPair && (c.isSurrogate() || c >= QChar(firstNonCharacter)))
            break;
        known += isPair ? 2 : 1;
    }
    return {DocumentFault::ForeignText,
            QStringLiteral("it has a character that no XML document can hold"),
            lineOf(text.constData(), text.constData() + known)};
}

} // namespace

DocumentFailure makeSafeToParse(QString &text)
{
    MarkupWalker walker(text);
    DocumentFailure failure = walker.walk();
    if (failure)
        return failure;
    if (!walker.wideReferences().empty())
        text = withCharacters(text, walker.wideReferences());
    return isXmlText(text) ? DocumentFailure() : foreignText(text);
}

} // namespace KelStd::io
