// The four location operations in a system that names a geoid model.

#include "location/LocationOperations.h"
#include "support/GridFiles.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace KelStd {
namespace {

using test::Frame;
using test::frameOf;
using test::LocationOperation;
using test::locationOperations;

constexpr double micrometre = 1e-6;

const test::GridReader &egm96()
{
    static const test::GridReader reader(test::readFile(test::egm96Path()));
    return reader;
}

/// A home of its own with the delivered model in it.
class GeoidLocation : public testing::Test
{
protected:
    void SetUp() override
    {
        m_directory = QDir::currentPath();
        ASSERT_TRUE(QDir(home.path()).mkdir("geoid_model_list"));
        ASSERT_TRUE(QFile::link(test::egm96Path(), modelPath("egm96_15.gtx")));
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
        ASSERT_TRUE(Coord_IO::xml_read(test::systemPath("ed50_utm_31n.xml"), plain));
    }
    void TearDown() override
    {
        EXPECT_EQ(QDir::currentPath(), m_directory);
        ProjLib::___unloadEnviroment();
    }

    QString modelPath(const QString &name) const { return home.path("geoid_model_list/" + name); }

    Coord withModel(const QString &name) const
    {
        Coord coord = plain;
        coord.geoidModel.modelFileName = name;
        return coord;
    }

    /// A point of the system in the frame that an operation starts from.
    Pos startOf(const LocationOperation &operation,
                const Pos &wgs84 = Pos::fromLongLatH(3.5, 52.0, 45.0)) const
    {
        Location location;
        EXPECT_TRUE(Coord::MakeLocation_byWGS84LatLongH(wgs84, location, nullptr, &plain));
        return frameOf(location, operation.from);
    }

    static Location make(const LocationOperation &operation, const Pos &start, const Coord &coord,
                         const QString &expectedError = {})
    {
        Location location;
        QString error;
        EXPECT_TRUE(operation.make(start, location, nullptr, &coord, &error)) << operation.name;
        EXPECT_EQ(error, expectedError) << operation.name;
        return location;
    }

    /// The model is asked in vain: every operation gives what it gives without one.
    void expectEllipsoidal(const Coord &coord, const QString &error,
                           const Pos &wgs84 = Pos::fromLongLatH(3.5, 52.0, 45.0)) const
    {
        for (const LocationOperation &operation : locationOperations) {
            SCOPED_TRACE(operation.name);
            const Pos start = startOf(operation, wgs84);
            EXPECT_TRUE(make(operation, start, coord, error) == make(operation, start, plain));
            Location location;
            EXPECT_TRUE(operation.make(start, location, nullptr, &coord, nullptr));
        }
    }

    test::TemporaryHome home{test::TemporaryHome::PreparedProj};
    Coord plain;

private:
    QString m_directory;
};

double separationAt(const Location &location)
{
    return egm96().separation(location.get_WGS84_LLH_Lat(), location.get_WGS84_LLH_Long());
}

QList<Pos> pointsOfTheSystem(int count)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> longitude(0.0, 6.0);
    std::uniform_real_distribution<double> latitude(35.0, 70.0);
    std::uniform_real_distribution<double> height(-50.0, 3000.0);
    QList<Pos> points;
    for (int i = 0; i < count; ++i) {
        const double l = longitude(random);
        const double b = latitude(random);
        points << Pos::fromLongLatH(l, b, height(random));
    }
    return points;
}

TEST_F(GeoidLocation, ProjectedHeightIsTheOneAboveTheGeoid)
{
    const Coord coord = withModel("egm96_15.gtx");
    for (const Pos &point : pointsOfTheSystem(30)) {
        for (const LocationOperation &operation : locationOperations) {
            if (operation.from == Frame::LocalNEH)
                continue;
            SCOPED_TRACE(operation.name);
            const Pos start = startOf(operation, point);
            const Location with = make(operation, start, coord);
            Location expected = make(operation, start, plain);
            EXPECT_NEAR(with.get_NEH_H(), with.get_WGS84_LLH_Height() - separationAt(with),
                        micrometre);
            // Nothing else differs.
            expected.localNEH.setENU_U(with.get_NEH_H());
            EXPECT_TRUE(with == expected);
        }
    }
}

/// Undulation about +43 m, and the local ellipsoid some 45 m below that of WGS 84: the three
/// heights of a point differ so much that none can be taken for another.
TEST_F(GeoidLocation, IsNotTheLocalEllipsoidsHeightMinusTheUndulation)
{
    const Location location =
        make(locationOperations[0], Pos::fromLongLatH(3.5, 52.0, 45.0), withModel("egm96_15.gtx"));
    EXPECT_NEAR(location.get_NEH_H(), 45.0 - 43.5, 1.0);
    EXPECT_LT(location.get_Local_LLH_Height(), 5.0);
    EXPECT_GT(std::abs(location.get_NEH_H() - location.get_Local_LLH_Height()), 1.0);
    EXPECT_GT(std::abs(location.get_NEH_H() - (location.get_Local_LLH_Height() - 43.5)), 10.0);
}

