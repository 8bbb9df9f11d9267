#include <KelStd/time/Calendar.h>

namespace KelStd::calendar {

std::optional<qint64> countOf(const TimeUtc &fields)
{
    const QDate date(fields.year(), fields.month(), fields.day());
    if (!date.isValid() || fields.hour() > 23 || fields.minute() > 59 || fields.second() > 59
        || fields.millionSecond() > 999)
        return std::nullopt;
    return (date.toJulianDay() - julianDayOf1970) * msPerDay + fields.hour() * msPerHour
           + fields.minute() * msPerMinute + fields.second() * msPerSecond + fields.millionSecond();
}

QDateTime dateTimeOf(const TimeUtc &fields)
{
    const QTime time(fields.hour(), fields.minute(), fields.second(), fields.millionSecond());
    // Qt would take a time of day that does not exist for midnight.
    const QDate date =
        time.isValid() ? QDate(fields.year(), fields.month(), fields.day()) : QDate();
    return QDateTime(date, time, Qt::UTC);
}

} // namespace KelStd::calendar
