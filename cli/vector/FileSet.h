#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <memory>

namespace KelStd::cli::vector {

/// A file, with those of other extensions that belong to it, that appears whole or not at all. It
/// is made in a directory of its own beside its place, which is gone with this object.
class FileSet
{
public:
    /// `target`: the file's name, with its extension.
    explicit FileSet(const QString &target);

    /// The files that it may be made of.
    QStringList names() const;

    /// The files at the place that would be replaced or would be wrong beside the new ones: for a
    /// Shapefile its attributes and indices, too.
    QStringList existing() const;

    /// Whether a file of this name would be one of them.
    bool has(const QString &name) const;

    /// Makes the directory; false with the `error`.
    bool prepare(QString &error);

    /// Where the file is to be made.
    QString path() const;

    /// Puts all files that were made into their place, and takes away those before. False with the
    /// `error`; then those before are there as they were.
    bool commit(QString &error);

private:
    QString m_target; ///< absolute; of a link where it leads
    std::unique_ptr<QTemporaryDir> m_directory;
};

} // namespace KelStd::cli::vector
