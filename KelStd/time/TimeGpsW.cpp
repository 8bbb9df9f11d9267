#include <KelStd/time/TimeGpsW.h>

#include <KelStd/coord/Enumerations.h>
#include <KelStd/time/Calendar.h>
#include <KelStd/time/LeapSeconds.h>
#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/VariantForm.h>

#include <QtCore/QDataStream>
#include <QtCore/QObject>

#include <functional>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;
constexpr qint64 gpsStart = calendar::daysSince1970(1980, 1, 6) * calendar::msPerDay;
constexpr qint64 secondsPerWeek = Q_INT64_C(7) * 86400;

static_assert(gpsStart == Q_INT64_C(315964800000), "GPS time starts on 1980-01-06");

/// The GPS instant of week and seconds. Cannot overflow: 32 bits of weeks are 1.3e18 ms.
constexpr qint64 instantOf(qint64 week, qint64 seconds)
{
    return gpsStart + (week * secondsPerWeek + seconds) * calendar::msPerSecond;
}

} // namespace

const qint64 TimeGpsW::g_gpsStartTimTick = gpsStart;

TimeGpsW::TimeGpsW() = default;

TimeGpsW::TimeGpsW(unsigned short week, unsigned int seconds)
    : m_gpsWeeks(week), m_gpsSeconds(static_cast<qint32>(seconds)),
      m_leapSeconds(leapSeconds::atGps(gpsCount()))
{}

TimeGpsW::TimeGpsW(unsigned short week, unsigned int seconds, int leapSeconds, bool check)
    : m_gpsWeeks(week), m_gpsSeconds(static_cast<qint32>(seconds)),
      m_leapSeconds(check ? leapSeconds::judged(gpsCount(), leapSeconds) : leapSeconds)
{}

void TimeGpsW::clear()
{
    *this = TimeGpsW();
}

long long TimeGpsW::GetGpsT_ofUtcFormat(unsigned short week, unsigned int seconds)
{
    return instantOf(week, seconds);
}

TimeGpsW TimeGpsW::atGps(qint64 gps, int leapSeconds)
{
    TimeGpsW time;
    time.setWeek(gps);
    time.m_leapSeconds = leapSeconds;
    return time;
}

qint64 TimeGpsW::gpsCount() const
{
    return instantOf(m_gpsWeeks, m_gpsSeconds);
}

/// The count of `toUtc()`; nothing when its fields may have wrapped on the way.
std::optional<qint64> TimeGpsW::utcCount() const
{
    const qint64 gps = gpsCount();
    const qint64 utc = gps - m_leapSeconds * calendar::msPerSecond;
    return calendar::holds(gps) && calendar::holds(utc) ? std::make_optional(utc) : std::nullopt;
}

void TimeGpsW::setWeek(qint64 gps)
{
    // What calendar fields cannot hold wraps as they do; where that gives no date, it is week 0.
    if (!calendar::holds(gps))
        gps = calendar::countOf(TimeUtc(gps)).value_or(gpsStart);
    const qint64 seconds = calendar::quotient(gps - gpsStart, calendar::msPerSecond);
    m_gpsWeeks = static_cast<qint32>(calendar::quotient(seconds, secondsPerWeek));
    m_gpsSeconds = static_cast<qint32>(calendar::remainder(seconds, secondsPerWeek));
}

long long TimeGpsW::toValueTime() const
{
    const auto utc = utcCount();
    return utc ? *utc : toUtc().toValueTime();
}

bool TimeGpsW::fromValueTime(long long utc)
{
    m_leapSeconds = leapSeconds::atUtc(utc);
    setWeek(calendar::sum(utc, m_leapSeconds * calendar::msPerSecond));
    return true;
}

bool TimeGpsW::fromValueTime(long long utc, int leapSeconds)
{
    m_leapSeconds = leapSeconds::judgedAtUtc(utc, leapSeconds);
    setWeek(calendar::sum(utc, m_leapSeconds * calendar::msPerSecond));
    return true;
}

bool TimeGpsW::fromGpsTime(long long gps)
{
    m_leapSeconds = leapSeconds::atUtc(gps);
    setWeek(gps);
    return true;
}

