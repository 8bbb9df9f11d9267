#include <KelStd/location/ShortWayWhereChecked.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace KelStd {

namespace {

using C = FrameConversion;

// Where both are compared they differ by a fifth less than they may between these places.
constexpr double metres = 0.8e-6;
constexpr double degrees = 0.8e-11;

template <C conversion>
using Step = std::integral_constant<C, conversion>;

/// How far both ways may be apart in a component of a frame, in its unit.
struct Tolerance
{
    double first;
    double second;
    double third;
};

constexpr Tolerance ofGeographic = {degrees, degrees, metres};
constexpr Tolerance ofMetres = {metres, metres, metres};

bool isNear(const Pos &one, const Pos &other, const Tolerance &tolerance)
{
    const stXYZ &a = one.getXYZ();
    const stXYZ &b = other.getXYZ();
    return std::abs(a.x - b.x) <= tolerance.first && std::abs(a.y - b.y) <= tolerance.second
           && std::abs(a.z - b.z) <= tolerance.third;
}

/// Takes the position a step further, both ways. False where they differ; `isEnd`: neither has a
/// result.
template <C conversion>
bool agreeOn(DefinitionsWay &definitionsWay, ShortWay &shortWay, Pos &byDefinitions, Pos &byShort,
             const Tolerance &tolerance, bool &isEnd)
{
    if (isEnd)
        return true;
    const bool isConverted =
        definitionsWay.convert<conversion>(byDefinitions, byDefinitions, nullptr);
    if (shortWay.convert<conversion>(byShort, byShort, nullptr) != isConverted)
        return false;
    isEnd = !isConverted;
    return isEnd || isNear(byDefinitions, byShort, tolerance);
}

} // namespace

bool ShortWayWhereChecked::holdsAbout(const Pos &plane)
{
    constexpr double step = 3.0; // [deg]
    constexpr double edge = 80.0;
    Pos origin;
    if (!m_definitionsWay.convert<C::ProjectedToLocal>(plane, origin, nullptr))
        return false;
    const double longitude = origin.getLongLatH().longitude;
    const double latitude = std::clamp(origin.getLongLatH().latitude, -edge + step, edge - step);
    for (const double east : {-step, 0.0, step}) {
        for (const double north : {-step, 0.0, step}) {
            if (!holdsAtHeights(std::remainder(longitude + east, 2.0 * maxLongitude),
                                latitude + north))
                return false;
        }
    }
    return true;
}

void ShortWayWhereChecked::keepTo(double west, double south, double east, double north)
{
    for (std::size_t cell = 0; cell < m_cells.size(); ++cell) {
        const double longitude = westOf(cell % columns) + 0.5 * cellSize;
        const double latitude = southOf(cell / columns) + 0.5 * cellSize;
        if (longitude < west || longitude > east || latitude < south || latitude > north)
            m_cells[cell] = Verdict::Differ;
    }
}

bool ShortWayWhereChecked::holdsInCell(std::size_t row, std::size_t column)
{
    // Beside the edges, so that none is a pole or half a turn from the middle of the map.
    constexpr double inner = 0.001 * cellSize;
    const double west = westOf(column);
    const double south = southOf(row);
    for (const double east : {inner, cellSize - inner}) {
        for (const double north : {inner, cellSize - inner}) {
            if (!holdsAtHeights(west + east, south + north))
                return false;
        }
    }
    return holdsAtHeights(west + 0.5 * cellSize, south + 0.5 * cellSize);
}

bool ShortWayWhereChecked::holdsAtHeights(double longitude, double latitude)
{
    return holdsExactlyAt(Pos::fromLongLatH(longitude, latitude, minHeight))
           && holdsExactlyAt(Pos::fromLongLatH(longitude, latitude, maxHeight));
}

/// From WGS84 geographic through all frames, and from where that leads, by the definitions, back.
bool ShortWayWhereChecked::holdsExactlyAt(const Pos &wgs84)
{
    Pos one = wgs84;
    Pos other = wgs84;
    bool isEnd = false;
    const auto agree = [&](auto conversion, const Tolerance &tolerance) {
        return agreeOn<conversion()>(m_definitionsWay, m_shortWay, one, other, tolerance, isEnd);
    };
    if (!agree(Step<C::GeographicToCartesian>(), ofMetres)
        || !agree(Step<C::CartesianToLocal>(), ofGeographic)
        || !agree(Step<C::LocalToProjected>(), ofMetres))
        return false;
    other = one;
    return agree(Step<C::ProjectedToLocal>(), ofGeographic)
           && agree(Step<C::LocalToCartesian>(), ofMetres)
           && agree(Step<C::CartesianToGeographic>(), ofGeographic);
}

} // namespace KelStd
