#pragma once

#include <QtCore/QFileInfo>

namespace KelStd::files {

/// Whether what a directory holds can be seen, so that one that looks empty is empty. What may not
/// be searched shows names, but nothing of what they are. True for anything that is no directory.
inline bool isListable(const QFileInfo &directory)
{
    return !directory.isDir() || (directory.isReadable() && directory.isExecutable());
}

} // namespace KelStd::files
