#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Documents of a coordinate system that keep its origin, too.
///
/// The origin stands in an element of its own, behind the records of the system:
///
///     <Origin ver="1" authority="EPSG" code="28992" database="EPSG v10.076">
///         <Operation code="EPSG:4833" name="Amersfoort to WGS 84 (4)" accuracy_m="1"/>
///         <Area west="3.2" south="50.75" east="7.24" north="53.7" name="Netherlands - onshore."/>
///         <Country name="Netherlands"/>
///         <Plane_Unit name="US survey foot" metres="0.304800609601219"/>
///     </Origin>
///
/// Behind it stand the control points of its site, if it has one, in degrees and metres; `use` is
/// that of `ControlPoint::useWord`:
///
///     <Control_Points ver="1">
///         <Point name="A1" longitude="9.1" latitude="47.2" height="512.25" north="1000"
///                east="5000" site_height="463.1" use="hv" sigma_h="0.01" sigma_v="0.02"/>
///     </Control_Points>
///
/// `Coord_IO::xml_read` passes over both: a `Coord` is the same with them and without. All of these
/// operations may be called on any thread.
namespace KelStd::io {

/// Reads the origin from a document, whatever is the matter with the records beside it.
///
/// As all reading it forgives: what is missing, or is no number, no box of longitudes and latitudes
/// or no length, is not known. `reviewCoord` says what was not taken over.
///
/// \param origin becomes what the document has, empty without such an element, or with one of
/// another version than 1. A failed call leaves it.
/// \return false with the `failure` for a file or an XML that `Coord_IO::xml_read` would not take
/// either; otherwise true, and `failure` becomes none.
KELSTD_EXPORT bool readOrigin(const QString &fileName, SystemOrigin &origin,
                              DocumentFailure &failure);

/// Reads what `Coord_IO::xml_read` and `readOrigin` read, from the same bytes: the file is read
/// once. With the results and failures of `xml_read`; a failed call leaves `origin`, while `coord`
/// may be partly updated.
KELSTD_EXPORT bool readSystem(const QString &fileName, Coord &coord, SystemOrigin &origin,
                              DocumentFailure &failure);

/// Writes what `Coord_IO::xml_write` writes, and the origin beside it unless it is empty. Replaces
/// the file whole or not at all, with the results, failures and exceptions of `xml_write`. Numbers
/// of the origin read back exactly. What `readOrigin` would not take over is not written: an area
/// that is not valid, an accuracy below 0 m or above 100 km, a unit shorter than 0.1 mm or longer
/// than 10 km.
KELSTD_EXPORT bool writeSystem(const Coord &coord, const SystemOrigin &origin,
                               const QString &fileName, DocumentFailure &failure);

/// The bytes that `writeSystem` would write, for what is no file.
///
/// \param bytes a failed call leaves them.
/// \return false with the `failure` for a document that could not be read back.
KELSTD_EXPORT bool systemDocument(const Coord &coord, const SystemOrigin &origin, QByteArray &bytes,
                                  DocumentFailure &failure);

/// What of the origin of `before` still holds for `after`, a changed system of the same document.
///
/// Code, area and plane unit belong to the ellipsoid and the projection: where one of these is
/// another, nothing of the origin holds. The operation belongs to the datum shift: where that is
/// another, it is not kept. The control points belong to all records together: where any of them is
/// another, they are not kept. Otherwise names, planar transformation, height fitting and geoid
/// model change nothing.
KELSTD_EXPORT SystemOrigin keptOrigin(const SystemOrigin &origin, const Coord &before,
                                      const Coord &after);

} // namespace KelStd::io
