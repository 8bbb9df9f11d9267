#include "library/RecordKinds.h"
#include "support/FullDisk.h"

#include <KelStd/library/OfferedNames.h>

#include <sys/stat.h>

namespace KelStd::test {
namespace {

constexpr const char *emptyDocument = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root/>\n";

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

NamePairs pairs(std::initializer_list<std::pair<const char *, const char *>> list)
{
    NamePairs result;
    for (const auto &[name, showName] : list)
        result.append({text(name), text(showName)});
    return result;
}

/// A library with the custom systems A and C and the standard ones B and C.
class NamesFile : public LibraryTest
{
protected:
    void SetUp() override
    {
        LibraryTest::SetUp();
        write("custom/A.xml", SystemKind::document(text("A"), 1));
        write("custom/C.xml", SystemKind::document(text("C"), 1));
        write("standard/B.xml", SystemKind::document(text("B"), 1));
        write("standard/C.xml", SystemKind::document(text("C"), 1));
        library().loadLibrary();
        QFile::remove(path("names.xml"));
    }

    NamePairs loaded(const QByteArray &document) const
    {
        write("names.xml", document);
        library().loadLibrary();
        return offered();
    }

    void expectDocument(const QByteArray &document) const
    {
        EXPECT_EQ(withSortedAttributes(readFile(path("names.xml"))).toStdString(),
                  withSortedAttributes(document).toStdString());
    }
};

// --- Set -------------------------------------------------------------------------------------

TEST_F(NamesFile, HoldsTheKnownSystemsInOrder)
{
    const SignalCount count;
    library().setShowInCreateProjectCoords(pairs({{"A", ""}, {"Unknown", "x"}, {"B", "Bee"}}));
    EXPECT_EQ(offered(), pairs({{"A", "A"}, {"B", "Bee"}}));
    expectDocument("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<root>\n"
                   "    <Coord coord_name=\"A\" show_name=\"A\"/>\n"
                   "    <Coord coord_name=\"B\" show_name=\"Bee\"/>\n"
                   "</root>\n");
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 1);
    EXPECT_EQ(count.showConfigChanged, 0);
}

TEST_F(NamesFile, OfAnEmptyListHasNoEntries)
{
    const SignalCount count;
    library().setShowInCreateProjectCoords({});
    EXPECT_EQ(readFile(path("names.xml")).toStdString(), emptyDocument);
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 1);
}

TEST_F(NamesFile, EmitsForAnEqualListToo)
{
    const SignalCount count;
    library().setShowInCreateProjectCoords(pairs({{"A", "A"}}));
    library().setShowInCreateProjectCoords(pairs({{"A", "A"}}));
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 2);
}

TEST_F(NamesFile, KeepsDuplicatesAndNamesOfBlanks)
{
    const NamePairs list = pairs({{"C", "2"}, {"A", "1"}, {"C", "2"}, {"A", " "}});
    library().setShowInCreateProjectCoords(list);
    EXPECT_EQ(offered(), list);
    library().loadLibrary();
    EXPECT_EQ(offered(), list);
}

TEST_F(NamesFile, ComparesNamesExactly)
{
    library().setShowInCreateProjectCoords(
        pairs({{"a", "x"}, {" A", "x"}, {"A ", "x"}, {"", "x"}, {"", ""}}));
    EXPECT_TRUE(offered().isEmpty());
}

TEST_F(NamesFile, IsCompleteWhenTheSignalComes)
{
    QByteArray seen;
    NamePairs offeredThen;
    QObject receiver;
    QObject::connect(&library(), &StandardLibrary::sgShowInCreateProjectCoordsChanged, &receiver,
                     [&] {
                         seen = readFile(path("names.xml"));
                         offeredThen = offered();
                     });
    library().setShowInCreateProjectCoords(pairs({{"A", "1"}}));
    EXPECT_EQ(seen, readFile(path("names.xml")));
    EXPECT_TRUE(seen.contains("show_name=\"1\""));
    EXPECT_EQ(offeredThen, pairs({{"A", "1"}}));
}

