#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

namespace KelStd::test {

struct ZipEntry
{
    QByteArray name; ///< a name that ends in "/" is a folder
    QByteArray content;
    /// Permissions and further mode bits as Unix numbers them; 0 stands for the usual ones.
    quint32 mode = 0;
};

/// A zip archive that holds the entries uncompressed.
QByteArray storedZip(const QList<ZipEntry> &entries);

} // namespace KelStd::test
