#include <cli/library/RecordProposals.h>

#include <cli/library/LibraryOptions.h>
#include <cli/terminal/FilePath.h>

namespace KelStd::cli {

namespace {

LibraryDirectory libraryOf(const TypedLine &line)
{
    const QString given = line.options.value(QStringLiteral("dir"));
    if (!given.isEmpty())
        return LibraryDirectory(onDisk(given));
    const LibraryDirectory home = LibraryDirectory::ofHome();
    return home.holdsLibrary() ? home : LibraryDirectory::delivered();
}

QList<Proposal> namesOf(const TypedLine &line, QList<RecordKind> kinds)
{
    const auto named = kindsNamed(line.options.value(QStringLiteral("kind")));
    if (!named.isEmpty())
        kinds = named;
    QList<Proposal> names;
    if (!loadForProposals(line, kinds))
        return names;
    for (const RecordKind kind : kinds) {
        for (const QString &name : library::namesOf(kind)) {
            const QString code = library::originOf(kind, name).fullCode();
            names.append({name, code.isEmpty() ? library::titleOf(kind) : code});
        }
    }
    return names;
}

} // namespace

bool loadForProposals(const TypedLine &line, const QList<RecordKind> &kinds)
{
    // The registry holds what was loaded last, so that the places are loaded together.
    const LibraryDirectory library = libraryOf(line);
    const bool hasSystems =
        kinds.contains(RecordKind::Custom) || kinds.contains(RecordKind::Standard);
    const bool hasOthers =
        kinds.contains(RecordKind::Ellipsoid) || kinds.contains(RecordKind::Projection);
    if (hasSystems && hasOthers) {
        return !library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard,
                                              LibraryPlace::Ellipsoids, LibraryPlace::Projections});
    }
    return hasSystems
               ? !library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard})
               : !library::loadPlaces(library,
                                      {LibraryPlace::Ellipsoids, LibraryPlace::Projections});
}

Values recordValues(const QList<RecordKind> &kinds, Values::Files files)
{
    return Values::ofSource([kinds](const TypedLine &line) { return namesOf(line, kinds); }, files);
}

Values recordValues()
{
    return recordValues({std::begin(library::recordKinds), std::end(library::recordKinds)});
}

} // namespace KelStd::cli
