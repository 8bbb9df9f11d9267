#include <KelStd/nmea/ReceiverTime.h>

#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeUtc.h>

#include <algorithm>

namespace KelStd::nmea {

namespace {

constexpr int secondsPerMinute = 60;
constexpr int secondsPerHour = 3600;
constexpr int secondsPerDay = 86400;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view withoutZerosBehind(const QByteArray &digits)
{
    std::string_view text(digits.constData(), static_cast<std::size_t>(digits.size()));
    while (!text.empty() && text.back() == '0')
        text.remove_suffix(1);
    return text;
}

QByteArray withFraction(const QByteArray &whole, const QByteArray &fraction)
{
    return fraction.isEmpty() ? whole : whole + '.' + fraction;
}

QByteArray padded(int number, int digits)
{
    return QByteArray::number(number).rightJustified(digits, '0');
}

TimeUtc utcOf(const QDate &date, int second)
{
    return TimeUtc(static_cast<unsigned short>(date.year()),
                   static_cast<unsigned char>(date.month()), static_cast<unsigned char>(date.day()),
                   static_cast<unsigned char>(second / secondsPerHour),
                   static_cast<unsigned char>(second / secondsPerMinute % secondsPerMinute),
                   static_cast<unsigned char>(second % secondsPerMinute), 0);
}

} // namespace

std::optional<TimeOfDay> TimeOfDay::read(std::string_view field)
{
    constexpr std::size_t wholeDigits = 6; // hhmmss
    const std::size_t point = field.find('.');
    const std::string_view whole = field.substr(0, point);
    const std::string_view fraction =
        point == std::string_view::npos ? std::string_view() : field.substr(point + 1);
    if (whole.size() != wholeDigits || !std::all_of(whole.begin(), whole.end(), isDigit)
        || !std::all_of(fraction.begin(), fraction.end(), isDigit))
        return std::nullopt;
    const auto pair = [&whole](std::size_t place) {
        return (whole[place] - '0') * 10 + whole[place + 1] - '0';
    };
    const int hour = pair(0);
    const int minute = pair(2);
    const int second = pair(4);
    const bool isLeap = hour == 23 && minute == 59 && second == 60;
    if (hour >= 24 || minute >= secondsPerMinute || (second >= secondsPerMinute && !isLeap))
        return std::nullopt;
    return TimeOfDay{hour * secondsPerHour + minute * secondsPerMinute + second,
                     QByteArray(fraction.data(), static_cast<int>(fraction.size()))};
}

bool TimeOfDay::operator==(const TimeOfDay &other) const
{
    return second == other.second
           && withoutZerosBehind(fraction) == withoutZerosBehind(other.fraction);
}

QDate DateKeeper::completed(const ReceivedDate &date) const
{
    int year = date.year;
    if (!date.hasFullYear) {
        constexpr int firstYear = 1980; // when GPS time began
        constexpr int century = 100;
        // The century that begins here holds each year of two digits once.
        const int first = m_fullYear ? *m_fullYear - century / 2 : firstYear;
        year = first + ((date.year - first) % century + century) % century;
    }
    return {year, date.month, date.day};
}

/// Whether the time is that of the epoch before or up to a minute later, over midnight, too.
bool DateKeeper::goesOn(const TimeOfDay &time) const
{
    return (time.second - m_second + secondsPerDay) % secondsPerDay <= secondsPerMinute;
}

/// The date of an epoch whose sentences gave none.
std::optional<QDate> DateKeeper::carried(const TimeOfDay &time) const
{
    constexpr int halfDay = secondsPerDay / 2;
    if (!m_date || (m_isNewLog && !goesOn(time)))
        return std::nullopt;
    const int step = time.second - m_second;
    if (step <= -halfDay)
        return m_date->addDays(1);
    if (step >= secondsPerDay - secondsPerMinute)
        return m_date->addDays(-1); // one that came late, from before midnight
    if (step < -secondsPerMinute)
        return std::nullopt;
    return m_date;
}

/// Which date an epoch has whose sentences gave one.
QDate DateKeeper::believed(const QDate &given, const TimeOfDay &time)
{
    const auto expected = carried(time);
    if (!expected || *expected == given || !goesOn(time))
        return given;
    const bool isLate = given == expected->addDays(-1) && time.second < secondsPerMinute;
    const bool isEarly =
        given == expected->addDays(1) && time.second >= secondsPerDay - secondsPerMinute;
    m_contradiction =
        QStringLiteral("%1 where the time goes on at %2; the %3 was taken")
            .arg(given.toString(Qt::ISODate), expected->toString(Qt::ISODate),
                 isLate || isEarly ? QStringLiteral("latter") : QStringLiteral("former"));
    return isLate || isEarly ? *expected : given;
}

std::optional<QDate> DateKeeper::dateOf(const TimeOfDay &time,
                                        const std::optional<ReceivedDate> &date)
{
    m_contradiction.clear();
    if (date) {
        const QDate given = completed(*date);
        m_date = given.isValid() ? std::optional(believed(given, time)) : std::nullopt;
        if (date->hasFullYear)
            m_fullYear = date->year;
    } else {
        m_date = carried(time);
    }
    m_second = time.second;
    m_isNewLog = false;
    return m_date;
}

QByteArray utcText(const QDate &date, const TimeOfDay &time)
{
    const bool isLeap = time.second >= TimeOfDay::leapSecond;
    const int second = isLeap ? secondsPerDay - 1 : time.second;
    const QByteArray text = padded(date.year(), 4) + '-' + padded(date.month(), 2) + '-'
                            + padded(date.day(), 2) + 'T' + padded(second / secondsPerHour, 2) + ':'
                            + padded(second / secondsPerMinute % secondsPerMinute, 2) + ':'
                            + padded(isLeap ? secondsPerMinute : second % secondsPerMinute, 2);
    return withFraction(text, time.fraction) + 'Z';
}

std::optional<GpsTime> gpsTime(const QDate &date, const TimeOfDay &time)
{
    if (date < QDate(1980, 1, 6))
        return std::nullopt;
    const bool isLeap = time.second >= TimeOfDay::leapSecond;
    // A leap second has no UTC fields of its own; on the GPS scale it is the second behind
    // 23:59:59.
    TimeGpsT gps = utcOf(date, isLeap ? secondsPerDay - 1 : time.second).toGpsT();
    if (isLeap) {
        constexpr long long millisecondsPerSecond = 1000;
        gps += millisecondsPerSecond;
        if (gps.toString() == utcOf(date.addDays(1), 0).toGpsT().toString())
            return std::nullopt; // the table has the next day's first second there
    }
    const TimeGpsW week = gps.toGpsW();
    return GpsTime{week.gps_weeks(),
                   withFraction(QByteArray::number(week.gps_seconds()), time.fraction)};
}

} // namespace KelStd::nmea
