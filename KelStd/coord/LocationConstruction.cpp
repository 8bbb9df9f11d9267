#include <KelStd/coord/Coord.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/ProjLib.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

namespace KelStd {

namespace {

/// The grid file of the geoid model that a system names; empty when it names none, or one that the
/// host does not have.
QString geoidGridFile(const Coord *coord)
{
    if (coord == nullptr || coord->geoidModel.modelFileName.isEmpty())
        return {};
    return AppConfig::getInstance()
        .module_resourceQuery()
        ->makeAndQuery_gnss_geoid_model_relativeFilepath(coord->geoidModel.modelFileName);
}

/// The conversions of one coordinate system: its four definitions, written once a call, and the
/// stages between them.
///
/// Geographic and projected frames always meet through the cartesian one. Going from WGS84
/// geographic to local geographic directly is not the same: the local definition is two-dimensional
/// to PROJ, and the height would pass unshifted.
class ConversionChain
{
public:
    ConversionChain(const Coord *coord, QString *error)
        : m_gridFile(geoidGridFile(coord)), m_error(error)
    {
        char geographic[proj::chainDefinitionSize] = {};
        char cartesian[proj::chainDefinitionSize] = {};
        char localGeographic[proj::chainDefinitionSize] = {};
        char localProjected[proj::chainDefinitionSize] = {};
        Coord::__MakeCoordStrings(nullptr, coord, geographic, cartesian, localGeographic,
                                  localProjected);
        m_geographic = QString::fromUtf8(geographic);
        m_cartesian = QString::fromUtf8(cartesian);
        m_localGeographic = QString::fromUtf8(localGeographic);
        m_localProjected = QString::fromUtf8(localProjected);
    }

    bool geographicToCartesian(const Pos &from, Pos &to) const
    {
        return convert(m_geographic, m_cartesian, ProjLib::WGS84LatLongH_to_WGS84XYZ, from, to);
    }

    bool cartesianToGeographic(const Pos &from, Pos &to) const
    {
        return convert(m_cartesian, m_geographic, ProjLib::WGS84XYZ_to_WGS84LatLongH, from, to);
    }

    bool cartesianToLocal(const Pos &from, Pos &to) const
    {
        return convert(m_cartesian, m_localGeographic, ProjLib::WGS84XYZ_to_LocalLatLongH, from,
                       to);
    }

    bool localToCartesian(const Pos &from, Pos &to) const
    {
        return convert(m_localGeographic, m_cartesian, ProjLib::LocalLatLongH_to_WGS84XYZ, from,
                       to);
    }

    bool localToProjected(const Pos &from, Pos &to) const
    {
        return convert(m_localGeographic, m_localProjected, ProjLib::LocalLatLongH_to_LocalNEH,
                       from, to);
    }

    bool projectedToLocal(const Pos &from, Pos &to) const
    {
        return convert(m_localProjected, m_localGeographic, ProjLib::LocalNEH_to_LocalLatLongH,
                       from, to);
    }

    /// Makes the projected height one above the geoid. Where there is no model, or it has nothing
    /// for the point, it stays the local ellipsoidal height: that is no failure, though the
    /// caller's `error` may then hold a text.
    void referToGeoid(Location &location) const
    {
        const stLongLatH &point = location.wgs84LLH.getLongLatH();
        double diff = 0.0;
        if (m_gridFile.isEmpty()
            || !ProjLib::Calc_geoid_diff(point.latitude, point.longitude, point.height, m_gridFile,
                                         diff, m_error))
            return;
        location.localNEH.setENU_U(point.height + diff);
    }

    /// What to add to a height above the geoid to get the WGS84 ellipsoidal one, at the point of
    /// `estimate` [deg, m]. False where the geoid is not known.
    bool ellipsoidAboveGeoid(const Pos &estimate, double &diff) const
    {
        const stLongLatH &point = estimate.getLongLatH();
        return !m_gridFile.isEmpty()
               && ProjLib::Calc_geoid_diff_inverse(point.latitude, point.longitude, point.height,
                                                   m_gridFile, diff, m_error);
    }

