#include "library/RecordKinds.h"

namespace KelStd::test {
namespace {

template <typename Kind>
class Lookups : public RecordTest<Kind>
{};
TYPED_TEST_SUITE(Lookups, RecordKinds);

TYPED_TEST(Lookups, GoByTheExactName)
{
    ASSERT_TRUE(this->addNew(this->name("Beijing 54")));
    EXPECT_NE(this->find(this->name("Beijing 54")), nullptr);
    for (const char *other : {"", "beijing 54", "BEIJING 54", "Beijing 54 ", " Beijing 54",
                              "Beijing  54", "Beijing", "Beijing 54.xml"}) {
        SCOPED_TRACE(other);
        EXPECT_EQ(this->find(this->name(other)), nullptr);
    }
    EXPECT_EQ(this->find(QString()), nullptr);
}

TYPED_TEST(Lookups, AddToWhatTheMapHolds)
{
    ASSERT_TRUE(this->addNew(this->name("b")));
    ASSERT_TRUE(this->addNew(this->name("a")));
    const typename TypeParam::Record unrelated;
    QMap<QString, const typename TypeParam::Record *> out = {{this->name("a"), &unrelated},
                                                             {this->name("z"), &unrelated}};
    (this->library().*TypeParam::all)(out);
    EXPECT_EQ(QStringList(out.keys()),
              (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("z")}));
    EXPECT_EQ(out.value(this->name("a")), this->find(this->name("a")));
    EXPECT_EQ(out.value(this->name("b")), this->find(this->name("b")));
    EXPECT_EQ(out.value(this->name("z")), &unrelated);
}

TYPED_TEST(Lookups, OfAnEmptyLibraryFindNothing)
{
    EXPECT_EQ(this->find(this->name("a")), nullptr);
    EXPECT_TRUE(this->names().isEmpty());
}

class SystemLookups : public RecordTest<SystemKind>
{
protected:
    void SetUp() override
    {
        RecordTest::SetUp();
        write("standard/s.xml", SystemKind::document(name("s"), 2));
        write("custom/c.xml", SystemKind::document(name("c"), 1));
        library().loadLibrary();
    }
};

TEST_F(SystemLookups, DoNotLookIntoTheOtherMap)
{
    EXPECT_NE(library().getCoordFromStandardLibrary(name("s")), nullptr);
    EXPECT_EQ(library().getCoordFromStandardLibrary(name("c")), nullptr);
    EXPECT_NE(library().getCoordFromCustomLibrary(name("c")), nullptr);
    EXPECT_EQ(library().getCoordFromCustomLibrary(name("s")), nullptr);
}

TEST_F(SystemLookups, GiveTheStandardOnesByTheirNames)
{
    const Coord unrelated;
    QMap<QString, const Coord *> out = {{name("c"), &unrelated}};
    library().getStandardCoordLibrary(out);
    EXPECT_EQ(QStringList(out.keys()), (QStringList{QStringLiteral("c"), QStringLiteral("s")}));
    EXPECT_EQ(out.value(name("s")), library().getCoordFromStandardLibrary(name("s")));
    EXPECT_EQ(out.value(name("c")), &unrelated);
}

TEST_F(SystemLookups, GiveACopyOfTheOfferedOnes)
{
    library().setShowInCreateProjectCoords({{name("c"), name("C")}});
    NamePairs out = {{name("x"), name("y")}, {name("z"), name("z")}};
    library().getShowInCreateProjectCoords(out);
    EXPECT_EQ(out, (NamePairs{{name("c"), name("C")}}));
    out.clear();
    EXPECT_EQ(offered().size(), 1);
}

} // namespace
} // namespace KelStd::test
