#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/SystemArea.h>

#include <QtCore/QString>

namespace KelStd::catalogue {

/// What is to be added to the longitude of a projection's origin [deg] as PROJ writes it, so that
/// it computes what the method says. Only Belgium's conic projection needs it: it turns about the
/// pole by 29.2985", which PROJ leaves out, 0.7 km.
double missingTurn(const ProjSession &session, const PJ *projected);

/// How PROJ's projection differs from the published method.
struct MethodDifference
{
    QString warning;     ///< an English sentence; empty where nothing differs
    double metres = 0.0; ///< the largest difference within an area, where it is known [m]
};

/// The difference within the area of a projected system; one that is not known is the whole earth.
MethodDifference methodDifference(const ProjSession &session, const PJ *projected,
                                  const SystemArea &area);

} // namespace KelStd::catalogue
