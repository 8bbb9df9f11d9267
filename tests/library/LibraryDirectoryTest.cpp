// Libraries in directories: their places, what is loaded of them, how one is laid out, and the lock
// of who changes one.

#include "library/RecordKinds.h"

#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/library/LibraryLock.h>

#include <QtCore/QDir>

namespace KelStd::test {
namespace {

using Kind = LibraryFailureKind;

class Directories : public LibraryTest
{
protected:
    LibraryDirectory directory(const char *name) const { return LibraryDirectory(path(name)); }

    QStringList everythingIn(const char *folder) const
    {
        QStringList names = entries(folder);
        names.removeAll(QStringLiteral(".library.lock"));
        return names;
    }

    /// A library of one system beside its place, as it is delivered.
    LibraryDirectory delivered() const
    {
        QDir().mkpath(path("given/standard"));
        write("given/standard/S.xml", SystemKind::document(QStringLiteral("S"), 1));
        return directory("given");
    }
};

TEST_F(Directories, HaveSevenPlaces)
{
    const QList<QPair<LibraryPlace, const char *>> places = {
        {LibraryPlace::Base, "base.xml"},           {LibraryPlace::Ellipsoids, "ellipsoids"},
        {LibraryPlace::Projections, "projections"}, {LibraryPlace::Custom, "custom"},
        {LibraryPlace::Standard, "standard"},       {LibraryPlace::Offered, "offered.xml"},
        {LibraryPlace::Display, "display.bin"}};
    QStringList names;
    for (const auto &[place, name] : places) {
        names += QString::fromLatin1(name);
        EXPECT_EQ(library::placeName(place), QString::fromLatin1(name));
        EXPECT_EQ(LibraryDirectory(QStringLiteral("/a/../b")).path(place),
                  QStringLiteral("/b/") + QString::fromLatin1(name));
        const QString folder = QStringLiteral("of ") + QString::fromLatin1(name);
        const LibraryDirectory one(path(folder));
        EXPECT_FALSE(one.exists());
        EXPECT_FALSE(one.holdsLibrary());
        QDir().mkpath(one.path(place));
        EXPECT_TRUE(one.exists());
        EXPECT_TRUE(one.holdsLibrary());
    }
    EXPECT_EQ(library::placeNames(), names);
}

TEST_F(Directories, AreLoadedPlaceByPlace)
{
    write("standard/S.xml", SystemKind::document(QStringLiteral("S"), 1));
    write("custom/C.xml", SystemKind::document(QStringLiteral("C"), 1));
    EXPECT_FALSE(library::loadPlaces(directory(""), {LibraryPlace::Standard}));
    EXPECT_NE(library().getCoordFromStandardLibrary(QStringLiteral("S")), nullptr);
    EXPECT_EQ(library().getCoordFromCustomLibrary(QStringLiteral("C")), nullptr);
    EXPECT_FALSE(QFileInfo::exists(path("offered.xml"))); // which a host's path would create
    EXPECT_FALSE(
        library::loadPlaces(directory(""), {LibraryPlace::Custom, LibraryPlace::Standard}));
    EXPECT_NE(library().getCoordFromCustomLibrary(QStringLiteral("C")), nullptr);
    EXPECT_FALSE(library::loadPlaces(directory("nowhere"), {LibraryPlace::Custom}));
    EXPECT_EQ(library().getCoordFromCustomLibrary(QStringLiteral("C")), nullptr);
}

TEST_F(Directories, GetTheirPlacesAndKeepWhatIsThere)
{
    EXPECT_FALSE(library::createPlaces(directory("new")));
    EXPECT_EQ(entries("new"),
              (QStringList{QStringLiteral("custom"), QStringLiteral("ellipsoids"),
                           QStringLiteral("projections"), QStringLiteral("standard")}));
    write("new/custom/C.xml", "kept");
    EXPECT_FALSE(library::createPlaces(directory("new")));
    EXPECT_EQ(readFile(path("new/custom/C.xml")), "kept");
    write("file", "no directory");
    const auto failure = library::createPlaces(directory("file"));
    EXPECT_EQ(failure.kind, Kind::NotWritable);
    EXPECT_EQ(failure.text, QStringLiteral("cannot create ") + path("file/ellipsoids"));
}

TEST_F(Directories, AreLaidOutWholeFromTheDeliveredOne)
{
    bool isNew = false;
    EXPECT_FALSE(library::prepare(directory("home/library"), delivered(), isNew));
    EXPECT_TRUE(isNew);
    EXPECT_EQ(everythingIn("home"), QStringList(QStringLiteral("library")));
    EXPECT_EQ(readFile(path("home/library/standard/S.xml")),
              SystemKind::document(QStringLiteral("S"), 1));
    EXPECT_TRUE(QFileInfo(path("home/library/custom")).isDir());
    // One that is there stays as it is.
    write("home/library/standard/S.xml", "changed");
    EXPECT_FALSE(library::prepare(directory("home/library"), delivered(), isNew));
    EXPECT_FALSE(isNew);
    EXPECT_EQ(readFile(path("home/library/standard/S.xml")), "changed");
}

TEST_F(Directories, AreNotLaidOutOverSomethingElseOrFromNothing)
{
    bool isNew = true;
    QDir().mkpath(path("home/library/something"));
    auto failure = library::prepare(directory("home/library"), delivered(), isNew);
    EXPECT_EQ(failure.kind, Kind::NoLibrary);
    EXPECT_EQ(failure.text, path("home/library") + QStringLiteral(" holds no library"));
    EXPECT_FALSE(isNew);
    failure = library::prepare(directory("other/library"), directory("nowhere"), isNew);
    EXPECT_EQ(failure.kind, Kind::NoLibrary);
    EXPECT_EQ(failure.text, QStringLiteral("there is no library in %1, and none is delivered in %2")
                                .arg(path("other/library"), path("nowhere")));
    EXPECT_FALSE(QFileInfo::exists(path("other")));
    write("file", "no directory");
    failure = library::prepare(directory("file/library"), delivered(), isNew);
    EXPECT_EQ(failure.kind, Kind::NotWritable);
    EXPECT_EQ(failure.text, QStringLiteral("cannot create the home directory ") + path("file"));
}

TEST_F(Directories, AreLaidOutWhereOnlyALockWasLeft)
{
    bool isNew = false;
    write("home/library/.changing.lock", "123\n");
    EXPECT_FALSE(library::prepare(directory("home/library"), delivered(), isNew));
    EXPECT_TRUE(isNew);
    EXPECT_TRUE(QFileInfo::exists(path("home/library/standard/S.xml")));
    EXPECT_FALSE(QFileInfo::exists(path("home/library/.changing.lock")));
    // What is more than that, or no lock, stays.
    write("more/library/.changing.lock", "123\n");
    write("more/library/something", "else");
    write("text/library/.changing.lock", "a user's own text");
    QDir().mkpath(path("folder/library/.changing.lock"));
    for (const char *place : {"more/library", "text/library", "folder/library"}) {
        EXPECT_EQ(library::prepare(directory(place), delivered(), isNew).kind, Kind::NoLibrary);
        EXPECT_FALSE(isNew);
        EXPECT_TRUE(QFileInfo::exists(path(place) + QStringLiteral("/.changing.lock"))) << place;
    }
}

TEST_F(Directories, AreLockedByOneAtATime)
{
    LibraryLock other(directory(""));
    {
        LibraryLock lock(directory(""));
        EXPECT_FALSE(lock.acquire());
        const auto failure = other.acquire(0);
        EXPECT_EQ(failure.kind, Kind::HeldByAnother);
        EXPECT_EQ(failure.text, QStringLiteral("another program is changing the library and holds "
                                               "%1; try again when it has ended")
                                    .arg(path(".changing.lock")));
        LibraryLock elsewhere(directory("custom"));
        EXPECT_FALSE(elsewhere.acquire(0));
    }
    EXPECT_FALSE(other.acquire(0));
    // Where no lock can be made nothing is locked.
    LibraryLock nowhere(directory("nowhere"));
    EXPECT_FALSE(nowhere.acquire(0));
}

} // namespace
} // namespace KelStd::test
