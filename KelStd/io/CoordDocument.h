#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/io/DocumentFailure.h>
#include <KelStd/io/FileAccess.h>

#include <QtXml/QDomElement>

namespace KelStd::io {

/// `Coord_IO::xml_read`, with a choice of what may be read.
DocumentFailure readCoord(const QString &fileName, Source source, Coord &coord);

/// As above, and the origin beside the system, which a failure leaves.
DocumentFailure readSystem(const QString &fileName, Source source, Coord &coord,
                           SystemOrigin &origin);

/// The origin that a document has, and its control points, by its root.
SystemOrigin readOriginAndControl(const QDomElement &root);

/// What is left of it once the document is parsed.
DocumentFailure readCoord(const QDomElement &root, Coord &coord);

} // namespace KelStd::io
