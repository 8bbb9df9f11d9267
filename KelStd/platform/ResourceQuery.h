#pragma once

#include <KelStd/platform/PlatformExport.h>

#include <QtCore/QString>

/// The host's resource files.
class KELSTD_PLATFORM_EXPORT ResourceQuery
{
public:
    /// The file of the geoid model called `modelName`, or an empty text when it is not available.
    ///
    /// The default implementation looks in the home directory's "geoid_model_list", then in the
    /// program directory's, and returns an absolute path. Where a GTX or GGF file of the home
    /// directory has another size than its header says, as an interrupted copy leaves it, a whole
    /// one of the program directory is taken instead. Without such a one the path of the first is
    /// returned, and the geoid operations refuse it. A name that could lead out of the folders
    /// (absolute, or with a ".." piece), or that PROJ would read as two (with a comma), is not
    /// available.
    ///
    /// PROJ does not read GGF grids: of "model.ggf" (in any case) the path is that of
    /// "model.ggf.gtx" beside it, or in the home directory's folder where nothing can be written
    /// beside it. It has the source's time of modification, and is made anew when the two differ. A
    /// grid that cannot be converted is not available. Several processes may ask at the same time.
    QString makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &modelName);
};
