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

} // namespace
} // namespace KelStd
