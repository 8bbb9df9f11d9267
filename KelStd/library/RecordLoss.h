#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QString>

namespace KelStd::library {

/// How a record fares in a document that the library writes.
struct LossCheck
{
    QString loss;    ///< the first thing that the document would not keep; empty when all is kept
    QString failure; ///< why that cannot be told: a document of it could not be read back
};

/// Makes a document of a record, in memory, and reads it back. Numbers that agree in the 15 digits
/// that a document has are the same. Raises what `Coord_IO::xml_write` raises. Names and texts of
/// the record stand in the result as they are, control characters included.
KELSTD_EXPORT LossCheck checkLoss(const LibraryRecord &record);

} // namespace KelStd::library
