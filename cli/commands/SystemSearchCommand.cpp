#include <cli/commands/Command.h>

#include <cli/catalogue/CatalogueRows.h>
#include <cli/catalogue/CatalogueStatus.h>
#include <cli/catalogue/NearSystems.h>
#include <cli/catalogue/PlaceOptions.h>
#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <limits>

namespace KelStd::cli {

namespace {

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("[WORDS...] [OPTIONS]"),
        QStringLiteral("Finds coordinate systems in PROJ's database."),
        QStringLiteral(
            "Each of the words has to be in a system's name, its code or the description of\n"
            "its area, which names countries. Their order does not matter, nor do accents\n"
            "and capital letters; a word may be the beginning of a longer one, and \"utm31\"\n"
            "is \"utm 31\". Systems come best first: exact names and codes, then projected\n"
            "systems before others, then small areas before large ones.\n"
            "\n"
            "  kelstd system search mga 55\n"
            "  kelstd system search --at 5.39,52.16\n"
            "\n"
            "Printed are code, kind, name and area. 'kelstd system import CODE' makes a\n"
            "document of a projected system.\n"
            "\n"
            "Exit status: 0 done, also where nothing is found, 2 usage, 3 no PROJ or no\n"
            "database."));
    line.setExamples(QStringLiteral("kelstd system search mga 55"),
                     QStringLiteral("kelstd system search --at 5.39,52.16"));
    addPlaceOption(line, QStringLiteral("Only systems whose area contains this place: WGS84\n"
                                        "longitude, latitude [deg]."));
    addBoxOption(line);
    line.addOption({QStringLiteral("deprecated"), QStringLiteral("Deprecated systems, too.")});
    line.addOption({QStringLiteral("json"),
                    QStringLiteral("Print an object a line: code, name, kind, area (west,\n"
                                   "south, east, north [deg]), area_name, deprecated.")});
    return line;
}

} // namespace

ExitStatus runSystemSearch(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, std::numeric_limits<int>::max()))
        return *status;
    catalogue::SystemQuery query;
    query.words = line.positionals().join(QLatin1Char(' '));
    query.withDeprecated = line.isSet(QStringLiteral("deprecated"));
    constexpr int maxLength = 1000; // no name and description of an area has so many characters
    if (query.words.size() > maxLength) {
        return line.refuse(QStringLiteral("the words have more than %1 characters").arg(maxLength),
                           console);
    }
    QString mistake;
    if (!takePlace(line, query.at, mistake) || !takeBox(line, query.box, mistake))
        return line.refuse(mistake, console);

    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    catalogue::Catalogue catalogue = programCatalogue(CatalogueUse::OfOthers);
    catalogue::CatalogueFailure failure;
    const auto systems = catalogue.search(query, &failure);
    if (failure) {
        console.report(QStringLiteral("cannot search: %1").arg(failure.text));
        return statusOf(failure);
    }
    if (systems.empty())
        console.report(QStringLiteral("no coordinate system meets all of this")
                       + nearSystemHint(catalogue, query.words));
    printRows(systems, line.isSet(QStringLiteral("json")), console);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
