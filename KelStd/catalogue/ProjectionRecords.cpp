#include <KelStd/catalogue/ProjectionRecords.h>

#include <KelStd/catalogue/MethodDifference.h>
#include <KelStd/catalogue/PlaneDirection.h>
#include <KelStd/catalogue/ProjSteps.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// A parameter that is no number is a flag. Keys other than PROJ's own are those of the delivered
/// systems.
struct ParameterRow
{
    const char *projName;
    const char *key;
    EValueType type;
    EUnit unit;
    bool isLongitude; ///< counts from the prime meridian
};

constexpr ParameterRow parameterRows[] = {
    {"x_0", "FalseEast", ValueType_Distance, Unit_Meter, false},
    {"y_0", "FalseNorth", ValueType_Distance, Unit_Meter, false},
    {"h_0", "h_0", ValueType_Distance, Unit_Meter, false},
    {"h", "h", ValueType_Distance, Unit_Meter, false},
    {"k", "k_0", ValueType_Double, Unit_None, false},
    {"k_0", "k_0", ValueType_Double, Unit_None, false},
    {"lat_0", "lat_0", ValueType_Latitude, Unit_Degree, false},
    {"lat_1", "lat_1", ValueType_Latitude, Unit_Degree, false},
    {"lat_2", "lat_2", ValueType_Latitude, Unit_Degree, false},
    {"lat_3", "lat_3", ValueType_Latitude, Unit_Degree, false},
    {"lat_ts", "lat_ts", ValueType_Latitude, Unit_Degree, false},
    {"lon_0", "lon_0", ValueType_Longitude, Unit_Degree, true},
    {"lon_1", "lon_1", ValueType_Longitude, Unit_Degree, true},
    {"lon_2", "lon_2", ValueType_Longitude, Unit_Degree, true},
    {"lon_3", "lon_3", ValueType_Longitude, Unit_Degree, true},
    {"lonc", "lonc", ValueType_Longitude, Unit_Degree, true},
    {"alpha", "alpha", ValueType_Angle, Unit_Degree, false},
    {"gamma", "gamma", ValueType_Angle, Unit_Degree, false},
    {"azi", "azi", ValueType_Angle, Unit_Degree, false},
    {"tilt", "tilt", ValueType_Angle, Unit_Degree, false},
};

/// What other records say, or nobody has to.
constexpr const char *otherParameters[] = {
    "ellps",  "datum",    "a",        "b",         "rf",        "f",    "R",
    "pm",     "units",    "to_meter", "no_defs",   "type",      "axis", "towgs84",
    "wktext", "nadgrids", "vunits",   "vto_meter", "geoidgrids"};

const ParameterRow *rowOf(const QByteArray &projName)
{
    for (const ParameterRow &row : parameterRows) {
        if (projName == row.projName)
            return &row;
    }
    return nullptr;
}

/// PROJ writes 15 digits; the parameter that it has written has all of them.
double exactly(double written, const std::vector<MethodValue> &values)
{
    for (const MethodValue &row : values) {
        if (std::abs(row.value - written) <= 1e-13 * std::max(1.0, std::abs(written)))
            return row.value;
    }
    return written;
}

void insert(Projection &projection, const QString &key, const QByteArray &projName,
            const Param &param)
{
    projection.param.insert(key, param);
    projection.paramProj4.insert(key, QString::fromLatin1(projName));
}

void insertNumber(Projection &projection, const ParameterRow &row, double value, double turn)
{
    const QByteArray name = row.projName;
    insert(projection, QString::fromLatin1(row.key), name == "k" ? QByteArray("k_0") : name,
           Param(row.type, row.unit, row.isLongitude ? value + turn : value));
}

