#include <cli/systems/SystemChoice.h>

#include <cli/catalogue/LastResort.h>
#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryDocument.h>
#include <cli/library/LibraryEntry.h>
#include <cli/systems/SystemFile.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

/// The custom systems hide standard ones of their name, and are few.
const QList<RecordKind> systemKinds = {RecordKind::Custom, RecordKind::Standard};

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

enum class Lookup
{
    Found,
    Missing,
    Failed ///< after a report
};

/// Looks for the system of a name, which is then in the registry, and reads the file that it came
/// from.
Lookup lookUp(const LibraryDirectory &library, const QString &given, ChosenSystem &chosen,
              Console &console)
{
    const QString name = library::withoutMarks(given);
    const auto fail = [&](const QString &reason) {
        cannotRead(name, reason, console);
        return Lookup::Failed;
    };
    QString reason;
    for (const RecordKind kind : systemKinds) {
        if (const auto failure = library::loadPlaces(library, {library::placeOf(kind)}))
            return fail(failure.text);
        if (!library::find(kind, name))
            continue;
        const QString several = ambiguity(library, kind, name);
        if (!several.isEmpty())
            return fail(several);
        chosen.review.file = documentsHolding(library, kind, name).value(0);
        const auto records =
            reviewedRecordsIn(chosen.review.file, kind, chosen.review.findings, reason);
        if (!records)
            return fail(reason); // another program has changed it since
        chosen.coord = std::get<Coord>(records->constFirst());
        return Lookup::Found;
    }
    return Lookup::Missing;
}

/// What to say of a system of the library that a file of the same name hides; empty for none.
QString hiddenBy(const QString &fileName, const LibraryDirectory &library)
{
    const bool isHidden =
        !library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard})
        && !kindsHolding(fileName, systemKinds).isEmpty();
    return isHidden
               ? QStringLiteral("; the library has a system of this name, which the file hides")
               : QString();
}

/// Imports what no document has; nothing where nothing is meant by it. Otherwise whether there is a
/// system now, after a report where there is none.
std::optional<bool> importInstead(const QString &given, ChosenSystem &chosen, Console &console)
{
    LastResort imported = importAsLastResort(given, console);
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
    if (readSystem(onDisk(given), chosen.coord, chosen.review.findings, reason))
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
    const Lookup lookup = lookUp(*library, given, chosen, console);
    if (lookup != Lookup::Missing)
        return lookup == Lookup::Found;
    if (QFileInfo(onDisk(given)).isDir())
        return cannotRead(given, QStringLiteral("it is a directory"), console);
    if (const auto isImported = importInstead(given, chosen, console))
        return *isImported;
    library::loadPlaces(*library, {LibraryPlace::Custom, LibraryPlace::Standard}); // for the hint
    console.report(QStringLiteral("there is no file %1, and ").arg(given)
                   + unknownName(given, systemKinds, line));
    return false;
}

} // namespace

QString systemChoiceHelp()
{
    return QStringLiteral("FILE.xml is a coordinate system's document. NAME is a system of the "
                          "library,\nby its exact name, custom before standard; 'kelstd library "
                          "list' lists them.\nA file that exists comes "
                          "before a system of its name. What neither has is\nimported where PROJ "
                          "knows it: a code (EPSG:28992), a system's name, or a file\nwith WKT, "
                          "PROJJSON or a PROJ string, as 'kelstd system import' does it.");
}

std::optional<ChosenSystem> readChosenSystem(const QString &given, const CommandLine &line,
                                             Console &console)
{
    ChosenSystem chosen;
    if (!choose(given, line, chosen, console))
        return std::nullopt;
    return chosen;
}

} // namespace KelStd::cli
