#include <KelStd/nmea/ReceiverEpoch.h>

namespace KelStd::nmea {

EpochFailure ReceiverEpoch::failure() const
{
    if (hasHeights && position.quality.value_or(0) == 0)
        return {EpochFault::NoFix, QStringLiteral("the receiver has no fix (quality 0)")};
    if (isVoid)
        return {EpochFault::Void, QStringLiteral("the receiver has no fix (RMC says void)")};
    if (!position.hasPosition())
        return {EpochFault::NoPosition, QStringLiteral("it has no latitude and longitude")};
    if (!hasHeights)
        return {EpochFault::NoHeight,
                QStringLiteral("it has no height: RMC alone, without GGA or GNS")};
    if (!position.height)
        return {EpochFault::NoHeight, QStringLiteral("it has no height")};
    if (!position.undulation) {
        return {EpochFault::NoUndulation,
                QStringLiteral("it has no geoid separation: its height is above mean sea level, "
                               "not above the ellipsoid")};
    }
    return {};
}

double ReceiverEpoch::ellipsoidalHeight() const
{
    return position.height && position.undulation
               ? position.height->value + position.undulation->value
               : 0;
}

QByteArray ReceiverEpoch::utc() const
{
    return date && time ? utcText(*date, *time) : QByteArray();
}

std::optional<GpsTime> ReceiverEpoch::gps() const
{
    return date && time ? gpsTime(*date, *time) : std::nullopt;
}

} // namespace KelStd::nmea
