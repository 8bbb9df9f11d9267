// Builders that take the short way between the frames, beside those that are told to take the
// definitions' way, which LocationBuilderTest.cpp holds to be that of `Coord::MakeLocation_by...`.

#include "location/LocationOperations.h"
#include "support/GridFiles.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <optional>
#include <random>
#include <vector>

namespace KelStd {
namespace {

using Frame = LocationBuilder::Frame;
using test::sameBits;
using Way = LocationBuilder::Way;

constexpr int pointsOfSystem = KELSTD_BUILDER_POINTS / 2;

struct FrameRow
{
    Frame frame;
    Pos Location::*position;
    bool isGeographic;
};

constexpr FrameRow frameRows[] = {
    {Frame::Wgs84Geographic, &Location::wgs84LLH, true},
    {Frame::Wgs84Cartesian, &Location::wgs84XYZ, false},
    {Frame::LocalGeographic, &Location::localLLH, true},
    {Frame::LocalProjected, &Location::localNEH, false},
};

constexpr double metres = 1e-6;
constexpr double degrees = 1e-11;

testing::AssertionResult agree(const Location &made, const Location &expected)
{
    for (const FrameRow &row : frameRows) {
        const stXYZ &a = (made.*row.position).getXYZ();
        const stXYZ &b = (expected.*row.position).getXYZ();
        const double tolerance = row.isGeographic ? degrees : metres;
        if (!(std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance
              && std::abs(a.z - b.z) <= metres)) {
            return testing::AssertionFailure()
                   << testing::PrintToString(made.*row.position) << " instead of "
                   << testing::PrintToString(expected.*row.position);
        }
    }
    return testing::AssertionSuccess();
}

/// All delivered and all published systems.
QStringList documents()
{
    QStringList all;
    for (const char *folder :
         {KELSTD_TEST_BIN_DIR "/library/standard", KELSTD_TEST_DATA_DIR "/systems"}) {
        const QDir directory(QString::fromUtf8(folder));
        for (const QString &name : directory.entryList({QStringLiteral("*.xml")}, QDir::Files))
            all += directory.filePath(name);
    }
    return all;
}

Coord read(const QString &document)
{
    Coord coord;
    QString error;
    EXPECT_TRUE(Coord_IO::xml_read(document, coord, &error)) << error;
    return coord;
}

Coord published(const char *document)
{
    return read(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/") + QLatin1String(document));
}

double parameterOf(const Projection &projection, const char *name)
{
    return projection.param.value(projection.paramProj4.key(QLatin1String(name))).value.toDouble();
}

/// Positions of a plane far and near, some of which are those of no place.
class PlanePositions
{
public:
    explicit PlanePositions(const Projection &projection)
        : m_east(parameterOf(projection, "x_0")), m_north(parameterOf(projection, "y_0"))
    {}

    Pos next()
    {
        const double reach = m_reaches[m_count++ % std::size(m_reaches)];
        return Pos::fromENU(m_east + reach * uniform(-1.0, 1.0),
                            m_north + 2.0 * reach * uniform(-1.0, 1.0), uniform(-1500.0, 6000.0));
    }

private:
    double uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }

    static constexpr double m_reaches[] = {1e4, 3e5, 3e5, 3e6, 3e7};
    double m_east;
    double m_north;
    std::size_t m_count = 0;
    std::mt19937 m_random{4711};
};

class ShortWay : public test::ProjTest
{
protected:
    void SetUp() override
    {
        ProjTest::SetUp();
        test::deliverEgm96();
    }

