#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// A signed interval in milliseconds. Nothing is raised. Different objects may be used on different
/// threads.
///
///     TimeSpan(90061001).toString() == "1 day 1 hour 1 minute 1 sec "
///     TimeSpan::toTimeSpanString(3723004) == "01:02:03.004"
class KELSTD_EXPORT TimeSpan
{
public:
    /// 0.
    TimeSpan();
    /// Of so many milliseconds, of any sign.
    TimeSpan(long long milliseconds);

    /// Back to 0.
    void clear();

    long long time_span() const { return m_timeSpan; } ///< [ms]

    /// \name Whole units
    /// Truncated toward zero: -1500 ms are -1 second.
    /// \{

    /// Whole days, towards zero.
    long long toDays() const;
    /// Whole hours, towards zero.
    long long toHours() const;
    /// Whole minutes, towards zero.
    long long toMinutes() const;
    /// Whole seconds, towards zero.
    long long toSeconds() const;
    /// \}

    /// Splits the interval without its sign; `positive` is true from 0 up. Every pointer may be
    /// null: what a missing unit would have taken flows into the next smaller one, so that without
    /// `days` the hours are those of the whole interval.
    void time_span(bool *positive, unsigned long long *days, unsigned long long *hours,
                   unsigned long long *minutes, unsigned long long *seconds,
                   unsigned long long *milliseconds) const;

    /// The interval in words, "-1 day 2 hour 0 minute 5 sec " with its final blank. Days stand only
    /// when there are any, hours and minutes only behind a unit that is not zero or when they are
    /// not zero themselves. With milliseconds, they follow as ".500" without padding (5 ms are
    /// ".5") and without a unit. The words are translated in the context of `QObject`.
    QString toString(bool withMilliseconds = false) const;

    /// The clock form "h:mm:ss.zzz" with at least two digits of hours, which may exceed 23. The
    /// sign is dropped, on purpose: `toString` shows it.
    static QString toTimeSpanString(long long milliseconds);

    /// Reads the clock form.
    ///
    /// \return [ms]; 0 for a text without two colons and a point behind them. A part that is no
    /// decimal integer of 32 bits counts as 0; a "-" before the hours makes the hours alone
    /// negative; hours times 3600 and minutes times 60 wrap around in 32 bits.
    static long long fromTimeSpanString(const QString &text);

    /// By the milliseconds, sign included.
    bool operator==(const TimeSpan &other) const { return m_timeSpan == other.m_timeSpan; }
    /// The negation of `operator==`.
    bool operator!=(const TimeSpan &other) const { return !(*this == other); }

    /// Writes a version and the milliseconds.
    void save(QDataStream &stream) const;
    /// Reads what `save` wrote. The stream's status is not checked.
    /// \return false, with the interval at 0, when the version is not 1
    bool load(QDataStream &stream);

private:
    qint64 m_timeSpan = 0; ///< [ms]
};

} // namespace KelStd
