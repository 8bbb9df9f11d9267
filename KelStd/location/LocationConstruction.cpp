#include <KelStd/coord/Coord.h>

#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/location/LocationSteps.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/ProjLib.h>
#include <KelStd/proj/TransformationResult.h>

namespace KelStd {

namespace {

/// The stages of one location, each with a transformation that is created for it alone.
class FreshStages
{
public:
    FreshStages(const Coord *coord, QString *error)
        : m_coord(coord), m_definitions(coord), m_error(error)
    {}

    bool geographicToCartesian(const Pos &from, Pos &to) const
    {
        return convert(m_definitions.geographic, m_definitions.cartesian,
                       ProjLib::WGS84LatLongH_to_WGS84XYZ, from, to);
    }

    bool cartesianToGeographic(const Pos &from, Pos &to) const
    {
        return convert(m_definitions.cartesian, m_definitions.geographic,
                       ProjLib::WGS84XYZ_to_WGS84LatLongH, from, to);
    }

    bool cartesianToLocal(const Pos &from, Pos &to) const
    {
        return convert(m_definitions.cartesian, m_definitions.localGeographic,
                       ProjLib::WGS84XYZ_to_LocalLatLongH, from, to);
    }

    bool localToCartesian(const Pos &from, Pos &to) const
    {
        return convert(m_definitions.localGeographic, m_definitions.cartesian,
                       ProjLib::LocalLatLongH_to_WGS84XYZ, from, to);
    }

    bool localToProjected(const Pos &from, Pos &to) const
    {
        return convert(m_definitions.localGeographic, m_definitions.localProjected,
                       ProjLib::LocalLatLongH_to_LocalNEH, from, to);
    }

    bool projectedToLocal(const Pos &from, Pos &to) const
    {
        return convert(m_definitions.localProjected, m_definitions.localGeographic,
                       ProjLib::LocalNEH_to_LocalLatLongH, from, to);
    }

    // These questions are asked by builders alone.
    bool isPosition(const Pos & /*wgs84*/) const { return true; }
    bool leadsBackToLocal(const Pos & /*local*/, const Pos & /*plane*/) const { return true; }
    bool leadsBackToPlane(const Pos & /*plane*/, const Pos & /*local*/) const { return true; }

    bool toGeoid(const Pos &wgs84, double &diff) const
    {
        return separation(&ProjLib::Calc_geoid_diff, wgs84, diff);
    }

    bool toEllipsoid(const Pos &wgs84, double &diff) const
    {
        return separation(&ProjLib::Calc_geoid_diff_inverse, wgs84, diff);
    }

    /// Where PROJ is not loaded the first stage says so.
    bool areDefined() const
    {
        const QString &problem = m_definitions.problem;
        if (problem.isEmpty() || !proj::LoadedProj::instance().isLoaded())
            return true;
        proj::logFailure(problem, LogType_Error);
        return proj::fail(m_error, problem);
    }

private:
    bool convert(const QString &source, const QString &target, ProjLib::EConvertType type,
                 const Pos &from, Pos &to) const
    {
        to = from;
        return ProjLib::ConvertPosList(source, target, to, type, m_error);
    }

    using Separation = bool (*)(double latitude, double longitude, double height,
                                const QString &gridFile, double &diff, QString *error);

    /// The host is asked for the model only here: where a conversion fails, it is not asked at all.
    bool separation(Separation calculate, const Pos &wgs84, double &diff) const
    {
        const QString gridFile = geoidGridFile(m_coord);
        const stLongLatH &point = wgs84.getLongLatH();
        return !gridFile.isEmpty()
               && calculate(point.latitude, point.longitude, point.height, gridFile, diff, m_error);
    }

    const Coord *const m_coord;
    const ChainDefinitions m_definitions;
    QString *const m_error;
};

using Steps = bool (*)(const FreshStages &, const Pos &, Location &);

/// `location` is written when all has succeeded.
bool makeLocation(Steps steps, const Pos &pos, Location &location, const Coord *coord,
                  QString *error)
{
    Location result;
    const FreshStages stages(coord, error);
    if (!stages.areDefined() || !steps(stages, pos, result))
        return false;
    location = result;
    return true;
}

} // namespace

bool Coord::MakeLocation_byWGS84XYZ(const Pos &pos, Location &location,
                                    const Coord * /*ignoredCoord*/, const Coord *coord,
                                    QString *error)
{
    return makeLocation(&steps::fromWgs84Cartesian, pos, location, coord, error);
}

bool Coord::MakeLocation_byWGS84LatLongH(const Pos &pos, Location &location,
                                         const Coord * /*ignoredCoord*/, const Coord *coord,
                                         QString *error)
{
    return makeLocation(&steps::fromWgs84Geographic, pos, location, coord, error);
}

bool Coord::MakeLocation_byLocalLatLongH(const Pos &pos, Location &location,
                                         const Coord * /*ignoredCoord*/, const Coord *coord,
                                         QString *error)
{
    return makeLocation(&steps::fromLocalGeographic, pos, location, coord, error);
}

bool Coord::MakeLocation_byLocalNEH(const Pos &pos, Location &location,
                                    const Coord * /*ignoredCoord*/, const Coord *coord,
                                    QString *error)
{
    return makeLocation(&steps::fromLocalProjected, pos, location, coord, error);
}

} // namespace KelStd
