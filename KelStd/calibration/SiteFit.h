#pragma once

#include <KelStd/Export.h>
#include <KelStd/calibration/CalibrationFailure.h>
#include <KelStd/calibration/FitStatistics.h>
#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/coord/ControlPoint.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <optional>

namespace KelStd::calibration {

/// How the plane is fitted.
enum class PlanMethod
{
    None,     ///< the plane of the system is that of the site
    Shift,    ///< two shifts; from 1 point on
    Rotation, ///< two shifts and a rotation, the scale held to 1; from 2 points on
    Four      ///< two shifts, a rotation and a scale; from 2 points on
};

/// How heights are fitted.
enum class HeightMethod
{
    None,  ///< the heights of the system are those of the site
    Fixed, ///< one shift; from 1 point on
    Plane, ///< a shift and two slopes; from 3 points on
    Curve  ///< a surface of the second degree; from 6 points on
};

/// What is asked of a fit.
struct SiteFitOptions
{
    /// Nothing: `Four`, or `None` where no point is used in plan.
    std::optional<PlanMethod> plan;
    /// Nothing: `Plane` from four points on, else `Fixed`, or `None` where no point is used in
    /// height.
    std::optional<HeightMethod> height;
    std::optional<double> sigmaH; ///< of points without one of their own [m]
    std::optional<double> sigmaV; ///< of points without one of their own [m]
    QStringList without;          ///< names of points that stay in the list but are not used
};

/// The plane of a site. Parameters are those that the records store.
struct PlanFit
{
    PlanMethod method = PlanMethod::None; ///< by which the plane was fitted
    PlaneSimilarity similarity;           ///< the identity where nothing is fitted
    FitStatistics statistics;             ///< of northings and eastings
    stENU baseCentroid{}; ///< weighted, of the points used, in the plane of the system [m]
    stENU siteCentroid{}; ///< what it becomes [m]
    /// \name Standard deviations of the parameters
    /// Nothing without redundancy and standard deviations, and for what is held.
    /// \{
    std::optional<double> shiftDeviation;    ///< of either shift, at the centroid [m]
    std::optional<double> rotationDeviation; ///< [arc seconds]
    std::optional<double> scaleDeviation;    ///< [ppm]
    /// \}
};

/// The heights of a site.
struct HeightFit
{
    HeightMethod method = HeightMethod::None; ///< by which the heights were fitted
    HeightSurface surface;                    ///< as stored; zeros where nothing is fitted
    FitStatistics statistics;                 ///< of the heights
    stENU centroid{};                     ///< weighted, of the points used, in site coordinates [m]
    double shiftAtCentroid = 0.0;         ///< the surface there [m]
    double slopeNorth = 0.0;              ///< and its slope [m/m]
    double slopeEast = 0.0;               ///< [m/m]
    std::optional<double> shiftDeviation; ///< of the shift at the centroid [m]
    std::optional<double> slopeNorthDeviation; ///< [m/m]
    std::optional<double> slopeEastDeviation;  ///< [m/m]
};

/// A control point in a fit. Residuals are calculated minus control; left out ones those of a fit
/// without the point, in plan or in height.
struct SitePoint
{
    QString name;                         ///< of the point
    stENU base{};                         ///< the position in the plane of the system [m]
    stENU site{};                         ///< what the fitted records make of it [m]
    stENU control{};                      ///< as it was given [m]; its height is 0 where none was
    PointStatistics plan;                 ///< of northing and easting
    PointStatistics height;               ///< of the height
    std::optional<double> residualNorth;  ///< [m]
    std::optional<double> residualEast;   ///< [m]
    std::optional<double> residualHeight; ///< [m]
    std::optional<double> leftOutNorth;   ///< [m]
    std::optional<double> leftOutEast;    ///< [m]
    std::optional<double> leftOutHeight;  ///< [m]
    /// Of the fitted plane at the point; nothing without redundancy.
    std::optional<ErrorEllipse> ellipse;
};

/// A fitted site.
struct SiteFit
{
    Coord coord;           ///< the base system with the records of the site filled
    ControlPoints control; ///< all points, with what they were used for; for the site's document
    PlanFit plan;          ///< northing and easting
    HeightFit height;      ///< the heights
    QVector<SitePoint> points;    ///< in the order of the control points
    CalibrationWarnings warnings; ///< what has to be seen before the site is used
};

/// Fits a site to its control points.
///
/// The positions become northing, easting and height of `base` by a `LocationBuilder`, with its
/// geoid model where it names one; records of a site that `base` has are replaced. Then
///
/// - the plane is fitted by least squares, both coordinates of a point with the weight
///   1 / sigmaH^2, or all with the same one: with a scale linearly (C. D. Ghilani, Adjustment
///   Computations, chapter on coordinate transformations), with the scale held to 1 by the rotation
///   that makes the sum of squares least;
/// - the height surface is fitted, with the weights 1 / sigmaV^2, to control less base height at
///   the northing and easting that the stored plane gives, where it is applied.
///
/// All is computed about the centroid, and the parameters are rounded to the 15 digits that a
/// document keeps before the shifts are taken from them, so that a stored site gives the same
/// coordinates to 2e-8 m. The records are applied to each point (`SiteTransform`); more than 0.1 mm
/// between that and the adjusted residuals is a failure.
///
/// Statistics: see `FitStatistics`. What is left out is exact: in plan by the point's two rows of
/// the hat matrix, with the scale held by a fit to the sums without the point. Nothing is dropped:
/// a suspect is named, one at a time, and it is the surveyor's to leave it out.
///
/// Collinear are points whose root mean square distance from a line is below a thousandth of that
/// along it; coincident are two points less than 1 mm apart, as measured or as given.
///
/// \param failure (when given) becomes the reason, with what to do about it
/// \return nothing on a failure, and where PROJ is not loaded
KELSTD_EXPORT std::optional<SiteFit> fitSite(const Coord &base, const ControlPoints &control,
                                             const SiteFitOptions &options = {},
                                             CalibrationFailure *failure = nullptr);

/// What of the origin of a base system holds for the site that was fitted to `control` on it: all
/// but its code, since it is no system of a database any more.
KELSTD_EXPORT SystemOrigin siteOrigin(const SystemOrigin &base, const ControlPoints &control);

/// "four", "rotation", "shift", "none": the word of a method, in reports and in JSON.
KELSTD_EXPORT QString wordOf(PlanMethod method);
/// The same of a method for heights: "fixed", "plane", "curve", "none".
KELSTD_EXPORT QString wordOf(HeightMethod method);

/// The method of a word.
KELSTD_EXPORT std::optional<PlanMethod> planMethodOf(const QString &word);
/// The same for heights.
KELSTD_EXPORT std::optional<HeightMethod> heightMethodOf(const QString &word);

} // namespace KelStd::calibration
