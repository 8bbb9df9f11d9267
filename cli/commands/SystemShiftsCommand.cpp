#include <cli/commands/Command.h>

#include <cli/catalogue/CatalogueRows.h>
#include <cli/catalogue/CatalogueStatus.h>
#include <cli/catalogue/NearSystems.h>
#include <cli/catalogue/PlaceOptions.h>
#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/catalogue/SourceArgument.h>
#include <cli/catalogue/SourceProposals.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

namespace KelStd::cli {

namespace {

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("SOURCE [OPTIONS]"),
        QStringLiteral(
            "Lists the datum shifts between a coordinate system and WGS 84, best first."),
        sourceHelp()
            + QStringLiteral(
                "\n\n"
                "Printed are the number and the code, by which 'kelstd system import --shift'\n"
                "takes a shift; the kind: none, three or seven parameters, grid, or other;\n"
                "the accuracy; the share of the system's area that it covers; the name, and\n"
                "what it needs. Ballpark ones are left out.\n"
                "\n"
                "Exit status: 0 listed, 1 the source is not understood, 2 usage, 3 no PROJ, no\n"
                "database, or the source cannot be read."));
    line.setPositionals({sourceValues()});
    line.setExamples(
        QStringLiteral("kelstd system shifts EPSG:28992"),
        QStringLiteral("kelstd system shifts \"ED50 / UTM zone 31N\" --at 5.39,52.16"));
    addPlaceOption(line, QStringLiteral("Those first that contain this place: WGS84 longitude,\n"
                                        "latitude [deg]. Default: the centre of the system's\n"
                                        "area."));
    line.addOption({QStringLiteral("json"),
                    QStringLiteral("Print an object a line: number, code, name, kind,\n"
                                   "accuracy_m, coverage (0 to 1), grids, available.")});
    return line;
}

} // namespace

ExitStatus runSystemShifts(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString given = line.positionals().value(0);
    std::optional<catalogue::GroundPoint> at;
    QString reason;
    if (given.isEmpty())
        return line.refuse(QStringLiteral("the SOURCE is missing"), console);
    if (!takePlace(line, at, reason))
        return line.refuse(reason, console);
    const auto source = readSource(given, console);
    if (!source)
        return ExitStatus::Environment;
    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    catalogue::Catalogue catalogue = programCatalogue(CatalogueUse::OfOthers);
    catalogue::CatalogueFailure failure;
    const auto shifts = catalogue.datumShifts(*source, at, &failure);
    if (!shifts) {
        console.report(QStringLiteral("cannot list datum shifts of %1: %2%3")
                           .arg(shown(given), failure.text, nearSystemHint(catalogue, given)));
        return statusOf(failure);
    }
    if (shifts->shifts.empty()) {
        console.report(QStringLiteral("PROJ knows no datum shift between %1 and WGS 84")
                           .arg(shown(shifts->system.name)));
    }
    printRows(shifts->shifts, line.isSet(QStringLiteral("json")), console);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
