#include <cli/commands/ProgramVersion.h>

#include <cli/proj/HomeDirectory.h>
#include <cli/proj/ProjEnvironment.h>

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
    const ProjInspection places;
    if (places.markerState() != ProjInspection::MarkerState::Current) {
        return {QStringLiteral("%1 (not unpacked in %2; 'kelstd doctor' does it)")
                    .arg(none, places.home().path()),
                none};
    }
    const ProjEnvironment environment;
    if (!environment.isReady())
        return {QStringLiteral("%1 (%2)").arg(none, environment.failure()), none};
    const QString release = ProjInspection::release(places.libraryFile());
    const QString database = catalogue::Catalogue().databaseVersion();
    return {release, database.isEmpty() ? none : database};
}

} // namespace

QStringList versionLines()
{
    const ProjReleases releases = projReleases();
    return {QStringLiteral("kelstd " KELSTD_VERSION),
            QStringLiteral("Qt: %1").arg(QLatin1String(qVersion())),
            QStringLiteral("PROJ: %1").arg(releases.proj),
            QStringLiteral("PROJ database: %1").arg(releases.database)};
}

} // namespace KelStd::cli
