#include "library/RecordKinds.h"

namespace KelStd::test {
namespace {

template <typename Kind>
class FileNames : public RecordTest<Kind>
{
protected:
    /// Adds, loads, replaces and removes a record of this name, which must be a file's name.
    void expectUsable(const QString &name) const
    {
        const QStringList onlyFile(name + QStringLiteral(".xml"));
        ASSERT_TRUE(this->addNew(name, 1));
        EXPECT_EQ(this->files(), onlyFile);
        EXPECT_TRUE(this->replace(name, 2));
        EXPECT_EQ(this->files(), onlyFile);
        EXPECT_EQ(this->value(name), 2);
        if (!name.startsWith(QLatin1Char('.'))) { // a hidden file is not loaded
            this->library().loadLibrary();
            EXPECT_EQ(this->value(name), 2);
        }
        EXPECT_TRUE(this->remove(name));
        EXPECT_TRUE(this->files().isEmpty());
    }

    void expectRefused(const QString &name) const
    {
        const QStringList before = this->files();
        EXPECT_FALSE(this->addNew(name, 1));
        EXPECT_EQ(this->find(name), nullptr);
        EXPECT_EQ(this->files(), before);
    }
};
TYPED_TEST_SUITE(FileNames, RecordKinds);

TYPED_TEST(FileNames, MayHoldAnythingThatTheFileSystemTakes)
{
    for (const char *name :
         {"a b", " a",    "a ",  "%1",   "%1 %2 %L3", "%%",  "Düne",  "北京 54",   "Москва",
          "🌍",   "a.xml", ".a",  "..",   "a\"b",      "a'b", "a\\b",  "a:b*c?d|e", "$HOME",
          "~",   "-rf",   "[a]", "a\tb", "CON",       "#a",  "a&lt;b"}) {
        SCOPED_TRACE(name);
        this->expectUsable(this->name(name));
    }
}

TYPED_TEST(FileNames, MayBeAsLongAsTheFileSystemTakes)
{
    // With ".xml" 255 bytes, the longest that common file systems take; a temporary file beside it
    // would need a longer one from 245 on.
    for (int length = 240; length <= 251; ++length) {
        SCOPED_TRACE(length);
        this->expectUsable(QString(length, QLatin1Char('n')));
    }
    this->expectUsable(this->name("北").repeated(83)); // 249 bytes
}

TYPED_TEST(FileNames, ThatAreTooLongAreRefused)
{
    for (const int length : {252, 253, 255, 256, 260, 4096, 100000}) {
        SCOPED_TRACE(length);
        this->expectRefused(QString(length, QLatin1Char('n')));
    }
    this->expectRefused(this->name("北").repeated(84));
}

TYPED_TEST(FileNames, ThatFilesCannotExpressAreRefused)
{
    ASSERT_TRUE(this->addNew(this->name("a"), 1));
    const QByteArray before = readFile(this->file("a.xml"));
    // It would take the NUL for the end, and write to "a.xml" without a word.
    this->expectRefused(QStringLiteral("a.xml") + QChar(QChar::Null) + QLatin1Char('b'));
    this->expectRefused(QString(QChar(QChar::Null)));
    this->expectRefused(QString(QChar(0xD800))); // half a surrogate pair
    this->expectRefused(QString(QChar(0xFFFE))); // which no document can hold
    EXPECT_EQ(readFile(this->file("a.xml")), before);
    EXPECT_FALSE(QFileInfo::exists(this->path("a.xml")));
}

TYPED_TEST(FileNames, WithSeparatorsLeadElsewhere)
{
    this->expectRefused(this->name("no such folder/a"));
    EXPECT_TRUE(this->addNew(this->name("../standard/a"), 1));
    EXPECT_EQ(this->entries("standard"), QStringList(QStringLiteral("a.xml")));
    EXPECT_TRUE(this->addNew(this->path("standard/absolute"), 1));
    EXPECT_EQ(this->entries("standard"),
              (QStringList{QStringLiteral("a.xml"), QStringLiteral("absolute.xml")}));
    EXPECT_TRUE(this->files().isEmpty());
}

TYPED_TEST(FileNames, ThatAreLinksStayLinks)
{
    const QString longName(250, QLatin1Char('n'));
    for (const QString &name : {this->name("a"), longName}) {
        ASSERT_TRUE(QFile::link(this->path("target.xml"), this->file(name + ".xml")));
        EXPECT_TRUE(this->addNew(name, 1));
        EXPECT_TRUE(QFileInfo(this->file(name + ".xml")).isSymLink());
        EXPECT_EQ(withSortedAttributes(readFile(this->path("target.xml"))),
                  withSortedAttributes(TypeParam::document(name, 1)));
        ASSERT_TRUE(QFile::remove(this->path("target.xml")));
    }
}

TYPED_TEST(FileNames, KeepTheFilesPermissions)
{
    for (const QString &name : {this->name("a"), QString(250, QLatin1Char('n'))}) {
        ASSERT_TRUE(this->addNew(name, 1));
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser
                                 | QFile::WriteUser | QFile::ReadOther;
        ASSERT_TRUE(QFile::setPermissions(this->file(name + ".xml"), permissions));
        ASSERT_TRUE(this->replace(name, 2));
        EXPECT_EQ(QFile::permissions(this->file(name + ".xml")), permissions);
    }
}

} // namespace
} // namespace KelStd::test
