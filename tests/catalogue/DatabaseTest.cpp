// Every projected system of PROJ's database.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>

#include <QtCore/QLibrary>

#include <proj.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

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

    /// Easting and northing [m] of a place by the operation whose name has these words; false where
    /// PROJ has none.
    bool project(const QString &code, const QString &operation, const GroundPoint &place, double &e,
                 double &n) const
    {
        PJ *const system = proj_create(context, code.toUtf8().constData());
        PJ_OBJ_LIST *const list = proj_create_operations(context, wgs84, system, factory);
        bool isFound = false;
        for (int index = 0; !isFound && index < proj_list_get_count(list); ++index) {
            PJ *const candidate = proj_list_get(context, list, index);
            if (QString::fromUtf8(proj_get_name(candidate)).contains(operation)) {
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
        PJ *const axes = proj_crs_get_coordinate_system(context, system);
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
    HAVE(proj_trans);
    HAVE(proj_destroy);
    HAVE(proj_crs_get_coordinate_system);
    HAVE(proj_cs_get_axis_info);
#undef HAVE
};

class WholeDatabase : public CatalogueTest
{
protected:
    /// The projected systems of EPSG, deprecated ones included; in a sanitized build some of them.
    std::vector<FoundSystem> systems()
    {
        SystemQuery query;
        query.withDeprecated = true;
        std::vector<FoundSystem> chosen;
        std::size_t count = 0;
        for (const FoundSystem &system : catalogue().search(query)) {
            if (system.kind == SystemKind::Projected
                && system.code.startsWith(QLatin1String("EPSG:"))
                && count++ % KELSTD_DATABASE_STEP == 0)
                chosen.push_back(system);
        }
        return chosen;
    }
};

TEST_F(WholeDatabase, ImportsOrIsRefusedWithItsReason)
{
    const BareProj proj;
    ImportOptions consent;
    consent.takeAsWgs84 = true;
    const std::vector<FoundSystem> all = systems();
    std::map<QString, int> words;
    int imported = 0;
    int large = 0;
    int compared = 0;
    std::size_t index = 0;
    for (const FoundSystem &system : all) {
        const std::string code = system.code.toStdString();
        ImportedSystem result = catalogue().importSystem(system.code.toUtf8());
        ++index;
        if (!result.system) {
            EXPECT_FALSE(result.refusal.text.isEmpty()) << code;
            const QString word = refusalWord(result.refusal.kind);
            ++words[word];
            // Consent helps all but those whose projection PROJ does not have.
            const ImportedSystem taken = catalogue().importSystem(system.code.toUtf8(), consent);
            EXPECT_EQ(!taken.system.has_value(), word == QLatin1String("no-projection"))
                << code << ' ' << taken.refusal.text.toStdString();
            continue;
        }
        ++imported;
        if (result.report.difference > 0.001) {
            // Explained: by the full rotation matrix, and said.
            ++large;
            EXPECT_TRUE(result.report.warnings.join(QLatin1Char(' '))
                            .contains(QLatin1String("full rotation matrix")))
                << code;
        }
        // Another way to the same operation, through the system's own axes and units.
        // PROJ leaves out what Belgium's own method has (PublishedPointsTest.cpp holds it).
        if (index % 6 != 0 || system.code == QLatin1String("EPSG:31300"))
            continue;
        LocationBuilder builder(*result.system);
        const GroundPoint at = result.report.area.centre();
        Location location;
        double e = 0.0;
        double n = 0.0;
        if (!builder.make(LocationBuilder::Frame::Wgs84Geographic,
                          Pos::fromLongLatH(at.longitude, at.latitude, 0.0), location)
            || !proj.project(system.code, result.report.shift.name, at, e, n))
            continue;
        ++compared;
        const double differs = std::hypot(location.get_NEH_E() - e, location.get_NEH_N() - n);
        // To the middle of the area, while the report's difference is that of other places.
        EXPECT_LE(differs, result.report.difference + 0.0005)
            << code << ' ' << result.report.shift.name.toStdString();
    }
    EXPECT_EQ(words[QStringLiteral("own-check")], 0);
    EXPECT_EQ(words[QStringLiteral("not-understood")], 0);
    EXPECT_EQ(words[QStringLiteral("not-projected")], 0);
    if (KELSTD_DATABASE_STEP == 1) {
        EXPECT_EQ(all.size(), 5500U);
        EXPECT_GE(imported, 4820);
        EXPECT_EQ(words[QStringLiteral("no-projection")], 33);
        EXPECT_LE(large, 112);
        EXPECT_GT(compared, 700);
    }
}

} // namespace
} // namespace KelStd::catalogue
