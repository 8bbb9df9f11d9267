#include <cli/commands/Command.h>

#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>

#include <KelStd/proj/ShiftGrids.h>

namespace KelStd::cli {

namespace {

const QString forceOption = QStringLiteral("force");

ExitStatus statusOf(ShiftGridFailureKind kind)
{
    return kind == ShiftGridFailureKind::NotWritable || kind == ShiftGridFailureKind::NotReady
               ? ExitStatus::Environment
               : ExitStatus::SomeFailed;
}

} // namespace

ExitStatus runGridAdd(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("FILE [--force]"),
        QStringLiteral("Puts a grid of datum shifts where PROJ finds it."),
        QStringLiteral(
            "FILE is an NTv2 grid (.gsb) or a GeoTIFF grid (.tif). It is copied under its own\n"
            "name, by which operations of PROJ's database and PROJ strings know it, whole or\n"
            "not at all, and only where it has all that its header promises. 'kelstd grid\n"
            "list' lists the grids that are there. A geoid model belongs into the folder of\n"
            "the geoid models ('kelstd geoid list').\n"
            "\n"
            "Exit status: 0 added, or there already, 1 it is no such grid, or another one has\n"
            "the name, 2 usage, 3 no PROJ, or it cannot be written, 4 added, but standard\n"
            "output cannot be written."));
    line.setExamples(QStringLiteral("kelstd grid add shifts.gsb"),
                     QStringLiteral("kelstd grid add shifts.gsb --force"));
    line.addOption({forceOption, QStringLiteral("Replace another grid of this name.")});
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString given = line.positionals().value(0);
    if (given.isEmpty())
        return line.refuse(QStringLiteral("the FILE is missing"), console);
    // Unpacks PROJ when nothing did so before.
    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    const QString path = onDisk(given);
    const auto existing =
        line.isSet(forceOption) ? ShiftGrids::Existing::IsReplaced : ShiftGrids::Existing::IsKept;
    if (const ShiftGridFailure failure = ShiftGrids::add(path, existing)) {
        const bool isTaken = failure.kind == ShiftGridFailureKind::NameTaken;
        console.report(QStringLiteral("cannot add the grid %1: %2%3")
                           .arg(given, failure.text,
                                isTaken ? QStringLiteral("; --force replaces it") : QString()));
        return statusOf(failure.kind);
    }
    const ShiftGrids::File added = ShiftGrids::examine(path);
    console.printChange(QStringLiteral("PROJ finds the grid %1 in %2")
                            .arg(added.name, ShiftGrids::directory().absolutePath()));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
