#pragma once

#include <QtCore/QtGlobal>

#include <array>
#include <cstddef>

namespace KelStd::cli {

/// How often something was noticed about positions, and in which line first.
struct NoticeCount
{
    qint64 count = 0;
    qint64 firstLine = 0; ///< from 1; 0 for none

    /// `line`: one behind those before.
    void add(qint64 line, qint64 times = 1)
    {
        if (count == 0)
            firstLine = line;
        count += times;
    }
};

/// What a job notices about positions besides what it says of each, such as that they lie outside
/// an area. What each number means is the job's to say.
inline constexpr std::size_t maxNotices = 20;
using Notices = std::array<NoticeCount, maxNotices>;

/// Several of them at once: bit n is notice n.
using NoticeBits = unsigned;

inline void addNotices(Notices &notices, NoticeBits bits, qint64 line)
{
    for (std::size_t i = 0; bits != 0; ++i, bits >>= 1) {
        if ((bits & 1U) != 0)
            notices[i].add(line);
    }
}

/// Adds those of the lines that come next.
inline void addNotices(Notices &notices, const Notices &later)
{
    for (std::size_t i = 0; i < maxNotices; ++i) {
        if (later[i].count > 0)
            notices[i].add(later[i].firstLine, later[i].count);
    }
}

} // namespace KelStd::cli