/// A zone of UTM by its parameters, as it is published.
bool insertZone(Projection &projection, const std::vector<MethodValue> &values, double turn)
{
    struct Row
    {
        int code; ///< of EPSG's parameter
        const char *projName;
    };
    constexpr Row rows[] = {
        {8801, "lat_0"}, {8802, "lon_0"}, {8805, "k_0"}, {8806, "x_0"}, {8807, "y_0"}};
    for (const Row &row : rows) {
        const auto found =
            std::find_if(values.cbegin(), values.cend(),
                         [&row](const MethodValue &value) { return value.code == row.code; });
        if (found == values.cend())
            return false;
        insertNumber(projection, *rowOf(row.projName), found->value, turn);
    }
    projection.proj4Projection = QStringLiteral("tmerc");
    return true;
}

bool isOther(const QByteArray &name)
{
    return std::any_of(std::cbegin(otherParameters), std::cend(otherParameters),
                       [&name](const char *other) { return name == other; });
}

bool insertParameters(Projection &projection, const ProjStep &step,
                      const std::vector<MethodValue> &values, double turn)
{
    for (const auto &parameter : step.parameters) {
        const QByteArray &name = parameter.first;
        if (isOther(name))
            continue;
        const ParameterRow *const row = rowOf(name);
        if (parameter.second.isEmpty()) {
            insert(projection, QString::fromLatin1(name), name,
                   Param(ValueType_Proj4_Param_Bool, Unit_None, true));
            continue;
        }
        const auto number = step.number(name.constData());
        if (row == nullptr || !number)
            return false;
        insertNumber(projection, *row, exactly(*number, values), turn);
    }
    return true;
}

/// PROJ's name of an ellipsoid of this shape; empty where it has none.
QString projEllipsoid(const ProjSession &session, double axis, double minorAxis)
{
    constexpr double tolerance = 1e-6; // [m]
    for (const PJ_ELLPS *row = session.functions().proj_list_ellps(); row->id != nullptr; ++row) {
        const double a = QByteArray(row->major).mid(2).toDouble();
        const QByteArray shape = row->ell;
        const double number = shape.mid(shape.indexOf('=') + 1).toDouble();
        const double b = shape.startsWith("rf=") ? a - a / number : number;
        if (std::abs(a - axis) <= tolerance && std::abs(b - minorAxis) <= tolerance)
            return QString::fromLatin1(row->id);
    }
    return {};
}

/// PROJ takes a definition of a Transverse Mercator with axes to the west and south for EPSG's
/// south-orientated method, whose false origin it does not have.
bool isTakenForAnother(const ProjStep &step, EEllipsoidDirection direction)
{
    const auto isMoved = [&step](const char *key) { return step.number(key).value_or(0.0) != 0.0; };
    return direction == EllipsoidDirection_WSU
           && (step.name == "utm" || (step.name == "tmerc" && (isMoved("x_0") || isMoved("y_0"))));
}

bool refuse(CatalogueFailure *failure, const QString &text)
{
    if (failure != nullptr)
        *failure = {CatalogueFailureKind::NoProjection, text};
    return false;
}

} // namespace

std::optional<Ellipsoid> ellipsoidOf(const ProjSession &session, const PJ *crs)
{
    const proj::ProjFunctions &proj = session.functions();
    const ProjObject object(proj.proj_get_ellipsoid(session.context(), crs));
    double axis = 0.0;
    double minorAxis = 0.0;
    double reciprocal = 0.0;
    if (object == nullptr
        || proj.proj_ellipsoid_get_parameters(session.context(), object.get(), &axis, &minorAxis,
                                              nullptr, &reciprocal)
               == 0
        || !(axis > 0.0))
        return std::nullopt;
    Ellipsoid ellipsoid;
    ellipsoid.ellipsoid_name = session.nameOf(object.get());
    ellipsoid.proj4EllpsName = projEllipsoid(session, axis, minorAxis);
    ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Meter, axis);
    ellipsoid.reciprocal = reciprocal;
    // PROJ does not take 1/f = 0. A radius beside the name of a sphere overrules the name's.
    if (reciprocal == 0.0 && ellipsoid.proj4EllpsName.isEmpty())
        ellipsoid.proj4EllpsName = QStringLiteral("sphere +R=") + QString::number(axis, 'g', 15);
    return ellipsoid;
}

