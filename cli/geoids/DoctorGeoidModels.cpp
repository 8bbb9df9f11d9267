#include <cli/geoids/DoctorGeoidModels.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/geoids/GridFile.h>

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

namespace KelStd::cli {

namespace {

bool isDelivered(const GeoidModelFile &file)
{
    return file.folder.title == geoidFolders().last().title;
}

/// What to do about a file that is not whole. `used` is the one of its name that conversions take.
QString adviceOn(const GeoidModelFile &file, const GeoidModelFile &used)
{
    if (isDelivered(file))
        return QStringLiteral("install KelStd again");
    if (used.fault.isEmpty())
        return QStringLiteral("conversions use that of the %1; 'kelstd doctor --reinstall' copies "
                              "it over this one, or remove it")
            .arg(used.folder.title);
    return QStringLiteral("copy the model there again, or remove the file");
}

/// Why a whole grid gives no heights, and what to do; nothing when it does.
GeoidModelFinding tryOut(const QString &name, const GeoidModelFile &used, bool isProjReady)
{
    QString reason;
    const auto path = findGeoidModel(name, reason);
    const QString conversion = used.path + QStringLiteral(".gtx");
    if (!path && QFileInfo(conversion).isSymLink()) {
        return {QStringLiteral("%1: %2").arg(used.path, reason),
                QStringLiteral("remove the link %1, which is not written through").arg(conversion)};
    }
    if (!path) {
        return {QStringLiteral("%1: %2").arg(used.path, reason),
                QStringLiteral("make %1 writable, and see that the disk has room")
                    .arg(QFileInfo(used.path).absolutePath())};
    }
    if (isProjReady && !geoidGridIsReadable(*path, reason))
        return {reason, QStringLiteral("copy the model there again, or remove the file")};
    return {};
}

} // namespace

QList<GeoidModelFinding> examineGeoidModels(bool isProjReady)
{
    QStringList usable;
    QList<GeoidModelFinding> problems;
    for (const QString &name : geoidModelNames()) {
        const QList<GeoidModelFile> files = filesOfModel(name);
        for (const GeoidModelFile &file : files) {
            if (!file.fault.isEmpty())
                problems += {QStringLiteral("%1: %2").arg(file.path, file.fault),
                             adviceOn(file, files.first())};
        }
        if (files.isEmpty() || !files.first().fault.isEmpty())
            continue;
        const GeoidModelFinding finding = tryOut(name, files.first(), isProjReady);
        if (finding.isProblem()) {
            problems += finding;
            continue;
        }
        usable += QStringLiteral("%1 (%2%3)")
                      .arg(name, files.first().folder.title,
                           isGgfName(name) ? QStringLiteral(", converted") : QString());
    }
    const QString text =
        usable.isEmpty() ? QStringLiteral("none") : usable.join(QLatin1String(", "));
    return QList<GeoidModelFinding>{{text, {}}} + problems;
}

} // namespace KelStd::cli
