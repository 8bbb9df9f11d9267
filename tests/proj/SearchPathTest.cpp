#include "proj/FakeProjHome.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <cstring>

namespace KelStd {
namespace {

using test::FakeProjHome;
using test::TemporaryHome;

using SearchPath = test::FakeProjTest;

TEST_F(SearchPath, IsTheResourceDirectoryAlone)
{
    const std::vector<std::string> expected{home().path("proj/share").toStdString()};
    ASSERT_EQ(fake().searchPaths.size(), 1U);
    EXPECT_EQ(fake().searchPaths[0], expected);
}

TEST_F(SearchPath, IsSetOnTheDefaultContextInsideThePrivateDirectory)
{
    ASSERT_EQ(fake().calls.size(), 1U);
    EXPECT_EQ(fake().calls[0].context, nullptr);
    EXPECT_EQ(fake().calls[0].directory,
              QFileInfo(home().path("proj")).canonicalFilePath().toStdString());
}

TEST_F(SearchPath, IsSetAgainByEveryInitialisation)
{
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    ASSERT_EQ(fake().searchPaths.size(), 2U);
    EXPECT_EQ(fake().searchPaths[0], fake().searchPaths[1]);
}

/// A home with a library file, its marker and nothing else, at a path below a temporary one.
class HomeBelow
{
public:
    explicit HomeBelow(const QString &relative) : m_path(m_parent.path(relative))
    {
        test::writeFile(libraryFile(), test::fakeProjBytes());
        test::writeFile(m_path + "/proj/proj_enviroment", test::markerBytes(3));
        AppConfig::setHomeDir(QDir(m_path));
    }

    QString path() const { return m_path; }
    QString libraryFile() const { return m_path + "/proj/" KELSTD_PROJ_LIBRARY_NAME; }

private:
    TemporaryHome m_parent;
    QString m_path;
};

TEST(SearchPathBytes, AreTheFileSystemsOwn)
{
    const HomeBelow home(QStringLiteral(u"Größe in [Škofja Loka]/测量 'x' \"y\" %1"));
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    const test::FakeProj &fake = test::fakeProjOf(home.libraryFile());
    ASSERT_EQ(fake.searchPaths.size(), 1U);
    ASSERT_EQ(fake.searchPaths[0].size(), 1U);
    // The private directory as the operating system names it, seen from inside the call.
    EXPECT_EQ(fake.searchPaths[0][0], fake.calls[0].directory + "/share");
    ProjLib::___unloadEnviroment();
}

/// What PROJ is given holds 2014 bytes with the zero at the end: a longer path would name another
/// directory.
TEST(SearchPathLength, IsNeverShortened)
{
    constexpr int longest = 2013;
    const TemporaryHome parent;
    const auto homeFor = [&](int pathLength) {
        int missing =
            pathLength - parent.path().size() - static_cast<int>(std::strlen("/proj/share"));
        QString relative;
        while (missing > 202) {
            relative += '/' + QString(200, 'd');
            missing -= 201;
        }
        return relative + '/' + QString(missing - 1, 'e');
    };

    for (const int length : {longest - 1, longest, longest + 1, longest + 100}) {
        SCOPED_TRACE(length);
        const QString path = parent.path() + homeFor(length);
        ASSERT_EQ((path + "/proj/share").size(), length);
        const QString library = path + "/proj/" KELSTD_PROJ_LIBRARY_NAME;
        test::writeFile(library, test::fakeProjBytes());
        test::writeFile(path + "/proj/proj_enviroment", test::markerBytes(3));
        AppConfig::setHomeDir(QDir(path));

        const QString directory = QDir::currentPath();
        const bool fits = length <= longest;
        EXPECT_EQ(ProjLib::___InitializeEnviroment(), fits);
        EXPECT_EQ(test::projIsMissing(), !fits);
        EXPECT_EQ(QDir::currentPath(), directory);
        for (const std::vector<std::string> &paths : test::fakeProjOf(library).searchPaths) {
            ASSERT_EQ(paths.size(), 1U);
            EXPECT_EQ(paths[0], (path + "/proj/share").toStdString());
        }
        ProjLib::___unloadEnviroment();
    }
}

// --- What PROJ finds with it ---------------------------------------------------------------------

/// A grid of the whole earth in PROJ's GTX form that holds one separation [m] everywhere.
QByteArray constantGrid(float separation)
{
    constexpr qint32 rows = 3;
    constexpr qint32 columns = 4;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
    // Latitude and longitude of the first node, then the steps, then the numbers of nodes.
    stream << -90.0 << -180.0 << 90.0 << 90.0 << rows << columns;
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (int node = 0; node < rows * columns; ++node)
        stream << separation;
    return bytes;
}

/// The height above the grid [m] of a point 100 m above the ellipsoid. Without "+vunits" the source
/// is two-dimensional to PROJ, and its height passes by the grid.
double heightAboveGrid(const QString &grid)
{
    Pos pos = Pos::fromLongLatH(9.0, 48.0, 100.0);
    QString error;
    EXPECT_TRUE(
        ProjLib::ConvertPosList("+proj=longlat +datum=WGS84 +vunits=m",
                                "+proj=utm +zone=32 +datum=WGS84 +vunits=m +geoidgrids=" + grid,
                                pos, ProjLib::LocalLatLongH_to_LocalNEH, &error))
        << error;
    return pos.getENU().u;
}

/// The real PROJ in a private directory of its own, into which files can be written.
class FoundGrid : public testing::Test
{
protected:
    void SetUp() override
    {
        const QString staged = QStringLiteral(KELSTD_TEST_STAGED_PROJ);
        const auto link = [&](const QString &from, const QString &to) {
            ASSERT_TRUE(QFile::link(staged + from, home.path("proj") + to));
        };
        ASSERT_TRUE(QDir().mkpath(home.path("proj/share")));
        link("/" KELSTD_PROJ_LIBRARY_NAME, "/" KELSTD_PROJ_LIBRARY_NAME);
        link("/share/proj.db", "/share/proj.db");
        link("/share/proj.ini", "/share/proj.ini");
        test::writeFile(home.path("proj/proj_enviroment"), test::markerBytes(3));
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    }
    void TearDown() override { ProjLib::___unloadEnviroment(); }

