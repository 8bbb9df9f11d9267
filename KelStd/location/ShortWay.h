#pragma once

#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/location/FrameConversion.h>
#include <KelStd/proj/PreparedTransformations.h>

#include <optional>

namespace KelStd {

/// The PROJ operations of the short way, in which angles are radians.
struct ShortWayOperations
{
    QString wgs84;      ///< WGS84 geographic to cartesian
    QString datum;      ///< local geographic to WGS84 cartesian
    QString projection; ///< local geographic to projected

    /// Those of a system's definitions; nothing where they have something that the short way does
    /// not know, such as a grid.
    static std::optional<ShortWayOperations> of(const ChainDefinitions &chain);
};

/// The short way between the frames: the steps that are needed, and no other.
///
/// The definitions of a system have PROJ pass through an ellipsoid that nobody asked for: the
/// cartesian one is on GRS 80, so that each conversion that touches WGS84 cartesian coordinates
/// turns them into longitude, latitude and height on GRS 80 and back. That costs time, and, since
/// PROJ computes the geodetic latitude in one step, with an error that grows with the square of the
/// height (2.8e-7 m at 3,000 m), accuracy. Here WGS84 cartesian coordinates are the WGS84
/// ellipsoid's, shifted and rotated as they are to the local ellipsoid's.
///
/// Whether both ways agree is for `ShortWayWhereChecked` to find out.
class ShortWay
{
public:
    /// `prepared` outlives this.
    ShortWay(proj::PreparedTransformations &prepared, const ShortWayOperations &operations)
        : m_prepared(prepared), m_wgs84(prepared.addOperation(operations.wgs84)),
          m_datum(prepared.addOperation(operations.datum)),
          m_projection(prepared.addOperation(operations.projection))
    {}

    /// `to`, which may be `from`, is untouched by a failure. Why it failed is not told: the other
    /// way knows the text.
    template <FrameConversion conversion>
    bool convert(const Pos &from, Pos &to, ConversionFailure * /*failure*/)
    {
        using C = FrameConversion;
        constexpr bool isForward = conversion == C::GeographicToCartesian
                                   || conversion == C::LocalToCartesian
                                   || conversion == C::LocalToProjected;
        constexpr bool takesAngles = conversion == C::GeographicToCartesian
                                     || conversion == C::LocalToCartesian
                                     || conversion == C::LocalToProjected;
        constexpr bool givesAngles = conversion == C::CartesianToGeographic
                                     || conversion == C::CartesianToLocal
                                     || conversion == C::ProjectedToLocal;
        constexpr double degree = 3.14159265358979323846 / 180.0; // [rad]
        constexpr double radian = 180.0 / 3.14159265358979323846; // [deg]

        const stXYZ &given = from.getXYZ(); // the three readings of a position share their storage
        PJ_COORD coordinate = proj::coordinateOf(
            takesAngles ? stXYZ{given.x * degree, given.y * degree, given.z} : given);
        if (!m_prepared.apply(operationOf<conversion>(), isForward ? PJ_FWD : PJ_INV, coordinate))
            return false;
        if (givesAngles)
            to.setXYZ(coordinate.v[0] * radian, coordinate.v[1] * radian, coordinate.v[2]);
        else
            to.setXYZ(coordinate.v[0], coordinate.v[1], coordinate.v[2]);
        return true;
    }

private:
    template <FrameConversion conversion>
    proj::PreparedTransformations::Index operationOf() const
    {
        using C = FrameConversion;
        if (conversion == C::GeographicToCartesian || conversion == C::CartesianToGeographic)
            return m_wgs84;
        return conversion == C::CartesianToLocal || conversion == C::LocalToCartesian
                   ? m_datum
                   : m_projection;
    }

    proj::PreparedTransformations &m_prepared;
    proj::PreparedTransformations::Index m_wgs84;
    proj::PreparedTransformations::Index m_datum;
    proj::PreparedTransformations::Index m_projection;
};

} // namespace KelStd