TEST_F(GeoidLocation, GivenProjectedHeightIsReadAsOneAboveTheGeoid)
{
    const LocationOperation &operation = operationFrom(Frame::LocalNEH);
    const Coord coord = withModel("egm96_15.gtx");
    for (const Pos &point : pointsOfTheSystem(30)) {
        const Pos start = startOf(operation, point);
        const Location with = make(operation, start, coord);
        const Location estimate = make(operation, start, plain);
        EXPECT_EQ(with.localNEH, start);
        // Longitude and latitude are those of the height taken as ellipsoidal.
        EXPECT_EQ(with.get_WGS84_LLH_Long(), estimate.get_WGS84_LLH_Long());
        EXPECT_EQ(with.get_WGS84_LLH_Lat(), estimate.get_WGS84_LLH_Lat());
        EXPECT_NEAR(with.get_WGS84_LLH_Height(), start.getENU().u + separationAt(with), micrometre);
        // The frames between are those of this WGS84 position.
        const Location again = make(locationOperations[0], with.wgs84LLH, plain);
        EXPECT_EQ(with.wgs84XYZ, again.wgs84XYZ);
        EXPECT_EQ(with.localLLH, again.localLLH);
    }
}

/// There and back. The estimate of the way back takes the height as ellipsoidal, and the normals of
/// the two ellipsoids differ by some 1e-5: a hundred metres of height move it by a millimetre or
/// so.
TEST_F(GeoidLocation, ProjectedPositionLeadsBackToMillimetres)
{
    const Coord coord = withModel("egm96_15.gtx");
    for (const Pos &point : pointsOfTheSystem(100)) {
        const Location there = make(locationOperations[0], point, coord);
        Location back;
        ASSERT_TRUE(Coord::MakeLocation_byLocalNEH(there.localNEH, back, nullptr, &coord));
        EXPECT_NEAR(back.get_WGS84_XYZ_X(), there.get_WGS84_XYZ_X(), 0.005);
        EXPECT_NEAR(back.get_WGS84_XYZ_Y(), there.get_WGS84_XYZ_Y(), 0.005);
        EXPECT_NEAR(back.get_WGS84_XYZ_Z(), there.get_WGS84_XYZ_Z(), 0.005);
        EXPECT_NEAR(back.get_WGS84_LLH_Height(), point.getLongLatH().height, 0.001);
    }
}

TEST_F(GeoidLocation, FirstSystemsModelIsIgnored)
{
    const Coord coord = withModel("egm96_15.gtx");
    for (const LocationOperation &operation : locationOperations) {
        const Pos start = startOf(operation);
        Location location;
        ASSERT_TRUE(operation.make(start, location, &coord, &plain, nullptr));
        EXPECT_TRUE(location == make(operation, start, plain));
    }
}

TEST_F(GeoidLocation, UnknownModelIsAsNone)
{
    test::writeFile(home.path("beside.gtx"), test::gtxBytes(test::slopingGrid()));
    const test::LogCapture log;
    for (const QString &name :
         {QStringLiteral("no_such_model.gtx"), QStringLiteral("../beside.gtx"),
          home.path("beside.gtx"), QStringLiteral("egm96_15.GTX"), QStringLiteral(".")}) {
        SCOPED_TRACE(name.toStdString());
        expectEllipsoidal(withModel(name), QString());
    }
    EXPECT_TRUE(log.entries().isEmpty());
}

TEST_F(GeoidLocation, BrokenModelIsAsNoneWithAText)
{
    test::writeFile(modelPath("broken.gtx"), QByteArray(1000, 'x'));
    const test::LogCapture log;
    expectEllipsoidal(withModel("broken.gtx"), "Create proj geoid model failed.");
    ASSERT_FALSE(log.entries().isEmpty());
    for (const auto &entry : log.entries())
        EXPECT_EQ(static_cast<int>(entry.type), 1);
}

TEST_F(GeoidLocation, PointOffTheGridIsAsWithoutAModelWithAText)
{
    test::writeFile(modelPath("small.gtx"), test::gtxBytes(test::slopingGrid())); // 50-54 N, 3-7 E
    const test::LogCapture log;
    expectEllipsoidal(withModel("small.gtx"), "Coordinate to transform falls outside grid",
                      Pos::fromLongLatH(3.5, 49.0, 45.0));
    EXPECT_FALSE(log.entries().isEmpty());
}

