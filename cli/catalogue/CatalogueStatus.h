#pragma once

#include <cli/terminal/ExitStatus.h>

#include <KelStd/catalogue/CatalogueFailure.h>

namespace KelStd::cli {

/// Whether the catalogue refuses a system, which ends a command with status 1; otherwise PROJ or
/// its database is not there.
bool isRefusal(const catalogue::CatalogueFailure &failure);

ExitStatus statusOf(const catalogue::CatalogueFailure &failure);

} // namespace KelStd::cli
