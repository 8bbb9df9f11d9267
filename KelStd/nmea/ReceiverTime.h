#pragma once

#include <KelStd/Export.h>

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QString>

#include <optional>
#include <string_view>

namespace KelStd::nmea {

/// A time of day of UTC, to the last digit that a receiver gave.
struct KELSTD_EXPORT TimeOfDay
{
    /// 23:59:60, the leap second, has this number.
    static constexpr int leapSecond = 86400;

    int second = 0;      ///< whole seconds since 00:00:00, 0 to 86400
    QByteArray fraction; ///< the digits behind the point; "20" is a fifth of a second

    /// Of "hhmmss" or "hhmmss.ss" with any number of decimals. Nothing for other texts and for
    /// what is no time of day.
    static std::optional<TimeOfDay> read(std::string_view field);

    /// Whether this is the same time: "12.5" is "12.50".
    bool operator==(const TimeOfDay &other) const;
    /// The negation of `operator==`.
    bool operator!=(const TimeOfDay &other) const { return !(*this == other); }
};

/// A date that a receiver gave. RMC's years have two digits.
struct ReceivedDate
{
    int year = 0;             ///< 0 to 99 without a full year
    int month = 0;            ///< 1 to 12
    int day = 0;              ///< 1 to 31
    bool hasFullYear = false; ///< whether the year has four digits
};

/// The date of each epoch, where sentences with a date come now and then only.
///
/// An epoch without a date has that of the epoch before, while its time of day goes on. A time of
/// day that is earlier by twelve hours or more is of the next day. Earlier by up to a minute it is
/// one that came late. Earlier by more than that it is of a day that nobody knows, and so are those
/// behind it until a date comes.
///
/// Receivers change the date a moment before or behind midnight: within a minute of it, where the
/// time of day goes on by a minute at most, the date of the epoch before is believed instead of one
/// that is a day older behind midnight, or a day younger in front of it.
class KELSTD_EXPORT DateKeeper
{
public:
    /// The date of an epoch (UTC). `date` is the one that its sentences gave; nothing for none.
    std::optional<QDate> dateOf(const TimeOfDay &time, const std::optional<ReceivedDate> &date);

    /// What follows is of another log: a date is carried on only where the time of day goes on by a
    /// minute at most.
    void beginLog() { m_isNewLog = true; }

    /// The date as given. A year of two digits is the one nearest to the full year that was given
    /// last; before there was any, 80 to 99 are 1980 to 1999. Nothing for what is no date.
    QDate completed(const ReceivedDate &date) const;

    /// Why the date that was given last cannot be right, or that before it; empty for no reason.
    QString contradiction() const { return m_contradiction; }

private:
    QDate believed(const QDate &given, const TimeOfDay &time);
    std::optional<QDate> carried(const TimeOfDay &time) const;
    bool goesOn(const TimeOfDay &time) const;

    QString m_contradiction;
    std::optional<QDate> m_date; ///< of the epoch before
    int m_second = 0;
    bool m_isNewLog = false;
    std::optional<int> m_fullYear;
};

/// "2024-02-29T12:34:56.20Z" (ISO 8601).
KELSTD_EXPORT QByteArray utcText(const QDate &date, const TimeOfDay &time);

/// A GPS time with the digits that its UTC had.
struct GpsTime
{
    int week = 0;       ///< since 1980-01-06, not rolled over at 1024
    QByteArray seconds; ///< of the week [s], "390914.20"
};

/// The GPS time of a UTC date and time of day, by the table of leap seconds. Nothing before
/// 1980-01-06 00:00, and for a leap second that the table does not have.
KELSTD_EXPORT std::optional<GpsTime> gpsTime(const QDate &date, const TimeOfDay &time);

} // namespace KelStd::nmea
