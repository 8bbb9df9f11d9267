#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

namespace KelStd::test {

/// A home directory of its own, which the platform's AppConfig is set to; the program directory is
/// set to the build's. Gone with the object.
class TemporaryHome
{
public:
    enum Content
    {
        Empty,
        PreparedProj ///< the private PROJ directory, as unpacked, with links instead of copies
    };

    explicit TemporaryHome(Content content = Empty);
    TemporaryHome(const TemporaryHome &) = delete;
    TemporaryHome &operator=(const TemporaryHome &) = delete;

    /// Makes AppConfig point here (again).
    void use() const;

    QString path() const { return m_dir.path(); }
    /// The absolute path of something below this home.
    QString path(const QString &relative) const { return m_dir.filePath(relative); }

private:
    QTemporaryDir m_dir;
};

/// Writes a file whole, creating the folders above it.
void writeFile(const QString &path, const QByteArray &bytes);

/// The bytes of a file; a missing one fails the test.
QByteArray readFile(const QString &path);

/// The four bytes of a marker file with this version (a big-endian 32-bit integer).
QByteArray markerBytes(qint32 version);

} // namespace KelStd::test
