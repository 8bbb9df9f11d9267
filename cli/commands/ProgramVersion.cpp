#include <cli/commands/ProgramVersion.h>

#include <cli/proj/HomeDirectory.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/vector/VectorModule.h>

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QtGlobal>

namespace KelStd::cli {

namespace {

struct ProjReleases
{
    QString proj;
    QString database;
};

ProjReleases projReleases()
{
    const QString none = QStringLiteral("none");
    if (const auto problem = homeProblem())
        return {QStringLiteral("%1 (%2)").arg(none, problem->text), none};
    const ProjEnvironment environment;
    if (!environment.isReady())
        return {QStringLiteral("%1 (%2)").arg(none, environment.failure()), none};
    const ProjInspection places;
    const QString release = ProjInspection::release(places.libraryFile());
    const QString database = catalogue::Catalogue().databaseVersion();
    return {release, database.isEmpty() ? none : database};
}

} // namespace

QStringList versionLines()
{
    const QString gdal = vector::gdalRelease(); // its PROJ has to be loaded before ours
    const ProjReleases releases = projReleases();
    return {QStringLiteral("kelstd " KELSTD_VERSION),
            QStringLiteral("Qt: %1").arg(QLatin1String(qVersion())),
            QStringLiteral("PROJ: %1").arg(releases.proj),
            QStringLiteral("PROJ database: %1").arg(releases.database),
            QStringLiteral("GDAL: %1").arg(gdal.isEmpty() ? QStringLiteral("none") : gdal)};
}

} // namespace KelStd::cli
