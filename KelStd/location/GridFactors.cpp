#include <KelStd/location/GridFactors.h>

#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/location/DefinitionParameters.h>
#include <KelStd/proj/PreparedTransformations.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace KelStd {

namespace {

using definition::Parameter;
using definition::Parameters;

constexpr double pi = 3.14159265358979323846;
constexpr double degree = pi / 180.0; // [rad]

bool isAmong(const char *const *begin, const char *const *end, const QString &key)
{
    return std::any_of(begin, end, [&](const char *each) { return key == QLatin1String(each); });
}

/// What gives an ellipsoid its shape, for PROJ.
QString shapeOf(const Parameters &parameters)
{
    constexpr const char *keys[] = {"datum", "ellps", "a",   "b",       "rf",
                                    "f",     "e",     "es",  "R",       "R_A",
                                    "R_V",   "R_a",   "R_g", "R_lat_a", "R_lat_g"};
    QString text;
    for (const Parameter &each : parameters) {
        if (isAmong(std::begin(keys), std::end(keys), each.key))
            text += each.text();
    }
    return text;
}

/// The projection without what leads to it, nor to another datum or unit behind it: PROJ's factors
/// know nothing of these, and files need not be read for them. Neither does the flag "czech", which
/// turns Krovak's axes, count beside an axis word in a definition.
QString projectionOf(const Parameters &projected)
{
    constexpr const char *keys[] = {"towgs84", "nadgrids", "geoidgrids", "axis",
                                    "units",   "pm",       "czech"};
    QString text;
    for (const Parameter &each : projected) {
        if (!isAmong(std::begin(keys), std::end(keys), each.key))
            text += each.text();
    }
    return text;
}

/// Its meridian, as what takes a longitude from Greenwich to one from there; empty for Greenwich.
QString meridianOf(const Parameters &projected)
{
    const QString meridian = definition::valueOf(projected, "pm");
    return meridian.isEmpty() ? QString()
                              : QStringLiteral("+proj=longlat +ellps=GRS80 +pm=") + meridian;
}

/// -1 where the axis counts against east or north, otherwise 1.
struct AxisSigns
{
    double east;
    double north;

    static AxisSigns of(const Parameters &local)
    {
        const QString axes = definition::valueOf(local, "axis");
        return {axes.contains(QLatin1Char('w')) ? -1.0 : 1.0,
                axes.contains(QLatin1Char('s')) ? -1.0 : 1.0};
    }
};

/// Half-axes [m].
struct Shape
{
    double a = 0.0;
    double b = 0.0;

    /// sqrt(M N) [m] at a latitude [rad] of an ellipsoid of revolution (Torge and Mueller, Geodesy,
    /// 4.1.3): b / (1 - e^2 sin^2).
    double gaussianRadius(double latitude) const
    {
        const double sine = std::sin(latitude);
        const double squaredEccentricity = (a - b) * (a + b) / (a * a);
        return b / (1.0 - squaredEccentricity * sine * sine);
    }
};

/// Whether meridian and parallel have the same scale and cross at a right angle. PROJ gives that
/// angle, too, but by an arc sine about 1, which has half of the digits only.
bool isConformal(const PJ_FACTORS &factors, double latitude)
{
    // PROJ's differences over 1e-5 lose digits where meridians come together.
    const double cosine = std::max(std::cos(latitude), 1e-3);
    const double tolerance = 1e-8 + 2e-10 / (cosine * cosine);
    const double scale = factors.parallel_scale;
    const double alongEach = factors.dx_dlam * factors.dx_dphi + factors.dy_dlam * factors.dy_dphi;
    const double lengths =
        std::hypot(factors.dx_dlam, factors.dy_dlam) * std::hypot(factors.dx_dphi, factors.dy_dphi);
    return std::abs(factors.meridional_scale - scale) <= tolerance * scale
           && std::abs(alongEach) <= tolerance * lengths;
}

} // namespace

/// PROJ's operations, and what is known of the system by them.
class GridFactors::Operations
{
public:
    explicit Operations(const ChainDefinitions &chain)
        : Operations(chain, definition::parametersOf(chain.localGeographic),
                     definition::parametersOf(chain.localProjected))
    {}

    Values at(const Location &location)
    {
        Values values;
        if (m_generation != m_prepared.generation() || !m_isShapeKnown)
            learnShape();
        const double latitude = location.get_Local_LLH_Lat();
        if (m_isShapeKnown) {
            const double radius = m_shape.gaussianRadius(latitude * degree);
            const double distance = radius + location.get_Local_LLH_Height();
            if (distance > 0.0)
                values.elevationFactor = radius / distance;
        }
        takePlane(location, values);
        if (values.pointScale && values.elevationFactor)
            values.combinedFactor = *values.pointScale * *values.elevationFactor;
        return values;
    }

private:
    using Index = proj::PreparedTransformations::Index;

    Operations(const ChainDefinitions &chain, const Parameters &local, const Parameters &projected)
        : m_cartesian(m_prepared.addOperation(QLatin1String("+proj=cart") + shapeOf(local))),
          m_projection(m_prepared.addOperation(projectionOf(projected))),
          m_meridian(m_prepared.addOperation(meridianOf(projected))),
          m_plane(m_prepared.addConversion(chain.localGeographic, chain.localProjected)),
          m_signs(AxisSigns::of(local)), m_hasMeridian(!meridianOf(projected).isEmpty()),
          m_hasPlane(definition::isProjection(definition::valueOf(projected, "proj")))
    {}

