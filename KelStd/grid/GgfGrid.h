#pragma once

#include <QtCore/QString>

/// Geoid grids as files: from the GGF layout to GTX, which PROJ reads.
///
/// Both libraries are compiled with these sources, KelStd for its public converter and the default
/// platform for the models that it finds by name: neither can borrow them from the other, because a
/// host may replace the platform. They stand on the ground and include nothing of ours.
namespace kelstd_grid {

/// The time of modification that the GTX file gets.
enum class Stamp
{
    Now,
    AsSource ///< so that a source that changes while it is read is newer than its GTX file
};

/// Writes the GGF grid of `source` as GTX to `target`, whole or not at all; any target that was
/// there is replaced, or stays as it was. Time and the target's size grow with the source's size;
/// one row is held in memory.
///
/// Numbers are copied bit by bit, those that are not finite included. False when the source cannot
/// be read, is shorter than its header, has no rows or columns, or fewer values than its header
/// says; or when the target cannot be written.
bool convertGgfToGtx(const QString &source, const QString &target, Stamp stamp = Stamp::Now);

} // namespace kelstd_grid
