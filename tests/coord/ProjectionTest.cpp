#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Projection.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

static_assert(test::isPlainValue<Projection>);

Projection utm31()
{
    Projection projection;
    projection.projection_name = QStringLiteral("UTM zone 31");
    projection.proj4Projection = QStringLiteral("tmerc");
    projection.param = {
        {QStringLiteral("east"), Param(ValueType_Distance, Unit_Meter, 500000.0)},
        {QStringLiteral("meridian"), Param(ValueType_Longitude, Unit_Degree, 3.0)},
    };
    projection.paramProj4 = {
        {QStringLiteral("east"), QStringLiteral("x_0")},
        {QStringLiteral("meridian"), QStringLiteral("lon_0")},
    };
    projection.locationType = LocationType_Lat_Long_EarthHeight;
    projection.loc_or_height_unit = Unit_Foot;
    return projection;
}

TEST(Projection, FreshOneIsEmptyWithPlaneCoordinatesInMetres)
{
    const Projection projection;
    EXPECT_TRUE(projection.projection_name.isEmpty());
    EXPECT_TRUE(projection.proj4Projection.isEmpty());
    EXPECT_TRUE(projection.param.isEmpty());
    EXPECT_TRUE(projection.paramProj4.isEmpty());
    EXPECT_EQ(projection.locationType, LocationType_X_Y_ElevationHeight);
    EXPECT_EQ(projection.loc_or_height_unit, Unit_Meter);
}

TEST(Projection, CopiesAndMovesTakeEveryMember)
{
    test::expectCopiesAndMovesEqual(utm31());
    Projection source = utm31();
    const Projection copy(source);
    EXPECT_EQ(copy.projection_name, QStringLiteral("UTM zone 31"));
    const Projection moved(std::move(source));
    EXPECT_EQ(moved.projection_name, QStringLiteral("UTM zone 31"));
}

TEST(Projection, DisplayNameDoesNotCountForEquality)
{
    Projection renamed = utm31();
    renamed.projection_name = QStringLiteral("another name");
    test::expectEqual(utm31(), renamed);
}

struct Change
{
    const char *member;
    void (*apply)(Projection &);
};

constexpr Change changes[] = {
    {"proj4Projection", [](Projection &p) { p.proj4Projection = QStringLiteral("TMERC"); }},
    {"a parameter's value", [](Projection &p) { p.param[QStringLiteral("east")].value = 1.0; }},
    {"a parameter's unit", [](Projection &p) { p.param[QStringLiteral("east")].unit = Unit_Foot; }},
    {"a parameter more", [](Projection &p) { p.param[QStringLiteral("zone")] = Param(); }},
    {"a parameter less", [](Projection &p) { p.param.remove(QStringLiteral("east")); }},
    {"a parameter's key",
     [](Projection &p) { p.param[QStringLiteral("East")] = p.param.take(QStringLiteral("east")); }},
    {"a PROJ name",
     [](Projection &p) { p.paramProj4[QStringLiteral("east")] = QStringLiteral("X_0"); }},
    {"a PROJ name more", [](Projection &p) { p.paramProj4[QStringLiteral("z")] = QString(); }},
    {"a PROJ name less", [](Projection &p) { p.paramProj4.remove(QStringLiteral("east")); }},
    {"a PROJ name's key",
     [](Projection &p) {
         p.paramProj4[QStringLiteral("East")] = p.paramProj4.take(QStringLiteral("east"));
     }},
    {"locationType", [](Projection &p) { p.locationType = LocationType_X_Y_ElevationHeight; }},
    {"loc_or_height_unit", [](Projection &p) { p.loc_or_height_unit = Unit_Meter; }},
};

TEST(Projection, EachComputationalMemberCountsForEquality)
{
    for (const Change &change : changes) {
        SCOPED_TRACE(change.member);
        Projection changed = utm31();
        change.apply(changed);
        test::expectDifferent(utm31(), changed);
    }
}

TEST(Projection, NaNParameterEqualsItsOwnObjectOnly)
{
    Projection projection = utm31();
    projection.param[QStringLiteral("east")].value = std::numeric_limits<double>::quiet_NaN();
    Projection copy(projection);
    copy.param.detach(); // while the two share their storage, it holds the same object for both
    EXPECT_TRUE(projection == projection);
    test::expectDifferent(projection, copy);
}

TEST(Projection, ClearEmptiesNamesAndMaps)
{
    Projection projection = utm31();
    projection.clear();
    EXPECT_TRUE(projection.projection_name.isEmpty());
    EXPECT_TRUE(projection.proj4Projection.isEmpty());
    EXPECT_TRUE(projection.param.isEmpty());
    EXPECT_TRUE(projection.paramProj4.isEmpty());
}

TEST(Projection, ClearKeepsLocationTypeAndUnit)
{
    Projection projection = utm31();
    projection.clear();
    EXPECT_EQ(projection.locationType, LocationType_Lat_Long_EarthHeight);
    EXPECT_EQ(projection.loc_or_height_unit, Unit_Foot);
    test::expectDifferent(projection, Projection());
}

struct UnitsRow
{
    int locationType;
    EUnit unit;
    EUnit plane;
    EUnit height;
};

constexpr UnitsRow unitsRows[] = {
    {0, Unit_Meter, Unit_Meter, Unit_Meter},    {0, Unit_Foot, Unit_Meter, Unit_Foot},
    {0, Unit_None, Unit_Meter, Unit_None},      {1, Unit_Meter, Unit_Degree, Unit_Meter},
    {1, Unit_USFoot, Unit_Degree, Unit_USFoot}, {5, Unit_Foot, Unit_None, Unit_None},
    {2, Unit_Meter, Unit_None, Unit_None},      {-1, Unit_Meter, Unit_None, Unit_None},
};

TEST(Projection, LocationTypeDecidesTheUnits)
{
    for (const UnitsRow &row : unitsRows) {
        SCOPED_TRACE(testing::Message()
                     << "location type " << row.locationType << ", unit " << row.unit);
        Projection projection;
        projection.locationType = static_cast<ELocationType>(row.locationType);
        projection.loc_or_height_unit = row.unit;
        EXPECT_EQ(projection.eastUnit(), row.plane);
        EXPECT_EQ(projection.northUnit(), row.plane);
        EXPECT_EQ(projection.heightUnit(), row.height);
    }
}

} // namespace
} // namespace KelStd
