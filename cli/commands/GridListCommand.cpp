#include <cli/commands/Command.h>

#include <cli/geoids/GridText.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/proj/ShiftGrids.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

QString sizeText(qint64 bytes)
{
    constexpr double megabyte = 1e6;
    return QStringLiteral("%1 MB").arg(static_cast<double>(bytes) / megabyte, 0, 'f', 1);
}

QString areaText(const AreaOfUse &area)
{
    return QStringLiteral("latitudes %1 to %2, longitudes %3 to %4")
        .arg(degreesText(area.south), degreesText(area.north), degreesText(area.west),
             degreesText(area.east));
}

QString contentOf(const ShiftGrids::File &file)
{
    if (file.failure)
        return QStringLiteral("not usable: ") + file.failure.text;
    QString text = ShiftGridFile::formatName(file.format);
    if (file.area)
        text += QStringLiteral(", ") + areaText(*file.area);
    if (!file.fromSystem.isEmpty() && !file.toSystem.isEmpty())
        text += QStringLiteral(", %1 to %2").arg(shown(file.fromSystem), shown(file.toSystem));
    return text + QStringLiteral(", ") + sizeText(file.size);
}

} // namespace

ExitStatus runGridList(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"),
        QStringLiteral("Lists the grids of datum shifts that PROJ finds."),
        QStringLiteral("Printed are the name, by which operations of PROJ's database and PROJ\n"
                       "strings know the grid, the format, the area, what it leads from and to\n"
                       "(where the file says so), and the size. 'kelstd grid add' adds one.\n"
                       "\n"
                       "Exit status: 0 listed, 2 usage, 3 no PROJ."));
    line.setExamples(QStringLiteral("kelstd grid list"),
                     QStringLiteral("KELSTD_HOME_DIR=other kelstd grid list"));
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    const QList<ShiftGrids::File> files = ShiftGrids::files();
    if (files.isEmpty()) {
        console.report(QStringLiteral("there is no grid of datum shifts in %1")
                           .arg(ShiftGrids::directory().absolutePath()));
    }
    int width = 0;
    for (const ShiftGrids::File &file : files)
        width = std::max(width, static_cast<int>(file.name.size()));
    for (const ShiftGrids::File &file : files)
        console.print(shown(file.name).leftJustified(width) + QLatin1String("  ")
                      + contentOf(file));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
