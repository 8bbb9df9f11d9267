// Records of a library added, replaced and removed.

#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryOptions.h>
#include <cli/library/UnknownName.h>
#include <cli/systems/RecordReview.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/UnknownWord.h>

#include <KelStd/io/SystemDocument.h>
#include <KelStd/library/LibraryLock.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordLoss.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QFileInfo>

#include <memory>

namespace KelStd::cli {

namespace {

const QString kindOption = QStringLiteral("kind");
const QString createOption = QStringLiteral("create");
const QString asOption = QStringLiteral("as");

QString exitStatusHelp()
{
    return QStringLiteral("\n\nExit status: 0 done, 1 refused, 2 usage, 3 the library or the file "
                          "cannot be\nread or is not understood as it is written, or a file cannot "
                          "be written,\n4 done, but standard output cannot be written.");
}

ExitStatus fail(const QString &reason, ExitStatus status, Console &console)
{
    console.report(reason);
    return status;
}

void addOwnKindOption(CommandLine &line, const QString &without)
{
    line.addOption({kindOption,
                    QStringLiteral("system, ellipsoid or projection.\nDefault: %1.").arg(without),
                    QStringLiteral("KIND")});
}

/// The kind that --kind names, or that the document's root tells. Nothing and the `mistake` when
/// neither does.
std::optional<RecordKind> kindOfFile(const CommandLine &line, const QString &fileName,
                                     QString &mistake)
{
    if (!line.isSet(kindOption))
        return library::kindOfDocument(fileName);
    const QString word = line.value(kindOption);
    const auto kinds = kindsNamed(word);
    if (!kinds.isEmpty() && kinds.constFirst() != RecordKind::Standard)
        return kinds.constFirst();
    mistake = kinds.isEmpty() ? unknownWord(kindOption, word, QStringLiteral("kind"),
                                            {QStringLiteral("system"), QStringLiteral("ellipsoid"),
                                             QStringLiteral("projection")})
                              : QStringLiteral("standard systems are not changed by the program, "
                                               "only custom ones (--kind system)");
    return std::nullopt;
}

/// The one record of a file, with where it came from.
struct GivenRecord
{
    LibraryRecord record;
    SystemOrigin origin; ///< empty for none, and for a record that is no system
};

/// The origin in a document of systems that is read; nothing after a report.
std::optional<SystemOrigin> originFrom(const QString &fileName, RecordKind kind, Console &console)
{
    SystemOrigin origin;
    io::DocumentFailure failure;
    if (kind != RecordKind::Custom || io::readOrigin(fileName, origin, failure))
        return origin;
    console.report(QStringLiteral("cannot read %1: %2")
                       .arg(fileName, io::describedFailure(failure))); // it was changed meanwhile
    return std::nullopt;
}

/// The one record of a file, which is understood as it is written; nothing after a report.
std::optional<GivenRecord> recordFrom(const QString &fileName, RecordKind kind, Console &console)
{
    io::DocumentFailure failure;
    RecordReview review = {fileName, {}};
    const auto records = library::reviewRecords(fileName, kind, review.findings, failure);
    if (!records) {
        console.report(QStringLiteral("cannot read the %1 %2: %3")
                           .arg(library::titleOf(kind), fileName, io::describedFailure(failure)));
        return std::nullopt;
    }
    if (records->size() != 1) {
        QStringList names;
        for (const LibraryRecord &record : *records)
            names += inQuotes(library::nameOf(record));
        console.report(QStringLiteral("%1 holds %2 records of this kind%3; one is needed")
                           .arg(fileName)
                           .arg(records->size())
                           .arg(names.isEmpty() ? QString()
                                                : QStringLiteral(" (%1)").arg(
                                                    names.join(QLatin1String(", ")))));
        return std::nullopt;
    }
    if (!mayBeWritten(review, console))
        return std::nullopt;
    LibraryRecord record = records->constFirst();
    library::rename(record, library::withoutMarks(library::nameOf(record)));
    const auto origin = originFrom(fileName, kind, console);
    if (!origin)
        return std::nullopt;
    return GivenRecord{record, *origin};
}

/// Nothing when a document keeps all of the record; otherwise the status after a report.
std::optional<ExitStatus> refuseLoss(const LibraryRecord &record, const QString &fileName,
                                     const char *change, Console &console)
{
    const library::LossCheck check = library::checkLoss(record);
    if (!check.failure.isEmpty())
        return fail(check.failure, ExitStatus::Environment, console);
    if (check.loss.isEmpty())
        return std::nullopt;
    return fail(QStringLiteral("cannot %1 %2: %3")
                    .arg(QString::fromLatin1(change), fileName, shown(check.loss)),
                ExitStatus::SomeFailed, console);
}

/// A library that no other program changes meanwhile, and which is loaded.
struct LockedLibrary
{
    LibraryDirectory directory;
    std::unique_ptr<LibraryLock> lock;
};

/// Nothing after a report.
std::optional<LockedLibrary> openForChange(const CommandLine &line, Missing missing,
                                           Console &console)
{
    const auto library = openLibrary(line, missing, console);
    if (!library)
        return std::nullopt;
    auto lock = std::make_unique<LibraryLock>(*library);
    if (const auto failure = lock->acquire()) {
        console.report(failure.text);
        return std::nullopt;
    }
    if (!loadRecords(*library, console))
        return std::nullopt;
    // As the databases name systems: "Amersfoort / RD New".
    StandardLibrary::getInstance().setSafeFileNames(true);
    return LockedLibrary{*library, std::move(lock)};
}

/// After the registry's last change.
ExitStatus failAsTheRegistry(Console &console)
{
    return fail(StandardLibrary::getInstance().lastFailure().text, ExitStatus::Environment,
                console);
}

ExitStatus addTo(const LibraryDirectory &library, RecordKind kind, const GivenRecord &given,
                 Console &console)
{
    const QString name = library::nameOf(given.record);
    const QString file = library::recordFile(library, kind, name);
    if (const auto taken = library::keyTaking(kind, name)) {
        return fail(QStringLiteral("the name %1 is taken by the %2 %3")
                        .arg(inQuotes(name), library::titleOf(taken->kind), inQuotes(taken->name)),
                    ExitStatus::SomeFailed, console);
    }
    // The registry would replace it.
    if (QFileInfo::exists(file) || QFileInfo(file).isSymLink()) {
        return fail(QStringLiteral("%1 exists and is kept; it holds something else, or "
                                   "cannot be read")
                        .arg(file),
                    ExitStatus::SomeFailed, console);
    }
    const QString directory = library.path(library::placeOf(kind));
    if (!QDir().mkpath(directory)) {
        return fail(QStringLiteral("cannot create %1").arg(directory), ExitStatus::Environment,
                    console);
    }
    if (!library::addRecord(name, given.record, given.origin))
        return failAsTheRegistry(console);
    console.printChange(
        QStringLiteral("added the %1 %2: %3").arg(library::titleOf(kind), inQuotes(name), file));
    return ExitStatus::Success;
}

ExitStatus replaceIn(const LibraryDirectory &library, RecordKind kind, const GivenRecord &given,
                     Console &console)
{
    const QString name = library::nameOf(given.record);
    const QString file = library::recordFile(library, kind, name);
    if (!library::replaceRecord(name, given.record, given.origin))
        return failAsTheRegistry(console);
    console.printChange(
        QStringLiteral("replaced the %1 %2: %3").arg(library::titleOf(kind), inQuotes(name), file));
    return ExitStatus::Success;
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

} // namespace

ExitStatus runLibraryAdd(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] FILE.xml"),
                     QStringLiteral("Adds the coordinate system, ellipsoid or projection of a "
                                    "document to a library."),
                     QStringLiteral("A system becomes a custom one. It is written anew: numbers "
                                    "with 15 digits. A\nname may have slashes; that of its "
                                    "file has %2F for each.")
                         + exitStatusHelp());
    line.setExamples(
        QStringLiteral("kelstd library add site.xml"),
        QStringLiteral("kelstd library add --dir team --create --as \"Harbour\" site.xml"));
    addDirectoryOption(line);
    line.addOption({asOption, QStringLiteral("Add it under this name, which becomes its own."),
                    QStringLiteral("NAME")});
    addOwnKindOption(line, QStringLiteral("what the document is"));
    line.addOption(
        {createOption, QStringLiteral("Make the library's directory when there is none.")});
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("the FILE.xml is missing"), console);
    const QString fileName = onDisk(line.positionals().constFirst());
    const QString newName = library::withoutMarks(line.value(asOption));
    if (line.isSet(asOption) && !library::nameFault(newName).isEmpty())
        return line.refuse(library::nameFault(newName), console);
    QString mistake;
    const auto kind = kindOfFile(line, fileName, mistake);
    if (!kind)
        return line.refuse(mistake, console);

    auto given = recordFrom(fileName, *kind, console);
    if (!given)
        return ExitStatus::Environment;
    if (line.isSet(asOption))
        library::rename(given->record, newName);
    const QString fault = library::nameFault(library::nameOf(given->record));
    if (!fault.isEmpty()) {
        return fail(QStringLiteral("%1; give it another one with --as").arg(fault),
                    ExitStatus::SomeFailed, console);
    }
    if (const auto status = refuseLoss(given->record, fileName, "add", console))
        return *status;

    const auto library = openForChange(
        line, line.isSet(createOption) ? Missing::IsCreated : Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    return addTo(library->directory, *kind, *given, console);
}

