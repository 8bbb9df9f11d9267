// The registry rebuilt from its files.

#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/ListDocuments.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/StandardLibrary.h>

#include <vector>

namespace KelStd {

namespace {

template <typename Record>
QMap<QString, Record> loadedLists(const QString &directory,
                                  bool (*read)(const QString &, QList<Record> &, QString *),
                                  QString Record::*name)
{
    QMap<QString, Record> records;
    for (const QString &path : library::documentsIn(directory)) {
        QList<Record> list;
        if (!read(path, list, nullptr))
            continue;
        for (const Record &record : list)
            records.insert(record.*name, record);
    }
    return records;
}

/// The same text in memory of its own. One that is null stays so: a stream tells the difference.
QString ownText(const QString &text)
{
    return text.isNull() ? QString() : QString(text.constData(), text.size());
}

/// Copies what a system shares with its document, and what was allocated while the document was in
/// memory. Otherwise thousands of small pieces would stay where documents come and go, the next
/// documents would find nothing but gaps, and loading would take half as long again. The system's
/// name is left alone.
void compact(Coord &coord)
{
    for (QString *text : {&coord.ellipsoid.ellipsoid_name, &coord.ellipsoid.proj4EllpsName,
                          &coord.projection.projection_name, &coord.projection.proj4Projection,
                          &coord.geoidModel.modelFileName})
        *text = ownText(*text);

    QMap<QString, Param> params;
    for (auto param = coord.projection.param.constBegin();
         param != coord.projection.param.constEnd(); ++param)
        params.insert(params.constEnd(), ownText(param.key()), param.value());
    coord.projection.param.swap(params);

    QMap<QString, QString> projNames;
    for (auto name = coord.projection.paramProj4.constBegin();
         name != coord.projection.paramProj4.constEnd(); ++name)
        projNames.insert(projNames.constEnd(), ownText(name.key()), ownText(name.value()));
    coord.projection.paramProj4.swap(projNames);
}

struct ReadSystem
{
    Coord coord;
    SystemOrigin origin;
};

/// `origins` become those of the systems that have one.
QMap<QString, Coord> loadedSystems(const QString &directory, QMap<QString, SystemOrigin> &origins)
{
    origins.clear();
    QMap<QString, Coord> systems;
    std::vector<ReadSystem> waiting;
    // Allocating a large entry makes the allocator join the small pieces that the documents left:
    // otherwise the copies would lie scattered in them. That takes its time, so some systems wait
    // for it; to wait for more gains nothing, as the benchmark of libraries shows.
    const auto takeIn = [&] {
        for (ReadSystem &read : waiting) {
            read.coord.coord_name = ownText(read.coord.coord_name); // and the key shares it
            const QString &name = read.coord.coord_name;
            compact(*systems.insert(name, read.coord));
            if (read.origin.isEmpty())
                origins.remove(name);
            else
                origins.insert(name, read.origin);
        }
        waiting.clear();
    };
    constexpr std::size_t together = 64;
    waiting.reserve(together);
    for (const QString &path : library::documentsIn(directory)) {
        waiting.emplace_back();
        if (io::readSystem(path, io::Source::RegularFile, waiting.back().coord,
                           waiting.back().origin))
            waiting.pop_back();
        if (waiting.size() == together)
            takeIn();
    }
    takeIn();
    return systems;
}

} // namespace

void StandardLibrary::loadLibrary()
{
    loadBaseCoord();
    ellipsoidLibrary.clear();
    projectionLibrary.clear();
    standardCoordLibrary.clear();
    customCoordLibrary.clear();
    showInCreateProjectCoords.clear();

    ellipsoidLibrary =
        loadedLists(ellipsoidListPath, &io::readEllipsoidList, &Ellipsoid::ellipsoid_name);
    projectionLibrary =
        loadedLists(projectionListPath, &io::readProjectionList, &Projection::projection_name);
    customCoordLibrary = loadedSystems(customCoordPath, customOrigins);
    standardCoordLibrary = loadedSystems(standardCoordPath, standardOrigins);
    loadShowInProjectCoordNamesFile(); // which keeps only the systems that are known by now
    loadShowConfig();
}

void StandardLibrary::loadBaseCoord()
{
    Coord coord;
    if (!io::readCoord(baseCoordFilePath, io::Source::RegularFile, coord))
        baseCoord = coord;
}

} // namespace KelStd
