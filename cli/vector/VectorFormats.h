#pragma once

#include <QtCore/QString>

namespace KelStd::cli::vector {

/// Whether a file is one with layers, by its extension or by its first bytes. A list of positions
/// as text is none, whatever it is called.
bool isVectorFile(const QString &name);

/// The ending of the file that has the attributes of such a file and is not beside it: "dbf"; empty
/// where nothing misses.
QString missingAttributes(const QString &path);

/// "GPKG, ESRI Shapefile, KML": the formats that are read; the reason why there are none instead.
QString readFormatNames();

} // namespace KelStd::cli::vector