TEST_F(NamesFile, WithMarkupAndOtherScriptsIsReadBack)
{
    const NamePairs list = pairs({{"A", "<\"&'>"}, {"A", "Düne 北京"}, {"A", "%1 \t\n x"}});
    library().setShowInCreateProjectCoords(list);
    EXPECT_TRUE(readFile(path("names.xml")).contains("D\xC3\xBCne \xE5\x8C\x97\xE4\xBA\xAC"));
    library().loadLibrary();
    EXPECT_EQ(offered(), list);
}

TEST_F(NamesFile, ReplacesWhateverWasThere)
{
    write("names.xml", QByteArray(100000, 'x'));
    library().setShowInCreateProjectCoords({});
    EXPECT_EQ(readFile(path("names.xml")).toStdString(), emptyDocument);
}

TEST_F(NamesFile, ThatCannotBeWrittenIsNotAndTheListChangesAllTheSame)
{
    const SignalCount count;
    library().setShowInCreateProjectCoordsFilePath(path("no such folder/names.xml"));
    library().setShowInCreateProjectCoords(pairs({{"A", "1"}}));
    EXPECT_EQ(offered(), pairs({{"A", "1"}}));
    library().setShowInCreateProjectCoordsFilePath(QString());
    library().setShowInCreateProjectCoords(pairs({{"A", "2"}}));
    EXPECT_EQ(offered(), pairs({{"A", "2"}}));
    library().setShowInCreateProjectCoordsFilePath(path("custom"));
    library().setShowInCreateProjectCoords(pairs({{"A", "3"}}));
    EXPECT_EQ(offered(), pairs({{"A", "3"}}));
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 3);
    EXPECT_FALSE(QFileInfo::exists(path("no such folder")));
}

TEST_F(NamesFile, OnAFullDiskKeepsItsOldContent)
{
    library().setShowInCreateProjectCoords(pairs({{"A", "old"}}));
    const QByteArray before = readFile(path("names.xml"));
    {
        const FullDisk disk(60);
        library().setShowInCreateProjectCoords(pairs({{"A", "new"}, {"B", "new"}}));
    }
    EXPECT_EQ(readFile(path("names.xml")), before);
    EXPECT_EQ(offered(), pairs({{"A", "new"}, {"B", "new"}}));
}

// --- Loaded ----------------------------------------------------------------------------------

TEST_F(NamesFile, IsCreatedByLoadingWhenMissing)
{
    library().loadLibrary();
    EXPECT_EQ(readFile(path("names.xml")).toStdString(), emptyDocument);
    EXPECT_TRUE(offered().isEmpty());
}

TEST_F(NamesFile, IsNotCreatedWhereThereIsNoDirectory)
{
    library().setShowInCreateProjectCoordsFilePath(path("no such folder/names.xml"));
    library().loadLibrary();
    EXPECT_FALSE(QFileInfo::exists(path("no such folder")));
}

TEST_F(NamesFile, IsLeftAsItIsByLoading)
{
    for (const QByteArray &document : {QByteArray("<root><Coord coord_name='Unknown'/></root>"),
                                       QByteArray(), QByteArray("no document")}) {
        loaded(document);
        EXPECT_EQ(readFile(path("names.xml")), document);
    }
}

TEST_F(NamesFile, IsReadInOrderWithUnknownNamesDropped)
{
    EXPECT_EQ(loaded("<?xml version='1.0' encoding='UTF-8'?><root>"
                     "<Coord show_name='See' coord_name='C'/>"
                     "<Coord coord_name='Unknown' show_name='x'/>"
                     "<Coord coord_name='a' show_name='case'/>"
                     "<Coord coord_name='B' show_name=''/>"
                     "<Coord coord_name='A'/>"
                     "<Coord show_name='nameless'/>"
                     "<coord coord_name='A' show_name='small'/>"
                     "<group><Coord coord_name='A' show_name='deeper'/></group>"
                     "<Coord coord_name='C' show_name='See'/>"
                     "</root>"),
              pairs({{"C", "See"}, {"B", "B"}, {"A", "A"}, {"C", "See"}}));
}

