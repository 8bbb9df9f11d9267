#include <KelStd/location/OneToOne.h>

namespace KelStd::one_to_one {

namespace {

double distance(const Pos &a, const Pos &b)
{
    return std::hypot(a.getENU().e - b.getENU().e, a.getENU().n - b.getENU().n);
}

} // namespace

bool isSamePlaceRoundTheEarth(const stLongLatH &given, const stLongLatH &back)
{
    constexpr double fullTurn = 360.0;
    constexpr double radians = 3.14159265358979323846 / 180.0;
    const double north = (given.latitude - back.latitude) * metresPerDegree;
    const double east = std::remainder(given.longitude - back.longitude, fullTurn) * metresPerDegree
                        * std::cos(given.latitude * radians);
    return std::hypot(north, east) <= tolerance;
}

bool isSamePointOfPlane(const Pos &given, const Pos &back, const Pos &local, const Project &project)
{
    const stLongLatH &place = local.getLongLatH();
    constexpr double step = 1e-5; // [deg], about a metre; its length in the plane gives the scale
    const double towardsEquator = place.latitude > 0.0 ? -step : step;
    Pos beside;
    if (!project(Pos::fromLongLatH(place.longitude, place.latitude + towardsEquator, place.height),
                 beside))
        return false;
    const double allowed = tolerance * distance(back, beside) / (step * metresPerDegree);
    if (distance(given, back) <= allowed)
        return true;

    // The meridian half a turn from the middle of a map is at both its ends. Where the way back
    // leads to the other end, a place a tenth of a millimetre beside it is at the end that was
    // given.
    constexpr double nudge = 1e-9; // [deg]
    for (const double turned : {-nudge, nudge}) {
        if (project(Pos::fromLongLatH(place.longitude + turned, place.latitude, place.height),
                    beside)
            && distance(given, beside) <= allowed)
            return true;
    }
    return false;
}

} // namespace KelStd::one_to_one
