#include <KelStd/library/RecordDocuments.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentKind.h>
#include <KelStd/io/ListDocuments.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>

namespace KelStd::library {

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
                                              io::DocumentFailure &failure)
{
    Found found;
    failure = fileFailure(fileName);
    if (failure || !reading(fileName, found, findings, failure))
        return std::nullopt;
    return asRecords(found);
}

std::optional<QList<LibraryRecord>> recordsIn(const QString &fileName, RecordKind kind,
                                              Findings *findings, io::DocumentFailure &failure)
{
    switch (kind) {
    case RecordKind::Ellipsoid: return recordsOf(ellipsoidLists, fileName, findings, failure);
    case RecordKind::Projection: return recordsOf(projectionLists, fileName, findings, failure);
    case RecordKind::Custom:
    case RecordKind::Standard: break;
    }
    return recordsOf(systems, fileName, findings, failure);
}

} // namespace

io::DocumentFailure fileFailure(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists() || info.isFile())
        return {};
    return {io::DocumentFault::CannotBeOpened,
            info.isDir() ? QObject::tr("it is a directory") : QObject::tr("it is no regular file")};
}

RecordKind kindOfDocument(const QString &fileName)
{
    io::DocumentFailure failure; // reading finds it, too
    switch (io::documentKind(fileName, failure)) {
    case io::DocumentKind::EllipsoidList: return RecordKind::Ellipsoid;
    case io::DocumentKind::ProjectionList: return RecordKind::Projection;
    case io::DocumentKind::System:
    case io::DocumentKind::Other: break;
    }
    return RecordKind::Custom;
}

std::optional<QList<LibraryRecord>> readRecords(const QString &fileName, RecordKind kind,
                                                io::DocumentFailure &failure)
{
    return recordsIn(fileName, kind, nullptr, failure);
}

std::optional<QList<LibraryRecord>> reviewRecords(const QString &fileName, RecordKind kind,
                                                  QList<io::DocumentFinding> &findings,
                                                  io::DocumentFailure &failure)
{
    return recordsIn(fileName, kind, &findings, failure);
}

} // namespace KelStd::library
