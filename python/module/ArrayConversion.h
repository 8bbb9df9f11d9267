#pragma once

#include "UsedSystem.h"

#include <KelStd/calibration/SiteBuilder.h>
#include <KelStd/calibration/SiteExtent.h>
#include <KelStd/location/AreaCheck.h>

#include <pybind11/numpy.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace KelStd::python {

/// What arrays are given in: a frame, or the coordinates of the system's site.
enum class ArrayFrame
{
    Wgs84Geographic,
    Wgs84Cartesian,
    LocalGeographic,
    LocalProjected,
    Site
};

/// A row of numbers that lie so many bytes apart; all the same one with a stride of 0.
struct Column
{
    const char *data;
    std::ptrdiff_t stride;

    double at(std::size_t i) const
    {
        double number; // which may lie anywhere, in a packed record
        std::memcpy(&number, data + static_cast<std::ptrdiff_t>(i) * stride, sizeof number);
        return number;
    }
};

/// What became of a position.
namespace status {
inline constexpr unsigned char failed = 1;
inline constexpr unsigned char aboveGeoid = 2;
inline constexpr unsigned char outsideArea = 4;
inline constexpr unsigned char outsideHull = 8; ///< northing and easting at the site
/// and heights at the site
inline constexpr unsigned char outsideHeightHull = 16;
} // namespace status

struct ArrayRun;
struct ArrayWorker;

/// Arrays of positions converted by a system, on threads of its own. An object belongs to the
/// interpreter's lock, which it gives up while it computes.
class ArrayConversion
{
public:
    /// Raises `Refused` where the system cannot be used. With the interpreter's lock.
    explicit ArrayConversion(std::shared_ptr<const UsedSystem> system);
    ~ArrayConversion();

    bool hasSite() const { return m_hasSite; }

    /// What has to be known of the system before its numbers are used.
    const QStringList &warnings() const { return m_warnings; }

    /// The geoid model in use; empty for none.
    const QString &geoidModel() const { return m_geoidModel; }

    /// Converts positions, whose three components are one-dimensional arrays of equal length.
    ///
    /// Gives a dictionary: `locations`, twelve columns; `site`, three columns, or None; `status`,
    /// bits of `status` each; `reason`, a number each, or None where all is well; `reasons`, the
    /// texts of the numbers, "" for 0; `area`, of positions that lie outside the area of use
    /// where that is and what would bring the first of them inside.
    pybind11::dict convert(ArrayFrame frame, const pybind11::array_t<double> &first,
                           const pybind11::array_t<double> &second,
                           const pybind11::array_t<double> &third, int threads);

    /// What the geoid is above the ellipsoid [m] at positions of WGS84, in the form of `convert`:
    /// `separations`, `status`, `reason`, `reasons`.
    pybind11::dict separations(const pybind11::array_t<double> &longitude,
                               const pybind11::array_t<double> &latitude,
                               const pybind11::array_t<double> &height, int threads);

private:
    std::unique_ptr<ArrayWorker> takeWorker();
    void giveBack(std::vector<std::unique_ptr<ArrayWorker>> workers);
    void work(ArrayRun &run, int threads, std::size_t count);
    QString areaOfFirstOutside(const ArrayRun &run) const;

    std::shared_ptr<const UsedSystem> m_system;
    bool m_hasSite;
    QString m_geoidModel;
    QStringList m_warnings;
    calibration::SiteExtent m_extent;
    std::vector<std::unique_ptr<ArrayWorker>> m_idle;
    long m_process; ///< whose workers the idle ones are: a fork does not share open files
};

} // namespace KelStd::python
