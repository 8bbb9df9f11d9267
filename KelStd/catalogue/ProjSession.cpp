#include <KelStd/catalogue/ProjSession.h>

#include <QtCore/QObject>

#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double degreesPerRadian = 180.0 / 3.14159265358979323846;

struct FactoryDeleter
{
    void operator()(PJ_OPERATION_FACTORY_CONTEXT *factory) const
    {
        proj::LoadedProj::instance().functions().proj_operation_factory_context_destroy(factory);
    }
};

/// An angle in degrees: a published number of degrees or grads stays what it is, and does not go
/// through radians.
double degrees(double value, double factor, const QString &unit)
{
    if (unit.startsWith(QLatin1String("degree")))
        return value;
    if (unit == QLatin1String("grad") || unit == QLatin1String("gon"))
        return value * 0.9;
    return value * factor * degreesPerRadian;
}

/// The parameters that are asked for by EPSG's code, under EPSG's names: a text may have the name
/// alone.
struct ParameterCode
{
    int code;
    const char *name;
};

constexpr ParameterCode parameterCodes[] = {
    {8801, "Latitude of natural origin"},
    {8802, "Longitude of natural origin"},
    {8805, "Scale factor at natural origin"},
    {8806, "False easting"},
    {8807, "False northing"},
    {8823, "Latitude of 1st standard parallel"},
    {8824, "Latitude of 2nd standard parallel"},
};

int codeOfParameter(const QString &name)
{
    for (const ParameterCode &row : parameterCodes) {
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0)
            return row.code;
    }
    return 0;
}

QString textOf(const char *text)
{
    return QString::fromUtf8(text == nullptr ? "" : text);
}

} // namespace

ProjSession::~ProjSession()
{
    beforeUnload();
}

void ProjSession::beforeUnload()
{
    m_wgs84.reset();
    m_context.reset();
}

bool ProjSession::open(CatalogueFailure *failure)
{
    const auto refuse = [failure](CatalogueFailureKind kind, const QString &text) {
        if (failure != nullptr)
            *failure = {kind, text};
        return false;
    };
    if (m_context != nullptr)
        return true;
    proj::LoadedProj &loaded = proj::LoadedProj::instance();
    if (!loaded.isLoaded())
        return refuse(CatalogueFailureKind::NotLoaded, QStringLiteral("PROJ is not loaded"));
    const auto noDatabase = [&refuse] {
        return refuse(CatalogueFailureKind::NoDatabase,
                      QStringLiteral("the PROJ that is loaded has no database of coordinate "
                                     "systems that can be asked"));
    };
    if (!proj::hasCatalogue(m_functions))
        return noDatabase();
    proj::ProjContext context(loaded.createContext());
    if (context == nullptr)
        return noDatabase();
    m_functions.proj_context_set_enable_network(context.get(), 0);
    ProjObject wgs84(m_functions.proj_create_from_database(context.get(), "EPSG", "4326",
                                                           PJ_CATEGORY_CRS, 0, nullptr));
    if (wgs84 == nullptr)
        return noDatabase();
    m_context = std::move(context);
    m_wgs84 = std::move(wgs84);
    ++m_number;
    return true;
}

const PJ *ProjSession::wgs84()
{
    return m_wgs84.get();
}

ProjObject ProjSession::fromDatabase(const QByteArray &authority, const QByteArray &code) const
{
    return ProjObject(m_functions.proj_create_from_database(
        context(), authority.constData(), code.constData(), PJ_CATEGORY_CRS, 0, nullptr));
}

ProjObject ProjSession::fromText(const QByteArray &text) const
{
    return ProjObject(m_functions.proj_create(context(), text.constData()));
}

QString ProjSession::nameOf(const PJ *object) const
{
    return textOf(m_functions.proj_get_name(object));
}

QString ProjSession::codeOf(const PJ *object) const
{
    QString authority = textOf(m_functions.proj_get_id_auth_name(object, 0));
    const QString code = textOf(m_functions.proj_get_id_code(object, 0));
    if (authority.isEmpty() || code.isEmpty())
        return {};
    // PROJ says of the inverse of an operation, or of one whose file's name it has exchanged,
    // "INVERSE(EPSG)" and "DERIVED_FROM(EPSG)".
    while (authority.endsWith(QLatin1Char(')')))
        authority = authority.mid(authority.indexOf(QLatin1Char('(')) + 1).chopped(1);
    return authority + QLatin1Char(':') + code;
}

SystemArea ProjSession::areaOf(const PJ *object) const
{
    SystemArea area;
    const char *name = nullptr;
    // PROJ has -1000 for what is not known.
    area.isKnown = m_functions.proj_get_area_of_use(context(), object, &area.west, &area.south,
                                                    &area.east, &area.north, &name)
                       != 0
                   && area.west >= -180.0 && area.east >= -180.0 && area.south >= -90.0;
    if (!area.isKnown)
        area = SystemArea();
    area.name = textOf(name);
    return area;
}

