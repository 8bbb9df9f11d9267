#include <KelStd/catalogue/OwnCheck.h>

#include <KelStd/catalogue/MethodDifference.h>
#include <KelStd/catalogue/PlaneDirection.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/proj/Transformation.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double radians = 3.14159265358979323846 / 180.0;
constexpr double metresPerDegree = 111'320.0; ///< of latitude, to a thousandth

/// The conversions of a `Coord`, one for each step of a position's way.
class Chain
{
public:
    Chain(const ProjSession &session, const Coord &coord) : m_functions(session.functions())
    {
        const ChainDefinitions definitions(&coord);
        proj::ProjMessages ignored;
        const auto create = [&](const QString &from, const QString &to) {
            return proj::createConversion(session.context(), from, to, ignored);
        };
        m_toCartesian = create(definitions.geographic, definitions.cartesian);
        m_toLocal = create(definitions.cartesian, definitions.localGeographic);
        m_toPlane = create(definitions.localGeographic, definitions.localProjected);
        m_fromPlane = create(definitions.localProjected, definitions.localGeographic);
        m_fromLocal = create(definitions.localGeographic, definitions.cartesian);
        m_fromCartesian = create(definitions.cartesian, definitions.geographic);
    }

    bool isReady() const
    {
        return m_toCartesian && m_toLocal && m_toPlane && m_fromPlane && m_fromLocal
               && m_fromCartesian;
    }

    bool project(const GroundPoint &place, Pos &plane) const
    {
        Pos pos = Pos::fromLongLatH(place.longitude, place.latitude, 0.0);
        return take(m_toCartesian, pos) && take(m_toLocal, pos)
               && proj::transform(m_functions, m_toPlane.get(), pos, plane);
    }

    bool unproject(const Pos &plane, GroundPoint &place) const
    {
        Pos pos = plane;
        if (!take(m_fromPlane, pos) || !take(m_fromLocal, pos) || !take(m_fromCartesian, pos))
            return false;
        place = {pos.getLongLatH().longitude, pos.getLongLatH().latitude};
        return true;
    }

private:
    bool take(const ProjObject &conversion, Pos &pos) const
    {
        return proj::transform(m_functions, conversion.get(), pos, pos);
    }

    const proj::ProjFunctions &m_functions;
    ProjObject m_toCartesian, m_toLocal, m_toPlane, m_fromPlane, m_fromLocal, m_fromCartesian;
};

/// PROJ's own operations between the same ends.
class Own
{
public:
    Own(const ProjSession &session, const std::vector<ProjStep> &shift,
        const std::vector<ProjStep> &projection)
        : m_functions(session.functions()), m_shift(session.fromText(pipelineText(shift))),
          m_projection(session.fromText(pipelineText(projection)))
    {}

    bool isReady() const { return m_shift && m_projection; }

    bool project(const GroundPoint &place, Pos &plane) const
    {
        PJ_COORD at{{place.longitude * radians, place.latitude * radians, 0.0, HUGE_VAL}};
        at = m_functions.proj_trans(m_shift.get(), PJ_INV, at);
        return isAll(at) && take(m_projection, PJ_FWD, at, plane);
    }

    bool unproject(const Pos &plane, GroundPoint &place) const
    {
        const stXYZ &given = plane.getXYZ();
        PJ_COORD at{{given.x, given.y, 0.0, HUGE_VAL}};
        at = m_functions.proj_trans(m_projection.get(), PJ_INV, at);
        Pos result;
        if (!isAll(at) || !take(m_shift, PJ_FWD, at, result))
            return false;
        place = {result.getXYZ().x / radians, result.getXYZ().y / radians};
        return true;
    }

private:
    static bool isAll(const PJ_COORD &at)
    {
        return proj::isResult(at.v[0]) && proj::isResult(at.v[1]);
    }

