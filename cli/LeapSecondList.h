#pragma once

#include <KelStd/time/TimeUtc.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// From this UTC instant, GPS is ahead of UTC by so many seconds.
struct LeapSecondRow
{
    TimeUtc from;
    int gpsMinusUtc; ///< [s]
};

/// The rows of the library's table.
QList<LeapSecondRow> libraryLeapSeconds();

/// The list `leap-seconds.list` of the tz database.
struct LeapSecondList
{
    QList<LeapSecondRow> rows;
    std::optional<TimeUtc> expiry; ///< until when it is known that nothing is missing

    /// Nothing with the reason when `bytes` are no such list.
    static std::optional<LeapSecondList> parse(const QByteArray &bytes, QString &reason);
};

/// Every difference between the library's table and a list, a line each.
QStringList differences(const QList<LeapSecondRow> &table, const QList<LeapSecondRow> &list);

/// The date of an instant.
QString dateText(const TimeUtc &time);

} // namespace KelStd::cli
