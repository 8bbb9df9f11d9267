#include "docs/site/SitePage.h"

#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QStringList>

namespace KelStd::site {
namespace {

const QString pageEnding = QStringLiteral(".md");

/// Languages that the generator colours; all other blocks are shown as they are.
const QHash<QString, QString> &colouredLanguages()
{
    static const QHash<QString, QString> languages = {
        {QStringLiteral("cpp"), QStringLiteral(".cpp")},
        {QStringLiteral("xml"), QStringLiteral(".xml")},
        {QStringLiteral("python"), QStringLiteral(".py")},
    };
    return languages;
}

/// "../a/b.md" from "c/d.md" is "a/b.md"; a path that leaves docs begins with "..".
QString followed(const QString &link, const QString &from)
{
    QStringList parts = from.split(QLatin1Char('/'));
    parts.removeLast();
    for (const QString &part : link.split(QLatin1Char('/'))) {
        if (part == QLatin1String("..") && !parts.isEmpty() && parts.last() != part)
            parts.removeLast();
        else if (part != QLatin1String("."))
            parts += part;
    }
    return parts.join(QLatin1Char('/'));
}

class PageWriter
{
public:
    explicit PageWriter(const QString &path) : m_path(path), m_name(pageName(path)) {}

    QString page(const QString &markdown)
    {
        static const QRegularExpression fence(
            QStringLiteral("\\A(\\s*)(```+|~~~+)\\s*(\\S*)\\s*\\z"));
        static const QRegularExpression heading(QStringLiteral("\\A(#{1,6}) +(.*)\\z"));
        QStringList out;
        for (const QString &line : markdown.split(QLatin1Char('\n'))) {
            const auto mark = fence.match(line);
            const auto title = heading.match(line);
            if (!mark.hasMatch() && !title.hasMatch() && !m_isCode) {
                m_text += line;
                continue;
            }
            endText(out);
            if (mark.hasMatch())
                out += fenceLine(mark);
            else
                out += m_isCode ? line : headingLine(title.captured(1), title.captured(2));
        }
        endText(out);
        return out.join(QLatin1Char('\n'));
    }

private:
    /// Spans of code and links may go over the end of a line.
    void endText(QStringList &out)
    {
        if (!m_text.isEmpty())
            out += inlines(m_text.join(QLatin1Char('\n')));
        m_text.clear();
    }

    QString fenceLine(const QRegularExpressionMatch &found)
    {
        const QString mark = found.captured(2);
        if (m_isCode && !found.captured(3).isEmpty())
            return found.captured(0);
        m_isCode = !m_isCode;
        if (!m_isCode)
            return found.captured(1) + mark;
        const QString language =
            colouredLanguages().value(found.captured(3), QStringLiteral(".unparsed"));
        return found.captured(1) + mark + QLatin1Char('{') + language + QLatin1Char('}');
    }

    QString headingLine(const QString &level, const QString &text)
    {
        if (level.size() == 1) {
            const QString name =
                m_name == QLatin1String("index") ? QStringLiteral("mainpage") : m_name;
            return QStringLiteral("# %1 {#%2}").arg(inlines(text), name);
        }
        const QString base = headingAnchor(text);
        QString anchor = base;
        for (int again = 1; m_anchors.contains(anchor); ++again)
            anchor = base + QLatin1Char('-') + QString::number(again);
        m_anchors.insert(anchor);
        return QStringLiteral("%1 %2 {#%3-%4}").arg(level, inlines(text), m_name, anchor);
    }

    /// Spans of code and what stands between them.
    QString inlines(const QString &text)
    {
        static const QRegularExpression span(
            QStringLiteral("(?<!`)(`+)(?!`)((?:(?!\\n\\s*\\n).)*?[^`])\\1(?!`)"),
            QRegularExpression::DotMatchesEverythingOption);
        QString out;
        int at = 0;
        auto spans = span.globalMatch(text);
        while (spans.hasNext()) {
            const auto found = spans.next();
            out += words(text.mid(at, found.capturedStart() - at));
            out += code(found.captured(2));
            at = found.capturedEnd();
        }
        return out + words(text.mid(at));
    }

    /// A text without code, with its links. A link whose text is code is not one of our habits.
    QString words(const QString &text)
    {
        static const QRegularExpression link(QStringLiteral("\\[([^\\]]*)\\]\\(([^)\\s]+)\\)"));
        QString out;
        int at = 0;
        auto links = link.globalMatch(text);
        while (links.hasNext()) {
            const auto found = links.next();
            out += plain(text.mid(at, found.capturedStart() - at));
            out += linked(found.captured(1), found.captured(2));
            at = found.capturedEnd();
        }
        return out + plain(text.mid(at));
    }

    /// The generator takes a quotation mark within a span of code for the beginning of a text, and
    /// prints the backslash that keeps a bar from ending the cell of a table.
    static QString code(QString span)
    {
        if (!span.contains(QLatin1Char('"')) && !span.contains(QLatin1String("\\|")))
            return QStringLiteral("``%1``").arg(span);
        static const QRegularExpression sign(QStringLiteral("(\\\\(?!\\|)|[`*_<>\\[\\]#&@%]|--)"));
        span.replace(sign, QStringLiteral("\\\\1"));
        span.replace(QLatin1Char('"'), QLatin1String("&quot;"));
        return QStringLiteral("<code>%1</code>").arg(span);
    }

