#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QList>
#include <QtCore/QString>

/// Lists of ellipsoids and of projections as XML documents.
namespace KelStd::io {

/// Reads a list and appends its records to `ellipsoids`, each read into a fresh one.
///
/// Returns false when the file is no regular file that can be opened, with the file's own text in
/// `error` (when given), and, without a text, when it is no XML that is safe to parse, when its
/// root has another version (the root's name is not examined) and when a record has another
/// version; the records before that one are appended all the same. A list without records is read.
KELSTD_EXPORT bool readEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                                     QString *error = nullptr);

/// As above, and says of every failure why: `failure` becomes one with a text, and a line where the
/// document is at fault, or none when the list was read.
KELSTD_EXPORT bool readEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                                     DocumentFailure &failure);

/// As `readEllipsoidList`.
KELSTD_EXPORT bool readProjectionList(const QString &fileName, QList<Projection> &projections,
                                      QString *error = nullptr);
/// The same, with the failure whole.
KELSTD_EXPORT bool readProjectionList(const QString &fileName, QList<Projection> &projections,
                                      DocumentFailure &failure);

/// Replaces the file by a document of the records, in their order. Returns false, with the file's
/// own text in `error` (when given) and the old file in its place, unless every byte reached it.
KELSTD_EXPORT bool writeEllipsoidList(const QList<Ellipsoid> &ellipsoids, const QString &fileName,
                                      QString *error = nullptr);

/// As `writeEllipsoidList`. A parameter of kind `ValueType_Time` raises what `Coord_IO::xml_write`
/// raises for it.
KELSTD_EXPORT bool writeProjectionList(const QList<Projection> &projections,
                                       const QString &fileName, QString *error = nullptr);

} // namespace KelStd::io