TEST_F(GeoidLocation, PointOnAPartialGridHasItsHeight)
{
    test::writeFile(modelPath("small.gtx"), test::gtxBytes(test::slopingGrid()));
    const Location location =
        make(locationOperations[0], Pos::fromLongLatH(3.5, 52.5, 100.0), withModel("small.gtx"));
    EXPECT_NEAR(location.get_NEH_H(), 100.0 - 42.55, 1e-5); // the grid's values are 32-bit numbers
}

TEST_F(GeoidLocation, GgfModelIsConvertedAndUsed)
{
    test::writeFile(modelPath("small.ggf"),
                    test::ggfBytes(test::slopingGrid(), test::RowOrder::Reversed));
    const Location location =
        make(locationOperations[0], Pos::fromLongLatH(3.5, 52.5, 100.0), withModel("small.ggf"));
    EXPECT_NEAR(location.get_NEH_H(), 100.0 - 42.55, 1e-5);
    EXPECT_TRUE(QFileInfo(modelPath("small.ggf.gtx")).isFile());
}

TEST_F(GeoidLocation, FailureOfAConversionLeavesTheLocation)
{
    Coord refused = withModel("egm96_15.gtx");
    refused.projection.proj4Projection = "no_such";
    const test::LogCapture log;
    for (const LocationOperation &operation : locationOperations) {
        Location location;
        location.localNEH = Pos::fromENU(1.0, 2.0, 3.0);
        const Location before = location;
        QString error;
        EXPECT_FALSE(operation.make(startOf(operation), location, nullptr, &refused, &error));
        EXPECT_EQ(error, "Error format.");
        EXPECT_TRUE(location == before);
    }
}

/// The host turns a GGF model into a GTX file when it is first asked for it.
TEST_F(GeoidLocation, HostIsNotAskedForTheModelWhereAConversionFails)
{
    const QString asked = modelPath("small.ggf.gtx");
    test::writeFile(modelPath("small.ggf"),
                    test::ggfBytes(test::slopingGrid(), test::RowOrder::Reversed));
    const test::LogCapture log;
    Location location;
    QString error;

    Coord refused = withModel("small.ggf");
    refused.projection.proj4Projection = "no_such";
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        EXPECT_FALSE(operation.make(startOf(operation), location, nullptr, &refused, &error));
        EXPECT_FALSE(QFileInfo::exists(asked));
    }

    const Coord coord = withModel("small.ggf");
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        const Pos nowhere = Pos::fromXYZ(std::nan(""), 0.0, 0.0);
        EXPECT_FALSE(operation.make(nowhere, location, nullptr, &coord, &error));
        EXPECT_FALSE(QFileInfo::exists(asked));
    }

    ProjLib::___unloadEnviroment();
    for (const LocationOperation &operation : locationOperations) {
        SCOPED_TRACE(operation.name);
        EXPECT_FALSE(operation.make(Pos(), location, nullptr, &coord, &error));
        EXPECT_FALSE(QFileInfo::exists(asked));
    }

    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    make(locationOperations[0], Pos::fromLongLatH(3.5, 52.5, 100.0), coord);
    EXPECT_TRUE(QFileInfo::exists(asked));
}

/// A log of the host's, too, sees its own current directory, whatever fails.
TEST_F(GeoidLocation, FailuresAreLoggedInTheCallersDirectory)
{
    const QString before = QDir::currentPath();
    QStringList directories;
    LogLibrary::setSink([&](const QString &, const QString &, ELogType, bool) {
        directories << QDir::currentPath();
    });
    test::writeFile(modelPath("broken.gtx"), QByteArray(1000, 'x'));
    Coord refused = plain;
    refused.projection.proj4Projection = "no_such";
    const Coord broken = withModel("broken.gtx");
    Location location;
    for (const LocationOperation &operation : locationOperations) {
        EXPECT_FALSE(operation.make(startOf(operation), location, nullptr, &refused, nullptr));
        EXPECT_TRUE(operation.make(startOf(operation), location, nullptr, &broken, nullptr));
    }
    ProjLib::___unloadEnviroment();
    for (const LocationOperation &operation : locationOperations)
        EXPECT_FALSE(operation.make(Pos(), location, nullptr, &plain, nullptr));
    LogLibrary::setSink({});
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_GE(directories.size(), 12); // three failures of four operations
    for (const QString &directory : directories)
        EXPECT_EQ(directory, before);
}

/// The host is asked for the model while its own current directory is current, not PROJ's.
TEST_F(GeoidLocation, ModelIsFoundInAHomeThatIsGivenRelatively)
{
    const QString before = QDir::currentPath();
    const QFileInfo place(home.path());
    ASSERT_TRUE(QDir::setCurrent(place.path()));
    AppConfig::setHomeDir(QDir(place.fileName()));
    const Location location =
        make(locationOperations[0], Pos::fromLongLatH(3.5, 52.0, 45.0), withModel("egm96_15.gtx"));
    EXPECT_NEAR(location.get_NEH_H(), 45.0 - separationAt(location), micrometre);
    QDir::setCurrent(before);
}

