#include <cli/library/NamedDocument.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/UnknownName.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/DeliveredRecords.h>
#include <KelStd/library/RecordHolders.h>

namespace KelStd::cli {

namespace {

LibraryFailure loadAll(const LibraryDirectory &library)
{
    return library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard,
                                         LibraryPlace::Ellipsoids, LibraryPlace::Projections});
}

/// The document in one library. Nothing, with the mistake or without.
std::optional<NamedDocument> findIn(const LibraryDirectory &library, const QString &name,
                                    const QList<RecordKind> &kinds, QString &mistake)
{
    if (!library.holdsLibrary() || loadAll(library))
        return std::nullopt;
    QList<RecordKind> holding = library::kindsHolding(name, kinds);
    if (holding.contains(RecordKind::Custom))
        holding.removeAll(RecordKind::Standard);
    if (holding.isEmpty())
        return std::nullopt;
    if (holding.size() > 1) {
        mistake = QStringLiteral("%1 is %2 and %3; say which with --kind")
                      .arg(inQuotes(name), library::withArticle(holding.at(0)),
                           library::withArticle(holding.at(1)));
        return std::nullopt;
    }
    if (const auto several = library::ambiguityFailure(library, holding.first(), name)) {
        mistake = shown(several.text);
        return std::nullopt;
    }
    return NamedDocument{library::documentsHolding(library, holding.first(), name).value(0),
                         holding.first()};
}

} // namespace

std::optional<NamedDocument> findNamedDocument(const QString &name, const QList<RecordKind> &kinds,
                                               const CommandLine &line, QString &mistake)
{
    for (const LibraryDirectory &library :
         {chosenDirectory(line), LibraryDirectory::ofHome(), LibraryDirectory::delivered()}) {
        const auto found = findIn(library, library::withoutMarks(name), kinds, mistake);
        if (found || !mistake.isEmpty())
            return found;
    }
    return std::nullopt;
}

QString unknownDocument(const QString &given, const QList<RecordKind> &kinds,
                        const CommandLine &line)
{
    for (const LibraryDirectory &library : {chosenDirectory(line), LibraryDirectory::ofHome()}) {
        if (library.holdsLibrary() && !loadAll(library))
            break;
    }
    QList<QPair<QString, QString>> delivered;
    for (const DeliveredRecord &record : library::deliveredRecords(LibraryDirectory::delivered())) {
        if (kinds.contains(record.kind))
            delivered += {record.name, inQuotes(record.name)};
    }
    return QStringLiteral("there is no file %1, and ").arg(given)
           + unknownName(given, kinds, line, delivered);
}

} // namespace KelStd::cli
