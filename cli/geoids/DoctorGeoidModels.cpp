#include <cli/geoids/DoctorGeoidModels.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/geoids/GridText.h>

#include <KelStd/grid/GridFile.h>
#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

namespace KelStd::cli {

namespace {

bool isDelivered(const GeoidModels::File &file)
{
    return file.folder == GeoidModels::Folder::Program;
}

/// What to do about a file that is not whole. `used` is the one of its name that conversions take.
QString adviceOn(const GeoidModels::File &file, const GeoidModels::File &used)
{
    if (isDelivered(file))
        return QStringLiteral("install KelStd again");
    if (!used.failure)
        return QStringLiteral("conversions use that of the %1; 'kelstd doctor --reinstall' copies "
                              "it over this one, or remove it")
            .arg(titleOf(used.folder));
    return QStringLiteral("copy the model there again, or remove the file");
}

/// Why a whole grid gives no heights, and what to do; nothing when it does.
GeoidModelFinding tryOut(const QString &name, const GeoidModels::File &used, bool isProjReady)
{
    QString reason;
    const auto path = findGeoidModel(name, reason);
    const QFileInfo conversion(GeoidModels::conversionOf(used.path));
    if (!path && conversion.isSymLink()) {
        return {GeoidModelFinding::Problem, QStringLiteral("%1: %2").arg(used.path, reason),
                QStringLiteral("remove the link %1, which is not written through")
                    .arg(conversion.filePath())};
    }
    if (!path && conversion.exists() && !conversion.isFile()) {
        return {GeoidModelFinding::Problem, QStringLiteral("%1: %2").arg(used.path, reason),
                QStringLiteral("remove or rename %1").arg(conversion.filePath())};
    }
    if (!path) {
        return {GeoidModelFinding::Problem, QStringLiteral("%1: %2").arg(used.path, reason),
                QStringLiteral("make %1 writable, and see that the disk has room")
                    .arg(QFileInfo(used.path).absolutePath())};
    }
    if (isProjReady && !geoidGridIsReadable(*path, reason))
        return {GeoidModelFinding::Problem, reason,
                QStringLiteral("copy the model there again, or remove the file")};
    return {};
}

/// What looks wrong about a whole file; in order when nothing does. One that differs from the
/// delivered model of its name may be a better edition, but not when it ends in zeros.
GeoidModelFinding doubtOf(const GeoidModels::File &file, const QString &name,
                          const QStringList &different)
{
    if (isDelivered(file) && file.endsInZeros) {
        return {GeoidModelFinding::Doubt, QStringLiteral("%1: %2").arg(file.path, zerosText()),
                QStringLiteral("nothing, if the model is meant so; else install KelStd again")};
    }
    const QString reinstall =
        QStringLiteral("'kelstd doctor --reinstall' copies the delivered one over it");
    if (!isDelivered(file) && different.contains(name)) {
        const QString text =
            QStringLiteral("%1 differs from the delivered one of that name").arg(file.path);
        if (file.endsInZeros)
            return {GeoidModelFinding::Problem, QStringLiteral("%1: %2").arg(text, zerosText()),
                    reinstall};
        return {GeoidModelFinding::Doubt, text,
                QStringLiteral("nothing, if it is meant so; else %1").arg(reinstall)};
    }
    if (file.endsInZeros) {
        return {GeoidModelFinding::Doubt, QStringLiteral("%1: %2").arg(file.path, zerosText()),
                QStringLiteral("nothing, if the model is meant so; else copy it there again")};
    }
    return {};
}

/// Where a usable model lies, whose it is, and what was made of it.
QStringList descriptionOf(const QString &name, const GeoidModels::File &file,
                          const QStringList &different, const QStringList &before)
{
    QStringList words = {titleOf(file.folder)};
    const QString fileName = QFileInfo(file.path).fileName();
    const bool isOfDelivered =
        isDelivered(file)
        || (!different.contains(name)
            && QFileInfo::exists(QDir(ProjInspection().deliveredGeoidModels()).filePath(name)));
    words += isOfDelivered ? QStringLiteral("delivered") : QStringLiteral("the user's");
    if (!isDelivered(file) && isOfDelivered && !before.contains(fileName))
        words += QStringLiteral("copied just now");
    if (GridFile::isGgfName(name)) {
        const QString conversion = QFileInfo(GeoidModels::conversionOf(file.path)).fileName();
        words += before.contains(conversion) ? QStringLiteral("converted")
                                             : QStringLiteral("converted just now");
    }
    return words;
}

} // namespace

QList<GeoidModelFinding> examineGeoidModels(bool isProjReady, const QStringList &before)
{
    const QStringList different = ProjInspection().deliveredModels().different;
    QStringList usable;
    QList<GeoidModelFinding> problems;
    for (const QString &name : GeoidModels::names()) {
        const QList<GeoidModels::File> files = GeoidModels::files(name);
        for (const GeoidModels::File &file : files) {
            const GeoidModelFinding doubt = doubtOf(file, name, different);
            if (file.failure)
                problems += {GeoidModelFinding::Problem,
                             QStringLiteral("%1: %2").arg(file.path, file.failure.text),
                             adviceOn(file, files.first())};
            else if (doubt.kind != GeoidModelFinding::InOrder)
                problems += doubt;
        }
        if (files.isEmpty() || files.first().failure)
            continue;
        const GeoidModelFinding finding = tryOut(name, files.first(), isProjReady);
        if (finding.kind == GeoidModelFinding::Problem) {
            problems += finding;
            continue;
        }
        usable += QStringLiteral("%1 (%2)").arg(
            name, descriptionOf(name, files.first(), different, before).join(QLatin1String(", ")));
    }
    const QString text =
        usable.isEmpty() ? QStringLiteral("none") : usable.join(QLatin1String(", "));
    return QList<GeoidModelFinding>{{GeoidModelFinding::InOrder, text, {}}} + problems;
}

} // namespace KelStd::cli
