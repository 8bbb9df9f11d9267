#include <cli/library/LibraryDocument.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentKind.h>
#include <KelStd/io/ListDocuments.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

using Findings = QList<io::DocumentFinding>;

/// How a kind of documents is read, with a review and without.
template <typename Found>
struct Reading
{
    bool (*read)(const QString &, Found &, io::DocumentFailure &);
    bool (*review)(const QString &, Found &, Findings &, io::DocumentFailure &);

    /// Without `findings` nothing is reviewed.
    bool operator()(const QString &fileName, Found &found, Findings *findings,
                    io::DocumentFailure &failure) const
    {
        return findings != nullptr ? review(fileName, found, *findings, failure)
                                   : read(fileName, found, failure);
    }
};

constexpr Reading<Coord> systems = {&Coord_IO::xml_read, &io::reviewCoord};
constexpr Reading<QList<Ellipsoid>> ellipsoidLists = {&io::readEllipsoidList,
                                                      &io::reviewEllipsoidList};
constexpr Reading<QList<Projection>> projectionLists = {&io::readProjectionList,
                                                        &io::reviewProjectionList};

QList<LibraryRecord> asRecords(const Coord &coord)
{
    return {coord};
}

template <typename Found>
QList<LibraryRecord> asRecords(const QList<Found> &found)
{
    QList<LibraryRecord> records;
    for (const Found &each : found)
        records += each;
    return records;
}

template <typename Found>
std::optional<QList<LibraryRecord>> recordsOf(const Reading<Found> &reading,
                                              const QString &fileName, Findings *findings,
                                              QString &reason)
{
    Found found;
    io::DocumentFailure failure;
    if (reading(fileName, found, findings, failure))
        return asRecords(found);
    reason = io::describedFailure(failure);
    return std::nullopt;
}

std::optional<QList<LibraryRecord>> readRecords(const QString &fileName, RecordKind kind,
                                                Findings *findings, QString &reason)
{
    reason = noFileFault(fileName);
    if (!reason.isEmpty())
        return std::nullopt;
    switch (kind) {
    case RecordKind::Ellipsoid: return recordsOf(ellipsoidLists, fileName, findings, reason);
    case RecordKind::Projection: return recordsOf(projectionLists, fileName, findings, reason);
    case RecordKind::Custom:
    case RecordKind::Standard: break;
    }
    return recordsOf(systems, fileName, findings, reason);
}

} // namespace

QString noFileFault(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists() || info.isFile())
        return {};
    return info.isDir() ? QStringLiteral("it is a directory")
                        : QStringLiteral("it is no regular file");
}

RecordKind kindOfDocument(const QString &fileName)
{
    io::DocumentFailure failure; // which reading will find, too
    switch (io::documentKind(fileName, failure)) {
    case io::DocumentKind::EllipsoidList: return RecordKind::Ellipsoid;
    case io::DocumentKind::ProjectionList: return RecordKind::Projection;
    case io::DocumentKind::System:
    case io::DocumentKind::Other: break;
    }
    return RecordKind::Custom;
}

std::optional<QList<LibraryRecord>> recordsIn(const QString &fileName, RecordKind kind,
                                              QString &reason)
{
    return readRecords(fileName, kind, nullptr, reason);
}

std::optional<QList<LibraryRecord>> reviewedRecordsIn(const QString &fileName, RecordKind kind,
                                                      QList<io::DocumentFinding> &findings,
                                                      QString &reason)
{
    return readRecords(fileName, kind, &findings, reason);
}

} // namespace KelStd::cli
