#include "location/LocationOperations.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/Raised.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

using test::Frame;
using test::LocationOperation;
using test::locationOperations;

class LocationConstruction : public test::ProjTest
{
protected:
    void SetUp() override
    {
        ProjTest::SetUp();
        ASSERT_TRUE(
            Coord_IO::xml_read(test::systemPath(QStringLiteral("ed50_utm_31n.xml")), m_coord));
    }

    /// A location that no operation produces, to see whether one was written.
    static Location untouched()
    {
        Location location;
        location.localNEH = Pos::fromENU(1.0, 2.0, 3.0);
        return location;
    }

    /// A point of the system in the frame that an operation starts from.
    Pos startOf(const LocationOperation &operation)
    {
        Location location;
        EXPECT_TRUE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 52.0, 45.0),
                                                        location, nullptr, &m_coord));
        return test::frameOf(location, operation.from);
    }

    Coord m_coord;
};

TEST_F(LocationConstruction, GivenFrameIsStoredUnchanged)
{
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        const Pos start = startOf(operation);
        Location location;
        ASSERT_TRUE(operation.make(start, location, nullptr, &m_coord, nullptr));
        EXPECT_EQ(test::frameOf(location, operation.from), start);
    }
}

TEST_F(LocationConstruction, ProjectedHeightIsTheLocalEllipsoidalHeight)
{
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        Location location;
        ASSERT_TRUE(operation.make(startOf(operation), location, nullptr, &m_coord, nullptr));
        EXPECT_NEAR(location.get_NEH_H(), location.get_Local_LLH_Height(), 1e-9);
    }
}

/// The datum shift acts on the height, too: the local height of the published ED50 example is
/// 28.02 m where WGS 84 has 73.0 m (EPSG Guidance Note 7-2, geocentric translations). Converting
/// geographic to geographic directly would leave it at 73.0 m.
TEST_F(LocationConstruction, DatumShiftReachesTheHeight)
{
    Location location;
    ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(
        Pos::fromLongLatH(2.0 + 7.0 / 60.0 + 46.38 / 3600.0, 53.0 + 48.0 / 60.0 + 33.82 / 3600.0,
                          73.0),
        location, nullptr, &m_coord));
    EXPECT_NEAR(location.get_Local_LLH_Height(), 28.02, 0.005);
    EXPECT_NEAR(location.get_NEH_H(), 28.02, 0.005);
}

TEST_F(LocationConstruction, FirstSystemIsIgnored)
{
    Coord other;
    Coord::CreateDefaultTMercCoordination(other);
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        const Pos start = startOf(operation);
        Location alone;
        Location withOther;
        ASSERT_TRUE(operation.make(start, alone, nullptr, &m_coord, nullptr));
        ASSERT_TRUE(operation.make(start, withOther, &other, &m_coord, nullptr));
        EXPECT_TRUE(alone == withOther);
    }
}

TEST_F(LocationConstruction, UnavailableGeoidModelChangesNothing)
{
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        const Pos start = startOf(operation);
        Location without;
        ASSERT_TRUE(operation.make(start, without, nullptr, &m_coord, nullptr));
        Coord named = m_coord;
        named.geoidModel.modelFileName = QStringLiteral("no_such_model.gtx");
        Location with;
        ASSERT_TRUE(operation.make(start, with, nullptr, &named, nullptr));
        EXPECT_TRUE(with == without);
    }
}

TEST_F(LocationConstruction, PlanarTransformationAndHeightFittingAreNotApplied)
{
    Coord fitted = m_coord;
    fitted.planeTransform.fuction = PlaneTransformFunction_Four;
    fitted.planeTransform.north_translate.value = 1000.0;
    fitted.planeTransform.ratio.value = 2.0;
    fitted.elevationFitting.function = ElevationFittingFunction_Fixed;
    fitted.elevationFitting.a.value = 100.0;
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        const Pos start = startOf(operation);
        Location plain;
        Location withRecords;
        ASSERT_TRUE(operation.make(start, plain, nullptr, &m_coord, nullptr));
        ASSERT_TRUE(operation.make(start, withRecords, nullptr, &fitted, nullptr));
        EXPECT_TRUE(plain == withRecords);
    }
}

TEST_F(LocationConstruction, WithoutProjFailsAndLeavesTheLocation)
{
    ProjLib::___unloadEnviroment();
    const test::LogCapture log;
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        Location location = untouched();
        QString error;
        EXPECT_FALSE(operation.make(Pos::fromLongLatH(3.5, 52.0, 45.0), location, nullptr, &m_coord,
                                    &error));
        EXPECT_EQ(error, QStringLiteral("No proj library."));
        EXPECT_TRUE(location == untouched());
    }
    EXPECT_EQ(log.entries().size(), 4);
}

struct BadSystem
{
    const char *name;
    void (*spoil)(Coord &);
};

