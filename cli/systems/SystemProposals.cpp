#include <cli/systems/SystemProposals.h>

#include <cli/catalogue/SourceProposals.h>
#include <cli/library/RecordProposals.h>
#include <cli/terminal/Completion.h>

#include <KelStd/library/SystemLookup.h>

#include <QtCore/QSet>

namespace KelStd::cli {

namespace {

QList<Proposal> ofLibrary(const TypedLine &line)
{
    if (!loadForProposals(line, library::systemKinds()))
        return {};
    const bool isCode = beginsAsCode(line.beginning);
    QList<Proposal> systems;
    for (const RecordKind kind : library::systemKinds()) {
        for (const QString &name : library::namesOf(kind)) {
            const QString code = library::originOf(kind, name).fullCode();
            systems.append({name, code});
            if (isCode && !code.isEmpty())
                systems.append({codeAsTyped(code, line.beginning), name});
        }
    }
    return systems;
}

/// The library's go before the database's of the same text.
QList<Proposal> systemsFor(const TypedLine &line)
{
    const QList<Proposal> own = beginningWith(line.beginning, ofLibrary(line));
    const QList<Proposal> others = databaseProposals(
        line.beginning, own.isEmpty() ? DatabaseNames::Wanted : DatabaseNames::OnlyCodes);
    QList<Proposal> systems;
    QSet<QString> texts;
    for (const Proposal &each : own + others) {
        if (!texts.contains(each.text))
            systems += each;
        texts += each.text;
    }
    return systems;
}

} // namespace

Values systemValues()
{
    return Values::ofSource(&systemsFor, Values::Files::All);
}

} // namespace KelStd::cli