    /// From every frame, as the definitions' way: what is made, and what fails for which reason.
    static void expectAgreement(const Coord &coord, int count, bool isOneToOneRequired)
    {
        LocationBuilder builder(coord);
        LocationBuilder byDefinitions(coord);
        byDefinitions.requireDefinitions();
        builder.requireOneToOne(isOneToOneRequired);
        byDefinitions.requireOneToOne(isOneToOneRequired);
        PlanePositions positions(coord.projection);
        for (int i = 0; i < count; ++i) {
            Location start;
            start.localNEH = positions.next();
            if (!byDefinitions.make(Frame::LocalProjected, start.localNEH, start))
                start.wgs84LLH = start.localLLH = start.wgs84XYZ = start.localNEH;
            for (const FrameRow &row : frameRows) {
                SCOPED_TRACE(testing::PrintToString(start.*row.position));
                Location expected;
                Location made;
                LocationBuilder::Outcome expectedOutcome;
                LocationBuilder::Outcome outcome;
                const bool isExpected =
                    byDefinitions.make(row.frame, start.*row.position, expected, expectedOutcome);
                ASSERT_EQ(builder.make(row.frame, start.*row.position, made, outcome), isExpected);
                ASSERT_EQ(outcome.reason, expectedOutcome.reason);
                ASSERT_EQ(outcome.failure, expectedOutcome.failure);
                ASSERT_EQ(outcome.projectedHeight, expectedOutcome.projectedHeight);
                ASSERT_TRUE(agree(made, expected));
            }
        }
    }
};

TEST_F(ShortWay, OfEverySystemAgreesWithItsDefinitions)
{
    int count = 0;
    int taken = 0;
    for (const QString &document : documents()) {
        SCOPED_TRACE(document.toStdString());
        const Coord coord = read(document);
        ++count;
        const bool isShort = LocationBuilder(coord).way() == Way::Short;
        taken += isShort ? 1 : 0;
        EXPECT_TRUE(isShort);
        expectAgreement(coord, pointsOfSystem / 8, false);
        expectAgreement(coord, pointsOfSystem / 16, true);
        if (HasFatalFailure())
            return;
    }
    EXPECT_GE(count, 160);
    EXPECT_EQ(taken, count);
}

/// --- Its own figures ----------------------------------------------------------------------------

/// X = (N + h) cos(lat) cos(lon), Y = (N + h) cos(lat) sin(lon), Z = (N (1 - e^2) + h) sin(lat),
/// N = a / sqrt(1 - e^2 sin(lat)^2), of a = 6378137 m and 1/f = 298.257223563 (EPSG method 9602),
/// evaluated with fifty digits.
TEST_F(ShortWay, GivesCartesianCoordinatesToTheirLastDigits)
{
    struct Row
    {
        Pos geographic;
        stXYZ cartesian;
    };
    const Row rows[] = {
        {Pos::fromLongLatH(15.0, 52.0, 3000.0),
         {3802663.9901460694, 1018920.7452465501, 5005167.3777434554}},
        {Pos::fromLongLatH(-75.5, -30.25, 4000.0),
         {1381547.4985793986, -5342047.8039815566, -3196359.2387949144}},
        {Pos::fromLongLatH(4.5, 45.0, -900.0),
         {4503030.2195329061, 354396.1641600760, 4486712.0127628519}},
        {Pos::fromLongLatH(170.0, 70.0, 2500.0),
         {-2155530.1722618386, 380078.1271009274, 5973389.2386705290}},
    };
    LocationBuilder builder(published("ed50_utm_31n.xml"));
    ASSERT_EQ(builder.way(), Way::Short);
    constexpr double lastDigits = 3e-9; // three units of a double of seven digits before its point
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.geographic));
        Location location;
        ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, row.geographic, location));
        EXPECT_NEAR(location.get_WGS84_XYZ_X(), row.cartesian.x, lastDigits);
        EXPECT_NEAR(location.get_WGS84_XYZ_Y(), row.cartesian.y, lastDigits);
        EXPECT_NEAR(location.get_WGS84_XYZ_Z(), row.cartesian.z, lastDigits);
    }
}

/// --- When it is taken ---------------------------------------------------------------------------

void setParameter(Coord &coord, const char *name, const Param &value)
{
    const QString key = QLatin1String(name);
    coord.projection.param[key] = value;
    coord.projection.paramProj4[key] = key;
}

void setShift(Coord &coord, EEllipsoinTransformFunction function, double value)
{
    stEllipsoinTransform &t = coord.ellipsoidTransform;
    t.fuction = function;
    for (Param *p : {&t.x_translate, &t.y_translate, &t.z_translate})
        *p = Param(ValueType_Double, Unit_Meter, value);
    for (Param *p : {&t.x_rotate, &t.y_rotate, &t.z_rotate})
        *p = Param(ValueType_Double, Unit_Second, 0.01 * value);
    t.ratio_ppm = Param(ValueType_Double, Unit_None, 0.01 * value);
}