    TemporaryHome home;
};

TEST_F(FoundGrid, InTheResourceDirectory)
{
    test::writeFile(home.path("proj/share/resource_40m.gtx"), constantGrid(40.0F));
    EXPECT_DOUBLE_EQ(heightAboveGrid("resource_40m.gtx"), 60.0);
}

/// PROJ looks a bare name up in its search path, and a name that begins with a dot in the current
/// directory.
TEST_F(FoundGrid, InThePrivateDirectoryByItsRelativeName)
{
    test::writeFile(home.path("proj/private_30m.gtx"), constantGrid(30.0F));
    test::writeFile(home.path("proj/models/deeper_20m.gtx"), constantGrid(20.0F));
    EXPECT_DOUBLE_EQ(heightAboveGrid("./private_30m.gtx"), 70.0);
    EXPECT_DOUBLE_EQ(heightAboveGrid("./models/deeper_20m.gtx"), 80.0);
}

/// A list of an absolute and a relative path, in either order: the relative one is found from the
/// private directory.
TEST_F(FoundGrid, OfAListThatBeginsWithAnAbsolutePath)
{
    const TemporaryHome elsewhere;
    home.use();
    const QString small = elsewhere.path("small.gtx");
    test::writeFile(small, test::gtxBytes(test::slopingGrid())); // 50 to 54 N, 3 to 7 E
    test::writeFile(home.path("proj/whole_30m.gtx"), constantGrid(30.0F));
    for (const QString &list : {small + ",./whole_30m.gtx", "./whole_30m.gtx," + small}) {
        SCOPED_TRACE(list.toStdString());
        double diff = 0.0;
        QString error;
        EXPECT_TRUE(ProjLib::Calc_geoid_diff(10.0, 20.0, 100.0, list, diff, &error)) << error;
        EXPECT_DOUBLE_EQ(diff, -30.0);
        EXPECT_TRUE(ProjLib::Calc_geoid_diff_inverse(10.0, 20.0, 100.0, list, diff, &error))
            << error;
        EXPECT_DOUBLE_EQ(diff, 30.0);
    }
}

} // namespace
} // namespace KelStd
