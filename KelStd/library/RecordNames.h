#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>

/// The names of records as names of files.
namespace KelStd::library {

/// The name of the file of the record called `name`, which is used as it stands.
QString recordFileName(const QString &name);

/// Whether the file of a record called `name` would lie elsewhere than in `directory` and the
/// folders in it.
///
/// By its name: one that begins with a separator, a drive ("C:/"), a colon (Qt's resources) or a
/// tilde (a shell's home), or that goes up on its way (".."). That is asked with both separators,
/// so that a library moves from one system to another. Or because a folder of the name is a link
/// that leads out of the directory.
bool leadsOut(const QDir &directory, const QString &name);

} // namespace KelStd::library