    bool take(const ProjObject &object, PJ_DIRECTION direction, PJ_COORD at, Pos &result) const
    {
        at = m_functions.proj_trans(object.get(), direction, at);
        result.setXYZ(at.v[0], at.v[1], 0.0);
        return isAll(at);
    }

    const proj::ProjFunctions &m_functions;
    ProjObject m_shift, m_projection;
};

double planeDistance(const Pos &a, const Pos &b)
{
    return std::hypot(a.getENU().e - b.getENU().e, a.getENU().n - b.getENU().n);
}

double groundDistance(const GroundPoint &a, const GroundPoint &b)
{
    const double east = std::remainder(a.longitude - b.longitude, 360.0)
                        * std::cos(a.latitude * radians) * metresPerDegree;
    return std::hypot((a.latitude - b.latitude) * metresPerDegree, east);
}

void note(OwnCheck &check, double difference, const GroundPoint &place)
{
    if (difference <= check.difference && check.compared > 0)
        return;
    check.difference = difference;
    check.place =
        QStringLiteral("%1, %2").arg(place.longitude, 0, 'f', 4).arg(place.latitude, 0, 'f', 4);
}

} // namespace

std::vector<GroundPoint> placesIn(const SystemArea &area, int perSide)
{
    std::vector<GroundPoint> places;
    const double width = area.width();
    const double height = area.north - area.south;
    for (int row = 0; row < perSide; ++row) {
        for (int column = 0; column < perSide; ++column) {
            const double east = area.west + width * (column + 0.5) / perSide;
            places.push_back(
                {std::remainder(east, 360.0), area.south + height * (row + 0.5) / perSide});
        }
    }
    return places;
}

std::vector<ProjStep> projectionSteps(const ProjSession &session, const PJ *projected)
{
    const ProjObject conversion(
        session.functions().proj_crs_get_coordoperation(session.context(), projected));
    std::vector<ProjStep> steps =
        conversion == nullptr ? std::vector<ProjStep>()
                              : withoutBookkeeping(stepsOf(session.pipelineOf(conversion.get())));
    const double turn = missingTurn(session, projected);
    // The easting comes first, whatever the order of the system's axes is.
    for (ProjStep &step : steps) {
        for (auto &parameter : step.parameters) {
            if (parameter.first == "lon_0" && turn != 0.0)
                parameter.second = QByteArray::number(parameter.second.toDouble() + turn, 'g', 17);
            if (parameter.first != "axis")
                continue;
            const int latitude = parameter.second.at(0) == 'n' || parameter.second.at(0) == 's';
            if (latitude != 0)
                std::swap(parameter.second.data()[0], parameter.second.data()[1]);
        }
    }
    if (!steps.empty()) {
        const std::vector<ProjStep> signs = signSteps(session, projected);
        steps.insert(steps.end(), signs.begin(), signs.end());
    }
    return steps;
}

OwnCheck ownCheck(const ProjSession &session, const Coord &coord,
                  const std::vector<ProjStep> &shift, const std::vector<ProjStep> &projection,
                  const std::vector<GroundPoint> &places, WayBack wayBack)
{
    OwnCheck check;
    const Chain chain(session, coord);
    const Own own(session, shift, projection);
    check.isReady = chain.isReady() && own.isReady();
    if (!check.isReady)
        return check;
    for (const GroundPoint &place : places) {
        Pos expected;
        if (!own.project(place, expected))
            continue;
        Pos plane;
        if (!chain.project(place, plane)) {
            ++check.missing;
            continue;
        }
        note(check, planeDistance(plane, expected), place);
        ++check.compared;
        GroundPoint expectedBack = place;
        if (wayBack == WayBack::OfWay)
            expected.setENU_U(plane.getENU().u); // the height that the way has led to
        else if (!own.unproject(expected, expectedBack))
            continue;
        GroundPoint back;
        if (chain.unproject(expected, back))
            note(check, groundDistance(back, expectedBack), place);
        else
            ++check.missing;
    }
    return check;
}

} // namespace KelStd::catalogue
