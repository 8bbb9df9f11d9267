#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>
#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/TimeUtc.h>

#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

namespace KelStd {

/// A scale in which instants are written.
enum class TimeScale
{
    Utc,  ///< UTC
    GpsT, ///< GPS time as calendar fields
    GpsW, ///< GPS week and seconds of the week
    Local ///< what a clock at an offset from UTC shows
};

/// A time scale in words. A new scale is an enumerator, a row in Epoch.cpp and its reading there.
struct TimeScaleRow
{
    TimeScale scale;   ///< the scale
    const char *name;  ///< short and without blanks, as for an option
    const char *label; ///< for people
    /// Examples of what `Epoch::read` accepts, with commas between them. Those with blanks may
    /// stand in quotation marks, as a shell wants them; the marks are no part of the value.
    const char *forms;
};

/// The rows of all scales, in the order of the enumerators. May be called on any thread.
KELSTD_EXPORT QVector<TimeScaleRow> timeScales();

/// The row of that name, which is valid as long as the library is loaded; null when there is none.
/// May be called on any thread.
KELSTD_EXPORT const TimeScaleRow *findTimeScale(const QString &name);

/// Why a text is no epoch.
enum class EpochMistake
{
    None,            ///< no mistake
    WrongForm,       ///< it is not written as a value of the scale
    NoSuchTime,      ///< there is no such date or time of day
    LeapSecondInUtc, ///< 23:59:60 of a date, which UTC fields do not hold; GPS time does
    WeekOutOfRange,  ///< weeks are 0 to 65535, seconds 0 to 604799
    YearOutOfRange,  ///< in one of the scales it is not between the years 1 and 9999
    TooFine          ///< decimals beyond the millisecond that are not 0, which would be lost
};

/// A failure of one of the kinds of `EpochMistake`.
using EpochFailure = Failure<EpochMistake>;

/// One instant in every scale.
///
/// In a leap second UTC repeats a calendar time, which the GPS scale tells apart. So the GPS time
/// is what an epoch is made of, and UTC follows from it.
///
///     Epoch::read("2303:390914", TimeScale::GpsW, 0)->utc.toString() == "2024-02-29 12:34:56"
struct KELSTD_EXPORT Epoch
{
    TimeGpsT gpsT;   ///< the instant, to the millisecond
    TimeGpsW gpsW;   ///< without the milliseconds, which are those of `gpsT`
    TimeUtc utc;     ///< the same in UTC
    TimeLocal local; ///< the same at an offset from UTC

    /// Reads a value of `scale`: "2024-02-29 12:34:56" with a blank or a T between date and time of
    /// day (UTC with or without a Z behind it), and of GPS weeks "2303:390914", "2303 390914",
    /// "2303, 390914" or what `TimeGpsW::toString` writes untranslated. Seconds may have decimals
    /// behind a point: three of them, and any number of zeros. Digits are Latin whatever the
    /// locale; blanks around the value are refused. May be called on any thread.
    ///
    /// \param offset that of local times from UTC [s], east positive; without one, the system's of
    ///        this moment
    /// \param failure (when given) why there is no epoch; no failure where there is one
    /// \return nothing for a text that is no value of the scale
    static std::optional<Epoch> read(const QString &text, TimeScale scale,
                                     std::optional<int> offset, EpochFailure *failure = nullptr);

    /// The system's time; `offset` as for `read`. May be called on any thread.
    static Epoch current(std::optional<int> offset);

    /// Whether this is in the second that UTC inserts: its calendar time is also that of a
    /// neighbouring second.
    bool isLeapSecond() const;
};

} // namespace KelStd
