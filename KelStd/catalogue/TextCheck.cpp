#include <KelStd/catalogue/TextCheck.h>

#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/proj/Transformation.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double radians = 3.14159265358979323846 / 180.0;
constexpr int placesPerSide = 4;

/// What a text makes of a position of its datum.
class TextPlane
{
public:
    TextPlane(const ProjSession &session, const QByteArray &text) : m_functions(session.functions())
    {
        ProjObject system = session.fromText(text);
        if (system == nullptr)
            return;
        if (session.typeOf(system.get()) == PJ_TYPE_BOUND_CRS)
            system.reset(m_functions.proj_get_source_crs(session.context(), system.get()));
        const ProjObject geodetic = session.geodeticOf(system.get());
        if (geodetic == nullptr)
            return;
        m_primeMeridian = primeMeridianOf(session, geodetic.get());
        m_geodeticAxes = session.axesOf(geodetic.get());
        m_axes = session.axesOf(system.get());
        const ObjectList ways = session.operations(geodetic.get(), system.get());
        const ProjObject way = session.countOf(ways) > 0 ? session.elementOf(ways, 0) : nullptr;
        if (way != nullptr && m_geodeticAxes.size() >= 2 && m_axes.size() >= 2)
            m_operation = session.fromText(session.pipelineOf(way.get()));
    }

    bool isReady() const { return m_operation != nullptr; }

    /// The plane's first and second number [m] of a place, whose longitude is that from Greenwich.
    bool project(const GroundPoint &place, double &first, double &second) const
    {
        PJ_COORD at{{0.0, 0.0, 0.0, HUGE_VAL}};
        for (std::size_t i = 0; i < 2; ++i) {
            const Axis &axis = m_geodeticAxes[i];
            const bool isLongitude =
                axis.direction == QLatin1String("east") || axis.direction == QLatin1String("west");
            const bool isOpposite =
                axis.direction == QLatin1String("west") || axis.direction == QLatin1String("south");
            const double angle = isLongitude
                                     ? std::remainder(place.longitude - m_primeMeridian, 360.0)
                                     : place.latitude;
            at.v[i] = (isOpposite ? -angle : angle) * radians / axis.factor;
        }
        at = m_functions.proj_trans(m_operation.get(), PJ_FWD, at);
        first = at.v[0] * m_axes[0].factor;
        second = at.v[1] * m_axes[1].factor;
        return proj::isResult(at.v[0]) && proj::isResult(at.v[1]);
    }

private:
    const proj::ProjFunctions &m_functions;
    ProjObject m_operation;
    std::vector<Axis> m_geodeticAxes;
    std::vector<Axis> m_axes;
    double m_primeMeridian = 0.0;
};

/// What the conversions of a `Coord` make of a position of its datum.
class OwnPlane
{
public:
    OwnPlane(const ProjSession &session, const Coord &coord, const calibration::SiteTransform &site)
        : m_functions(session.functions()), m_site(site),
          m_directions(planeDirections(session, coord))
    {
        const ChainDefinitions definitions(&coord);
        proj::ProjMessages ignored;
        m_operation = proj::createConversion(session.context(), definitions.localGeographic,
                                             definitions.localProjected, ignored);
    }

    bool isReady() const { return m_operation != nullptr; }

    /// Easting and northing [m], in the system's directions. Its longitudes and latitudes count in
    /// these, too.
    bool project(const GroundPoint &place, double &east, double &north) const
    {
        Pos plane;
        if (!proj::transform(m_functions, m_operation.get(),
                             Pos::fromLongLatH(m_directions.east * place.longitude,
                                               m_directions.north * place.latitude, 0.0),
                             plane))
            return false;
        const stENU at = m_site.toSite(plane.getENU());
        east = at.e * m_directions.metres;
        north = at.n * m_directions.metres;
        return true;
    }

private:
    const proj::ProjFunctions &m_functions;
    const calibration::SiteTransform &m_site;
    PlaneDirections m_directions;
    ProjObject m_operation;
};

/// Places about where the projection has its false easting and northing.
std::vector<GroundPoint> placesAboutOrigin(const ProjSession &session, const Coord &coord)
{
    constexpr double reach = 3.0; // [deg]
    constexpr double edge = 80.0;
    const ChainDefinitions definitions(&coord);
    std::vector<ProjStep> steps = stepsOf(definitions.localProjected.toUtf8());
    for (ProjStep &step : steps) {
        auto &all = step.parameters;
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [](const auto &each) {
                                     return each.first == "axis" || each.first == "units"
                                            || each.first == "towgs84" || each.first == "nadgrids";
                                 }),
                  all.end());
    }
    const ProjObject projection = session.fromText(pipelineText(steps));
    if (projection == nullptr || steps.size() != 1)
        return {};
    PJ_COORD at{{steps.front().number("x_0").value_or(0.0),
                 steps.front().number("y_0").value_or(0.0), 0.0, HUGE_VAL}};
    at = session.functions().proj_trans(projection.get(), PJ_INV, at);
    if (!proj::isResult(at.v[0]) || !proj::isResult(at.v[1]))
        return {};
    const double longitude = at.v[0] / radians;
    const double latitude = std::clamp(at.v[1] / radians, -edge, edge);
    SystemArea area;
    area.isKnown = true;
    area.west = std::remainder(longitude - reach, 360.0);
    area.east = std::remainder(longitude + reach, 360.0);
    area.south = latitude - reach;
    area.north = latitude + reach;
    return placesIn(area, placesPerSide);
}

} // namespace

TextCheck checkText(const ProjSession &session, const QByteArray &text, const Coord &coord,
                    const calibration::SiteTransform &site, const SystemArea &area)
{
    TextCheck check;
    const TextPlane byText(session, text);
    const OwnPlane own(session, coord, site);
    check.isRead = byText.isReady() && own.isReady();
    if (!check.isRead)
        return check;
    double straight = 0.0;
    double swapped = 0.0;
    for (const GroundPoint &place :
         area.isKnown ? placesIn(area, placesPerSide) : placesAboutOrigin(session, coord)) {
        double first = 0.0;
        double second = 0.0;
        double east = 0.0;
        double north = 0.0;
        if (!byText.project(place, first, second) || !own.project(place, east, north))
            continue;
        straight = std::max(straight, std::hypot(first - east, second - north));
        swapped = std::max(swapped, std::hypot(first - north, second - east));
        ++check.compared;
    }
    check.difference = std::min(straight, swapped);
    return check;
}

} // namespace KelStd::catalogue
