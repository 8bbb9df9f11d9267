// What each component of the installation holds, of which a package is made: nothing is missing,
// nothing stands in two of them, and nothing in none.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KelStd {
namespace {

const QString soversion = QStringLiteral(KELSTD_TEST_SOVERSION); ///< with Qt 6, "-qt6" behind it

/// "755 bin/kelstd", "link lib/libKelStd.so -> libKelStd.so.0": one for each file in a directory.
QStringList filesIn(const QString &directory)
{
    QStringList files;
    QDirIterator entries(directory,
                         QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QString name = QDir(directory).relativeFilePath(path);
        struct stat status = {};
        EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0);
        const QString mode = QString::number(status.st_mode & 07777U, 8);
        if (S_ISLNK(status.st_mode)) {
            const QByteArray target = QFile::encodeName(QFileInfo(path).symLinkTarget());
            files += QStringLiteral("link %1 -> %2")
                         .arg(name, QFileInfo(QFile::decodeName(target)).fileName());
        } else if (S_ISDIR(status.st_mode)) {
            EXPECT_EQ(mode, QStringLiteral("755")) << name;
        } else {
            files += mode + QLatin1Char(' ') + name;
        }
    }
    files.sort();
    return files;
}

class InstalledComponent : public testing::TestWithParam<const char *>
{
protected:
    /// Installs a component of the build into a directory of its own, under a mask that would let
    /// everybody write.
    void install(const QString &component)
    {
        QProcess cmake;
        cmake.setProcessChannelMode(QProcess::MergedChannels);
        cmake.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"), QStringLiteral("umask 0 && exec \"$@\""),
                     QStringLiteral("sh"), QStringLiteral(KELSTD_TEST_CMAKE),
                     QStringLiteral("--install"), QStringLiteral(KELSTD_TEST_BUILD_DIR),
                     QStringLiteral("--component"), component, QStringLiteral("--prefix"),
                     m_prefix.path()});
        ASSERT_TRUE(cmake.waitForFinished(120000));
        ASSERT_EQ(cmake.exitCode(), 0) << cmake.readAll().constData();
    }

    QTemporaryDir m_prefix;
};

INSTANTIATE_TEST_SUITE_P(Components, InstalledComponent, testing::Values(KELSTD_TEST_COMPONENTS),
                         [](const auto &row) { return std::string(row.param); });

TEST_P(InstalledComponent, HasTheFilesOfItsList)
{
    const QString component = QString::fromLatin1(GetParam());
    install(component);
    QStringList unlisted = filesIn(m_prefix.path());
    const QString list =
        test::sourceText(QStringLiteral("tests/packages/components/%1.txt").arg(component));
    for (const QString &line : list.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(QLatin1Char('#')))
            continue;
        // A star stands for what a name has between two slashes; "lib*" is lib/<architecture>, too.
        // SOVERSION differs with the Qt.
        QString form = QRegularExpression::escape(line);
        form.replace(QStringLiteral("lib\\*/"),
                     QStringLiteral("lib[^/]*(?:/[^/]+-linux-gnu[^/]*)?/"));
        form.replace(QStringLiteral("\\*"), QStringLiteral("[^/]*"));
        form.replace(QStringLiteral("SOVERSION"), QRegularExpression::escape(soversion));
        const QRegularExpression file(QRegularExpression::anchoredPattern(form));
        EXPECT_FALSE(unlisted.filter(file).isEmpty()) << "not installed: " << line;
        for (const QString &found : unlisted.filter(file))
            unlisted.removeAll(found);
    }
    EXPECT_EQ(unlisted, QStringList());
}

TEST_F(InstalledComponent, OfNoNameHasNothing)
{
    install(QStringLiteral("Unspecified"));
    EXPECT_EQ(filesIn(m_prefix.path()), QStringList());
}

// dpkg makes a package's libraries known by their names: those of the files have to be their own.
TEST_F(InstalledComponent, LibrariesAreCalledAsTheyCallThemselves)
{
    install(QStringLiteral("library"));
    QStringList names;
    QDirIterator libraries(m_prefix.path(), {QStringLiteral("*.so.") + soversion}, QDir::Files,
                           QDirIterator::Subdirectories);
    while (libraries.hasNext()) {
        const QString path = libraries.next();
        QProcess readelf;
        readelf.start(QStringLiteral("readelf"), {QStringLiteral("-d"), path});
        ASSERT_TRUE(readelf.waitForFinished());
        const QString text = QString::fromLatin1(readelf.readAllStandardOutput());
        static const QRegularExpression soname(QStringLiteral("SONAME.*\\[([^\\]]+)\\]"));
        EXPECT_EQ(soname.match(text).captured(1), QFileInfo(path).fileName());
        names += QFileInfo(path).fileName();
    }
    EXPECT_THAT(names,
                testing::UnorderedElementsAre(QStringLiteral("libKelStd.so.") + soversion,
                                              QStringLiteral("libKelStdPlatform.so.") + soversion));
}

} // namespace
} // namespace KelStd
