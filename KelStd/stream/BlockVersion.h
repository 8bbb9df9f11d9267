#pragma once

#include <QtCore/QDataStream>

namespace KelStd {

/// The version that every block of a binary stream begins with. An ended stream yields 0, which no
/// block accepts: a `load` can go on behind the end of its stream only within one block.
inline qint32 readVersion(QDataStream &stream)
{
    qint32 version = 0;
    stream >> version;
    return version;
}

} // namespace KelStd
