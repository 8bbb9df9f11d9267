#pragma once

#include "catalogue/CatalogueTest.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QLibrary>

#include <proj.h>

#include <cmath>
#include <vector>

namespace KelStd::test {

using catalogue::GroundPoint;

/// PROJ's own functions, without anything of this library between.
class BareProj
{
public:
    BareProj()
        : m_library(AppConfig::getInstance().homeDir().absoluteFilePath(
            QStringLiteral("proj/" KELSTD_PROJ_LIBRARY_NAME)))
    {
#define TAKE(name) name = reinterpret_cast<decltype(name)>(m_library.resolve(#name))
        TAKE(proj_context_create);
        TAKE(proj_context_destroy);
        TAKE(proj_log_level);
        TAKE(proj_context_set_search_paths);
        TAKE(proj_create);
        TAKE(proj_create_operations);
        TAKE(proj_create_operation_factory_context);
        TAKE(proj_operation_factory_context_destroy);
        TAKE(proj_operation_factory_context_set_spatial_criterion);
        TAKE(proj_operation_factory_context_set_crs_extent_use);
        TAKE(proj_list_get_count);
        TAKE(proj_list_get);
        TAKE(proj_list_destroy);
        TAKE(proj_get_name);
        TAKE(proj_get_source_crs);
        TAKE(proj_get_type);
        TAKE(proj_trans);
        TAKE(proj_destroy);
        TAKE(proj_crs_get_coordinate_system);
        TAKE(proj_cs_get_axis_info);
#undef TAKE
        const QByteArray share = AppConfig::getInstance()
                                     .homeDir()
                                     .absoluteFilePath(QStringLiteral("proj/share"))
                                     .toUtf8();
        const char *const path = share.constData();
        context = proj_context_create();
        proj_log_level(context, PJ_LOG_NONE);
        proj_context_set_search_paths(context, 1, &path);
        wgs84 = proj_create(context, "EPSG:4326");
        factory = proj_create_operation_factory_context(context, nullptr);
        proj_operation_factory_context_set_spatial_criterion(
            context, factory, PROJ_SPATIAL_CRITERION_PARTIAL_INTERSECTION);
        proj_operation_factory_context_set_crs_extent_use(context, factory, PJ_CRS_EXTENT_NONE);
    }
    ~BareProj()
    {
        proj_operation_factory_context_destroy(factory);
        proj_destroy(wgs84);
        proj_context_destroy(context);
    }
    BareProj(const BareProj &) = delete;
    BareProj &operator=(const BareProj &) = delete;

    /// Easting and northing [m] of a place in the system of a code or a definition, by the
    /// operation whose name has these words, or by the only one there is; false where PROJ has
    /// none.
    bool project(const QString &text, const QString &operation, const GroundPoint &place, double &e,
                 double &n) const
    {
        PJ *const system = proj_create(context, text.toUtf8().constData());
        PJ_OBJ_LIST *const list = proj_create_operations(context, wgs84, system, factory);
        const int count = proj_list_get_count(list);
        bool isFound = false;
        for (int index = 0; !isFound && index < count; ++index) {
            PJ *const candidate = proj_list_get(context, list, index);
            if (operation.isEmpty()
                    ? count == 1
                    : QString::fromUtf8(proj_get_name(candidate)).contains(operation)) {
                const PJ_COORD out = proj_trans(
                    candidate, PJ_FWD, PJ_COORD{{place.latitude, place.longitude, 0.0, HUGE_VAL}});
                isFound = std::isfinite(out.v[0]) && take(system, out, e, n);
            }
            proj_destroy(candidate);
        }
        proj_list_destroy(list);
        proj_destroy(system);
        return isFound;
    }

private:
    /// By the names and directions of the system's own axes.
    bool take(PJ *system, const PJ_COORD &out, double &e, double &n) const
    {
        // A definition with a datum shift of its own lies around the system.
        PJ *const inner = proj_get_type(system) == PJ_TYPE_BOUND_CRS
                              ? proj_get_source_crs(context, system)
                              : nullptr;
        PJ *const axes = proj_crs_get_coordinate_system(context, inner == nullptr ? system : inner);
        int eastings = 0;
        for (int index = 0; index < 2; ++index) {
            const char *name = nullptr;
            const char *direction = nullptr;
            double factor = 0.0;
            proj_cs_get_axis_info(context, axes, index, &name, nullptr, &direction, &factor,
                                  nullptr, nullptr, nullptr);
            const QByteArray way = direction;
            const bool isEasting =
                way == "east" || way == "west" || QByteArray(name).toLower().startsWith("east");
            (isEasting ? e : n) = out.v[index] * factor;
            eastings += isEasting ? 1 : 0;
        }
        proj_destroy(axes);
        proj_destroy(inner);
        return eastings == 1;
    }

    QLibrary m_library;
    PJ_CONTEXT *context = nullptr;
    PJ *wgs84 = nullptr;
    PJ_OPERATION_FACTORY_CONTEXT *factory = nullptr;
#define HAVE(name) decltype(&::name) name = nullptr
    HAVE(proj_context_create);
    HAVE(proj_context_destroy);
    HAVE(proj_log_level);
    HAVE(proj_context_set_search_paths);
    HAVE(proj_create);
    HAVE(proj_create_operations);
    HAVE(proj_create_operation_factory_context);
    HAVE(proj_operation_factory_context_destroy);
    HAVE(proj_operation_factory_context_set_spatial_criterion);
    HAVE(proj_operation_factory_context_set_crs_extent_use);
    HAVE(proj_list_get_count);
    HAVE(proj_list_get);
    HAVE(proj_list_destroy);
    HAVE(proj_get_name);
    HAVE(proj_get_source_crs);
    HAVE(proj_get_type);
    HAVE(proj_trans);
    HAVE(proj_destroy);
    HAVE(proj_crs_get_coordinate_system);
    HAVE(proj_cs_get_axis_info);
#undef HAVE
};

/// A test of every projected system of the database.
class DatabaseTest : public CatalogueTest
{
protected:
    /// The projected systems of EPSG, deprecated ones included; in a sanitized build some of them.
    std::vector<catalogue::FoundSystem> systems()
    {
        catalogue::SystemQuery query;
        query.withDeprecated = true;
        std::vector<catalogue::FoundSystem> chosen;
        std::size_t count = 0;
        for (const catalogue::FoundSystem &system : CatalogueTest::catalogue().search(query)) {
            if (system.kind == catalogue::SystemKind::Projected
                && system.code.startsWith(QLatin1String("EPSG:"))
                && count++ % KELSTD_DATABASE_STEP == 0)
                chosen.push_back(system);
        }
        return chosen;
    }
};

} // namespace KelStd::test