ProjObject ProjSession::geodeticOf(const PJ *crs) const
{
    return ProjObject(m_functions.proj_crs_get_geodetic_crs(context(), crs));
}

std::vector<Axis> ProjSession::axesOf(const PJ *crs) const
{
    std::vector<Axis> axes;
    const ProjObject system(m_functions.proj_crs_get_coordinate_system(context(), crs));
    if (system == nullptr)
        return axes;
    const int count = m_functions.proj_cs_get_axis_count(context(), system.get());
    for (int index = 0; index < count; ++index) {
        const char *name = nullptr;
        const char *direction = nullptr;
        const char *unit = nullptr;
        Axis axis;
        if (m_functions.proj_cs_get_axis_info(context(), system.get(), index, &name, nullptr,
                                              &direction, &axis.factor, &unit, nullptr, nullptr)
            == 0)
            continue;
        axis.name = textOf(name);
        axis.direction = textOf(direction);
        axis.unit = textOf(unit);
        axes.push_back(axis);
    }
    return axes;
}

std::vector<MethodValue> ProjSession::valuesOf(const PJ *operation) const
{
    std::vector<MethodValue> values;
    const int count = m_functions.proj_coordoperation_get_param_count(context(), operation);
    for (int index = 0; index < count; ++index) {
        const char *name = nullptr;
        const char *code = nullptr;
        const char *text = nullptr;
        const char *unit = nullptr;
        const char *category = nullptr;
        double value = 0.0;
        double factor = 1.0;
        if (m_functions.proj_coordoperation_get_param(context(), operation, index, &name, nullptr,
                                                      &code, &value, &text, &factor, &unit, nullptr,
                                                      nullptr, &category)
            == 0)
            continue;
        MethodValue row;
        row.name = textOf(name);
        row.code = textOf(code).toInt();
        if (row.code == 0)
            row.code = codeOfParameter(row.name);
        const QByteArray kind(category == nullptr ? "" : category);
        row.isLength = kind == "linear";
        row.isAngle = kind == "angular";
        row.unit = {textOf(unit), factor};
        row.value = row.isAngle ? degrees(value, factor, textOf(unit)) : value * factor;
        values.push_back(row);
    }
    return values;
}

QString ProjSession::methodOf(const PJ *operation) const
{
    const char *name = nullptr;
    m_functions.proj_coordoperation_get_method_info(context(), operation, &name, nullptr, nullptr);
    return textOf(name);
}

QByteArray ProjSession::pipelineOf(const PJ *operation) const
{
    return m_functions.proj_as_proj_string(context(), operation, PJ_PROJ_5, nullptr);
}

QByteArray ProjSession::projTextOf(const PJ *crs) const
{
    return m_functions.proj_as_proj_string(context(), crs, PJ_PROJ_4, nullptr);
}

ObjectList ProjSession::operations(const PJ *from, const PJ *to, bool throughOthers) const
{
    const std::unique_ptr<PJ_OPERATION_FACTORY_CONTEXT, FactoryDeleter> factory(
        m_functions.proj_create_operation_factory_context(context(), nullptr));
    if (factory == nullptr)
        return nullptr;
    m_functions.proj_operation_factory_context_set_spatial_criterion(
        context(), factory.get(), PROJ_SPATIAL_CRITERION_PARTIAL_INTERSECTION);
    m_functions.proj_operation_factory_context_set_grid_availability_use(
        context(), factory.get(), PROJ_GRID_AVAILABILITY_IGNORED);
    m_functions.proj_operation_factory_context_set_crs_extent_use(context(), factory.get(),
                                                                  PJ_CRS_EXTENT_NONE);
    m_functions.proj_operation_factory_context_set_allow_ballpark_transformations(context(),
                                                                                  factory.get(), 0);
    m_functions.proj_operation_factory_context_set_allow_use_intermediate_crs(
        context(), factory.get(),
        throughOthers ? PROJ_INTERMEDIATE_CRS_USE_IF_NO_DIRECT_TRANSFORMATION
                      : PROJ_INTERMEDIATE_CRS_USE_NEVER);
    return ObjectList(m_functions.proj_create_operations(context(), from, to, factory.get()));
}

int ProjSession::countOf(const ObjectList &list) const
{
    return list == nullptr ? 0 : m_functions.proj_list_get_count(list.get());
}

ProjObject ProjSession::elementOf(const ObjectList &list, int index) const
{
    return ProjObject(m_functions.proj_list_get(context(), list.get(), index));
}

} // namespace KelStd::catalogue
