#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd {

/// PROJ's names of the projection that gives longitude and latitude instead of easting and
/// northing, with blanks between them.
inline constexpr char geographicProjections[] = "longlat latlong lonlat latlon";

/// Whether a projection of that PROJ name gives longitude and latitude. The case counts, as it does
/// for PROJ.
inline bool isGeographicProjection(const QString &name)
{
    return QString::fromLatin1(geographicProjections).split(QLatin1Char(' ')).contains(name);
}

} // namespace KelStd
