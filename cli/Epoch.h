#pragma once

#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/TimeUtc.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

enum class TimeScale
{
    Utc,
    GpsT,
    GpsW,
    Local
};

/// A time scale as the user names it and as its values are written.
struct TimeScaleRow
{
    TimeScale scale;
    const char *option;
    const char *label;
    const char *forms; ///< what `Epoch::read` accepts
};

/// Of this name; null when there is none.
const TimeScaleRow *findTimeScale(const QString &option);

/// The names of all scales, with a separator between them.
QString timeScaleNames(const QString &separator);

/// The scales, a line each with the accepted forms.
QString timeScaleForms();

/// One instant in every scale.
///
/// In a leap second UTC repeats a calendar time, which the GPS scale tells apart: so the GPS time
/// is what an epoch is made of, and UTC follows from it.
struct Epoch
{
    TimeGpsT gpsT;
    TimeGpsW gpsW; ///< without the milliseconds
    TimeUtc utc;
    TimeLocal local;

    /// Reads a value of `scale`; nothing with the reason when it is none. Without an offset [s],
    /// local times have the system's.
    static std::optional<Epoch> read(const QString &text, TimeScale scale,
                                     std::optional<int> offset, QString &reason);

    /// The system's time.
    static Epoch current(std::optional<int> offset);

    /// The second that UTC inserts: its calendar time is also that of a neighbouring second.
    bool isLeapSecond() const;
};

} // namespace KelStd::cli
