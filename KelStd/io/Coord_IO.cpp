#include <KelStd/io/Coord_IO.h>

#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/XmlDocument.h>

#include <QtCore/QObject>

namespace KelStd {

namespace {

/// Reads the record whose element is called `name`; without such an element, says so.
template <typename Record>
bool readRequired(const QDomElement &root, const QString &name,
                  bool (*read)(const QDomElement &, Record &), Record &record, QString *error)
{
    const QDomElement element = root.firstChildElement(name);
    if (!element.isNull())
        return read(element, record);
    if (error != nullptr) {
        *error = QStringLiteral("%1 [%2] %3.")
                     .arg(QObject::tr("Format error, element"), name, QObject::tr("not found"));
    }
    return false;
}

} // namespace

bool Coord_IO::xml_write(const Coord &coord, const QString &fileName, QString *errorMessage)
{
    return io::writeDocument(
        fileName, [&coord] { return io::coordDocument(coord); }, errorMessage);
}

bool Coord_IO::xml_read(const QString &fileName, Coord &coord, QString *errorMessage)
{
    return io::readCoord(fileName, io::Source::Any, coord, errorMessage);
}

namespace io {

bool readCoord(const QString &fileName, Source source, Coord &coord, QString *error)
{
    QDomDocument document;
    return readDocument(fileName, source, document, error)
           && readCoord(document.documentElement(), coord, error);
}

bool readBackFromMemory(const Coord &given, Coord &read, QString *error)
{
    QDomDocument document;
    return reparse(coordDocument(given), document, error)
           && readCoord(document.documentElement(), read, error);
}

bool readCoord(const QDomElement &root, Coord &coord, QString *error)
{
    using Names = Coord_IO;
    if (!hasReadableVersion(root))
        return false;
    coord.coord_name = root.attribute(Names::xml_attrName_rootName);
    if (!readRequired(root, Names::xml_segName_ellipsoid, &readEllipsoid, coord.ellipsoid, error)
        || !readRequired(root, Names::xml_segName_projection, &readProjection, coord.projection,
                         error)
        || !readRequired(root, Names::xml_segName_ellipsoidTransform, &readEllipsoidTransform,
                         coord.ellipsoidTransform, error)
        || !readRequired(root, Names::xml_segName_planeTransform, &readPlaneTransform,
                         coord.planeTransform, error)
        || !readRequired(root, Names::xml_segName_elevationFitting, &readElevationFitting,
                         coord.elevationFitting, error))
        return false;

    // Documents older than the geoid models have no such element.
    const QDomElement geoid = root.firstChildElement(Names::xml_segName_geoidModel);
    return geoid.isNull() || readGeoidModel(geoid, coord.geoidModel);
}

} // namespace io

} // namespace KelStd
