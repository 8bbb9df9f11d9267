#pragma once

#include <QtCore/QString>

namespace KelStd::library {

/// The file, in a library's directory, whose lock is held by who changes the library.
inline QString lockName()
{
    return QStringLiteral(".changing.lock");
}

} // namespace KelStd::library
