#pragma once

#include <KelStd/coord/Pos.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <vector>

/// PROJ's own database of the EPSG parameters, through PROJ's own programs.
namespace KelStd::test {

/// The area in which a system is meant to be used [deg].
struct Area
{
    double south;
    double west;
    double north;
    double east;
};

/// The well-known text of a projected system, an ellipsoid or a transformation, without line ends.
QString epsgText(const QString &kind, const QString &code);

/// The name in a well-known text: the first one that is quoted after `keyword` and a bracket.
QString nameAfter(const QString &keyword, const QString &text);

/// Where a system is meant to be used.
struct Usage
{
    Area area;
    QString name; ///< the area in words
};

Usage epsgUsage(const QString &projectedCode);

/// The area of use of a projected system.
Area epsgArea(const QString &projectedCode);

/// `count` longitudes, latitudes and heights inside an area, always the same ones.
QList<Pos> seededPositions(const Area &area, int count);

/// WGS 84 longitude, latitude and height to those of a system's own datum, by the EPSG
/// transformation from that datum.
QList<Pos> epsgToLocalDatum(const QString &transformationCode, const QList<Pos> &positions);

/// Longitude and latitude of a projected system's own datum to its plane coordinates.
QList<Pos> epsgProject(const QString &projectedCode, const QList<Pos> &positions);

} // namespace KelStd::test
