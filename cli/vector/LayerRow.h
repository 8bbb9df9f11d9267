#pragma once

#include <cli/vector/VectorFiles.h>

#include <QtCore/QByteArray>

#include <string_view>
#include <vector>

namespace KelStd::cli::vector {

/// Rows of a layer as bytes, in which form threads hand them to the one that writes: three numbers
/// and a text for each field, all behind their sizes. A null text is no value.
void appendRow(QByteArray &bytes, const double (&place)[3], const std::vector<QByteArray> &texts);

/// Takes the first row off `bytes`; false at their end. A text is a value of the field's type; one
/// that is no number where one has to be is none.
bool takeRow(std::string_view &bytes, const std::vector<Field> &fields, Feature &feature);

} // namespace KelStd::cli::vector
