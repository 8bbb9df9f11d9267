// Records of a library added, replaced and removed.

#include <cli/commands/Command.h>

#include <cli/library/LibraryChange.h>
#include <cli/library/LibraryOptions.h>
#include <cli/library/NamedDocument.h>
#include <cli/library/RecordProposals.h>
#include <cli/library/UnknownName.h>
#include <cli/systems/RecordReview.h>
#include <cli/systems/SystemProposals.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/UnknownWord.h>

#include <KelStd/io/SystemDocument.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordLoss.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

const QString kindOption = QStringLiteral("kind");
const QString createOption = QStringLiteral("create");
const QString asOption = QStringLiteral("as");

ExitStatus fail(const QString &reason, ExitStatus status, Console &console)
{
    console.report(reason);
    return status;
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

/// The one record of a file, or that of a `name`, which is understood as it is written; nothing
/// after a report.
std::optional<GivenRecord> recordFrom(const QString &fileName, RecordKind kind, const QString &name,
                                      Console &console)
{
    io::DocumentFailure failure;
    RecordReview review = {fileName, {}};
    auto records = library::reviewRecords(fileName, kind, review.findings, failure);
    if (!records) {
        console.report(QStringLiteral("cannot read the %1 %2: %3")
                           .arg(kind == RecordKind::Custom ? QStringLiteral("coordinate system")
                                                           : library::titleOf(kind),
                                fileName, io::describedFailure(failure)));
        return std::nullopt;
    }
    if (!name.isEmpty()) {
        const auto isAnother = [&name](const LibraryRecord &record) {
            return library::withoutMarks(library::nameOf(record)) != library::withoutMarks(name);
        };
        records->erase(std::remove_if(records->begin(), records->end(), isAnother), records->end());
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

/// Why the record must not be added under its name; empty when it may.
QString faultOf(const GivenRecord &given, RecordKind kind)
{
    const QString name = library::nameOf(given.record);
    const QString fault = library::nameFault(name);
    return fault.isEmpty() && kind == RecordKind::Custom
               ? library::codeNameFault(name, given.origin)
               : fault;
}

/// What is to be added: a file, or the document of a record that a library has.
struct Source
{
    QString fileName;
    RecordKind kind;
    QString name; ///< of the record, where a name was given instead of a file
};

/// The source of FILE.xml|NAME. Nothing with the `mistake`, and whether it is that of a name that
/// nothing has.
std::optional<Source> sourceFrom(const QString &given, const CommandLine &line, QString &mistake,
                                 bool &isUnknown)
{
    const QString fileName = onDisk(given);
    QString several;
    if (!QFileInfo::exists(fileName)
        && !given.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive)) {
        const auto kinds = kindsFrom(line, mistake);
        if (kinds.isEmpty())
            return std::nullopt;
        if (const auto found = findNamedDocument(given, kinds, line, several)) {
            const bool isSystem = found->kind == RecordKind::Standard;
            return Source{found->fileName, isSystem ? RecordKind::Custom : found->kind, given};
        }
        if (!several.isEmpty()) {
            mistake = several;
            return std::nullopt;
        }
        if (!QDir::isAbsolutePath(fileName) && !given.startsWith(QLatin1Char('.'))) {
            isUnknown = true;
            mistake = unknownDocument(given, kinds, line);
            return std::nullopt;
        }
    }
    const auto kind = kindOfFile(line, fileName, mistake);
    return kind ? std::optional(Source{fileName, *kind, {}}) : std::nullopt;
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

} // namespace

ExitStatus runLibraryAdd(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS] FILE.xml|NAME"),
        QStringLiteral("Adds the coordinate system, ellipsoid or projection of a "
                       "document to a library."),
        QStringLiteral("A NAME is that of an entry of this library, of that of the "
                       "home directory or of\nthe delivered one: it is copied under "
                       "another name, or into another library.\n\nA system becomes a "
                       "custom one. It is written anew: numbers "
                       "with 15 digits. A\nname may have slashes; that of its "
                       "file has %2F for each. One of the form\nof a code (EPSG:28992) "
                       "is for the system of that code alone.")
            + QStringLiteral("\n\n") + changeStatusHelp());
    line.setPositionals({systemValues()});
    line.setExamples(QStringLiteral("kelstd library add harbour.xml"),
                     QStringLiteral("kelstd library add --dir team --create harbour.xml"));
    addDirectoryOption(line);
    line.addOption({asOption, QStringLiteral("Add it under this name, which becomes its own."),
                    QStringLiteral("NAME")});
    addOwnKindOption(line, QStringLiteral("what the document is"));
    line.addOption(
        {createOption, QStringLiteral("Make the library's directory when there is none.")});
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("the FILE.xml or NAME is missing"), console);
    const QString newName = library::withoutMarks(line.value(asOption));
    if (line.isSet(asOption) && !library::nameFault(newName).isEmpty())
        return line.refuse(library::nameFault(newName), console);
    QString mistake;
    bool isUnknown = false;
    const auto source = sourceFrom(line.positionals().constFirst(), line, mistake, isUnknown);
    if (!source && isUnknown)
        return fail(mistake, ExitStatus::Environment, console);
    if (!source)
        return line.refuse(mistake, console);

    auto given = recordFrom(source->fileName, source->kind, source->name, console);
    if (!given)
        return ExitStatus::Environment;
    if (line.isSet(asOption))
        library::rename(given->record, newName);
    const QString fault = faultOf(*given, source->kind);
    if (!fault.isEmpty()) {
        return fail(QStringLiteral("%1; give it another one with --as").arg(fault),
                    ExitStatus::SomeFailed, console);
    }
    if (const auto status = refuseLoss(given->record, source->fileName, "add", console))
        return *status;

    const auto library = openForChange(
        line, line.isSet(createOption) ? Missing::IsCreated : Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    return addTo(library->directory, source->kind, *given, console);
}

ExitStatus runLibraryReplace(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] NAME FILE.xml"),
                     QStringLiteral("Replaces a custom system, an ellipsoid or a projection of a "
                                    "library."),
                     QStringLiteral("The document's record takes NAME as its own name. It is "
                                    "written anew: numbers\nwith 15 digits.")
                         + QStringLiteral("\n\n") + changeStatusHelp());
    line.setPositionals({recordValues(), Values::ofFiles()});
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

    auto given = recordFrom(fileName, *kind, {}, console);
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
    // Without an origin the system may still be the present one, which keeps its own.
    const SystemOrigin origin =
        given->origin.isEmpty() ? library::originOf(holding.constFirst(), name) : given->origin;
    const QString fault =
        *kind == RecordKind::Custom ? library::codeNameFault(name, origin) : QString();
    if (!fault.isEmpty()) {
        return fail(QStringLiteral("cannot replace the %1 %2: %3")
                        .arg(library::titleOf(*kind), inQuotes(name), fault),
                    ExitStatus::SomeFailed, console);
    }
    if (givenName != name) {
        console.report(QStringLiteral("note: the file's %1 is kept under the name %2")
                           .arg(inQuotes(givenName), inQuotes(name)));
    }
    return replaceIn(library->directory, *kind, *given, console);
}

} // namespace KelStd::cli