ExitStatus runLibraryReplace(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] NAME FILE.xml"),
                     QStringLiteral("Replaces a custom system, an ellipsoid or a projection of a "
                                    "library."),
                     QStringLiteral("The document's record takes NAME as its own name. It is "
                                    "written anew: numbers\nwith 15 digits.")
                         + exitStatusHelp());
    line.setExamples(QStringLiteral("kelstd library replace \"My site\" site.xml"),
                     QStringLiteral("kelstd library replace --dir team \"My site\" site.xml"));
    addDirectoryOption(line);
    addOwnKindOption(line, QStringLiteral("what the document is"));
    if (const auto status = line.parse(arguments, console, 2))
        return *status;
    if (line.positionals().size() < 2)
        return line.refuse(QStringLiteral("NAME and FILE.xml are needed"), console);
    const QString name = library::withoutMarks(line.positionals().at(0));
    const QString fileName = onDisk(line.positionals().at(1));
    QString mistake;
    const auto kind = kindOfFile(line, fileName, mistake);
    if (!kind)
        return line.refuse(mistake, console);

    auto given = recordFrom(fileName, *kind, console);
    if (!given)
        return ExitStatus::Environment;
    const QString givenName = library::nameOf(given->record);
    library::rename(given->record, name);
    if (const auto status = refuseLoss(given->record, fileName, "take", console))
        return *status;
    const auto library = openForChange(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    QList<RecordKind> kinds = {*kind};
    if (*kind == RecordKind::Custom)
        kinds += RecordKind::Standard;
    const auto holding = library::kindsHolding(name, kinds);
    if (holding.isEmpty())
        return fail(unknownName(name, kinds, line), ExitStatus::SomeFailed, console);
    if (!isChangeable(library->directory, holding.constFirst(), name, "replace", console))
        return ExitStatus::SomeFailed;
    if (givenName != name) {
        console.report(QStringLiteral("note: the file's %1 is kept under the name %2")
                           .arg(inQuotes(givenName), inQuotes(name)));
    }
    return replaceIn(library->directory, *kind, *given, console);
}

