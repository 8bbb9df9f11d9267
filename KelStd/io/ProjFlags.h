#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

/// The parameters of PROJ that have no value.
namespace KelStd::io {

/// Whether PROJ takes the parameter without a value, as "+south", or with a word for true or false:
/// +south=1 means north. Any thread may ask; PROJ need not be loaded.
KELSTD_EXPORT bool isProjFlag(const QString &name);

} // namespace KelStd::io
