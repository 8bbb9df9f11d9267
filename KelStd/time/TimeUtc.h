#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
class QVariant;
QT_END_NAMESPACE

namespace KelStd {

class TimeGpsT;
class TimeGpsW;
class TimeLocal;

/// A UTC calendar time to the millisecond, years 1 to 65535 of the Gregorian calendar.
///
/// The fields are kept as they are given. Fields that form no date and time of day (2024-02-30,
/// 24:00, the year 0) are invalid: they have the count 0 and an empty text, and they stay as they
/// are when they are moved.
///
/// *The millisecond count* ("value time") that all time classes share is a signed 64-bit number of
/// milliseconds since 1970-01-01 00:00:00.000 UTC. It does not count leap seconds: a day has
/// 86400000.
///
/// Nothing is raised. Different objects may be used on different threads.
///
///     TimeUtc(2024, 2, 28, 12, 0, 0, 0) + 86400000 == TimeUtc(2024, 2, 29, 12, 0, 0, 0)
class KELSTD_EXPORT TimeUtc
{
public:
    /// 1970-01-01 00:00:00.000.
    TimeUtc();
    /// `millionSecond` [ms]; the name is the contract's.
    TimeUtc(unsigned short year, unsigned char month, unsigned char day, unsigned char hour,
            unsigned char minute, unsigned char second, unsigned short millionSecond);
    /// The instant of a millisecond count, as `fromValueTime` takes it.
    TimeUtc(long long valueTime);

    /// Back to 1970-01-01 00:00:00.000.
    void clear();

    /// \name The fields, as they were given
    /// \{
    unsigned short year() const { return m_year; }                   ///< 1 to 65535
    unsigned char month() const { return m_month; }                  ///< 1 to 12
    unsigned char day() const { return m_day; }                      ///< 1 to 31
    unsigned char hour() const { return m_hour; }                    ///< 0 to 23
    unsigned char minute() const { return m_minute; }                ///< 0 to 59
    unsigned char second() const { return m_second; }                ///< 0 to 59; there is no 60
    unsigned short millionSecond() const { return m_millionSecond; } ///< [ms], 0 to 999
    /// \}

    /// The millisecond count. Invalid fields give 0, which is the count of 1970-01-01 00:00, too.
    long long toValueTime() const;
    /// Takes the fields of a millisecond count. Every count is in range; a year outside 0 to 65535
    /// wraps into its 16 bits. False would leave the fields as they are.
    bool fromValueTime(long long valueTime);
    /// The system's time.
    static TimeUtc makeCurrent();

    /// The same instant, with the leap-second count that belongs to it.
    TimeGpsT toGpsT() const;
    /// The same instant without its milliseconds, with the leap-second count that belongs to it.
    TimeGpsW toGpsW() const;
    /// The same instant with the system's present offset; invalid fields get the offset 0.
    TimeLocal toLocal() const;

    /// Moved by `milliseconds`; the count wraps at the ends of 64 bits.
    TimeUtc operator+(long long milliseconds) const;
    TimeUtc operator-(long long milliseconds) const; ///< as `operator+`, backward
    TimeUtc &operator+=(long long milliseconds);     ///< as `operator+`, in place
    TimeUtc &operator-=(long long milliseconds);     ///< as `operator-`, in place
    /// This minus the other [ms], by their counts.
    long long operator-(const TimeUtc &other) const;

    /// \name Comparisons
    /// \{

    /// -1 when this is earlier, 1 when it is later, 0 otherwise, by the counts: invalid fields are
    /// at the count 0 here. The operators compare `QDateTime`s, to which invalid ones are all equal
    /// and earlier than every valid one. The two differ on purpose.
    int compare(const TimeUtc &other) const;
    /// Whether both are the same instant.
    bool operator==(const TimeUtc &other) const;
    /// The negation of `operator==`.
    bool operator!=(const TimeUtc &other) const;
    /// Whether this is earlier.
    bool operator<(const TimeUtc &other) const;
    /// Whether this is later.
    bool operator>(const TimeUtc &other) const;
    /// \}

    /// "2024-02-29 12:00:00", with ".000" behind it when milliseconds are wanted. Latin digits
    /// whatever the locale; empty when the fields are invalid.
    QString toString(bool withMilliseconds = false) const;

    /// A list of `Format_UTC` and the millisecond count.
    void toVariant(QVariant &variant) const;
    /// Takes the instant of such a list.
    /// \return false, with nothing changed, when `variant` is no such list
    bool fromVariant(const QVariant &variant);

    /// Writes a version and the fields.
    void save(QDataStream &stream) const;
    /// Reads what `save` wrote. Field values and the stream's status are not checked.
    /// \return false, with the time at its default, when the version is not 1
    bool load(QDataStream &stream);

private:
    quint16 m_year = 1970;
    quint8 m_month = 1;
    quint8 m_day = 1;
    quint8 m_hour = 0;
    quint8 m_minute = 0;
    quint8 m_second = 0;
    quint16 m_millionSecond = 0;
};

} // namespace KelStd