/// What a builder tells of a position: which height it has, and by a kind why not another.
struct ToldOutcome
{
    const char *name;
    const char *model;
    const char *projection; ///< null: the system's own
    double longitude;
    bool isMade;
    LocationBuilder::Height height;
    ConversionFailureKind failure;
    double givenHeight = 45.0;
};

constexpr ToldOutcome toldOutcomes[] = {
    {"no model is named", "", nullptr, 3.5, true, LocationBuilder::Height::Ellipsoidal,
     ConversionFailureKind::None},
    {"the host does not have the model", "absent.gtx", nullptr, 3.5, true,
     LocationBuilder::Height::Ellipsoidal, ConversionFailureKind::None},
    {"the model has a value", "small.gtx", nullptr, 3.5, true, LocationBuilder::Height::AboveGeoid,
     ConversionFailureKind::None},
    {"the point is off the grid", "small.gtx", nullptr, 9.5, true,
     LocationBuilder::Height::Ellipsoidal, ConversionFailureKind::NoResult},
    {"the model is no grid", "broken.gtx", nullptr, 3.5, true, LocationBuilder::Height::Ellipsoidal,
     ConversionFailureKind::BadGeoidModel},
    {"the point lies deep below", "", nullptr, 3.5, false, LocationBuilder::Height::Ellipsoidal,
     ConversionFailureKind::NotOneToOne, -30000.0},
    {"there is no such projection", "", "nosuch", 3.5, false, LocationBuilder::Height::Ellipsoidal,
     ConversionFailureKind::RefusedDefinition},
};

TEST_F(GeoidLocation, BuilderTellsItsHeightAndTheKindOfAFailure)
{
    test::writeFile(modelPath("broken.gtx"), QByteArray(1000, 'x'));
    test::writeFile(modelPath("small.gtx"), test::gtxBytes(test::slopingGrid())); // 50-54 N, 3-7 E
    for (const ToldOutcome &row : toldOutcomes) {
        SCOPED_TRACE(row.name);
        Coord coord = withModel(QString::fromLatin1(row.model));
        if (row.projection != nullptr)
            coord.projection.proj4Projection = QString::fromLatin1(row.projection);
        LocationBuilder builder(coord);
        builder.requireOneToOne();
        Location location;
        LocationBuilder::Outcome outcome;
        // Another position's outcome is overwritten.
        builder.make(LocationBuilder::Frame::Wgs84Cartesian, Pos(), location, outcome);
        EXPECT_EQ(builder.make(LocationBuilder::Frame::Wgs84Geographic,
                               Pos::fromLongLatH(row.longitude, 52.0, row.givenHeight), location,
                               outcome),
                  row.isMade);
        EXPECT_EQ(outcome.isMade, row.isMade);
        EXPECT_EQ(outcome.projectedHeight, row.height);
        EXPECT_EQ(outcome.failure, row.failure) << outcome.reason;
        EXPECT_EQ(outcome.reason.isEmpty(), row.failure == ConversionFailureKind::None);
    }
    LocationBuilder builder(plain);
    ProjLib::___unloadEnviroment();
    Location location;
    LocationBuilder::Outcome outcome;
    EXPECT_FALSE(builder.make(LocationBuilder::Frame::LocalProjected, Pos(), location, outcome));
    EXPECT_EQ(outcome.failure, ConversionFailureKind::NotLoaded);
}

// PROJ takes these signs for something else than a part of a path: a list of grids, the path's end,
// a comment, a blank.
TEST_F(GeoidLocation, ModelIsFoundWhateverSignsTheHomesPathHas)
{
    for (const char *name : {"a,b", "a\"b", "a#b", "a;b", "a b"}) {
        SCOPED_TRACE(name);
        const QDir own(home.path(QString::fromLatin1(name)));
        ASSERT_TRUE(QDir().mkpath(own.filePath("proj")) && own.mkdir("geoid_model_list"));
        for (const QFileInfo &piece :
             QDir(home.path("proj")).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
            ASSERT_TRUE(QFile::link(piece.filePath(), own.filePath("proj/" + piece.fileName())));
        ASSERT_TRUE(QFile::link(test::egm96Path(), own.filePath("geoid_model_list/egm96_15.gtx")));
        AppConfig::setHomeDir(own);
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
        const Coord coord = withModel("egm96_15.gtx");
        const Pos start = Pos::fromLongLatH(3.5, 52.0, 45.0);
        const Location location = make(locationOperations[0], start, coord);
        EXPECT_NEAR(location.get_NEH_H(), 45.0 - separationAt(location), micrometre);
        LocationBuilder builder(coord);
        builder.requireDefinitions();
        Location built;
        ASSERT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic, start, built));
        EXPECT_TRUE(built == location);
    }
}

} // namespace
} // namespace KelStd
