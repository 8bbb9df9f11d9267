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

struct ShownFile
{
    const char *testName;
    const char *language;
    const char *file;
};

void PrintTo(const ShownFile &shown, std::ostream *out)
{
    *out << shown.testName;
}

class BuildGuide : public testing::TestWithParam<ShownFile>
{};

/// The files are those of projects that tests/consumer builds.
TEST_P(BuildGuide, ShowsTheFileAsItIsBuilt)
{
    const QString page = test::sourceText(QStringLiteral("docs/build-with-kelstd.md"));
    EXPECT_TRUE(page.contains(codeBlock(QLatin1String(GetParam().language),
                                        test::sourceText(QLatin1String(GetParam().file)))));
}

INSTANTIATE_TEST_SUITE_P(
    Of, BuildGuide,
    testing::Values(
        ShownFile{"Package", "cmake", "examples/quickstart/CMakeLists.txt"},
        ShownFile{"Makefile", "make", "examples/quickstart/Makefile"},
        ShownFile{"Subdirectory", "cmake", "tests/consumer/in_tree/AddSubdirectory.cmake"},
        ShownFile{"FetchedContent", "cmake", "tests/consumer/in_tree/FetchContent.cmake"},
        ShownFile{"MakefileOfAHost", "make", "tests/consumer/host_platform/Makefile"}),
    [](const testing::TestParamInfo<ShownFile> &shown) { return shown.param.testName; });

TEST(BuildGuideOfAHost, ShowsHowItLinks)
{
    const QString lists =
        test::sourceText(QStringLiteral("tests/consumer/host_platform/CMakeLists.txt"));
    const QString page = test::sourceText(QStringLiteral("docs/build-with-kelstd.md"));
    const QString linking = lists.mid(lists.indexOf(QLatin1String("set_target_properties")));
    EXPECT_FALSE(linking.isEmpty());
    EXPECT_TRUE(page.contains(codeBlock(QStringLiteral("cmake"), linking)));
}

} // namespace
} // namespace KelStd
