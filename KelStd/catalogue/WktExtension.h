#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/WktTree.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// PROJ strings within a WKT 1, EXTENSION["PROJ4","+proj=..."], which PROJ's programs follow
/// instead of the WKT around them.
namespace KelStd::catalogue {

/// The WKT without them.
QByteArray withoutExtensions(const QByteArray &wkt, const WktNode &root);

/// Whether such a string makes the Mercator projection around it that of web maps, which WKT 1 has
/// no other way to say.
bool isWebMercatorByExtension(const WktNode &root);

/// Why a string is not taken: it says something else than the WKT around it, or leads to a file.
/// Empty where nothing speaks against it.
QString doubtOnExtensions(const ProjSession &session, const QByteArray &wkt, const WktNode &root);

} // namespace KelStd::catalogue
