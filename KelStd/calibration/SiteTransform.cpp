#include <KelStd/calibration/SiteTransform.h>

#include <KelStd/coord/GeographicProjections.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QObject>

#include <cmath>

namespace KelStd::calibration {

namespace {

constexpr double radiansPerArcSecond = 3.14159265358979323846 / (180.0 * 3600.0);

/// What a parameter is, which says in what units it may be stored.
enum class Quantity
{
    Length,      ///< in a unit of length
    PlainLength, ///< [m] without a unit, or in a unit of length
    Angle,       ///< in degrees or arc seconds
    Number       ///< without a unit
};

bool isLengthUnit(EUnit unit)
{
    const UnitRow *row = findRow(unitRows, unit);
    return row != nullptr && row->metresPerUnit != 0.0;
}

bool fits(EUnit unit, Quantity quantity)
{
    switch (quantity) {
    case Quantity::Length: return isLengthUnit(unit);
    case Quantity::PlainLength: return unit == Unit_None || isLengthUnit(unit);
    case Quantity::Angle: return unit == Unit_Degree || unit == Unit_Second;
    case Quantity::Number: break;
    }
    return unit == Unit_None;
}

/// In metres, arc seconds or no unit.
double converted(double value, EUnit unit, Quantity quantity)
{
    if (quantity == Quantity::Angle)
        return CoordStringHelper::ConvertUnit_Angle(value, unit, Unit_Second);
    return unit == Unit_None ? value
                             : CoordStringHelper::ConvertUnit_Length(value, unit, Unit_Meter);
}

/// Where a parameter of a record goes.
template <typename Record, typename Values>
struct ParameterRow
{
    const char *name; ///< as documents and people have it
    Param Record::*param;
    double Values::*value;
    Quantity quantity;
};

using PlaneRow = ParameterRow<stPlaneTransform, PlaneSimilarity>;
using SurfaceRow = ParameterRow<stElevationFitting, HeightSurface>;

constexpr PlaneRow planeRows[] = {
    {"north_translate", &stPlaneTransform::north_translate, &PlaneSimilarity::northShift,
     Quantity::Length},
    {"east_translate", &stPlaneTransform::east_translate, &PlaneSimilarity::eastShift,
     Quantity::Length},
    {"rotate_angle", &stPlaneTransform::rotate_angle, &PlaneSimilarity::rotation, Quantity::Angle},
    {"ratio", &stPlaneTransform::ratio, &PlaneSimilarity::scale, Quantity::Number},
};

constexpr SurfaceRow surfaceRows[] = {
    {"a", &stElevationFitting::a, &HeightSurface::a, Quantity::PlainLength},
    {"b", &stElevationFitting::b, &HeightSurface::b, Quantity::Number},
    {"c", &stElevationFitting::c, &HeightSurface::c, Quantity::Number},
    {"d", &stElevationFitting::d, &HeightSurface::d, Quantity::Number},
    {"e", &stElevationFitting::e, &HeightSurface::e, Quantity::Number},
    {"f", &stElevationFitting::f, &HeightSurface::f, Quantity::Number},
    {"north_zero_x0", &stElevationFitting::north_zero_x0, &HeightSurface::originNorth,
     Quantity::Length},
    {"east_zero_y0", &stElevationFitting::east_zero_y0, &HeightSurface::originEast,
     Quantity::Length},
};

/// How many of the surface's rows a function uses, which are the first ones; -1 of one that is not
/// known.
int usedRows(EElevationFittingFunction function)
{
    switch (function) {
    case ElevationFittingFunction_None: return 0;
    case ElevationFittingFunction_Fixed: return 1;
    case ElevationFittingFunction_Plane: return 3;
    case ElevationFittingFunction_Curve: return 8;
    }
    return -1;
}

template <typename Row, typename Record, typename Values>
bool read(const Row &row, const Record &record, Values &values, const QString &recordName,
          SiteFailure &failure)
{
    const Param &param = record.*row.param;
    bool isNumber = false;
    const double value = param.value.toDouble(&isNumber);
    const auto refuse = [&](const QString &text) {
        failure = {SiteFailureKind::BadParameter, text.arg(QLatin1String(row.name), recordName)};
        return false;
    };
    if (!isNumber || !std::isfinite(value))
        return refuse(QObject::tr("the parameter %1 of the %2 is no finite number"));
    if (!fits(param.unit, row.quantity))
        return refuse(QObject::tr("the parameter %1 of the %2 is in a unit that it cannot have"));
    values.*row.value = converted(value, param.unit, row.quantity);
    if (std::isfinite(values.*row.value))
        return true;
    return refuse(QObject::tr("the parameter %1 of the %2 is no finite number"));
}

bool failByFunction(int function, const QString &recordName, SiteFailure &failure)
{
    failure = {SiteFailureKind::UnknownFunction,
               QObject::tr("the %1 has the function %2, which is not known")
                   .arg(recordName)
                   .arg(function)};
    return false;
}

QString planeName()
{
    return QObject::tr("planar transformation");
}

QString fittingName()
{
    return QObject::tr("height fitting");
}

} // namespace

bool SiteTransform::setPlane(const stPlaneTransform &record, SiteFailure &failure)
{
    if (record.fuction == PlaneTransformFunction_None)
        return true;
    if (record.fuction != PlaneTransformFunction_Four)
        return failByFunction(record.fuction, planeName(), failure);
    for (const PlaneRow &row : planeRows) {
        if (!read(row, record, m_plane, planeName(), failure))
            return false;
    }
    if (!(m_plane.scale > 0.0)) {
        failure = {SiteFailureKind::BadRatio,
                   QObject::tr("the ratio of the %1 is %2: it must be positive, and is 1 where "
                               "lengths stay as they are")
                       .arg(planeName())
                       .arg(m_plane.scale)};
        return false;
    }
    m_hasPlane = true;
    m_cos = std::cos(m_plane.rotation * radiansPerArcSecond);
    m_sin = std::sin(m_plane.rotation * radiansPerArcSecond);
    return true;
}

bool SiteTransform::setSurface(const stElevationFitting &record, SiteFailure &failure)
{
    const int used = usedRows(record.function);
    if (used < 0)
        return failByFunction(record.function, fittingName(), failure);
    for (int i = 0; i < used; ++i) {
        if (!read(surfaceRows[i], record, m_surface, fittingName(), failure))
            return false;
    }
    m_function = record.function;
    return true;
}

std::optional<SiteTransform> SiteTransform::of(const stPlaneTransform &plane,
                                               const stElevationFitting &fitting,
                                               SiteFailure *failure)
{
    SiteTransform site;
    SiteFailure found;
    if (site.setPlane(plane, found) && site.setSurface(fitting, found))
        return site;
    if (failure != nullptr)
        *failure = found;
    return std::nullopt;
}

std::optional<SiteTransform> SiteTransform::of(const Coord &coord, SiteFailure *failure)
{
    auto site = of(coord.planeTransform, coord.elevationFitting, failure);
    const bool isGeographic = isGeographicProjection(coord.projection.proj4Projection.trimmed());
    if (!site || !site->hasSite() || !isGeographic)
        return site;
    if (failure != nullptr) {
        *failure = {SiteFailureKind::NoPlane,
                    QObject::tr("the coordinates of the system are longitudes and latitudes, which "
                                "have no site")};
    }
    return std::nullopt;
}

} // namespace KelStd::calibration
