#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/ScopedShowConfig.h"

#include <KelStd/location/SystemDefinitions.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using Kind = ConversionFailureKind;

Coord transverseMercator()
{
    Coord coord;
    coord.ellipsoid.proj4EllpsName = QStringLiteral("krass");
    coord.projection.proj4Projection = QStringLiteral("tmerc");
    return coord;
}

TEST(SystemDefinitions, AreTheFourOfTheSystem)
{
    ConversionFailure failure;
    const auto definitions = location::definitionsOf(transverseMercator(), &failure);
    ASSERT_TRUE(definitions.has_value());
    EXPECT_EQ(failure.kind, Kind::None);
    EXPECT_EQ(definitions->wgs84Geographic, QStringLiteral("+proj=longlat +datum=WGS84 +axis=enu"));
    EXPECT_EQ(definitions->wgs84Cartesian,
              QStringLiteral("+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m"));
    EXPECT_TRUE(
        definitions->localGeographic.startsWith(QStringLiteral("+proj=longlat +ellps=krass")));
    EXPECT_TRUE(definitions->localProjected.startsWith(QStringLiteral("+proj=tmerc")));
}

TEST(SystemDefinitions, AreNoneWhereOneIsTooLong)
{
    Coord coord = transverseMercator();
    coord.projection.proj4Projection = QString(600, QLatin1Char('s'));
    ConversionFailure failure;
    EXPECT_FALSE(location::definitionsOf(coord, &failure).has_value());
    EXPECT_EQ(failure.kind, Kind::BadSystem);
    EXPECT_EQ(failure.text, QStringLiteral("its PROJ definition is longer than 511 bytes"));
    EXPECT_FALSE(location::definitionsOf(coord).has_value());
}

TEST(SystemDefinitions, AreNoneWhereTheAxisCannotBeWritten)
{
    stShowConfig config;
    config.distanceUnit = Unit_None;
    const test::ScopedShowConfig scope(config);
    Coord coord = transverseMercator();
    coord.ellipsoid.proj4EllpsName.clear();
    coord.ellipsoid.biggerHalfAxle.value = 6377397.155;
    ConversionFailure failure;
    EXPECT_FALSE(location::definitionsOf(coord, &failure).has_value());
    EXPECT_EQ(failure.kind, Kind::BadSystem);
    EXPECT_TRUE(failure.text.contains(QStringLiteral("a unit that is no length")));
}

class AcceptedDefinitions : public test::ProjTest
{};

TEST_F(AcceptedDefinitions, AreThoseOfWhichProjMakesTransformations)
{
    const test::LogCapture log;
    ConversionFailure failure;
    Coord coord = transverseMercator();
    EXPECT_TRUE(location::acceptedByProj(*location::definitionsOf(coord), &failure));
    EXPECT_EQ(failure.kind, Kind::None);

    coord.projection.proj4Projection = QStringLiteral("no_such");
    const auto unknown = *location::definitionsOf(coord);
    EXPECT_FALSE(location::acceptedByProj(unknown, &failure));
    EXPECT_EQ(failure.kind, Kind::RefusedDefinition);
    EXPECT_EQ(failure.text,
              QStringLiteral("PROJ refuses its definition \"%1\"").arg(unknown.localProjected));
    EXPECT_FALSE(location::acceptedByProj(unknown));
}

// PROJ reads a transverse Mercator projection with such axes as EPSG's method 9808, for which it
// has an operation without a false easting and northing only.
TEST_F(AcceptedDefinitions, AreNotThoseWithoutAnOperation)
{
    const struct
    {
        const char *projection;
        EEllipsoidDirection axes;
        double falseEasting;
        bool isAccepted;
    } rows[] = {{"tmerc", EllipsoidDirection_ENU, 1000.0, true},
                {"tmerc", EllipsoidDirection_WSU, 1000.0, false},
                {"tmerc", EllipsoidDirection_WSU, 0.0, true},
                {"tmerc", EllipsoidDirection_ESU, 1000.0, true},
                {"tmerc", EllipsoidDirection_WNU, 1000.0, true},
                {"etmerc", EllipsoidDirection_WSU, 1000.0, true}};
    for (const auto &row : rows) {
        Coord coord = transverseMercator();
        coord.projection.proj4Projection = QString::fromLatin1(row.projection);
        coord.ellipsoid.positiveDir = row.axes;
        coord.projection.paramProj4.insert(QStringLiteral("FalseEast"), QStringLiteral("x_0"));
        coord.projection.param.insert(QStringLiteral("FalseEast"),
                                      Param(ValueType_Distance, Unit_Meter, row.falseEasting));
        ConversionFailure failure;
        EXPECT_EQ(location::acceptedByProj(*location::definitionsOf(coord), &failure),
                  row.isAccepted)
            << row.projection << ' ' << row.axes << ' ' << failure.text;
        EXPECT_EQ(failure.text.contains(QLatin1String("no false easting")), !row.isAccepted);
    }
}

} // namespace
} // namespace KelStd
