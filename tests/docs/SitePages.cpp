#include "docs/SitePages.h"

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd::test {

QDir site()
{
    return QDir(QStringLiteral(KELSTD_TEST_SITE));
}

QStringList sitePages()
{
    return site().entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
}

QString siteText(const QString &name)
{
    return QString::fromUtf8(readFile(site().filePath(name)));
}

QString shownText(const QString &html)
{
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    static const QRegularExpression script(QStringLiteral("<script.*?</script>"),
                                           QRegularExpression::DotMatchesEverythingOption);
    struct Entity
    {
        const char *name;
        const char16_t *text;
    };
    static const Entity entities[] = {
        {"&lt;", u"<"},          {"&gt;", u">"},         {"&quot;", u"\""},
        {"&#39;", u"'"},         {"&#160;", u" "},       {"&nbsp;", u" "},
        {"&deg;", u"\u00b0"},    {"&ordm;", u"\u00ba"},  {"&prime;", u"\u2032"},
        {"&Prime;", u"\u2033"},  {"&rsquo;", u"\u2019"}, {"&rdquo;", u"\u201d"},
        {"&Oslash;", u"\u00d8"}, {"&auml;", u"\u00e4"},  {"&ouml;", u"\u00f6"},
        {"&uuml;", u"\u00fc"},   {"&amp;", u"&"},
    };
    QString text = html.mid(html.indexOf(QLatin1String("<div class=\"header\">")));
    text.remove(script).remove(tag);
    for (const Entity &entity : entities)
        text.replace(QLatin1String(entity.name), QString::fromUtf16(entity.text));
    return text.simplified();
}

} // namespace KelStd::test