    void learnShape()
    {
        m_generation = m_prepared.generation();
        m_areAgreed = false;
        PJ_COORD equator{{0.0, 0.0, 0.0, 0.0}};
        PJ_COORD pole{{0.0, pi / 2.0, 0.0, 0.0}};
        m_isShapeKnown = m_prepared.apply(m_cartesian, PJ_FWD, equator)
                         && m_prepared.apply(m_cartesian, PJ_FWD, pole);
        m_shape = {equator.xyz.x, pole.xyz.z};
        m_isShapeKnown = m_isShapeKnown && m_shape.a > 0.0 && m_shape.b > 0.0;
    }

    void takePlane(const Location &location, Values &values)
    {
        if (!m_hasPlane) {
            values.missing = Missing::NoPlane;
            return;
        }
        PJ_COORD place{};
        PJ_FACTORS factors{};
        if (!m_isShapeKnown || !areOfThePlane(location.localLLH)
            || !factorsAt(location.localLLH, place, factors)) {
            values.missing = Missing::Unknown;
            return;
        }
        if (isConformal(factors, place.lp.phi))
            values.pointScale = factors.parallel_scale;
        else
            values.missing = Missing::NotConformal;

        constexpr double poleDistance = 1e-12; // [rad], some micrometres
        if (std::abs(place.lp.phi) < pi / 2.0 - poleDistance) {
            values.convergence = factors.meridian_convergence / degree;
        } else if (values.pointScale) {
            values.missing = Missing::Pole;
        }
    }

    /// Also gives the place to which they belong [rad], from the projection's meridian.
    bool factorsAt(const Pos &local, PJ_COORD &place, PJ_FACTORS &factors)
    {
        const stLongLatH &at = local.getLongLatH();
        place = PJ_COORD{
            {m_signs.east * at.longitude * degree, m_signs.north * at.latitude * degree, 0.0, 0.0}};
        if (m_hasMeridian) {
            PJ_COORD longitude{{place.lp.lam, 0.0, 0.0, 0.0}};
            if (!m_prepared.apply(m_meridian, PJ_FWD, longitude))
                return false;
            place.lp.lam = longitude.lp.lam;
        }
        return m_prepared.factors(m_projection, place, factors);
    }

    /// Whether the derivatives of which PROJ makes the factors are those of the conversion to the
    /// plane. Once they agreed, which ends the asking. They are compared beside a pole instead of
    /// at it, and, opposite of the central meridian, where a plane is cut, beside that.
    bool areOfThePlane(const Pos &local)
    {
        constexpr double aside = 0.01;        // [deg]
        constexpr double maxLatitude = 89.99; // [deg]
        const stLongLatH &at = local.getLongLatH();
        const double latitude = std::clamp(at.latitude, -maxLatitude, maxLatitude);
        for (const double east : {0.0, aside, -aside}) {
            m_areAgreed =
                m_areAgreed || agreeAt(Pos::fromLongLatH(at.longitude + east, latitude, 0.0));
        }
        return m_areAgreed;
    }

    bool agreeAt(const Pos &local)
    {
        constexpr double step = 1e-5; // [rad], 64 m
        constexpr double tolerance = 1e-6;
        PJ_COORD place{};
        PJ_FACTORS factors{};
        const auto alongMeridian = derivative(local, 0.0, step);
        const auto alongParallel = derivative(local, step, 0.0);
        if (!alongMeridian || !alongParallel || !factorsAt(local, place, factors))
            return false;
        const auto isNear = [&](double own, double ofUnitSphere) {
            return std::abs(own - m_shape.a * ofUnitSphere) <= tolerance * m_shape.a;
        };
        return isNear(alongMeridian->e, factors.dx_dphi)
               && isNear(alongMeridian->n, factors.dy_dphi)
               && isNear(alongParallel->e, factors.dx_dlam)
               && isNear(alongParallel->n, factors.dy_dlam);
    }

    /// Of the plane's coordinates, east and north, by an angle east or north [m/rad].
    std::optional<stENU> derivative(const Pos &place, double east, double north)
    {
        Pos ahead = moved(place, east, north);
        Pos behind = moved(place, -east, -north);
        if (!m_prepared.convert(m_plane, ahead, ahead, nullptr)
            || !m_prepared.convert(m_plane, behind, behind, nullptr))
            return std::nullopt;
        const double step = 2.0 * (east + north);
        const stENU &a = ahead.getENU();
        const stENU &b = behind.getENU();
        return stENU{m_signs.east * (a.e - b.e) / step, m_signs.north * (a.n - b.n) / step, 0.0};
    }

    Pos moved(const Pos &place, double east, double north) const
    {
        const stLongLatH &from = place.getLongLatH();
        return Pos::fromLongLatH(from.longitude + m_signs.east * east / degree,
                                 from.latitude + m_signs.north * north / degree, 0.0);
    }

    proj::PreparedTransformations m_prepared; // before the numbers that it gives out
    Index m_cartesian;
    Index m_projection;
    Index m_meridian;
    Index m_plane;
    AxisSigns m_signs;
    bool m_hasMeridian; ///< the projection's own, instead of Greenwich's
    bool m_hasPlane;

    Shape m_shape;
    bool m_isShapeKnown = false;
    bool m_areAgreed = false;
    int m_generation = 0;
};

GridFactors::GridFactors(const Coord &coord)
    : m_operations(std::make_unique<Operations>(ChainDefinitions(&coord)))
{}

GridFactors::~GridFactors() = default;
GridFactors::GridFactors(GridFactors &&other) noexcept = default;
GridFactors &GridFactors::operator=(GridFactors &&other) noexcept = default;

GridFactors::Values GridFactors::at(const Location &location)
{
    return m_operations->at(location);
}

} // namespace KelStd
