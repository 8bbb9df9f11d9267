// Every path that the front pages name is there.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

const QDir &root()
{
    static const QDir directory(QStringLiteral(KELSTD_TEST_SOURCE_DIR));
    return directory;
}

/// Words in backticks and targets of links, without blocks of code.
QStringList namedIn(const QString &text)
{
    static const QRegularExpression code(QStringLiteral("```.*?```"),
                                         QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression named(QStringLiteral("`([^`\\s]+)`|\\]\\(([^)#\\s]+)"));
    QString words = text;
    words.remove(code);
    QStringList found;
    auto matches = named.globalMatch(words);
    while (matches.hasNext()) {
        const auto match = matches.next();
        found += match.captured(match.lastCapturedIndex());
    }
    return found;
}

/// Whether the word is a path of the tree: it has a slash, or ends as sources do. What begins with
/// a capital placeholder, a dot or a sign is none, and what a build makes may not be there yet.
bool isPath(const QString &word)
{
    static const QRegularExpression path(
        QStringLiteral("\\A[A-Za-z][\\w.-]*(/[\\w.-]*)+\\z|\\A\\w+\\.(cpp|h|md|cmake|sh|py)\\z"));
    return path.match(word).hasMatch() && !word.startsWith(QLatin1String("build/"));
}

/// From the root, from the library, or beside the path that was named before it.
bool exists(const QString &path, const QString &before)
{
    for (const QString &from : {QString(), QStringLiteral("KelStd"), QFileInfo(before).path(),
                                QStringLiteral("KelStd/") + QFileInfo(before).path()}) {
        if (QFileInfo::exists(root().filePath(from.isEmpty() ? path : from + '/' + path)))
            return true;
    }
    return false;
}

class NamedPaths : public testing::TestWithParam<const char *>
{};

TEST_P(NamedPaths, AreThere)
{
    int paths = 0;
    QString before;
    for (const QString &word : namedIn(test::sourceText(QString::fromLatin1(GetParam())))) {
        if (!isPath(word))
            continue;
        ++paths;
        EXPECT_TRUE(exists(word, before)) << GetParam() << " names " << word;
        if (word.contains(QLatin1Char('/')))
            before = word;
    }
    EXPECT_GT(paths, 5) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(FrontPage, NamedPaths,
                         testing::Values("README.md", "ARCHITECTURE.md", "CONTRIBUTING.md"));

TEST(NamedPathWords, AreToldFromOtherWords)
{
    const QStringList words = namedIn(QStringLiteral(
        "`a/b.h` and [c](docs/c.md#part), `one word` `B.cpp`\n```\n`x/y`\n```\n`<KelStd/z.h>`"));
    EXPECT_EQ(words, (QStringList{"a/b.h", "docs/c.md", "B.cpp", "<KelStd/z.h>"}));
    EXPECT_TRUE(isPath(QStringLiteral("docs/c.md")));
    EXPECT_TRUE(isPath(QStringLiteral("B.cpp")));
    EXPECT_FALSE(isPath(QStringLiteral("<KelStd/z.h>")));
    EXPECT_FALSE(isPath(QStringLiteral("proj.zip")));
    EXPECT_FALSE(exists(QStringLiteral("KelStd/no/such.h"), QString()));
}

} // namespace
} // namespace KelStd
