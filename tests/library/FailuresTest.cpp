// Why a change of the registry failed: the kinds in the order in which each operation looks for
// them.

#include "library/RecordKinds.h"
#include "support/FullDisk.h"
#include "support/Raised.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace KelStd::test {
namespace {

using Kind = LibraryFailureKind;
using testing::HasSubstr;

enum class Change
{
    Add,
    Replace,
    Remove
};

/// A change in a library that has "A" in a file of its name, "loose" in one of another name, one
/// without a name, and a folder where the file of "folder" would stand.
struct Row
{
    Change change;
    const char *name;
    bool hasRecord;
    Kind kind;
    const char *text; ///< a part of it; D stands for the directory
};

const Row rows[] = {
    {Change::Add, "new", true, Kind::None, ""},
    {Change::Add, "", true, Kind::NoName, "the name is empty"},
    {Change::Add, "", false, Kind::NoName, "the name is empty"},
    {Change::Add, "new", false, Kind::NoRecord, "no record is given"},
    {Change::Add, "A", false, Kind::NoRecord, "no record is given"},
    {Change::Add, "A", true, Kind::NameTaken, "the name \"A\" is taken by \"A\""},
    {Change::Add, " a\t", true, Kind::NameTaken, "the name \" a\t\" is taken by \"A\""},
    {Change::Add, "LOOSE", true, Kind::NameTaken, "the name \"LOOSE\" is taken by \"loose\""},
    {Change::Add, "../new", true, Kind::LeadsOut,
     "the name \"../new\" leads out of the directory D"},
    {Change::Add, "C:/new", true, Kind::LeadsOut, "\"C:/new\" leads out"},
    {Change::Add, ":new", true, Kind::LeadsOut, "\":new\" leads out"},
    {Change::Add, "~new", true, Kind::LeadsOut, "\"~new\" leads out"},
    {Change::Add, "folder", true, Kind::NotWritable,
     "cannot write D/folder.xml: what stands there is no regular file"},
    {Change::Add, "no folder/new", true, Kind::NotWritable,
     "cannot write D/no folder/new.xml: No such file or directory"},

    {Change::Replace, "A", true, Kind::None, ""},
    {Change::Replace, "loose", true, Kind::None, ""}, // into a file of its name
    {Change::Replace, "", true, Kind::NoName, "the name is empty"},
    {Change::Replace, "A", false, Kind::NoRecord, "no record is given"},
    {Change::Replace, "new", false, Kind::NoRecord, "no record is given"},
    {Change::Replace, "new", true, Kind::NotPresent, "there is no \"new\""},
    {Change::Replace, "a", true, Kind::NotPresent, "there is no \"a\""},
    {Change::Replace, "../new", true, Kind::NotPresent, "there is no \"../new\""},
    {Change::Replace, "../out", true, Kind::LeadsOut, "\"../out\" leads out of the directory D"},
    {Change::Replace, "folder", true, Kind::NotWritable,
     "cannot write D/folder.xml: what stands there is no regular file"},

    {Change::Remove, "A", false, Kind::None, ""},
    {Change::Remove, "a", false, Kind::NotPresent, "there is no \"a\""},
    {Change::Remove, "../out", false, Kind::LeadsOut, "\"../out\" leads out of the directory D"},
    {Change::Remove, "loose", false, Kind::NotRemovable,
     "cannot remove D/loose.xml: No such file or directory"},
    {Change::Remove, "folder", false, Kind::NotRemovable, "cannot remove D/folder.xml: "},
    // An empty name is one like another: its file is ".xml".
    {Change::Remove, "", false, Kind::NotRemovable,
     "cannot remove D/.xml: No such file or directory"},
};

template <typename KindOfRecord>
class Failures : public RecordTest<KindOfRecord>
{
protected:
    void fill() const
    {
        QDir(this->file("")).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(this->file("folder.xml")));
        const auto put = [this](const char *fileName, const char *recordName) {
            writeFile(this->file(fileName), KindOfRecord::document(this->name(recordName), 1));
        };
        put("A.xml", "A");
        put("z1.xml", "loose");
        put("z2.xml", "");
        put("z3.xml", "folder");
        put("z4.xml", "../out");
        this->library().loadLibrary();
    }

    bool run(const Row &row) const
    {
        const auto record = KindOfRecord::record(this->name("R"), 2);
        const auto *given = row.hasRecord ? &record : nullptr;
        switch (row.change) {
        case Change::Add: return this->add(this->name(row.name), given);
        case Change::Replace: return this->replace(this->name(row.name), given);
        case Change::Remove: break;
        }
        return this->remove(this->name(row.name));
    }

    static const LibraryFailure &failure() { return LibraryTest::library().lastFailure(); }
    static std::string failureText() { return failure().text.toStdString(); }
};
TYPED_TEST_SUITE(Failures, RecordKinds);

TYPED_TEST(Failures, HaveAKindAndAText)
{
    QString directory = this->file("");
    directory.chop(1);
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message()
                     << "change " << static_cast<int>(row.change) << " of '" << row.name << "'");
        ASSERT_NO_FATAL_FAILURE(this->fill());
        if (row.change == Change::Add && row.name == std::string("folder")) {
            ASSERT_TRUE(QFile::remove(this->file("z3.xml"))); // the name is free
            this->library().loadLibrary();
        }
        EXPECT_EQ(this->run(row), row.kind == Kind::None);
        EXPECT_EQ(this->failure().kind, row.kind);
        EXPECT_EQ(this->failure().line, 0);
        EXPECT_EQ(this->failureText().empty(), row.kind == Kind::None);
        QString text = QString::fromLatin1(row.text);
        text.replace(QStringLiteral("directory D"), QStringLiteral("directory ") + directory);
        text.replace(QStringLiteral(" D/"), QLatin1Char(' ') + directory + QLatin1Char('/'));
        EXPECT_THAT(this->failureText(), HasSubstr(text.toStdString()));
    }
}

