#pragma once

#include <KelStd/catalogue/ImportWork.h>

namespace KelStd::catalogue {

/// "EPSG:4833 (Amersfoort to WGS 84 (4))", in messages.
QString nameOf(const DatumShift &shift);

/// Refuses an import of whose candidates none can be taken, with what is nearest to one. False.
bool refuseForShift(ImportWork &work);

} // namespace KelStd::catalogue
