#include "coord/RecordExpectations.h"
#include "coord/TransformRecordRows.h"

#include <KelStd/coord/stElevationFitting.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using Record = stElevationFitting;
using test::RecordRow;

static_assert(test::isPlainValue<Record>);

constexpr RecordRow<Record> rows[] = {
    {"a", &Record::a, ValueType_Double, Unit_None},
    {"b", &Record::b, ValueType_Double, Unit_None},
    {"c", &Record::c, ValueType_Double, Unit_None},
    {"d", &Record::d, ValueType_Double, Unit_None},
    {"e", &Record::e, ValueType_Double, Unit_None},
    {"f", &Record::f, ValueType_Double, Unit_None},
    {"north_zero_x0", &Record::north_zero_x0, ValueType_X, Unit_Meter},
    {"east_zero_y0", &Record::east_zero_y0, ValueType_Y, Unit_Meter},
};

Record fitting(int function)
{
    Record record;
    record.function = static_cast<EElevationFittingFunction>(function);
    return record;
}

TEST(ElevationFitting, FreshOneIsNone)
{
    const Record record;
    EXPECT_EQ(record.function, ElevationFittingFunction_None);
    test::expectDefaults(record, rows);
    test::expectEmptyDictionaries(record, rows);
}

TEST(ElevationFitting, ClearGivesTheDefaultsBackAndKeepsDictionaries)
{
    Record record = test::filledWithDictionaries(rows);
    record.function = ElevationFittingFunction_Curve;
    record.clear();
    EXPECT_EQ(record.function, ElevationFittingFunction_None);
    test::expectDefaults(record, rows);
    test::expectKeptDictionaries(record, rows);
}

TEST(ElevationFitting, FreshAndClearedOnesAreEqual)
{
    Record record = test::filled(rows);
    record.function = ElevationFittingFunction_Plane;
    record.clear();
    test::expectEqual(record, Record());
}

TEST(ElevationFitting, CopiesAndMovesTakeEveryMember)
{
    Record record = test::filledWithDictionaries(rows);
    record.function = ElevationFittingFunction_Fixed;
    test::expectCopiesAndMovesEqual(record);
}

TEST(ElevationFitting, EachMemberCountsForEqualityWhateverTheFunction)
{
    for (const int function : {0, 1, 2, 3, 7}) {
        SCOPED_TRACE(testing::Message() << "function " << function);
        test::expectEachParamCountsForEquality(fitting(function), rows);
        test::expectDifferent(fitting(function), fitting(function + 1));
    }
}

TEST(ElevationFitting, SameLogicOfNoneComparesNothing)
{
    test::expectSameLogicUses(fitting(0), rows, {});
}

TEST(ElevationFitting, SameLogicOfFixedComparesTheConstantOnly)
{
    test::expectSameLogicUses(fitting(1), rows, {"a"});
}

TEST(ElevationFitting, SameLogicOfPlaneComparesThreeCoefficients)
{
    test::expectSameLogicUses(fitting(2), rows, {"a", "b", "c"});
}

TEST(ElevationFitting, SameLogicOfCurveComparesAllEight)
{
    test::expectSameLogicUses(fitting(3), rows,
                              {"a", "b", "c", "d", "e", "f", "north_zero_x0", "east_zero_y0"});
}

TEST(ElevationFitting, OtherFunctionIsNotTheSame)
{
    for (const int a : {0, 1, 2, 3, 7}) {
        for (const int b : {0, 1, 2, 3, 7}) {
            if (a != b) {
                EXPECT_FALSE(fitting(a).isSameLogic(fitting(b))) << a << " and " << b;
            }
        }
    }
}

TEST(ElevationFitting, UnlistedFunctionIsTheSameAsItselfOnly)
{
    for (const int function : {4, 7, -1}) {
        const Record record = fitting(function);
        const Record copy(record);
        test::expectEqual(record, copy);
        EXPECT_FALSE(record.isSameLogic(copy)) << function;
        EXPECT_TRUE(record.isSameLogic(record)) << function;
    }
}

TEST(ElevationFitting, NaNEqualsItsOwnObjectOnly)
{
    Record record = fitting(1);
    record.a.value = std::numeric_limits<double>::quiet_NaN();
    const Record copy(record);
    EXPECT_TRUE(record == record);
    EXPECT_TRUE(record.isSameLogic(record));
    test::expectDifferent(record, copy);
    EXPECT_FALSE(record.isSameLogic(copy));
}

} // namespace
} // namespace KelStd
