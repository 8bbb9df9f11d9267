#pragma once

#include <KelStd/coord/Param.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

/// What the tests of the records share.
namespace KelStd::test {

/// A value class: everything is copied and moved, nothing is virtual.
template <typename Record>
inline constexpr bool isPlainValue =
    std::is_default_constructible_v<Record> &&std::is_copy_constructible_v<Record>
        &&std::is_copy_assignable_v<Record> &&std::is_move_constructible_v<Record>
            &&std::is_move_assignable_v<Record> && !std::is_polymorphic_v<Record>;

/// Copies and moves of `record`, constructed and assigned, equal it (and `!=` says so, too).
template <typename Record>
void expectCopiesAndMovesEqual(const Record &record)
{
    Record copy(record);
    EXPECT_TRUE(copy == record);
    EXPECT_FALSE(copy != record);
    Record assigned;
    assigned = record;
    EXPECT_TRUE(assigned == record);
    const Record moved(std::move(copy));
    EXPECT_TRUE(moved == record);
    Record moveAssigned;
    moveAssigned = std::move(assigned);
    EXPECT_TRUE(moveAssigned == record);
}

/// Both operators, in both orders.
template <typename Record>
void expectEqual(const Record &a, const Record &b)
{
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(b == a);
    EXPECT_FALSE(a != b);
    EXPECT_FALSE(b != a);
}

template <typename Record>
void expectDifferent(const Record &a, const Record &b)
{
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(b != a);
}

/// A double of this type and unit, not a dictionary.
inline void expectNumber(const Param &param, EValueType valType, EUnit unit, double value)
{
    EXPECT_EQ(param.valType, valType);
    EXPECT_EQ(param.unit, unit);
    EXPECT_EQ(static_cast<QMetaType::Type>(param.value.userType()), QMetaType::Double);
    EXPECT_EQ(param.value.toDouble(), value);
    EXPECT_FALSE(param.isDictionary);
}

inline void expectEmptyDictionary(const Param &param)
{
    EXPECT_TRUE(param.dictionarySelKey.isEmpty());
    EXPECT_TRUE(param.dictionaryValues.isEmpty());
    EXPECT_TRUE(param.dictionaryBindParamName.isEmpty());
}

/// Fills the dictionary members.
inline void giveDictionary(Param &param)
{
    param.isDictionary = true;
    param.dictionarySelKey = QStringLiteral("chosen");
    param.dictionaryValues = {{QStringLiteral("chosen"), 1.5}, {QStringLiteral("other"), 2.5}};
    param.dictionaryBindParamName = QStringLiteral("bound");
}

/// The dictionary of `giveDictionary` is still there.
inline void expectKeptDictionary(const Param &param)
{
    EXPECT_EQ(param.dictionarySelKey, QStringLiteral("chosen"));
    EXPECT_EQ(param.dictionaryValues.size(), 2);
    EXPECT_EQ(param.dictionaryValues.value(QStringLiteral("other")).toDouble(), 2.5);
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("bound"));
}

} // namespace KelStd::test
