#include <KelStd/io/Coord_IO.h>

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
    QDomDocument document;
    if (!io::readDocument(fileName, document, errorMessage))
        return false;
    const QDomElement root = document.documentElement();
    if (!io::hasReadableVersion(root))
        return false;
    coord.coord_name = root.attribute(xml_attrName_rootName);
    if (!readRequired(root, xml_segName_ellipsoid, &io::readEllipsoid, coord.ellipsoid,
                      errorMessage)
        || !readRequired(root, xml_segName_projection, &io::readProjection, coord.projection,
                         errorMessage)
        || !readRequired(root, xml_segName_ellipsoidTransform, &io::readEllipsoidTransform,
                         coord.ellipsoidTransform, errorMessage)
        || !readRequired(root, xml_segName_planeTransform, &io::readPlaneTransform,
                         coord.planeTransform, errorMessage)
        || !readRequired(root, xml_segName_elevationFitting, &io::readElevationFitting,
                         coord.elevationFitting, errorMessage))
        return false;

    // Documents older than the geoid models have no such element.
    const QDomElement geoid = root.firstChildElement(xml_segName_geoidModel);
    return geoid.isNull() || io::readGeoidModel(geoid, coord.geoidModel);
}

} // namespace KelStd
