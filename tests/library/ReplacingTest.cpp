#include "library/RecordKinds.h"
#include "support/Raised.h"

namespace KelStd::test {
namespace {

template <typename Kind>
class Replacing : public RecordTest<Kind>
{};
TYPED_TEST_SUITE(Replacing, RecordKinds);

TYPED_TEST(Replacing, RewritesTheFileAndTheRecordInItsPlace)
{
    const QString name = this->name("a");
    ASSERT_TRUE(this->addNew(name, 1));
    const auto *before = this->find(name);
    EXPECT_TRUE(this->replace(name, 2));
    EXPECT_EQ(this->find(name), before);
    EXPECT_EQ(this->value(name), 2);
    this->expectDocument(QStringLiteral("a.xml"), TypeParam::document(name, 2));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("a.xml")));
}

TYPED_TEST(Replacing, RefusesAnEmptyNameNoRecordAndAnUnknownName)
{
    ASSERT_TRUE(this->addNew(this->name("a"), 1));
    EXPECT_FALSE(this->replace(QString(), 2));
    EXPECT_FALSE(this->replace(this->name("a"), nullptr));
    for (const char *unknown : {"A", "a ", " a", "b", " "}) {
        SCOPED_TRACE(unknown);
        EXPECT_FALSE(this->replace(this->name(unknown), 2));
    }
    EXPECT_EQ(this->value(this->name("a")), 1);
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("a.xml")));
}

/// A record without a name is known by the empty one, under which none can be replaced.
TYPED_TEST(Replacing, RefusesTheEmptyNameThoughItIsThere)
{
    this->write((std::string(TypeParam::folder) + "/x.xml").c_str(),
                TypeParam::document(QString(), 1));
    this->library().loadLibrary();
    ASSERT_EQ(this->value(QString()), 1);
    EXPECT_FALSE(this->replace(QStringLiteral(""), 2));
    EXPECT_EQ(this->files(), QStringList(QStringLiteral("x.xml")));
}

TYPED_TEST(Replacing, TakesTheRecordWithItsOwnName)
{
    ASSERT_TRUE(this->addNew(this->name("a"), 1));
    const auto record = TypeParam::record(this->name("b"), 2);
    EXPECT_TRUE(this->replace(this->name("a"), &record));
    EXPECT_EQ(this->names(), QStringList(QStringLiteral("a")));
    EXPECT_EQ(TypeParam::nameOf(*this->find(this->name("a"))), this->name("b"));
    this->expectDocument(QStringLiteral("a.xml"), TypeParam::document(this->name("b"), 2));
}

TYPED_TEST(Replacing, WritesAFileOfItsNameForARecordFromAFileOfAnother)
{
    this->write((std::string(TypeParam::folder) + "/x.xml").c_str(),
                TypeParam::document(this->name("a"), 1));
    this->library().loadLibrary();
    EXPECT_TRUE(this->replace(this->name("a"), 2));
    EXPECT_EQ(this->files(), (QStringList{QStringLiteral("a.xml"), QStringLiteral("x.xml")}));
    this->expectDocument(QStringLiteral("x.xml"), TypeParam::document(this->name("a"), 1));
    this->expectDocument(QStringLiteral("a.xml"), TypeParam::document(this->name("a"), 2));
}

TYPED_TEST(Replacing, ThatCannotBeWrittenChangesNothing)
{
    ASSERT_TRUE(this->addNew(this->name("a"), 1));
    ASSERT_TRUE(QFile::remove(this->file("a.xml")));
    ASSERT_TRUE(QDir().mkdir(this->file("a.xml")));
    EXPECT_FALSE(this->replace(this->name("a"), 2));
    EXPECT_EQ(this->value(this->name("a")), 1);
    (this->library().*TypeParam::setPath)(this->path("no such folder"));
    EXPECT_FALSE(this->replace(this->name("a"), 2));
    EXPECT_EQ(this->value(this->name("a")), 1);
}

TYPED_TEST(Replacing, ByItselfIsAWriteLikeAnyOther)
{
    ASSERT_TRUE(this->addNew(this->name("a"), 1));
    ASSERT_TRUE(QFile::remove(this->file("a.xml")));
    EXPECT_TRUE(this->replace(this->name("a"), this->find(this->name("a"))));
    this->expectDocument(QStringLiteral("a.xml"), TypeParam::document(this->name("a"), 1));
    EXPECT_EQ(this->value(this->name("a")), 1);
}

TYPED_TEST(Replacing, EmitsNothing)
{
    ASSERT_TRUE(this->addNew(this->name("a"), 1));
    const SignalCount count;
    ASSERT_TRUE(this->replace(this->name("a"), 2));
    EXPECT_EQ(count.showConfigChanged, 0);
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 0);
}

class ReplacingSystems : public RecordTest<SystemKind>
{};

TEST_F(ReplacingSystems, RefusesAStandardOne)
{
    write("standard/a.xml", SystemKind::document(name("a"), 1));
    library().loadLibrary();
    EXPECT_FALSE(replace(name("a"), 2));
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(readFile(path("standard/a.xml")), SystemKind::document(name("a"), 1));
    EXPECT_EQ(SystemKind::valueOf(*library().getCoordFromStandardLibrary(name("a"))), 1);
}

TEST_F(ReplacingSystems, RaisesForATimeAndChangesNothing)
{
    ASSERT_TRUE(addNew(name("a"), 1));
    const QByteArray before = readFile(file("a.xml"));
    Coord coord = SystemKind::record(name("a"), 2);
    coord.planeTransform.ratio.valType = ValueType_Time;
    const auto raised = messageRaisedByPointer([&] { replace(name("a"), &coord); });
    EXPECT_EQ(raised.value_or(""), "No Time Value In Make Coordinate");
    EXPECT_EQ(value(name("a")), 1);
    EXPECT_EQ(readFile(file("a.xml")), before);
    EXPECT_EQ(files(), QStringList(QStringLiteral("a.xml")));
}

} // namespace
} // namespace KelStd::test
