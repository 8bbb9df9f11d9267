#pragma once

#include <KelStd/location/FrameConversion.h>
#include <KelStd/location/OneToOne.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/PreparedTransformations.h>

#include <QtCore/QString>

#include <cmath>

namespace KelStd {

/// What a builder knows of its system beside the ways between the frames, and of the position that
/// it works on.
struct BuilderState
{
    BuilderState(const QString &gridFile, bool isPlaneGeographic)
        : toGeoid(prepared.addShift(gridFile, proj::ShiftDirection::ToGeoid)),
          toEllipsoid(prepared.addShift(gridFile, proj::ShiftDirection::ToEllipsoid)),
          hasGeoid(!gridFile.isEmpty()), hasGeographicPlane(isPlaneGeographic)
    {}

    proj::PreparedTransformations prepared; // before the numbers that it gives out
    proj::PreparedTransformations::Index toGeoid;
    proj::PreparedTransformations::Index toEllipsoid;
    bool hasGeoid;
    bool hasGeographicPlane; ///< the "projection" leaves longitude and latitude as they are
    bool isOneToOneRequired = false;

    ConversionFailure *failure = nullptr; ///< where the position's failure goes; may be null
    bool isAboveGeoid = false;            ///< the projected height of the location that was made
};

/// The stages of LocationSteps.h on one of the ways between the frames.
///
/// A `Way` has `bool convert<FrameConversion>(const Pos &from, Pos &to, ConversionFailure
/// *failure)`, and `bool leadsThrough(const stLongLatH &wgs84)`, whether it may be taken about a
/// position.
template <typename Way>
class BuilderStages
{
public:
    BuilderStages(Way &way, BuilderState &state) : m_way(way), m_state(state) {}

    bool geographicToCartesian(const Pos &from, Pos &to)
    {
        return convert<C::GeographicToCartesian>(from, to);
    }
    bool cartesianToGeographic(const Pos &from, Pos &to)
    {
        return convert<C::CartesianToGeographic>(from, to);
    }
    bool cartesianToLocal(const Pos &from, Pos &to)
    {
        return convert<C::CartesianToLocal>(from, to);
    }
    bool localToCartesian(const Pos &from, Pos &to)
    {
        return convert<C::LocalToCartesian>(from, to);
    }
    bool localToProjected(const Pos &from, Pos &to)
    {
        return convert<C::LocalToProjected>(from, to);
    }
    bool projectedToLocal(const Pos &from, Pos &to)
    {
        return convert<C::ProjectedToLocal>(from, to);
    }

    bool isPosition(const Pos &wgs84)
    {
        return m_way.leadsThrough(wgs84.getLongLatH())
               && (!m_state.isOneToOneRequired || one_to_one::isPosition(wgs84.getLongLatH())
                   || refuseAsNotOneToOne());
    }

    bool leadsBackToLocal(const Pos &local, const Pos &plane)
    {
        if (!m_state.isOneToOneRequired)
            return true;
        Pos back;
        return (one_to_one::isInPlane(plane)
                && m_way.template convert<C::ProjectedToLocal>(plane, back, nullptr)
                && one_to_one::isSamePlace(local.getLongLatH(), back.getLongLatH()))
               || refuseAsNotOneToOne();
    }

    bool leadsBackToPlane(const Pos &plane, const Pos &local)
    {
        return !m_state.isOneToOneRequired
               || (one_to_one::isInPlane(plane) && leadsBack(plane, local))
               || refuseAsNotOneToOne();
    }

    bool toGeoid(const Pos &wgs84, double &diff)
    {
        return m_state.hasGeoid && shift(m_state.toGeoid, wgs84, diff);
    }

    bool toEllipsoid(const Pos &wgs84, double &diff)
    {
        return m_state.hasGeoid && shift(m_state.toEllipsoid, wgs84, diff);
    }

private:
    using C = FrameConversion;

    template <FrameConversion conversion>
    bool convert(const Pos &from, Pos &to)
    {
        return m_way.template convert<conversion>(from, to, m_state.failure);
    }

    bool shift(proj::PreparedTransformations::Index index, const Pos &wgs84, double &diff)
    {
        m_state.isAboveGeoid =
            m_state.prepared.shift(index, wgs84.getLongLatH(), diff, m_state.failure);
        return m_state.isAboveGeoid;
    }

    bool refuseAsNotOneToOne()
    {
        return proj::fail(m_state.failure, ConversionFailureKind::NotOneToOne,
                          proj::notOneToOneText);
    }

    bool leadsBack(const Pos &given, const Pos &local)
    {
        const auto project = [this](const Pos &from, Pos &to) {
            return m_way.template convert<C::LocalToProjected>(from, to, nullptr);
        };
        Pos back;
        if (!project(local, back))
            return false;
        if (m_state.hasGeographicPlane)
            return one_to_one::isSamePlace(given.getLongLatH(), back.getLongLatH());
        // Less than the tolerance in any unit of length.
        constexpr double negligible = 1e-6;
        const stENU &a = given.getENU();
        const stENU &b = back.getENU();
        return (std::abs(a.e - b.e) <= negligible && std::abs(a.n - b.n) <= negligible)
               || one_to_one::isSamePointOfPlane(given, back, local, project);
    }

    Way &m_way;
    BuilderState &m_state;
};

} // namespace KelStd
