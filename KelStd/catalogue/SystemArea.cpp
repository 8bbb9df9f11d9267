#include <KelStd/catalogue/SystemArea.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

constexpr double fullTurn = 360.0;
constexpr double radians = 3.14159265358979323846 / 180.0;

/// How far east of `west` a longitude is, 0 to 360 [deg].
double eastOf(double west, double longitude)
{
    const double turned = std::fmod(longitude - west, fullTurn);
    return turned < 0.0 ? turned + fullTurn : turned;
}

/// Whether a span of longitudes begins within another one, or the other way round.
bool spansMeet(const SystemArea &a, const SystemArea &b)
{
    return eastOf(a.west, b.west) <= a.width() || eastOf(b.west, a.west) <= b.width();
}

/// How many degrees of longitude two spans share. They may do so at both ends.
double sharedWidth(const SystemArea &a, const SystemArea &b)
{
    const double start = eastOf(a.west, b.west);
    const double first = std::max(0.0, std::min(a.width(), start + b.width()) - start);
    // The part of b that is a turn further on, and so begins before a.
    const double second = std::max(0.0, std::min(a.width(), start + b.width() - fullTurn));
    return std::min({first + second, a.width(), b.width()});
}

/// The share of the sphere between two latitudes, but for a factor.
double belt(double south, double north)
{
    return std::sin(north * radians) - std::sin(south * radians);
}

} // namespace

double SystemArea::width() const
{
    if (east - west >= fullTurn)
        return fullTurn;
    return west <= east ? east - west : east - west + fullTurn;
}

GroundPoint SystemArea::centre() const
{
    const double middle = west + width() / 2.0;
    return {middle > 180.0 ? middle - fullTurn : middle, (south + north) / 2.0};
}

bool SystemArea::contains(const GroundPoint &point) const
{
    return isKnown && point.latitude >= south && point.latitude <= north
           && eastOf(west, point.longitude) <= width();
}

bool SystemArea::intersects(const SystemArea &other) const
{
    return isKnown && other.isKnown && south <= other.north && other.south <= north
           && spansMeet(*this, other);
}

double SystemArea::coveredBy(const SystemArea &other) const
{
    if (!isKnown || !other.isKnown)
        return 1.0;
    if (!intersects(other))
        return 0.0;
    const double whole = width() * belt(south, north);
    if (!(whole > 0.0))
        return 1.0;
    const double shared = sharedWidth(*this, other)
                          * belt(std::max(south, other.south), std::min(north, other.north));
    return std::clamp(shared / whole, 0.0, 1.0);
}

} // namespace KelStd::catalogue
