#include "support/FullDisk.h"
#include "support/Printers.h"
#include "support/ScopedMask.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/Toolkits.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace KelStd {
namespace {

class CopyDirectory : public testing::Test
{
protected:
    QString path(const QString &relative) const { return place.filePath(relative); }

    void write(const char *relative, const QByteArray &bytes) const
    {
        test::writeFile(path(QString::fromUtf8(relative)), bytes);
    }
    QByteArray read(const char *relative) const
    {
        return test::readFile(path(QString::fromUtf8(relative)));
    }
    QStringList entries(const char *relative) const
    {
        return QDir(path(QString::fromUtf8(relative)))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                       QDir::Name);
    }
    bool copy(bool overwrite = true) const
    {
        return tk::Toolkits::CopyDirectory(path(QStringLiteral("source")),
                                           path(QStringLiteral("target")), overwrite);
    }

    QTemporaryDir place;
};

TEST_F(CopyDirectory, CreatesTheTargetAndCopiesEverything)
{
    const QByteArray large(3 * 1024 * 1024 + 17, 'x'); // longer than any piece copied at once
    write("source/a.gtx", "first");
    write("source/sub/deeper/b.gtx", "second");
    write("source/empty.gtx", "");
    write("source/large.gtx", large);
    write("source/binary.gtx", QByteArray("\0\xff\r\n\x1a", 5));
    ASSERT_TRUE(QDir(place.path()).mkpath(QStringLiteral("source/empty folder")));

    EXPECT_TRUE(tk::Toolkits::CopyDirectory(path(QStringLiteral("source")),
                                            path(QStringLiteral("new/target")), true));
    EXPECT_EQ(entries("new/target"), entries("source"));
    EXPECT_EQ(read("new/target/a.gtx"), "first");
    EXPECT_EQ(read("new/target/sub/deeper/b.gtx"), "second");
    EXPECT_EQ(read("new/target/empty.gtx"), "");
    EXPECT_TRUE(read("new/target/large.gtx") == large);
    EXPECT_EQ(read("new/target/binary.gtx"), QByteArray("\0\xff\r\n\x1a", 5));
    EXPECT_TRUE(QFileInfo(path(QStringLiteral("new/target/empty folder"))).isDir());
}

TEST_F(CopyDirectory, CopiesHiddenFilesAndFolders)
{
    write("source/.hidden", "h");
    write("source/.folder/.deeper", "d");
    EXPECT_TRUE(copy());
    EXPECT_EQ(read("target/.hidden"), "h");
    EXPECT_EQ(read("target/.folder/.deeper"), "d");
}

TEST_F(CopyDirectory, WhatOnlyTheTargetHasStays)
{
    write("source/ours.gtx", "ours");
    write("target/users.gtx", "users");
    write("target/folder/users.gtx", "users");
    EXPECT_TRUE(copy());
    EXPECT_EQ(read("target/users.gtx"), "users");
    EXPECT_EQ(read("target/folder/users.gtx"), "users");
    EXPECT_EQ(read("target/ours.gtx"), "ours");
    EXPECT_EQ(read("source/ours.gtx"), "ours");
}

TEST_F(CopyDirectory, OverwritingReplacesAndNotOverwritingLeaves)
{
    write("source/a.gtx", "new");
    write("source/b.gtx", "b");
    write("target/a.gtx", "old and longer");
    EXPECT_TRUE(copy(false));
    EXPECT_EQ(read("target/a.gtx"), "old and longer");
    EXPECT_EQ(read("target/b.gtx"), "b");
    EXPECT_TRUE(copy(true));
    EXPECT_EQ(read("target/a.gtx"), "new");
}

TEST_F(CopyDirectory, WhoeverReadsTheOldFileGoesOnReadingItWhole)
{
    write("source/a.gtx", "new");
    write("target/a.gtx", "old");
    QFile reader(path(QStringLiteral("target/a.gtx")));
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    EXPECT_TRUE(copy());
    EXPECT_EQ(reader.readAll(), "old");
    EXPECT_EQ(read("target/a.gtx"), "new");
    EXPECT_EQ(entries("target"), QStringList(QStringLiteral("a.gtx")));
}

