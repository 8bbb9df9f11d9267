#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"
#include "library/RecordKinds.h"

#include <KelStd/io/Coord_IO.h>

#include <QtCore/QDataStream>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>

#include <sys/stat.h>

namespace KelStd::test {
namespace {

template <typename Kind>
class Loading : public RecordTest<Kind>
{
protected:
    void put(const char *fileName, const QByteArray &bytes) const
    {
        writeFile(this->file(fileName), bytes);
    }
};
TYPED_TEST_SUITE(Loading, RecordKinds);

TYPED_TEST(Loading, KnowsRecordsByTheirOwnNames)
{
    this->put("a.xml", TypeParam::document(this->name("B"), 1));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("B")));
    EXPECT_EQ(this->value(this->name("B")), 1);
    EXPECT_EQ(this->find(this->name("a")), nullptr);
}

TYPED_TEST(Loading, ReadsBackWhatWasAdded)
{
    for (const char *name : {"a", "b c", "Düne", "%1"})
        ASSERT_TRUE(this->addNew(this->name(name), 2));
    const auto before = *this->find(this->name("b c"));
    this->library().loadLibrary();
    EXPECT_EQ(this->names().size(), 4);
    ASSERT_NE(this->find(this->name("b c")), nullptr);
    EXPECT_TRUE(*this->find(this->name("b c")) == before);
}

TYPED_TEST(Loading, ARecordWithoutANameIsKnownByTheEmptyOne)
{
    this->put("a.xml", TypeParam::document(QString(), 1));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), QStringList(QString()));
    EXPECT_EQ(this->value(QString()), 1);
}

TYPED_TEST(Loading, NamesThatDifferInCaseAreTwo)
{
    this->put("1.xml", TypeParam::document(this->name("a"), 1));
    this->put("2.xml", TypeParam::document(this->name("A"), 2));
    this->library().loadLibrary();
    EXPECT_EQ(this->value(this->name("a")), 1);
    EXPECT_EQ(this->value(this->name("A")), 2);
}

/// The order of the file system, which is no order of names.
TYPED_TEST(Loading, OfRecordsOfOneNameTheFileListedLastWins)
{
    constexpr int records = 10;
    constexpr int filesOfEach = 4;
    for (int i = 0; i < records * filesOfEach; ++i)
        writeFile(this->file(QStringLiteral("%1.xml").arg(i)),
                  TypeParam::document(QString::number(i % records), i));
    QMap<QString, int> expected;
    for (const QString &fileName :
         QDir(this->path(TypeParam::folder)).entryList(QDir::Files, QDir::Unsorted)) {
        const int i = fileName.section(QLatin1Char('.'), 0, 0).toInt();
        expected[QString::number(i % records)] = i;
    }
    this->library().loadLibrary();
    EXPECT_EQ(this->names().size(), records);
    for (auto one = expected.constBegin(); one != expected.constEnd(); ++one)
        EXPECT_EQ(this->value(one.key()), one.value()) << one.key();
}

TYPED_TEST(Loading, SkipsWhatCannotBeReadAndReadsTheRest)
{
    this->put("a.xml", TypeParam::document(this->name("a"), 1));
    this->put("broken.xml", "<Coord ver=\"1\"");
    this->put("empty.xml", "");
    this->put("other.xml",
              TypeParam::document(this->name("other"), 1).replace("ver=\"1\"", "ver=\"2\""));
    this->put("z.xml", TypeParam::document(this->name("z"), 2));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), (QStringList{QStringLiteral("a"), QStringLiteral("z")}));
}

TYPED_TEST(Loading, ReadsFilesWhoseNamesEndInXmlWhateverTheCase)
{
    for (const char *name : {"a.xml", "b.XML", "c.Xml", "d.xml.xml", "e f%1.xml", "Düne.xml"})
        this->put(name, TypeParam::document(this->name(name), 1));
    for (const char *name :
         {"no.xm", "no.xml~", "no.xml.bak", "xml", "noxml", ".hidden.xml", ".xml", "a.xml.AbCdEf"})
        this->put(name, TypeParam::document(this->name(name), 1));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(),
              (QStringList{QStringLiteral("Düne.xml"), QStringLiteral("a.xml"),
                           QStringLiteral("b.XML"), QStringLiteral("c.Xml"),
                           QStringLiteral("d.xml.xml"), QStringLiteral("e f%1.xml")}));
}

