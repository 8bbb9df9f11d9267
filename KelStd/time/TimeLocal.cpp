#include <KelStd/time/TimeLocal.h>

#include <KelStd/coord/Enumerations.h>
#include <KelStd/time/Calendar.h>
#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/VariantForm.h>

#include <QtCore/QDataStream>
#include <QtCore/QTimeZone>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

int systemOffset()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.timeZone().offsetFromUtc(now);
}

TimeUtc wallClock(const TimeUtc &utc, int offset)
{
    return utc + offset * calendar::msPerSecond;
}

template <typename Number>
void give(Number *place, Number number)
{
    if (place != nullptr)
        *place = number;
}

} // namespace

TimeLocal::TimeLocal() = default;

TimeLocal::TimeLocal(const TimeUtc &utc) : TimeLocal(utc, systemOffset()) {}

TimeLocal::TimeLocal(const TimeUtc &utc, int timeZoneSeconds)
    : m_utc(utc), m_timeZoneSeconds(timeZoneSeconds)
{}

TimeLocal::TimeLocal(unsigned short year, unsigned char month, unsigned char day,
                     unsigned char hour, unsigned char minute, unsigned char second,
                     unsigned short millionSecond)
    : TimeLocal(TimeUtc(year, month, day, hour, minute, second, millionSecond))
{}

TimeLocal::TimeLocal(unsigned short year, unsigned char month, unsigned char day,
                     unsigned char hour, unsigned char minute, unsigned char second,
                     unsigned short millionSecond, int timeZoneSeconds)
    : TimeLocal(TimeUtc(year, month, day, hour, minute, second, millionSecond), timeZoneSeconds)
{}

void TimeLocal::clear()
{
    *this = TimeLocal();
}

void TimeLocal::local_time(unsigned short *year, unsigned char *month, unsigned char *day,
                           unsigned char *hour, unsigned char *minute, unsigned char *second,
                           unsigned short *millionSecond) const
{
    const TimeUtc shown = wallClock(m_utc, m_timeZoneSeconds);
    give(year, shown.year());
    give(month, shown.month());
    give(day, shown.day());
    give(hour, shown.hour());
    give(minute, shown.minute());
    give(second, shown.second());
    give(millionSecond, shown.millionSecond());
}

QString TimeLocal::toString(bool withMilliseconds) const
{
    return wallClock(m_utc, m_timeZoneSeconds).toString(withMilliseconds);
}

long long TimeLocal::toValueTime() const
{
    return m_utc.toValueTime();
}

bool TimeLocal::fromValueTime(long long valueTime)
{
    if (!m_utc.fromValueTime(valueTime))
        return false;
    m_timeZoneSeconds = systemOffset();
    return true;
}

TimeLocal TimeLocal::makeCurrent()
{
    return TimeLocal(TimeUtc::makeCurrent());
}

TimeUtc TimeLocal::toUtc() const
{
    return m_utc;
}

TimeGpsT TimeLocal::toGpsT() const
{
    return m_utc.toGpsT();
}

TimeGpsW TimeLocal::toGpsW() const
{
    return m_utc.toGpsW();
}

TimeLocal TimeLocal::operator+(long long milliseconds) const
{
    return TimeLocal(m_utc + milliseconds, m_timeZoneSeconds);
}

TimeLocal TimeLocal::operator-(long long milliseconds) const
{
    return TimeLocal(m_utc - milliseconds, m_timeZoneSeconds);
}

TimeLocal &TimeLocal::operator+=(long long milliseconds)
{
    m_utc += milliseconds;
    return *this;
}

TimeLocal &TimeLocal::operator-=(long long milliseconds)
{
    m_utc -= milliseconds;
    return *this;
}

long long TimeLocal::operator-(const TimeLocal &other) const
{
    return m_utc - other.m_utc;
}

int TimeLocal::compare(const TimeLocal &other) const
{
    return m_utc.compare(other.m_utc);
}

bool TimeLocal::operator==(const TimeLocal &other) const
{
    return m_utc == other.m_utc;
}

bool TimeLocal::operator!=(const TimeLocal &other) const
{
    return m_utc != other.m_utc;
}

bool TimeLocal::operator<(const TimeLocal &other) const
{
    return m_utc < other.m_utc;
}

bool TimeLocal::operator>(const TimeLocal &other) const
{
    return m_utc > other.m_utc;
}

void TimeLocal::toVariant(QVariant &variant) const
{
    variant = QVariantList{static_cast<int>(Format_Local), toValueTime(), m_timeZoneSeconds};
}

bool TimeLocal::fromVariant(const QVariant &variant)
{
    const auto list = variantForm::read(variant, Format_Local, 3);
    if (!list)
        return false;
    m_utc.fromValueTime(list->at(1).toLongLong());
    m_timeZoneSeconds = list->at(2).toInt();
    return true;
}

void TimeLocal::save(QDataStream &stream) const
{
    stream << streamVersion;
    m_utc.save(stream);
    stream << m_timeZoneSeconds;
}

bool TimeLocal::load(QDataStream &stream)
{
    clear();
    qint32 version = 0;
    stream >> version;
    if (version != streamVersion || !m_utc.load(stream))
        return false;
    stream >> m_timeZoneSeconds;
    return true;
}

} // namespace KelStd
