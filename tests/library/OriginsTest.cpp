// Where the systems of a library came from: loaded with them, kept in their files. And files with
// safe names.

#include "library/RecordKinds.h"
#include "support/FullDisk.h"

#include <KelStd/io/SystemDocument.h>
#include <KelStd/library/LibraryRecord.h>

namespace KelStd::test {
namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

SystemOrigin originOfCode(const char *code)
{
    SystemOrigin origin;
    origin.authority = text("EPSG");
    origin.code = text(code);
    origin.operation = SystemOrigin::Operation{text("EPSG:4833"), text("a shift"), 1.0};
    origin.area = AreaOfUse{3.2, 50.75, 7.22, 53.7};
    return origin;
}

class Origins : public LibraryTest
{
protected:
    void TearDown() override
    {
        library().setSafeFileNames(false);
        LibraryTest::TearDown();
    }

    /// A document of a system with an origin, written by hand.
    static QByteArray document(const char *name, const char *code, int value = 1)
    {
        return SystemKind::document(text(name), value)
            .replace("</Coord>", QByteArray("<Origin ver=\"1\" authority=\"EPSG\" code=\"") + code
                                     + "\"><Operation code=\"EPSG:4833\" name=\"a shift\" "
                                       "accuracy_m=\"1\"/><Area west=\"3.2\" south=\"50.75\" "
                                       "east=\"7.22\" north=\"53.7\"/></Origin></Coord>");
    }

    SystemOrigin inFile(const char *relative) const
    {
        SystemOrigin origin;
        io::DocumentFailure failure;
        EXPECT_TRUE(io::readOrigin(path(relative), origin, failure)) << failure.text;
        return origin;
    }
};

TEST_F(Origins, AreLoadedWithTheSystems)
{
    write("custom/a.xml", document("A", "1"));
    write("custom/b.xml", SystemKind::document(text("B"), 1));
    write("standard/a.xml", document("A", "2"));
    library().loadLibrary();
    ASSERT_NE(library().getOriginFromCustomLibrary(text("A")), nullptr);
    EXPECT_TRUE(*library().getOriginFromCustomLibrary(text("A")) == originOfCode("1"));
    EXPECT_TRUE(*library().getOriginFromStandardLibrary(text("A")) == originOfCode("2"));
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("B")), nullptr);
    EXPECT_EQ(library().getOriginFromStandardLibrary(text("B")), nullptr);
    EXPECT_TRUE(library::originOf(RecordKind::Custom, text("A")) == originOfCode("1"));
    EXPECT_TRUE(library::originOf(RecordKind::Ellipsoid, text("A")).isEmpty());
    EXPECT_EQ(library::namesOfCode(RecordKind::Standard, text("epsg:2")), QStringList{text("A")});
    EXPECT_TRUE(library::namesOfCode(RecordKind::Standard, text("EPSG:1")).isEmpty());
    EXPECT_TRUE(library::namesOfCode(RecordKind::Custom, QString()).isEmpty());

    // As the systems, they are those of the last time.
    QFile::remove(path("custom/a.xml"));
    library().loadLibrary();
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("A")), nullptr);
}

TEST_F(Origins, ChangeNothingOfTheSystem)
{
    write("custom/a.xml", document("A", "1"));
    write("standard/b.xml", SystemKind::document(text("A"), 1));
    library().loadLibrary();
    EXPECT_TRUE(*library().getCoordFromCustomLibrary(text("A"))
                == *library().getCoordFromStandardLibrary(text("A")));
}

TEST_F(Origins, AreWrittenBesideTheSystem)
{
    const Coord coord = SystemKind::record(text("A"), 1);
    library().loadLibrary();
    ASSERT_TRUE(library().addCoordWithOrigin(text("A"), &coord, originOfCode("1")));
    EXPECT_TRUE(inFile("custom/A.xml") == originOfCode("1"));
    ASSERT_TRUE(library().setCoordWithOrigin(text("A"), &coord, originOfCode("2")));
    EXPECT_TRUE(inFile("custom/A.xml") == originOfCode("2"));
    EXPECT_TRUE(*library().getOriginFromCustomLibrary(text("A")) == originOfCode("2"));
    ASSERT_TRUE(library().setCoordWithOrigin(text("A"), &coord, {}));
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("A")), nullptr);
    EXPECT_FALSE(readFile(path("custom/A.xml")).contains("Origin"));
}

