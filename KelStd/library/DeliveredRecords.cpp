#include <KelStd/library/DeliveredRecords.h>

#include <KelStd/io/FileAccess.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>

#include <QtCore/QFile>

#include <algorithm>
#include <optional>

namespace KelStd::library {

namespace {

constexpr RecordKind deliveredKinds[] = {RecordKind::Standard, RecordKind::Ellipsoid,
                                         RecordKind::Projection};

/// How many records a document holds; none for one that cannot be read.
int recordsIn(const QString &fileName, RecordKind kind)
{
    io::DocumentFailure failure;
    const auto records = readRecords(fileName, kind, failure);
    return records ? static_cast<int>(records->size()) : 0;
}

std::optional<QByteArray> bytesOf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

/// What a file that stands in the way holds, and what to do about it.
QString describedObstacle(const QString &fileName, RecordKind kind)
{
    io::DocumentFailure failure = fileFailure(fileName);
    const auto records = failure ? std::nullopt : readRecords(fileName, kind, failure);
    if (!records)
        return QObject::tr("something else stands there, which cannot be read (%1); rename or "
                           "delete it first")
            .arg(io::describedFailure(failure));
    if (records->size() != 1)
        return QObject::tr("that file holds %1 other records; rename or delete it first")
            .arg(records->size());
    return QObject::tr("that file holds \"%1\"; rename or delete it first")
        .arg(nameOf(records->first()));
}

/// Where the document is to stand that no file holds yet; a failure where that would lose
/// something.
LibraryFailure findPlace(const LibraryDirectory &library, const DeliveredRecord &record,
                         QString &fileName)
{
    auto taken = keyTaking(record.kind, record.name);
    if (!taken && record.kind == RecordKind::Standard)
        taken = keyTaking(RecordKind::Custom, record.name);
    if (taken) {
        return {LibraryFailureKind::NameTaken,
                QObject::tr("the name \"%1\" is taken by the %2 \"%3\"")
                    .arg(record.name, titleOf(taken->kind), taken->name)};
    }
    const QDir place(library.path(placeOf(record.kind)));
    fileName = place.absoluteFilePath(QFileInfo(record.fileName).fileName());
    if (QFileInfo::exists(fileName) || QFileInfo(fileName).isSymLink())
        return notWritable(fileName, describedObstacle(fileName, record.kind));
    if (!place.mkpath(QStringLiteral(".")))
        return notWritable(fileName, QObject::tr("its directory cannot be made"));
    return {};
}

} // namespace

QList<DeliveredRecord> deliveredRecords(const LibraryDirectory &delivered)
{
    QList<DeliveredRecord> all;
    for (const RecordKind kind : deliveredKinds) {
        QList<DeliveredRecord> found;
        for (const QString &document : documentsOf(delivered, kind)) {
            const QString path = documentPath(delivered, kind, document);
            io::DocumentFailure failure;
            const auto records = readRecords(path, kind, failure);
            if (records && records->size() == 1)
                found += {kind, withoutMarks(nameOf(records->first())), path};
        }
        std::sort(found.begin(), found.end(),
                  [](const auto &a, const auto &b) { return a.name < b.name; });
        all += found;
    }
    return all;
}

bool isDelivered(const LibraryDirectory &delivered, RecordKind kind, const QString &name)
{
    const QList<DeliveredRecord> records = deliveredRecords(delivered);
    return std::any_of(records.cbegin(), records.cend(), [&](const DeliveredRecord &record) {
        return record.kind == kind && record.name == withoutMarks(name);
    });
}

DeliveredState deliveredState(const LibraryDirectory &library, const DeliveredRecord &record)
{
    const QStringList holders = documentsHolding(library, record.kind, record.name);
    if (holders.isEmpty())
        return DeliveredState::Missing;
    const auto present = bytesOf(holders.first());
    const bool isSame = holders.size() == 1 && present && present == bytesOf(record.fileName);
    return isSame ? DeliveredState::AsDelivered : DeliveredState::Changed;
}

LibraryFailure restoreRecord(const LibraryDirectory &library, const DeliveredRecord &record,
                             QString &fileName)
{
    if (auto several = ambiguityFailure(library, record.kind, record.name))
        return several;
    const QStringList holders = documentsHolding(library, record.kind, record.name);
    fileName = holders.value(0);
    if (holders.isEmpty()) {
        if (auto failure = findPlace(library, record, fileName))
            return failure;
    } else if (recordsIn(fileName, record.kind) != 1) {
        return {LibraryFailureKind::SharedFile,
                QObject::tr("its file %1 holds other records, too; edit that file").arg(fileName)};
    }
    const auto bytes = bytesOf(record.fileName);
    if (!bytes) {
        return notWritable(fileName, QObject::tr("%1 cannot be read").arg(record.fileName));
    }
    return written(fileName, [&bytes](const QString &path, QString *reason) {
        const auto write = [&bytes](QIODevice &file) { return io::writeAll(file, *bytes); };
        return io::replaceFile(path, QIODevice::NotOpen, write, reason);
    });
}

} // namespace KelStd::library
