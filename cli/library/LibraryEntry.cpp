#include <cli/library/LibraryEntry.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryDocument.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/RecordNames.h>

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>
#include <optional>

namespace KelStd::cli {

namespace {

/// A document that holds a record, and how many it holds in all.
struct Holder
{
    QString fileName;
    int records;
};

/// How many records the document holds, when one of them has the name.
std::optional<int> countWith(const QString &path, RecordKind kind, const QString &name)
{
    const QString wanted = library::withoutMarks(name);
    QString reason;
    const auto records = recordsIn(path, kind, reason);
    if (records
        && std::any_of(records->begin(), records->end(), [&wanted](const LibraryRecord &record) {
               return library::withoutMarks(library::nameOf(record)) == wanted;
           }))
        return records->size();
    return std::nullopt;
}

/// The documents that loading finds a record in.
QList<Holder> holdersOf(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    QList<Holder> holders;
    for (const QString &fileName : documentsOf(library, kind)) {
        if (const auto records = countWith(documentPath(library, kind, fileName), kind, name))
            holders.append({fileName, *records});
    }
    return holders;
}

/// Whether each document has one record, and each record its own name.
bool haveOwnNames(const LibraryDirectory &library, RecordKind kind)
{
    const bool isSystem = kind == RecordKind::Custom || kind == RecordKind::Standard;
    QSet<QString> visible;
    for (const QString &each : library::namesOf(kind))
        visible.insert(library::withoutMarks(each));
    return isSystem && visible.size() == documentsOf(library, kind).size();
}

/// Letters and digits, which a file's name has of the name of its record.
QString lettersOf(const QString &name)
{
    QString letters;
    for (const QChar c : name) {
        if (c.isLetterOrNumber())
            letters += c.toLower();
    }
    return letters;
}

QString severalFault(const QString &place, const QList<Holder> &holders)
{
    QStringList files;
    for (const Holder &holder : holders)
        files += inQuotes(holder.fileName);
    files.sort();
    return QStringLiteral("%1 files of %2 hold it: %3; delete all but one first")
        .arg(files.size())
        .arg(place, files.join(QLatin1String(", ")));
}

/// Names of `names` that somebody who typed `name` may have meant, the likeliest first.
QStringList nearNames(const QString &name, const QStringList &names)
{
    constexpr int most = 5;
    const QString wanted = name.simplified();
    QStringList equal;
    QStringList containing;
    for (const QString &candidate : names) {
        if (QString::compare(candidate.simplified(), wanted, Qt::CaseInsensitive) == 0)
            equal += candidate;
        else if (!wanted.isEmpty() && candidate.contains(wanted, Qt::CaseInsensitive))
            containing += candidate;
    }
    return (equal + containing).mid(0, most);
}

} // namespace

QStringList documentsOf(const LibraryDirectory &library, RecordKind kind)
{
    return QDir(library.path(library::placeOf(kind)))
        .entryList({QStringLiteral("*.xml")}, QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
}

QString documentPath(const LibraryDirectory &library, RecordKind kind, const QString &fileName)
{
    return library.path(library::placeOf(kind)) + QLatin1Char('/') + fileName;
}

QString recordFile(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    return documentPath(library, kind, library::safeFileName(name));
}

QStringList documentsHolding(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    QStringList files;
    if (!haveOwnNames(library, kind)) {
        for (const Holder &holder : holdersOf(library, kind, name))
            files += documentPath(library, kind, holder.fileName);
        return files;
    }
    // The one that is called after it is likely to hold it.
    QStringList documents = documentsOf(library, kind);
    const QString letters = lettersOf(library::recordFileName(name));
    std::stable_partition(documents.begin(), documents.end(), [&letters](const QString &fileName) {
        return lettersOf(fileName) == letters;
    });
    for (const QString &fileName : documents) {
        const QString path = documentPath(library, kind, fileName);
        if (countWith(path, kind, name))
            return {path};
    }
    return files;
}

QString ambiguity(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    if (haveOwnNames(library, kind))
        return {};
    const auto holders = holdersOf(library, kind, name);
    return holders.size() > 1 ? severalFault(library.path(library::placeOf(kind)), holders)
                              : QString();
}

QString ownershipFault(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    const QString own = library::safeFileName(name);
    const QString place = library.path(library::placeOf(kind));
    const auto holders = holdersOf(library, kind, name);
    if (holders.size() > 1)
        return severalFault(place, holders);
    if (holders.isEmpty())
        return {};
    const Holder &holder = holders.constFirst();
    if (holder.fileName != own) {
        return QStringLiteral("it came from the file %1 of %2, not from %3; rename or edit that "
                              "file")
            .arg(inQuotes(holder.fileName), place, inQuotes(own));
    }
    if (holder.records > 1)
        return QStringLiteral("its file in %1 holds other records, too; edit that file").arg(place);
    return {};
}

QString takenBy(RecordKind kind, const QString &name)
{
    const QString trimmed = name.trimmed();
    QList<RecordKind> kinds = {kind};
    if (kind == RecordKind::Custom)
        kinds += RecordKind::Standard;
    for (const RecordKind each : kinds) {
        for (const QString &present : library::namesOf(each)) {
            const QString seen = library::withoutMarks(present);
            if (QString::compare(seen, name, Qt::CaseInsensitive) == 0
                || QString::compare(seen, trimmed, Qt::CaseInsensitive) == 0)
                return QStringLiteral("the %1 %2").arg(library::titleOf(each), inQuotes(present));
        }
    }
    return {};
}

QList<RecordKind> kindsHolding(const QString &name, const QList<RecordKind> &kinds)
{
    QList<RecordKind> holding;
    for (const RecordKind kind : kinds) {
        if (library::find(kind, name))
            holding += kind;
    }
    return holding;
}

QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line)
{
    QStringList known;
    for (const RecordKind kind : kinds)
        known += library::namesOf(kind);
    known.removeDuplicates();
    const bool isSystem = kinds == QList<RecordKind>{RecordKind::Custom, RecordKind::Standard};
    const QString title = kinds.size() == 1 ? library::titleOf(kinds.first())
                          : isSystem        ? QStringLiteral("system")
                                            : QStringLiteral("entry");
    QStringList near;
    for (const QString &each : nearNames(name, known))
        near += inQuotes(each);
    return QStringLiteral("the library has no %1 %2; %3'kelstd library list'%4 lists them")
        .arg(title, inQuotes(name),
             near.isEmpty()
                 ? QString()
                 : QStringLiteral("did you mean %1? ").arg(near.join(QLatin1String(" or "))),
             namesLibrary(line) ? QStringLiteral(" with the same --dir") : QString());
}

} // namespace KelStd::cli
