#pragma once

#include <cli/library/LibraryRecord.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// How a record fares in a document that the library writes.
struct LossCheck
{
    QString loss;    ///< the first thing that the document would not keep; empty when all is kept
    QString failure; ///< why that cannot be told: a document of it could not be read
};

/// Makes a document of a record, in memory, and reads it back. Numbers that agree in the 15 digits
/// that a document has are the same.
LossCheck checkLoss(const Record &record);

} // namespace KelStd::cli
