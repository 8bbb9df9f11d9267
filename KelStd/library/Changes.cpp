// Records added, replaced and removed: first in their files, then in memory.

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/ListDocuments.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QFile>

#include <optional>

namespace KelStd {

namespace {

bool writeDocument(const Ellipsoid &ellipsoid, const QString &path, QString *reason)
{
    return io::writeEllipsoidList({ellipsoid}, path, reason);
}

bool writeDocument(const Projection &projection, const QString &path, QString *reason)
{
    return io::writeProjectionList({projection}, path, reason);
}

bool writeDocument(const Coord &coord, const QString &path, QString *reason)
{
    return Coord_IO::xml_write(coord, path, reason);
}

/// The present name that keeps `name` from being added, or nothing.
template <typename Record>
std::optional<QString> nameTaking(const QString &name, const QMap<QString, Record> &records)
{
    for (auto record = records.keyBegin(); record != records.keyEnd(); ++record) {
        if (library::isTakenBy(name, *record))
            return *record;
    }
    return std::nullopt;
}

LibraryFailure taken(const QString &name, const QString &present)
{
    return {LibraryFailureKind::NameTaken,
            QObject::tr("the name \"%1\" is taken by \"%2\"").arg(name, present)};
}

LibraryFailure notPresent(const QString &name)
{
    return {LibraryFailureKind::NotPresent, QObject::tr("there is no \"%1\"").arg(name)};
}

/// The records of one kind in memory and in the directory of their files. What an operation returns
/// it also leaves in `failure`, which says why when it raises, too.
template <typename Record>
class Shelf
{
public:
    using Records = QMap<QString, Record>;

    Shelf(Records &records, const QString &directory, LibraryFailure &failure)
        : m_records(records), m_directory(directory), m_failure(failure)
    {
        m_failure = {};
    }

    /// `reserved` are records whose names are taken as well.
    bool add(const QString &name, const Record *record, const Records &reserved = {})
    {
        if (!isGiven(name, record) || !isFree(name, m_records) || !isFree(name, reserved)
            || !write(name, *record))
            return false;
        m_records.insert(name, *record);
        return true;
    }

    bool replace(const QString &name, const Record *record)
    {
        if (!isGiven(name, record))
            return false;
        const auto found = m_records.find(name);
        if (found == m_records.end())
            return fail(notPresent(name));
        if (!write(name, *record))
            return false;
        *found = *record;
        return true;
    }

    bool remove(const QString &name)
    {
        const auto found = m_records.find(name);
        if (found == m_records.end())
            return fail(notPresent(name));
        if (!staysInside(name))
            return false;
        QFile file(QDir(m_directory).filePath(library::recordFileName(name)));
        if (!file.remove()) {
            return fail(
                {LibraryFailureKind::NotRemovable,
                 QObject::tr("cannot remove %1: %2").arg(pathOf(name), file.errorString())});
        }
        m_records.erase(found);
        return true;
    }

private:
    bool fail(const LibraryFailure &failure)
    {
        m_failure = failure;
        return false;
    }

    bool isGiven(const QString &name, const Record *record)
    {
        if (name.isEmpty())
            return fail({LibraryFailureKind::NoName, QObject::tr("the name is empty")});
        if (record == nullptr)
            return fail({LibraryFailureKind::NoRecord, QObject::tr("no record is given")});
        return true;
    }

    bool isFree(const QString &name, const Records &records)
    {
        const auto present = nameTaking(name, records);
        return !present || fail(taken(name, *present));
    }

    bool staysInside(const QString &name)
    {
        if (!library::leadsOut(m_directory, name))
            return true;
        return fail({LibraryFailureKind::LeadsOut,
                     QObject::tr("the name \"%1\" leads out of the directory %2")
                         .arg(name, QDir(m_directory).absolutePath())});
    }

    bool write(const QString &name, const Record &record)
    {
        if (!staysInside(name))
            return false;
        m_failure = {LibraryFailureKind::NoDocument,
                     QObject::tr("no document can hold a parameter that is a time")};
        m_failure = library::written(pathOf(name), [&record](const QString &path, QString *reason) {
            return writeDocument(record, path, reason);
        });
        return !m_failure;
    }

    QString pathOf(const QString &name) const
    {
        return library::pathIn(m_directory, library::recordFileName(name));
    }

    Records &m_records;
    const QString &m_directory;
    LibraryFailure &m_failure;
};

} // namespace

bool StandardLibrary::addEllipsoidToLibrary(const QString &name, const Ellipsoid *ellipsoid)
{
    return Shelf(ellipsoidLibrary, ellipsoidListPath, failure).add(name, ellipsoid);
}

bool StandardLibrary::addProjectionToLibrary(const QString &name, const Projection *projection)
{
    return Shelf(projectionLibrary, projectionListPath, failure).add(name, projection);
}

bool StandardLibrary::addCoordToCustomLibrary(const QString &name, const Coord *coord)
{
    return Shelf(customCoordLibrary, customCoordPath, failure)
        .add(name, coord, standardCoordLibrary);
}

bool StandardLibrary::setEllipsoidInLibrary(const QString &name, const Ellipsoid *ellipsoid)
{
    return Shelf(ellipsoidLibrary, ellipsoidListPath, failure).replace(name, ellipsoid);
}

bool StandardLibrary::setProjectionInLibrary(const QString &name, const Projection *projection)
{
    return Shelf(projectionLibrary, projectionListPath, failure).replace(name, projection);
}

bool StandardLibrary::setCoordInCustomLibrary(const QString &name, const Coord *coord)
{
    return Shelf(customCoordLibrary, customCoordPath, failure).replace(name, coord);
}

bool StandardLibrary::removeEllipsoidFromLibrary(const QString &name)
{
    return Shelf(ellipsoidLibrary, ellipsoidListPath, failure).remove(name);
}

bool StandardLibrary::removeProjectionFromLibrary(const QString &name)
{
    return Shelf(projectionLibrary, projectionListPath, failure).remove(name);
}

bool StandardLibrary::removeCoordFromCustomLibrary(const QString &name)
{
    return Shelf(customCoordLibrary, customCoordPath, failure).remove(name);
}

} // namespace KelStd
