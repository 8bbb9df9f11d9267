#include "support/BareProj.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QLibrary>

namespace KelStd::bench {

const BareProj &bareProj()
{
    static const BareProj functions = [] {
        QLibrary library(AppConfig::getInstance().homeDir().absoluteFilePath(
            QStringLiteral("proj/" KELSTD_PROJ_LIBRARY_NAME)));
        const auto newContext = reinterpret_cast<decltype(&::proj_context_create)>(
            library.resolve("proj_context_create"));
        return BareProj{
            newContext(),
            reinterpret_cast<decltype(BareProj::create)>(library.resolve("proj_create_crs_to_crs")),
            reinterpret_cast<decltype(BareProj::trans)>(library.resolve("proj_trans")),
            reinterpret_cast<decltype(BareProj::destroy)>(library.resolve("proj_destroy")),
            reinterpret_cast<decltype(BareProj::createOperation)>(library.resolve("proj_create")),
            reinterpret_cast<decltype(BareProj::toRadians)>(library.resolve("proj_torad"))};
    }();
    return functions;
}

Definitions::Definitions(const Coord &coord)
{
    Coord::__MakeCoordStrings(nullptr, &coord, wgs84Geographic, wgs84Cartesian, localGeographic,
                              localProjected);
}

} // namespace KelStd::bench
