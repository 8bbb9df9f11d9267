// Records added, replaced and removed: first in their files, then in memory.

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/ListDocuments.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

namespace KelStd {

namespace {

bool writeDocument(const Ellipsoid &ellipsoid, const QString &path)
{
    return io::writeEllipsoidList({ellipsoid}, path, nullptr);
}

bool writeDocument(const Projection &projection, const QString &path)
{
    return io::writeProjectionList({projection}, path, nullptr);
}

bool writeDocument(const Coord &coord, const QString &path)
{
    return Coord_IO::xml_write(coord, path, nullptr);
}

/// Only the new name is trimmed: blanks around a present one make it another name.
template <typename Record>
bool isTaken(const QString &name, const QMap<QString, Record> &records)
{
    const QString trimmed = name.trimmed();
    for (auto record = records.keyBegin(); record != records.keyEnd(); ++record) {
        if (QString::compare(*record, name, Qt::CaseInsensitive) == 0
            || QString::compare(*record, trimmed, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// The records of one kind in memory and in the directory of their files.
template <typename Record>
class Shelf
{
public:
    Shelf(QMap<QString, Record> &records, const QString &directory)
        : m_records(records), m_directory(directory)
    {}

    bool add(const QString &name, const Record *record)
    {
        if (name.isEmpty() || record == nullptr || isTaken(name, m_records)
            || !write(name, *record))
            return false;
        m_records.insert(name, *record);
        return true;
    }

    bool replace(const QString &name, const Record *record)
    {
        if (name.isEmpty() || record == nullptr)
            return false;
        const auto found = m_records.find(name);
        if (found == m_records.end() || !write(name, *record))
            return false;
        *found = *record;
        return true;
    }

    bool remove(const QString &name)
    {
        const auto found = m_records.find(name);
        if (found == m_records.end() || library::leadsOut(m_directory, name)
            || !QDir(m_directory).remove(library::recordFileName(name)))
            return false;
        m_records.erase(found);
        return true;
    }

private:
    bool write(const QString &name, const Record &record) const
    {
        if (library::leadsOut(m_directory, name))
            return false;
        const QString path = library::pathIn(m_directory, library::recordFileName(name));
        return library::canBeWritten(path) && writeDocument(record, path);
    }

    QMap<QString, Record> &m_records;
    const QString &m_directory;
};

} // namespace

bool StandardLibrary::addEllipsoidToLibrary(const QString &name, const Ellipsoid *ellipsoid)
{
    return Shelf(ellipsoidLibrary, ellipsoidListPath).add(name, ellipsoid);
}

bool StandardLibrary::addProjectionToLibrary(const QString &name, const Projection *projection)
{
    return Shelf(projectionLibrary, projectionListPath).add(name, projection);
}

bool StandardLibrary::addCoordToCustomLibrary(const QString &name, const Coord *coord)
{
    return !isTaken(name, standardCoordLibrary)
           && Shelf(customCoordLibrary, customCoordPath).add(name, coord);
}

bool StandardLibrary::setEllipsoidInLibrary(const QString &name, const Ellipsoid *ellipsoid)
{
    return Shelf(ellipsoidLibrary, ellipsoidListPath).replace(name, ellipsoid);
}

bool StandardLibrary::setProjectionInLibrary(const QString &name, const Projection *projection)
{
    return Shelf(projectionLibrary, projectionListPath).replace(name, projection);
}

bool StandardLibrary::setCoordInCustomLibrary(const QString &name, const Coord *coord)
{
    return Shelf(customCoordLibrary, customCoordPath).replace(name, coord);
}

bool StandardLibrary::removeEllipsoidFromLibrary(const QString &name)
{
    return Shelf(ellipsoidLibrary, ellipsoidListPath).remove(name);
}

bool StandardLibrary::removeProjectionFromLibrary(const QString &name)
{
    return Shelf(projectionLibrary, projectionListPath).remove(name);
}

bool StandardLibrary::removeCoordFromCustomLibrary(const QString &name)
{
    return Shelf(customCoordLibrary, customCoordPath).remove(name);
}

} // namespace KelStd
