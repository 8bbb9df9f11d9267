#pragma once

#include <QtCore/QString>

/// Parameters of a projection that change what other records, or this library, say of a system.
namespace KelStd::io {

/// What a parameter of PROJ with this value would overrule among those of a projection, translated;
/// empty for one that may stand there. Positions are metres with the easting first and heights
/// upwards, the datum shift and the geoid model have records of their own, and PROJ would give
/// another number without an error.
///
/// A prime meridian, an ellipsoid and axes that point west or south are a projection's own affair.
QString whatIsOverruled(const QString &projName, const QString &value);

} // namespace KelStd::io
