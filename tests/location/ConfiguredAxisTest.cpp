// What the display configuration may do to locations: an axis that it cannot show fails them with a
// text, and one that it shows wrongly is told to the host's log, once.

#include "location/LocationOperations.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/Raised.h"
#include "support/ScopedShowConfig.h"

#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace KelStd {
namespace {

using test::LocationOperation;
using test::locationOperations;
using test::LogCapture;
using test::ScopedShowConfig;

const QString noLength =
    QStringLiteral("The semi-major axis of the ellipsoid cannot be written for PROJ: the display "
                   "configuration shows it in a unit that is no length.");

stShowConfig distancesIn(EUnit unit, int precision = 4)
{
    stShowConfig config;
    config.distanceUnit = unit;
    config.distancePrecision = static_cast<unsigned char>(precision);
    return config;
}

/// Bessel 1841, by its numbers.
Coord spelledOut()
{
    Coord coord;
    coord.ellipsoid.biggerHalfAxle.value = 6377397.155;
    coord.ellipsoid.reciprocal = 299.1528128;
    coord.projection.proj4Projection = QStringLiteral("tmerc");
    return coord;
}

Location untouched()
{
    Location location;
    location.localNEH = Pos::fromENU(1.0, 2.0, 3.0);
    return location;
}

void writeDefinitions(const Coord &coord)
{
    std::array<std::array<char, 512>, 4> chain{};
    Coord::__MakeCoordStrings(nullptr, &coord, chain[0].data(), chain[1].data(), chain[2].data(),
                              chain[3].data());
}

class ConfiguredAxis : public test::ProjTest
{
protected:
    const Coord m_coord = spelledOut();
    const Pos m_position = Pos::fromLongLatH(0.5, 52.0, 45.0);
};

TEST_F(ConfiguredAxis, InAUnitThatIsNoLengthFailsEveryLocationWithAText)
{
    for (const int unit : {0, 12, 100, 200, 300, -1, 123456}) {
        SCOPED_TRACE(unit);
        const ScopedShowConfig scope(distancesIn(static_cast<EUnit>(unit)));
        for (const LocationOperation &operation : locationOperations) {
            SCOPED_TRACE(operation.name);
            const LogCapture log;
            Location location = untouched();
            QString error;
            EXPECT_FALSE(operation.make(m_position, location, nullptr, &m_coord, &error));
            EXPECT_EQ(error, noLength);
            EXPECT_TRUE(location == untouched());
            ASSERT_EQ(log.entries().size(), 1);
            EXPECT_EQ(log.entries().first().module, QStringLiteral("app_log"));
            EXPECT_EQ(log.entries().first().text, noLength);
            EXPECT_EQ(log.entries().first().type, LogType_Error);
            EXPECT_FALSE(operation.make(m_position, location, nullptr, &m_coord, nullptr));
        }
    }
}

TEST_F(ConfiguredAxis, InAUnitThatIsNoLengthFailsABuilderWithTheSameText)
{
    const ScopedShowConfig scope(distancesIn(Unit_None));
    LocationBuilder builder(m_coord);
    Location location = untouched();
    QString error;
    EXPECT_FALSE(
        builder.make(LocationBuilder::Frame::Wgs84Geographic, m_position, location, &error));
    EXPECT_EQ(error, noLength);
    EXPECT_TRUE(location == untouched());
    LocationBuilder::Outcome outcome;
    EXPECT_EQ(
        builder.make(LocationBuilder::Frame::Wgs84Geographic, &m_position, 1, &location, &outcome),
        0u);
    EXPECT_FALSE(outcome.isMade);
    EXPECT_EQ(outcome.failure, ConversionFailureKind::BadSystem);
    EXPECT_EQ(outcome.reason, noLength);
}

TEST_F(ConfiguredAxis, WithoutProjThatIsWhatLocationsFailWith)
{
    ProjLib::___unloadEnviroment();
    const LogCapture log;
    const ScopedShowConfig scope(distancesIn(Unit_None));
    Location location = untouched();
    QString error;
    EXPECT_FALSE(
        Coord::MakeLocation_byWGS84LatLongH(m_position, location, nullptr, &m_coord, &error));
    EXPECT_EQ(error, QStringLiteral("No proj library."));
    LocationBuilder builder(m_coord);
    EXPECT_FALSE(
        builder.make(LocationBuilder::Frame::Wgs84Geographic, m_position, location, &error));
    EXPECT_EQ(error, QStringLiteral("No proj library."));
}

/// No configuration that a file may hold raises anything.
TEST_F(ConfiguredAxis, NeverMakesALocationRaise)
{
    const LogCapture log;
    for (const EValueType kind :
         {ValueType_Distance, ValueType_Height, ValueType_EarthHeight, ValueType_X,
          ValueType_ElevationHeight, ValueType_Double, ValueType_Angle, ValueType_Longitude,
          ValueType_Pressure, ValueType_Temprature}) {
        Coord coord = m_coord;
        coord.ellipsoid.biggerHalfAxle.valType = kind;
        for (const int unit : {-1, 0, 10, 11, 20, 23, 30, 100, 202, 300, 301, 2147483647}) {
            for (const int precision : {0, 3, 255}) {
                stShowConfig config;
                for (EUnit stShowConfig::*field :
                     {&stShowConfig::distanceUnit, &stShowConfig::heightUnit,
                      &stShowConfig::earthHeightUnit, &stShowConfig::xyUnit,
                      &stShowConfig::elevationHeightUnit, &stShowConfig::pressureUnit,
                      &stShowConfig::tempratureUnit})
                    config.*field = static_cast<EUnit>(unit);
                config.distancePrecision = config.heightPrecision = config.xyPrecision =
                    config.doublePrecision = config.anglePrecision =
                        static_cast<unsigned char>(precision);
                config.angleFormat = config.latLongFormat = static_cast<EFormat>(unit);
                config.distanceKeepZero = precision == 255;
                const ScopedShowConfig scope(config);
                Location location;
                EXPECT_FALSE(test::messageRaisedByValue([&] {
                    Coord::MakeLocation_byWGS84LatLongH(m_position, location, nullptr, &coord);
                })) << kind
                    << ' ' << unit;
            }
        }
    }
}

TEST_F(ConfiguredAxis, OfAnEllipsoidWithANameIsNotLookedAt)
{
    const LogCapture log;
    Coord named = m_coord;
    named.ellipsoid.proj4EllpsName = QStringLiteral(" bessel ");
    for (const EUnit unit : {Unit_None, Unit_Foot}) {
        const ScopedShowConfig scope(distancesIn(unit, 0));
        Location location;
        EXPECT_TRUE(
            Coord::MakeLocation_byWGS84LatLongH(m_position, location, nullptr, &named, nullptr));
    }
    EXPECT_TRUE(log.entries().isEmpty());
}

/// What the host did not have to do with still raises.
TEST_F(ConfiguredAxis, WhoseOwnUnitPROJHasNoWordForRaisesAsEver)
{
    Coord yards = m_coord;
    yards.ellipsoid.biggerHalfAxle.unit = Unit_Yard;
    Location location;
    EXPECT_EQ(test::messageRaisedByPointer([&] {
                  Coord::MakeLocation_byWGS84LatLongH(m_position, location, nullptr, &yards);
              }),
              "Error unit for proj4");
}

// --- The warning
// ----------------------------------------------------------------------------------

/// Makes another setting the last one that was warned of, whatever ran before.
void warnOfAnother()
{
    const LogCapture log;
    const ScopedShowConfig scope(distancesIn(Unit_Mile, 201));
    writeDefinitions(spelledOut());
}

using WarningOfTheAxis = ConfiguredAxis;

TEST_F(WarningOfTheAxis, IsLoggedOnceForASetting)
{
    struct Row
    {
        stShowConfig config;
        const char *unit;
        const char *decimals;
    };
    const Row rows[] = {
        {distancesIn(Unit_Foot, 4), "unit: Foot,", "decimals: 4"},
        {distancesIn(Unit_USFoot, 12), "unit: US Foot,", "decimals: 12"},
        {distancesIn(Unit_MilliMeter, 0), "unit: milli meter,", "decimals: 0"},
        {distancesIn(Unit_Yard, 4), "unit: 21,", "decimals: 4"}, // without a word
        {distancesIn(Unit_Meter, 2), "unit: meter,", "decimals: 2"},
        {distancesIn(Unit_Meter, 0), "unit: meter,", "decimals: 0"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.unit);
        warnOfAnother();
        const ScopedShowConfig scope(row.config);
        const LogCapture log;
        for (const LocationOperation &operation : locationOperations) {
            Location location;
            operation.make(m_position, location, nullptr, &m_coord, nullptr);
        }
        writeDefinitions(m_coord);
        ASSERT_EQ(log.entries().size(), 1);
        const LogCapture::Entry &entry = log.entries().first();
        EXPECT_EQ(entry.module, QStringLiteral("app_log"));
        EXPECT_EQ(entry.type, LogType_Warning);
        EXPECT_FALSE(entry.flag);
        EXPECT_TRUE(entry.text.contains(QLatin1String(row.unit))) << entry.text;
        EXPECT_TRUE(entry.text.contains(QLatin1String(row.decimals))) << entry.text;
    }
}

TEST_F(WarningOfTheAxis, ComesWhicheverOperationWritesTheDefinition)
{
    std::array<char, 1000> single{};
    QString text;
    const std::function<void()> operations[] = {
        [&] { writeDefinitions(m_coord); },
        [&] { ProjLib::CoordToProjString(&m_coord, single.data(), QString()); },
        [&] { ProjLib::GetProjectionString_proj4(&m_coord.projection, &m_coord.ellipsoid, text); },
        [&] { const LocationBuilder builder(m_coord); },
    };
    for (const auto &operation : operations) {
        warnOfAnother();
        const ScopedShowConfig scope(distancesIn(Unit_Foot));
        const LogCapture log;
        operation();
        EXPECT_EQ(log.entries().size(), 1);
    }
}

TEST_F(WarningOfTheAxis, IsNotLoggedForMetresWithThreeDecimals)
{
    warnOfAnother();
    const LogCapture log;
    for (const int precision : {3, 4, 15, 255}) {
        const ScopedShowConfig scope(distancesIn(Unit_Meter, precision));
        writeDefinitions(m_coord);
    }
    EXPECT_TRUE(log.entries().isEmpty());
}

TEST_F(WarningOfTheAxis, ComesAgainAfterAnotherSettingAlone)
{
    warnOfAnother();
    const LogCapture log;
    for (const EUnit unit : {Unit_Foot, Unit_Meter, Unit_Foot, Unit_USFoot, Unit_Foot}) {
        const ScopedShowConfig scope(distancesIn(unit));
        writeDefinitions(m_coord);
    }
    EXPECT_EQ(log.entries().size(), 3); // not for the feet behind the metres
}

TEST_F(WarningOfTheAxis, IsLoggedOnceByManyThreads)
{
    warnOfAnother();
    const ScopedShowConfig scope(distancesIn(Unit_Foot, 7));
    std::atomic<int> entries{0};
    LogLibrary::setSink([&](const QString &, const QString &, ELogType, bool) { ++entries; });
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([this] {
            for (int n = 0; n < 50; ++n)
                const LocationBuilder builder(m_coord);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    LogLibrary::setSink({});
    EXPECT_EQ(entries, 1);
}

/// A host's log may wait for another thread that converts, and may itself make definitions.
TEST_F(WarningOfTheAxis, IsLoggedWhileNothingIsLocked)
{
    QString text;
    const std::function<void()> operations[] = {
        [&] {
            Location location;
            Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.0, 0.0, 0.0), location, nullptr,
                                                &m_coord, nullptr);
        },
        [&] { const LocationBuilder builder(m_coord); },
        [&] { ProjLib::GetProjectionString_proj4(&m_coord.projection, &m_coord.ellipsoid, text); },
    };
    for (const auto &operation : operations) {
        warnOfAnother();
        const ScopedShowConfig scope(distancesIn(Unit_Foot, 8));
        bool isConverted = false;
        LogLibrary::setSink([&](const QString &, const QString &, ELogType, bool) {
            writeDefinitions(m_coord);
            auto other = std::async(std::launch::async, [] {
                Pos pos = Pos::fromLongLatH(3.0, 0.0, 0.0);
                return ProjLib::ConvertPosList(QStringLiteral("+proj=longlat +ellps=GRS80"),
                                               QStringLiteral("+proj=utm +zone=31 +ellps=GRS80"),
                                               pos, ProjLib::LocalLatLongH_to_LocalNEH);
            });
            ASSERT_EQ(other.wait_for(std::chrono::seconds(30)), std::future_status::ready);
            isConverted = other.get();
        });
        operation();
        LogLibrary::setSink({});
        EXPECT_TRUE(isConverted);
    }
}

} // namespace
} // namespace KelStd
