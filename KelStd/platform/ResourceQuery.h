#pragma once

#include <KelStd/platform/PlatformExport.h>

#include <QtCore/QString>

/// The host's resource files.
class KELSTD_PLATFORM_EXPORT ResourceQuery
{
public:
    /// The file of the geoid model called `modelName`, or an empty text when it is not available.
    ///
    /// The default implementation looks in the home directory's "geoid_model_list" and returns an
    /// absolute path. A name that could lead out of that folder (absolute, or with a ".." piece),
    /// or that PROJ would read as two (with a comma), is not available.
    ///
    /// PROJ does not read GGF grids: of "model.ggf" (in any case) the path is that of
    /// "model.ggf.gtx" beside it, which is made at the first query and again when the source is
    /// newer. A grid that cannot be converted, or where the folder cannot be written, is not
    /// available. Several processes may ask at the same time.
    QString makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &modelName);
};
