#include "library/RecordKinds.h"
#include "support/Raised.h"

#include <sys/stat.h>

namespace KelStd::test {
namespace {

template <typename Kind>
class Adding : public RecordTest<Kind>
{};
TYPED_TEST_SUITE(Adding, RecordKinds);

TYPED_TEST(Adding, WritesTheDocumentOfTheOneRecordAndKeepsACopy)
{
    const QString name = this->name("Beijing54");
    const auto record = TypeParam::record(name, 1);
    ASSERT_TRUE(this->add(name, &record));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("Beijing54.xml")));
    this->expectDocument(QStringLiteral("Beijing54.xml"), TypeParam::document(name, 1));
    ASSERT_NE(this->find(name), nullptr);
    EXPECT_NE(this->find(name), &record);
    EXPECT_TRUE(*this->find(name) == record);
    EXPECT_EQ(TypeParam::nameOf(*this->find(name)), name);
}

TYPED_TEST(Adding, RefusesAnEmptyNameAndNoRecord)
{
    const auto record = TypeParam::record(QString(), 1);
    EXPECT_FALSE(this->add(QString(), &record));
    EXPECT_FALSE(this->add(QStringLiteral(""), &record));
    EXPECT_FALSE(this->add(this->name("a"), nullptr));
    EXPECT_TRUE(this->files().isEmpty());
    EXPECT_TRUE(this->names().isEmpty());
}

TYPED_TEST(Adding, RefusesATakenNameWhateverItsCaseAndTheBlanksAroundIt)
{
    ASSERT_TRUE(this->addNew(this->name("WGS84")));
    for (const char *taken :
         {"WGS84", "wgs84", "WgS84", "wgs84 ", " WGS84", "\t wgs84 \n", "\xE3\x80\x80WGS84"}) {
        SCOPED_TRACE(taken);
        EXPECT_FALSE(this->addNew(this->name(taken), 2));
    }
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("WGS84")));
    EXPECT_EQ(this->value(this->name("WGS84")), 1);
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("WGS84.xml")));
    this->expectDocument(QStringLiteral("WGS84.xml"), TypeParam::document(this->name("WGS84"), 1));
}

TYPED_TEST(Adding, ComparesLettersOfAllScriptsWithoutCase)
{
    ASSERT_TRUE(this->addNew(this->name("Düne")));
    EXPECT_FALSE(this->addNew(this->name("DÜNE"), 2));
    ASSERT_TRUE(this->addNew(this->name("Москва")));
    EXPECT_FALSE(this->addNew(this->name("москва"), 2));
    EXPECT_TRUE(this->addNew(this->name("Dune"), 2));
}

TYPED_TEST(Adding, ComparesInnerBlanks)
{
    ASSERT_TRUE(this->addNew(this->name("Pulkovo 1942")));
    EXPECT_TRUE(this->addNew(this->name("Pulkovo  1942"), 2));
    EXPECT_TRUE(this->addNew(this->name("Pulkovo1942"), 2));
}

/// Only the new name is compared trimmed.
TYPED_TEST(Adding, BlanksAroundAPresentNameMakeItAnotherName)
{
    ASSERT_TRUE(this->addNew(this->name(" a ")));
    EXPECT_TRUE(this->addNew(this->name("a"), 2));
    EXPECT_FALSE(this->addNew(this->name(" A "), 2));
    EXPECT_FALSE(this->addNew(this->name("  a"), 2)); // which is "a", trimmed
    EXPECT_EQ(this->names(), (QStringList{QStringLiteral(" a "), QStringLiteral("a")}));
}

TYPED_TEST(Adding, ANameOfBlanksIsAName)
{
    EXPECT_TRUE(this->addNew(this->name("  ")));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("  .xml")));
    EXPECT_EQ(this->value(this->name("  ")), 1);
    EXPECT_TRUE(this->addNew(this->name(" "), 2)); // trimmed it is empty, and nothing is called so
}

TYPED_TEST(Adding, KeepsTheNameAsGivenUntilLoadingGoesByTheRecords)
{
    const auto record = TypeParam::record(this->name("inner"), 1);
    ASSERT_TRUE(this->add(this->name(" outer "), &record));
    EXPECT_EQ(this->names(), QStringList(QStringLiteral(" outer ")));
    EXPECT_EQ(TypeParam::nameOf(*this->find(this->name(" outer "))), this->name("inner"));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral(" outer .xml")));
    this->expectDocument(QStringLiteral(" outer .xml"),
                         TypeParam::document(this->name("inner"), 1));
    this->library().loadLibrary();
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("inner")));
}

TYPED_TEST(Adding, ReplacesAFileThatHoldsSomethingElse)
{
    this->write((std::string(TypeParam::folder) + "/a.xml").c_str(), "something else");
    EXPECT_TRUE(this->addNew(this->name("a")));
    this->expectDocument(QStringLiteral("a.xml"), TypeParam::document(this->name("a"), 1));
}

