#pragma once

#include <KelStd/Export.h>
#include <KelStd/nmea/Message.h>
#include <KelStd/nmea/ReceiverTime.h>

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <optional>

namespace KelStd::nmea {

/// Why an epoch has no position that can be used.
enum class EpochFault
{
    None,        ///< no failure
    NoFix,       ///< quality 0
    Void,        ///< RMC says that its position is not valid
    NoPosition,  ///< latitude and longitude are empty
    NoHeight,    ///< no sentence has a height: RMC alone
    NoUndulation ///< the height is above mean sea level, and how far that is above the
                 ///< ellipsoid is not said
};

/// A failure of one of the kinds of `EpochFault`.
using EpochFailure = Failure<EpochFault>;

/// What the sentences of one time say together.
struct KELSTD_EXPORT ReceiverEpoch
{
    qint64 number = 0; ///< from 1, of the epochs with a position or with a reason why there is none
    std::optional<TimeOfDay> time; ///< UTC; nothing where no sentence has one
    std::optional<QDate> date;     ///< UTC; nothing before the first sentence with a date
    /// Latitude, longitude, height and undulation, quality and satellites of one sentence.
    Message position;
    bool hasHeights = false;            ///< whether `position` is of GGA or GNS
    bool isVoid = false;                ///< whether RMC says so
    std::optional<Decimal> sdLatitude;  ///< standard deviation by GST [m]
    std::optional<Decimal> sdLongitude; ///< standard deviation by GST [m]
    std::optional<Decimal> sdHeight;    ///< standard deviation by GST [m]
    QByteArray sentences;               ///< those that it is made of, as they came, a line each
    qint64 line = 0;                    ///< in the input, of the first of them, from 1

    /// Why there is no position; no failure where there is one.
    EpochFailure failure() const;

    /// The height above the ellipsoid [m]: that above mean sea level and the undulation. 0 where
    /// one of them is not said.
    double ellipsoidalHeight() const;

    /// "2024-02-29T12:34:56.20Z"; empty without a date or a time.
    QByteArray utc() const;

    /// Nothing where `utc` is empty, and where the table of leap seconds has no such time.
    std::optional<GpsTime> gps() const;
};

} // namespace KelStd::nmea
