#pragma once

#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/Similarity.h>

#include <QtCore/QByteArray>

#include <optional>
#include <vector>

namespace KelStd::catalogue {

/// A datum shift from a local frame to WGS 84 as the records of a `Coord` carry it.
struct CarriedShift
{
    ShiftKind kind = ShiftKind::None;
    Similarity similarity; ///< of `Three` and `Seven`

    /// Whether `similarity` has the published numbers. Otherwise it is to be fitted to `affine`:
    /// inverted and chained operations, and those about a point of rotation.
    bool isPublished = true;

    /// What the operation adds to the longitudes of its source [deg] before anything else. Mostly
    /// the prime meridian, but not always; a `Coord` has it in its projection's longitudes.
    double turn = 0.0;

    /// The operation without units and orders of axes: from longitude and latitude [rad] of the
    /// local system to those of WGS 84.
    std::vector<ProjStep> steps;

    /// Those of them that lie between earth-centred coordinates.
    std::vector<ProjStep> affine;
};

/// How the records carry an operation that PROJ writes as `pipeline`; nothing where they cannot.
std::optional<CarriedShift> carriedShift(const QByteArray &pipeline);

/// The shift that keeps earth-centred coordinates, from an ellipsoid [m] whose system counts its
/// longitudes from `primeMeridian` [deg].
CarriedShift shiftOfNothing(double semiMajorAxis, double inverseFlattening, double primeMeridian);

/// The shift by "+towgs84", likewise.
CarriedShift shiftOfText(const Similarity &similarity, double semiMajorAxis,
                         double inverseFlattening, double primeMeridian);

/// The same steps with the full rotation matrix of the position-vector convention, as "+towgs84"
/// has it, instead of the linear one.
std::vector<ProjStep> withFullRotation(std::vector<ProjStep> steps);

} // namespace KelStd::catalogue
