#pragma once

#include <KelStd/Export.h>
#include <KelStd/time/TimeUtc.h>

#include <QtCore/QString>

namespace KelStd {

class TimeGpsT;
class TimeGpsW;

/// An instant together with the offset from UTC in which it is to be shown.
///
/// The instant is kept in UTC: only `local_time` and `toString` apply the offset, and comparison
/// does not see it. Field ranges and invalid fields are those of `TimeUtc`.
///
/// *The system's offset* is the one that holds in the system's time zone at the moment of the call,
/// not the one at the instant: a summer's instant taken over in winter has the winter's offset.
///
/// Nothing is raised. Different objects may be used on different threads.
///
///     TimeLocal(TimeUtc(2024, 1, 1, 0, 0, 0, 0), 28800).toString() == "2024-01-01 08:00:00"
class KELSTD_EXPORT TimeLocal
{
public:
    /// 1970-01-01 00:00:00.000 with the offset 0.
    TimeLocal();
    /// With the system's offset.
    TimeLocal(const TimeUtc &utc);
    /// `timeZoneSeconds` [s], east positive: any number of seconds.
    TimeLocal(const TimeUtc &utc, int timeZoneSeconds);
    /// UTC fields, `millionSecond` [ms], with the system's offset.
    TimeLocal(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
              unsigned char minute, unsigned char second, unsigned short millionSecond);
    /// The same with an offset `timeZoneSeconds` [s], east positive.
    TimeLocal(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
              unsigned char minute, unsigned char second, unsigned short millionSecond,
              int timeZoneSeconds);

    /// Back to the default.
    void clear();

    /// \name The fields of the instant, in UTC
    /// They are in UTC like those that the constructors take; `local_time` has the ones that a
    /// clock at the offset shows.
    /// \{
    unsigned short year() const { return m_utc.year(); }                   ///< 1 to 65535
    unsigned char month() const { return m_utc.month(); }                  ///< 1 to 12
    unsigned char day() const { return m_utc.day(); }                      ///< 1 to 31
    unsigned char hour() const { return m_utc.hour(); }                    ///< 0 to 23
    unsigned char minute() const { return m_utc.minute(); }                ///< 0 to 59
    unsigned char second() const { return m_utc.second(); }                ///< 0 to 59
    unsigned short millionSecond() const { return m_utc.millionSecond(); } ///< [ms], 0 to 999
    /// \}

    int timeZoneSeconds() const { return m_timeZoneSeconds; } ///< [s], east positive

    /// What a clock at the offset shows; a null pointer asks for nothing. Invalid fields come as
    /// they are.
    void local_time(unsigned short *year, unsigned char *month, unsigned char *day,
                    unsigned char *hour, unsigned char *minute, unsigned char *second,
                    unsigned short *millionSecond) const;

    /// What a clock at the offset shows, in the form of `TimeUtc::toString`.
    QString toString(bool withMilliseconds = false) const;

    /// The millisecond count of the instant; 0 for invalid fields.
    long long toValueTime() const;
    /// Takes the instant of a millisecond count as `TimeUtc` does, with the system's offset.
    bool fromValueTime(long long valueTime);
    /// The system's time with the system's offset.
    static TimeLocal makeCurrent();

    TimeUtc toUtc() const;   ///< the instant
    TimeGpsT toGpsT() const; ///< as `TimeUtc::toGpsT`
    TimeGpsW toGpsW() const; ///< as `TimeUtc::toGpsW`

    /// \name Moves, differences and comparisons
    /// Those of `TimeUtc` on the instant. A move keeps the offset.
    /// \{

    /// So much later [ms].
    TimeLocal operator+(long long milliseconds) const;
    /// So much earlier [ms].
    TimeLocal operator-(long long milliseconds) const;
    /// Moves this by so much [ms].
    TimeLocal &operator+=(long long milliseconds);
    /// Moves this back by so much [ms].
    TimeLocal &operator-=(long long milliseconds);
    /// The time elapsed from the other to this [ms], without leap seconds.
    long long operator-(const TimeLocal &other) const;

    /// -1 when this is earlier, 1 when it is later, 0 otherwise.
    int compare(const TimeLocal &other) const;
    /// Whether both are the same instant.
    bool operator==(const TimeLocal &other) const;
    /// The negation of `operator==`.
    bool operator!=(const TimeLocal &other) const;
    /// Whether this is earlier.
    bool operator<(const TimeLocal &other) const;
    /// Whether this is later.
    bool operator>(const TimeLocal &other) const;
    /// \}

    /// A list of `Format_Local`, the millisecond count of the instant and the offset.
    void toVariant(QVariant &variant) const;
    /// Takes instant and offset.
    /// \return false, with nothing changed, when `variant` is no such list
    bool fromVariant(const QVariant &variant);

    /// Writes a version, the instant and the offset.
    void save(QDataStream &stream) const;
    /// Reads what `save` wrote. Field values and the stream's status are not checked.
    /// \return false, with the time at its default, when a version is not 1
    bool load(QDataStream &stream);

private:
    TimeUtc m_utc;
    qint32 m_timeZoneSeconds = 0;
};

} // namespace KelStd
