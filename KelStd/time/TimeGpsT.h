#pragma once

#include <KelStd/Export.h>
#include <KelStd/time/TimeUtc.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd {

class TimeGpsW;
class TimeLocal;

/// GPS time as calendar fields, with the leap-second count (GPS minus UTC) of its instant.
///
/// The fields are read on the GPS scale, which has no leap seconds: it runs ahead of UTC by 18 s
/// since 2017. Because the count comes along, a value turns into UTC without outside help. Field
/// ranges and invalid fields are those of `TimeUtc`.
///
/// *A supplied count* is judged: it is believed where it is greater than the last one of the
/// library's table (`leapSecondTable`) and the instant is later than the table's last row (a leap
/// second newer than the library); otherwise the table decides.
///
/// Nothing is raised. Different objects may be used on different threads.
///
///     TimeGpsT(2017, 1, 1, 0, 0, 18, 0).toUtc() == TimeUtc(2017, 1, 1, 0, 0, 0, 0)
class KELSTD_EXPORT TimeGpsT
{
public:
    /// 1970-01-01 00:00:00.000 with the leap-second count 0, which is not the table's.
    TimeGpsT();
    /// `millionSecond` [ms]. The table gives the leap-second count.
    TimeGpsT(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
             unsigned char minute, unsigned char second, unsigned short millionSecond);
    /// `leapSeconds` [s] is a supplied count.
    TimeGpsT(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
             unsigned char minute, unsigned char second, unsigned short millionSecond,
             int leapSeconds);

    /// Back to the default.
    void clear();

    /// \name The fields on the GPS scale
    /// \{
    unsigned short year() const { return m_fields.year(); }                   ///< 1 to 65535
    unsigned char month() const { return m_fields.month(); }                  ///< 1 to 12
    unsigned char day() const { return m_fields.day(); }                      ///< 1 to 31
    unsigned char hour() const { return m_fields.hour(); }                    ///< 0 to 23
    unsigned char minute() const { return m_fields.minute(); }                ///< 0 to 59
    unsigned char second() const { return m_fields.second(); }                ///< 0 to 59
    unsigned short millionSecond() const { return m_fields.millionSecond(); } ///< [ms], 0 to 999
    /// \}

    int leapSeconds() const { return m_leapSeconds; } ///< GPS minus UTC [s]

    /// The millisecond count of `toUtc()`; 0 for invalid fields.
    long long toValueTime() const;
    /// Takes the UTC instant of a millisecond count, with the table's leap-second count. Every
    /// count is in range (see `TimeUtc::fromValueTime`); false would change nothing.
    bool fromValueTime(long long utc);
    /// The same with a supplied count. Whatever is supplied, `toValueTime` gives `utc` back.
    bool fromValueTime(long long utc, int leapSeconds);
    /// Takes a GPS instant written as milliseconds since 1970-01-01 00:00 of the GPS scale. The
    /// leap-second count is looked up as if `gps` were UTC, so that in the first seconds after a
    /// leap second it is already the new one.
    bool fromGpsTime(long long gps);
    /// The system's time.
    static TimeGpsT makeCurrent();

    /// The fields minus `leapSeconds()`.
    TimeUtc toUtc() const;
    /// Week and seconds of the fields, without the milliseconds; this count is supplied. Invalid
    /// fields have no week: they give the default.
    TimeGpsW toGpsW() const;
    /// The instant of `toUtc()` with the system's present offset.
    TimeLocal toLocal() const;

    /// Moved by `milliseconds` of the GPS scale, which passes leap seconds like any other. The
    /// leap-second count stays unless the table has a leap second on the way; then it is judged
    /// anew.
    TimeGpsT operator+(long long milliseconds) const;
    TimeGpsT operator-(long long milliseconds) const; ///< as `operator+`, backward
    TimeGpsT &operator+=(long long milliseconds);     ///< as `operator+`, in place
    TimeGpsT &operator-=(long long milliseconds);     ///< as `operator-`, in place
    /// The time elapsed from the other to this [ms], on the GPS scale: leap seconds count.
    long long operator-(const TimeGpsT &other) const;

    /// \name Comparisons
    /// As `TimeUtc` compares them, after each was turned into UTC with its own count.
    /// \{

    /// -1 when this is earlier, 1 when it is later, 0 otherwise.
    int compare(const TimeGpsT &other) const;
    /// Whether both are the same instant.
    bool operator==(const TimeGpsT &other) const;
    /// The negation of `operator==`.
    bool operator!=(const TimeGpsT &other) const;
    /// Whether this is earlier.
    bool operator<(const TimeGpsT &other) const;
    /// Whether this is later.
    bool operator>(const TimeGpsT &other) const;
    /// \}

    /// The fields, in the form of `TimeUtc::toString`.
    QString toString(bool withMilliseconds = false) const;

    /// A list of `Format_GPST`, the UTC millisecond count and the leap-second count.
    void toVariant(QVariant &variant) const;
    /// Reads such a list, whose leap-second count is a supplied one.
    /// \return false, with nothing changed, when `variant` is no such list
    bool fromVariant(const QVariant &variant);

    /// Writes a version, the fields and the leap-second count.
    void save(QDataStream &stream) const;
    /// Reads what `save` wrote. Field values and the stream's status are not checked.
    /// \return false, with the time at its default, when the version is not 1
    bool load(QDataStream &stream);

private:
    std::optional<qint64> utcCount() const;
    template <typename Operation>
    bool holdsAsUtc(const TimeGpsT &other, Operation operation) const;
    void moveTo(qint64 gps);

    TimeUtc m_fields; ///< on the GPS scale, in spite of the type
    qint32 m_leapSeconds = 0;
};

} // namespace KelStd
