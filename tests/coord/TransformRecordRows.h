#pragma once

#include "coord/RecordExpectations.h"

#include <KelStd/coord/Param.h>

#include <algorithm>
#include <string>
#include <vector>

/// Claims that hold for each of the records made of a function code and `Param` members, told once
/// and run over a record's rows.
namespace KelStd::test {

/// A `Param` member with its default type and unit.
template <typename Record>
struct RecordRow
{
    const char *name;
    Param Record::*member;
    EValueType valType;
    EUnit unit;
};

template <typename Record, std::size_t count>
void expectDefaults(const Record &record, const RecordRow<Record> (&rows)[count])
{
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        expectNumber(record.*row.member, row.valType, row.unit, 0.0);
    }
}

template <typename Record, std::size_t count>
void expectEmptyDictionaries(const Record &record, const RecordRow<Record> (&rows)[count])
{
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        expectEmptyDictionary(record.*row.member);
    }
}

template <typename Record, std::size_t count>
void expectKeptDictionaries(const Record &record, const RecordRow<Record> (&rows)[count])
{
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        expectKeptDictionary(record.*row.member);
    }
}

/// A record each of whose `Param`s has another type, unit and value than its default.
template <typename Record, std::size_t count>
Record filled(const RecordRow<Record> (&rows)[count])
{
    Record record;
    double value = 1.0;
    for (const auto &row : rows)
        record.*row.member = Param(ValueType_Height, Unit_Foot, value++);
    return record;
}

template <typename Record, std::size_t count>
Record filledWithDictionaries(const RecordRow<Record> (&rows)[count])
{
    Record record = filled(rows);
    for (const auto &row : rows)
        giveDictionary(record.*row.member);
    return record;
}

template <typename Record, std::size_t count>
void expectEachParamCountsForEquality(const Record &record, const RecordRow<Record> (&rows)[count])
{
    expectEqual(record, Record(record));
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Record otherValue(record);
        (otherValue.*row.member).value = 1e-9;
        expectDifferent(record, otherValue);
        Record otherUnit(record);
        (otherUnit.*row.member).unit = Unit_Yard;
        expectDifferent(record, otherUnit);
        Record otherDictionary(record);
        (otherDictionary.*row.member).dictionarySelKey = QStringLiteral("chosen");
        expectDifferent(record, otherDictionary);
    }
}

/// `isSameLogic` looks at the members called `used` and at no other `Param`.
template <typename Record, std::size_t count>
void expectSameLogicUses(const Record &record, const RecordRow<Record> (&rows)[count],
                         const std::vector<std::string> &used)
{
    EXPECT_TRUE(record.isSameLogic(Record(record)));
    std::size_t found = 0;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Record other(record);
        (other.*row.member).value = 1e-9;
        const bool counts = std::find(used.begin(), used.end(), row.name) != used.end();
        EXPECT_EQ(record.isSameLogic(other), !counts);
        EXPECT_EQ(other.isSameLogic(record), !counts);
        EXPECT_FALSE(record == other);
        found += counts ? 1 : 0;
    }
    EXPECT_EQ(found, used.size()) << "a name that no row has";
}

} // namespace KelStd::test
