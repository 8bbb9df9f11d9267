#include <cli/systems/SystemChoice.h>

#include <cli/catalogue/LastResort.h>
#include <cli/library/DirectoryOption.h>
#include <cli/library/UnknownName.h>
#include <cli/systems/SystemFile.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/SystemLookup.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

/// Whether a file keeps a name from meaning a system of the library.
bool isFile(const QString &given)
{
    return QFileInfo(onDisk(given)).exists() && !QFileInfo(onDisk(given)).isDir();
}

/// Slashes say nothing: the names of systems are full of them ("WGS 84 / UTM zone 31N").
bool meansFile(const QString &given)
{
    return isFile(given) || given.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive)
           || QDir::isAbsolutePath(onDisk(given)) || given.startsWith(QLatin1String("./"))
           || given.startsWith(QLatin1String("../"));
}

bool cannotRead(const QString &given, const QString &reason, Console &console)
{
    console.report(QStringLiteral("cannot read the coordinate system %1: %2").arg(given, reason));
    return false;
}

LibraryFailure loadSystems(const LibraryDirectory &library)
{
    return library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard});
}

enum class Lookup
{
    Found,
    Missing,
    Failed ///< after a report
};

Lookup failedAfterReport(const QString &given, const QString &reason, Console &console)
{
    cannotRead(given, reason, console);
    return Lookup::Failed;
}

/// Reads the system that was found from the file that it came from.
Lookup readMatch(const LibraryDirectory &library, const library::SystemLookup &lookup,
                 ChosenSystem &chosen, Console &console)
{
    if (lookup.failure)
        return failedAfterReport(lookup.subject, shown(lookup.failure.text), console);
    if (!lookup.match)
        return Lookup::Missing;
    const library::SystemMatch &match = *lookup.match;
    chosen.review.file = library::documentsHolding(library, match.kind, match.name).value(0);
    QString reason;
    if (const auto failure = library::fileFailure(chosen.review.file))
        reason = io::describedFailure(failure);
    else if (readSystem(chosen.review.file, chosen.coord, chosen.origin, chosen.review.findings,
                        reason))
        return Lookup::Found;
    return failedAfterReport(match.name, reason, console); // another program has changed it since
}

/// The system that has this code, custom before standard.
Lookup lookUpCode(const LibraryDirectory &library, const QString &given, ChosenSystem &chosen,
                  Console &console)
{
    const library::SystemLookup found = library::systemOfCode(library, given);
    const Lookup lookup = readMatch(library, found, chosen, console);
    if (lookup != Lookup::Found)
        return lookup;
    const QString remark = library::remarkOn(*found.match, given);
    if (!remark.isEmpty())
        console.report(QStringLiteral("note: %1").arg(shown(remark)));
    return lookup;
}

/// The system of exactly this name, which may be a code, too, that means another one.
Lookup lookUpNameAside(const LibraryDirectory &library, const QString &given, ChosenSystem &chosen,
                       Console &console)
{
    const Lookup lookup =
        readMatch(library, library::systemOfName(library, given), chosen, console);
    const QString code = library::codeMeantBy(given);
    if (lookup == Lookup::Found && !code.isEmpty()
        && chosen.origin.fullCode().compare(code, Qt::CaseInsensitive) != 0) {
        console.report(QStringLiteral("note: %1 is the system of this name of the library, which "
                                      "is not known to be %2")
                           .arg(shown(given), shown(code)));
    }
    return lookup;
}

/// Says that a system was passed over whose name is the code of another one, which was taken.
void notePassedOver(const LibraryDirectory &library, const QString &code, Console &console)
{
    if (loadSystems(library))
        return;
    for (const RecordKind kind : library::kindsHolding(code, library::systemKinds())) {
        if (library::originOf(kind, code).fullCode().compare(code, Qt::CaseInsensitive) != 0) {
            console.report(QStringLiteral("note: %1 is taken as a code; the %2 of this name is "
                                          "not known to have it")
                               .arg(shown(code), library::titleOf(kind)));
        }
    }
}

/// What a text that names no file may mean, in the order in which it is tried. A further meaning is
/// a further row.
using Meaning = Lookup (*)(const LibraryDirectory &, const QString &, ChosenSystem &, Console &);
constexpr Meaning meaningsOfName[] = {&lookUpNameAside, &lookUpCode};
constexpr Meaning meaningsOfCode[] = {&lookUpCode, &lookUpNameAside};

Lookup lookUp(const LibraryDirectory &library, const QString &given, ChosenSystem &chosen,
              Console &console)
{
    Lookup lookup = Lookup::Missing;
    for (const auto meaning :
         library::codeOfForm(given).isEmpty() ? meaningsOfName : meaningsOfCode) {
        if (lookup == Lookup::Missing)
            lookup = meaning(library, given, chosen, console);
    }
    return lookup;
}

