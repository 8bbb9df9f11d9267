// Code and outputs shown in the documents are those of files that are compiled and run by tests.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

QString codeBlock(const QString &language, const QString &text)
{
    return QStringLiteral("```") + language + QLatin1Char('\n') + text.trimmed()
           + QLatin1String("\n```");
}

TEST(Readme, ShowsTheQuickstartAsItIsCompiled)
{
    const QString readme = test::sourceText(QStringLiteral("README.md"));
    EXPECT_TRUE(readme.contains(codeBlock(
        QStringLiteral("cpp"), test::sourceText(QStringLiteral("examples/quickstart/main.cpp")))));
}

TEST(Readme, ShowsTheQuickstartsOutput)
{
    const QString readme = test::sourceText(QStringLiteral("README.md"));
    EXPECT_TRUE(readme.contains(
        codeBlock(QStringLiteral("text"),
                  test::sourceText(QStringLiteral("examples/quickstart/expected_output.txt")))));
}

} // namespace
} // namespace KelStd
