#include <cli/systems/SystemFile.h>

#include <cli/terminal/WithoutRaising.h>

#include <KelStd/io/DocumentLimits.h>

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

bool readSystem(const QString &fileName, Coord &coord, SystemOrigin &origin,
                QList<io::DocumentFinding> &findings, QString &reason)
{
    if (QFileInfo(fileName).isDir()) {
        reason = QStringLiteral("it is a directory");
        return false;
    }
    io::DocumentFailure failure;
    if (!withoutRaising([&] { io::reviewSystem(fileName, coord, origin, findings, failure); },
                        reason))
        return false;
    if (failure)
        reason = reasonOf(failure, findings);
    return !failure;
}

std::optional<location::SystemDefinitions> definitionsOf(const Coord &coord, QString &reason)
{
    std::optional<location::SystemDefinitions> definitions;
    ConversionFailure failure;
    if (!withoutRaising([&] { definitions = location::definitionsOf(coord, &failure); }, reason))
        return std::nullopt;
    if (!definitions)
        reason = failure.text;
    return definitions;
}

bool acceptedByProj(const location::SystemDefinitions &definitions, QString &reason)
{
    ConversionFailure failure;
    if (location::acceptedByProj(definitions, &failure))
        return true;
    reason = QStringLiteral("%1 (with the environment variable PROJ_DEBUG=1 it says why)")
                 .arg(failure.text);
    return false;
}

} // namespace KelStd::cli