TYPED_TEST(Loading, DoesNotGoIntoFolders)
{
    this->put("sub/a.xml", TypeParam::document(this->name("a"), 1));
    this->put("folder.xml/a.xml", TypeParam::document(this->name("a"), 1));
    this->library().loadLibrary();
    EXPECT_TRUE(this->names().isEmpty());
}

TYPED_TEST(Loading, FollowsLinksToFiles)
{
    this->write("elsewhere.xml", TypeParam::document(this->name("a"), 1));
    ASSERT_TRUE(QFile::link(this->path("elsewhere.xml"), this->file("link.xml")));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("a")));
}

/// Reading a FIFO would wait for a writer, and /dev/zero never ends.
TYPED_TEST(Loading, SkipsWhatIsNoRegularFile)
{
    this->put("a.xml", TypeParam::document(this->name("a"), 1));
    ASSERT_EQ(mkfifo(QFile::encodeName(this->file("fifo.xml")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(this->file("fifo.xml"), this->file("link to fifo.xml")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), this->file("zero.xml")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/tty"), this->file("tty.xml")));
    ASSERT_TRUE(QFile::link(this->path(""), this->file("folder.xml")));
    ASSERT_TRUE(QFile::link(this->path("nothing"), this->file("dangling.xml")));
    ASSERT_TRUE(QFile::link(this->file("loop.xml"), this->file("loop.xml")));
    QElapsedTimer timer;
    timer.start();
    this->library().loadLibrary();
    EXPECT_LT(timer.elapsed(), 10000);
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("a")));
}

TYPED_TEST(Loading, OfAMissingDirectoryGivesNothing)
{
    this->put("a.xml", TypeParam::document(this->name("a"), 1));
    this->library().loadLibrary();
    ASSERT_FALSE(this->names().isEmpty());
    (this->library().*TypeParam::setPath)(this->path("no such folder"));
    this->library().loadLibrary();
    EXPECT_TRUE(this->names().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(this->path("no such folder")));
}

TYPED_TEST(Loading, OfAnEmptyPathReadsTheCurrentDirectory)
{
    this->put("a.xml", TypeParam::document(this->name("a"), 1));
    this->forgetPlaces();
    const ScopedCurrentDirectory here(this->path(TypeParam::folder));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("a")));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("a.xml")));
}

TYPED_TEST(Loading, TwiceGivesTheSame)
{
    for (const char *name : {"a.xml", "b.xml"})
        this->put(name, TypeParam::document(this->name(name), 1));
    this->library().loadLibrary();
    const QStringList once = this->names();
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), once);
    EXPECT_EQ(once.size(), 2);
}

TYPED_TEST(Loading, ForgetsWhatIsNoLongerThere)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    ASSERT_TRUE(this->addNew(this->name("b")));
    ASSERT_TRUE(QFile::remove(this->file("a.xml")));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("b")));
}

class LoadingSystems : public LibraryTest
{
protected:
    static QStringList customNames()
    {
        QMap<QString, const Coord *> out;
        library().getCustomCoordLibrary(out);
        return out.keys();
    }
    static QStringList standardNames()
    {
        QMap<QString, const Coord *> out;
        library().getStandardCoordLibrary(out);
        return out.keys();
    }
};

