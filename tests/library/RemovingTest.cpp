#include "library/RecordKinds.h"

namespace KelStd::test {
namespace {

template <typename Kind>
class Removing : public RecordTest<Kind>
{};
TYPED_TEST_SUITE(Removing, RecordKinds);

TYPED_TEST(Removing, DeletesTheFileAndForgetsTheRecord)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    ASSERT_TRUE(this->addNew(this->name("b")));
    EXPECT_TRUE(this->remove(this->name("a")));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("b.xml")));
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("b")));
    EXPECT_EQ(this->find(this->name("a")), nullptr);
    EXPECT_FALSE(this->remove(this->name("a")));
}

TYPED_TEST(Removing, RefusesAnUnknownName)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    this->write((std::string(TypeParam::folder) + "/b.xml").c_str(), "not loaded");
    for (const char *unknown : {"", "A", "a ", " a", "b"}) {
        SCOPED_TRACE(unknown);
        EXPECT_FALSE(this->remove(this->name(unknown)));
    }
    EXPECT_EQ(this->files(), (QStringList{QStringLiteral("a.xml"), QStringLiteral("b.xml")}));
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("a")));
}

TYPED_TEST(Removing, KeepsARecordFromAFileOfAnotherName)
{
    this->write((std::string(TypeParam::folder) + "/x.xml").c_str(),
                TypeParam::document(this->name("a"), 1));
    this->library().loadLibrary();
    EXPECT_FALSE(this->remove(this->name("a")));
    EXPECT_EQ(this->value(this->name("a")), 1);
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("x.xml")));
}

TYPED_TEST(Removing, KeepsARecordWhoseFileCannotBeDeleted)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    ASSERT_TRUE(QFile::remove(this->file("a.xml")));
    EXPECT_FALSE(this->remove(this->name("a")));
    ASSERT_TRUE(QDir().mkdir(this->file("a.xml")));
    EXPECT_FALSE(this->remove(this->name("a")));
    EXPECT_EQ(this->value(this->name("a")), 1);
}

TYPED_TEST(Removing, ByTheRecordsOwnNameIsSafe)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    if constexpr (std::is_same_v<TypeParam, EllipsoidKind>)
        EXPECT_TRUE(this->remove(this->find(this->name("a"))->ellipsoid_name));
    else if constexpr (std::is_same_v<TypeParam, ProjectionKind>)
        EXPECT_TRUE(this->remove(this->find(this->name("a"))->projection_name));
    else
        EXPECT_TRUE(this->remove(this->find(this->name("a"))->coord_name));
    EXPECT_TRUE(this->names().isEmpty());
}

TYPED_TEST(Removing, LeavesTheNameFree)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    ASSERT_TRUE(this->remove(this->name("a")));
    EXPECT_TRUE(this->addNew(this->name("A"), 2));
}

TYPED_TEST(Removing, EmitsNothing)
{
    ASSERT_TRUE(this->addNew(this->name("a")));
    const SignalCount count;
    ASSERT_TRUE(this->remove(this->name("a")));
    EXPECT_EQ(count.showConfigChanged, 0);
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 0);
}

class RemovingSystems : public RecordTest<SystemKind>
{};

TEST_F(RemovingSystems, RefusesAStandardOne)
{
    write("standard/a.xml", SystemKind::document(name("a"), 1));
    write("custom/a.xml", "not loaded");
    library().loadLibrary();
    EXPECT_FALSE(remove(name("a")));
    EXPECT_EQ(entries("standard"), QStringList(QStringLiteral("a.xml")));
    EXPECT_EQ(files(), QStringList(QStringLiteral("a.xml")));
    EXPECT_NE(library().getCoordFromStandardLibrary(name("a")), nullptr);
}

TEST_F(RemovingSystems, LeavesTheOfferedOnesUntilTheNextLoading)
{
    ASSERT_TRUE(addNew(name("a")));
    ASSERT_TRUE(addNew(name("b")));
    const NamePairs pairs = {{name("a"), name("A")}, {name("b"), name("B")}};
    library().setShowInCreateProjectCoords(pairs);
    const QByteArray before = readFile(path("names.xml"));
    ASSERT_TRUE(remove(name("a")));
    EXPECT_EQ(offered(), pairs);
    EXPECT_EQ(readFile(path("names.xml")), before);
    library().loadLibrary();
    EXPECT_EQ(offered(), pairs.mid(1));
    EXPECT_EQ(readFile(path("names.xml")), before);
}

} // namespace
} // namespace KelStd::test