TEST_F(Origins, AreKeptByReplacingWhileTheyHold)
{
    write("custom/A.xml", document("A", "1"));
    library().loadLibrary();
    Coord changed = *library().getCoordFromCustomLibrary(text("A"));
    changed.planeTransform.north_translate.value = 12.5;
    changed.geoidModel.modelFileName = text("egm96_15.gtx");
    ASSERT_TRUE(library().setCoordInCustomLibrary(text("A"), &changed));
    EXPECT_TRUE(inFile("custom/A.xml") == originOfCode("1"));

    SystemOrigin withoutShift = originOfCode("1");
    withoutShift.operation.reset();
    changed.ellipsoidTransform.x_translate.value = 12.5;
    ASSERT_TRUE(library().setCoordInCustomLibrary(text("A"), &changed));
    EXPECT_TRUE(inFile("custom/A.xml") == withoutShift);

    changed.ellipsoid.reciprocal = 299.5;
    ASSERT_TRUE(library().setCoordInCustomLibrary(text("A"), &changed));
    EXPECT_TRUE(inFile("custom/A.xml").isEmpty());
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("A")), nullptr);
}

TEST_F(Origins, OfOtherSystemsAreLeftAlone)
{
    const QByteArray other = document("B", "2");
    write("custom/A.xml", document("A", "1"));
    write("custom/B.xml", other);
    library().loadLibrary();
    const Coord coord = SystemKind::record(text("C"), 2);
    ASSERT_TRUE(library().addCoordToCustomLibrary(text("C"), &coord));
    ASSERT_TRUE(library().setCoordInCustomLibrary(text("A"), &coord));
    ASSERT_TRUE(library().removeCoordFromCustomLibrary(text("C")));
    EXPECT_EQ(readFile(path("custom/B.xml")), other);
    EXPECT_TRUE(*library().getOriginFromCustomLibrary(text("B")) == originOfCode("2"));
}

TEST_F(Origins, StayWhereAChangeFails)
{
    write("custom/A.xml", document("A", "1"));
    write("custom/A file of another name.xml", document("B", "2"));
    library().loadLibrary();
    const QByteArray before = readFile(path("custom/A.xml"));
    const Coord coord = SystemKind::record(text("A"), 2);
    {
        const FullDisk disk(100);
        EXPECT_FALSE(library().setCoordInCustomLibrary(text("A"), &coord));
        EXPECT_FALSE(library().setCoordWithOrigin(text("A"), &coord, originOfCode("3")));
        EXPECT_FALSE(library().addCoordWithOrigin(text("C"), &coord, originOfCode("3")));
    }
    EXPECT_FALSE(library().setCoordInCustomLibrary(text("A"), nullptr));
    EXPECT_FALSE(library().removeCoordFromCustomLibrary(text("B")));
    EXPECT_EQ(readFile(path("custom/A.xml")), before);
    EXPECT_TRUE(*library().getOriginFromCustomLibrary(text("A")) == originOfCode("1"));
    EXPECT_TRUE(*library().getOriginFromCustomLibrary(text("B")) == originOfCode("2"));
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("C")), nullptr);
}

TEST_F(Origins, GoWithTheirSystem)
{
    write("custom/A.xml", document("A", "1"));
    library().loadLibrary();
    // The name may belong to the record.
    ASSERT_TRUE(library().removeCoordFromCustomLibrary(
        library().getCoordFromCustomLibrary(text("A"))->coord_name));
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("A")), nullptr);
}

