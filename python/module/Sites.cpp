#include "Sites.h"

#include "Host.h"
#include "Text.h"
#include "UsedSystem.h"

#include <KelStd/calibration/FitJson.h>
#include <KelStd/calibration/SiteCheck.h>
#include <KelStd/calibration/SiteFit.h>
#include <KelStd/coord/ControlPoint.h>

#include <cmath>
#include <memory>

namespace KelStd::python {

namespace py = pybind11;

namespace {

std::optional<double> optionalNumber(const py::handle &value)
{
    return value.is_none() ? std::nullopt : std::optional(value.cast<double>());
}

/// A point of a tuple: name, longitude, latitude, height, northing, easting, elevation, use,
/// sigma_h, sigma_v.
ControlPoint pointOf(const py::tuple &row)
{
    ControlPoint point;
    point.name = fromPython(row[0].cast<std::string>());
    point.wgs84.setLongLatH(row[1].cast<double>(), row[2].cast<double>(), row[3].cast<double>());
    point.north = row[4].cast<double>();
    point.east = row[5].cast<double>();
    point.height = optionalNumber(row[6]);
    if (!row[7].is_none() && !point.setUse(fromPython(row[7].cast<std::string>()))) {
        throw Raised(Raise::Value,
                     QStringLiteral("the use of %1 is none of hv, h, v, -").arg(point.name));
    }
    point.sigmaH = optionalNumber(row[8]);
    point.sigmaV = optionalNumber(row[9]);
    return point;
}

ControlPoints pointsOf(const py::list &rows)
{
    ControlPoints points;
    for (const py::handle &row : rows)
        points.append(pointOf(row.cast<py::tuple>()));
    return points;
}

py::list rowsOf(const ControlPoints &points)
{
    py::list rows;
    for (const ControlPoint &point : points) {
        const stLongLatH &at = point.wgs84.getLongLatH();
        rows.append(py::make_tuple(toPython(point.name), at.longitude, at.latitude, at.height,
                                   point.north, point.east, py::cast(point.height),
                                   toPython(point.useWord()), py::cast(point.sigmaH),
                                   py::cast(point.sigmaV)));
    }
    return rows;
}

/// The method of a word, or nothing for None.
template <typename Method>
std::optional<Method> methodOf(const py::object &word,
                               std::optional<Method> (*find)(const QString &), const char *words)
{
    if (word.is_none())
        return std::nullopt;
    const QString name = fromPython(word.cast<std::string>());
    const auto method = find(name);
    if (!method) {
        throw Raised(Raise::Value,
                     QStringLiteral("'%1' is none of %2").arg(name, QString::fromLatin1(words)));
    }
    return method;
}

py::tuple fitSite(const std::shared_ptr<const UsedSystem> &base, const py::list &rows,
                  const py::object &horizontal, const py::object &vertical,
                  const py::object &sigmaH, const py::object &sigmaV, const py::list &without,
                  const py::object &name)
{
    using namespace calibration;
    SiteFitOptions options;
    options.plan = methodOf<PlanMethod>(horizontal, &planMethodOf, "four, rotation, shift, none");
    options.height = methodOf<HeightMethod>(vertical, &heightMethodOf, "fixed, plane, curve, none");
    options.sigmaH = optionalNumber(sigmaH);
    options.sigmaV = optionalNumber(sigmaV);
    for (const py::handle &left : without)
        options.without += fromPython(left.cast<std::string>());
    const ControlPoints points = pointsOf(rows);
    requireProj();
    requireUsable(*base);
    CalibrationFailure failure;
    std::optional<SiteFit> fit;
    raisingRefused(base->source,
                   [&] { fit = calibration::fitSite(base->coord, points, options, &failure); });
    if (!fit)
        throw Raised(Raise::Fit, QStringLiteral("nothing is fitted: %1").arg(failure.text));
    auto site = std::make_shared<UsedSystem>();
    site->coord = fit->coord;
    if (!name.is_none())
        site->coord.coord_name = fromPython(name.cast<std::string>());
    site->origin = calibration::siteOrigin(base->origin, fit->control);
    site->source = site->coord.coord_name;
    return py::make_tuple(std::shared_ptr<const UsedSystem>(site),
                          toPython(jsonLine(*fit).trimmed()));
}

py::str checkSite(const std::shared_ptr<const UsedSystem> &site, const py::list &rows)
{
    const ControlPoints points = pointsOf(rows);
    requireProj();
    requireUsable(*site);
    calibration::CalibrationFailure failure;
    std::optional<calibration::SiteCheck> check;
    raisingRefused(site->source,
                   [&] { check = calibration::checkSite(site->coord, points, &failure); });
    if (!check)
        throw Raised(Raise::Fit, QStringLiteral("nothing is checked: %1").arg(failure.text));
    return toPython(jsonLine(*check).trimmed());
}

} // namespace

void addSites(py::module_ &module)
{
    module.def("fit_site", &fitSite);
    module.def("check_site", &checkSite);
    module.def("control_points", [](const std::shared_ptr<const UsedSystem> &system) {
        return rowsOf(system->origin.control);
    });
}

} // namespace KelStd::python
