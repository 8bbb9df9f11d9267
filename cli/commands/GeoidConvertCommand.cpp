#include <cli/commands/Command.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>

#include <KelStd/grid/GridFile.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("IN.ggf OUT.gtx [--force]"),
        QStringLiteral("Turns a geoid grid in the GGF layout into a GTX file, which PROJ reads."),
        QStringLiteral(
            "A GGF file in the folder of the geoid models need not be converted: its name\n"
            "works as it is. OUT.gtx is written whole or not at all.\n"
            "\n"
            "Exit status: 0 converted, 2 usage, 3 the input is no whole GGF grid, or the\n"
            "output cannot be written, 4 converted, but standard output cannot be written."));
    line.setExamples(QStringLiteral("kelstd geoid convert model.ggf model.gtx"),
                     QStringLiteral("kelstd geoid convert model.ggf new.gtx --force"));
    line.addOption({QStringLiteral("force"), QStringLiteral("Replace a file that exists.")});
    return line;
}

} // namespace

ExitStatus runGeoidConvert(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 2))
        return *status;
    if (line.positionals().size() < 2)
        return line.refuse(QStringLiteral("IN.ggf and OUT.gtx are needed"), console);
    const QString source = onDisk(line.positionals().at(0));
    const QString target = onDisk(line.positionals().at(1));
    if (!GridFile::isGgfName(source))
        return line.refuse(QStringLiteral("%1 is no GGF file by its name").arg(source), console);
    if (!target.endsWith(QLatin1String(".gtx"))) {
        return line.refuse(
            QStringLiteral("%1 does not end in .gtx, by which PROJ knows the file").arg(target),
            console);
    }
    if (QFileInfo::exists(target) && !line.isSet(QStringLiteral("force"))) {
        console.report(QStringLiteral("%1 exists; --force replaces it").arg(target));
        return ExitStatus::Usage;
    }
    if (streams::areSameFile(source, target)) {
        console.report(QStringLiteral("cannot write %1: it is the input").arg(target));
        return ExitStatus::Environment;
    }
    // The library converts whatever numbers a header has, also those that are no places.
    GridFile grid;
    GridFailure failure = grid.open(source);
    if (!failure)
        failure = grid.completeness();
    if (failure) {
        console.report(QStringLiteral("cannot convert %1: %2").arg(source, failure.text));
        return ExitStatus::Environment;
    }
    if (!ProjLib::ConvertGeoidModelFile_GGF(source, target)) {
        console.report(QStringLiteral("cannot write %1").arg(target));
        return ExitStatus::Environment;
    }
    console.printChange(QStringLiteral("Wrote %1").arg(target));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
