#pragma once

#include <QtCore/QString>

#include <filesystem>

/// What the headers of grid files promise, held against what the files have. PROJ believes a
/// header: it sets room aside for a row of two thousand million values, and gives numbers for a
/// grid whose nodes are not where the header says.
namespace kelstd_grid {

/// Whether the file is a GTX grid of exactly the size that its header asks for, with an origin and
/// spacings that are places on the earth. False also for one that cannot be read.
bool isWholeGtx(const QString &file);

/// Whether the file is a GGF grid that has all the values that its header promises, with an origin
/// and spacings that are places on the earth. False also for one that cannot be read.
bool isWholeGgf(const QString &file);

/// Whether `gtx` is a whole GTX grid with the nodes of the GGF grid `ggf`, whatever their values
/// are.
bool haveTheSameNodes(const QString &gtx, const QString &ggf);

/// False for a grid file that PROJ must not be given: a GTX or NTv2 file that is not what its
/// header says, and what is no regular file. Files of other layouts, and those that cannot be
/// opened, are for PROJ to judge: true.
bool isForProj(const std::filesystem::path &file);

} // namespace kelstd_grid