TYPED_TEST(Failures, AreThoseOfTheLastChange)
{
    EXPECT_FALSE(this->remove(this->name("A")));
    EXPECT_EQ(this->failure().kind, Kind::NotPresent);
    EXPECT_EQ(this->find(this->name("A")), nullptr);
    this->library().loadLibrary();
    EXPECT_EQ(this->failure().kind, Kind::NotPresent);
    EXPECT_TRUE(this->addNew(this->name("A")));
    EXPECT_FALSE(this->failure());
    EXPECT_TRUE(this->failure().text.isEmpty());
}

TYPED_TEST(Failures, HaveTheDisksOwnReason)
{
    bool answer = true;
    {
        const FullDisk disk(40);
        answer = this->addNew(this->name("A"));
    }
    EXPECT_FALSE(answer);
    EXPECT_EQ(this->failure().kind, Kind::NotWritable);
    EXPECT_THAT(this->failureText(), HasSubstr("File too large"));
}

TYPED_TEST(Failures, HaveTheDocumentsOwnReason)
{
    EXPECT_FALSE(this->addNew(QString(QChar(0xFFFF))));
    EXPECT_EQ(this->failure().kind, Kind::NotWritable);
    EXPECT_THAT(this->failureText(), HasSubstr("a character that no XML document can hold"));
}

class FailuresOfSystems : public RecordTest<SystemKind>
{
protected:
    static const LibraryFailure &failure() { return library().lastFailure(); }
};

TEST_F(FailuresOfSystems, AStandardSystemTakesANameAndIsNotPresentOtherwise)
{
    write("standard/s.xml", SystemKind::document(name("S"), 1));
    library().loadLibrary();
    EXPECT_FALSE(addNew(name(" s ")));
    EXPECT_EQ(failure().kind, Kind::NameTaken);
    EXPECT_EQ(failure().text, name("the name \" s \" is taken by \"S\""));
    EXPECT_FALSE(replace(name("S"), 2));
    EXPECT_EQ(failure().kind, Kind::NotPresent);
    EXPECT_FALSE(remove(name("S")));
    EXPECT_EQ(failure().kind, Kind::NotPresent);
    EXPECT_FALSE(library().addCoordToCustomLibrary(QString(), nullptr));
    EXPECT_EQ(failure().kind, Kind::NoName);
}

TEST_F(FailuresOfSystems, ATimeIsInNoDocument)
{
    Coord coord = SystemKind::record(name("a"), 2);
    coord.planeTransform.ratio.valType = ValueType_Time;
    const auto raised = messageRaisedByPointer([&] { add(name("a"), &coord); });
    EXPECT_TRUE(raised.has_value());
    EXPECT_EQ(failure().kind, Kind::NoDocument);
    EXPECT_EQ(failure().text, name("no document can hold a parameter that is a time"));
}

class FailuresOfSettings : public LibraryTest
{
protected:
    static const LibraryFailure &failure() { return library().lastFailure(); }

    static stShowConfig changedConfig()
    {
        stShowConfig config;
        config.xyPrecision += 1;
        return config;
    }
};

TEST_F(FailuresOfSettings, AreKnownWhenTheirSignalsAreEmitted)
{
    QList<Kind> kinds;
    QObject receiver;
    const auto note = [&kinds] { kinds += failure().kind; };
    QObject::connect(&library(), &StandardLibrary::sgShowConfigChanged, &receiver, note);
    QObject::connect(&library(), &StandardLibrary::sgShowInCreateProjectCoordsChanged, &receiver,
                     note);
    library().setShowConfigFilePath(path("no folder/show.cfg"));
    library().setShowInCreateProjectCoordsFilePath(path("no folder/names.xml"));
    library().setShowConfig(changedConfig());
    EXPECT_EQ(failure().text.toStdString(), "cannot write "
                                                + path("no folder/show.cfg").toStdString()
                                                + ": No such file or directory");
    library().setShowInCreateProjectCoords({});
    EXPECT_EQ(failure().text.toStdString(), "cannot write "
                                                + path("no folder/names.xml").toStdString()
                                                + ": No such file or directory");
    EXPECT_EQ(kinds, (QList<Kind>{Kind::NotWritable, Kind::NotWritable}));
}

TEST_F(FailuresOfSettings, AreNoneWhereNothingIsWritten)
{
    library().setShowConfigFilePath(path("no folder/show.cfg"));
    library().setShowConfig(changedConfig());
    ASSERT_EQ(failure().kind, Kind::NotWritable);
    library().setShowConfig(changedConfig()); // equal to the present one
    EXPECT_EQ(failure().kind, Kind::None);
    library().setShowConfigFilePath(QString());
    library().setShowConfig(stShowConfig());
    EXPECT_EQ(failure().kind, Kind::None);
    library().setShowInCreateProjectCoordsFilePath(QString());
    library().setShowInCreateProjectCoords({});
    EXPECT_EQ(failure().kind, Kind::None);
    library().setShowInCreateProjectCoordsFilePath(path("names.xml"));
    library().setShowInCreateProjectCoords({});
    EXPECT_EQ(failure().kind, Kind::None);
}

} // namespace
} // namespace KelStd::test
