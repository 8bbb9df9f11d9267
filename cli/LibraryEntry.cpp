#include <cli/LibraryEntry.h>

#include <cli/LibraryDocument.h>

#include <KelStd/coord/Param.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString suffix = QStringLiteral(".xml");

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control;
}

/// The documents of a kind, as loading lists them.
QStringList documentsOf(const LibraryDirectory &library, RecordKind kind)
{
    return QDir(library.path(placeOf(kind)))
        .entryList({QLatin1Char('*') + suffix}, QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
}

const Projection *projectionOf(const Record &record)
{
    if (const auto *coord = std::get_if<Coord>(&record))
        return &coord->projection;
    return std::get_if<Projection>(&record);
}

} // namespace

QString nameFault(const QString &name)
{
    constexpr int longestFileName = 255; // bytes, on the file systems in use
    if (name.trimmed().isEmpty())
        return QStringLiteral("a name must not be empty or blank");
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\'))) {
        return QStringLiteral("the name \"%1\" has a path separator, which no file name can hold")
            .arg(name);
    }
    if (name.startsWith(QLatin1Char('.'))) {
        return QStringLiteral("the name \"%1\" begins with a dot: its file would be hidden and "
                              "never loaded")
            .arg(name);
    }
    if (std::any_of(name.cbegin(), name.cend(), isControl))
        return QStringLiteral("the name has a control character");
    const int bytes = QFile::encodeName(name + suffix).size();
    if (bytes > longestFileName) {
        return QStringLiteral("the name is too long: its file's name would have %1 bytes, and file "
                              "systems take %2")
            .arg(bytes)
            .arg(longestFileName);
    }
    return {};
}

QString recordFile(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    return library.path(placeOf(kind)) + QLatin1Char('/') + name + suffix;
}

QString ownershipFault(const LibraryDirectory &library, RecordKind kind, const QString &name)
{
    const QString own = name + suffix;
    const QDir directory(library.path(placeOf(kind)));
    QStringList holding;
    bool isAlone = true;
    for (const QString &fileName : documentsOf(library, kind)) {
        const QStringList names = outlineOf(directory.filePath(fileName), kind).names;
        if (!names.contains(name))
            continue;
        holding += quoted(fileName);
        isAlone = isAlone && names.size() == 1;
    }
    holding.sort();
    const QString place = directory.absolutePath();
    if (holding.size() > 1) {
        return QStringLiteral("%1 files of %2 hold it: %3; delete all but one first")
            .arg(holding.size())
            .arg(place, holding.join(QLatin1String(", ")));
    }
    if (!holding.isEmpty() && holding.first() != quoted(own)) {
        return QStringLiteral("it came from the file %1 of %2, not from %3; rename or edit that "
                              "file")
            .arg(holding.first(), place, quoted(own));
    }
    if (!isAlone)
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
            if (QString::compare(present, name, Qt::CaseInsensitive) == 0
                || QString::compare(present, trimmed, Qt::CaseInsensitive) == 0)
                return QStringLiteral("the %1 %2").arg(titleOf(each), quoted(present));
        }
    }
    return {};
}

QString writeFault(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile())
        return QStringLiteral("what stands there is no regular file");
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.cancelWriting();
    return QStringLiteral("the disk may be full");
}

QString lossFault(const Record &record)
{
    const Projection *projection = projectionOf(record);
    if (projection == nullptr)
        return {};
    const auto &params = projection->param;
    for (auto param = params.constBegin(); param != params.constEnd(); ++param) {
        const bool isText =
            param->valType == ValueType_String && !param->value.toString().isEmpty();
        // Its word is read back as one of the hemisphere's.
        const bool isAxes = param->valType == ValueType_EllipsoidDirection;
        if (isText || isAxes) {
            return QStringLiteral("the value of its parameter %1 is %2, which a document that the "
                                  "library writes does not keep; copy the file into the library's "
                                  "directory instead")
                .arg(quoted(param.key()),
                     isText ? QStringLiteral("a text") : QStringLiteral("a direction of axes"));
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

QString unknownName(const QString &name, const QList<RecordKind> &kinds)
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
        near += quoted(each);
    return QStringLiteral("the library has no %1 %2; %3'kelstd library list' lists them")
        .arg(title, quoted(name),
             near.isEmpty()
                 ? QString()
                 : QStringLiteral("did you mean %1? ").arg(near.join(QLatin1String(" or "))));
}

} // namespace KelStd::cli
