#pragma once

#include <KelStd/coord/Coord.h>

#include <proj.h>

namespace KelStd::bench {

/// The peer that the library is measured against: the same PROJ functions of the same loaded file,
/// called with nothing around them.
struct BareProj
{
    /// As PROJ makes one, which opens files in PROJ's own way; the default context has what KelStd
    /// gave it.
    PJ_CONTEXT *context;
    decltype(&::proj_create_crs_to_crs) create;
    decltype(&::proj_trans) trans;
    decltype(&::proj_destroy) destroy;
    decltype(&::proj_create) createOperation;
    decltype(&::proj_torad) toRadians;
};

const BareProj &bareProj();

/// The four definitions of a system, ready for PROJ.
struct Definitions
{
    explicit Definitions(const Coord &coord);

    char wgs84Geographic[512] = {};
    char wgs84Cartesian[512] = {};
    char localGeographic[512] = {};
    char localProjected[512] = {};
};

} // namespace KelStd::bench
