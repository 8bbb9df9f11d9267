#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/Param.h>

#include <gtest/gtest.h>

#include <limits>

namespace KelStd {
namespace {

static_assert(test::isPlainValue<Param>);

Param filled()
{
    Param param(ValueType_Angle, Unit_Second, 12.5);
    test::giveDictionary(param);
    return param;
}

TEST(Param, FreshOneHoldsAnIntZero)
{
    const Param param;
    EXPECT_EQ(param.valType, ValueType_Double);
    EXPECT_EQ(param.unit, Unit_None);
    EXPECT_EQ(static_cast<QMetaType::Type>(param.value.userType()), QMetaType::Int);
    EXPECT_FALSE(param.value.isNull());
    EXPECT_EQ(param.value.toInt(), 0);
    EXPECT_FALSE(param.isDictionary);
    test::expectEmptyDictionary(param);
}

TEST(Param, IsMadeOfTypeUnitAndValue)
{
    const Param param(ValueType_Latitude, Unit_Degree, QVariant(52.5));
    test::expectNumber(param, ValueType_Latitude, Unit_Degree, 52.5);
    test::expectEmptyDictionary(param);
}

TEST(Param, KeepsTheVariantItWasGiven)
{
    EXPECT_EQ(static_cast<QMetaType::Type>(Param(ValueType_Double, Unit_None, 3).value.userType()),
              QMetaType::Int);
    EXPECT_EQ(Param(ValueType_Double, Unit_None, QStringLiteral("x")).value.toString(),
              QStringLiteral("x"));
    EXPECT_FALSE(Param(ValueType_Double, Unit_None, QVariant()).value.isValid());
}

TEST(Param, ClearEmptiesEveryMemberAndLeavesANullValue)
{
    Param param = filled();
    param.clear();
    EXPECT_EQ(param.valType, ValueType_Double);
    EXPECT_EQ(param.unit, Unit_None);
    EXPECT_FALSE(param.value.isValid());
    EXPECT_TRUE(param.value.isNull());
    EXPECT_FALSE(param.isDictionary);
    test::expectEmptyDictionary(param);
}

TEST(Param, FreshAndClearedOnesDiffer)
{
    Param cleared;
    cleared.clear();
    test::expectDifferent(Param(), cleared);
}

TEST(Param, TwoClearedOnesAreEqual)
{
    Param a = filled();
    Param b(ValueType_String, Unit_Bar, QStringLiteral("b"));
    a.clear();
    b.clear();
    test::expectEqual(a, b);
}

TEST(Param, CopiesAndMovesTakeEveryMember)
{
    test::expectCopiesAndMovesEqual(filled());
    Param source = filled();
    const Param moved(std::move(source));
    EXPECT_EQ(moved.valType, ValueType_Angle);
    EXPECT_EQ(moved.unit, Unit_Second);
    EXPECT_EQ(moved.value.toDouble(), 12.5);
    EXPECT_TRUE(moved.isDictionary);
    test::expectKeptDictionary(moved);
}

struct Change
{
    const char *member;
    void (*apply)(Param &);
};

constexpr Change changes[] = {
    {"valType", [](Param &p) { p.valType = ValueType_Double; }},
    {"unit", [](Param &p) { p.unit = Unit_Degree; }},
    {"value", [](Param &p) { p.value = 12.25; }},
    {"isDictionary", [](Param &p) { p.isDictionary = false; }},
    {"dictionarySelKey", [](Param &p) { p.dictionarySelKey = QStringLiteral("Chosen"); }},
    {"a dictionary value", [](Param &p) { p.dictionaryValues[QStringLiteral("chosen")] = 1.25; }},
    {"a dictionary entry more", [](Param &p) { p.dictionaryValues[QStringLiteral("third")] = 3; }},
    {"a dictionary entry less",
     [](Param &p) { p.dictionaryValues.remove(QStringLiteral("other")); }},
    {"a dictionary key",
     [](Param &p) {
         p.dictionaryValues.remove(QStringLiteral("other"));
         p.dictionaryValues[QStringLiteral("Other")] = 2.5;
     }},
    {"dictionaryBindParamName",
     [](Param &p) { p.dictionaryBindParamName = QStringLiteral("Bound"); }},
};

TEST(Param, EachMemberCountsForEquality)
{
    for (const Change &change : changes) {
        SCOPED_TRACE(change.member);
        Param changed = filled();
        change.apply(changed);
        test::expectDifferent(filled(), changed);
    }
}

TEST(Param, TheDictionaryCountsEvenWhenTheValueIsNotADictionary)
{
    Param a = filled();
    Param b = filled();
    a.isDictionary = b.isDictionary = false;
    b.dictionaryValues.clear();
    test::expectDifferent(a, b);
}

TEST(Param, ValuesCompareAsQVariantsDo)
{
    const QVariant values[] = {
        QVariant(),
        QVariant(0),
        QVariant(0.0),
        QVariant(1),
        QVariant(1.0),
        QVariant(1.0 + 1e-13),
        QVariant(1.0 + 1e-9),
        QVariant(Q_INT64_C(1)),
        QVariant(true),
        QVariant(false),
        QVariant(QString()),
        QVariant(QStringLiteral("1")),
        QVariant(std::numeric_limits<double>::infinity()),
        QVariant(std::numeric_limits<double>::quiet_NaN()),
    };
    for (const QVariant &a : values) {
        for (const QVariant &b : values) {
            const bool equal =
                Param(ValueType_Double, Unit_None, a) == Param(ValueType_Double, Unit_None, b);
            EXPECT_EQ(equal, a == b)
                << a.toString().toStdString() << " (" << a.typeName() << ") and "
                << b.toString().toStdString() << " (" << b.typeName() << ")";
        }
    }
}

// Qt 5 compares two doubles in variants to a relative difference of about 1e-12, Qt 6 exactly.
TEST(Param, NumbersThatQtTakesForEqualAreEqual)
{
    const Param one(ValueType_Double, Unit_None, 1.0);
    const Param near(ValueType_Double, Unit_None, 1.0 + 1e-14);
    EXPECT_EQ(one == near, QT_VERSION < QT_VERSION_CHECK(6, 0, 0));
    EXPECT_EQ(one == near, one.value == near.value);
    test::expectDifferent(one, Param(ValueType_Double, Unit_None, 1.0 + 1e-9));
}

TEST(Param, NaNEqualsItsOwnObjectOnly)
{
    const Param nan(ValueType_Double, Unit_None, std::numeric_limits<double>::quiet_NaN());
    const Param copy(nan);
    EXPECT_TRUE(nan == nan);
    EXPECT_FALSE(nan != nan);
    test::expectDifferent(nan, copy);
}

TEST(Param, NaNInTheDictionaryEqualsItsOwnObjectOnly)
{
    Param nan;
    nan.dictionaryValues[QStringLiteral("k")] = std::numeric_limits<double>::quiet_NaN();
    const Param copy(nan); // shares the map's storage
    EXPECT_TRUE(nan == nan);
    test::expectDifferent(nan, copy);
}

} // namespace
} // namespace KelStd
