#include <cli/commands/Command.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/geoids/GridText.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

QString contentOf(const GeoidModelFile &file)
{
    if (!file.fault.isEmpty())
        return QStringLiteral("not usable: ") + file.fault;
    GridFile grid;
    if (const GridFailure failure = grid.open(file.path))
        return QStringLiteral("not usable: ") + failure.text;
    const QString text = QStringLiteral("%1, latitudes %2, longitudes %3, every %4")
                             .arg(GridFile::formatName(grid.format()), latitudesText(grid),
                                  longitudesText(grid), spacingText(grid));
    return file.doubt.isEmpty() ? text : text + QStringLiteral("; doubtful: ") + file.doubt;
}

/// What is in the file that is used, where it lies, and why another of its name is not used.
QString description(const QList<GeoidModelFile> &files)
{
    const GeoidModelFile &used = files.first();
    QString text = QStringLiteral("%1; %2").arg(contentOf(used), used.folder.title);
    for (const GeoidModelFile &other : files.mid(1)) {
        if (!other.fault.isEmpty())
            text += QStringLiteral(" (that of the %1 is not usable: %2)")
                        .arg(other.folder.title, other.fault);
    }
    return text;
}

} // namespace

ExitStatus runGeoidList(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"),
        QStringLiteral("Lists the geoid models that a coordinate system can name."),
        QStringLiteral("They are the GTX and GGF grids in \"geoid_model_list\" of the "
                       "home directory;\ncopy a grid there to add a model. Where there "
                       "is none of a name, or one that is\ncut short, that of the "
                       "program directory is used."));
    if (const auto status = line.parse(arguments, console, 0))
        return *status;

    // Copies the delivered models when nothing did so before. Without PROJ there is still a list.
    const ProjEnvironment environment;
    const QStringList names = geoidModelNames();
    if (names.isEmpty()) {
        const QList<GeoidFolder> folders = geoidFolders();
        console.report(QStringLiteral("there is no geoid model in %1 or %2")
                           .arg(folders.first().directory.absolutePath(),
                                folders.last().directory.absolutePath()));
    }
    int width = 0;
    for (const QString &name : names)
        width = std::max(width, name.size());
    for (const QString &name : names) {
        const QList<GeoidModelFile> files = filesOfModel(name);
        if (!files.isEmpty())
            console.print(name.leftJustified(width) + QLatin1String("  ") + description(files));
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
