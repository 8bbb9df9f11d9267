#include <KelStd/catalogue/WktTree.h>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

/// Quotation marks as word processors write them, which PROJ takes too.
constexpr const char *openingMark = "\xe2\x80\x9c";
constexpr const char *closingMark = "\xe2\x80\x9d";
constexpr int markSize = 3;

class Reader
{
public:
    explicit Reader(const QByteArray &text) : m_text(text) {}

    bool readNode(WktNode &node)
    {
        skipBlanks();
        node.begin = m_at;
        node.keyword = readWord().toUpper();
        skipBlanks();
        if (node.keyword.isEmpty() || !isOpening(current()))
            return false;
        do {
            ++m_at; // the bracket or the comma
            if (!readItem(node))
                return false;
            skipBlanks();
        } while (current() == ',');
        if (current() != ']' && current() != ')')
            return false;
        node.end = ++m_at;
        return true;
    }

    bool readComma()
    {
        skipBlanks();
        const bool isThere = current() == ',';
        m_at += isThere ? 1 : 0;
        return isThere;
    }

private:
    char current() const { return m_at < m_text.size() ? m_text.at(m_at) : '\0'; }

    static bool isOpening(char c) { return c == '[' || c == '('; }

    static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

    bool startsWith(const char *mark) const { return m_text.mid(m_at, markSize) == mark; }

    void skipBlanks()
    {
        while (isBlank(current()))
            ++m_at;
    }

    QByteArray readWord()
    {
        const int begin = m_at;
        while (m_at < m_text.size() && !isBlank(current()) && !isOpening(current())
               && current() != ',' && current() != ']' && current() != ')')
            ++m_at;
        return m_text.mid(begin, m_at - begin);
    }

    bool readItem(WktNode &node)
    {
        skipBlanks();
        const int begin = m_at;
        if (current() == '"' || startsWith(openingMark)) {
            WktValue value;
            value.begin = begin;
            if (!readQuoted(value.text))
                return false;
            value.end = m_at;
            node.values.push_back(value);
            return true;
        }
        const QByteArray word = readWord();
        const int end = m_at;
        skipBlanks();
        if (!isOpening(current())) {
            if (!word.isEmpty())
                node.values.push_back({word, begin, end});
            return true;
        }
        m_at = begin;
        node.nodes.emplace_back();
        return readNode(node.nodes.back());
    }

    /// A doubled mark is one of the text.
    bool readQuoted(QByteArray &text)
    {
        const bool isPlain = current() == '"';
        m_at += isPlain ? 1 : markSize;
        for (; m_at < m_text.size(); ++m_at) {
            if (isPlain ? current() == '"' : startsWith(closingMark)) {
                m_at += isPlain ? 1 : markSize;
                if (!isPlain || current() != '"')
                    return true;
            }
            text += current();
        }
        return false;
    }

    const QByteArray &m_text;
    int m_at = 0;
};

} // namespace

bool WktNode::is(std::initializer_list<const char *> keywords) const
{
    return std::any_of(keywords.begin(), keywords.end(),
                       [this](const char *word) { return keyword == word; });
}

const WktNode *WktNode::child(std::initializer_list<const char *> keywords) const
{
    const auto found = std::find_if(nodes.cbegin(), nodes.cend(),
                                    [&keywords](const WktNode &node) { return node.is(keywords); });
    return found == nodes.cend() ? nullptr : &*found;
}

std::optional<WktNode> wktTree(const QByteArray &wkt)
{
    Reader reader(wkt);
    WktNode root;
    root.nodes.emplace_back();
    if (!reader.readNode(root.nodes.back()))
        return std::nullopt;
    root.begin = root.nodes.front().begin;
    root.end = root.nodes.front().end;
    WktNode heights;
    if (root.nodes.front().keyword == "PROJCS" && reader.readComma() && reader.readNode(heights)
        && heights.keyword == "VERTCS") {
        root.end = heights.end;
        root.nodes.push_back(std::move(heights));
    }
    return root;
}

const WktNode *findNode(const WktNode &root, std::initializer_list<const char *> keywords)
{
    if (root.is(keywords))
        return &root;
    for (const WktNode &node : root.nodes) {
        if (const WktNode *const found = findNode(node, keywords))
            return found;
    }
    return nullptr;
}

QByteArray plainName(const QByteArray &name)
{
    QByteArray plain;
    for (const char c : name.toLower()) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
            plain += c;
    }
    return plain;
}

} // namespace KelStd::catalogue
