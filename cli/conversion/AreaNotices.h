#pragma once

#include <cli/conversion/NoticeNumbers.h>
#include <cli/run/Notices.h>

#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/location/AreaCheck.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Positions outside the area of use of their system, as the notices of a run.
namespace KelStd::cli {

/// The notices of a position that became a location.
inline NoticeBits areaNotices(AreaCheck &check, LocationBuilder::Frame frame, const Pos &position,
                              const Location &location);

/// The notices of a location that was made of a position in no frame.
NoticeBits areaNotices(AreaCheck &check, const Location &location);

/// The notices of a position that failed: only the mistake that would explain it.
NoticeBits areaNoticesOfFailed(AreaCheck &check, LocationBuilder::Frame frame, const Pos &position);

/// The notices of one that lies outside.
NoticeBits areaNoticesOfOutside(AreaCheck &check, LocationBuilder::Frame frame,
                                const Pos &position);

/// What is said of them: nothing without any; otherwise one warning of those outside and, louder,
/// one for each mistake that would put some inside, each with its count and its first line.
/// `first`: the number of the first of these notices. `systemName`: what the system is called;
/// empty where there is no other one.
QStringList areaRemarks(const Notices &notices, std::size_t first, const SystemOrigin &origin,
                        const QString &systemName, LocationBuilder::Frame frame, qint64 taken,
                        const QString &inputName);

NoticeBits areaNotices(AreaCheck &check, LocationBuilder::Frame frame, const Pos &position,
                       const Location &location)
{
    return check.isInside(location) ? 0 : areaNoticesOfOutside(check, frame, position);
}

} // namespace KelStd::cli
