#include "house/SourceFiles.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd::test {

QString sourceText(const QString &relativePath)
{
    QFile file(QDir(QStringLiteral(KELSTD_TEST_SOURCE_DIR)).filePath(relativePath));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList sourcesUnder(const QString &folder)
{
    const QDir root(QStringLiteral(KELSTD_TEST_SOURCE_DIR));
    QStringList files;
    QDirIterator walk(root.filePath(folder), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                      QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files << root.relativeFilePath(walk.next());
    files.sort();
    return files;
}

QStringList ownIncludes(const QString &text)
{
    static const QRegularExpression include(
        QStringLiteral("^\\s*#\\s*include\\s*[<\"]((?:KelStd|cli)/[^>\"]+)[>\"]"),
        QRegularExpression::MultilineOption);
    QStringList found;
    auto matches = include.globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

QMap<QString, QStringList> includeGraph(const QString &folder)
{
    QMap<QString, QStringList> graph;
    for (const QString &file : sourcesUnder(folder))
        graph.insert(file, ownIncludes(sourceText(file)));
    return graph;
}

} // namespace KelStd::test
