#include <cli/library/LibraryOptions.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/UnknownWord.h>

#include <KelStd/library/SystemLookup.h>

namespace KelStd::cli {

namespace {

const QString kindOption = QStringLiteral("kind");

QStringList kindWords()
{
    return {QStringLiteral("systems"), QStringLiteral("custom"), QStringLiteral("standard"),
            QStringLiteral("ellipsoids"), QStringLiteral("projections")};
}

} // namespace

void addKindOption(CommandLine &line)
{
    line.addOption({kindOption,
                    QStringLiteral("One kind only: systems (custom and standard),\n"
                                   "custom, standard, ellipsoids or projections."),
                    QStringLiteral("KIND")},
                   Values::ofWords(kindWords()));
}

QList<RecordKind> kindsFrom(const CommandLine &line, QString &mistake)
{
    if (!line.isSet(kindOption))
        return {std::begin(library::recordKinds), std::end(library::recordKinds)};
    const QString word = line.value(kindOption);
    auto kinds = kindsNamed(word);
    if (kinds.isEmpty()) {
        mistake = unknownWord(kindOption, word, QStringLiteral("kind"), kindWords());
    }
    return kinds;
}

QList<RecordKind> kindsNamed(const QString &word)
{
    const QString singular = word.endsWith(QLatin1Char('s')) ? word.chopped(1) : word;
    if (singular == QLatin1String("system"))
        return library::systemKinds();
    for (const RecordKind kind : library::recordKinds) {
        if (singular == library::wordOf(kind))
            return {kind};
    }
    return {};
}

bool loadRecords(const LibraryDirectory &library, Console &console)
{
    const auto failure =
        library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard,
                                      LibraryPlace::Ellipsoids, LibraryPlace::Projections});
    if (failure)
        console.report(failure.text);
    return !failure;
}

} // namespace KelStd::cli
