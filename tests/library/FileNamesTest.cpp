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
         {"a b",     " a",     "a ",        "%1",     "%1 %2 %L3",  "%%",  "Düne",
          "北京 54", "Москва", "🌍",         "a.xml",  ".a",         "..",  "a\"b",
          "a'b",     "a\\b",   "a:b*c?d|e", "$HOME",  "a~",         "-rf", "[a]",
          "a\tb",    "CON",    "#a",        "a&lt;b", "EPSG:28992", "..a", "5:a"}) {
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

/// A name and where it would lead: "%1" stands for the directory of the test's library.
const char *const namesThatLeadOut[] = {
    "../standard/a",
    "../../victim",
    "b/../../standard/a",
    "b/../a", // back into the directory, but nobody needs it
    ".. /standard/a",
    "..\\standard\\a",
    "b\\..\\..\\standard\\a",
    "b\\../../standard/a",
    "%1/standard/a",
    "/a",
    "//host/share/a",
    "\\\\host\\share\\a",
    "\\a",
    "C:\\a",
    "c:/a",
    "z:\\",
    ":a",
    ":/a",
    "::",
    ":",
    "~",
    "~a",
    "~/a",
    "link/a",
    "b/link/a",
};

TYPED_TEST(FileNames, InAFolderOfTheDirectoryStayThere)
{
    this->expectRefused(this->name("no such folder/a"));
    ASSERT_TRUE(QDir().mkpath(this->file("b/c")));
    ASSERT_TRUE(QFile::link(this->file("b"), this->file("inner")));
    for (const char *name : {"b/a", "b/c/..a", "./a", "b//a", "inner/c/a", "b/c/.."}) {
        SCOPED_TRACE(name);
        const QString fileName = this->name(name) + QLatin1String(".xml");
        EXPECT_TRUE(this->addNew(this->name(name), 1));
        EXPECT_TRUE(this->replace(this->name(name), 2));
        this->expectDocument(fileName, TypeParam::document(this->name(name), 2));
        EXPECT_TRUE(this->remove(this->name(name)));
        EXPECT_FALSE(QFileInfo::exists(this->file(fileName)));
    }
}

/// A directory that is itself a link is where the host keeps its records.
TYPED_TEST(FileNames, InADirectoryThatIsALinkStayThere)
{
    ASSERT_TRUE(QDir().mkpath(this->path("elsewhere/b")));
    ASSERT_TRUE(QFile::link(this->path("elsewhere"), this->path("linked")));
    (this->library().*TypeParam::setPath)(this->path("linked"));
    EXPECT_TRUE(this->addNew(this->name("b/a"), 1));
    EXPECT_TRUE(QFileInfo::exists(this->path("elsewhere/b/a.xml")));
    EXPECT_TRUE(this->remove(this->name("b/a")));
}

TYPED_TEST(FileNames, ThatLeadOutOfTheDirectoryAreNotAdded)
{
    ASSERT_TRUE(QDir().mkpath(this->file("b")));
    ASSERT_TRUE(QFile::link(this->path("standard"), this->file("link")));
    ASSERT_TRUE(QFile::link(this->path("standard"), this->file("b/link")));
    const ScopedCurrentDirectory current(this->path("standard"));
    const QStringList before = this->entries(".");
    for (const char *row : namesThatLeadOut) {
        SCOPED_TRACE(row);
        this->expectRefused(this->name(row).replace(QLatin1String("%1"), this->path("")));
    }
    EXPECT_TRUE(this->entries("standard").isEmpty());
    EXPECT_EQ(this->entries("."), before);
}

/// A document may have any name in it, and is known under that.
TYPED_TEST(FileNames, ThatLeadOutOfTheDirectoryAreNeitherReplacedNorRemoved)
{
    ASSERT_TRUE(QDir().mkpath(this->file("b")));
    ASSERT_TRUE(QFile::link(this->path("standard"), this->file("link")));
    ASSERT_TRUE(QFile::link(this->path("standard"), this->file("b/link")));
    const ScopedCurrentDirectory current(this->path("standard"));
    const char *const victims[] = {"standard/a.xml", "standard/:a.xml", "standard/:.xml",
                                   "standard/~.xml", "standard/~a.xml", "victim.xml",
                                   "b/a.xml"};
    for (const char *row : namesThatLeadOut) {
        SCOPED_TRACE(row);
        const QString name = this->name(row).replace(QLatin1String("%1"), this->path(""));
        writeFile(this->file("evil.xml"), TypeParam::document(name, 1));
        for (const char *victim : victims)
            this->write(victim, "a stranger's");
        // What the name leads to from the directory itself.
        writeFile(this->file("b/a.xml"), "a stranger's");
        this->library().loadLibrary();
        ASSERT_EQ(this->value(name), 1);

        EXPECT_FALSE(this->replace(name, 2));
        EXPECT_FALSE(this->remove(name));
        EXPECT_EQ(this->value(name), 1);
        for (const char *victim : victims)
            EXPECT_EQ(readFile(this->path(victim)), "a stranger's") << victim;
        EXPECT_EQ(readFile(this->file("b/a.xml")), "a stranger's");
        this->expectDocument(QStringLiteral("evil.xml"), TypeParam::document(name, 1));
    }
}

/// To Qt such a name, given to it alone, is one of its resources.
TYPED_TEST(FileNames, ThatBeginWithAColonAreReadFromTheDirectory)
{
    writeFile(this->file(":a.xml"), TypeParam::document(this->name("A"), 1));
    this->library().loadLibrary();
    EXPECT_EQ(this->value(this->name("A")), 1);
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
