#include "UsedSystem.h"

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/SystemDocument.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/location/SystemDefinitions.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryFile>

namespace KelStd::python {

namespace {

QStringList describedFindings(const QList<io::DocumentFinding> &findings)
{
    QStringList texts;
    for (const io::DocumentFinding &finding : findings)
        texts += io::describedFinding(finding);
    if (findings.size() >= io::maxFindings)
        texts += QStringLiteral("there may be more");
    return texts;
}

} // namespace

void refuse(const QString &source, const QString &reason, QStringList details)
{
    throw Raised(Raise::Refused,
                 QStringLiteral("cannot use the coordinate system %1: %2").arg(source, reason),
                 std::move(details));
}

UsedSystem readSystemFile(const QString &path, const QString &source, bool isLenient)
{
    if (!QFileInfo::exists(path))
        throw Raised(Raise::NotFound, QStringLiteral("there is no file %1").arg(source));
    if (const auto failure = library::fileFailure(path))
        refuse(source, io::describedFailure(failure));
    UsedSystem system;
    system.source = source;
    QList<io::DocumentFinding> findings;
    io::DocumentFailure failure;
    raisingRefused(source,
                   [&] { io::reviewSystem(path, system.coord, system.origin, findings, failure); });
    const QStringList described = describedFindings(findings);
    if (failure)
        refuse(source, io::describedFailure(failure), described);
    if (!findings.isEmpty() && !isLenient) {
        refuse(source,
               QStringLiteral("not all of it is used as it is written; mend it, or read it all "
                              "the same with lenient=True: %1")
                   .arg(described.join(QLatin1String("; "))),
               described);
    }
    system.warnings = described;
    return system;
}

UsedSystem readSystemText(const QByteArray &document, bool isLenient)
{
    QTemporaryFile file;
    if (!file.open() || file.write(document) != document.size() || !file.flush())
        throw Raised(Raise::NotReady,
                     QStringLiteral("cannot write a temporary file: %1").arg(file.errorString()));
    return readSystemFile(file.fileName(), QStringLiteral("document"), isLenient);
}

QByteArray documentOf(const UsedSystem &system)
{
    QByteArray bytes;
    io::DocumentFailure failure;
    raisingRefused(system.source,
                   [&] { io::systemDocument(system.coord, system.origin, bytes, failure); });
    if (failure)
        refuse(system.source, io::describedFailure(failure));
    return bytes;
}

void writeSystemFile(const UsedSystem &system, const QString &path)
{
    io::DocumentFailure failure;
    raisingRefused(system.source,
                   [&] { io::writeSystem(system.coord, system.origin, path, failure); });
    if (failure) {
        throw Raised(
            Raise::Value,
            QStringLiteral("cannot write %1: %2").arg(path, io::describedFailure(failure)));
    }
}

void requireUsable(const UsedSystem &system)
{
    ConversionFailure failure;
    bool isAccepted = false;
    raisingRefused(system.source, [&] {
        const auto definitions = location::definitionsOf(system.coord, &failure);
        isAccepted = definitions && location::acceptedByProj(*definitions, &failure);
    });
    if (!isAccepted)
        refuse(system.source, failure.text);
    calibration::SiteFailure siteFailure;
    if (!calibration::SiteTransform::of(system.coord, &siteFailure))
        refuse(system.source, siteFailure.text);
}

} // namespace KelStd::python
