#include <KelStd/time/TimeUtc.h>

#include <KelStd/coord/Enumerations.h>
#include <KelStd/time/Calendar.h>
#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/VariantForm.h>

#include <QtCore/QDataStream>

#include <functional>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

QString padded(int number, int digits)
{
    // Not the locale's digits: QDateTime::toString with a format would use them.
    return QString::number(number).rightJustified(digits, QLatin1Char('0'));
}

} // namespace

TimeUtc::TimeUtc() = default;

TimeUtc::TimeUtc(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
                 unsigned char minute, unsigned char second, unsigned short millionSecond)
    : m_year(year), m_month(month), m_day(day), m_hour(hour), m_minute(minute), m_second(second),
      m_millionSecond(millionSecond)
{}

TimeUtc::TimeUtc(long long valueTime)
{
    fromValueTime(valueTime);
}

void TimeUtc::clear()
{
    *this = TimeUtc();
}

long long TimeUtc::toValueTime() const
{
    return calendar::countOf(*this).value_or(0);
}

bool TimeUtc::fromValueTime(long long valueTime)
{
    const qint64 days = calendar::quotient(valueTime, calendar::msPerDay);
    const QDate date = QDate::fromJulianDay(calendar::julianDayOf1970 + days);
    if (!date.isValid())
        return false;
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    const auto timeOfDay = static_cast<qint32>(calendar::remainder(valueTime, calendar::msPerDay));
    m_year = static_cast<quint16>(year);
    m_month = static_cast<quint8>(month);
    m_day = static_cast<quint8>(day);
    m_hour = static_cast<quint8>(timeOfDay / calendar::msPerHour);
    m_minute = static_cast<quint8>(timeOfDay / calendar::msPerMinute % 60);
    m_second = static_cast<quint8>(timeOfDay / calendar::msPerSecond % 60);
    m_millionSecond = static_cast<quint16>(timeOfDay % calendar::msPerSecond);
    return true;
}

TimeUtc TimeUtc::makeCurrent()
{
    return TimeUtc(QDateTime::currentMSecsSinceEpoch());
}

TimeGpsT TimeUtc::toGpsT() const
{
    TimeGpsT time;
    time.fromValueTime(toValueTime());
    return time;
}

TimeGpsW TimeUtc::toGpsW() const
{
    TimeGpsW time;
    time.fromValueTime(toValueTime());
    return time;
}

TimeLocal TimeUtc::toLocal() const
{
    return calendar::countOf(*this) ? TimeLocal(*this) : TimeLocal(*this, 0);
}

TimeUtc TimeUtc::operator+(long long milliseconds) const
{
    TimeUtc moved(*this);
    moved += milliseconds;
    return moved;
}

TimeUtc TimeUtc::operator-(long long milliseconds) const
{
    TimeUtc moved(*this);
    moved -= milliseconds;
    return moved;
}

TimeUtc &TimeUtc::operator+=(long long milliseconds)
{
    if (const auto count = calendar::countOf(*this))
        fromValueTime(calendar::sum(*count, milliseconds));
    return *this;
}

TimeUtc &TimeUtc::operator-=(long long milliseconds)
{
    if (const auto count = calendar::countOf(*this))
        fromValueTime(calendar::difference(*count, milliseconds));
    return *this;
}

long long TimeUtc::operator-(const TimeUtc &other) const
{
    return toValueTime() - other.toValueTime();
}

int TimeUtc::compare(const TimeUtc &other) const
{
    if (this == &other)
        return 0;
    const long long left = toValueTime();
    const long long right = other.toValueTime();
    return left < right ? -1 : left > right ? 1 : 0;
}

bool TimeUtc::operator==(const TimeUtc &other) const
{
    return this == &other || calendar::holdsBetween(*this, other, std::equal_to<>());
}

bool TimeUtc::operator!=(const TimeUtc &other) const
{
    return !(*this == other);
}

bool TimeUtc::operator<(const TimeUtc &other) const
{
    return calendar::holdsBetween(*this, other, std::less<>());
}

bool TimeUtc::operator>(const TimeUtc &other) const
{
    return calendar::holdsBetween(*this, other, std::greater<>());
}

QString TimeUtc::toString(bool withMilliseconds) const
{
    if (!calendar::countOf(*this))
        return {};
    QString text = padded(m_year, 4) + QLatin1Char('-') + padded(m_month, 2) + QLatin1Char('-')
                   + padded(m_day, 2) + QLatin1Char(' ') + padded(m_hour, 2) + QLatin1Char(':')
                   + padded(m_minute, 2) + QLatin1Char(':') + padded(m_second, 2);
    if (withMilliseconds)
        text += QLatin1Char('.') + padded(m_millionSecond, 3);
    return text;
}

void TimeUtc::toVariant(QVariant &variant) const
{
    variant = QVariantList{static_cast<int>(Format_UTC), toValueTime()};
}

bool TimeUtc::fromVariant(const QVariant &variant)
{
    const auto list = variantForm::read(variant, Format_UTC, 2);
    if (!list)
        return false;
    fromValueTime(list->at(1).toLongLong());
    return true;
}

void TimeUtc::save(QDataStream &stream) const
{
    stream << streamVersion << static_cast<qint16>(m_year) << static_cast<qint8>(m_month)
           << static_cast<qint8>(m_day) << static_cast<qint8>(m_hour)
           << static_cast<qint8>(m_minute) << static_cast<qint8>(m_second)
           << static_cast<qint16>(m_millionSecond);
}

bool TimeUtc::load(QDataStream &stream)
{
    clear();
    qint32 version = 0;
    stream >> version;
    if (version != streamVersion)
        return false;
    stream >> m_year >> m_month >> m_day >> m_hour >> m_minute >> m_second >> m_millionSecond;
    return true;
}

} // namespace KelStd