TEST_F(CopyDirectory, ACopyThatDoesNotFitLeavesTheOldFile)
{
    write("source/a.gtx", QByteArray(200000, 'n'));
    write("source/b.gtx", "small");
    write("target/a.gtx", "old");
    bool complete = true;
    {
        const test::FullDisk limit(4096);
        complete = copy();
    }
    EXPECT_FALSE(complete);
    EXPECT_EQ(read("target/a.gtx"), "old");
    EXPECT_EQ(read("target/b.gtx"), "small"); // what could be copied is there
    EXPECT_EQ(entries("target"), QStringList({QStringLiteral("a.gtx"), QStringLiteral("b.gtx")}));
}

/// The last bytes are written from a buffer when the copy is already there.
TEST_F(CopyDirectory, ASmallCopyThatDoesNotFitLeavesTheOldFile)
{
    write("source/a.gtx", QByteArray(1000, 'x'));
    write("target/a.gtx", "old");
    bool complete = true;
    {
        const test::FullDisk limit(999);
        complete = copy();
    }
    EXPECT_FALSE(complete);
    EXPECT_EQ(read("target/a.gtx"), "old");
    EXPECT_EQ(entries("target"), QStringList(QStringLiteral("a.gtx")));
}

TEST_F(CopyDirectory, ALinkToAFileIsCopiedAsAFile)
{
    write("outside.gtx", "content");
    ASSERT_TRUE(QDir(place.path()).mkpath(QStringLiteral("source")));
    ASSERT_TRUE(
        QFile::link(path(QStringLiteral("outside.gtx")), path(QStringLiteral("source/l.gtx"))));
    EXPECT_TRUE(copy());
    EXPECT_FALSE(QFileInfo(path(QStringLiteral("target/l.gtx"))).isSymLink());
    EXPECT_EQ(read("target/l.gtx"), "content");
}

TEST_F(CopyDirectory, NothingIsWrittenThroughALinkInTheTarget)
{
    write("source/a.gtx", "new");
    write("source/b.gtx", "new");
    write("source/gone.gtx", "new");
    write("source/sub/c.gtx", "new");
    write("outside/file", "the user's");
    write("outside/folder/c.gtx", "the user's");
    write("target/b.gtx", "old");
    const auto link = [this](const char *to, const char *name) {
        return QFile::link(path(QString::fromUtf8(to)), path(QString::fromUtf8(name)));
    };
    ASSERT_TRUE(link("outside/file", "target/a.gtx"));
    ASSERT_TRUE(link("outside/nothing", "target/gone.gtx"));
    ASSERT_TRUE(link("outside/folder", "target/sub"));
    EXPECT_FALSE(copy());
    EXPECT_EQ(read("outside/file"), "the user's");
    EXPECT_EQ(read("outside/folder/c.gtx"), "the user's");
    EXPECT_EQ(entries("outside"), (QStringList{"file", "folder"}));
    EXPECT_EQ(read("target/b.gtx"), "new");
}

TEST_F(CopyDirectory, LinksToDirectoriesAreNotFollowed)
{
    write("source/a.gtx", "a");
    write("outside/b.gtx", "b");
    ASSERT_TRUE(QFile::link(path(QStringLiteral("source")), path(QStringLiteral("source/circle"))));
    ASSERT_TRUE(QFile::link(path(QStringLiteral("outside")), path(QStringLiteral("source/out"))));
    copy();
    EXPECT_EQ(read("target/a.gtx"), "a");
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("target/circle/a.gtx"))));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("target/out/b.gtx"))));
}

TEST_F(CopyDirectory, WhatCannotBeCopiedMakesTheResultFalseAndStopsNothing)
{
    write("source/a.gtx", "a");
    write("source/z.gtx", "z");
    ASSERT_TRUE(
        QFile::link(path(QStringLiteral("nowhere")), path(QStringLiteral("source/dangling"))));
    ASSERT_EQ(mkfifo(QFile::encodeName(path(QStringLiteral("source/pipe"))).constData(), 0600), 0);
    EXPECT_FALSE(copy());
    EXPECT_EQ(entries("target"), QStringList({QStringLiteral("a.gtx"), QStringLiteral("z.gtx")}));
}

