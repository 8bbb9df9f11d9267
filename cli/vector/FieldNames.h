#pragma once

#include <cli/vector/VectorFiles.h>

#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace KelStd::cli::vector {

/// The names of a layer's fields, in their order.
QStringList fieldNames(const Layer &layer);

/// Names that a Shapefile can hold: at most ten bytes, each once in any case of its letters. The
/// program's own columns have names that say what they are; others are cut.
QStringList shapefileNames(const QStringList &names);

/// Which of the fields of a layer are coordinates that the program wrote into it, by their names:
/// those of its columns, or of a Shapefile that has them shortened.
std::vector<bool> ownCoordinates(const QStringList &names);

/// A unit of lengths that a column says.
struct StatedUnit
{
    QString column;
    double metres = 1.0; ///< what one of it measures [m]
};

/// The unit in which the program wrote the heights of a layer, by the names of its columns; nothing
/// where none says it, or several do not agree.
std::optional<StatedUnit> statedHeightUnit(const QStringList &names);

/// Which of the fields may say what the projected height is above, in the words of
/// `positions::heightReference`; -1 for none.
int heightReferenceAmong(const QStringList &names);

/// "local_northing_m as loc_north_, ..." of those that are different; empty for none.
QString changedNames(const QStringList &names, const QStringList &changed);

} // namespace KelStd::cli::vector
