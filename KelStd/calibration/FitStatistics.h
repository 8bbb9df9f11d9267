#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::calibration {

/// How a blunder is looked for, one at a time, at the significance level 0.001.
enum class OutlierTest
{
    /// Baarda's w = v / (sigma sqrt(r)), where standard deviations were given; critical 3.2905,
    /// the normal distribution's (W. Baarda, A testing procedure for use in geodetic networks,
    /// 1968).
    Baarda,
    /// Pope's tau = v / (s0 sqrt(r)), where they were not; critical by the tau distribution with
    /// the fit's redundancy (A. J. Pope, The statistics of residuals and the detection of outliers,
    /// NOAA Technical Report NOS 65 NGS 1, 1976).
    Pope
};

/// What a fit leaves, in plan or in height. Residuals are calculated minus control.
///
/// Of each point a residual vector is counted once, of two components in plan and of one in height:
/// `rms` is the square root of the sum of the vectors' squares over the number of points. `s0`
/// divides the sum of squares by the redundancy instead, each square over that of its standard
/// deviation where these were given.
struct FitStatistics
{
    int points = 0;                       ///< that took part
    int redundancy = 0;                   ///< observations less parameters
    OutlierTest test = OutlierTest::Pope; ///< by which blunders are looked for
    std::optional<double> s0;             ///< [m] with Pope's test, without unit with Baarda's
    std::optional<double> rms;            ///< [m]
    std::optional<double> max;            ///< the longest residual vector [m]
    QString maxPoint;                     ///< whose it is
    std::optional<double> criticalValue;  ///< of the test; nothing below a redundancy of 2 for tau
    QString suspect;                      ///< the name of the one point that is suspected
};

/// What is to be said of one point, in plan or in height. What does not exist is nothing: without
/// redundancy there is no test, and where the other points alone determine no fit, nothing that
/// comes of leaving the point out.
struct PointStatistics
{
    bool isUsed = false; ///< whether it took part
    /// The share of a blunder in the observation that shows in its residual, 0 to 1; in plan the
    /// smaller one of the two coordinates'.
    std::optional<double> redundancy;
    std::optional<double> test; ///< |w| or tau, in plan the larger one of the two coordinates'
    /// The smallest blunder [m] in one coordinate that the test finds with a probability of 0.8:
    /// 4.1321 sigma / sqrt(r), with s0 for sigma where no standard deviation was given.
    std::optional<double> detectable;
    bool isSuspect = false; ///< the largest test of all points, and above the critical value
};

/// The standard ellipse of a fitted point: what the uncertainty of the parameters makes of it.
struct ErrorEllipse
{
    double major = 0.0;   ///< semi-axis [m]
    double minor = 0.0;   ///< semi-axis [m]
    double azimuth = 0.0; ///< of the major axis [deg], clockwise from north, 0 to 180
};

} // namespace KelStd::calibration
