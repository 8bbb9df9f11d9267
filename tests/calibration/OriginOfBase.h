#pragma once

#include <KelStd/coord/SystemOrigin.h>

namespace KelStd::test {

/// All that may be known of a base system, but for control points.
inline SystemOrigin originOfBase()
{
    SystemOrigin base;
    base.authority = QStringLiteral("EPSG");
    base.code = QStringLiteral("28992");
    base.databaseVersion = QStringLiteral("EPSG v10.076");
    base.operation = SystemOrigin::Operation{QStringLiteral("EPSG:4833"), QStringLiteral("x"), 1.0};
    base.area = AreaOfUse{3.2, 50.75, 7.22, 53.7};
    base.areaName = QStringLiteral("Netherlands");
    base.countries = QStringList{QStringLiteral("Netherlands")};
    base.planeUnit = SystemOrigin::PlaneUnit{QStringLiteral("foot"), 0.3048};
    return base;
}

} // namespace KelStd::test
