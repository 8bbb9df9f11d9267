#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using test::FakeProj;
using test::fakeProjBytes;
using test::FakeProjHome;
using test::FakeProjTest;

void expectNotLoaded()
{
    const QString directory = QDir::currentPath();
    const test::LogCapture log;
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(log.entries().isEmpty());
    EXPECT_EQ(QDir::currentPath(), directory);
    EXPECT_TRUE(test::projIsMissing());
}

class IncompleteLibrary : public testing::TestWithParam<const char *>
{};

TEST_P(IncompleteLibrary, IsNotLoaded)
{
    const FakeProjHome home(fakeProjBytes(QStringLiteral("without_") + GetParam()));
    expectNotLoaded();

    // It is a library all right; nothing of it was called.
    EXPECT_EQ(home.fake().calls.size(), 0U);

    const FakeProjHome complete;
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());
    ProjLib::___unloadEnviroment();
}

TEST_P(IncompleteLibrary, UnloadsTheCompleteOneBeforeIt)
{
    const FakeProjHome complete;
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    const FakeProjHome home(fakeProjBytes(QStringLiteral("without_") + GetParam()));
    expectNotLoaded();
    EXPECT_EQ(complete.fake().count("proj_cleanup"), 1);
}

INSTANTIATE_TEST_SUITE_P(Functions, IncompleteLibrary,
                         testing::Values("proj_context_create", "proj_context_destroy",
                                         "proj_trans", "proj_create", "proj_create_crs_to_crs",
                                         "proj_destroy", "proj_cleanup", "proj_errno",
                                         "proj_errno_string", "proj_torad"),
                         [](const auto &row) { return std::string(row.param); });

TEST(LibraryWithoutSearchPaths, LoadsAndConverts)
{
    const FakeProjHome home(fakeProjBytes(QStringLiteral("without_proj_context_set_search_paths")));
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(home.fake().searchPaths.empty());
    Pos pos = Pos::fromXYZ(10.0, 20.0, 30.0);
    EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", pos, ProjLib::WGS84LatLongH_to_WGS84XYZ));
    EXPECT_EQ(pos, Pos::fromXYZ(11.0, 22.0, 33.0));
    ProjLib::___unloadEnviroment();
}

TEST(LibraryFile, ThatIsNoLibraryIsNotLoaded)
{
    const QByteArray whole = fakeProjBytes();
    for (const QByteArray &bytes : {QByteArray(), QByteArray("no library at all\n"), whole.left(64),
                                    QByteArray(10000, '\0')}) {
        SCOPED_TRACE(bytes.size());
        const FakeProjHome home(bytes);
        expectNotLoaded();
    }
}

TEST(LibraryFile, ThatIsADirectoryIsNotLoaded)
{
    const FakeProjHome home;
    ASSERT_TRUE(QFile::remove(home.libraryFile()));
    ASSERT_TRUE(QDir().mkdir(home.libraryFile()));
    expectNotLoaded();
}

TEST(LibraryFile, IsTakenFromThePrivateDirectoryOnly)
{
    // The library of the same name lies where a search by name would find it first.
    const FakeProjHome home;
    const QString directory = QDir::currentPath();
    const FakeProjHome other;
    ASSERT_TRUE(QDir::setCurrent(other.path("proj")));
    home.use();
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(home.fake().count("proj_context_set_search_paths"), 1);
    EXPECT_EQ(other.fake().calls.size(), 0U);
    ProjLib::___unloadEnviroment();
    ASSERT_TRUE(QDir::setCurrent(directory));
}

using Loading = FakeProjTest;

TEST_F(Loading, CallsNothingButTheSearchPaths)
{
    ASSERT_EQ(fake().calls.size(), 1U);
    EXPECT_EQ(fake().calls[0].function, "proj_context_set_search_paths");
}

TEST_F(Loading, TwiceUnloadsInBetween)
{
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(fake().count("proj_cleanup"), 1);
    ASSERT_EQ(fake().calls.size(), 3U);
    EXPECT_EQ(fake().calls[1].function, "proj_cleanup");
    EXPECT_EQ(fake().calls[2].function, "proj_context_set_search_paths");
    EXPECT_FALSE(test::projIsMissing());
}

TEST_F(Loading, OfAnotherHomeLeavesTheFirst)
{
    const FakeProjHome other;
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    Pos pos;
    EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", pos, ProjLib::WGS84LatLongH_to_WGS84XYZ));
    EXPECT_EQ(other.fake().count("proj_trans"), 1);
    EXPECT_EQ(fake().count("proj_trans"), 0);
    EXPECT_EQ(fake().count("proj_cleanup"), 1);
    EXPECT_EQ(other.fake().count("proj_cleanup"), 0);
    ProjLib::___unloadEnviroment();
}

TEST_F(Loading, UnloadingCleansUpOnce)
{
    ProjLib::___unloadEnviroment();
    EXPECT_EQ(fake().count("proj_cleanup"), 1);
    EXPECT_TRUE(test::projIsMissing());
    ProjLib::___unloadEnviroment();
    EXPECT_EQ(fake().count("proj_cleanup"), 1);
}

TEST_F(Loading, AfterUnloadingIsPossible)
{
    ProjLib::___unloadEnviroment();
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());
}

/// Nothing is loaded: before any initialisation, and again after unloading.
TEST(Unloaded, EveryOperationSaysSo)
{
    ProjLib::___unloadEnviroment();
    ProjLib::test();
    EXPECT_TRUE(test::projIsMissing());

    QString error;
    QList<Pos> list{Pos::fromXYZ(1.0, 2.0, 3.0)};
    EXPECT_FALSE(
        ProjLib::ConvertPosList("a", "b", list, ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
    EXPECT_EQ(error, "No proj library.");
    EXPECT_EQ(list, QList<Pos>{Pos::fromXYZ(1.0, 2.0, 3.0)});

    const Projection projection;
    const Ellipsoid ellipsoid;
    QString out = "before";
    error.clear();
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out, &error));
    EXPECT_EQ(error, "No proj library.");
    EXPECT_EQ(out, "before");

    // The missing library is noticed before the missing projection, and needs nobody to tell.
    error.clear();
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(nullptr, &ellipsoid, out, &error));
    EXPECT_EQ(error, "No proj library.");
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out, nullptr));
}

} // namespace
} // namespace KelStd