TEST_F(LoadingSystems, KeepsCustomAndStandardOnesApart)
{
    write("custom/1.xml", SystemKind::document(QStringLiteral("both"), 1));
    write("standard/1.xml", SystemKind::document(QStringLiteral("both"), 2));
    write("custom/2.xml", SystemKind::document(QStringLiteral("custom"), 1));
    write("standard/2.xml", SystemKind::document(QStringLiteral("standard"), 2));
    library().loadLibrary();
    EXPECT_EQ(customNames(), (QStringList{QStringLiteral("both"), QStringLiteral("custom")}));
    EXPECT_EQ(standardNames(), (QStringList{QStringLiteral("both"), QStringLiteral("standard")}));
    const QString both = QStringLiteral("both");
    EXPECT_EQ(SystemKind::valueOf(*library().getCoordFromCustomLibrary(both)), 1);
    EXPECT_EQ(SystemKind::valueOf(*library().getCoordFromStandardLibrary(both)), 2);
    EXPECT_EQ(library().getCoordFromStandardLibrary(QStringLiteral("custom")), nullptr);
    EXPECT_EQ(library().getCoordFromCustomLibrary(QStringLiteral("standard")), nullptr);
}

TEST_F(LoadingSystems, ReadsEachIntoAFreshOne)
{
    write("custom/1.xml", SystemKind::document(QStringLiteral("complete"), 1));
    write("custom/2.xml", DocumentPieces().bytes());
    library().loadLibrary();
    const Coord *complete = library().getCoordFromCustomLibrary(QStringLiteral("complete"));
    ASSERT_NE(complete, nullptr);
    expectSameSystem(*complete, SystemKind::record(QStringLiteral("complete"), 1));
    Coord fresh;
    fresh.coord_name = QStringLiteral("site");
    const Coord *site = library().getCoordFromCustomLibrary(QStringLiteral("site"));
    ASSERT_NE(site, nullptr);
    expectSameSystem(*site, fresh);
    EXPECT_TRUE(site->geoidModel.modelFileName.isEmpty());
}

QByteArray streamed(const Coord &coord)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    coord.save(stream);
    return bytes;
}

/// To the last byte of its stream, which tells a text that is missing from one that is empty.
TEST_F(LoadingSystems, GivesWhatReadingTheDocumentGives)
{
    const QByteArray complete = SystemKind::document(QStringLiteral("complete"), 1);
    QString bare = QString::fromUtf8(complete);
    for (const char *attribute : {"ellipsoid_name", "proj4EllpsName", "projection_name",
                                  "proj4Projection", "modelFileName", "proj4Param"}) {
        const QString written = bare;
        bare.remove(QRegularExpression(
            QStringLiteral(" %1=\"[^\"]*\"").arg(QString::fromLatin1(attribute))));
        EXPECT_NE(bare, written) << attribute;
    }
    const QByteArray documents[] = {complete, DocumentPieces().bytes(), bare.toUtf8()};
    for (const QByteArray &document : documents) {
        write("custom/1.xml", document);
        library().loadLibrary();
        Coord read;
        QString error;
        ASSERT_TRUE(Coord_IO::xml_read(path("custom/1.xml"), read, &error)) << error;
        const Coord *loaded = library().getCoordFromCustomLibrary(read.coord_name);
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(streamed(*loaded).toHex(), streamed(read).toHex());
    }
}

TEST_F(LoadingSystems, NeverWritesWhereItReads)
{
    write("standard/1.xml", SystemKind::document(QStringLiteral("a"), 1));
    write("custom/1.xml", SystemKind::document(QStringLiteral("b"), 1));
    library().loadLibrary();
    for (const char *folder : {"standard", "custom", "ellipsoids", "projections"})
        EXPECT_LE(entries(folder).size(), 1) << folder;
    EXPECT_EQ(readFile(path("standard/1.xml")), SystemKind::document(QStringLiteral("a"), 1));
}

TEST_F(LoadingSystems, EmitsNothing)
{
    write("custom/1.xml", SystemKind::document(QStringLiteral("a"), 1));
    write("names.xml", "<root><Coord coord_name='a' show_name=''/></root>");
    write("show.cfg", QByteArray("\0\0\0\1", 4) + QByteArray(64, '\0'));
    const SignalCount count;
    library().loadLibrary();
    EXPECT_EQ(offered().size(), 1);
    EXPECT_EQ(library().getShowConfig()->xyPrecision, 0);
    EXPECT_EQ(count.showConfigChanged, 0);
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 0);
}

