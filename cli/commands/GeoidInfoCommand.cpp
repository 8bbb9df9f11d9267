#include <cli/commands/Command.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/geoids/GridText.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/Report.h>

#include <KelStd/grid/GridFile.h>
#include <KelStd/grid/ShiftGridFile.h>

namespace KelStd::cli {

namespace {

QString nodeText(const GridFile &grid, const GridFile::Node &node)
{
    if (node.row < 0)
        return QStringLiteral("none");
    return QStringLiteral("%1 m at latitude %2, longitude %3")
        .arg(node.value, 0, 'f', 3)
        .arg(degreesText(grid.nodes().latitudeOf(node.row)),
             degreesText(grid.nodes().longitudeOf(node.column)));
}

QString missingText(const GridFile &grid, qint64 missing)
{
    const qint64 all = grid.nodes().count();
    return QStringLiteral("%1 of %2 (%3 %)")
        .arg(missing)
        .arg(all)
        .arg(100.0 * static_cast<double>(missing) / static_cast<double>(all), 0, 'f', 2);
}

/// The lines that grids of all formats have.
void showNodes(const QString &format, const GridNodes &nodes, Report &report)
{
    report.value(QStringLiteral("format"), format);
    report.value(QStringLiteral("latitudes"), latitudesText(nodes));
    report.value(QStringLiteral("longitudes"), longitudesText(nodes));
    report.value(QStringLiteral("spacing"), spacingText(nodes));
    report.value(QStringLiteral("rows, columns"),
                 QStringLiteral("%1, %2").arg(nodes.rows).arg(nodes.columns));
}

/// What the headers of a GeoTIFF grid say; false where they say nothing, or not all is there.
bool showGeoTiff(const QString &file, Console &console)
{
    ShiftGridFile grid;
    if (grid.open(file))
        return false;
    Report report(console);
    report.section(QStringLiteral("Geoid grid"), file);
    const QString format = GridFile::formatName(GridFile::Format::GeoTiff);
    for (const GridNodes &nodes : grid.grids())
        showNodes(format, nodes, report);
    report.value(QStringLiteral("values"), QStringLiteral("only PROJ reads them"));
    if (grid.valuesPerNode() > 1) {
        report.value(QStringLiteral("doubtful"),
                     QStringLiteral("%1 values a node, as a grid of datum shifts has")
                         .arg(grid.valuesPerNode()));
    }
    return true;
}

} // namespace

ExitStatus runGeoidInfo(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("NAME|FILE"),
        QStringLiteral("Shows what is in a geoid grid: its extent and its values."),
        QStringLiteral(
            "NAME is a model that 'kelstd geoid list' lists and goes before a file's name;\n"
            "./FILE is always a file.\n"
            "\n"
            "A file is a grid in the GGF layout when its name ends in .ggf, and in the GTX\n"
            "layout otherwise. Of a GeoTIFF grid, whose values only PROJ reads, the place of\n"
            "its nodes is shown.\n"
            "A value of -88.8888 marks a node without one, and PROJ takes every value beyond\n"
            "1000 m for such a mark.\n"
            "\n"
            "Exit status: 0 shown, 2 usage, 3 no grid, or one that is not what its\n"
            "header says."));
    line.setPositionals({geoidModelValues(Values::Files::All)});
    line.setExamples(QStringLiteral("kelstd geoid info egm96_15.gtx"),
                     QStringLiteral("kelstd geoid info ./model.ggf"));
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString name = line.positionals().value(0);
    if (name.isEmpty())
        return line.refuse(QStringLiteral("NAME|FILE is missing"), console);

    GridFile grid;
    const QList<GeoidModels::File> models = GeoidModels::files(name);
    const QString file = models.isEmpty() ? onDisk(name) : models.first().path;
    const GridFailure fault = grid.open(file);
    if (fault.kind == GridFailureKind::OnlyForProj && showGeoTiff(file, console))
        return ExitStatus::Success;
    if (fault) {
        console.report(QStringLiteral("cannot read the geoid grid %1: %2").arg(name, fault.text));
        return ExitStatus::Environment;
    }
    GridFile::Values values;
    const GridFailure failure = grid.readValues(values);

    Report report(console);
    report.section(QStringLiteral("Geoid grid"), file);
    showNodes(GridFile::formatName(grid.format()), grid.nodes(), report);
    if (failure) {
        console.report(QStringLiteral("cannot use the geoid grid %1: %2").arg(name, failure.text));
        return ExitStatus::Environment;
    }
    report.value(QStringLiteral("lowest value"), nodeText(grid, values.lowest));
    report.value(QStringLiteral("highest value"), nodeText(grid, values.highest));
    report.value(QStringLiteral("missing values"), missingText(grid, values.missing));
    if (grid.endsInZeros())
        report.value(QStringLiteral("doubtful"), zerosText());
    return ExitStatus::Success;
}

} // namespace KelStd::cli
