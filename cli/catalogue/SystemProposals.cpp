#include <cli/catalogue/SystemProposals.h>

#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/library/RecordProposals.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/Completion.h>

#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>
#include <vector>

namespace KelStd::cli {

namespace {

/// "EPSG:28992" and its beginnings from "EPSG:" on, and "28992".
bool beginsAsCode(const QString &typed)
{
    static const QRegularExpression form(QStringLiteral("\\A(?:[A-Za-z]+:\\w*|[0-9]+)\\z"));
    return form.match(typed).hasMatch();
}

/// Enough letters of a name that few systems begin so.
bool beginsAsName(const QString &typed)
{
    constexpr int minLetters = 3;
    return typed.size() >= minLetters && typed.at(0).isLetter();
}

/// A code as it is typed: a number alone is one of EPSG's.
QString asTyped(const QString &code, const QString &typed)
{
    const QString epsg = QStringLiteral("EPSG:");
    return !typed.contains(QLatin1Char(':')) && code.startsWith(epsg) ? code.mid(epsg.size())
                                                                      : code;
}

bool isUnpacked()
{
    const ProjInspection proj;
    return proj.markerState() == ProjInspection::MarkerState::Current
           && QFileInfo::exists(proj.libraryFile());
}

std::vector<catalogue::FoundSystem> systemsOfDatabase()
{
    if (!isUnpacked())
        return {};
    const ProjEnvironment environment;
    if (!environment.isReady())
        return {};
    catalogue::Catalogue catalogue = programCatalogue(CatalogueUse::OfOthers);
    return catalogue.search({});
}

QList<Proposal> codesOfDatabase(const QString &typed)
{
    auto systems = systemsOfDatabase();
    std::sort(systems.begin(), systems.end(), [](const auto &one, const auto &other) {
        return one.code.size() != other.code.size() ? one.code.size() < other.code.size()
                                                    : one.code < other.code;
    });
    QList<Proposal> codes;
    for (const catalogue::FoundSystem &system : systems)
        codes.append({asTyped(system.code, typed), system.name});
    return codes;
}

QList<Proposal> namesOfDatabase()
{
    QList<Proposal> names;
    for (const catalogue::FoundSystem &system : systemsOfDatabase())
        names.append({system.name, system.code});
    return names;
}

QList<Proposal> ofLibrary(const TypedLine &line)
{
    const QList<RecordKind> kinds = {RecordKind::Custom, RecordKind::Standard};
    if (!loadForProposals(line, kinds))
        return {};
    const bool isCode = beginsAsCode(line.beginning);
    QList<Proposal> systems;
    for (const RecordKind kind : kinds) {
        for (const QString &name : library::namesOf(kind)) {
            const QString code = library::originOf(kind, name).fullCode();
            systems.append({name, code});
            if (isCode && !code.isEmpty())
                systems.append({asTyped(code, line.beginning), name});
        }
    }
    return systems;
}

/// Without those whose text stands there already.
void append(QList<Proposal> &proposals, const QList<Proposal> &more)
{
    QSet<QString> known;
    for (const Proposal &each : proposals)
        known += each.text;
    for (const Proposal &each : more) {
        if (!known.contains(each.text))
            proposals += each;
        known += each.text;
    }
}

QList<Proposal> ofDatabase(const QString &typed, bool hasOthers)
{
    if (beginsAsCode(typed))
        return codesOfDatabase(typed);
    return !hasOthers && beginsAsName(typed) ? namesOfDatabase() : QList<Proposal>();
}

QList<Proposal> systemsFor(const TypedLine &line)
{
    QList<Proposal> systems = beginningWith(line.beginning, ofLibrary(line));
    append(systems, beginningWith(line.beginning, ofDatabase(line.beginning, !systems.isEmpty())));
    return systems;
}

QList<Proposal> sourcesFor(const TypedLine &line)
{
    return beginningWith(line.beginning, ofDatabase(line.beginning, false));
}

} // namespace

Values systemValues()
{
    return Values::ofSource(&systemsFor, Values::Files::All);
}

Values sourceValues()
{
    return Values::ofSource(&sourcesFor, Values::Files::All);
}

} // namespace KelStd::cli
