#include <cli/commands/Command.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/geoids/GridText.h>
#include <cli/proj/HomeDirectory.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <KelStd/grid/GridFile.h>
#include <KelStd/grid/ShiftGridFile.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// Of a GeoTIFF grid, whose values PROJ alone reads.
QString geoTiffContent(const QString &path)
{
    const QString format = GridFile::formatName(GridFile::Format::GeoTiff);
    ShiftGridFile grid;
    if (grid.open(path))
        return format + QStringLiteral(", which only PROJ reads");
    const GridNodes &nodes = grid.grids().constFirst();
    return QStringLiteral("%1, latitudes %2, longitudes %3, every %4")
        .arg(format, latitudesText(nodes), longitudesText(nodes), spacingText(nodes));
}

QString contentOf(const GeoidModels::File &file)
{
    if (file.failure)
        return QStringLiteral("not usable: ") + file.failure.text;
    GridFile grid;
    const GridFailure failure = grid.open(file.path);
    if (failure.kind == GridFailureKind::OnlyForProj)
        return geoTiffContent(file.path);
    if (failure)
        return QStringLiteral("not usable: ") + failure.text;
    const QString text = QStringLiteral("%1, latitudes %2, longitudes %3, every %4")
                             .arg(GridFile::formatName(grid.format()), latitudesText(grid.nodes()),
                                  longitudesText(grid.nodes()), spacingText(grid.nodes()));
    return file.endsInZeros ? text + QStringLiteral("; doubtful: ") + zerosText() : text;
}

/// What is in the file that is used, where it lies, and why another of its name is not used.
QString description(const QList<GeoidModels::File> &files)
{
    const GeoidModels::File &used = files.first();
    QString text = QStringLiteral("%1; %2").arg(contentOf(used), titleOf(used.folder));
    for (const GeoidModels::File &other : files.mid(1)) {
        if (other.failure)
            text += QStringLiteral(" (that of the %1 is not usable: %2)")
                        .arg(titleOf(other.folder), other.failure.text);
    }
    return text;
}

} // namespace

ExitStatus runGeoidList(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"),
        QStringLiteral("Lists the geoid models that a coordinate system can name."),
        QStringLiteral(
            "They are the GTX, GGF and GeoTIFF grids in \"geoid_model_list\" of the home\n"
            "directory; copy a grid there to add a model. Where there is none of a\n"
            "name, or one that is cut short, that of the program directory is used."));
    line.setExamples(QStringLiteral("kelstd geoid list"),
                     QStringLiteral("KELSTD_HOME_DIR=other kelstd geoid list"));
    if (const auto status = line.parse(arguments, console, 0))
        return *status;

    const QString homeless = homeFailure();
    if (!homeless.isEmpty()) {
        console.report(homeless);
        return ExitStatus::Environment;
    }
    // Copies the delivered models when nothing did so before. Without PROJ there is still a list.
    const ProjEnvironment environment;
    const QStringList names = GeoidModels::names();
    if (names.isEmpty()) {
        console.report(
            QStringLiteral("there is no geoid model in %1 or %2")
                .arg(GeoidModels::directory(GeoidModels::Folder::Home).absolutePath(),
                     GeoidModels::directory(GeoidModels::Folder::Program).absolutePath()));
    }
    int width = 0;
    for (const QString &name : names)
        width = std::max(width, static_cast<int>(name.size()));
    for (const QString &name : names) {
        const QList<GeoidModels::File> files = GeoidModels::files(name);
        if (!files.isEmpty())
            console.print(name.leftJustified(width) + QLatin1String("  ") + description(files));
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