const BadSystem badSystems[] = {
    {"unknown projection",
     [](Coord &coord) { coord.projection.proj4Projection = QStringLiteral("no_such"); }},
    {"no projection name", [](Coord &coord) { coord.projection.proj4Projection.clear(); }},
    {"unknown ellipsoid",
     [](Coord &coord) { coord.ellipsoid.proj4EllpsName = QStringLiteral("no_such"); }},
    {"axis of zero", [](Coord &coord) { coord.ellipsoid = Ellipsoid(); }},
    {"axis that is no number",
     [](Coord &coord) {
         coord.ellipsoid.proj4EllpsName.clear();
         coord.ellipsoid.biggerHalfAxle.value = std::numeric_limits<double>::quiet_NaN();
     }},
    {"definition that does not fit its buffer",
     [](Coord &coord) {
         // Cut at 511 bytes it would still be a definition, with another central meridian.
         coord.projection.paramProj4.insert(QStringLiteral("a"),
                                            QLatin1String("lon_0=9 +title=")
                                                + QString(600, QLatin1Char('x')));
     }},
    {"parameter with a zero character",
     [](Coord &coord) {
         // Cut there it would still be a definition.
         coord.projection.proj4Projection = QStringLiteral("tmerc") + QChar(0);
     }},
};

TEST_F(LocationConstruction, SystemThatProjRefusesFailsAndLeavesTheLocation)
{
    const test::LogCapture log;
    for (const BadSystem &bad : badSystems) {
        Coord coord = m_coord;
        bad.spoil(coord);
        for (const LocationOperation &operation : locationOperations) {
            SCOPED_TRACE(bad.name);
            SCOPED_TRACE(operation.name);
            Location location = untouched();
            QString error;
            EXPECT_FALSE(operation.make(startOf(operation), location, nullptr, &coord, &error));
            EXPECT_EQ(error, QStringLiteral("Error format."));
            EXPECT_TRUE(location == untouched());
        }
    }
    EXPECT_FALSE(log.entries().isEmpty());
}

TEST_F(LocationConstruction, MissingSystemFailsAndLeavesTheLocation)
{
    const test::LogCapture log;
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        Location location = untouched();
        QString error;
        EXPECT_FALSE(operation.make(startOf(operation), location, nullptr, nullptr, &error));
        EXPECT_EQ(error, QStringLiteral("Error format."));
        EXPECT_TRUE(location == untouched());
    }
}

TEST_F(LocationConstruction, PositionThatIsNoNumberFailsAndLeavesTheLocation)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const LocationOperation &operation : locationOperations) {
        for (const double bad : {infinity, -infinity, notANumber}) {
            for (std::size_t component = 0; component < 3; ++component) {
                SCOPED_TRACE(operation.name);
                SCOPED_TRACE(bad);
                SCOPED_TRACE(component);
                auto components = test::componentsOf(startOf(operation));
                components[component] = bad;
                Location location = untouched();
                QString error;
                EXPECT_FALSE(
                    operation.make(Pos::fromXYZ(components[0], components[1], components[2]),
                                   location, nullptr, &m_coord, &error));
                EXPECT_FALSE(error.isEmpty());
                EXPECT_TRUE(location == untouched());
            }
        }
    }
}

TEST_F(LocationConstruction, LatitudeBeyondThePoleHasProjsOwnText)
{
    Location location = untouched();
    QString error;
    EXPECT_FALSE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.0, 91.0, 0.0), location,
                                                     nullptr, &m_coord, &error));
    // PROJ's text for PROJ_ERR_COORD_TRANSFM_INVALID_COORD (proj.h, 9.1).
    EXPECT_EQ(error, QStringLiteral("Invalid coordinate"));
    EXPECT_TRUE(location == untouched());
}

/// PROJ accepts the definition and refuses the transformation of every point: its axes would need
/// the false easting's sign turned.
TEST_F(LocationConstruction, SouthOrientatedSystemWithFalseEastingFailsAtEachPoint)
{
    m_coord.ellipsoid.positiveDir = EllipsoidDirection_WSU;
    Location location = untouched();
    QString error;
    EXPECT_FALSE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 52.0, 45.0), location,
                                                     nullptr, &m_coord, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(location == untouched());
}

/// A unit without a PROJ word raises before any stage, and PROJ refuses a definition in the first:
/// either way the directory is the caller's again, also while the failure is logged.
TEST_F(LocationConstruction, UnitThatRaisesLeavesTheDirectoryAsItWas)
{
    const QString before = QDir::currentPath();
    Coord yards = m_coord;
    yards.ellipsoid.proj4EllpsName.clear();
    yards.ellipsoid.biggerHalfAxle.unit = Unit_Yard;
    Coord refused = m_coord;
    refused.projection.proj4Projection = QStringLiteral("no_such");

    QStringList loggedIn;
    LogLibrary::setSink([&loggedIn](const QString &module, const QString &, ELogType, bool) {
        if (module == QLatin1String("app_log"))
            loggedIn << QDir::currentPath();
    });
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        Location location = untouched();
        EXPECT_EQ(test::messageRaisedByPointer(
                      [&] { operation.make(Pos(), location, nullptr, &yards, nullptr); }),
                  "Error unit for proj4");
        EXPECT_TRUE(location == untouched());
        EXPECT_EQ(QDir::currentPath(), before);
        EXPECT_FALSE(operation.make(startOf(operation), location, nullptr, &refused, nullptr));
        EXPECT_EQ(QDir::currentPath(), before);
    }
    LogLibrary::setSink({});

    EXPECT_EQ(loggedIn, QStringList({before, before, before, before}));
}

TEST_F(LocationConstruction, ErrorTextMayBeLeftOut)
{
    const test::LogCapture log;
    m_coord.projection.proj4Projection = QStringLiteral("no_such");
    Location location = untouched();
    EXPECT_FALSE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 52.0, 45.0), location,
                                                     nullptr, &m_coord));
    EXPECT_TRUE(location == untouched());
}

} // namespace
} // namespace KelStd