TYPED_TEST(Adding, GoesByTheNamesInMemoryAndNotByTheFiles)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    ASSERT_TRUE(QFile::remove(this->file("a.xml")));
    EXPECT_FALSE(this->addNew(this->name("a"), 2));
    EXPECT_TRUE(this->files().isEmpty());
}

TYPED_TEST(Adding, WithoutItsDirectoryChangesNothing)
{
    (this->library().*TypeParam::setPath)(this->path("no such folder"));
    EXPECT_FALSE(this->addNew(this->name("a")));
    EXPECT_TRUE(this->names().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(this->path("no such folder")));
}

TYPED_TEST(Adding, WithAnEmptyPathWritesToTheCurrentDirectory)
{
    (this->library().*TypeParam::setPath)(QString());
    const ScopedCurrentDirectory here(this->path("standard"));
    EXPECT_TRUE(this->addNew(this->name("a")));
    EXPECT_EQ(this->entries("standard"), QStringList(QStringLiteral("a.xml")));
}

TYPED_TEST(Adding, WithARelativePathWritesBelowTheCurrentDirectory)
{
    (this->library().*TypeParam::setPath)(QStringLiteral("standard"));
    const ScopedCurrentDirectory here(this->path(""));
    EXPECT_TRUE(this->addNew(this->name("a")));
    EXPECT_EQ(this->entries("standard"), QStringList(QStringLiteral("a.xml")));
}

TYPED_TEST(Adding, WhereADirectoryStandsChangesNothing)
{
    ASSERT_TRUE(QDir().mkdir(this->file("a.xml")));
    EXPECT_FALSE(this->addNew(this->name("a")));
    EXPECT_TRUE(this->names().isEmpty());
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("a.xml")));
}

TYPED_TEST(Adding, WhereAFifoStandsDoesNotWait)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(this->file("a.xml")).constData(), 0600), 0);
    EXPECT_FALSE(this->addNew(this->name("a")));
    EXPECT_TRUE(this->names().isEmpty());
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("a.xml")));
}

TYPED_TEST(Adding, LeavesEarlierPointersValid)
{
    ASSERT_TRUE(this->addNew(this->name("m")));
    const auto *before = this->find(this->name("m"));
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(this->addNew(QString::number(i), 2));
    EXPECT_EQ(this->find(this->name("m")), before);
    EXPECT_EQ(TypeParam::valueOf(*before), 1);
}

TYPED_TEST(Adding, ARecordOfTheLibraryItselfIsCopied)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    EXPECT_TRUE(this->add(this->name("b"), this->find(this->name("a"))));
    EXPECT_EQ(this->value(this->name("b")), 1);
    EXPECT_NE(this->find(this->name("a")), this->find(this->name("b")));
}

TYPED_TEST(Adding, EmitsNothing)
{
    const SignalCount count;
    ASSERT_TRUE(this->addNew(this->name("a")));
    EXPECT_EQ(count.showConfigChanged, 0);
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 0);
}

class AddingSystems : public RecordTest<SystemKind>
{};

TEST_F(AddingSystems, MayNotTakeTheNameOfAStandardOne)
{
    write("standard/a.xml", SystemKind::document(name("Beijing54"), 1));
    library().loadLibrary();
    for (const char *taken : {"Beijing54", "BEIJING54", " beijing54 "}) {
        SCOPED_TRACE(taken);
        EXPECT_FALSE(addNew(name(taken), 2));
    }
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(AddingSystems, MayNotTakeTheNameOfACustomOne)
{
    ASSERT_TRUE(addNew(name("Beijing54")));
    for (const char *taken : {"Beijing54", "BEIJING54", " beijing54 "}) {
        SCOPED_TRACE(taken);
        EXPECT_FALSE(addNew(name(taken), 2));
    }
}

TEST_F(AddingSystems, MayTakeTheNameOfAnEllipsoidOrProjection)
{
    const Ellipsoid ellipsoid = EllipsoidKind::record(name("a"), 1);
    const Projection projection = ProjectionKind::record(name("a"), 1);
    EXPECT_TRUE(library().addEllipsoidToLibrary(name("a"), &ellipsoid));
    EXPECT_TRUE(library().addProjectionToLibrary(name("a"), &projection));
    EXPECT_TRUE(addNew(name("a")));
}

/// No document can hold a time.
TEST_F(AddingSystems, RaisesForATimeAndChangesNothing)
{
    Coord coord = SystemKind::record(name("a"), 1);
    coord.planeTransform.ratio.valType = ValueType_Time;
    const auto raised = messageRaisedByPointer([&] { add(name("a"), &coord); });
    EXPECT_EQ(raised.value_or(""), "No Time Value In Make Coordinate");
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

class AddingProjections : public RecordTest<ProjectionKind>
{};

TEST_F(AddingProjections, RaisesForATimeAndChangesNothing)
{
    Projection projection = ProjectionKind::record(name("a"), 1);
    projection.param[name("FalseEast")].valType = ValueType_Time;
    const auto raised = messageRaisedByPointer([&] { add(name("a"), &projection); });
    EXPECT_EQ(raised.value_or(""), "No Time Value In Make Coordinate");
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

} // namespace
} // namespace KelStd::test
