#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QList>
#include <QtXml/QDomElement>

/// Records from their elements. Each reader fails when the element's version is not the one that is
/// read, and otherwise changes only what the element mentions.
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

/// As above, and says what it has otherwise.
bool hasReadableVersion(const QDomElement &element, DocumentFailure &failure);

template <typename Record>
using Reader = bool (*)(const QDomElement &, Record &, DocumentFailure &);

/// The records of a list document, whose elements are called `name`; those before one that is not
/// read are appended all the same.
template <typename Record>
bool readRecords(const QDomElement &root, const QString &name, Reader<Record> read,
                 QList<Record> &records, DocumentFailure &failure)
{
    return hasReadableVersion(root, failure)
           && readEach(root, name, [&](const QDomElement &element) {
                  Record record;
                  if (!read(element, record, failure))
                      return false;
                  records << record;
                  return true;
              });
}

bool readParam(const QDomElement &element, Param &param, DocumentFailure &failure);
bool readEllipsoid(const QDomElement &element, Ellipsoid &ellipsoid, DocumentFailure &failure);
bool readProjection(const QDomElement &element, Projection &projection, DocumentFailure &failure);
bool readEllipsoidTransform(const QDomElement &element, stEllipsoinTransform &record,
                            DocumentFailure &failure);
bool readPlaneTransform(const QDomElement &element, stPlaneTransform &record,
                        DocumentFailure &failure);
bool readElevationFitting(const QDomElement &element, stElevationFitting &record,
                          DocumentFailure &failure);
bool readGeoidModel(const QDomElement &element, stGeoidModel &record, DocumentFailure &failure);

} // namespace KelStd::io
