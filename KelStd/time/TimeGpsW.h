#pragma once

#include <KelStd/Export.h>
#include <KelStd/time/TimeUtc.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd {

class TimeGpsT;
class TimeLocal;

/// GPS time as week number and whole seconds of the week, with the leap-second count (GPS minus
/// UTC) of its instant.
///
/// Weeks count from 1980-01-06 00:00 of the GPS scale and do not roll over at 1024. Instants before
/// that have negative weeks; the seconds always count from the week's beginning. There is no
/// fraction of a second: what a conversion or a move brings along is dropped toward the past.
/// Supplied leap-second counts are judged as by `TimeGpsT`. Nothing is raised. Different objects
/// may be used on different threads.
///
///     TimeGpsW(2300, 345600).toString() == "2300week 345600sec"
class KELSTD_EXPORT TimeGpsW
{
public:
    /// Zeros.
    TimeGpsW();
    /// `seconds` [s] of the week; more than 604799 are kept as given and reach into later weeks.
    /// The table gives the leap-second count.
    TimeGpsW(unsigned short week, unsigned int seconds);
    /// `leapSeconds` [s] is a supplied count with `check`, and is kept as given without.
    TimeGpsW(unsigned short week, unsigned int seconds, int leapSeconds, bool check);

    /// Back to zeros.
    void clear();

    /// Since 1980-01-06, without roll-over; negative before.
    int gps_weeks() const { return m_gpsWeeks; }
    int gps_seconds() const { return m_gpsSeconds; }  ///< [s], 0 to 604799
    int leapSeconds() const { return m_leapSeconds; } ///< GPS minus UTC [s]

    /// The millisecond count of 1980-01-06 00:00:00.000, the start of week 0.
    static const qint64 g_gpsStartTimTick;

    /// The GPS instant of week and seconds, written as milliseconds since 1970-01-01 00:00 of the
    /// GPS scale: what `fromGpsTime` reads.
    static long long GetGpsT_ofUtcFormat(unsigned short week, unsigned int seconds);

    /// The millisecond count of `toUtc()`.
    long long toValueTime() const;
    /// \name Instants that are taken
    /// As those of `TimeGpsT`, then without the milliseconds; always true.
    /// \{

    /// Takes a millisecond count of UTC.
    bool fromValueTime(long long utc);
    /// The same with a supplied count of leap seconds [s].
    bool fromValueTime(long long utc, int leapSeconds);
    /// Takes a millisecond count on the GPS scale.
    bool fromGpsTime(long long gps);
    /// \}
    /// The system's time.
    static TimeGpsW makeCurrent();

    /// The instant minus `leapSeconds()`.
    TimeUtc toUtc() const;
    /// The instant as calendar fields; this count is supplied.
    TimeGpsT toGpsT() const;
    /// The instant of `toUtc()` with the system's present offset.
    TimeLocal toLocal() const;

    /// \name Moves, differences and comparisons
    /// Those of `TimeGpsT`.
    /// \{

    /// So much later [ms].
    TimeGpsW operator+(long long milliseconds) const;
    /// So much earlier [ms].
    TimeGpsW operator-(long long milliseconds) const;
    /// Moves this by so much [ms].
    TimeGpsW &operator+=(long long milliseconds);
    /// Moves this back by so much [ms].
    TimeGpsW &operator-=(long long milliseconds);
    /// The time elapsed from the other to this [ms], on the GPS scale.
    long long operator-(const TimeGpsW &other) const;

    /// -1 when this is earlier, 1 when it is later, 0 otherwise.
    int compare(const TimeGpsW &other) const;
    /// Whether both are the same instant.
    bool operator==(const TimeGpsW &other) const;
    /// The negation of `operator==`.
    bool operator!=(const TimeGpsW &other) const;
    /// Whether this is earlier.
    bool operator<(const TimeGpsW &other) const;
    /// Whether this is later.
    bool operator>(const TimeGpsW &other) const;
    /// \}

    /// "2300week 345600sec", the two words translated in the context of `QObject`.
    QString toString() const;

    /// A list of `Format_GPSW`, the UTC millisecond count and the leap-second count.
    void toVariant(QVariant &variant) const;
    /// Reads such a list, whose leap-second count is a supplied one.
    /// \return false, with nothing changed, when `variant` is no such list
    bool fromVariant(const QVariant &variant);

    /// Writes a version, week, seconds and leap-second count.
    void save(QDataStream &stream) const;
    /// Reads what `save` wrote. Values and the stream's status are not checked.
    /// \return false, with the time at zeros, when the version is not 1
    bool load(QDataStream &stream);

private:
    friend class TimeGpsT;

    static TimeGpsW atGps(qint64 gps, int leapSeconds);
    qint64 gpsCount() const;
    std::optional<qint64> utcCount() const;
    template <typename Operation>
    bool holdsAsUtc(const TimeGpsW &other, Operation operation) const;
    void setWeek(qint64 gps);
    void moveTo(qint64 gps);

    qint32 m_gpsWeeks = 0;
    qint32 m_gpsSeconds = 0;
    qint32 m_leapSeconds = 0;
};

} // namespace KelStd
