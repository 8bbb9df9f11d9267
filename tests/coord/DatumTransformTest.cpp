#include "coord/RecordExpectations.h"
#include "coord/TransformRecordRows.h"

#include <KelStd/coord/stEllipsoinTransform.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using Record = stEllipsoinTransform;
using test::RecordRow;

static_assert(test::isPlainValue<Record>);

constexpr RecordRow<Record> rows[] = {
    {"x_translate", &Record::x_translate, ValueType_Distance, Unit_Meter},
    {"y_translate", &Record::y_translate, ValueType_Distance, Unit_Meter},
    {"z_translate", &Record::z_translate, ValueType_Distance, Unit_Meter},
    {"x_rotate", &Record::x_rotate, ValueType_Angle, Unit_Second},
    {"y_rotate", &Record::y_rotate, ValueType_Angle, Unit_Second},
    {"z_rotate", &Record::z_rotate, ValueType_Angle, Unit_Second},
    {"ratio_ppm", &Record::ratio_ppm, ValueType_Double, Unit_None},
};

Record shift(int fuction)
{
    Record record;
    record.fuction = static_cast<EEllipsoinTransformFunction>(fuction);
    return record;
}

TEST(DatumTransform, FreshOneIsNoneByCartesianCoordinates)
{
    const Record record;
    EXPECT_EQ(record.fuction, EllipsoinTransformFunction_None);
    EXPECT_EQ(record.nofuction_transtion, EllipsoinTransition_XYZ);
    test::expectDefaults(record, rows);
    test::expectEmptyDictionaries(record, rows);
}

TEST(DatumTransform, ClearGivesTheDefaultsBackAndKeepsDictionaries)
{
    Record record = test::filledWithDictionaries(rows);
    record.fuction = EllipsoinTransformFunction_Seven;
    record.nofuction_transtion = EllipsoinTransition_BLH;
    record.clear();
    EXPECT_EQ(record.fuction, EllipsoinTransformFunction_None);
    EXPECT_EQ(record.nofuction_transtion, EllipsoinTransition_XYZ);
    test::expectDefaults(record, rows);
    test::expectKeptDictionaries(record, rows);
}

TEST(DatumTransform, FreshAndClearedOnesAreEqual)
{
    Record record = test::filled(rows);
    record.fuction = EllipsoinTransformFunction_Three;
    record.nofuction_transtion = EllipsoinTransition_BLH;
    record.clear();
    test::expectEqual(record, Record());
}

TEST(DatumTransform, CopiesAndMovesTakeEveryMember)
{
    Record record = test::filledWithDictionaries(rows);
    record.fuction = EllipsoinTransformFunction_Seven;
    record.nofuction_transtion = EllipsoinTransition_BLH;
    test::expectCopiesAndMovesEqual(record);
}

TEST(DatumTransform, EachMemberCountsForEqualityWhateverTheFunction)
{
    for (const int fuction : {0, 1, 2, 7}) {
        SCOPED_TRACE(testing::Message() << "function " << fuction);
        test::expectEachParamCountsForEquality(shift(fuction), rows);
        Record other = shift(fuction);
        other.nofuction_transtion = EllipsoinTransition_BLH;
        test::expectDifferent(shift(fuction), other);
        test::expectDifferent(shift(fuction), shift(fuction + 1));
    }
}

TEST(DatumTransform, SameLogicOfNoneComparesTheTransitionOnly)
{
    test::expectSameLogicUses(shift(0), rows, {});
    Record other = shift(0);
    other.nofuction_transtion = EllipsoinTransition_BLH;
    EXPECT_FALSE(shift(0).isSameLogic(other));
}

TEST(DatumTransform, SameLogicOfThreeComparesTheTranslationsOnly)
{
    test::expectSameLogicUses(shift(1), rows, {"x_translate", "y_translate", "z_translate"});
    Record other = shift(1);
    other.nofuction_transtion = EllipsoinTransition_BLH;
    EXPECT_TRUE(shift(1).isSameLogic(other));
}

TEST(DatumTransform, SameLogicOfSevenComparesAllSeven)
{
    test::expectSameLogicUses(shift(2), rows,
                              {"x_translate", "y_translate", "z_translate", "x_rotate", "y_rotate",
                               "z_rotate", "ratio_ppm"});
    Record other = shift(2);
    other.nofuction_transtion = EllipsoinTransition_BLH;
    EXPECT_TRUE(shift(2).isSameLogic(other));
}

TEST(DatumTransform, OtherFunctionIsNotTheSame)
{
    for (const int a : {0, 1, 2, 7}) {
        for (const int b : {0, 1, 2, 7}) {
            if (a != b) {
                EXPECT_FALSE(shift(a).isSameLogic(shift(b))) << a << " and " << b;
            }
        }
    }
}

TEST(DatumTransform, UnlistedFunctionIsTheSameAsItselfOnly)
{
    for (const int fuction : {3, 7, -1}) {
        const Record record = shift(fuction);
        const Record copy(record);
        test::expectEqual(record, copy);
        EXPECT_FALSE(record.isSameLogic(copy)) << fuction;
        EXPECT_TRUE(record.isSameLogic(record)) << fuction;
    }
}

TEST(DatumTransform, NaNEqualsItsOwnObjectOnly)
{
    Record record = shift(2);
    record.ratio_ppm.value = std::numeric_limits<double>::quiet_NaN();
    const Record copy(record);
    EXPECT_TRUE(record == record);
    EXPECT_TRUE(record.isSameLogic(record));
    test::expectDifferent(record, copy);
    EXPECT_FALSE(record.isSameLogic(copy));
}

} // namespace
} // namespace KelStd
