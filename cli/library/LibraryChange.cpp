#include <cli/library/LibraryChange.h>

#include <cli/library/LibraryOptions.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

namespace KelStd::cli {

std::optional<LockedLibrary> lockLibrary(const CommandLine &line, Missing missing, Console &console)
{
    const auto library = openLibrary(line, missing, console);
    if (!library)
        return std::nullopt;
    auto lock = std::make_unique<LibraryLock>(*library);
    if (const auto failure = lock->acquire()) {
        console.report(failure.text);
        return std::nullopt;
    }
    return LockedLibrary{*library, std::move(lock)};
}

std::optional<LockedLibrary> openForChange(const CommandLine &line, Missing missing,
                                           Console &console)
{
    auto library = lockLibrary(line, missing, console);
    if (!library || !loadRecords(library->directory, console))
        return std::nullopt;
    // As the databases name systems: "Amersfoort / RD New".
    StandardLibrary::getInstance().setSafeFileNames(true);
    return library;
}

void addOwnKindOption(CommandLine &line, const QString &without)
{
    line.addOption({QStringLiteral("kind"),
                    QStringLiteral("system, ellipsoid or projection.\nDefault: %1.").arg(without),
                    QStringLiteral("KIND")},
                   Values::ofWords({QStringLiteral("system"), QStringLiteral("ellipsoid"),
                                    QStringLiteral("projection")}));
}

/// Whether an entry can be changed; a report when not.
bool isChangeable(const LibraryDirectory &library, RecordKind kind, const QString &name,
                  const char *change, Console &console)
{
    QString reason;
    if (kind == RecordKind::Standard)
        reason = QStringLiteral("it is a standard system, and only custom ones are changed");
    else if (library::keyOf(kind, name) != name)
        reason = QStringLiteral("its file's name for it has a byte order mark, which nobody sees; "
                                "edit that file");
    else
        reason = shown(library::ownershipFailure(library, kind, name).text);
    if (reason.isEmpty())
        reason = library::nameFault(name);
    if (reason.isEmpty())
        return true;
    console.report(
        QStringLiteral("cannot %1 the %2 %3: %4")
            .arg(QString::fromLatin1(change), library::titleOf(kind), inQuotes(name), reason));
    return false;
}

QString changeStatusHelp()
{
    return QStringLiteral("Exit status: 0 done, 1 refused, 2 usage, 3 the library or the file "
                          "cannot be\nread or is not understood as it is written, or a file cannot "
                          "be written,\n4 done, but standard output cannot be written.");
}

} // namespace KelStd::cli
