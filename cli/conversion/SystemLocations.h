#pragma once

#include <cli/conversion/ConversionSystem.h>
#include <cli/run/Notices.h>

#include <KelStd/calibration/SiteBuilder.h>
#include <KelStd/calibration/SiteExtent.h>
#include <KelStd/coord/Location.h>
#include <KelStd/location/AreaCheck.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// Locations in a system, with what is to be said of each, on one thread. The system must outlive
/// them, and the records of its site be such that can be applied.
class SystemLocations
{
public:
    using Frame = calibration::SiteBuilder::Frame;

    explicit SystemLocations(const ConversionSystem &system);

    /// Makes the location of a position, only where the projection is one-to-one; false with a
    /// reason.
    bool make(Frame frame, const Pos &position, Location &location);

    /// The same of coordinates at the system's site.
    bool makeFromSite(const Pos &atSite, Location &location);

    /// Of the area, counted from 0, for the last one, whether or not it was made.
    NoticeBits areaNotices() const { return m_areaNotices; }

    /// The parts of the fit of the system's site (of `SiteExtent`) that do not hold at the last one
    /// that was made.
    unsigned partsOutside() const;

    /// Why the last one was not made.
    const QString &reason() const { return m_outcome.reason; }

    /// The coordinates of the last one at the site; null where the system has none.
    const positions::SiteCoordinates *site() const { return m_hasSite ? &m_site : nullptr; }

    /// The model above whose geoid its projected height is; empty for the ellipsoid.
    const QString &heightModel() const;

    /// What is to be said of a projected height that is ellipsoidal although the system has a
    /// model; empty otherwise.
    QString heightWarning(const QString &ofSystem, const QString &consequence) const;

private:
    void tellOfHeight(Frame frame, const Pos &position);

    calibration::SiteBuilder m_builder;
    const bool m_hasSite;
    const bool m_namesModel; ///< be it one that can be used or not
    const calibration::SiteExtent m_extent;
    std::optional<AreaCheck> m_area; ///< nothing where the area is not known
    NoticeBits m_areaNotices = 0;
    LocationBuilder::Outcome m_outcome;
    positions::SiteCoordinates m_site;
    const QString &m_geoidModel;
    const QString m_noModel;
};

} // namespace KelStd::cli
