#pragma once

#include <KelStd/coord/Param.h>

#include <algorithm>
#include <iterator>

namespace KelStd {

/// One `Param` member of a transformation record and the type and unit that `clear` gives it.
template <typename Record>
struct RecordParam
{
    Param Record::*member;
    EValueType valType;
    EUnit unit;
};

/// Gives every member its default. What a member's dictionary holds survives.
template <typename Record, std::size_t count>
void resetParams(Record &record, const RecordParam<Record> (&rows)[count])
{
    for (const auto &row : rows) {
        Param &param = record.*row.member;
        param.valType = row.valType;
        param.unit = row.unit;
        param.value = 0.0;
        param.isDictionary = false;
    }
}

/// Equality of the first `used` members of two records.
template <typename Record, std::size_t count>
bool sameParams(const Record &a, const Record &b, const RecordParam<Record> (&rows)[count],
                std::size_t used = count)
{
    return std::all_of(std::begin(rows), std::begin(rows) + used,
                       [&](const auto &row) { return a.*row.member == b.*row.member; });
}

/// Writes every member as a block of its own.
template <typename Record, std::size_t count>
void saveParams(const Record &record, const RecordParam<Record> (&rows)[count], QDataStream &stream)
{
    for (const auto &row : rows)
        (record.*row.member).save(stream);
}

/// Reads the members' blocks. False at the first that fails; the later members keep their values.
template <typename Record, std::size_t count>
bool loadParams(Record &record, const RecordParam<Record> (&rows)[count], QDataStream &stream)
{
    return std::all_of(std::begin(rows), std::end(rows),
                       [&](const auto &row) { return (record.*row.member).load(stream); });
}

} // namespace KelStd