ExitStatus runLibraryRemove(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] NAME"),
                     QStringLiteral("Removes a custom system, an ellipsoid or a projection of a "
                                    "library with its\nfile."),
                     exitStatusHelp().trimmed());
    line.setExamples(QStringLiteral("kelstd library remove \"My site\""),
                     QStringLiteral("kelstd library remove --dir team --kind system \"My site\""));
    addDirectoryOption(line);
    addOwnKindOption(line, QStringLiteral("the only kind that has the name"));
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    QString mistake;
    const auto kinds = kindsFrom(line, mistake);
    if (kinds.isEmpty())
        return line.refuse(mistake, console);
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("the NAME is missing"), console);
    const QString name = library::withoutMarks(line.positionals().constFirst());
    const auto library = openForChange(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;

    auto holding = library::kindsHolding(name, kinds);
    if (holding.isEmpty())
        return fail(unknownName(name, kinds, line), ExitStatus::SomeFailed, console);
    if (holding.size() > 1 && holding.contains(RecordKind::Custom))
        holding.removeAll(RecordKind::Standard);
    if (holding.size() > 1) {
        return line.refuse(QStringLiteral("%1 is %2 and %3; say which with --kind")
                               .arg(inQuotes(name), library::withArticle(holding.at(0)),
                                    library::withArticle(holding.at(1))),
                           console);
    }
    const RecordKind kind = holding.constFirst();
    if (!isChangeable(library->directory, kind, name, "remove", console))
        return ExitStatus::SomeFailed;
    const QString file = library::recordFile(library->directory, kind, name);
    if (!library::removeRecord(kind, name))
        return failAsTheRegistry(console);
    console.printChange(
        QStringLiteral("removed the %1 %2: %3").arg(library::titleOf(kind), inQuotes(name), file));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
