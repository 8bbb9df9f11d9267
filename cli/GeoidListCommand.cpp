#include <cli/Command.h>

#include <cli/CommandLine.h>
#include <cli/Console.h>
#include <cli/GeoidModel.h>
#include <cli/GridText.h>
#include <cli/ProjEnvironment.h>

#include <QtCore/QDirIterator>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// The names of the models: the grid files of the folder and of those below it.
QStringList modelNames(const QDir &folder)
{
    QStringList names;
    QDirIterator files(folder.absolutePath(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString name = folder.relativeFilePath(files.next());
        if (isGgfName(name) || name.endsWith(QLatin1String(".gtx"), Qt::CaseInsensitive))
            names += name;
    }
    names.sort();
    // What a GGF grid was converted to is not another model.
    const QStringList all = names;
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&all](const QString &name) {
                                   const QString source = name.left(name.lastIndexOf(u'.'));
                                   return isGgfName(source) && all.contains(source);
                               }),
                names.end());
    return names;
}

QString description(const QString &path)
{
    GridFile grid;
    QString reason;
    if (!grid.open(path, reason) || !grid.isComplete(reason))
        return QStringLiteral("not usable: ") + reason;
    return QStringLiteral("%1, latitudes %2, longitudes %3, every %4")
        .arg(formatName(grid.format()), latitudesText(grid), longitudesText(grid),
             spacingText(grid));
}

} // namespace

ExitStatus runGeoidList(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS]"),
                     QStringLiteral("Lists the geoid models that a coordinate system can name."),
                     QStringLiteral("They are the GTX and GGF grids in \"geoid_model_list\" of the "
                                    "home directory;\ncopy a grid there to add a model."));
    if (const auto status = line.parse(arguments, console, 0))
        return *status;

    // Copies the delivered models when nothing did so before. Without PROJ there is still a list.
    const ProjEnvironment environment;
    const QDir folder = geoidModelDirectory();
    const QStringList names = modelNames(folder);
    if (names.isEmpty())
        console.report(QStringLiteral("there is no geoid model in %1").arg(folder.absolutePath()));
    int width = 0;
    for (const QString &name : names)
        width = std::max(width, name.size());
    for (const QString &name : names) {
        console.print(name.leftJustified(width) + QLatin1String("  ")
                      + description(folder.absoluteFilePath(name)));
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
