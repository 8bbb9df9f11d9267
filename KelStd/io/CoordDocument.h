#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/io/FileAccess.h>

#include <QtXml/QDomElement>

namespace KelStd::io {

/// `Coord_IO::xml_read`, with a choice of what may be read.
bool readCoord(const QString &fileName, Source source, Coord &coord, QString *error);

/// What is left of it once the document is parsed.
bool readCoord(const QDomElement &root, Coord &coord, QString *error);

} // namespace KelStd::io
