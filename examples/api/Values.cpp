// Sites, times, texts, and what the host provides.

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

QString atTheSite(const Coord &system, const Location &location, stENU &result)
{
    //! [site]
    calibration::SiteFailure failure;
    const auto site = calibration::SiteTransform::of(system, &failure);
    if (!site)
        return failure.text;
    const stENU atSite = site->toSite(location.localNEH.getENU());
    //! [site]
    result = atSite;
    return {};
}

TEST(SiteExamples, ASiteIsApplied)
{
    Coord system;
    Coord::CreateDefaultTMercCoordination(system);
    system.planeTransform.fuction = PlaneTransformFunction_Four;
    system.planeTransform.east_translate.value = -500000.0;
    system.planeTransform.rotate_angle.value = 90.0 * 3600.0;
    system.planeTransform.ratio.value = 2.0;
    Location location;
    location.localNEH = Pos::fromENU(10.0, 20.0, 5.0);
    stENU site{};
    EXPECT_EQ(atTheSite(system, location, site), QString());
    // E' = east + ratio (E cos t + N sin t), N' = north + ratio (N cos t - E sin t).
    EXPECT_NEAR(site.e, -500000.0 + 2.0 * 20.0, 1e-9);
    EXPECT_NEAR(site.n, -2.0 * 10.0, 1e-9);
    EXPECT_EQ(site.u, 5.0);
    system.planeTransform.ratio.value = 0.0;
    EXPECT_FALSE(atTheSite(system, location, site).isEmpty());
}

TEST(TimeExamples, AnInstantInSeveralScales)
{
    //! [time]
    const TimeUtc utc(2024, 2, 29, 12, 34, 56, 0);
    const TimeGpsW gps = utc.toGpsW();    // week 2303, second 390914, 18 leap seconds
    const TimeUtc later = utc + 86400000; // a day [ms]
    //! [time]
    // A Thursday: four days and 12:34:56 into its week, and 18 leap seconds.
    EXPECT_EQ(gps.gps_weeks(), 2303);
    EXPECT_EQ(gps.gps_seconds(), 4 * 86400 + 12 * 3600 + 34 * 60 + 56 + 18);
    EXPECT_EQ(gps.leapSeconds(), 18);
    EXPECT_EQ(later, TimeUtc(2024, 3, 1, 12, 34, 56, 0));
}

TEST(TextExamples, AnAngleAsPeopleTypeIt)
{
    QString reason;
    //! [typed]
    TypedValueFailure failure;
    const auto latitude = readTypedAngle(QStringLiteral("52d30'15.5\" S"), AngleSense::Latitude,
                                         DecimalMark::Point, failure);
    if (!latitude)
        reason = failure.text;
    //! [typed]
    ASSERT_TRUE(latitude) << reason;
    EXPECT_DOUBLE_EQ(*latitude, -(52.0 + 30.0 / 60.0 + 15.5 / 3600.0));
}

TEST(DisplayExamples, AValueAsTheUserWantsIt)
{
    //! [display]
    stShowConfig config;
    config.heightUnit = Unit_Foot;
    config.heightPrecision = 2;
    const QString text = config.getParamValueString(Param(ValueType_Height, Unit_Meter, 3.048), -1);
    //! [display]
    EXPECT_EQ(text, QStringLiteral("10"));
}

TEST(FileExamples, OneProcessAtATime)
{
    const QTemporaryDir directory;
    bool isDone = false;
    //! [lock]
    FileLock lock(directory.filePath(QStringLiteral(".lock")));
    if (lock.take(1000) == FileLock::Outcome::Taken) // waits a second at most
        isDone = true;                               // others wait meanwhile
    lock.release();
    //! [lock]
    EXPECT_TRUE(isDone);
}

TEST(FailureExamples, AKindToDecideByAndATextToShow)
{
    QString shown;
    //! [failure]
    io::DocumentFailure failure;
    Coord system;
    SystemOrigin origin;
    if (!io::readSystem(QStringLiteral("missing.xml"), system, origin, failure)) {
        if (failure.kind == io::DocumentFault::CannotBeOpened)
            shown = QStringLiteral("choose another file: ");
        shown += failure.text;
    }
    //! [failure]
    EXPECT_TRUE(shown.startsWith(QStringLiteral("choose another file: "))) << shown;
}

QString prepared(const QString &homePath, QStringList &entries)
{
    //! [host]
    AppConfig::setHomeDir(QDir(homePath)); // before PROJ is loaded
    LogLibrary::setSink(
        [&entries](const QString &module, const QString &text, ELogType type, bool) {
            if (type != LogType_Message)
                entries += module + QStringLiteral(": ") + text;
        });
    if (!ProjLib::___InitializeEnviroment())
        return ProjLib::initializationFailure().text;
    //! [host]
    return {};
}

TEST(HostExamples, DirectoriesAndTheLogAreTheHosts)
{
    const test::TemporaryHome home(test::TemporaryHome::PreparedProj);
    QStringList entries;
    EXPECT_EQ(prepared(home.path(), entries), QString());
    ProjLib::___unloadEnviroment();
    EXPECT_FALSE(prepared(home.path(QStringLiteral("not/there")), entries).isEmpty());
    ProjLib::___unloadEnviroment();
    LogLibrary::setSink({});
    home.use();
}

} // namespace
} // namespace KelStd