// --- The base system -------------------------------------------------------------------------

class LoadingBaseSystem : public LibraryTest
{};

TEST_F(LoadingBaseSystem, ReadsItAfresh)
{
    write("base.xml", storedDocument("complete.xml"));
    library().loadLibrary();
    expectSameSystem(*library().getBaseCoord(), completeSystem());
    write("base.xml", DocumentPieces().bytes());
    library().loadLibrary();
    Coord fresh;
    fresh.coord_name = QStringLiteral("site");
    expectSameSystem(*library().getBaseCoord(), fresh);
}

TEST_F(LoadingBaseSystem, KeepsThePreviousOneWhenItCannotBeRead)
{
    write("base.xml", storedDocument("complete.xml"));
    library().loadLibrary();
    DocumentPieces halfReadable;
    halfReadable.fitting.clear();
    for (const QByteArray &bytes : {QByteArray("no document"), halfReadable.bytes()}) {
        write("base.xml", bytes);
        library().loadLibrary();
        expectSameSystem(*library().getBaseCoord(), completeSystem());
    }
    QFile::remove(path("base.xml"));
    library().loadLibrary();
    expectSameSystem(*library().getBaseCoord(), completeSystem());
    ASSERT_EQ(mkfifo(QFile::encodeName(path("base.xml")).constData(), 0600), 0);
    library().loadLibrary();
    expectSameSystem(*library().getBaseCoord(), completeSystem());
    library().setBaseCoordFilePath(QString());
    library().loadLibrary();
    expectSameSystem(*library().getBaseCoord(), completeSystem());
}

TEST_F(LoadingBaseSystem, HasOneAddressAlways)
{
    const Coord *before = library().getBaseCoord();
    ASSERT_NE(before, nullptr);
    write("base.xml", storedDocument("complete.xml"));
    library().loadLibrary();
    EXPECT_EQ(library().getBaseCoord(), before);
}

TEST_F(LoadingBaseSystem, IsNoNamedSystem)
{
    write("base.xml", storedDocument("complete.xml"));
    library().loadLibrary();
    QMap<QString, const Coord *> systems;
    library().getCustomCoordLibrary(systems);
    library().getStandardCoordLibrary(systems);
    EXPECT_TRUE(systems.isEmpty());
}

TEST_F(LoadingBaseSystem, WithEveryPathEmptyLeavesItAndTheConfigurationAndTouchesNoFile)
{
    write("base.xml", storedDocument("complete.xml"));
    library().loadLibrary();
    stShowConfig config;
    config.xyPrecision = 9;
    forgetPlaces();
    library().setShowConfig(config);
    write("here/a.xml", SystemKind::document(QStringLiteral("a"), 1));
    write("here/e.xml", EllipsoidKind::document(QStringLiteral("e"), 1));
    write("here/p.xml", ProjectionKind::document(QStringLiteral("p"), 1));
    const ScopedCurrentDirectory here(path("here"));
    library().loadLibrary();
    expectSameSystem(*library().getBaseCoord(), completeSystem());
    EXPECT_TRUE(*library().getShowConfig() == config);
    EXPECT_NE(library().getCoordFromCustomLibrary(QStringLiteral("a")), nullptr);
    EXPECT_NE(library().getCoordFromStandardLibrary(QStringLiteral("a")), nullptr);
    EXPECT_NE(library().getEllipsoidFromLibrary(QStringLiteral("e")), nullptr);
    EXPECT_NE(library().getProjectionFromLibrary(QStringLiteral("p")), nullptr);
    EXPECT_EQ(entries("here"), (QStringList{QStringLiteral("a.xml"), QStringLiteral("e.xml"),
                                            QStringLiteral("p.xml")}));
}

} // namespace
} // namespace KelStd::test
