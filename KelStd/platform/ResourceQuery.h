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
    /// absolute path. A name that could lead out of that folder (absolute, or with a ".." piece)
    /// is not available.
    QString makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &modelName);
};
