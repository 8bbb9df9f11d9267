// Which documents of a library hold a record, and whether the registry could change it without
// harm.

#include "library/RecordKinds.h"

#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>

#include <QtCore/QDir>

namespace KelStd::test {
namespace {

using Kind = LibraryFailureKind;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray systemCalled(const QString &name)
{
    return SystemKind::document(name, 1);
}

QByteArray systemCalled(const char *name)
{
    return systemCalled(text(name));
}

class RecordHolders : public LibraryTest
{
protected:
    LibraryDirectory directory() const { return LibraryDirectory(path("")); }

    void load() const
    {
        ASSERT_FALSE(library::loadPlaces(directory(),
                                         {LibraryPlace::Custom, LibraryPlace::Standard,
                                          LibraryPlace::Ellipsoids, LibraryPlace::Projections}));
    }

    LibraryFailure ownership(const char *name, RecordKind kind = RecordKind::Custom) const
    {
        return library::ownershipFailure(directory(), kind, text(name));
    }

    LibraryFailure ambiguity(const char *name, RecordKind kind = RecordKind::Custom) const
    {
        return library::ambiguityFailure(directory(), kind, text(name));
    }

    QStringList holding(const char *name, RecordKind kind = RecordKind::Custom) const
    {
        QStringList files = library::documentsHolding(directory(), kind, text(name));
        files.sort();
        return files;
    }
};

TEST_F(RecordHolders, HavePathsOfThePlace)
{
    EXPECT_EQ(library::documentPath(directory(), RecordKind::Custom, text(":a.xml")),
              path("custom/:a.xml"));
    EXPECT_EQ(library::recordFile(directory(), RecordKind::Ellipsoid, text("E")),
              path("ellipsoids/E.xml"));
    write("projections/b.xml", "x");
    write("projections/a.txt", "x");
    QDir().mkpath(path("projections/c.xml"));
    EXPECT_EQ(library::documentsOf(directory(), RecordKind::Projection),
              QStringList(text("b.xml")));
    EXPECT_TRUE(
        library::documentsOf(LibraryDirectory(path("nowhere")), RecordKind::Custom).isEmpty());
}

TEST_F(RecordHolders, AreFoundWhateverTheyAreCalled)
{
    write("custom/A.xml", systemCalled("A"));
    write("custom/a.xml", systemCalled("B"));
    write("custom/:c.xml", systemCalled("C"));
    write("ellipsoids/some.xml", ellipsoidsCalled("EF"));
    load();
    EXPECT_EQ(holding("A"), QStringList(path("custom/A.xml")));
    EXPECT_EQ(holding("B"), QStringList(path("custom/a.xml")));
    EXPECT_EQ(holding("C"), QStringList(path("custom/:c.xml")));
    EXPECT_EQ(holding("F", RecordKind::Ellipsoid), QStringList(path("ellipsoids/some.xml")));
    EXPECT_TRUE(holding("D").isEmpty());
    EXPECT_TRUE(holding("A", RecordKind::Standard).isEmpty());
}

TEST_F(RecordHolders, OwnARecordOnlyWhereTheRegistryWouldChangeNothingElse)
{
    write("custom/O.xml", systemCalled("O"));
    write("custom/a.xml", systemCalled("B"));
    write("custom/d.xml", systemCalled("../D"));
    write("custom/C.xml", systemCalled("C"));
    write("custom/c2.xml", systemCalled("C"));
    write("ellipsoids/E.xml", ellipsoidsCalled("EF"));
    write("ellipsoids/G.xml", ellipsoidsCalled("G"));
    load();
    const QString custom = path("custom");
    const struct
    {
        const char *name;
        RecordKind record;
        Kind kind;
        QString text;
    } rows[] = {
        {"O", RecordKind::Custom, Kind::None, {}},
        {"G", RecordKind::Ellipsoid, Kind::None, {}},
        {"nothing", RecordKind::Custom, Kind::None, {}},
        {"B", RecordKind::Custom, Kind::OtherFileName,
         text("it came from the file \"a.xml\" of %1, not from \"B.xml\"; rename or edit that file")
             .arg(custom)},
        {"../D", RecordKind::Custom, Kind::OtherFileName,
         text("it came from the file \"d.xml\" of %1, not from \"..%2FD.xml\"; rename or edit that "
              "file")
             .arg(custom)},
        {"C", RecordKind::Custom, Kind::SeveralFiles,
         text("2 files of %1 hold it: \"C.xml\", \"c2.xml\"; delete all but one first")
             .arg(custom)},
        {"E", RecordKind::Ellipsoid, Kind::SharedFile,
         text("its file in %1 holds other records, too; edit that file").arg(path("ellipsoids"))},
    };
    for (const auto &row : rows) {
        const LibraryFailure failure = ownership(row.name, row.record);
        EXPECT_EQ(failure.kind, row.kind) << row.name;
        EXPECT_EQ(failure.text, row.text);
    }
}

// Loading passes over a byte that is no UTF-8, and over an encoding that it does not know.
TEST_F(RecordHolders, KnowOfRecordsInADocumentThatOnlyLoadingReads)
{
    for (const QByteArray &head : {QByteArray("<!-- M\xFCller -->"),
                                   QByteArray("<?xml version=\"1.0\" encoding=\"x-none\"?>")}) {
        write("ellipsoids/A.xml", head + ellipsoidsCalled("AC"));
        load();
        ASSERT_EQ(library::namesOf(RecordKind::Ellipsoid), (QStringList{text("A"), text("C")}));
        EXPECT_EQ(ownership("A", RecordKind::Ellipsoid).kind, Kind::SharedFile);
    }
}

TEST_F(RecordHolders, AreNoDocumentsThatLoadingSkips)
{
    write("custom/A.xml", systemCalled("A"));
    write("custom/b.xml", "<Coord ver=\"1\" coord_name=\"A\"/>");
    write("ellipsoids/E.xml", ellipsoidsCalled("E"));
    write("ellipsoids/f.xml", ellipsoidsCalled("E") + "<Ellpsoid ellipsoid_name=\"F\"/>");
    load();
    EXPECT_FALSE(ownership("A"));
    EXPECT_FALSE(ambiguity("A"));
    EXPECT_EQ(holding("A"), QStringList(path("custom/A.xml")));
    EXPECT_FALSE(ownership("E", RecordKind::Ellipsoid));
}

TEST_F(RecordHolders, AreSeveralWhereNamesDifferByAByteOrderMarkAlone)
{
    const QString marked = QChar(QChar::ByteOrderMark) + text("A");
    write("custom/one.xml", systemCalled("A"));
    load();
    EXPECT_FALSE(ambiguity("A"));
    write("custom/two.xml", systemCalled(marked));
    load();
    for (const auto &failure :
         {ambiguity("A"), library::ambiguityFailure(directory(), RecordKind::Custom, marked)}) {
        EXPECT_EQ(failure.kind, Kind::SeveralFiles);
        EXPECT_EQ(failure.text, text("2 files of %1 hold it: \"one.xml\", \"two.xml\"; delete all "
                                     "but one first")
                                    .arg(path("custom")));
    }
    EXPECT_EQ(holding("A"), (QStringList{path("custom/one.xml"), path("custom/two.xml")}));
}

TEST_F(RecordHolders, KeepNamesFromBeingAdded)
{
    const QString mark = QChar(QChar::ByteOrderMark);
    write("custom/any.xml", systemCalled(mark + text("Harbour")));
    write("standard/City.xml", systemCalled("City"));
    write("standard/blank.xml", systemCalled(" Blank"));
    write("ellipsoids/E.xml", ellipsoidsCalled("E"));
    load();
    const struct
    {
        const char *name;
        RecordKind kind;
        std::optional<library::RecordKey> taking;
    } rows[] = {
        {"HARBOUR", RecordKind::Custom, {{RecordKind::Custom, mark + text("Harbour")}}},
        {" city ", RecordKind::Custom, {{RecordKind::Standard, text("City")}}},
        {"Blank", RecordKind::Custom, std::nullopt}, // blanks of the present name count
        {" blank", RecordKind::Custom, {{RecordKind::Standard, text(" Blank")}}},
        {"City", RecordKind::Ellipsoid, std::nullopt},
        {"e", RecordKind::Ellipsoid, {{RecordKind::Ellipsoid, text("E")}}},
        {"", RecordKind::Custom, std::nullopt},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        for (const QString &name : {text(row.name), mark + text(row.name)}) {
            const auto taking = library::keyTaking(row.kind, name);
            ASSERT_EQ(taking.has_value(), row.taking.has_value());
            if (taking) {
                EXPECT_EQ(taking->kind, row.taking->kind);
                EXPECT_EQ(taking->name, row.taking->name);
            }
        }
    }
    using Kinds = QList<RecordKind>;
    const Kinds all = {RecordKind::Projection, RecordKind::Ellipsoid, RecordKind::Standard,
                       RecordKind::Custom};
    EXPECT_EQ(library::kindsHolding(text("City"), all), Kinds{RecordKind::Standard});
    EXPECT_EQ(library::kindsHolding(text("Harbour"), all), Kinds{RecordKind::Custom});
    EXPECT_EQ(library::kindsHolding(text("city"), all), Kinds());
    write("custom/E.xml", systemCalled("E"));
    load();
    EXPECT_EQ(library::kindsHolding(text("E"), all),
              (Kinds{RecordKind::Ellipsoid, RecordKind::Custom}));
}

TEST(SimilarNames, AreThoseOfOtherCaseOrElseThoseWithTheSameWords)
{
    const QStringList names = {text("Old Harbour"), text("harbour "), text("City"),
                               text("Harbour 2"),   text("HARBOUR"),  text("Harbour 3"),
                               text("Harbour 4")};
    EXPECT_EQ(library::similarNames(text(" Harbour"), names),
              (QStringList{text("harbour "), text("HARBOUR")}));
    EXPECT_EQ(library::similarNames(text("harb"), names),
              (QStringList{text("harbour "), text("Harbour 2"), text("HARBOUR")}));
    EXPECT_EQ(library::similarNames(text(" "), names), QStringList());
    EXPECT_EQ(library::similarNames(text("Zoo"), names), QStringList());
}

} // namespace
} // namespace KelStd::test