TEST_F(Origins, AreOfTheSystemThatWasReadLast)
{
    write("custom/one.xml", document("A", "1", 1));
    write("custom/two.xml", SystemKind::document(text("A"), 2));
    library().loadLibrary();
    const bool isFirst = SystemKind::valueOf(*library().getCoordFromCustomLibrary(text("A"))) == 1;
    EXPECT_EQ(library().getOriginFromCustomLibrary(text("A")) != nullptr, isFirst);
}

class SafeFileNames : public Origins
{};

TEST_F(SafeFileNames, ServeEveryChangeOfARecordWithSeparators)
{
    library().loadLibrary();
    library().setSafeFileNames(true);
    const QString name = text("Amersfoort / RD New");
    const Coord one = SystemKind::record(name, 1);
    const Coord two = SystemKind::record(name, 2);
    ASSERT_TRUE(library().addCoordWithOrigin(name, &one, originOfCode("1")));
    EXPECT_EQ(entries("custom"), QStringList{text("Amersfoort %2F RD New.xml")});
    library().loadLibrary();
    ASSERT_NE(library().getCoordFromCustomLibrary(name), nullptr);
    ASSERT_TRUE(library().setCoordInCustomLibrary(name, &two));
    EXPECT_EQ(entries("custom"), QStringList{text("Amersfoort %2F RD New.xml")});
    library().loadLibrary();
    EXPECT_EQ(SystemKind::valueOf(*library().getCoordFromCustomLibrary(name)), 2);
    ASSERT_TRUE(library().removeCoordFromCustomLibrary(name));
    EXPECT_EQ(entries("custom"), QStringList());

    const Ellipsoid ellipsoid = EllipsoidKind::record(text("a/b"), 1);
    ASSERT_TRUE(library().addEllipsoidToLibrary(text("a/b"), &ellipsoid));
    EXPECT_EQ(entries("ellipsoids"), QStringList{text("a%2Fb.xml")});
    const Projection projection = ProjectionKind::record(text("a\\b"), 1);
    ASSERT_TRUE(library().addProjectionToLibrary(text("a\\b"), &projection));
    EXPECT_EQ(entries("projections"), QStringList{text("a%5Cb.xml")});
}

TEST_F(SafeFileNames, AreAsTheRecordsWithoutSeparators)
{
    library().loadLibrary();
    library().setSafeFileNames(true);
    const Coord coord = SystemKind::record(text("A %1"), 1);
    ASSERT_TRUE(library().addCoordToCustomLibrary(text("A %1"), &coord));
    EXPECT_EQ(entries("custom"), QStringList{text("A %1.xml")});
    for (const char *name : {":a", "~a"}) {
        EXPECT_FALSE(library().addCoordToCustomLibrary(text(name), &coord));
        EXPECT_EQ(library().lastFailure().kind, LibraryFailureKind::LeadsOut);
    }
}

TEST_F(SafeFileNames, LeadNowhereElse)
{
    library().loadLibrary();
    library().setSafeFileNames(true);
    const QStringList outside = entries("");
    for (const char *name : {"../a", "/a", "\\a", "a/../../b", "C:/a"}) {
        SCOPED_TRACE(name);
        const Coord coord = SystemKind::record(text(name), 1);
        EXPECT_TRUE(library().addCoordToCustomLibrary(text(name), &coord));
    }
    EXPECT_EQ(entries("custom").size(), 5);
    EXPECT_EQ(entries(""), outside);
}

TEST_F(SafeFileNames, AreAskedForByTheHostAlone)
{
    library().loadLibrary();
    const Coord coord = SystemKind::record(text("a/b"), 1);
    EXPECT_FALSE(library().addCoordToCustomLibrary(text("a/b"), &coord)); // there is no folder "a"
    QDir().mkpath(path("custom/a"));
    EXPECT_TRUE(library().addCoordToCustomLibrary(text("a/b"), &coord));
    EXPECT_EQ(entries("custom/a"), QStringList{text("b.xml")});
}

} // namespace
} // namespace KelStd::test
