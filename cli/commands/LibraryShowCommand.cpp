#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryOptions.h>
#include <cli/library/RecordProposals.h>
#include <cli/library/UnknownName.h>
#include <cli/systems/RecordReview.h>
#include <cli/systems/SystemReport.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>

namespace KelStd::cli {

namespace {

struct Show
{
    SystemOrigin origin; ///< of a system
    Console &console;

    void operator()(const Coord &coord) const { showSystem(coord, origin, console); }
    void operator()(const Ellipsoid &ellipsoid) const { showEllipsoid(ellipsoid, console); }
    void operator()(const Projection &projection) const { showProjection(projection, console); }
};

/// What there is to say of the documents that hold a record.
bool mayBeShown(const LibraryDirectory &library, RecordKind kind, const QString &name,
                const CommandLine &line, Console &console)
{
    bool may = true;
    for (const QString &file : library::documentsHolding(library, kind, name)) {
        RecordReview review = {file, {}};
        io::DocumentFailure failure; // what cannot be read has changed since, and has no findings
        library::reviewRecords(file, kind, review.findings, failure);
        may = mayBeUsed(review, line, console) && may;
    }
    return may;
}

} // namespace

ExitStatus runLibraryShow(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] NAME"),
                     QStringLiteral("Shows an entry of a library as a surveyor reads it."),
                     QStringLiteral("A name of several kinds is that of the first: custom system, "
                                    "standard system,\nellipsoid, projection.\n\n")
                         + reviewHelp());
    line.setPositionals({recordValues()});
    line.setExamples(QStringLiteral("kelstd library show \"Amersfoort / RD New\""),
                     QStringLiteral("kelstd library show --kind ellipsoids \"Bessel 1841\""));
    addDirectoryOption(line);
    addKindOption(line);
    addLenientOption(line);
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    QString mistake;
    const auto kinds = kindsFrom(line, mistake);
    if (kinds.isEmpty())
        return line.refuse(mistake, console);
    if (line.positionals().isEmpty())
        return line.refuse(QStringLiteral("the NAME is missing"), console);
    const QString name = library::withoutMarks(line.positionals().constFirst());
    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library || !loadRecords(*library, console))
        return ExitStatus::Environment;

    const auto holding = library::kindsHolding(name, kinds);
    if (holding.isEmpty()) {
        console.report(unknownName(name, kinds, line));
        return ExitStatus::SomeFailed;
    }
    for (const RecordKind other : holding.mid(1)) {
        console.report(
            QStringLiteral("note: shown is the %1; the library has %2 of this name, too")
                .arg(library::titleOf(holding.constFirst()), library::withArticle(other)));
    }
    if (const auto several = library::ambiguityFailure(*library, holding.constFirst(), name))
        console.report(QStringLiteral("note: shown is one of several: ") + shown(several.text));
    if (!mayBeShown(*library, holding.constFirst(), name, line, console))
        return ExitStatus::Environment;
    const RecordKind kind = holding.constFirst();
    std::visit(Show{library::originOf(kind, name), console}, *library::find(kind, name));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
