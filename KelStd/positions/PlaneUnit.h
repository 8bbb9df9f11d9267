#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

namespace KelStd::positions {

/// A unit that northings and eastings of some system are customarily given in, other than the
/// metre. Everything here may be called on any thread.
struct PlaneUnit
{
    QString symbol; ///< "us-ft"; in headings with underscores, "northing_us_ft"
    double metres;  ///< what one of it measures [m]
};

/// The units of projected systems in the EPSG Dataset: feet, yards, links, chains of several
/// definitions, the German legal metre, kilometre. One row each in PlaneUnit.cpp.
KELSTD_EXPORT QVector<PlaneUnit> planeUnits();

/// The one among them that measures as much as the unit of an origin, to within a thousandth of a
/// millionth; they differ by a ten millionth at least. Nothing for the metre and for a unit that is
/// not among them.
KELSTD_EXPORT std::optional<PlaneUnit> findPlaneUnit(const SystemOrigin::PlaneUnit &unit);

} // namespace KelStd::positions
