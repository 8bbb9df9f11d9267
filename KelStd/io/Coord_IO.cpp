#include <KelStd/io/Coord_IO.h>

#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/DomParser.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/XmlDocument.h>

#include <QtCore/QObject>

namespace KelStd {

namespace {

/// Reads the record whose element is called `name`; without such an element, says so.
template <typename Record>
bool readRequired(const QDomElement &root, const QString &name, io::Reader<Record> read,
                  Record &record, io::DocumentFailure &failure)
{
    const QDomElement element = root.firstChildElement(name);
    if (!element.isNull())
        return read(element, record, failure);
    failure = {io::DocumentFault::MissingElement,
               QStringLiteral("%1 [%2] %3.")
                   .arg(QObject::tr("Format error, element"), name, QObject::tr("not found")),
               io::lineOf(root)};
    return false;
}

} // namespace

bool Coord_IO::xml_write(const Coord &coord, const QString &fileName, QString *errorMessage)
{
    return io::writeDocument(
        fileName, [&coord] { return io::coordDocument(coord); }, errorMessage);
}

bool Coord_IO::xml_write(const Coord &coord, const QString &fileName, io::DocumentFailure &failure)
{
    failure = io::writeDocument(fileName, [&coord] { return io::coordDocument(coord); });
    return !failure;
}

bool Coord_IO::xml_read(const QString &fileName, Coord &coord, QString *errorMessage)
{
    return io::reportedAsContract(io::readCoord(fileName, io::Source::Any, coord), errorMessage);
}

bool Coord_IO::xml_read(const QString &fileName, Coord &coord, io::DocumentFailure &failure)
{
    failure = io::readCoord(fileName, io::Source::Any, coord);
    return !failure;
}

namespace io {

DocumentFailure readCoord(const QString &fileName, Source source, Coord &coord)
{
    QDomDocument document;
    const DocumentFailure failure = readDocument(fileName, source, document);
    return failure ? failure : readCoord(document.documentElement(), coord);
}

bool readBackFromMemory(const Coord &given, Coord &read, QString *error)
{
    QDomDocument document;
    DocumentFailure failure = reparse(coordDocument(given), document);
    if (!failure)
        failure = readCoord(document.documentElement(), read);
    if (failure && error != nullptr)
        *error = failure.text;
    return !failure;
}

DocumentFailure readCoord(const QDomElement &root, Coord &coord)
{
    using Names = Coord_IO;
    DocumentFailure failure;
    if (!hasReadableVersion(root, failure))
        return failure;
    coord.coord_name = root.attribute(Names::xml_attrName_rootName);
    if (!readRequired(root, Names::xml_segName_ellipsoid, &readEllipsoid, coord.ellipsoid, failure)
        || !readRequired(root, Names::xml_segName_projection, &readProjection, coord.projection,
                         failure)
        || !readRequired(root, Names::xml_segName_ellipsoidTransform, &readEllipsoidTransform,
                         coord.ellipsoidTransform, failure)
        || !readRequired(root, Names::xml_segName_planeTransform, &readPlaneTransform,
                         coord.planeTransform, failure)
        || !readRequired(root, Names::xml_segName_elevationFitting, &readElevationFitting,
                         coord.elevationFitting, failure))
        return failure;

    // Documents older than the geoid models have no such element.
    const QDomElement geoid = root.firstChildElement(Names::xml_segName_geoidModel);
    if (!geoid.isNull())
        readGeoidModel(geoid, coord.geoidModel, failure);
    return failure;
}

} // namespace io

} // namespace KelStd
