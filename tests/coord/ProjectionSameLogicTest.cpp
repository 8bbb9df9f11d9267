#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Projection.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

struct Entry
{
    const char *key;
    const char *projName;
    double value;
};

/// A plain transverse Mercator whose parameters are `entries`.
Projection tmerc(std::initializer_list<Entry> entries)
{
    Projection projection;
    projection.proj4Projection = QStringLiteral("tmerc");
    for (const Entry &entry : entries) {
        const QString key = QString::fromUtf8(entry.key);
        projection.param[key] = Param(ValueType_Double, Unit_None, entry.value);
        projection.paramProj4[key] = QString::fromUtf8(entry.projName);
    }
    return projection;
}

void expectSame(const Projection &a, const Projection &b)
{
    EXPECT_TRUE(a.isSameLogic(b));
    EXPECT_TRUE(b.isSameLogic(a));
}

void expectNotSame(const Projection &a, const Projection &b)
{
    EXPECT_FALSE(a.isSameLogic(b));
    EXPECT_FALSE(b.isSameLogic(a));
}

TEST(ProjectionSameLogic, DisplayNamesDoNotCount)
{
    Projection renamed = tmerc({{"k", "k", 0.9996}});
    renamed.projection_name = QStringLiteral("another name");
    expectSame(tmerc({{"k", "k", 0.9996}}), renamed);
}

TEST(ProjectionSameLogic, ParameterKeysDoNotCount)
{
    const Projection a = tmerc({{"FalseEast", "x_0", 5e5}, {"meridian", "lon_0", 3.0}});
    const Projection b = tmerc({{"z", "x_0", 5e5}, {"a", "lon_0", 3.0}});
    expectSame(a, b);
    test::expectDifferent(a, b);
}

TEST(ProjectionSameLogic, CapitalsOfKAndK0AreOneName)
{
    const Projection a = tmerc({{"scale", "K", 0.9996}});
    const Projection b = tmerc({{"factor", "K_0", 0.9996}});
    expectSame(a, b);
    test::expectDifferent(a, b);
}

TEST(ProjectionSameLogic, ProjNamesMatchTrimmedAndWithoutCase)
{
    const char *const matching[][2] = {
        {"lon_0", "LON_0"}, {"lon_0", "  lon_0\t"}, {"\nLon_0", "lOn_0 "},
        {"k", "k_0"},       {"K", "k_0"},           {"k", "K_0"},
        {" k ", "\tK_0\n"}, {"k_0", "K_0"},         {"", "  "},
    };
    for (const auto &names : matching) {
        SCOPED_TRACE(testing::Message() << '"' << names[0] << "\" and \"" << names[1] << '"');
        expectSame(tmerc({{"p", names[0], 1.0}}), tmerc({{"p", names[1], 1.0}}));
    }
}

TEST(ProjectionSameLogic, OtherProjNamesDoNotMatch)
{
    const char *const different[][2] = {
        {"lon_0", "lon_1"}, {"k", "k_1"}, {"k_0", "k0"}, {"lon _0", "lon_0"}, {"x_0", "y_0"},
    };
    for (const auto &names : different) {
        SCOPED_TRACE(testing::Message() << '"' << names[0] << "\" and \"" << names[1] << '"');
        expectNotSame(tmerc({{"p", names[0], 1.0}}), tmerc({{"p", names[1], 1.0}}));
    }
}

TEST(ProjectionSameLogic, ValueBehindAProjNameCounts)
{
    expectNotSame(tmerc({{"k", "k", 0.9996}}), tmerc({{"k", "k_0", 1.0}}));
    Projection inFeet = tmerc({{"e", "x_0", 1.0}});
    inFeet.param[QStringLiteral("e")].unit = Unit_Foot;
    expectNotSame(tmerc({{"e", "x_0", 1.0}}), inFeet);
}

TEST(ProjectionSameLogic, NumberOfProjNamesCounts)
{
    expectNotSame(tmerc({{"k", "k", 1.0}}), tmerc({{"k", "k", 1.0}, {"k_0", "k_0", 1.0}}));
    expectNotSame(tmerc({}), tmerc({{"k", "k", 1.0}}));
}

TEST(ProjectionSameLogic, ParametersWithoutAProjNameDoNotCount)
{
    Projection a;
    Projection b;
    a.param[QStringLiteral("a")] = Param(ValueType_Double, Unit_None, 1.0);
    b.param[QStringLiteral("b")] = Param(ValueType_Angle, Unit_Degree, 2.0);
    b.param[QStringLiteral("c")] = Param();
    expectSame(a, b);
    test::expectDifferent(a, b);
}

TEST(ProjectionSameLogic, ProjNameWithoutAParameterIsADifference)
{
    Projection lacking = tmerc({{"k", "k", 1.0}});
    lacking.param.clear();
    expectNotSame(lacking, tmerc({{"k", "k", 1.0}}));
    const Projection copy(lacking);
    expectNotSame(lacking, copy);
}

TEST(ProjectionSameLogic, SameObjectIsTheSameWhateverItHolds)
{
    Projection lacking = tmerc({{"k", "k", 1.0}});
    lacking.param.clear();
    EXPECT_TRUE(lacking.isSameLogic(lacking));
    const Projection nan = tmerc({{"k", "k", std::numeric_limits<double>::quiet_NaN()}});
    EXPECT_TRUE(nan.isSameLogic(nan));
    Projection copy(nan);
    copy.param.detach(); // while the two share their storage, it holds the same object for both
    expectNotSame(nan, copy);
}

TEST(ProjectionSameLogic, LaterEntryMayMatchWhereAnEarlierOneDiffers)
{
    // The first "x_0" of the other projection has another value, the second the same.
    EXPECT_TRUE(tmerc({{"a", "x_0", 2.0}, {"b", "x_0", 2.0}})
                    .isSameLogic(tmerc({{"a", "x_0", 1.0}, {"b", "x_0", 2.0}})));
    // The first "k" of the other projection has no parameter at all.
    Projection lacking = tmerc({{"a", "k", 1.0}, {"b", "k_0", 1.0}});
    lacking.param.remove(QStringLiteral("a"));
    EXPECT_TRUE(tmerc({{"p", "k", 1.0}, {"q", "k", 1.0}}).isSameLogic(lacking));
}

// Every entry of this projection needs a match in the other one, not the other way round.
TEST(ProjectionSameLogic, OneEntryOfTheOtherMayMatchSeveral)
{
    const Projection twice = tmerc({{"a", "k", 1.0}, {"b", "k_0", 1.0}});
    const Projection mixed = tmerc({{"a", "k", 1.0}, {"b", "x_0", 7.0}});
    EXPECT_TRUE(twice.isSameLogic(mixed));
    EXPECT_FALSE(mixed.isSameLogic(twice));
}

TEST(ProjectionSameLogic, ProjectionNameCountsWithItsCase)
{
    Projection capitals = tmerc({{"k", "k", 1.0}});
    capitals.proj4Projection = QStringLiteral("TMERC");
    expectNotSame(tmerc({{"k", "k", 1.0}}), capitals);
}

TEST(ProjectionSameLogic, LocationTypeAndUnitCount)
{
    Projection geographic = tmerc({{"k", "k", 1.0}});
    geographic.locationType = LocationType_Lat_Long_EarthHeight;
    expectNotSame(tmerc({{"k", "k", 1.0}}), geographic);
    Projection inFeet = tmerc({{"k", "k", 1.0}});
    inFeet.loc_or_height_unit = Unit_Foot;
    expectNotSame(tmerc({{"k", "k", 1.0}}), inFeet);
}

} // namespace
} // namespace KelStd
