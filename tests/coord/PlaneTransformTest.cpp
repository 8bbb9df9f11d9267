#include "coord/RecordExpectations.h"
#include "coord/TransformRecordRows.h"

#include <KelStd/coord/stPlaneTransform.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

using Record = stPlaneTransform;
using test::RecordRow;

static_assert(test::isPlainValue<Record>);

constexpr RecordRow<Record> rows[] = {
    {"north_translate", &Record::north_translate, ValueType_Distance, Unit_Meter},
    {"east_translate", &Record::east_translate, ValueType_Distance, Unit_Meter},
    {"rotate_angle", &Record::rotate_angle, ValueType_Angle, Unit_Second},
    {"ratio", &Record::ratio, ValueType_Double, Unit_None},
};

Record similarity(int fuction)
{
    Record record;
    record.fuction = static_cast<EPlaneTransformFunction>(fuction);
    return record;
}

TEST(PlaneTransform, FreshOneIsNone)
{
    const Record record;
    EXPECT_EQ(record.fuction, PlaneTransformFunction_None);
    test::expectDefaults(record, rows);
    test::expectEmptyDictionaries(record, rows);
}

TEST(PlaneTransform, ClearGivesTheDefaultsBackAndKeepsDictionaries)
{
    Record record = test::filledWithDictionaries(rows);
    record.fuction = PlaneTransformFunction_Four;
    record.clear();
    EXPECT_EQ(record.fuction, PlaneTransformFunction_None);
    test::expectDefaults(record, rows);
    test::expectKeptDictionaries(record, rows);
}

TEST(PlaneTransform, FreshAndClearedOnesAreEqual)
{
    Record record = test::filled(rows);
    record.fuction = PlaneTransformFunction_Four;
    record.clear();
    test::expectEqual(record, Record());
}

TEST(PlaneTransform, CopiesAndMovesTakeEveryMember)
{
    Record record = test::filledWithDictionaries(rows);
    record.fuction = PlaneTransformFunction_Four;
    test::expectCopiesAndMovesEqual(record);
}

TEST(PlaneTransform, EachMemberCountsForEqualityWhateverTheFunction)
{
    for (const int fuction : {0, 1, 7}) {
        SCOPED_TRACE(testing::Message() << "function " << fuction);
        test::expectEachParamCountsForEquality(similarity(fuction), rows);
        test::expectDifferent(similarity(fuction), similarity(fuction + 1));
    }
}

TEST(PlaneTransform, SameLogicOfNoneComparesNothing)
{
    test::expectSameLogicUses(similarity(0), rows, {});
    EXPECT_TRUE(similarity(0).isSameLogic([] {
        Record record = test::filledWithDictionaries(rows);
        record.fuction = PlaneTransformFunction_None;
        return record;
    }()));
}

TEST(PlaneTransform, SameLogicOfFourComparesAllFour)
{
    test::expectSameLogicUses(similarity(1), rows,
                              {"north_translate", "east_translate", "rotate_angle", "ratio"});
}

TEST(PlaneTransform, OtherFunctionIsNotTheSame)
{
    EXPECT_FALSE(similarity(0).isSameLogic(similarity(1)));
    EXPECT_FALSE(similarity(1).isSameLogic(similarity(0)));
    EXPECT_FALSE(similarity(0).isSameLogic(similarity(7)));
}

TEST(PlaneTransform, UnlistedFunctionIsTheSameAsItselfOnly)
{
    for (const int fuction : {2, 7, -1}) {
        const Record record = similarity(fuction);
        const Record copy(record);
        test::expectEqual(record, copy);
        EXPECT_FALSE(record.isSameLogic(copy)) << fuction;
        EXPECT_TRUE(record.isSameLogic(record)) << fuction;
    }
}

TEST(PlaneTransform, NaNEqualsItsOwnObjectOnly)
{
    Record record = similarity(1);
    record.ratio.value = std::numeric_limits<double>::quiet_NaN();
    const Record copy(record);
    EXPECT_TRUE(record == record);
    EXPECT_TRUE(record.isSameLogic(record));
    test::expectDifferent(record, copy);
    EXPECT_FALSE(record.isSameLogic(copy));
}

} // namespace
} // namespace KelStd
