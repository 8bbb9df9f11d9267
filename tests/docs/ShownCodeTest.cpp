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

/// Code without its blanks: how it is broken into lines says nothing.
QString flattened(QString code)
{
    static const QRegularExpression blank(QStringLiteral("\\s+"));
    return code.remove(blank);
}

/// All that is compiled and run.
QString examples()
{
    QString all = flattened(test::sourceText(QStringLiteral("examples/quickstart/main.cpp")));
    for (const QString &file : test::sourcesUnder(QStringLiteral("examples/api")))
        all += flattened(test::sourceText(file));
    return all;
}

/// The blocks of code in a header's comments: lines that stand four blanks to the right of others,
/// of which one ends a statement or compares.
QStringList blocksInComments(const QString &header)
{
    static const QRegularExpression block(QStringLiteral("^ *///\\n((?: *///(?:     .*)?\\n)+)"),
                                          QRegularExpression::MultilineOption);
    static const QRegularExpression mark(QStringLiteral("^ *///(?:     )?"),
                                         QRegularExpression::MultilineOption);
    QStringList blocks;
    auto found = block.globalMatch(header);
    while (found.hasNext()) {
        const QString code = found.next().captured(1).remove(mark).trimmed();
        const bool isCode = code.contains(QLatin1Char(';')) || code.contains(QLatin1String("=="));
        if (isCode && !code.startsWith(QLatin1Char('<')))
            blocks += code;
    }
    return blocks;
}

/// An expression in each line stands for itself.
QStringList partsOf(const QString &block)
{
    const bool areExpressions =
        block.contains(QLatin1String("==")) && !block.contains(QLatin1String("if ("));
    return areExpressions ? block.split(QLatin1Char('\n')) : QStringList(block);
}

TEST(ShownCode, StandsInAnExampleThatIsCompiledAndRun)
{
    const QDir root(QStringLiteral(KELSTD_TEST_SOURCE_DIR));
    const QString compiled = examples();
    int blocks = 0;
    QDirIterator pages(root.filePath(QStringLiteral("docs")), {QStringLiteral("*.md")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (pages.hasNext()) {
        const QString page = root.relativeFilePath(pages.next());
        for (const QString &block : test::blocksOf(test::sourceText(page), QStringLiteral("cpp"))) {
            ++blocks;
            EXPECT_TRUE(compiled.contains(flattened(block))) << page << "\n" << block;
        }
    }
    EXPECT_GE(blocks, 7);
}

TEST(CodeInComments, StandsInAnExampleThatIsCompiledAndRun)
{
    const QString compiled = examples();
    int blocks = 0;
    for (const QString &header :
         QStringLiteral(KELSTD_TEST_PUBLIC_HEADERS).split(QLatin1Char(','))) {
        const QString text = test::sourceText(QStringLiteral("KelStd/") + header);
        for (const QString &block : blocksInComments(text)) {
            ++blocks;
            for (const QString &part : partsOf(block))
                EXPECT_TRUE(compiled.contains(flattened(part))) << header << "\n" << part;
        }
    }
    EXPECT_GE(blocks, 25);
}

} // namespace
} // namespace KelStd
