#include <KelStd/calibration/SiteRecordsOfFit.h>

#include <QtCore/QObject>

namespace KelStd::calibration {

namespace {

EElevationFittingFunction functionOf(HeightMethod method)
{
    switch (method) {
    case HeightMethod::None: break;
    case HeightMethod::Fixed: return ElevationFittingFunction_Fixed;
    case HeightMethod::Plane: return ElevationFittingFunction_Plane;
    case HeightMethod::Curve: return ElevationFittingFunction_Curve;
    }
    return ElevationFittingFunction_None;
}

} // namespace

void setPlane(const PlanFit &fit, stPlaneTransform &record)
{
    record = stPlaneTransform();
    if (fit.method == PlanMethod::None)
        return;
    record.fuction = PlaneTransformFunction_Four;
    record.north_translate.value = fit.similarity.northShift;
    record.east_translate.value = fit.similarity.eastShift;
    record.rotate_angle.value = fit.similarity.rotation;
    record.ratio.value = fit.similarity.scale;
}

void setHeights(const HeightFit &fit, stElevationFitting &record)
{
    record = stElevationFitting();
    record.function = functionOf(fit.method);
    record.a.value = fit.surface.a;
    record.b.value = fit.surface.b;
    record.c.value = fit.surface.c;
    record.d.value = fit.surface.d;
    record.e.value = fit.surface.e;
    record.f.value = fit.surface.f;
    record.north_zero_x0.value = fit.surface.originNorth;
    record.east_zero_y0.value = fit.surface.originEast;
}

void clearSite(Coord &coord, CalibrationWarnings &warnings, const QString &what)
{
    if (coord.planeTransform.fuction != PlaneTransformFunction_None
        || coord.elevationFitting.function != ElevationFittingFunction_None) {
        warnings += CalibrationWarning{
            CalibrationWarningKind::ReplacedRecords,
            QObject::tr("the base system has a site already, whose plane transformation and height "
                        "fitting are %1")
                .arg(what)};
    }
    coord.planeTransform = stPlaneTransform();
    coord.elevationFitting = stElevationFitting();
}

} // namespace KelStd::calibration
