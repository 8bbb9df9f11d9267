#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The names of records as names of files. Any thread may ask.
namespace KelStd::library {

/// The name of the file of the record called `name`, which is used as it stands.
KELSTD_EXPORT QString recordFileName(const QString &name);

/// The name of a file for the record called `name`, whatever separators of paths the name has: each
/// is written as "%2F" or "%5C", and "%25" stands for a percent sign that would look so. "RD New /
/// Amersfoort" is in "RD New %2F Amersfoort.xml". Other names are as in `recordFileName`. No two
/// names share a file.
KELSTD_EXPORT QString safeFileName(const QString &name);

/// Whether the file of a record called `name` would lie elsewhere than in `directory` and the
/// folders in it. The registry refuses such a name.
///
/// By its name: one that begins with a separator, a drive ("C:/"), a colon (Qt's resources) or a
/// tilde (a shell's home), or that goes up on its way (".."). That is asked with both separators,
/// so that a library moves from one system to another. Or because a folder of the name is a link
/// that leads out of the directory.
KELSTD_EXPORT bool leadsOut(const QDir &directory, const QString &name);

/// Why `name` is not fit for a record that somebody adds, as a clause to show; empty when it is.
///
/// Stricter than the registry, which takes each name that a file can have: a name is refused that
/// is blank, has a control character or a character that Unicode keeps free, that begins with a
/// separator of paths, a drive ("C:/"), a colon, a tilde or a dot, or whose `safeFileName` would
/// have more than 255 bytes.
KELSTD_EXPORT QString nameFault(const QString &name);

/// The code that a text has the form of, as "EPSG:28992": that text, or its URN
/// ("urn:ogc:def:crs:EPSG::28992"). Empty for any other text.
KELSTD_EXPORT QString codeOfForm(const QString &text);

/// Why a system of this origin must not be called `name`, as a clause to show; empty when it may.
/// What has the form of a code means the system of that code: one that is called so must have it.
KELSTD_EXPORT QString codeNameFault(const QString &name, const SystemOrigin &origin);

/// Whether a present name keeps a new one from being added: it equals the new one, or the new one
/// without the blanks around it, in all but case. Blanks around the present name count.
KELSTD_EXPORT bool isTakenBy(const QString &name, const QString &present);

/// The names that somebody who typed `name` may have meant.
///
/// \return those of `names` that `nearNames` gives, the likeliest first
KELSTD_EXPORT QStringList similarNames(const QString &name, const QStringList &names);

} // namespace KelStd::library
