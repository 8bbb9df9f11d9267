#pragma once

#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/io/ReviewFindings.h>

#include <QtXml/QDomDocument>
#include <QtXml/QDomElement>

/// The element of a document in which the origin of its system stands.
namespace KelStd::io {

/// The name of the element.
QString originElementName();

/// The origin that a document has, by its root.
SystemOrigin readOrigin(const QDomElement &root);

/// Appends the element to the root of a document, unless the origin is empty.
void appendOrigin(QDomDocument &document, const SystemOrigin &origin);

/// What of the element is not taken over as it stands, and what in it cannot be meant.
void reviewOriginForm(const QDomElement &element, ReviewFindings &findings);

} // namespace KelStd::io
