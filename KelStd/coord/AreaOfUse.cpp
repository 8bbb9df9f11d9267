#include <KelStd/coord/AreaOfUse.h>

#include <cmath>

namespace KelStd {

namespace {

constexpr double fullCircle = 360.0;

/// False for NaN.
bool isWithin(double value, double limit)
{
    return std::abs(value) <= limit;
}

/// The longitude, -180 to 180 degrees.
double normalized(double longitude)
{
    return std::abs(longitude) <= 180.0 ? longitude : std::remainder(longitude, fullCircle);
}

} // namespace

bool AreaOfUse::isValid() const
{
    return isWithin(west, 180.0) && isWithin(east, 180.0) && isWithin(south, 90.0)
           && isWithin(north, 90.0) && south <= north;
}

bool AreaOfUse::contains(double longitude, double latitude) const
{
    if (!(latitude >= south && latitude <= north))
        return false;
    const double l = normalized(longitude);
    if (west <= east) {
        if (l >= west && l <= east)
            return true;
    } else if (l >= west || l <= east) {
        return true;
    }
    // The meridian of 180 degrees has two numbers, and a border may stand there under the other.
    return std::abs(l) == 180.0 && (std::abs(west) == 180.0 || std::abs(east) == 180.0);
}

double AreaOfUse::width() const
{
    return west <= east ? east - west : east - west + fullCircle;
}

bool AreaOfUse::operator==(const AreaOfUse &other) const
{
    return west == other.west && south == other.south && east == other.east && north == other.north;
}

} // namespace KelStd