TimeGpsW TimeGpsW::makeCurrent()
{
    return TimeUtc::makeCurrent().toGpsW();
}

TimeUtc TimeGpsW::toUtc() const
{
    const auto utc = utcCount();
    return utc ? TimeUtc(*utc) : TimeUtc(gpsCount()) - m_leapSeconds * calendar::msPerSecond;
}

TimeGpsT TimeGpsW::toGpsT() const
{
    const TimeUtc fields(gpsCount());
    return TimeGpsT(fields.year(), fields.month(), fields.day(), fields.hour(), fields.minute(),
                    fields.second(), fields.millionSecond(), m_leapSeconds);
}

TimeLocal TimeGpsW::toLocal() const
{
    return toUtc().toLocal();
}

void TimeGpsW::moveTo(qint64 gps)
{
    const int count = leapSeconds::judged(gps, m_leapSeconds);
    // A count that was set by hand outlives a move that meets no leap second.
    if (count != leapSeconds::judged(gpsCount(), m_leapSeconds))
        m_leapSeconds = count;
    setWeek(gps);
}

TimeGpsW TimeGpsW::operator+(long long milliseconds) const
{
    TimeGpsW moved(*this);
    moved += milliseconds;
    return moved;
}

TimeGpsW TimeGpsW::operator-(long long milliseconds) const
{
    TimeGpsW moved(*this);
    moved -= milliseconds;
    return moved;
}

TimeGpsW &TimeGpsW::operator+=(long long milliseconds)
{
    moveTo(calendar::sum(gpsCount(), milliseconds));
    return *this;
}

TimeGpsW &TimeGpsW::operator-=(long long milliseconds)
{
    moveTo(calendar::difference(gpsCount(), milliseconds));
    return *this;
}

long long TimeGpsW::operator-(const TimeGpsW &other) const
{
    return gpsCount() - other.gpsCount();
}

template <typename Operation>
bool TimeGpsW::holdsAsUtc(const TimeGpsW &other, Operation operation) const
{
    const auto left = utcCount();
    const auto right = other.utcCount();
    // Turning both into fields and back would give the same answer, more slowly.
    return left && right ? operation(*left, *right) : operation(toUtc(), other.toUtc());
}

int TimeGpsW::compare(const TimeGpsW &other) const
{
    if (this == &other)
        return 0;
    const long long left = toValueTime();
    const long long right = other.toValueTime();
    return left < right ? -1 : left > right ? 1 : 0;
}

bool TimeGpsW::operator==(const TimeGpsW &other) const
{
    return this == &other || holdsAsUtc(other, std::equal_to<>());
}

bool TimeGpsW::operator!=(const TimeGpsW &other) const
{
    return !(*this == other);
}

bool TimeGpsW::operator<(const TimeGpsW &other) const
{
    return holdsAsUtc(other, std::less<>());
}

bool TimeGpsW::operator>(const TimeGpsW &other) const
{
    return holdsAsUtc(other, std::greater<>());
}

QString TimeGpsW::toString() const
{
    return QStringLiteral("%1%2 %3%4")
        .arg(QString::number(m_gpsWeeks), QObject::tr("week"), QString::number(m_gpsSeconds),
             QObject::tr("sec"));
}

void TimeGpsW::toVariant(QVariant &variant) const
{
    variant = QVariantList{static_cast<int>(Format_GPSW), toValueTime(), m_leapSeconds};
}

bool TimeGpsW::fromVariant(const QVariant &variant)
{
    const auto list = variantForm::read(variant, Format_GPSW, 3);
    if (!list)
        return false;
    fromValueTime(list->at(1).toLongLong(), list->at(2).toInt());
    return true;
}

void TimeGpsW::save(QDataStream &stream) const
{
    stream << streamVersion << m_gpsWeeks << m_gpsSeconds << m_leapSeconds;
}

bool TimeGpsW::load(QDataStream &stream)
{
    clear();
    qint32 version = 0;
    stream >> version;
    if (version != streamVersion)
        return false;
    stream >> m_gpsWeeks >> m_gpsSeconds >> m_leapSeconds;
    return true;
}

} // namespace KelStd
