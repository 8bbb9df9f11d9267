// Every link of the site leads somewhere, without a network.

#include "docs/SitePages.h"
#include "docs/site/SitePage.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QDirIterator>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QUrl>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// The anchors of a page.
QSet<QString> anchorsOf(const QString &html)
{
    static const QRegularExpression anchor(QStringLiteral("(?:id|name)=\"([^\"]+)\""));
    QSet<QString> anchors;
    auto found = anchor.globalMatch(html);
    while (found.hasNext())
        anchors.insert(found.next().captured(1));
    return anchors;
}

class Site : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString &name : test::sitePages())
            m_pages.insert(name, test::siteText(name));
        ASSERT_GT(m_pages.size(), 200);
    }

    const QSet<QString> &anchors(const QString &page)
    {
        auto known = m_anchors.find(page);
        if (known == m_anchors.end())
            known = m_anchors.insert(page, anchorsOf(m_pages.value(page)));
        return *known;
    }

    /// What is wrong with a link; empty for nothing.
    QString faultOf(const QString &page, const QString &link)
    {
        if (link.startsWith(QLatin1String("javascript:")))
            return {};
        const QUrl url(link);
        if (!url.scheme().isEmpty()) // the generator's own name at the foot
            return url.host() == QLatin1String("www.doxygen.org") ? QString()
                                                                  : QStringLiteral("outside");
        const QString file = url.path().isEmpty() ? page : url.path();
        if (!test::site().exists(file))
            return QStringLiteral("no such file");
        const QString anchor = url.fragment(QUrl::FullyDecoded);
        if (!anchor.isEmpty() && !anchors(file).contains(anchor))
            return QStringLiteral("no such anchor");
        return {};
    }

    QHash<QString, QString> m_pages;
    QHash<QString, QSet<QString>> m_anchors;
};

TEST_F(Site, EveryLinkLeadsSomewhereOffline)
{
    static const QRegularExpression link(QStringLiteral("\\s(?:href|src)=\"([^\"]*)\""));
    int links = 0;
    for (auto page = m_pages.begin(); page != m_pages.end(); ++page) {
        auto found = link.globalMatch(page.value());
        while (found.hasNext()) {
            const QString target =
                found.next().captured(1).replace(QLatin1String("&amp;"), QLatin1String("&"));
            ++links;
            const QString fault = faultOf(page.key(), target);
            EXPECT_TRUE(fault.isEmpty()) << page.key() << ": " << target << ": " << fault;
        }
    }
    EXPECT_GT(links, 5000);
}

TEST_F(Site, TheMenuAndTheTreeLeadSomewhere)
{
    static const QRegularExpression link(QStringLiteral("\"([\\w.-]+\\.html)(?:#([\\w-]+))?\""));
    QDirIterator scripts(test::site().path(), {QStringLiteral("*.js")}, QDir::Files,
                         QDirIterator::Subdirectories);
    int links = 0;
    while (scripts.hasNext()) {
        const QString script = QDir(test::site()).relativeFilePath(scripts.next());
        auto found = link.globalMatch(test::siteText(script));
        while (found.hasNext()) {
            const auto match = found.next();
            ++links;
            EXPECT_TRUE(m_pages.contains(match.captured(1))) << script << ": " << match.captured(0);
            const QString anchor = match.captured(2);
            EXPECT_TRUE(anchor.isEmpty() || anchors(match.captured(1)).contains(anchor))
                << script << ": " << match.captured(0);
        }
    }
    EXPECT_GT(links, 500);
}

TEST_F(Site, NothingIsFetchedFromElsewhere)
{
    static const QRegularExpression fetched(
        QStringLiteral("(?:src=\"|url\\(\\W?|@import\\s+\\W?)(?:https?:)?//"));
    QDirIterator files(test::site().path(), {QStringLiteral("*.html"), QStringLiteral("*.css")},
                       QDir::Files);
    while (files.hasNext()) {
        const QString name = QFileInfo(files.next()).fileName();
        EXPECT_FALSE(fetched.match(test::siteText(name)).hasMatch()) << name;
    }
}

TEST_F(Site, EveryPageAndEveryPublicHeaderIsThereAndInTheTree)
{
    const QDir docs(QStringLiteral(KELSTD_TEST_SOURCE_DIR) + QStringLiteral("/docs"));
    const QString layout = test::sourceText(QStringLiteral("docs/site/Layout.xml"));
    QDirIterator pages(docs.path(), {QStringLiteral("*.md")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (pages.hasNext()) {
        const QString name = site::pageName(docs.relativeFilePath(pages.next()));
        EXPECT_TRUE(m_pages.contains(name + QStringLiteral(".html"))) << name;
        const bool isInTree = name == QLatin1String("index")
                              || layout.contains(QStringLiteral("\"@ref %1\"").arg(name));
        EXPECT_TRUE(isInTree) << name;
    }
    const QString files = m_pages.value(QStringLiteral("files.html"));
    for (const QString &header :
         QStringLiteral(KELSTD_TEST_PUBLIC_HEADERS).split(QLatin1Char(','))) {
        const QString name = header.section(QLatin1Char('/'), -1);
        EXPECT_TRUE(files.contains(QStringLiteral(">%1<").arg(name))) << header;
    }
}

// Signs that the generator could take for commands of its own or for the marks of Markdown.
TEST_F(Site, EverySpanOfCodeIsShownAsItIsWritten)
{
    static const QRegularExpression fenced(QStringLiteral("^```.*?^```$"),
                                           QRegularExpression::DotMatchesEverythingOption
                                               | QRegularExpression::MultilineOption);
    static const QRegularExpression span(QStringLiteral("`([^`]+)`"));
    const QDir docs(QStringLiteral(KELSTD_TEST_SOURCE_DIR) + QStringLiteral("/docs"));
    QDirIterator pages(docs.path(), {QStringLiteral("*.md")}, QDir::Files,
                       QDirIterator::Subdirectories);
    int spans = 0;
    while (pages.hasNext()) {
        const QString path = docs.relativeFilePath(pages.next());
        const QString shown =
            test::shownText(m_pages.value(site::pageName(path) + QStringLiteral(".html")));
        QString text = test::sourceText(QStringLiteral("docs/") + path);
        auto found = span.globalMatch(text.remove(fenced));
        while (found.hasNext()) {
            ++spans;
            const QString code = found.next()
                                     .captured(1)
                                     .replace(QLatin1String("\\|"), QLatin1String("|"))
                                     .simplified();
            EXPECT_TRUE(shown.contains(code)) << path << ": " << code;
        }
    }
    EXPECT_GT(spans, 500);
}

TEST_F(Site, EveryCommandHasAPageOfItsOwnHelp)
{
    const QString all = test::shownText(m_pages.value(QStringLiteral("commands.html")));
    EXPECT_TRUE(all.contains(QStringLiteral("Positions of one frame in all frames")));
    const QString fit = test::shownText(m_pages.value(QStringLiteral("command-site-fit.html")));
    for (const char *said :
         {"kelstd site fit --system EPSG:28992 --points control.csv -o new.xml",
          "Fits a building site to control points that were measured.", "--horizontal METHOD",
          "four, rotation, shift or none. Default: four."})
        EXPECT_TRUE(fit.contains(QString::fromLatin1(said))) << said;
    EXPECT_TRUE(test::shownText(m_pages.value(QStringLiteral("command-convert.html")))
                    .contains(QStringLiteral("--system FILE.xml|NAME")));
}

} // namespace
} // namespace KelStd
