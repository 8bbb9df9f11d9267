#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/Toolkits.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace KelStd {
namespace {

class ClearDirectory : public testing::Test
{
protected:
    QString path(const QString &relative) const { return place.filePath(relative); }

    /// Everything below `relative`, links and hidden entries included.
    QStringList entries(const QString &relative) const
    {
        return QDir(path(relative))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }

    QTemporaryDir place;
};

TEST_F(ClearDirectory, RemovesFilesAndFoldersButNotItself)
{
    test::writeFile(path(QStringLiteral("full/a.txt")), "a");
    test::writeFile(path(QStringLiteral("full/sub/deeper/b.txt")), "b");
    ASSERT_TRUE(QDir(place.path()).mkpath(QStringLiteral("full/empty")));
    test::writeFile(path(QStringLiteral("beside.txt")), "stays");

    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(QStringLiteral("full"))));
    EXPECT_TRUE(QDir(path(QStringLiteral("full"))).exists());
    EXPECT_EQ(entries(QStringLiteral("full")), QStringList());
    EXPECT_EQ(test::readFile(path(QStringLiteral("beside.txt"))), "stays");
}

TEST_F(ClearDirectory, RemovesHiddenEntries)
{
    test::writeFile(path(QStringLiteral("full/.hidden")), "h");
    test::writeFile(path(QStringLiteral("full/.folder/.deeper")), "h");
    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(QStringLiteral("full"))));
    EXPECT_EQ(entries(QStringLiteral("full")), QStringList());
}

TEST_F(ClearDirectory, RemovesLinksWithoutFollowingThem)
{
    test::writeFile(path(QStringLiteral("outside/kept.txt")), "kept");
    ASSERT_TRUE(QDir(place.path()).mkpath(QStringLiteral("full/sub")));
    const auto link = [this](const QString &target, const QString &name) {
        return QFile::link(path(target), path(name));
    };
    ASSERT_TRUE(link(QStringLiteral("outside"), QStringLiteral("full/folder")));
    ASSERT_TRUE(link(QStringLiteral("outside/kept.txt"), QStringLiteral("full/file")));
    ASSERT_TRUE(link(QStringLiteral("nowhere"), QStringLiteral("full/dangling")));
    ASSERT_TRUE(link(QStringLiteral("outside"), QStringLiteral("full/sub/folder")));
    ASSERT_TRUE(link(QStringLiteral("full"), QStringLiteral("full/sub/circle")));

    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(QStringLiteral("full"))));
    EXPECT_EQ(entries(QStringLiteral("full")), QStringList());
    EXPECT_EQ(test::readFile(path(QStringLiteral("outside/kept.txt"))), "kept");
}

TEST_F(ClearDirectory, RemovesNothingThroughALinkToADirectory)
{
    test::writeFile(path(QStringLiteral("outside/kept.txt")), "kept");
    ASSERT_TRUE(QFile::link(path(QStringLiteral("outside")), path(QStringLiteral("link"))));
    for (const char *end : {"", "/", "//", "/.", "/../link"}) {
        SCOPED_TRACE(end);
        EXPECT_FALSE(
            tk::Toolkits::ClearDirectory(path(QStringLiteral("link")) + QString::fromLatin1(end)));
        EXPECT_EQ(test::readFile(path(QStringLiteral("outside/kept.txt"))), "kept");
    }
    // A link further up is a way like any other.
    test::writeFile(path(QStringLiteral("outside/inner/gone.txt")), "gone");
    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(QStringLiteral("link/inner"))));
    EXPECT_EQ(entries(QStringLiteral("outside/inner")), QStringList());
}

TEST_F(ClearDirectory, RemovesAPipeWithoutOpeningIt)
{
    ASSERT_TRUE(QDir(place.path()).mkpath(QStringLiteral("full")));
    ASSERT_EQ(mkfifo(QFile::encodeName(path(QStringLiteral("full/pipe"))).constData(), 0600), 0);
    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(QStringLiteral("full"))));
    EXPECT_EQ(entries(QStringLiteral("full")), QStringList());
}

TEST_F(ClearDirectory, AnEmptyDirectoryIsAlreadyClear)
{
    ASSERT_TRUE(QDir(place.path()).mkpath(QStringLiteral("empty")));
    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(QStringLiteral("empty"))));
    EXPECT_TRUE(QDir(path(QStringLiteral("empty"))).exists());
}

TEST_F(ClearDirectory, WhatIsNoDirectoryIsRefused)
{
    test::writeFile(path(QStringLiteral("file")), "stays");
    EXPECT_FALSE(tk::Toolkits::ClearDirectory(path(QStringLiteral("missing"))));
    EXPECT_FALSE(QDir(path(QStringLiteral("missing"))).exists());
    EXPECT_FALSE(tk::Toolkits::ClearDirectory(path(QStringLiteral("file"))));
    EXPECT_EQ(test::readFile(path(QStringLiteral("file"))), "stays");
}

TEST_F(ClearDirectory, AnEmptyNameIsNotTheCurrentDirectory)
{
    const QString before = QDir::currentPath();
    test::writeFile(path(QStringLiteral("kept.txt")), "kept");
    ASSERT_TRUE(QDir::setCurrent(place.path()));
    EXPECT_FALSE(tk::Toolkits::ClearDirectory(QString()));
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(test::readFile(path(QStringLiteral("kept.txt"))), "kept");
}

TEST_F(ClearDirectory, NamesMayHoldBlanksQuotesAndOtherScripts)
{
    const QString folder = QString::fromUtf8("it's \"my\" Höhe %1");
    test::writeFile(path(folder + QString::fromUtf8("/* 高程.txt")), "x");
    EXPECT_TRUE(tk::Toolkits::ClearDirectory(path(folder)));
    EXPECT_EQ(entries(folder), QStringList());
}

} // namespace
} // namespace KelStd
