#include <cli/conversion/AreaNotices.h>

#include <cli/terminal/ShownText.h>

#include <QtCore/QLocale>

namespace KelStd::cli {

namespace {

/// Notice 0 is a location outside; the others are mistakes.
constexpr std::size_t outside = 0;

constexpr PositionMistake mistakes[] = {PositionMistake::Swapped, PositionMistake::FirstSign,
                                        PositionMistake::SecondSign, PositionMistake::BothSigns};

std::size_t noticeOf(PositionMistake mistake)
{
    return static_cast<std::size_t>(mistake);
}

static_assert(static_cast<std::size_t>(PositionMistake::BothSigns) < areaNoticeCount);
static_assert(static_cast<std::size_t>(PositionMistake::None) == outside,
              "the notice of a mistake is its number, and none has the first one");

QString degrees(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// "longitudes 3.2 to 7.22, latitudes 50.75 to 53.7 (Netherlands - onshore.)"
QString describedArea(const SystemOrigin &origin)
{
    QString text = QStringLiteral("longitudes %1 to %2, latitudes %3 to %4")
                       .arg(degrees(origin.area->west), degrees(origin.area->east),
                            degrees(origin.area->south), degrees(origin.area->north));
    constexpr int maxName = 100;
    const QString name = origin.areaName;
    if (!name.isEmpty()) {
        text += QStringLiteral(" (%1)").arg(
            shown(name.size() <= maxName ? name : name.left(maxName - 3) + QStringLiteral("...")));
    }
    return text;
}

QString positionsText(qint64 count)
{
    return count == 1 ? QStringLiteral("1 position") : QStringLiteral("%1 positions").arg(count);
}

QString firstText(const NoticeCount &notice, const QString &inputName)
{
    return QStringLiteral("; the first is %1:%2").arg(inputName).arg(notice.firstLine);
}

} // namespace

NoticeBits areaNotices(AreaCheck &check, const Location &location)
{
    return check.isInside(location) ? 0U : 1U << outside;
}

NoticeBits areaNoticesOfFailed(AreaCheck &check, LocationBuilder::Frame frame, const Pos &position)
{
    const PositionMistake mistake = check.mistakeIn(frame, position);
    return mistake == PositionMistake::None ? 0U : 1U << noticeOf(mistake);
}

NoticeBits areaNoticesOfOutside(AreaCheck &check, LocationBuilder::Frame frame, const Pos &position)
{
    return (1U << outside) | areaNoticesOfFailed(check, frame, position);
}

QStringList areaRemarks(const Notices &notices, std::size_t first, const SystemOrigin &origin,
                        const QString &systemName, LocationBuilder::Frame frame, qint64 taken,
                        const QString &inputName)
{
    const QString area = QLatin1String("the area of use of ")
                         + (systemName.isEmpty() ? QStringLiteral("the system") : systemName);
    QStringList remarks;
    if (!origin.area)
        return remarks;
    const NoticeCount &all = notices[first + outside];
    if (all.count > 0) {
        remarks += QStringLiteral("warning: %1 of %2 outside %3, %4%5")
                       .arg(all.count)
                       .arg(taken == 1 ? QStringLiteral("1 position lies")
                                       : positionsText(taken) + QStringLiteral(" lie"),
                            area, describedArea(origin), firstText(all, inputName));
    }
    for (const PositionMistake mistake : mistakes) {
        const NoticeCount &notice = notices[first + noticeOf(mistake)];
        if (notice.count == 0)
            continue;
        remarks += QStringLiteral("WARNING: %1 would lie inside the area of use with %2%3")
                       .arg(positionsText(notice.count), describedMistake(mistake, frame),
                            firstText(notice, inputName));
    }
    return remarks;
}

} // namespace KelStd::cli
