#include <KelStd/library/RecordHolders.h>

#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordNames.h>

#include <QtCore/QSet>

#include <algorithm>

namespace KelStd::library {

namespace {

/// A document that holds a record, and how many it holds in all.
struct Holder
{
    QString fileName;
    int records;
};

QString placePath(const LibraryDirectory &library, RecordKind kind)
{
    return library.path(placeOf(kind));
}

/// How many records the document holds, when one of them has the name.
std::optional<int> countWith(const QString &path, RecordKind kind, const QString &name)
{
    const QString wanted = withoutMarks(name);
    io::DocumentFailure failure; // loading skips the document, too
    const auto records = readRecords(path, kind, failure);
    if (records
        && std::any_of(records->begin(), records->end(), [&wanted](const LibraryRecord &record) {
               return withoutMarks(nameOf(record)) == wanted;
           }))
        return records->size();
    return std::nullopt;
}

/// The documents in which loading finds a record.
QList<Holder> holdersOf(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    QList<Holder> holders;
    for (const QString &fileName : documentsOf(library, kind)) {
        if (const auto records = countWith(documentPath(library, kind, fileName), kind, name))
            holders.append({fileName, *records});
    }
    return holders;
}

/// Whether each document has one record, and each record a name of its own.
bool haveOwnNames(const LibraryDirectory &library, RecordKind kind)
{
    const bool isSystem = kind == RecordKind::Custom || kind == RecordKind::Standard;
    if (!isSystem)
        return false;
    QSet<QString> visible;
    for (const QString &each : namesOf(kind))
        visible.insert(withoutMarks(each));
    return visible.size() == documentsOf(library, kind).size();
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

QString inQuotes(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

LibraryFailure severalFiles(const QString &place, const QList<Holder> &holders)
{
    QStringList files;
    for (const Holder &holder : holders)
        files += inQuotes(holder.fileName);
    files.sort();
    return {LibraryFailureKind::SeveralFiles,
            QObject::tr("%1 files of %2 hold it: %3; delete all but one first")
                .arg(QString::number(files.size()), place, files.join(QLatin1String(", ")))};
}

} // namespace

QStringList documentsOf(const LibraryDirectory &library, RecordKind kind)
{
    return documentNamesIn(QDir(placePath(library, kind)));
}

QString documentPath(const LibraryDirectory &library, RecordKind kind, const QString &fileName)
{
    return placePath(library, kind) + QLatin1Char('/') + fileName;
}

QString recordFile(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    return documentPath(library, kind, safeFileName(name));
}

QStringList documentsHolding(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    QStringList files;
    if (!haveOwnNames(library, kind)) {
        for (const Holder &holder : holdersOf(library, kind, name))
            files += documentPath(library, kind, holder.fileName);
        return files;
    }
    // The file that is called as the record is likely to hold it.
    QStringList documents = documentsOf(library, kind);
    const QString letters = lettersOf(recordFileName(name));
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

LibraryFailure ambiguityFailure(const LibraryDirectory &library, RecordKind kind,
                                const QString &name)
{
    if (haveOwnNames(library, kind))
        return {};
    const auto holders = holdersOf(library, kind, name);
    return holders.size() > 1 ? severalFiles(placePath(library, kind), holders) : LibraryFailure();
}

LibraryFailure ownershipFailure(const LibraryDirectory &library, RecordKind kind,
                                const QString &name)
{
    const QString own = safeFileName(name);
    const QString place = placePath(library, kind);
    const auto holders = holdersOf(library, kind, name);
    if (holders.size() > 1)
        return severalFiles(place, holders);
    if (holders.isEmpty())
        return {};
    const Holder &holder = holders.constFirst();
    if (holder.fileName != own) {
        return {LibraryFailureKind::OtherFileName,
                QObject::tr("it came from the file %1 of %2, not from %3; rename or edit that file")
                    .arg(inQuotes(holder.fileName), place, inQuotes(own))};
    }
    if (holder.records > 1) {
        return {LibraryFailureKind::SharedFile,
                QObject::tr("its file in %1 holds other records, too; edit that file").arg(place)};
    }
    return {};
}

} // namespace KelStd::library
