#include <cli/systems/SystemFile.h>

#include <cli/terminal/WithoutRaising.h>

#include <KelStd/io/DocumentLimits.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QStringList>

namespace KelStd::cli {

namespace {

/// Which elements lack the version without which they are not read, or nothing.
QString missingVersions(const QList<io::DocumentFinding> &findings)
{
    constexpr int maxNamed = 8;
    QStringList named;
    for (const io::DocumentFinding &finding : findings) {
        if (finding.kind == io::FindingKind::WrongVersion && named.size() < maxNamed)
            named += io::describedFinding(finding);
    }
    return named.join(QStringLiteral("; "));
}

QString reasonOf(const io::DocumentFailure &failure, const QList<io::DocumentFinding> &findings)
{
    QString described = io::describedFailure(failure);
    switch (failure.kind) {
    case io::DocumentFault::CannotBeOpened:
    case io::DocumentFault::Empty:
    case io::DocumentFault::TooLarge:
    case io::DocumentFault::MissingElement: return described;
    case io::DocumentFault::OtherVersion: {
        const QString versions = missingVersions(findings);
        if (!versions.isEmpty())
            described = versions;
        break;
    }
    default: break;
    }
    return QStringLiteral("it is no coordinate-system document of version 1 (%1)").arg(described);
}

} // namespace

bool readSystem(const QString &fileName, Coord &coord, QList<io::DocumentFinding> &findings,
                QString &reason)
{
    if (QFileInfo(fileName).isDir()) {
        reason = QStringLiteral("it is a directory");
        return false;
    }
    io::DocumentFailure failure;
    if (!withoutRaising([&] { io::reviewCoord(fileName, coord, findings, failure); }, reason))
        return false;
    if (failure)
        reason = reasonOf(failure, findings);
    return !failure;
}

std::optional<SystemDefinitions> definitionsOf(const Coord &coord, QString &reason)
{
    constexpr std::size_t bufferSize = 512; // what `__MakeCoordStrings` fills
    char wgs84Geographic[bufferSize] = {};
    char wgs84Cartesian[bufferSize] = {};
    char localGeographic[bufferSize] = {};
    char localProjected[bufferSize] = {};
    if (!withoutRaising(
            [&] {
                Coord::__MakeCoordStrings(nullptr, &coord, wgs84Geographic, wgs84Cartesian,
                                          localGeographic, localProjected);
            },
            reason))
        return std::nullopt;
    if (localGeographic[0] == '\0' || localProjected[0] == '\0') {
        reason = QStringLiteral("its PROJ definition is longer than %1 bytes").arg(bufferSize - 1);
        return std::nullopt;
    }
    return SystemDefinitions{QString::fromUtf8(wgs84Geographic), QString::fromUtf8(wgs84Cartesian),
                             QString::fromUtf8(localGeographic), QString::fromUtf8(localProjected)};
}

bool acceptedByProj(const SystemDefinitions &definitions, QString &reason)
{
    // Converting no position creates the transformation, and nothing more.
    QList<Pos> none;
    QString text;
    QString refused;
    if (!ProjLib::ConvertPosList(definitions.wgs84Cartesian, definitions.localGeographic, none,
                                 ProjLib::WGS84XYZ_to_LocalLatLongH, &text))
        refused = definitions.localGeographic;
    else if (!ProjLib::ConvertPosList(definitions.localGeographic, definitions.localProjected, none,
                                      ProjLib::LocalLatLongH_to_LocalNEH, &text))
        refused = definitions.localProjected;
    if (refused.isEmpty())
        return true;
    reason = QStringLiteral("PROJ refuses its definition \"%1\" (with the environment variable "
                            "PROJ_DEBUG=1 it says why)")
                 .arg(refused);
    return false;
}

} // namespace KelStd::cli
