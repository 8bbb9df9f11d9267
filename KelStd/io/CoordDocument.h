#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/io/DocumentFailure.h>
#include <KelStd/io/FileAccess.h>

#include <QtXml/QDomElement>

namespace KelStd::io {

/// `Coord_IO::xml_read`, with a choice of what may be read.
DocumentFailure readCoord(const QString &fileName, Source source, Coord &coord);

/// What is left of it once the document is parsed.
DocumentFailure readCoord(const QDomElement &root, Coord &coord);

} // namespace KelStd::io
