#include "delivered/DeliveredDocuments.h"
#include "delivered/EpsgReference.h"
#include "delivered/ExpectedOrigin.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct Zone
{
    int number;
    bool south;
};

std::string labelOf(const Zone &zone)
{
    return std::to_string(zone.number) + (zone.south ? "S" : "N");
}

std::string fileNameOf(const Zone &zone)
{
    return "WGS_84_UTM_zone_" + labelOf(zone) + ".xml";
}

/// The zones from `first` on, north and south.
std::vector<Zone> zonesFrom(int first, int count)
{
    std::vector<Zone> zones;
    for (int number = first; number < first + count; ++number) {
        zones.push_back({number, false});
        zones.push_back({number, true});
    }
    return zones;
}

TEST(DeliveredUtmZones, HaveTheMeridianOfTheirNumberAndTheNorthingOfTheirHemisphere)
{
    for (const Zone &zone : zonesFrom(1, 60)) {
        SCOPED_TRACE(labelOf(zone));
        const Coord coord = test::deliveredSystem(fileNameOf(zone));
        const auto value = [&coord](const char *key) {
            return coord.projection.param.value(QString::fromLatin1(key)).value.toDouble();
        };
        EXPECT_EQ(coord.coord_name.toStdString(), "WGS 84 / UTM zone " + labelOf(zone));
        EXPECT_EQ(value("lon_0"), 6.0 * zone.number - 183.0);
        EXPECT_EQ(value("FalseNorth"), zone.south ? 10000000.0 : 0.0);
        EXPECT_EQ(value("FalseEast"), 500000.0);
        EXPECT_EQ(value("k_0"), 0.9996);
        EXPECT_EQ(value("lat_0"), 0.0);
        EXPECT_EQ(coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
    }
}

constexpr int zonesOfATest = 10;

/// Ten zones in a test, by the first one.
class DeliveredUtmZonesFrom : public test::ProjTest, public testing::WithParamInterface<int>
{};

TEST_P(DeliveredUtmZonesFrom, AgreeWithTheEpsgDatabase)
{
    for (const Zone &zone : zonesFrom(GetParam(), zonesOfATest)) {
        SCOPED_TRACE(labelOf(zone));
        const Coord coord = test::deliveredSystem(fileNameOf(zone));
        const QString code =
            QStringLiteral("EPSG:%1").arg((zone.south ? 32700 : 32600) + zone.number);
        EXPECT_EQ(test::citationOf(fileNameOf(zone)).parameters, code);
        const test::Usage usage = test::epsgUsage(code);
        test::expectOrigin(test::deliveredOrigin(fileNameOf(zone)), code, usage);
        const QList<Pos> positions = test::seededPositions(usage.area, 20);
        const QList<Pos> expected = test::epsgProject(code, positions);
        for (int i = 0; i < positions.size(); ++i) {
            Location location;
            QString error;
            ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(positions[i], location, nullptr, &coord,
                                                            &error))
                << error;
            EXPECT_NEAR(location.get_NEH_E(), expected[i].getXYZ().x, 1e-6);
            EXPECT_NEAR(location.get_NEH_N(), expected[i].getXYZ().y, 1e-6);
            EXPECT_NEAR(location.get_NEH_H(), positions[i].getXYZ().z, 1e-6);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, DeliveredUtmZonesFrom, testing::Range(1, 61, zonesOfATest));

} // namespace
} // namespace KelStd
