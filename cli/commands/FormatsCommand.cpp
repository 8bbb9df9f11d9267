#include <cli/commands/Command.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/vector/FileOutput.h>
#include <cli/vector/VectorFormats.h>
#include <cli/vector/VectorModule.h>

namespace KelStd::cli {

ExitStatus runFormats(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"),
        QStringLiteral("Prints which files of positions are read and written."),
        QStringLiteral(
            "Vector files are read by GDAL, and .gpkg and .shp are written by it. Where the\n"
            "program was built without GDAL, or it cannot be loaded, the reason stands in\n"
            "place of the formats; lists of positions as text, .kml, .gpx and .dxf need none.\n"
            "\n"
            "Exit status: 0 printed, 2 usage, 3 output that cannot be written."));
    line.setExamples(QStringLiteral("kelstd formats"),
                     QStringLiteral("kelstd formats | grep Written"));
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    const QString release = vector::gdalRelease();
    console.print(
        QStringLiteral("GDAL: %1").arg(release.isEmpty() ? QStringLiteral("none") : release));
    console.print(QStringLiteral("Read: positions as text, %1").arg(vector::readFormatNames()));
    console.print(QStringLiteral("Written: %1%2")
                      .arg(vector::FileOutput::extensions(),
                           release.isEmpty() ? QStringLiteral("; not .gpkg and .shp") : QString()));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
