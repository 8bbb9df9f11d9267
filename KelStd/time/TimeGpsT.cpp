#include <KelStd/time/TimeGpsT.h>

#include <KelStd/coord/Enumerations.h>
#include <KelStd/time/Calendar.h>
#include <KelStd/time/LeapSeconds.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/VariantForm.h>

#include <QtCore/QDataStream>

#include <functional>

namespace KelStd {

TimeGpsT::TimeGpsT() = default;

TimeGpsT::TimeGpsT(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
                   unsigned char minute, unsigned char second, unsigned short millionSecond)
    : m_fields(year, month, day, hour, minute, second, millionSecond),
      m_leapSeconds(leapSeconds::atGps(m_fields.toValueTime()))
{}

TimeGpsT::TimeGpsT(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
                   unsigned char minute, unsigned char second, unsigned short millionSecond,
                   int leapSeconds)
    : m_fields(year, month, day, hour, minute, second, millionSecond),
      m_leapSeconds(leapSeconds::judged(m_fields.toValueTime(), leapSeconds))
{}

void TimeGpsT::clear()
{
    *this = TimeGpsT();
}

/// The count of `toUtc()`; nothing when its fields are invalid or may have wrapped on the way.
std::optional<qint64> TimeGpsT::utcCount() const
{
    const auto gps = calendar::countOf(m_fields);
    if (!gps)
        return std::nullopt;
    const qint64 utc = *gps - m_leapSeconds * calendar::msPerSecond;
    return calendar::holds(utc) ? std::make_optional(utc) : std::nullopt;
}

long long TimeGpsT::toValueTime() const
{
    const auto utc = utcCount();
    return utc ? *utc : toUtc().toValueTime();
}

bool TimeGpsT::fromValueTime(long long utc)
{
    const int count = leapSeconds::atUtc(utc);
    if (!m_fields.fromValueTime(calendar::sum(utc, count * calendar::msPerSecond)))
        return false;
    m_leapSeconds = count;
    return true;
}

bool TimeGpsT::fromValueTime(long long utc, int leapSeconds)
{
    const int count = leapSeconds::judgedAtUtc(utc, leapSeconds);
    if (!m_fields.fromValueTime(calendar::sum(utc, count * calendar::msPerSecond)))
        return false;
    m_leapSeconds = count;
    return true;
}

bool TimeGpsT::fromGpsTime(long long gps)
{
    if (!m_fields.fromValueTime(gps))
        return false;
    m_leapSeconds = leapSeconds::atUtc(gps);
    return true;
}

TimeGpsT TimeGpsT::makeCurrent()
{
    return TimeUtc::makeCurrent().toGpsT();
}

TimeUtc TimeGpsT::toUtc() const
{
    return m_fields - m_leapSeconds * calendar::msPerSecond;
}

TimeGpsW TimeGpsT::toGpsW() const
{
    const auto gps = calendar::countOf(m_fields);
    return gps ? TimeGpsW::atGps(*gps, leapSeconds::judged(*gps, m_leapSeconds)) : TimeGpsW();
}

TimeLocal TimeGpsT::toLocal() const
{
    return toUtc().toLocal();
}

void TimeGpsT::moveTo(qint64 gps)
{
    const qint64 before = m_fields.toValueTime();
    const int count = leapSeconds::judged(gps, m_leapSeconds);
    // A count that was set by hand outlives a move that meets no leap second.
    if (count != leapSeconds::judged(before, m_leapSeconds))
        m_leapSeconds = count;
    m_fields.fromValueTime(gps);
}

TimeGpsT TimeGpsT::operator+(long long milliseconds) const
{
    TimeGpsT moved(*this);
    moved += milliseconds;
    return moved;
}

TimeGpsT TimeGpsT::operator-(long long milliseconds) const
{
    TimeGpsT moved(*this);
    moved -= milliseconds;
    return moved;
}

TimeGpsT &TimeGpsT::operator+=(long long milliseconds)
{
    if (const auto gps = calendar::countOf(m_fields))
        moveTo(calendar::sum(*gps, milliseconds));
    return *this;
}

TimeGpsT &TimeGpsT::operator-=(long long milliseconds)
{
    if (const auto gps = calendar::countOf(m_fields))
        moveTo(calendar::difference(*gps, milliseconds));
    return *this;
}

long long TimeGpsT::operator-(const TimeGpsT &other) const
{
    return m_fields - other.m_fields;
}

template <typename Operation>
bool TimeGpsT::holdsAsUtc(const TimeGpsT &other, Operation operation) const
{
    const auto left = utcCount();
    const auto right = other.utcCount();
    // Turning both into fields and back would give the same answer, more slowly.
    return left && right ? operation(*left, *right) : operation(toUtc(), other.toUtc());
}

int TimeGpsT::compare(const TimeGpsT &other) const
{
    if (this == &other)
        return 0;
    const long long left = toValueTime();
    const long long right = other.toValueTime();
    return left < right ? -1 : left > right ? 1 : 0;
}

bool TimeGpsT::operator==(const TimeGpsT &other) const
{
    return this == &other || holdsAsUtc(other, std::equal_to<>());
}

bool TimeGpsT::operator!=(const TimeGpsT &other) const
{
    return !(*this == other);
}

bool TimeGpsT::operator<(const TimeGpsT &other) const
{
    return holdsAsUtc(other, std::less<>());
}

bool TimeGpsT::operator>(const TimeGpsT &other) const
{
    return holdsAsUtc(other, std::greater<>());
}

QString TimeGpsT::toString(bool withMilliseconds) const
{
    return m_fields.toString(withMilliseconds);
}

void TimeGpsT::toVariant(QVariant &variant) const
{
    variant = QVariantList{static_cast<int>(Format_GPST), toValueTime(), m_leapSeconds};
}

bool TimeGpsT::fromVariant(const QVariant &variant)
{
    const auto list = variantForm::read(variant, Format_GPST, 3);
    if (!list)
        return false;
    fromValueTime(list->at(1).toLongLong(), list->at(2).toInt());
    return true;
}

void TimeGpsT::save(QDataStream &stream) const
{
    m_fields.save(stream); // version and fields are laid out as those of a UTC time
    stream << m_leapSeconds;
}

bool TimeGpsT::load(QDataStream &stream)
{
    clear();
    if (!m_fields.load(stream))
        return false;
    stream >> m_leapSeconds;
    return true;
}

} // namespace KelStd
