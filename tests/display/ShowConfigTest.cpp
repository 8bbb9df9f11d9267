#include <KelStd/display/stShowConfig.h>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KelStd {
namespace {

/// A field as a number, whatever its type.
struct Field
{
    const char *name;
    int constructed; ///< what a new record has
    int cleared;     ///< what a cleared record has
    std::function<int(const stShowConfig &)> get;
    std::function<void(stShowConfig &)> change;

    friend void PrintTo(const Field &field, std::ostream *out) { *out << field.name; }
};

template <typename Type>
Field field(const char *name, Type stShowConfig::*member, int constructed, int cleared)
{
    return {name, constructed, cleared,
            [member](const stShowConfig &config) { return static_cast<int>(config.*member); },
            [member](stShowConfig &config) {
                config.*member = static_cast<Type>(static_cast<int>(config.*member) == 0 ? 1 : 0);
            }};
}

using C = stShowConfig;

const std::vector<Field> fields = {
    field("coordOrder", &C::coordOrder, 1, 1),
    field("doublePrecision", &C::doublePrecision, 6, 12),
    field("doubleKeepZero", &C::doubleKeepZero, 0, 0),
    field("latLongFormat", &C::latLongFormat, 20, 20),
    field("latLongPrecision", &C::latLongPrecision, 6, 15),
    field("latLongKeepZero", &C::latLongKeepZero, 0, 0),
    field("earthHeightUnit", &C::earthHeightUnit, 10, 10),
    field("earthHeightPrecision", &C::earthHeightPrecision, 4, 15),
    field("earthHeightKeepZero", &C::earthHeightKeepZero, 0, 0),
    field("xyUnit", &C::xyUnit, 10, 10),
    field("xyPrecision", &C::xyPrecision, 4, 15),
    field("xyKeepZero", &C::xyKeepZero, 0, 0),
    field("elevationHeightUnit", &C::elevationHeightUnit, 10, 10),
    field("elevationHeightPrecision", &C::elevationHeightPrecision, 4, 15),
    field("elevationHeightKeepZero", &C::elevationHeightKeepZero, 0, 0),
    field("timeFormat", &C::timeFormat, 30, 30),
    field("tempratureUnit", &C::tempratureUnit, 200, 200),
    field("tempraturePrecision", &C::tempraturePrecision, 0, 2),
    field("tempratureKeepZero", &C::tempratureKeepZero, 0, 0),
    field("pressureUnit", &C::pressureUnit, 100, 100),
    field("pressurePrecision", &C::pressurePrecision, 0, 2),
    field("pressureKeepZero", &C::pressureKeepZero, 0, 0),
    field("angleFormat", &C::angleFormat, 23, 22),
    field("anglePrecision", &C::anglePrecision, 2, 15),
    field("angleKeepZero", &C::angleKeepZero, 0, 0),
    field("distanceUnit", &C::distanceUnit, 10, 10),
    field("distancePrecision", &C::distancePrecision, 4, 15),
    field("distanceKeepZero", &C::distanceKeepZero, 0, 0),
    field("heightUnit", &C::heightUnit, 10, 10),
    field("heightPrecision", &C::heightPrecision, 4, 15),
    field("heightKeepZero", &C::heightKeepZero, 0, 0),
};

/// A record in which no field has the value of either default set.
stShowConfig changedEverywhere()
{
    stShowConfig config;
    for (const Field &each : fields)
        each.change(config);
    config.doublePrecision = 7; // 0 is the default of some precisions
    return config;
}

class ShowConfigField : public testing::TestWithParam<Field>
{};

TEST_P(ShowConfigField, HasItsWorkingDefault)
{
    EXPECT_EQ(GetParam().get(stShowConfig()), GetParam().constructed);
}

TEST_P(ShowConfigField, IsClearedToTheOtherDefault)
{
    stShowConfig config = changedEverywhere();
    config.clear();
    EXPECT_EQ(GetParam().get(config), GetParam().cleared);
}

TEST_P(ShowConfigField, AloneMakesTwoRecordsDiffer)
{
    const stShowConfig one;
    stShowConfig other;
    EXPECT_TRUE(one == other);
    EXPECT_FALSE(one != other);
    GetParam().change(other);
    EXPECT_FALSE(one == other);
    EXPECT_FALSE(other == one);
    EXPECT_TRUE(one != other);
    EXPECT_TRUE(other != one);
}

TEST_P(ShowConfigField, IsCopiedAndMoved)
{
    const stShowConfig changed = changedEverywhere();
    const int expected = GetParam().get(changed);
    const stShowConfig copied(changed);
    EXPECT_EQ(GetParam().get(copied), expected);
    stShowConfig assigned;
    assigned = changed;
    EXPECT_EQ(GetParam().get(assigned), expected);
    stShowConfig moved(std::move(assigned));
    EXPECT_EQ(GetParam().get(moved), expected);
    stShowConfig moveAssigned;
    moveAssigned = std::move(moved);
    EXPECT_EQ(GetParam().get(moveAssigned), expected);
}

TEST_P(ShowConfigField, IsIndependentOfEveryOther)
{
    stShowConfig config;
    GetParam().change(config);
    const stShowConfig unchanged;
    for (const Field &other : fields)
        EXPECT_EQ(other.get(config) != other.get(unchanged), other.name == GetParam().name)
            << other.name;
}

std::string nameOf(const testing::TestParamInfo<Field> &row)
{
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(EveryField, ShowConfigField, testing::ValuesIn(fields), nameOf);

TEST(ShowConfig, HasThirtyOneFieldsOfTheTypesOfItsStream)
{
    EXPECT_EQ(fields.size(), 31U);
    static_assert(std::is_same_v<decltype(C::coordOrder), EFormat>);
    static_assert(std::is_same_v<decltype(C::xyUnit), EUnit>);
    static_assert(std::is_same_v<decltype(C::xyPrecision), unsigned char>);
    static_assert(std::is_same_v<decltype(C::xyKeepZero), bool>);
    EXPECT_EQ(sizeof(EFormat), 4U);
    EXPECT_EQ(sizeof(EUnit), 4U);
}

TEST(ShowConfig, ANewAndAClearedRecordAreNotEqual)
{
    const stShowConfig fresh;
    stShowConfig cleared;
    cleared.clear();
    EXPECT_NE(fresh.doublePrecision, cleared.doublePrecision);
    EXPECT_FALSE(fresh == cleared);
    EXPECT_TRUE(fresh != cleared);
}

TEST(ShowConfig, ClearedRecordsAreEqualWhateverTheyHeld)
{
    stShowConfig one;
    stShowConfig other = changedEverywhere();
    EXPECT_FALSE(one == other);
    one.clear();
    other.clear();
    EXPECT_TRUE(one == other);
}

TEST(ShowConfig, ARecordEqualsItself)
{
    const stShowConfig config = changedEverywhere();
    EXPECT_TRUE(config == config);
    EXPECT_FALSE(config != config);
}

TEST(ShowConfig, PrecisionsGoUpTo255)
{
    stShowConfig config;
    config.latLongPrecision = 255;
    EXPECT_EQ(config.latLongPrecision, 255);
    stShowConfig other = config;
    other.latLongPrecision = 254;
    EXPECT_FALSE(config == other);
}

} // namespace
} // namespace KelStd
