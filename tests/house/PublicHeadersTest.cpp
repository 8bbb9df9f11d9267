#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// What an installation holds under include/: the headers named in the folders' build files.
QStringList installedHeaders()
{
    QStringList headers;
    for (const QString &header : QStringLiteral(KELSTD_TEST_PUBLIC_HEADERS).split(QLatin1Char(',')))
        headers << QStringLiteral("KelStd/") + header;
    return headers;
}

TEST(PublicHeaders, IncludeOnlyPublicHeaders)
{
    const QStringList headers = installedHeaders();
    ASSERT_GT(headers.size(), 20);
    for (const QString &header : headers) {
        for (const QString &included : test::ownIncludes(test::sourceText(header)))
            EXPECT_TRUE(headers.contains(included)) << header << " includes " << included;
    }
}

TEST(PublicHeaders, AreAllThatTheProgramIncludes)
{
    const QStringList headers = installedHeaders();
    const QStringList sources =
        test::sourcesUnder(QStringLiteral("cli")) + test::sourcesUnder(QStringLiteral("python"));
    ASSERT_GT(sources.size(), 60);
    for (const QString &source : sources) {
        for (const QString &included : test::ownIncludes(test::sourceText(source)))
            EXPECT_TRUE(included.startsWith(QLatin1String("cli/")) || headers.contains(included))
                << source << " includes " << included;
    }
}

TEST(PublicHeaders, DoNotShowProj)
{
    const QRegularExpression proj(QStringLiteral("#\\s*include\\s*[<\"]proj"));
    for (const QString &header : installedHeaders())
        EXPECT_FALSE(test::sourceText(header).contains(proj)) << header;
}

/// That they compile without the keywords is shown by the target `public_headers_alone`.
TEST(PublicHeaders, UseNoKeywordsOfQt)
{
    const QRegularExpression keyword(
        QStringLiteral("^\\s*((signals|slots|(public|protected|private)\\s+slots)\\s*:|emit\\b)"),
        QRegularExpression::MultilineOption);
    for (const QString &header : installedHeaders())
        EXPECT_FALSE(test::sourceText(header).contains(keyword)) << header;
}

TEST(PublicHeaders, AllStandUnderTheUmbrella)
{
    const QStringList umbrella =
        test::ownIncludes(test::sourceText(QStringLiteral("KelStd/KelStd.h")));
    for (const QString &header : installedHeaders()) {
        if (header == QLatin1String("KelStd/KelStd.h")
            || header.endsWith(QLatin1String("Export.h")))
            continue; // the umbrella itself, and what only marks symbols
        EXPECT_TRUE(umbrella.contains(header)) << header;
    }
}

} // namespace
} // namespace KelStd
