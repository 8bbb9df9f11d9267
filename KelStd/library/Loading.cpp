// The registry rebuilt from its files.

#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/ListDocuments.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/StandardLibrary.h>

namespace KelStd {

namespace {

bool readSystem(const QString &path, Coord &coord)
{
    return io::readCoord(path, io::Source::RegularFile, coord, nullptr);
}

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

QMap<QString, Coord> loadedSystems(const QString &directory)
{
    QMap<QString, Coord> systems;
    for (const QString &path : library::documentsIn(directory)) {
        Coord coord;
        if (readSystem(path, coord))
            systems.insert(coord.coord_name, coord);
    }
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
    customCoordLibrary = loadedSystems(customCoordPath);
    standardCoordLibrary = loadedSystems(standardCoordPath);
    loadShowInProjectCoordNamesFile(); // which keeps only the systems that are known by now
    loadShowConfig();
}

void StandardLibrary::loadBaseCoord()
{
    Coord coord;
    if (readSystem(baseCoordFilePath, coord))
        baseCoord = coord;
}

} // namespace KelStd
