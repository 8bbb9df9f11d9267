// Code on the pages is that of files which are compiled and run.

#include "docs/PageTables.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// Lines without the blanks in front of them, which say only how deep in a function they stand.
QString flattened(const QString &code)
{
    static const QRegularExpression indent(QStringLiteral("^ +"),
                                           QRegularExpression::MultilineOption);
    return QString(code).remove(indent).trimmed();
}

TEST(ShownCode, StandsInAnExampleThatIsCompiledAndRun)
{
    const QDir root(QStringLiteral(KELSTD_TEST_SOURCE_DIR));
    QString examples = flattened(test::sourceText(QStringLiteral("examples/quickstart/main.cpp")));
    for (const QString &file : test::sourcesUnder(QStringLiteral("examples/api")))
        examples += QLatin1Char('\n') + flattened(test::sourceText(file));
    int blocks = 0;
    QDirIterator pages(root.filePath(QStringLiteral("docs")), {QStringLiteral("*.md")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (pages.hasNext()) {
        const QString page = root.relativeFilePath(pages.next());
        for (const QString &block : test::blocksOf(test::sourceText(page), QStringLiteral("cpp"))) {
            ++blocks;
            EXPECT_TRUE(examples.contains(flattened(block))) << page << "\n" << block;
        }
    }
    EXPECT_GE(blocks, 7);
}

} // namespace
} // namespace KelStd
