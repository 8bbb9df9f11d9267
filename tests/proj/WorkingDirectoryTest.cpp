#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/Raised.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <functional>
#include <future>
#include <string>
#include <vector>

namespace KelStd {
namespace {

const auto type = ProjLib::WGS84LatLongH_to_WGS84XYZ;

bool convertOne()
{
    Pos pos;
    return ProjLib::ConvertPosList("a", "b", pos, type);
}

/// Runs every test in a current directory of its own, another one than the process started in.
class WorkingDirectory : public test::FakeProjTest
{
protected:
    void SetUp() override
    {
        FakeProjTest::SetUp();
        ASSERT_TRUE(QDir::setCurrent(m_current.path()));
        fake().calls.clear();
    }
    void TearDown() override
    {
        EXPECT_EQ(QDir::currentPath(), m_current.path());
        ASSERT_TRUE(QDir::setCurrent(m_start));
        FakeProjTest::TearDown();
    }

    std::string privateDirectory() const
    {
        return QFileInfo(home().path("proj")).canonicalFilePath().toStdString();
    }

    /// Every call of PROJ since the start was made with this as the current directory.
    void expectCallsIn(const std::string &directory) const
    {
        EXPECT_FALSE(fake().calls.empty());
        for (const test::FakeProj::Call &call : fake().calls)
            EXPECT_EQ(call.directory, directory) << call.function;
    }

    QString current() const { return m_current.path(); }

private:
    QString m_start = QDir::currentPath();
    QTemporaryDir m_current;
};

TEST_F(WorkingDirectory, IsThePrivateDirectoryWhileConverting)
{
    EXPECT_TRUE(convertOne());
    QList<Pos> list{Pos(), Pos()};
    EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", list, type));
    EXPECT_EQ(fake().count("proj_create_crs_to_crs"), 2);
    EXPECT_EQ(fake().count("proj_trans"), 3);
    EXPECT_EQ(fake().count("proj_destroy"), 2);
    expectCallsIn(privateDirectory());
    EXPECT_EQ(QDir::currentPath(), current());
}

TEST_F(WorkingDirectory, IsThePrivateDirectoryWhileCheckingADefinition)
{
    const Projection projection;
    QString out;
    EXPECT_TRUE(ProjLib::GetProjectionString_proj4(&projection, nullptr, out));
    EXPECT_EQ(fake().count("proj_create"), 1);
    EXPECT_EQ(fake().count("proj_destroy"), 1);
    expectCallsIn(privateDirectory());
    EXPECT_EQ(QDir::currentPath(), current());
}

TEST_F(WorkingDirectory, IsThePrivateDirectoryInTheSelfCheck)
{
    ProjLib::test();
    EXPECT_EQ(fake().count("proj_trans"), 1);
    expectCallsIn(privateDirectory());
    EXPECT_EQ(QDir::currentPath(), current());
}

TEST_F(WorkingDirectory, IsThePrivateDirectoryWhileLoading)
{
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(fake().calls.back().function, "proj_context_set_search_paths");
    EXPECT_EQ(fake().calls.back().directory, privateDirectory());
    EXPECT_EQ(QDir::currentPath(), current());
}

TEST_F(WorkingDirectory, IsRestoredAfterARefusedDefinition)
{
    const test::LogCapture log;
    fake().refusesDefinitions = true;
    EXPECT_FALSE(convertOne());
    EXPECT_EQ(QDir::currentPath(), current());
    const Projection projection;
    QString out;
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, nullptr, out));
    EXPECT_EQ(QDir::currentPath(), current());
    ProjLib::test();
    EXPECT_EQ(QDir::currentPath(), current());
    expectCallsIn(privateDirectory());
}

TEST_F(WorkingDirectory, IsRestoredAfterAFailedPosition)
{
    fake().results = {PJ_COORD{{HUGE_VAL, HUGE_VAL, HUGE_VAL, HUGE_VAL}}};
    EXPECT_FALSE(convertOne());
    EXPECT_EQ(QDir::currentPath(), current());
    QList<Pos> list{Pos(), Pos()};
    EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", list, type));
    EXPECT_EQ(QDir::currentPath(), current());
    EXPECT_EQ(fake().count("proj_errno"), 2);
    expectCallsIn(privateDirectory());
}

TEST_F(WorkingDirectory, IsRestoredWithoutAProjection)
{
    QString out;
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(nullptr, nullptr, out));
    EXPECT_EQ(QDir::currentPath(), current());
}

TEST_F(WorkingDirectory, IsRestoredWhenAnExceptionPassesThroughAConversion)
{
    fake().raises = true;
    EXPECT_EQ(test::messageRaisedByValue(convertOne), "raised inside PROJ");
    EXPECT_EQ(QDir::currentPath(), current());
    EXPECT_EQ(fake().livingObjects, 0);
}

