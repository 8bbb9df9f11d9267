#pragma once

#include <KelStd/coord/ControlPoint.h>
#include <KelStd/io/ReviewFindings.h>

#include <QtXml/QDomDocument>
#include <QtXml/QDomElement>

/// The element of a document in which the control points of its site stand.
namespace KelStd::io {

/// The name of the element.
QString controlElementName();

/// The control points that a document has, by its root. One without a name, a position or site
/// coordinates is passed over; another number that is none is not known.
ControlPoints readControl(const QDomElement &root);

/// Appends the element to the root of a document, unless there is no point. What reading would not
/// take over is left out.
void appendControl(QDomDocument &document, const ControlPoints &points);

/// What of the element is not taken over as it stands.
void reviewControlForm(const QDomElement &element, ReviewFindings &findings);

} // namespace KelStd::io
