#include <cli/doctor/UsedGrids.h>

#include <cli/geoids/DoctorGeoidModels.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/proj/ShiftGrids.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>

namespace KelStd::cli {

namespace {

QStringList filesIn(const QString &directory)
{
    return QDir(directory).entryList(QDir::Files);
}

/// The names of the files that PROJ's archive brings; nothing where they cannot be told.
QStringList archivedNames(const ProjInspection &places)
{
    constexpr int patience = 30000; // [ms]
    const QString unpacker = ProjInspection::findUnpacker();
    if (unpacker.isEmpty())
        return {};
    QProcess list;
    list.start(unpacker, {QStringLiteral("-Z1"), places.archive()});
    if (!list.waitForFinished(patience) || list.exitCode() != 0)
        return {};
    QStringList names;
    for (const QString &path :
         QString::fromLocal8Bit(list.readAllStandardOutput()).split(QLatin1Char('\n')))
        names += path.section(QLatin1Char('/'), -1);
    return names;
}

} // namespace

UsedGrids::UsedGrids(const ProjInspection &places)
    : m_places(places), m_modelFiles(filesIn(places.geoidModels()))
{}

void UsedGrids::examine(bool isProjReady, Findings &findings) const
{
    examineModels(isProjReady, findings);
    examineShiftGrids(isProjReady, findings);
}

void UsedGrids::examineModels(bool isProjReady, Findings &findings) const
{
    for (const GeoidModelFinding &finding : examineGeoidModels(isProjReady, m_modelFiles)) {
        switch (finding.kind) {
        case GeoidModelFinding::Problem:
            findings.problem("geoid model", finding.text, finding.advice);
            break;
        case GeoidModelFinding::Doubt:
            findings.doubt("geoid model", finding.text, finding.advice);
            break;
        case GeoidModelFinding::InOrder: findings.ok("geoid models", finding.text); break;
        }
    }
}

void UsedGrids::examineShiftGrids(bool isProjReady, Findings &findings) const
{
    const char *const label = "datum-shift grids";
    if (!isProjReady) {
        findings.waiting(label);
        return;
    }
    const QStringList archived = archivedNames(m_places);
    QStringList usable;
    QList<ShiftGrids::File> spoilt;
    for (const ShiftGrids::File &file : ShiftGrids::files()) {
        const bool isDelivered = archived.contains(file.name);
        const QString owner = archived.isEmpty() ? QString()
                              : isDelivered      ? QStringLiteral(" (delivered)")
                                                 : QStringLiteral(" (the user's)");
        if (file.failure)
            spoilt += file;
        else
            usable += shown(file.name) + owner;
    }
    findings.ok(label,
                usable.isEmpty() ? QStringLiteral("none") : usable.join(QLatin1String(", ")));
    for (const ShiftGrids::File &file : spoilt) {
        findings.problem("datum-shift grid",
                         QStringLiteral("%1: %2").arg(shown(file.path), file.failure.text),
                         archived.contains(file.name)
                             ? QStringLiteral("run 'kelstd doctor --reinstall'")
                             : QStringLiteral("put a whole one there by 'kelstd grid add --force', "
                                              "or remove the file"));
    }
}

} // namespace KelStd::cli
