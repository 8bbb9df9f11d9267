#pragma once

#include <KelStd/coord/Coord.h>

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

bool readEllipsoid(const QDomElement &element, Ellipsoid &ellipsoid);
bool readProjection(const QDomElement &element, Projection &projection);
bool readEllipsoidTransform(const QDomElement &element, stEllipsoinTransform &record);
bool readPlaneTransform(const QDomElement &element, stPlaneTransform &record);
bool readElevationFitting(const QDomElement &element, stElevationFitting &record);
bool readGeoidModel(const QDomElement &element, stGeoidModel &record);

} // namespace KelStd::io
