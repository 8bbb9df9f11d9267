#include <cli/commands/Command.h>

#include <cli/catalogue/CatalogueStatus.h>
#include <cli/catalogue/CatalogueText.h>
#include <cli/catalogue/NearSystems.h>
#include <cli/catalogue/PlaceOptions.h>
#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/catalogue/SourceArgument.h>
#include <cli/catalogue/SourceProposals.h>
#include <cli/catalogue/SystemTarget.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/catalogue/CatalogueJson.h>
#include <KelStd/catalogue/ImportedOrigin.h>

namespace KelStd::cli {

namespace {

const QString jsonOption = QStringLiteral("json");
const QString shiftOption = QStringLiteral("shift");
const QString takeOption = QStringLiteral("take-as-wgs84");
const QString fitOption = QStringLiteral("fit");

QString details()
{
    return sourceHelp()
           + QStringLiteral(
               "\n\n"
               "Without -o or --add the document goes to standard output, and the report to\n"
               "standard error. The report says which datum shift was taken, how accurate it\n"
               "is and what part of the system's area it covers; what is more accurate and\n"
               "which grid that needs; what heights refer to; and the largest difference to\n"
               "PROJ's own result by the same operation. 'kelstd grid add' puts a grid where\n"
               "PROJ finds it.\n"
               "\n"
               "A system without a datum shift, or with a ballpark one only, is refused, and\n"
               "so is one whose result misses PROJ's by more than 1 mm unexplained. Nothing is\n"
               "written then.\n"
               "\n"
               "Exit status: 0 imported, 1 refused, 2 usage or a file that exists, 3 no PROJ,\n"
               "the source cannot be read, or the document cannot be written, 4 written, but\n"
               "standard output cannot be written.");
}

CommandLine makeCommandLine()
{
    CommandLine line(QStringLiteral("SOURCE [OPTIONS]"),
                     QStringLiteral("Makes a document of a coordinate system that PROJ knows, or "
                                    "of a definition."),
                     details());
    line.setPositionals({sourceValues()});
    line.setExamples(
        QStringLiteral("kelstd system import EPSG:28992 -o rd.xml"),
        QStringLiteral("kelstd system import \"ED50 / UTM zone 31N\" --at 5.39,52.16 --add"));
    addPlaceOption(line, QStringLiteral("Where the system is used: WGS84 longitude, latitude\n"
                                        "[deg]. The datum shift is chosen for this place.\n"
                                        "Default: the centre of the system's area."));
    line.addOption({shiftOption,
                    QStringLiteral("The datum shift to take: a code (EPSG:15934) or a\n"
                                   "number of 'kelstd system shifts' (with the same --at)."),
                    QStringLiteral("CODE|NUMBER")});
    line.addOption(
        {takeOption, QStringLiteral("Take the system's cartesian coordinates as those of\n"
                                    "WGS 84 where there is no datum shift. On a classical\n"
                                    "ellipsoid this is wrong by up to a kilometre.")});
    line.addOption(
        {fitOption, QStringLiteral("Store seven parameters fitted to PROJ's result, instead\n"
                                   "of the published ones.")});
    SystemTarget::addOptions(line);
    line.addOption(
        {jsonOption, QStringLiteral("Print the report to standard output as one object; then\n"
                                    "the document is only written where -o or --add says.")});
    return line;
}

/// Tells of a refusal, and how the command ends.
ExitStatus refuse(const catalogue::ImportedSystem &imported, const QString &given,
                  const QString &hint, bool isJson, Console &console)
{
    const ExitStatus status = statusOf(imported.refusal);
    if (isJson && isRefusal(imported.refusal))
        console.write(jsonLine(imported));
    QString text = imported.refusal.text;
    if (imported.refusal.kind == catalogue::CatalogueFailureKind::NotUnderstood
        && seemsToNameAFile(given))
        text += QStringLiteral("; there is no file of this name either");
    console.report(QStringLiteral("cannot import %1: %2%3").arg(shown(given), text, hint));
    return status;
}

} // namespace

ExitStatus runSystemImport(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString given = line.positionals().value(0);
    if (given.isEmpty())
        return line.refuse(QStringLiteral("the SOURCE is missing"), console);
    catalogue::ImportOptions options;
    SystemTarget target;
    QString reason;
    if (!takePlace(line, options.at, reason) || !target.takeOptions(line, reason))
        return line.refuse(reason, console);
    options.shift = line.value(shiftOption).trimmed();
    if (line.isSet(shiftOption) && options.shift.isEmpty())
        return line.refuse(QStringLiteral("--shift is empty"), console);
    options.takeAsWgs84 = line.isSet(takeOption);
    options.fit = line.isSet(fitOption);
    const bool isJson = line.isSet(jsonOption);
    if (const auto status = target.refusal(given, console))
        return *status;
    const auto source = readSource(given, console);
    if (!source)
        return ExitStatus::Environment;

    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    catalogue::Catalogue catalogue = programCatalogue(CatalogueUse::OfImport);
    const auto imported = catalogue.importSystem(*source, options);
    if (!imported.system)
        return refuse(imported, given, nearSystemHint(catalogue, given), isJson, console);

    const Coord &coord = *imported.system;
    const SystemOrigin origin = originOf(imported.report);
    ExitStatus status = ExitStatus::Success;
    if (target.isNamed())
        status = target.put(coord, origin, line, isJson, console);
    else if (!isJson)
        status = SystemTarget::print(coord, origin, console);
    if (status != ExitStatus::Success)
        return status;
    if (isJson) {
        console.write(jsonLine(imported));
    } else {
        for (const QString &text : reportLines(imported.report))
            console.report(text);
    }
    return status;
}

} // namespace KelStd::cli
