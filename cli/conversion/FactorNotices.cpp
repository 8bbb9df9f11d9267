#include <cli/conversion/FactorNotices.h>

#include <cli/conversion/NoticeNumbers.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

using Missing = GridFactors::Missing;

struct Row
{
    Missing missing;
    const char *text; ///< behind a count
};

constexpr Row rows[] = {
    {Missing::NoPlane, "no point scale, combined factor and convergence: the system has longitude "
                       "and latitude instead of a plane"},
    {Missing::NotConformal, "no point scale and combined factor: the scale of the projection is "
                            "not the same in all directions there"},
    {Missing::Pole, "no convergence: every direction is north or south there"},
    {Missing::Unknown, "no point scale, combined factor and convergence: PROJ has none of the "
                       "system's projection there"},
};

std::size_t noticeOf(Missing missing)
{
    return firstFactorNotice + static_cast<std::size_t>(missing);
}

static_assert(firstFactorNotice + static_cast<std::size_t>(Missing::Unknown) < firstExtentNotice);

} // namespace

NoticeBits factorNotices(const GridFactors::Values &values,
                         const std::vector<const positions::FactorColumn *> &printed)
{
    const bool areAllThere = std::all_of(printed.begin(), printed.end(), [&](const auto *factor) {
        return (values.*factor->value).has_value();
    });
    return areAllThere ? 0U : 1U << noticeOf(values.missing);
}

QStringList factorRemarks(const Notices &notices, const QString &inputName)
{
    QStringList remarks;
    for (const Row &row : rows) {
        const NoticeCount &notice = notices[noticeOf(row.missing)];
        if (notice.count == 0)
            continue;
        remarks +=
            QStringLiteral("note: %1 %2; the first is %3:%4")
                .arg(notice.count == 1 ? QStringLiteral("1 position has")
                                       : QStringLiteral("%1 positions have").arg(notice.count),
                     QString::fromLatin1(row.text), inputName)
                .arg(notice.firstLine);
    }
    return remarks;
}

} // namespace KelStd::cli