TEST_F(ShortWay, IsTakenWhereTheSystemHasOne)
{
    struct Row
    {
        const char *what;
        std::optional<Way> way; ///< nothing where PROJ accepts the axes of some projections only
        std::function<void(Coord &)> change;
    };
    const Row rows[] = {
        {"as published", Way::Short, [](Coord &) {}},
        {"no datum shift", Way::Short,
         [](Coord &c) { setShift(c, EllipsoinTransformFunction_None, 5.0); }},
        {"three parameters, all zero", Way::Short,
         [](Coord &c) { setShift(c, EllipsoinTransformFunction_Three, 0.0); }},
        {"three parameters", Way::Short,
         [](Coord &c) { setShift(c, EllipsoinTransformFunction_Three, -87.25); }},
        {"seven parameters, all zero", Way::Short,
         [](Coord &c) { setShift(c, EllipsoinTransformFunction_Seven, 0.0); }},
        {"seven parameters", Way::Short,
         [](Coord &c) { setShift(c, EllipsoinTransformFunction_Seven, 150.5); }},
        {"an ellipsoid by numbers", Way::Short,
         [](Coord &c) {
             c.ellipsoid.proj4EllpsName.clear();
             c.ellipsoid.biggerHalfAxle = Param(ValueType_Double, Unit_Meter, 6377563.396);
             c.ellipsoid.reciprocal = 299.3249646;
         }},
        {"axes west, south", std::nullopt,
         [](Coord &c) { c.ellipsoid.positiveDir = EllipsoidDirection_WSU; }},
        {"axes east, south", std::nullopt,
         [](Coord &c) { c.ellipsoid.positiveDir = EllipsoidDirection_ESU; }},
        {"axes west, north", std::nullopt,
         [](Coord &c) { c.ellipsoid.positiveDir = EllipsoidDirection_WNU; }},
        {"a prime meridian", Way::Short,
         [](Coord &c) {
             setParameter(c, "pm", Param(ValueType_String, Unit_None, QStringLiteral("paris")));
         }},
        {"the plane in feet, of which some are a micrometre", Way::Definitions,
         [](Coord &c) {
             setParameter(c, "units", Param(ValueType_String, Unit_None, QStringLiteral("us-ft")));
         }},
        {"an axis order of the projection's own", Way::Short,
         [](Coord &c) {
             setParameter(c, "axis", Param(ValueType_String, Unit_None, QStringLiteral("neu")));
         }},
        {"no projection", Way::Definitions,
         [](Coord &c) { c.projection.proj4Projection = QStringLiteral("longlat"); }},
        {"a second shift", Way::Definitions,
         [](Coord &c) {
             setParameter(c, "towgs84",
                          Param(ValueType_String, Unit_None, QStringLiteral("1,2,3")));
         }},
        {"a datum", Way::Definitions,
         [](Coord &c) {
             setParameter(c, "datum", Param(ValueType_String, Unit_None, QStringLiteral("WGS84")));
         }},
        {"a grid", Way::Definitions,
         [](Coord &c) { c.ellipsoid.proj4EllpsName = QStringLiteral("bessel +nadgrids=@null"); }},
        {"longitudes beyond 180 degrees", Way::Definitions,
         [](Coord &c) {
             setParameter(c, "over", Param(ValueType_Proj4_Param_Bool, Unit_None, true));
         }},
        {"longitudes about a meridian", Way::Definitions,
         [](Coord &c) { setParameter(c, "lon_wrap", Param(ValueType_Double, Unit_None, 180.0)); }},
        {"an unknown ellipsoid", Way::Definitions,
         [](Coord &c) { c.ellipsoid.proj4EllpsName = QStringLiteral("nosuch"); }},
        {"an unknown projection", Way::Definitions,
         [](Coord &c) { c.projection.proj4Projection = QStringLiteral("nosuch"); }},
    };
    const test::LogCapture log; // some are refused
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        for (const char *document : {"ed50_utm_31n.xml", "rd_new.xml", "belge_lambert_72.xml"}) {
            SCOPED_TRACE(document);
            Coord coord = published(document);
            row.change(coord);
            if (row.way) {
                EXPECT_EQ(LocationBuilder(coord).way(), *row.way);
            }
            expectAgreement(coord, 40, false);
            expectAgreement(coord, 40, true);
            if (HasFatalFailure())
                return;
        }
    }
}

