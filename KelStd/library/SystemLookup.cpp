#include <KelStd/library/SystemLookup.h>

#include <KelStd/library/DeliveredRecords.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>

#include <QtCore/QObject>
#include <QtCore/QRegularExpression>

namespace KelStd::library {

namespace {

SystemLookup failed(const QString &subject, LibraryFailure failure)
{
    return {std::nullopt, std::move(failure), subject};
}

/// The record of the registry, unless several documents hold one of its name.
SystemLookup found(const LibraryDirectory &library, const SystemMatch &match)
{
    if (auto several = ambiguityFailure(library, match.kind, match.name))
        return failed(match.name, std::move(several));
    return {match, {}, {}};
}

/// The system of this code as it is delivered. Empty where there is none, or where it was changed.
QString untouchedOf(const LibraryDirectory &library, const QString &code)
{
    if (loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Standard}))
        return {};
    const QStringList names = namesOfCode(RecordKind::Standard, code);
    if (names.size() != 1)
        return {};
    for (const DeliveredRecord &record : deliveredRecords(LibraryDirectory::delivered())) {
        if (record.kind == RecordKind::Standard && record.name == names.constFirst()
            && deliveredState(library, record) == DeliveredState::AsDelivered)
            return record.name;
    }
    return {};
}

QString listOf(const QStringList &names)
{
    QStringList quoted;
    for (const QString &name : names)
        quoted += QLatin1Char('"') + name + QLatin1Char('"');
    return quoted.join(QLatin1String(", "));
}

/// One of several systems of a kind that have a code.
SystemLookup oneOf(const LibraryDirectory &library, RecordKind kind, const QString &code,
                   const QStringList &names)
{
    if (names.contains(code))
        return found(library, {kind, code, {}});
    const QString untouched = kind == RecordKind::Custom ? untouchedOf(library, code) : QString();
    if (!untouched.isEmpty())
        return found(library, {RecordKind::Standard, untouched, names});
    return failed(code, {LibraryFailureKind::SeveralSystems,
                         QObject::tr("%1 %2s of the library have this code: %3; name one of them")
                             .arg(names.size())
                             .arg(titleOf(kind), listOf(names))});
}

} // namespace

const QList<RecordKind> &systemKinds()
{
    static const QList<RecordKind> kinds = {RecordKind::Custom, RecordKind::Standard};
    return kinds;
}

QString codeMeantBy(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("\\A[0-9]+\\z"));
    return number.match(text).hasMatch() ? QLatin1String("EPSG:") + text : codeOfForm(text);
}

SystemLookup systemOfName(const LibraryDirectory &library, const QString &name)
{
    const QString plain = withoutMarks(name);
    for (const RecordKind kind : systemKinds()) {
        if (auto failure = loadPlaces(library, {placeOf(kind)}))
            return failed(plain, std::move(failure));
        if (find(kind, plain))
            return found(library, {kind, plain, {}});
    }
    return {};
}

SystemLookup systemOfCode(const LibraryDirectory &library, const QString &text)
{
    const QString code = codeMeantBy(text);
    if (code.isEmpty())
        return {};
    for (const RecordKind kind : systemKinds()) {
        if (auto failure = loadPlaces(library, {placeOf(kind)}))
            return failed(text, std::move(failure));
        const QStringList names = namesOfCode(kind, code);
        if (names.size() > 1)
            return oneOf(library, kind, code, names);
        if (names.size() == 1)
            return found(library, {kind, names.constFirst(), {}});
    }
    return {};
}

QString remarkOn(const SystemMatch &match, const QString &text)
{
    const QString system = titleOf(match.kind) + QLatin1Char(' ') + listOf({match.name});
    if (!match.copies.isEmpty()) {
        return QObject::tr("%1 is the %2 of the library; %3 %4s have this code, too: %5")
            .arg(codeMeantBy(text), system)
            .arg(match.copies.size())
            .arg(titleOf(RecordKind::Custom), listOf(match.copies));
    }
    if (match.kind == RecordKind::Custom)
        return QObject::tr("%1 is the %2 of the library").arg(text, system);
    return {};
}

} // namespace KelStd::library
