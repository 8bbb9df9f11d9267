#include <cli/library/LibraryEntry.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryDocument.h>
#include <cli/terminal/ShownText.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>
#include <optional>

namespace KelStd::cli {

namespace {

const QString suffix = QStringLiteral(".xml");

/// The kinds of beginnings that make a name mean something other than a file in the library.
struct BeginningRow
{
    QLatin1Char character;
    const char *meaning;
};

const BeginningRow beginnings[] = {
    {QLatin1Char(':'), "a colon, which Qt takes for a resource of the program"},
    {QLatin1Char('~'), "a tilde, which a shell takes for a home directory"},
    {QLatin1Char('.'), "a dot: its file would be hidden and never loaded"},
};

/// Control characters, and those that Unicode keeps free, of which a document cannot hold all.
bool isNoText(QChar c)
{
    return c.category() == QChar::Other_Control || QChar::isNonCharacter(c.unicode());
}

/// A document that holds a record, and how many it holds in all.
struct Holder
{
    QString fileName;
    int records;
};

/// How many records the document holds, when one of them has the name.
std::optional<int> countWith(const QString &path, RecordKind kind, const QString &name)
{
    const QString wanted = withoutMarks(name);
    QString reason;
    const auto records = recordsIn(path, kind, reason);
    if (records && std::any_of(records->begin(), records->end(), [&wanted](const Record &record) {
            return withoutMarks(nameOf(record)) == wanted;
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
    for (const QString &each : namesOf(kind))
        visible.insert(withoutMarks(each));
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

} // namespace

QStringList documentsOf(const LibraryDirectory &library, RecordKind kind)
{
    return QDir(library.path(placeOf(kind)))
        .entryList({QLatin1Char('*') + suffix}, QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
}

QString nameFault(const QString &name)
{
    constexpr int longestFileName = 255; // bytes, on the file systems in use
    if (name.trimmed().isEmpty())
        return QStringLiteral("a name must not be empty or blank");
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\'))) {
        return QStringLiteral("the name %1 has a path separator, which no file name can hold")
            .arg(inQuotes(name));
    }
    for (const BeginningRow &row : beginnings) {
        if (name.startsWith(row.character)) {
            return QStringLiteral("the name %1 begins with %2")
                .arg(inQuotes(name), QString::fromLatin1(row.meaning));
        }
    }
    if (std::any_of(name.cbegin(), name.cend(), isNoText))
        return QStringLiteral("the name has a control character, or one that stands for none");
    const int bytes = QFile::encodeName(name + suffix).size();
    if (bytes > longestFileName) {
        return QStringLiteral("the name is too long: its file's name would have %1 bytes, and file "
                              "systems take %2")
            .arg(bytes)
            .arg(longestFileName);
    }
    return {};
}

QString documentPath(const LibraryDirectory &library, RecordKind kind, const QString &fileName)
{
    return library.path(placeOf(kind)) + QLatin1Char('/') + fileName;
}

QString recordFile(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    return documentPath(library, kind, name + suffix);
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
    const QString letters = lettersOf(name + suffix);
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
    return holders.size() > 1 ? severalFault(library.path(placeOf(kind)), holders) : QString();
}

QString ownershipFault(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    const QString own = name + suffix;
    const QString place = library.path(placeOf(kind));
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
        for (const QString &present : namesOf(each)) {
            const QString seen = withoutMarks(present);
            if (QString::compare(seen, name, Qt::CaseInsensitive) == 0
                || QString::compare(seen, trimmed, Qt::CaseInsensitive) == 0)
                return QStringLiteral("the %1 %2").arg(titleOf(each), inQuotes(present));
        }
    }
    return {};
}

QList<RecordKind> kindsHolding(const QString &name, const QList<RecordKind> &kinds)
{
    QList<RecordKind> holding;
    for (const RecordKind kind : kinds) {
        if (find(kind, name))
            holding += kind;
    }
    return holding;
}

QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line)
{
    QStringList known;
    for (const RecordKind kind : kinds)
        known += namesOf(kind);
    known.removeDuplicates();
    const bool isSystem = kinds == QList<RecordKind>{RecordKind::Custom, RecordKind::Standard};
    const QString title = kinds.size() == 1 ? titleOf(kinds.first())
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
