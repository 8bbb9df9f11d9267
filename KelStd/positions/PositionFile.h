#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>

#include <functional>

namespace KelStd::positions {

/// Writes one position of a file; called by who has them, for one after the other.
using WritePosition = std::function<void(const PrintedPosition &)>;

/// Replaces a file by positions in the form of a writer, whole or not at all: when `positions`
/// returns false or raises, and when the disk is full, the old file stays. A link stays, and what
/// it leads to is replaced; a pipe or a device is written into. A file of any length takes the same
/// memory.
///
///     CsvWriter writer(ValuePrinter({}, ValuePrinter::Output::Csv), true);
///     writePositionFile("site.csv", writer, {}, [&](const WritePosition &write) {
///         for (const Location &location : locations)
///             write({{}, location, noModel, {}});
///         return true;
///     });
///
/// \param writer is used by this call alone meanwhile
/// \param columns what the positions have besides; as many carried fields as each of them
/// \param positions hands over all positions; false to keep the old file. It is not called when the
///        file cannot be opened.
/// \param error without success, and when given, why the file was not written; empty where
///        `positions` returned false
/// \return whether every byte reached the file. Raises what `positions` raises.
KELSTD_EXPORT bool writePositionFile(const QString &fileName, PositionWriter &writer,
                                     const InputColumns &columns,
                                     const std::function<bool(const WritePosition &)> &positions,
                                     QString *error = nullptr);

} // namespace KelStd::positions