    static QString plain(QString text)
    {
        static const QRegularExpression dashes(QStringLiteral("(?<![-|:])--(?![-|:])"));
        static const QRegularExpression name(QStringLiteral("(?<![\\w/:])KelStd(?![\\w/:])"));
        text.replace(dashes, QStringLiteral("\\--"));
        text.replace(name, QStringLiteral("%KelStd")); // the library, not the namespace
        return text.replace(QLatin1Char('@'), QLatin1String("\\@"));
    }

    QString linked(const QString &text, const QString &target)
    {
        if (target.contains(QLatin1String("://")))
            return QStringLiteral("[%1](%2)").arg(text, target);
        const QString file = target.section(QLatin1Char('#'), 0, 0);
        const QString anchor = target.section(QLatin1Char('#'), 1);
        const QString page = file.isEmpty() ? m_path : followed(file, m_path);
        // Files of the repository are not on the site.
        if (page.startsWith(QLatin1String("..")) || !page.endsWith(pageEnding))
            return text;
        const QString name = pageName(page);
        if (!anchor.isEmpty())
            return QStringLiteral("@ref %1-%2 \"%3\"").arg(name, anchor, text);
        const bool isPart = isListOfPages() && !m_parts.contains(name);
        m_parts.insert(name);
        return QStringLiteral("@%1 %2 \"%3\"")
            .arg(isPart ? QStringLiteral("subpage") : QStringLiteral("ref"), name, text);
    }

    /// Pages below which others stand, which they link to.
    bool isListOfPages() const
    {
        return m_name == QLatin1String("guide") || m_name == QLatin1String("formats")
               || m_name == QLatin1String("commands");
    }

    QString m_path;
    QString m_name;
    QStringList m_text;
    QSet<QString> m_anchors;
    QSet<QString> m_parts;
    bool m_isCode = false;
};

} // namespace

QString pageName(const QString &pathInDocs)
{
    QString name = pathInDocs;
    if (name.endsWith(pageEnding))
        name.chop(pageEnding.size());
    return name.replace(QLatin1Char('/'), QLatin1Char('-'));
}

QString headingAnchor(const QString &heading)
{
    static const QRegularExpression dropped(QStringLiteral("[^\\w\\- ]"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    QString anchor = heading.toLower();
    anchor.remove(dropped);
    return anchor.replace(QLatin1Char(' '), QLatin1Char('-'));
}

QString sitePage(const QString &markdown, const QString &path)
{
    return PageWriter(path).page(markdown);
}

namespace {

/// Leaves the lines of private sections empty: the generator would name what is in them without
/// saying what it is. A section ends with the next one of its class, or with the class.
void dropPrivateSections(QStringList &lines)
{
    static const QRegularExpression privately(QStringLiteral("\\A( *)private:\\z"));
    QString end;
    bool isPrivate = false;
    for (QString &line : lines) {
        const auto begin = privately.match(line);
        if (begin.hasMatch()) {
            end = begin.captured(1);
            isPrivate = true;
        } else if (isPrivate
                   && (line == end + QLatin1String("};") || line == end + QLatin1String("public:")
                       || line == end + QLatin1String("protected:"))) {
            isPrivate = false;
        }
        if (isPrivate)
            line.clear();
    }
}

} // namespace

QString siteHeader(const QString &header, const QString &path)
{
    const QString group = QFileInfo(path).path().section(QLatin1Char('/'), -1);
    const QString open = QStringLiteral(" /** \\addtogroup room_%1 */ /** \\{ */").arg(group);
    const QString close = QStringLiteral("/** \\} */ ");
    static const QRegularExpression opening(QStringLiteral("\\Anamespace [\\w:]+ \\{\\z"));
    static const QRegularExpression closing(QStringLiteral("\\A\\} // namespace [\\w:]+\\z"));
    QStringList lines = header.split(QLatin1Char('\n'));
    dropPrivateSections(lines);
    if (lines.first() == QLatin1String("#pragma once"))
        lines.first() += QLatin1String(" /** \\file */");
    const bool hasNamespace = header.contains(QLatin1String("\nnamespace "));
    int depth = 0;
    int lastInclude = -1;
    for (int i = 0; i < lines.size(); ++i) {
        QString &line = lines[i];
        if (opening.match(line).hasMatch()) {
            // A group is not within itself: it ends where another namespace begins in it.
            line = (depth > 0 ? close : QString()) + line + open;
            ++depth;
        } else if (closing.match(line).hasMatch()) {
            --depth;
            line.remove(0, 1);
            line = close + QLatin1Char('}') + (depth > 0 ? open : QString()) + line;
        } else if (line.startsWith(QLatin1String("#include"))) {
            lastInclude = i;
        }
    }
    // The host's platform is in no namespace.
    if (!hasNamespace && lastInclude >= 0) {
        lines[lastInclude] += open;
        lines.last() += close;
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace KelStd::site