/// What to say of a system of the library that a file of the same name hides; empty for none.
QString hiddenBy(const QString &fileName, const LibraryDirectory &library)
{
    const bool isHidden =
        !loadSystems(library) && !library::kindsHolding(fileName, library::systemKinds()).isEmpty();
    return isHidden
               ? QStringLiteral("; the library has a system of this name, which the file hides")
               : QString();
}

/// Imports what no document has; nothing where nothing is meant by it, of which `tried` has more.
/// Otherwise whether there is a system now, after a report where there is none.
std::optional<bool> importInstead(const QString &given, ChosenSystem &chosen, Console &console,
                                  LastResort *tried = nullptr)
{
    LastResort imported = importAsLastResort(given, console);
    if (tried != nullptr)
        *tried = imported;
    if (!imported.system)
        return imported.isReported ? std::optional(false) : std::nullopt;
    chosen = {*imported.system, imported.origin, {given, {}}};
    return true;
}

/// Reads what looks like a file. A mistyped one makes no library, but a system of the library that
/// is there may be called like a file.
bool readFile(const QString &given, const LibraryDirectory &library, ChosenSystem &chosen,
              Console &console)
{
    QString reason;
    chosen.review.file = given;
    if (readSystem(onDisk(given), chosen.coord, chosen.origin, chosen.review.findings, reason))
        return true;
    chosen = {};
    if (isFile(given)) {
        if (const auto isImported = importInstead(given, chosen, console))
            return *isImported;
    }
    if (!library.holdsLibrary())
        return cannotRead(given, reason, console);
    if (isFile(given))
        return cannotRead(given, reason + hiddenBy(given, library), console);
    const Lookup lookup = lookUp(library, given, chosen, console);
    return lookup == Lookup::Found
           || (lookup == Lookup::Missing && cannotRead(given, reason, console));
}

bool choose(const QString &given, const CommandLine &line, ChosenSystem &chosen, Console &console)
{
    // One that is named must be there, also where a file is read.
    if (namesLibrary(line) && !openLibrary(line, Missing::IsAnError, console))
        return false;
    if (meansFile(given))
        return readFile(given, chosenDirectory(line), chosen, console);

    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library)
        return cannotRead(given,
                          QStringLiteral("there is no such file, and no library to look it up in"),
                          console);
    // PROJ's system of a code goes before a record that is merely called so.
    const bool isCode = !library::codeOfForm(given).isEmpty();
    Lookup lookup = isCode ? lookUpCode(*library, given, chosen, console)
                           : lookUp(*library, given, chosen, console);
    LastResort tried;
    if (lookup == Lookup::Missing && !QFileInfo(onDisk(given)).isDir()) {
        if (const auto isImported = importInstead(given, chosen, console, &tried))
            lookup = *isImported ? Lookup::Found : Lookup::Failed;
    }
    if (isCode && lookup == Lookup::Found)
        notePassedOver(*library, given, console);
    if (isCode && lookup == Lookup::Missing)
        lookup = lookUpNameAside(*library, given, chosen, console);
    if (lookup != Lookup::Missing)
        return lookup == Lookup::Found;
    if (QFileInfo(onDisk(given)).isDir())
        return cannotRead(given, QStringLiteral("it is a directory"), console);
    loadSystems(*library); // for the hint
    QList<QPair<QString, QString>> elsewhere;
    for (const NearSystem &system : tried.near)
        elsewhere += {system.name, system.text()};
    console.report(QStringLiteral("there is no file %1, %2and ")
                       .arg(given, tried.isUnknownCode
                                       ? QStringLiteral("PROJ's database has no such code, ")
                                       : QString())
                   + unknownName(given, library::systemKinds(), line, elsewhere));
    return false;
}

} // namespace

QString systemChoiceHelp()
{
    return QStringLiteral("FILE.xml is a coordinate system's document. NAME is a system of the "
                          "library,\nby its exact name or its code (EPSG:28992 or 28992), custom "
                          "before standard;\n'kelstd library list' lists them. A file that exists "
                          "comes before a system of\nits name, and a code before a system that is "
                          "called so. What is neither is\nimported where PROJ knows it, as 'kelstd "
                          "system import' does it: a code, a\nsystem's name, or a file with WKT, "
                          "PROJJSON or a PROJ string.");
}

std::optional<ChosenSystem> readChosenSystem(const QString &given, const CommandLine &line,
                                             Console &console)
{
    ChosenSystem chosen;
    if (!choose(given, line, chosen, console))
        return std::nullopt;
    return chosen;
}

bool canBeUsed(const Coord &coord, const RecordReview &review, const QString &name,
               const CommandLine &line, Console &console)
{
    QString reason;
    const auto definitions = definitionsOf(coord, reason);
    // Where nothing can be converted, only the reason is reported.
    if (definitions && !mayBeUsed(review, line, console))
        return false;
    if (definitions && acceptedByProj(*definitions, reason))
        return true;
    console.report(QStringLiteral("cannot use the coordinate system %1: %2").arg(name, reason));
    return false;
}

} // namespace KelStd::cli
