#pragma once

#include <QtCore/QString>

namespace kelstd_grid {

/// The folder of geoid models, in the home directory and in the program directory.
inline QString geoidFolderName()
{
    return QStringLiteral("geoid_model_list");
}

/// Where the GTX file of a GGF grid stands: "model.ggf.gtx", so that it does not take the place of
/// a "model.gtx" that the user has, too.
inline QString conversionOf(const QString &ggf)
{
    return ggf + QStringLiteral(".gtx");
}

} // namespace kelstd_grid
