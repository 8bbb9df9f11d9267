#include <KelStd/proj/ProjLib.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/FilePermissions.h>
#include <KelStd/proj/Installation.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/PrivateDirectory.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

#include <QtCore/QDir>
#include <QtCore/QObject>

#include <cmath>

namespace KelStd {

using proj::defaultContext;
using proj::LoadedProj;
using proj::WorkingDirectoryScope;

namespace {

using Kind = InitializationFailureKind;

/// Never destroyed: a host's static objects may ask in their destructors.
InitializationFailure &lastFailure()
{
    static InitializationFailure &failure = *new InitializationFailure;
    return failure;
}

/// Why the code in the library file may not run in this process, which is logged, too. Without a
/// file only the home is looked at.
InitializationFailure distrust(const QDir &home, const QString &libraryFile)
{
    const QString reason = proj::distrustOf(home, libraryFile);
    if (reason.isEmpty())
        return {};
    proj::logFailure(QObject::tr("The proj library is not loaded: %1").arg(reason), LogType_Error);
    return {Kind::Untrusted, reason};
}

InitializationFailure load(const QDir &privateDir, const QString &libraryFile)
{
    const WorkingDirectoryScope scope;
    LoadedProj &loaded = LoadedProj::instance();
    if (InitializationFailure failure = loaded.load(libraryFile))
        return failure;
    if (!loaded.setPrivateDirectory(privateDir.absolutePath())) {
        // PROJ without its resource files would compute, and compute something else.
        loaded.unload();
        return {Kind::PrivateDirectoryTooLong,
                QObject::tr("the path of %1 is too long for PROJ").arg(privateDir.absolutePath())};
    }
    return {};
}

InitializationFailure initialize()
{
    if (LoadedProj::instance().isOver())
        return {Kind::LibraryNotLoadable, QObject::tr("the process is ending")};
    const QDir home = AppConfig::getInstance().homeDir();
    if (!home.exists()) {
        return {Kind::NoHome,
                QObject::tr("the home directory %1 is no directory").arg(home.absolutePath())};
    }
    if (InitializationFailure failure = distrust(home, {}))
        return failure;
    if (InitializationFailure failure =
            proj::ensureInstalled(home, AppConfig::getInstance().binDir()))
        return failure;
    const QDir privateDir(home.absoluteFilePath(proj::privateDirectoryName()));
    const QString libraryFile = privateDir.absoluteFilePath(proj::libraryFileName());
    if (InitializationFailure failure = distrust(home, libraryFile))
        return failure;
    return load(privateDir, libraryFile);
}

} // namespace

bool ProjLib::___InitializeEnviroment()
{
    ___unloadEnviroment();
    lastFailure() = {};
    // Assigned only when all is done: what the host logs meanwhile may ask for it.
    lastFailure() = initialize();
    return !lastFailure();
}

InitializationFailure ProjLib::initializationFailure()
{
    return lastFailure();
}

void ProjLib::___unloadEnviroment()
{
    LoadedProj::instance().unload();
}

void ProjLib::test()
{
    const LoadedProj &loaded = LoadedProj::instance();
    if (!loaded.isLoaded())
        return;
    const WorkingDirectoryScope scope;

    const auto areaCreate = loaded.resolve<decltype(&::proj_area_create)>("proj_area_create");
    const auto areaSetBox = loaded.resolve<decltype(&::proj_area_set_bbox)>("proj_area_set_bbox");
    const auto areaDestroy = loaded.resolve<decltype(&::proj_area_destroy)>("proj_area_destroy");
    if (areaCreate == nullptr || areaSetBox == nullptr)
        return;
    PJ_AREA *area = areaCreate();
    areaSetBox(area, -180.0, -90.0, 180.0, 90.0);

    const proj::ProjFunctions &functions = loaded.functions();
    const proj::ProjObject transformation(functions.proj_create_crs_to_crs(
        defaultContext, "+proj=longlat +datum=WGS84 ",
        "+proj=merc +a=6378137 +b=6378137 +lat_ts=0.0 +lon_0=0.0 +x_0=0.0 +y_0=0 +k=1.0 +units=m",
        area));
    if (transformation != nullptr) {
        const PJ_COORD point{{12.0, 55.0, 0.0, 0.0}};
        const PJ_COORD result = functions.proj_trans(transformation.get(), PJ_FWD, point);
        if (result.v[0] == 1e30 || !std::isfinite(result.v[1]) || !std::isfinite(result.v[2]))
            functions.proj_errno_string(functions.proj_errno(transformation.get()));
    }
    if (areaDestroy != nullptr)
        areaDestroy(area);
}

} // namespace KelStd
