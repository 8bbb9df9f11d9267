#pragma once

#include <KelStd/coord/Coord.h>

#include <QtXml/QDomDocument>
#include <QtXml/QDomElement>

/// Elements of a document, one function for each record. Each raises what `toValueText` raises.
namespace KelStd::io {

/// The whole document of a coordinate system, processing instruction included.
QDomDocument coordDocument(const Coord &coord);

/// An element with nothing but the version that every record and root carries.
QDomElement versionedElement(QDomDocument &document, const QString &name);

QDomElement ellipsoidElement(QDomDocument &document, const Ellipsoid &ellipsoid);
QDomElement projectionElement(QDomDocument &document, const Projection &projection);

} // namespace KelStd::io
