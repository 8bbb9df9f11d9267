#pragma once

#include <KelStd/display/stShowConfig.h>

#include <algorithm>
#include <iterator>

namespace KelStd {

/// Where the display configuration keeps the settings of a kind of value. A null unit means the
/// value's own unit, a null format `Format_None`, a null precision no decimals.
struct ShowConfigRow
{
    EValueType type;
    EUnit stShowConfig::*unit;
    EFormat stShowConfig::*format;
    unsigned char stShowConfig::*precision;
    bool stShowConfig::*keepZero;

    EUnit unitIn(const stShowConfig &config, EUnit own) const
    {
        return unit != nullptr ? config.*unit : own;
    }
    EFormat formatIn(const stShowConfig &config) const
    {
        return format != nullptr ? config.*format : Format_None;
    }
    unsigned char precisionIn(const stShowConfig &config) const
    {
        return precision != nullptr ? config.*precision : static_cast<unsigned char>(0);
    }
    bool erasesTailZero(const stShowConfig &config) const
    {
        return keepZero != nullptr && !(config.*keepZero);
    }
};

inline constexpr ShowConfigRow showConfigRows[] = {
    {ValueType_Int32, nullptr, nullptr, nullptr, nullptr},
    {ValueType_Int64, nullptr, nullptr, nullptr, nullptr},
    {ValueType_Double, nullptr, nullptr, &stShowConfig::doublePrecision,
     &stShowConfig::doubleKeepZero},
    {ValueType_Distance, &stShowConfig::distanceUnit, nullptr, &stShowConfig::distancePrecision,
     &stShowConfig::distanceKeepZero},
    {ValueType_Height, &stShowConfig::heightUnit, nullptr, &stShowConfig::heightPrecision,
     &stShowConfig::heightKeepZero},
    {ValueType_Angle, nullptr, &stShowConfig::angleFormat, &stShowConfig::anglePrecision,
     &stShowConfig::angleKeepZero},
    {ValueType_Pressure, &stShowConfig::pressureUnit, nullptr, &stShowConfig::pressurePrecision,
     &stShowConfig::pressureKeepZero},
    {ValueType_Temprature, &stShowConfig::tempratureUnit, nullptr,
     &stShowConfig::tempraturePrecision, &stShowConfig::tempratureKeepZero},
    {ValueType_Longitude, nullptr, &stShowConfig::latLongFormat, &stShowConfig::latLongPrecision,
     &stShowConfig::latLongKeepZero},
    {ValueType_Latitude, nullptr, &stShowConfig::latLongFormat, &stShowConfig::latLongPrecision,
     &stShowConfig::latLongKeepZero},
    {ValueType_EarthHeight, &stShowConfig::earthHeightUnit, nullptr,
     &stShowConfig::earthHeightPrecision, &stShowConfig::earthHeightKeepZero},
    {ValueType_X, &stShowConfig::xyUnit, nullptr, &stShowConfig::xyPrecision,
     &stShowConfig::xyKeepZero},
    {ValueType_Y, &stShowConfig::xyUnit, nullptr, &stShowConfig::xyPrecision,
     &stShowConfig::xyKeepZero},
    {ValueType_ElevationHeight, &stShowConfig::elevationHeightUnit, nullptr,
     &stShowConfig::elevationHeightPrecision, &stShowConfig::elevationHeightKeepZero},
};

/// The row of `type`, or null for a kind of value without display settings.
inline const ShowConfigRow *findShowConfigRow(EValueType type)
{
    const auto row = std::find_if(std::begin(showConfigRows), std::end(showConfigRows),
                                  [type](const ShowConfigRow &r) { return r.type == type; });
    return row != std::end(showConfigRows) ? row : nullptr;
}

} // namespace KelStd
