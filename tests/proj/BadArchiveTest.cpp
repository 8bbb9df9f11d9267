#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "proj/StoredZip.h"
#include "support/LogCapture.h"
#include "support/Printers.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace KelStd {
namespace {

using test::markerBytes;
using test::ProgramDirectory;
using test::readFile;
using test::smallArchive;
using test::storedZip;
using test::TemporaryHome;

const QByteArray libraryEntry = "proj/" KELSTD_PROJ_LIBRARY_NAME;

struct BadArchive
{
    std::string name;
    std::function<QByteArray()> bytes;
};

void PrintTo(const BadArchive &row, std::ostream *out)
{
    *out << row.name;
}

/// Initialising with a program directory as it stands fails and leaves nothing that a later start
/// would take for an installation.
void expectFailure(const TemporaryHome &home)
{
    const QString directory = QDir::currentPath();
    const test::LogCapture log;
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(log.entries().isEmpty());
    EXPECT_TRUE(test::projIsMissing());
    EXPECT_EQ(QDir::currentPath(), directory);
    EXPECT_FALSE(QFile::exists(home.path("geoid_model_list")));
}

void expectRecovery(const TemporaryHome &home, const ProgramDirectory &program)
{
    program.writeArchive(smallArchive());
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());
    EXPECT_EQ(readFile(home.path("proj/proj_enviroment")).toHex(), "00000003");
    EXPECT_EQ(readFile(home.path("proj/share/proj.ini")), "[general]\n");
    ProjLib::___unloadEnviroment();
}

class BadArchives : public testing::TestWithParam<BadArchive>
{};

TEST_P(BadArchives, FailAndAGoodOneRecovers)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(GetParam().bytes());
    program.writeGeoidModel("model.gtx", "grid");
    expectFailure(home);
    EXPECT_FALSE(QFile::exists(home.path("proj/proj_enviroment")));
    expectRecovery(home, program);
}

QByteArray withoutTheLast(int bytes)
{
    const QByteArray whole = smallArchive();
    return whole.left(whole.size() - bytes);
}

/// The archive with one byte of the library's content changed, so that its checksum is wrong.
QByteArray damaged()
{
    QByteArray bytes = smallArchive();
    const int name = bytes.indexOf(libraryEntry);
    char &inside = bytes.data()[name + libraryEntry.size() + 2000];
    inside = static_cast<char>(~inside);
    return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    Archives, BadArchives,
    testing::Values(
        BadArchive{"Empty", [] { return QByteArray(); }},
        BadArchive{"Text", [] { return QByteArray("<html>404 Not Found</html>\n"); }},
        BadArchive{"Zeros", [] { return QByteArray(10000, '\0'); }},
        BadArchive{"CutInTheFirstHeader", [] { return smallArchive().left(20); }},
        BadArchive{"CutInTheLibrary",
                   [] { return smallArchive().left(smallArchive().size() / 2); }},
        // The end record takes 22 bytes, the directory before it some two hundred.
        BadArchive{"CutInTheDirectory", [] { return withoutTheLast(100); }},
        BadArchive{"CutBeforeTheEndRecord", [] { return withoutTheLast(22); }},
        BadArchive{"CutInTheEndRecord", [] { return withoutTheLast(10); }},
        BadArchive{"Beheaded", [] { return smallArchive().mid(1000); }},
        BadArchive{"WrongChecksum", damaged}, BadArchive{"NoEntries", [] { return storedZip({}); }},
        BadArchive{"WithoutProj",
                   [] {
                       return storedZip({{"proj/share/proj.ini", "[general]\n"}});
                   }},
        BadArchive{"WithoutTopFolder",
                   [] {
                       return storedZip({{KELSTD_PROJ_LIBRARY_NAME, test::fakeProjBytes()},
                                         {"share/proj.ini", "[general]\n"}});
                   }},
        BadArchive{"LibraryUnderAnotherName",
                   [] {
                       return storedZip({{libraryEntry + ".bak", test::fakeProjBytes()}});
                   }}),
    [](const auto &row) { return row.param.name; });

TEST(BadArchive, ThatIsMissingFails)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeGeoidModel("model.gtx", "grid");
    expectFailure(home);
    EXPECT_FALSE(QFile::exists(home.path("proj/proj_enviroment")));
    expectRecovery(home, program);
}

TEST(BadArchive, ThatIsADirectoryFails)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    ASSERT_TRUE(QDir().mkpath(program.archiveFile()));
    expectFailure(home);
    EXPECT_FALSE(QFile::exists(home.path("proj/proj_enviroment")));
}

/// Nobody but the library writes the marker: it says that a whole archive was unpacked.
TEST(BadArchive, ThatBringsItsOwnMarkerFails)
{
    for (const qint32 version : {2, 3}) {
        SCOPED_TRACE(version);
        const TemporaryHome home;
        const ProgramDirectory program;
        program.writeArchive(storedZip({{libraryEntry, test::fakeProjBytes()},
                                        {"proj/proj_enviroment", markerBytes(version)}}));
        program.writeGeoidModel("model.gtx", "grid");
        expectFailure(home);
        EXPECT_EQ(readFile(home.path("proj/proj_enviroment")), markerBytes(version));
    }
}

TEST(BadArchive, ThatBroughtAnOldMarkerIsReplacedByAGoodOne)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(storedZip(
        {{libraryEntry, test::fakeProjBytes()}, {"proj/proj_enviroment", markerBytes(2)}}));
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    expectRecovery(home, program);
}

TEST(BadArchive, WithALibraryThatIsNoneIsInstalledButNotLoaded)
{
    const TemporaryHome home;
    const ProgramDirectory program;
    program.writeArchive(storedZip({{libraryEntry, "no library at all"}}));
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(test::projIsMissing());
    // The unpacking was whole; loading is another matter.
    EXPECT_EQ(readFile(home.path("proj/proj_enviroment")).toHex(), "00000003");
}

} // namespace
} // namespace KelStd
