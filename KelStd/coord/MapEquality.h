#pragma once

#include <algorithm>

namespace KelStd {

/// Equality of two maps entry by entry, in key order.
///
/// Qt's own operator takes two maps that share their storage for equal without looking, which a
/// NaN inside them would contradict.
template <typename Map>
bool sameEntries(const Map &a, const Map &b)
{
    return a.size() == b.size()
           && std::equal(a.keyValueBegin(), a.keyValueEnd(), b.keyValueBegin(),
                         [](const auto &x, const auto &y) {
                             return x.second == y.second && x.first == y.first;
                         });
}

} // namespace KelStd
