#include "support/Printers.h"
#include "support/Raised.h"
#include "support/ScopedShowConfig.h"
#include "text/Symbols.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace KelStd {
namespace {

using test::ScopedShowConfig;
using test::text;

/// The six texts of a position, which begin as something that no position gives.
struct Shown
{
    QString north = text("old");
    QString east = text("old");
    QString height = text("old");
    QString northUnit = text("old");
    QString eastUnit = text("old");
    QString heightUnit = text("old");

    bool operator==(const Shown &other) const
    {
        return north == other.north && east == other.east && height == other.height
               && northUnit == other.northUnit && eastUnit == other.eastUnit
               && heightUnit == other.heightUnit;
    }
};

Coord systemOf(int locationType, EUnit heightUnit)
{
    Coord coord;
    coord.projection.locationType = static_cast<ELocationType>(locationType);
    coord.projection.loc_or_height_unit = heightUnit;
    return coord;
}

Coord planeSystem(EUnit heightUnit = Unit_Meter)
{
    return systemOf(LocationType_X_Y_ElevationHeight, heightUnit);
}

Coord geographicSystem(EUnit heightUnit = Unit_Meter)
{
    return systemOf(LocationType_Lat_Long_EarthHeight, heightUnit);
}

void format(const Pos &pos, const Coord &coord, Shown &shown)
{
    CoordStringHelper::GetFormatString(pos, coord, shown.north, shown.east, shown.height,
                                       &shown.northUnit, &shown.eastUnit, &shown.heightUnit);
}

Shown formatted(const Pos &pos, const Coord &coord)
{
    Shown shown;
    format(pos, coord, shown);
    return shown;
}

TEST(PositionText, OfAPlaneSystem)
{
    stShowConfig config;
    config.xyUnit = Unit_USFoot;
    config.xyPrecision = 3;
    config.xyKeepZero = true;
    config.elevationHeightUnit = Unit_MilliMeter;
    config.elevationHeightPrecision = 1;
    config.elevationHeightKeepZero = true;
    const ScopedShowConfig scope(config);

    // A US survey foot is 1200/3937 m, an international foot 304.8 mm.
    const Shown shown = formatted(Pos::fromENU(1200.0, -2400.0, 10.0), planeSystem(Unit_Foot));
    EXPECT_EQ(shown.east, text("3937.000"));
    EXPECT_EQ(shown.north, text("-7874.000"));
    EXPECT_EQ(shown.height, text("3048.0"));
    EXPECT_EQ(shown.eastUnit, text("U.S ft"));
    EXPECT_EQ(shown.northUnit, text("U.S ft"));
    EXPECT_EQ(shown.heightUnit, text("mm"));
}

TEST(PositionText, OfAGeographicSystem)
{
    stShowConfig config;
    config.latLongPrecision = 2;
    config.earthHeightUnit = Unit_Foot;
    config.earthHeightPrecision = 2;
    config.earthHeightKeepZero = true;
    const ScopedShowConfig scope(config);

    const Shown shown = formatted(Pos::fromENU(-116.1, 30.25, 3.048), geographicSystem());
    EXPECT_EQ(shown.east, text("116°6′0″W"));
    EXPECT_EQ(shown.north, text("30°15′0″N"));
    EXPECT_EQ(shown.height, text("10.00"));
    EXPECT_EQ(shown.eastUnit, text("°"));
    EXPECT_EQ(shown.northUnit, text("°"));
    EXPECT_EQ(shown.heightUnit, text("ft"));
}

TEST(PositionText, OfTheWorkingDefaults)
{
    const ScopedShowConfig scope{stShowConfig()};
    const Shown plane = formatted(Pos::fromENU(500000.12345, 4321000.5, 12.0), planeSystem());
    EXPECT_EQ(plane.east, text("500000.1235"));
    EXPECT_EQ(plane.north, text("4321000.5"));
    EXPECT_EQ(plane.height, text("12"));
    const Shown geographic =
        formatted(Pos::fromENU(12.582438888888889, -0.5, -1.25), geographicSystem());
    EXPECT_EQ(geographic.east, text("12°34′56.78″E"));
    EXPECT_EQ(geographic.north, text("-30′0″S"));
    EXPECT_EQ(geographic.height, text("-1.25"));
}

TEST(PositionText, HeightsStandInTheUnitOfTheProjection)
{
    const ScopedShowConfig scope{stShowConfig()};
    for (const Coord &coord : {planeSystem(Unit_Foot), geographicSystem(Unit_Foot)}) {
        const Shown shown = formatted(Pos::fromENU(1.0, 2.0, 1000.0), coord);
        EXPECT_EQ(shown.height, text("304.8"));
        EXPECT_EQ(shown.heightUnit, text("m"));
    }
    // The unit of the heights is not that of the plane coordinates, which are metres.
    EXPECT_EQ(formatted(Pos::fromENU(1.0, 2.0, 3.0), planeSystem(Unit_Foot)).east, text("1"));
    EXPECT_EQ(formatted(Pos::fromENU(1.0, 2.0, 3.0), planeSystem(Unit_Foot)).north, text("2"));
}

/// What one change of the configuration makes of the position below.
struct SettingRow
{
    const char *name;
    std::function<void(stShowConfig &)> change;
    const char *east;
    const char *north;
    const char *height;
};

const Pos aPosition = Pos::fromENU(1.5, 20.25, 3.0);

void expectEverySetting(const Coord &coord, const std::vector<SettingRow> &rows)
{
    for (const SettingRow &row : rows) {
        SCOPED_TRACE(row.name);
        stShowConfig config;
        row.change(config);
        const ScopedShowConfig scope(config);
        const Shown shown = formatted(aPosition, coord);
        EXPECT_EQ(shown.east, text(row.east));
        EXPECT_EQ(shown.north, text(row.north));
        EXPECT_EQ(shown.height, text(row.height));
    }
}

using C = stShowConfig;

TEST(PositionText, OfAPlaneSystemLooksAtTheSettingsOfXYAndElevation)
{
    expectEverySetting(
        planeSystem(),
        {{"xyUnit", [](C &c) { c.xyUnit = Unit_MilliMeter; }, "1500", "20250", "3"},
         {"xyPrecision", [](C &c) { c.xyPrecision = 0; }, "2", "20", "3"},
         {"xyKeepZero", [](C &c) { c.xyKeepZero = true; }, "1.5000", "20.2500", "3"},
         {"elevationHeightUnit", [](C &c) { c.elevationHeightUnit = Unit_MilliMeter; }, "1.5",
          "20.25", "3000"},
         {"elevationHeightPrecision and KeepZero",
          [](C &c) {
              c.elevationHeightPrecision = 2;
              c.elevationHeightKeepZero = true;
          },
          "1.5", "20.25", "3.00"},
         {"every other",
          [](C &c) {
              c.coordOrder = Format_EastNorthHeight;
              c.doublePrecision = 0;
              c.doubleKeepZero = true;
              c.latLongFormat = Format_Degree;
              c.latLongPrecision = 0;
              c.latLongKeepZero = true;
              c.earthHeightUnit = Unit_MilliMeter;
              c.earthHeightPrecision = 0;
              c.earthHeightKeepZero = true;
              c.angleFormat = Format_Degree;
              c.distanceUnit = Unit_MilliMeter;
              c.distancePrecision = 0;
              c.distanceKeepZero = true;
              c.heightUnit = Unit_MilliMeter;
              c.heightPrecision = 0;
              c.heightKeepZero = true;
          },
          "1.5", "20.25", "3"}});
}

TEST(PositionText, OfAGeographicSystemLooksAtTheSettingsOfLatLongAndEarthHeight)
{
    expectEverySetting(
        geographicSystem(),
        {{"latLongFormat", [](C &c) { c.latLongFormat = Format_Degree; }, "1.5°E", "20.25°N", "3"},
         {"latLongFormat none", [](C &c) { c.latLongFormat = Format_None; }, "1.5", "20.25", "3"},
         {"latLongFormat second", [](C &c) { c.latLongFormat = Format_Second; }, "1.5″E", "20.25″N",
          "3"},
         {"latLongPrecision",
          [](C &c) {
              c.latLongFormat = Format_Radian;
              c.latLongPrecision = 0;
          },
          "2E", "20N", "3"},
         {"latLongKeepZero",
          [](C &c) {
              c.latLongPrecision = 1;
              c.latLongKeepZero = true;
          },
          "1.0°30.0′0.0″E", "20.0°15.0′0.0″N", "3"},
         {"earthHeightUnit", [](C &c) { c.earthHeightUnit = Unit_MilliMeter; }, "1°30′0″E",
          "20°15′0″N", "3000"},
         {"earthHeightPrecision and KeepZero",
          [](C &c) {
              c.earthHeightPrecision = 2;
              c.earthHeightKeepZero = true;
          },
          "1°30′0″E", "20°15′0″N", "3.00"},
         {"every other",
          [](C &c) {
              c.coordOrder = Format_EastNorthHeight;
              c.doublePrecision = 0;
              c.doubleKeepZero = true;
              c.xyUnit = Unit_MilliMeter;
              c.xyPrecision = 0;
              c.xyKeepZero = true;
              c.elevationHeightUnit = Unit_MilliMeter;
              c.elevationHeightPrecision = 0;
              c.elevationHeightKeepZero = true;
              c.angleFormat = Format_Degree;
              c.anglePrecision = 0;
              c.angleKeepZero = true;
              c.distanceUnit = Unit_MilliMeter;
              c.heightUnit = Unit_MilliMeter;
              c.heightPrecision = 0;
              c.heightKeepZero = true;
          },
          "1°30′0″E", "20°15′0″N", "3"}});
}

TEST(PositionText, OfAnotherLocationTypeIsLeftAsItWas)
{
    for (const int locationType : {-1, 2, 5, 1000}) {
        SCOPED_TRACE(locationType);
        EXPECT_TRUE(formatted(aPosition, systemOf(locationType, Unit_Meter)) == Shown());
        // Such a projection has no units; nothing is raised on their account.
        EXPECT_TRUE(formatted(aPosition, systemOf(locationType, Unit_None)) == Shown());
    }
}

TEST(PositionText, NeedsNoUnitTexts)
{
    const ScopedShowConfig scope{stShowConfig()};
    for (const Coord &coord : {planeSystem(), geographicSystem()}) {
        const Shown whole = formatted(aPosition, coord);
        for (int given = 0; given < 8; ++given) {
            SCOPED_TRACE(given);
            Shown shown;
            CoordStringHelper::GetFormatString(aPosition, coord, shown.north, shown.east,
                                               shown.height,
                                               (given & 1) != 0 ? &shown.northUnit : nullptr,
                                               (given & 2) != 0 ? &shown.eastUnit : nullptr,
                                               (given & 4) != 0 ? &shown.heightUnit : nullptr);
            EXPECT_EQ(shown.north, whole.north);
            EXPECT_EQ(shown.east, whole.east);
            EXPECT_EQ(shown.height, whole.height);
            EXPECT_EQ(shown.northUnit, (given & 1) != 0 ? whole.northUnit : text("old"));
            EXPECT_EQ(shown.eastUnit, (given & 2) != 0 ? whole.eastUnit : text("old"));
            EXPECT_EQ(shown.heightUnit, (given & 4) != 0 ? whole.heightUnit : text("old"));
        }
    }
}

TEST(PositionText, IsLeftAsItWasWhenAUnitRaises)
{
    const std::optional<std::string> empty("");
    for (const EUnit unit : {Unit_None, Unit_Degree, Unit_Bar, static_cast<EUnit>(999)}) {
        SCOPED_TRACE(unit);
        for (const Coord &coord : {planeSystem(unit), geographicSystem(unit)}) {
            const ScopedShowConfig scope{stShowConfig()};
            Shown shown;
            EXPECT_EQ(test::messageRaisedByValue([&] { format(aPosition, coord, shown); }), empty);
            EXPECT_TRUE(shown == Shown());
        }
        // A unit of the configuration that has no factor, too.
        stShowConfig config;
        config.xyUnit = unit;
        config.earthHeightUnit = unit;
        const ScopedShowConfig scope(config);
        for (const Coord &coord : {planeSystem(), geographicSystem()}) {
            Shown shown;
            EXPECT_EQ(test::messageRaisedByValue([&] { format(aPosition, coord, shown); }), empty);
            EXPECT_TRUE(shown == Shown());
        }
    }
}

TEST(PositionText, BetweenEqualUnitsNeedsNoFactor)
{
    stShowConfig config;
    config.elevationHeightUnit = Unit_Degree;
    const ScopedShowConfig scope(config);
    const Shown shown = formatted(aPosition, planeSystem(Unit_Degree));
    EXPECT_EQ(shown.height, text("3"));
    EXPECT_EQ(shown.heightUnit, text("°"));
}

TEST(PositionText, OfAPositionThatIsNotFiniteCannotBeTakenForNumbers)
{
    const ScopedShowConfig scope{stShowConfig()};
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const Coord &coord : {planeSystem(), geographicSystem()}) {
        const Shown shown = formatted(Pos::fromENU(infinity, notANumber, -infinity), coord);
        EXPECT_TRUE(shown.east.startsWith(text("inf"))) << shown.east.toStdString();
        EXPECT_TRUE(shown.north.startsWith(text("nan"))) << shown.north.toStdString();
        EXPECT_EQ(shown.height, text("-inf"));
    }
}

} // namespace
} // namespace KelStd