TEST_F(WorkingDirectory, IsRestoredWhenAUnitRaises)
{
    Projection projection;
    Ellipsoid ellipsoid;
    QString out;
    const auto check = [&] { ProjLib::GetProjectionString_proj4(&projection, &ellipsoid, out); };

    projection.loc_or_height_unit = Unit_MilliMeter;
    EXPECT_EQ(test::messageRaisedByPointer(check), "Error unit for proj4");
    EXPECT_EQ(QDir::currentPath(), current());

    projection.loc_or_height_unit = Unit_Meter;
    ellipsoid.biggerHalfAxle.unit = Unit_Degree;
    EXPECT_TRUE(test::messageRaisedByValue(check).has_value());
    EXPECT_EQ(QDir::currentPath(), current());

    ellipsoid.biggerHalfAxle.unit = Unit_Meter;
    projection.param["t"] = Param(ValueType_Time, Unit_None, 0);
    projection.paramProj4["t"] = "t_epoch";
    EXPECT_EQ(test::messageRaisedByPointer(check), "No Time Value In Coordinate");
    EXPECT_EQ(QDir::currentPath(), current());
}

TEST_F(WorkingDirectory, StaysWhereItIsWithoutAHome)
{
    AppConfig::setHomeDir(QDir(home().path("absent")));
    EXPECT_TRUE(convertOne());
    expectCallsIn(QFileInfo(current()).canonicalFilePath().toStdString());
}

TEST_F(WorkingDirectory, StaysWhereItIsWithoutAPrivateDirectory)
{
    // A home without "proj", and one where "proj" is a file.
    AppConfig::setHomeDir(QDir(home().path("proj/share")));
    EXPECT_TRUE(convertOne());
    test::writeFile(home().path("proj/share/proj"), "a file");
    EXPECT_TRUE(convertOne());
    expectCallsIn(QFileInfo(current()).canonicalFilePath().toStdString());
}

TEST_F(WorkingDirectory, OfARelativeHomeIsFound)
{
    AppConfig::setHomeDir(QDir(QDir::current().relativeFilePath(home().path())));
    EXPECT_TRUE(convertOne());
    EXPECT_TRUE(convertOne());
    expectCallsIn(privateDirectory());
}

TEST_F(WorkingDirectory, ThatIsGoneIsNotRestored)
{
    {
        QTemporaryDir shortLived;
        ASSERT_TRUE(QDir::setCurrent(shortLived.path()));
    }
    ASSERT_TRUE(QDir::currentPath().isEmpty());
    EXPECT_TRUE(convertOne());
    expectCallsIn(privateDirectory());
    EXPECT_EQ(QDir::currentPath().toStdString(), privateDirectory());
    ASSERT_TRUE(QDir::setCurrent(current()));
}

// --- What the host's log sees --------------------------------------------------------------------

/// A log of the host's that does something while it is called.
class DoingLog
{
public:
    explicit DoingLog(const std::function<void()> &work)
    {
        LogLibrary::setSink([work](const QString &, const QString &, ELogType, bool) { work(); });
    }
    ~DoingLog() { LogLibrary::setSink({}); }
    DoingLog(const DoingLog &) = delete;
    DoingLog &operator=(const DoingLog &) = delete;
};

/// Everything that is logged of conversions and separations, one call each.
void failInEveryWay(test::FakeProj &fake)
{
    const QString grid = QStringLiteral("./a.gtx");
    double diff = 0.0;
    fake.refusesDefinitions = true;
    EXPECT_FALSE(convertOne());
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, grid, diff));
    fake.refusesDefinitions = false;
    fake.results = {PJ_COORD{{HUGE_VAL, HUGE_VAL, HUGE_VAL, HUGE_VAL}}};
    EXPECT_FALSE(ProjLib::Calc_geoid_diff_inverse(1.0, 2.0, 3.0, grid, diff));
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, QString(), diff));
    fake.results.clear();

    ProjLib::___unloadEnviroment();
    EXPECT_FALSE(convertOne());
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, grid, diff));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
}

constexpr int logEntries = 6; // of `failInEveryWay`

TEST_F(WorkingDirectory, IsTheCallersWhileTheHostsLogIsCalled)
{
    QStringList directories;
    const DoingLog log([&] { directories << QDir::currentPath(); });
    failInEveryWay(fake());
    EXPECT_EQ(directories.size(), logEntries);
    for (const QString &directory : directories)
        EXPECT_EQ(directory, current());
}

/// A log may hand its entries to another thread and wait for it, and that thread may convert.
TEST_F(WorkingDirectory, IsNobodysWhileTheHostsLogWaitsForAnotherThread)
{
    std::vector<std::future<void>> others; // outlive the wait where it is in vain
    int waitedFor = 0;
    const DoingLog log([&] {
        others.push_back(std::async(std::launch::async, [] { ProjLib::test(); }));
        constexpr std::chrono::seconds patience(10);
        waitedFor += others.back().wait_for(patience) == std::future_status::ready ? 1 : 0;
    });
    failInEveryWay(fake());
    EXPECT_EQ(waitedFor, logEntries);
}

} // namespace
} // namespace KelStd
