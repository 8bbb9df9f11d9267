#pragma once

#include <KelStd/proj/InitializationFailure.h>

#include <QtCore/QDir>

namespace KelStd::proj {

/// Makes sure that the private PROJ directory below `home` is prepared. When its marker is missing
/// or has another version, the archive below `programDir` is unpacked beside it, and what was
/// unpacked takes its place in one step; until then nothing of the earlier one is touched. The
/// marker is written last, after the geoid models: who finds it finds everything.
///
/// Returns the first failure of a step. A private directory that is a symbolic link is used but not
/// replaced: that failure is logged with what to do.
///
/// With a valid marker nothing is locked and nothing written. Otherwise processes that share a home
/// directory wait for each other here, and remove what killed ones have left.
InitializationFailure ensureInstalled(const QDir &home, const QDir &programDir);

} // namespace KelStd::proj