/// PROJ's transformations bring longitudes into 180 degrees before they project, "over" or not; its
/// projection alone does not.
TEST_F(ShortWay, GoesAroundTheEarthAsTheDefinitionsDo)
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.projection = Projection();
    coord.projection.proj4Projection = QStringLiteral("merc");
    setParameter(coord, "lon_0", Param(ValueType_Double, Unit_None, 150.0));
    setParameter(coord, "over", Param(ValueType_Proj4_Param_Bool, Unit_None, true));
    LocationBuilder builder(coord);
    for (const double longitude : {186.0, 370.0, -174.0}) {
        const Pos position = Pos::fromLongLatH(longitude, 5.0, 10.0);
        Location expected;
        ASSERT_TRUE(
            Coord::MakeLocation_byLocalLatLongH(position, expected, nullptr, &coord, nullptr));
        Location made;
        ASSERT_TRUE(builder.make(Frame::LocalGeographic, position, made));
        EXPECT_TRUE(agree(made, expected));
    }
}

TEST_F(ShortWay, IsNotTakenWhereTheDefinitionsAreRequired)
{
    const Coord coord = published("rd_new.xml");
    LocationBuilder builder(coord);
    EXPECT_EQ(builder.way(), Way::Short);
    builder.requireDefinitions();
    EXPECT_EQ(builder.way(), Way::Definitions);
    const Pos position = Pos::fromLongLatH(5.8, 52.1, 2900.0);
    Location expected;
    ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(position, expected, nullptr, &coord, nullptr));
    Location made;
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, position, made));
    EXPECT_TRUE(sameBits(made, expected));

    builder.requireDefinitions(false);
    EXPECT_EQ(builder.way(), Way::Short);
    ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, position, made));
    EXPECT_FALSE(sameBits(made, expected));
    EXPECT_TRUE(agree(made, expected));
}

TEST_F(ShortWay, LeavesHighAndDeepPositionsToTheDefinitions)
{
    const Coord coord = published("rd_new.xml");
    LocationBuilder builder(coord);
    for (const double height : {-1000.001, 4000.001, 20000.0, 2e7}) {
        const Pos position = Pos::fromLongLatH(5.8, 52.1, height);
        Location expected;
        ASSERT_TRUE(
            Coord::MakeLocation_byWGS84LatLongH(position, expected, nullptr, &coord, nullptr));
        Location made;
        ASSERT_TRUE(builder.make(Frame::Wgs84Geographic, position, made));
        EXPECT_TRUE(sameBits(made, expected)) << height;
        const Pos given = expected.wgs84XYZ;
        ASSERT_TRUE(builder.make(Frame::Wgs84Cartesian, given, made));
        ASSERT_TRUE(Coord::MakeLocation_byWGS84XYZ(given, expected, nullptr, &coord, nullptr));
        EXPECT_TRUE(sameBits(made, expected)) << height;
    }
}

TEST_F(ShortWay, IsThereOnlyWithPROJ)
{
    LocationBuilder builder(published("rd_new.xml"));
    ProjLib::___unloadEnviroment();
    EXPECT_EQ(builder.way(), Way::Definitions);
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(builder.way(), Way::Short);
    ProjLib::___unloadEnviroment();
    EXPECT_EQ(builder.way(), Way::Definitions);
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
}

TEST_F(ShortWay, GivesHeightsAboveTheGeoid)
{
    Coord coord = published("rd_new.xml");
    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    LocationBuilder builder(coord);
    EXPECT_EQ(builder.way(), Way::Short);
    expectAgreement(coord, 200, false);
}

} // namespace
} // namespace KelStd
