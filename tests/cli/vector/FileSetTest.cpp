// A file with those that belong to it, which takes its place whole or not at all.

#include <cli/vector/FileSet.h>

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using cli::vector::FileSet;
using test::readFile;
using test::writeFile;

class FileSets : public testing::Test
{
protected:
    QString path(const char *name) const { return m_home.path(QString::fromLatin1(name)); }
    QStringList names() const
    {
        return QDir(m_home.path())
            .entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    test::TemporaryHome m_home{test::TemporaryHome::Empty};
};

TEST_F(FileSets, TakeTheirPlaceTogether)
{
    writeFile(path("roads.shp"), "other");
    writeFile(path("points.shp"), "old");
    writeFile(path("points.dbf"), "old");
    writeFile(path("points.qix"), "an index of the old one");
    {
        FileSet set(path("points.shp"));
        EXPECT_EQ(set.existing().size(), 3);
        QString error;
        ASSERT_TRUE(set.prepare(error)) << error;
        writeFile(set.path(), "new");
        writeFile(QString(set.path()).replace(".shp", ".dbf"), "new");
        EXPECT_EQ(readFile(path("points.shp")), "old");
        ASSERT_TRUE(set.commit(error)) << error;
    }
    EXPECT_EQ(names(), (QStringList{"points.dbf", "points.shp", "roads.shp"}));
    EXPECT_EQ(readFile(path("points.shp")), "new");
    EXPECT_EQ(readFile(path("points.dbf")), "new");
}

TEST_F(FileSets, ThatAreNotFinishedLeaveNothing)
{
    writeFile(path("a.gpkg"), "old");
    {
        FileSet set(path("a.gpkg"));
        QString error;
        ASSERT_TRUE(set.prepare(error)) << error;
        writeFile(set.path(), "half");
    }
    EXPECT_EQ(names(), QStringList{"a.gpkg"});
    EXPECT_EQ(readFile(path("a.gpkg")), "old");
}

// A directory stands where the second file has to go.
TEST_F(FileSets, ThatCannotTakeTheirPlacePutBackWhatWasThere)
{
    writeFile(path("points.shp"), "old");
    QDir(m_home.path()).mkpath("points.zzz/full");
    {
        FileSet set(path("points.shp"));
        QString error;
        ASSERT_TRUE(set.prepare(error)) << error;
        writeFile(set.path(), "new");
        writeFile(QString(set.path()).replace(".shp", ".zzz"), "new");
        EXPECT_FALSE(set.commit(error));
        EXPECT_NE(error, "");
    }
    EXPECT_EQ(names(), (QStringList{"points.shp", "points.zzz"}));
    EXPECT_EQ(readFile(path("points.shp")), "old");
}

// SQLite would apply it to the new database.
TEST_F(FileSets, OfADatabaseTakeItsJournalAway)
{
    writeFile(path("a.gpkg"), "old");
    writeFile(path("a.gpkg-wal"), "journal");
    {
        FileSet set(path("a.gpkg"));
        QString error;
        ASSERT_TRUE(set.prepare(error)) << error;
        writeFile(set.path(), "new");
        ASSERT_TRUE(set.commit(error)) << error;
    }
    EXPECT_EQ(names(), QStringList{"a.gpkg"});
}

TEST_F(FileSets, FollowALinkAndKeepPermissions)
{
    writeFile(path("real.gpkg"), "old");
    QFile::setPermissions(path("real.gpkg"), QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(QFile::link(path("real.gpkg"), path("link.gpkg")));
    {
        FileSet set(path("link.gpkg"));
        QString error;
        ASSERT_TRUE(set.prepare(error)) << error;
        writeFile(set.path(), "new");
        ASSERT_TRUE(set.commit(error)) << error;
    }
    EXPECT_EQ(readFile(path("real.gpkg")), "new");
    EXPECT_TRUE(QFileInfo(path("link.gpkg")).isSymLink());
    EXPECT_FALSE(QFileInfo(path("real.gpkg")).permissions() & QFile::ReadOther);
}

TEST_F(FileSets, CannotBeMadeWhereThereIsNoDirectory)
{
    FileSet set(path("missing/a.gpkg"));
    QString error;
    EXPECT_FALSE(set.prepare(error));
    EXPECT_NE(error, "");
}

} // namespace
} // namespace KelStd
