#include <cli/catalogue/NearSystems.h>

#include <cli/terminal/ShownText.h>

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/text/NearNames.h>

#include <QtCore/QMap>

namespace KelStd::cli {

namespace {

constexpr int maxNameLength = 200; // no system's name has so many characters

bool mayBeName(const QString &given)
{
    return given.size() <= maxNameLength && !given.contains(QLatin1Char(':'))
           && !given.contains(QLatin1Char('[')) && !given.startsWith(QLatin1Char('+'))
           && !given.startsWith(QLatin1Char('{'));
}

} // namespace

QString NearSystem::text() const
{
    return QStringLiteral("%1 (%2)").arg(code, shown(name));
}

QList<NearSystem> nearSystems(catalogue::Catalogue &catalogue, const QString &given)
{
    if (!mayBeName(given))
        return {};
    QStringList names;
    QMap<QString, QString> codes;
    catalogue::SystemQuery query;
    query.words = given;
    auto candidates = catalogue.search(query);
    if (candidates.empty())
        candidates = catalogue.search({});
    for (const catalogue::FoundSystem &system : candidates) {
        const bool isMeant = system.kind == catalogue::SystemKind::Projected
                             || system.kind == catalogue::SystemKind::Compound;
        if (!isMeant || codes.contains(system.name))
            continue;
        names += system.name;
        codes.insert(system.name, system.code);
    }
    QList<NearSystem> systems;
    for (const QString &name : nearNames(given, names))
        systems += {codes.value(name), name};
    return systems;
}

QString nearSystemHint(catalogue::Catalogue &catalogue, const QString &given)
{
    catalogue::SystemQuery query;
    query.words = given.left(maxNameLength);
    if (!mayBeName(given) || !catalogue.search(query).empty())
        return {};
    QStringList texts;
    for (const NearSystem &system : nearSystems(catalogue, given))
        texts += system.text();
    return texts.isEmpty() ? QString() : QLatin1String("; ") + hintAt(texts);
}

} // namespace KelStd::cli