TEST_F(CopyDirectory, AFileDoesNotReplaceAFolderNorAFolderAFile)
{
    write("source/x", "a file");
    write("source/y/inner", "in a folder");
    write("source/z", "z");
    write("target/x/kept", "kept");
    write("target/y", "a file");
    EXPECT_FALSE(copy());
    EXPECT_EQ(read("target/x/kept"), "kept");
    EXPECT_EQ(read("target/y"), "a file");
    EXPECT_EQ(read("target/z"), "z");
}

TEST_F(CopyDirectory, ASourceThatIsNoDirectoryIsRefused)
{
    write("file", "f");
    const QString target = path(QStringLiteral("target"));
    EXPECT_FALSE(copy());
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(path(QStringLiteral("file")), target, true));
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(QString(), target, true));
    EXPECT_FALSE(QFileInfo::exists(target));
}

TEST_F(CopyDirectory, ATargetThatCannotBeMadeIsRefused)
{
    write("source/a.gtx", "a");
    write("target", "a file");
    EXPECT_FALSE(copy());
    EXPECT_EQ(read("target"), "a file");
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(path(QStringLiteral("source")), QString(), true));
}

TEST_F(CopyDirectory, ATargetInsideTheSourceIsRefused)
{
    write("source/a.gtx", "a");
    write("source/sub/b.gtx", "b");
    const QString source = path(QStringLiteral("source"));
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(source, source, true));
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(source, path(QStringLiteral("source/sub")), true));
    EXPECT_EQ(entries("source/sub"), QStringList(QStringLiteral("b.gtx")));
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(source, path(QStringLiteral("source/sub/new")), true));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("source/sub/new/a.gtx"))));

    // Through a link the target lies inside just as well.
    ASSERT_TRUE(QFile::link(source, path(QStringLiteral("link"))));
    EXPECT_FALSE(tk::Toolkits::CopyDirectory(source, path(QStringLiteral("link/sub")), true));
    EXPECT_EQ(entries("source/sub").contains(QStringLiteral("a.gtx")), false);
}

TEST_F(CopyDirectory, ATargetWhoseNameBeginsLikeTheSourceIsNotInside)
{
    write("source/a.gtx", "a");
    EXPECT_TRUE(tk::Toolkits::CopyDirectory(path(QStringLiteral("source")),
                                            path(QStringLiteral("source2")), true));
    EXPECT_EQ(read("source2/a.gtx"), "a");
}

/// A user's mask may leave everything to everybody.
TEST_F(CopyDirectory, WhatIsNewIsNotForAllToWrite)
{
    write("source/a.gtx", "a");
    write("source/sub/b.gtx", "b");
    write("target/a.gtx", "the user's");
    const auto modeOf = [this](const char *relative) {
        struct stat status = {};
        EXPECT_EQ(stat(QFile::encodeName(path(QString::fromUtf8(relative))).constData(), &status),
                  0);
        return status.st_mode & 0777U;
    };
    const mode_t before = modeOf("target/a.gtx");
    {
        const test::ScopedMask nothing(0);
        EXPECT_TRUE(copy());
        EXPECT_TRUE(tk::Toolkits::CopyDirectory(path(QStringLiteral("source")),
                                                path(QStringLiteral("new/target")), true));
    }
    EXPECT_EQ(modeOf("target/a.gtx"), before) << "what is replaced keeps its own";
    EXPECT_EQ(modeOf("target/sub"), 0775U);
    EXPECT_EQ(modeOf("target/sub/b.gtx"), 0664U);
    EXPECT_EQ(modeOf("new"), 0775U);
    EXPECT_EQ(modeOf("new/target"), 0775U);
    EXPECT_EQ(modeOf("new/target/sub"), 0775U);
}

TEST_F(CopyDirectory, NamesMayHoldBlanksQuotesAndOtherScripts)
{
    const char *name = "source/it's \"my\" Höhe %1 高程.gtx";
    write(name, "a");
    EXPECT_TRUE(copy());
    EXPECT_EQ(entries("target"), entries("source"));
}

} // namespace
} // namespace KelStd
