#pragma once

#include "delivered/EpsgReference.h"

#include <KelStd/coord/SystemOrigin.h>

namespace KelStd::test {

/// The origin of a delivered system is that of the database: `code` with its authority, and where
/// the system of that code is meant to be used. Its plane unit is the metre.
void expectOrigin(const SystemOrigin &origin, const QString &code, const Usage &usage);

} // namespace KelStd::test
