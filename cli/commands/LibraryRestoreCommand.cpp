// Delivered records brought back into a library.

#include <cli/commands/Command.h>

#include <cli/library/LibraryChange.h>
#include <cli/library/LibraryOptions.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/DeliveredRecords.h>
#include <KelStd/text/NearNames.h>

#include <algorithm>
#include <limits>

namespace KelStd::cli {

namespace {

using Records = QList<DeliveredRecord>;

/// The delivered records of these kinds.
Records deliveredOf(const QList<RecordKind> &kinds)
{
    Records records = library::deliveredRecords(LibraryDirectory::delivered());
    records.erase(std::remove_if(records.begin(), records.end(),
                                 [&](const auto &record) { return !kinds.contains(record.kind); }),
                  records.end());
    return records;
}

/// Those of the names; nothing after a report of one that is not delivered.
std::optional<Records> named(const QStringList &names, const Records &delivered, Console &console)
{
    Records wanted;
    bool isComplete = true;
    QStringList known;
    for (const DeliveredRecord &record : delivered)
        known += record.name;
    for (const QString &given : names) {
        const QString name = library::withoutMarks(given);
        for (const DeliveredRecord &record : delivered) {
            if (record.name == name)
                wanted += record;
        }
        if (known.contains(name))
            continue;
        QStringList near;
        for (const QString &each : nearNames(name, known))
            near += inQuotes(each);
        const QString hint = hintAt(near);
        console.report(
            QStringLiteral("no entry %1 is delivered%2")
                .arg(inQuotes(name), hint.isEmpty() ? hint : QLatin1String("; ") + hint));
        isComplete = false;
    }
    return isComplete ? std::optional(wanted) : std::nullopt;
}

QString described(const DeliveredRecord &record)
{
    return QStringLiteral("the %1 %2").arg(library::titleOf(record.kind), inQuotes(record.name));
}

/// Brings one back; false after a report.
bool restore(const LibraryDirectory &library, const DeliveredRecord &record, Console &console)
{
    QString fileName;
    if (const auto failure = library::restoreRecord(library, record, fileName)) {
        console.report(
            QStringLiteral("cannot restore %1: %2").arg(described(record), shown(failure.text)));
        return false;
    }
    console.printChange(QStringLiteral("restored %1: %2").arg(described(record), fileName));
    return true;
}

QList<Proposal> deliveredProposals(const TypedLine &)
{
    QList<Proposal> names;
    for (const DeliveredRecord &record : library::deliveredRecords(LibraryDirectory::delivered()))
        names.append({record.name, library::titleOf(record.kind)});
    return names;
}

} // namespace

ExitStatus runLibraryRestore(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS] [NAME...]"),
        QStringLiteral("Brings delivered systems, ellipsoids and projections back as they were."),
        QStringLiteral("Without a NAME all that are missing come back, and those that were changed "
                       "stay\nas they are. A NAME comes back in place of a changed record of that "
                       "name.\n\n")
            + changeStatusHelp());
    line.setPositionals({Values::ofSource(&deliveredProposals)});
    line.setExamples(QStringLiteral("kelstd library restore"),
                     QStringLiteral("kelstd library restore \"Amersfoort / RD New\" \"WGS 84\""));
    addDirectoryOption(line);
    addKindOption(line);
    if (const auto status = line.parse(arguments, console, std::numeric_limits<int>::max()))
        return *status;
    QString mistake;
    const auto kinds = kindsFrom(line, mistake);
    if (kinds.isEmpty())
        return line.refuse(mistake, console);
    const auto library = openForChange(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    const Records delivered = deliveredOf(kinds);
    const QStringList names = line.positionals();
    const auto wanted = names.isEmpty() ? delivered : named(names, delivered, console);
    if (!wanted)
        return ExitStatus::SomeFailed;

    ExitStatus status = ExitStatus::Success;
    int restored = 0;
    for (const DeliveredRecord &record : *wanted) {
        const DeliveredState state = library::deliveredState(library->directory, record);
        if (state == DeliveredState::AsDelivered) {
            if (!names.isEmpty())
                console.print(QStringLiteral("%1 is as delivered").arg(described(record)));
        } else if (state == DeliveredState::Changed && names.isEmpty()) {
            console.report(QStringLiteral("note: %1 was changed and stays; restore it by its name")
                               .arg(described(record)));
        } else if (restore(library->directory, record, console)) {
            ++restored;
        } else {
            status = ExitStatus::SomeFailed;
        }
    }
    if (names.isEmpty() && restored == 0 && status == ExitStatus::Success)
        console.print(QStringLiteral("no delivered entry is missing"));
    return status;
}

} // namespace KelStd::cli
