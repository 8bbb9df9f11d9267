#include <cli/catalogue/SourceProposals.h>

#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/Completion.h>

#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <vector>

namespace KelStd::cli {

namespace {

/// Enough letters of a name that few systems begin so.
bool beginsAsName(const QString &typed)
{
    constexpr int minLetters = 3;
    return typed.size() >= minLetters && typed.at(0).isLetter();
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

QList<Proposal> codesFor(const QString &typed)
{
    auto systems = systemsOfDatabase();
    std::sort(systems.begin(), systems.end(), [](const auto &one, const auto &other) {
        return one.code.size() != other.code.size() ? one.code.size() < other.code.size()
                                                    : one.code < other.code;
    });
    QList<Proposal> codes;
    for (const catalogue::FoundSystem &system : systems)
        codes.append({codeAsTyped(system.code, typed), system.name});
    return codes;
}

QList<Proposal> namesOfDatabase()
{
    QList<Proposal> names;
    for (const catalogue::FoundSystem &system : systemsOfDatabase())
        names.append({system.name, system.code});
    return names;
}

} // namespace

bool beginsAsCode(const QString &typed)
{
    static const QRegularExpression form(QStringLiteral("\\A(?:[A-Za-z]+:\\w*|[0-9]+)\\z"));
    return form.match(typed).hasMatch();
}

QString codeAsTyped(const QString &code, const QString &typed)
{
    const QString epsg = QStringLiteral("EPSG:");
    return !typed.contains(QLatin1Char(':')) && code.startsWith(epsg) ? code.mid(epsg.size())
                                                                      : code;
}

QList<Proposal> databaseProposals(const QString &typed, DatabaseNames names)
{
    if (beginsAsCode(typed))
        return beginningWith(typed, codesFor(typed));
    return names == DatabaseNames::Wanted && beginsAsName(typed)
               ? beginningWith(typed, namesOfDatabase())
               : QList<Proposal>();
}

Values sourceValues()
{
    return Values::ofSource(
        [](const TypedLine &line) {
            return databaseProposals(line.beginning, DatabaseNames::Wanted);
        },
        Values::Files::All);
}

} // namespace KelStd::cli
