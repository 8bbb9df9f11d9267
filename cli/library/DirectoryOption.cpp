#include <cli/library/DirectoryOption.h>

#include <cli/proj/HomeDirectory.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>

namespace KelStd::cli {

namespace {

const QString dirOption = QStringLiteral("dir");

std::optional<LibraryDirectory> refuse(const QString &reason, Console &console)
{
    console.report(reason);
    return std::nullopt;
}

/// The library of the home directory, which is laid out when there is none.
std::optional<LibraryDirectory> openHomeLibrary(Console &console)
{
    const QString homeless = homeFailure();
    if (!homeless.isEmpty())
        return refuse(homeless, console);
    const LibraryDirectory library = LibraryDirectory::ofHome();
    const LibraryDirectory delivered = LibraryDirectory::delivered();
    bool isNew = false;
    if (const auto failure = library::prepare(library, delivered, isNew))
        return refuse(failure.text, console);
    if (isNew) {
        console.report(QStringLiteral("note: the library %1 is new, laid out from %2")
                           .arg(library.path(), delivered.path()));
    }
    return library;
}

std::optional<LibraryDirectory> openCreated(const LibraryDirectory &library, Console &console)
{
    if (const auto failure = library::createPlaces(library))
        return refuse(failure.text, console);
    return library;
}

} // namespace

void addDirectoryOption(CommandLine &line)
{
    line.addOption({dirOption,
                    QStringLiteral("The library's directory.\n"
                                   "Default: \"library\" in the home directory."),
                    QStringLiteral("D")},
                   Values::ofDirectories());
}

bool namesLibrary(const CommandLine &line)
{
    return line.isSet(dirOption);
}

LibraryDirectory chosenDirectory(const CommandLine &line)
{
    return namesLibrary(line) ? LibraryDirectory(onDisk(line.value(dirOption)))
                              : LibraryDirectory::ofHome();
}

std::optional<LibraryDirectory> openLibrary(const CommandLine &line, Missing missing,
                                            Console &console)
{
    if (!namesLibrary(line))
        return openHomeLibrary(console);
    const QString given = line.value(dirOption);
    if (given.isEmpty())
        return refuse(QStringLiteral("--dir is empty"), console);
    const LibraryDirectory library(onDisk(given));
    if (library.holdsLibrary())
        return library;
    if (const auto failure = library::listingFailure(library.path()))
        return refuse(failure.text, console);
    if (missing == Missing::IsCreated)
        return openCreated(library, console);
    if (!library.exists())
        return refuse(QStringLiteral("there is no directory %1").arg(given), console);
    QStringList names = library::placeNames();
    const QString last = names.takeLast();
    return refuse(QStringLiteral("%1 holds no library: nothing in it is called %2 or %3")
                      .arg(given, names.join(QLatin1String(", ")), last),
                  console);
}

} // namespace KelStd::cli