TEST_F(NamesFile, MayHaveAnyRootAndVersion)
{
    EXPECT_EQ(loaded("<names ver='7'><Coord coord_name='A'/></names>"), pairs({{"A", "A"}}));
}

/// As every file that is opened as a text.
TEST_F(NamesFile, LosesCarriageReturnsWhenRead)
{
    EXPECT_EQ(loaded("<root>\r\n<Coord coord_name='A\r' show_name='1\r\n2\r3&#13;'/>\r\n</root>"),
              pairs({{"A", "1\n23\r"}}));
}

TEST_F(NamesFile, ThatCannotBeReadGivesNoNames)
{
    library().setShowInCreateProjectCoords(pairs({{"A", "1"}}));
    for (const QByteArray &document :
         {QByteArray(), QByteArray("no document"), QByteArray("<root><Coord coord_name='A'/>"),
          "<root><Coord coord_name='A'/>" + QByteArray("<n>").repeated(300)
              + QByteArray("</n>").repeated(300) + "</root>"}) {
        SCOPED_TRACE(document.left(40).toStdString());
        EXPECT_TRUE(loaded(document).isEmpty());
    }
}

TEST_F(NamesFile, ThatIsAFifoGivesNoNames)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(path("names.xml")).constData(), 0600), 0);
    library().loadLibrary();
    EXPECT_TRUE(offered().isEmpty());
    library().setShowInCreateProjectCoords(pairs({{"A", "1"}}));
    EXPECT_EQ(offered(), pairs({{"A", "1"}}));
}

TEST_F(NamesFile, LoadedTwiceGivesEachNameOnce)
{
    const QByteArray document = "<root><Coord coord_name='A' show_name='1'/></root>";
    EXPECT_EQ(loaded(document), pairs({{"A", "1"}}));
    library().loadLibrary();
    EXPECT_EQ(offered(), pairs({{"A", "1"}}));
}

TEST_F(NamesFile, WithoutAPathGivesNoNames)
{
    ASSERT_FALSE(loaded("<root><Coord coord_name='A'/></root>").isEmpty());
    library().setShowInCreateProjectCoordsFilePath(QString());
    library().loadLibrary();
    EXPECT_TRUE(offered().isEmpty());
}

// --- Read by itself --------------------------------------------------------------------------

TEST_F(NamesFile, IsReadWithoutALibraryToo)
{
    write("names.xml", "<root>\r\n<Coord coord_name=\"no\r\nne\"/><Other coord_name=\"x\"/>"
                       "<Coord coord_name=\"A\" show_name=\"a\"/></root>");
    NamePairs names = pairs({{"kept", "kept"}});
    io::DocumentFailure failure = {io::DocumentFault::Empty, text("former"), 1};
    EXPECT_TRUE(library::readOfferedNames(path("names.xml"), names, failure));
    EXPECT_FALSE(failure);
    EXPECT_EQ(names, pairs({{"kept", "kept"}, {"no\nne", "no\nne"}, {"A", "a"}}));
}

TEST_F(NamesFile, SaysWhyItIsNotRead)
{
    write("names.xml", "<root>\n<Coord coord_name=\"A\"/>");
    NamePairs names;
    io::DocumentFailure failure;
    EXPECT_FALSE(library::readOfferedNames(path("names.xml"), names, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::NotWellFormed);
    EXPECT_EQ(failure.line, 2);
    EXPECT_TRUE(names.isEmpty());
    EXPECT_FALSE(library::readOfferedNames(path("missing.xml"), names, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::CannotBeOpened);
}

} // namespace
} // namespace KelStd::test
