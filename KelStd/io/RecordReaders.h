#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QList>
#include <QtXml/QDomElement>

/// Records from their elements. Each reader returns false when the element's version is not the
/// one that is read, and otherwise changes only what the element mentions.
namespace KelStd::io {

/// Calls `read` for each child element called `name`, in document order, until one returns false.
template <typename Read>
bool readEach(const QDomElement &element, const QString &name, Read read)
{
    for (QDomElement child = element.firstChildElement(name); !child.isNull();
         child = child.nextSiblingElement(name)) {
        if (!read(child))
            return false;
    }
    return true;
}

bool hasReadableVersion(const QDomElement &element);

/// The records of a list document, whose elements are called `name`; those before one that is not
/// read are appended all the same.
template <typename Record>
bool readRecords(const QDomElement &root, const QString &name,
                 bool (*read)(const QDomElement &, Record &), QList<Record> &records)
{
    return hasReadableVersion(root)
           && readEach(root, name, [read, &records](const QDomElement &element) {
                  Record record;
                  if (!read(element, record))
                      return false;
                  records << record;
                  return true;
              });
}

bool readParam(const QDomElement &element, Param &param);
bool readEllipsoid(const QDomElement &element, Ellipsoid &ellipsoid);
bool readProjection(const QDomElement &element, Projection &projection);
bool readEllipsoidTransform(const QDomElement &element, stEllipsoinTransform &record);
bool readPlaneTransform(const QDomElement &element, stPlaneTransform &record);
bool readElevationFitting(const QDomElement &element, stElevationFitting &record);
bool readGeoidModel(const QDomElement &element, stGeoidModel &record);

} // namespace KelStd::io