    /// Gives the point the WGS84 ellipsoidal `height` [m] and finds its other frames anew; the
    /// projected one was given and stays.
    bool placeAbove(Location &location, double height) const
    {
        location.wgs84LLH.setLLH_H(height);
        Pos projected; // converted to see that it can be
        return geographicToCartesian(location.wgs84LLH, location.wgs84XYZ)
               && cartesianToLocal(location.wgs84XYZ, location.localLLH)
               && localToProjected(location.localLLH, projected);
    }

private:
    bool convert(const QString &source, const QString &target, ProjLib::EConvertType type,
                 const Pos &from, Pos &to) const
    {
        to = from;
        return ProjLib::ConvertPosList(source, target, to, type, m_error);
    }

    const QString m_gridFile; ///< found before the scope begins: the host sees its own directory
    const proj::WorkingDirectoryScope m_scope; ///< one for all stages
    QString m_geographic;
    QString m_cartesian;
    QString m_localGeographic;
    QString m_localProjected;
    QString *m_error;
};

} // namespace

bool Coord::MakeLocation_byWGS84XYZ(const Pos &pos, Location &location,
                                    const Coord * /*ignoredCoord*/, const Coord *coord,
                                    QString *error)
{
    const ConversionChain chain(coord, error);
    Location result;
    result.wgs84XYZ = pos;
    if (!chain.cartesianToGeographic(pos, result.wgs84LLH)
        || !chain.cartesianToLocal(pos, result.localLLH)
        || !chain.localToProjected(result.localLLH, result.localNEH))
        return false;
    chain.referToGeoid(result);
    location = result;
    return true;
}

bool Coord::MakeLocation_byWGS84LatLongH(const Pos &pos, Location &location,
                                         const Coord * /*ignoredCoord*/, const Coord *coord,
                                         QString *error)
{
    const ConversionChain chain(coord, error);
    Location result;
    result.wgs84LLH = pos;
    if (!chain.geographicToCartesian(pos, result.wgs84XYZ)
        || !chain.cartesianToLocal(result.wgs84XYZ, result.localLLH)
        || !chain.localToProjected(result.localLLH, result.localNEH))
        return false;
    chain.referToGeoid(result);
    location = result;
    return true;
}

bool Coord::MakeLocation_byLocalLatLongH(const Pos &pos, Location &location,
                                         const Coord * /*ignoredCoord*/, const Coord *coord,
                                         QString *error)
{
    const ConversionChain chain(coord, error);
    Location result;
    result.localLLH = pos;
    if (!chain.localToCartesian(pos, result.wgs84XYZ)
        || !chain.cartesianToGeographic(result.wgs84XYZ, result.wgs84LLH)
        || !chain.localToProjected(pos, result.localNEH))
        return false;
    chain.referToGeoid(result);
    location = result;
    return true;
}

bool Coord::MakeLocation_byLocalNEH(const Pos &pos, Location &location,
                                    const Coord * /*ignoredCoord*/, const Coord *coord,
                                    QString *error)
{
    const ConversionChain chain(coord, error);
    Location result;
    result.localNEH = pos;
    if (!chain.projectedToLocal(pos, result.localLLH)
        || !chain.localToCartesian(result.localLLH, result.wgs84XYZ)
        || !chain.cartesianToGeographic(result.wgs84XYZ, result.wgs84LLH))
        return false;
    // So far the given height was taken as ellipsoidal. That moves the point by some millimetres
    // at most, along which the geoid does not change: its separation there is the right one.
    double diff = 0.0;
    if (chain.ellipsoidAboveGeoid(result.wgs84LLH, diff)
        && !chain.placeAbove(result, pos.getENU().u + diff))
        return false;
    location = result;
    return true;
}

} // namespace KelStd