double primeMeridianOf(const ProjSession &session, const PJ *geodetic)
{
    const proj::ProjFunctions &proj = session.functions();
    const ProjObject meridian(proj.proj_get_prime_meridian(session.context(), geodetic));
    double longitude = 0.0;
    double factor = 0.0;
    const char *unit = nullptr;
    if (meridian == nullptr
        || proj.proj_prime_meridian_get_parameters(session.context(), meridian.get(), &longitude,
                                                   &factor, &unit)
               == 0)
        return 0.0;
    const QByteArray name = unit;
    return name == "grad"
               ? longitude * 0.9
               : (name == "degree" ? longitude
                                   : longitude * factor * 180.0 / 3.14159265358979323846);
}

std::optional<ProjectionRecords> projectionRecords(const ProjSession &session, const PJ *projected,
                                                   double turn, CatalogueFailure *failure)
{
    const proj::ProjFunctions &proj = session.functions();
    const ProjObject conversion(proj.proj_crs_get_coordoperation(session.context(), projected));
    const std::vector<ProjStep> steps = stepsOf(session.projTextOf(projected));
    const QString method = conversion == nullptr ? QString() : session.methodOf(conversion.get());
    if (conversion == nullptr || steps.size() != 1) {
        refuse(failure, QStringLiteral("PROJ has no projection for the method \"%1\"").arg(method));
        return std::nullopt;
    }
    const ProjStep &step = steps.front();
    turn += missingTurn(session, projected);
    ProjectionRecords records;
    const std::vector<Axis> axes = session.axesOf(projected);
    const auto ellipsoid = ellipsoidOf(session, projected);
    const auto direction = planeDirection(step.text("axis"), axes);
    if (!ellipsoid) {
        refuse(failure, QStringLiteral("the system's ellipsoid cannot be carried"));
        return std::nullopt;
    }
    if (!direction) {
        refuse(failure, directionRefusal(step.text("axis"), axes));
        return std::nullopt;
    }
    records.ellipsoid = *ellipsoid;
    records.ellipsoid.positiveDir = *direction;
    if (isTakenForAnother(step, *direction)) {
        refuse(failure, QStringLiteral("its axes point west and south and its origin has a false "
                                       "easting or northing, where PROJ has such a Transverse "
                                       "Mercator without them only"));
        return std::nullopt;
    }
    const double scale = step.number(step.has("k") ? "k" : "k_0").value_or(1.0);
    if (scale < 0.0) {
        refuse(failure,
               QStringLiteral("its scale factor is %1, a way to turn both axes about with which "
                              "PROJ does not compute: take the same system with axes to the west "
                              "and south and a scale factor of %2, as EPSG:2048 is for Lo19")
                   .arg(QString::number(scale, 'g', 15), QString::number(0.0 - scale, 'g', 15)));
        return std::nullopt;
    }
    const std::vector<MethodValue> values = session.valuesOf(conversion.get());
    Projection &projection = records.projection;
    projection.projection_name = session.nameOf(conversion.get());
    projection.locationType = LocationType_X_Y_ElevationHeight;
    projection.loc_or_height_unit = Unit_Meter;
    projection.proj4Projection = QString::fromLatin1(step.name);
    // PROJ writes the projection of web maps for programs that know no other way to say it.
    ProjStep written = step;
    if (step.name == "merc" && step.text("nadgrids") == "@null") {
        projection.proj4Projection = QStringLiteral("webmerc");
        written.parameters.clear();
        for (const auto &parameter : step.parameters) {
            if (parameter.first == "lon_0" || parameter.first == "x_0" || parameter.first == "y_0")
                written.parameters.push_back(parameter);
        }
    }
    const bool isWritten = step.name == "utm" ? insertZone(projection, values, turn)
                                              : insertParameters(projection, written, values, turn);
    if (!isWritten) {
        refuse(
            failure,
            QStringLiteral("a parameter of the projection \"%1\" cannot be carried").arg(method));
        return std::nullopt;
    }
    if (!axes.empty()) {
        records.axisUnit = axes.front().unit;
        records.metresPerUnit = axes.front().factor;
    }
    return records;
}

} // namespace KelStd::catalogue
