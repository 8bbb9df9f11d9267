#pragma once

#include <QtCore/QString>

#include <string>

namespace KelStd::cli::vector {

/// What of a file of text is no number where a point has its coordinates, with its place: a driver
/// reads a text as far as it is a number, "52,2755" as 52, and takes 0 for others. Empty where all
/// are numbers, and for formats that are no texts.
///
/// `format`: as the driver is called.
QString damagedCoordinate(const QString &path, const std::string &format);

} // namespace KelStd::cli::vector
