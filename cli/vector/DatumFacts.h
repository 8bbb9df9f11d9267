#pragma once

#include <cli/vector/VectorFiles.h>

#include <QtCore/QString>

#include <string>
#include <vector>

/// What the names and numbers of a datum say.
namespace KelStd::cli::vector {

/// "D_WGS_1984" is "wgs 1984".
QString plainName(const std::string &datum);

/// Whether it has no name, or one that says so.
bool isUnnamed(const std::string &datum);

/// Numbers of a shift as they stand in a name, where a .prj has nothing but letters, digits and
/// the minus: "346_448_-125_157_542_06". Zeros at the end are left out.
QString plainShift(const QString &numbers);

/// The shift that the name of a datum states, "unknown based on ... using towgs84=1,2,3"; empty
/// where it states none.
QString shiftInName(const std::string &datum);

/// Frames that move with the earth or a plate and agree with WGS 84 to some decimetres, a metre at
/// most: what a receiver gives as WGS 84 is often one of them.
bool isNearWgs84(const std::string &datum);

/// Whether it is WGS 84 itself.
bool isWgs84(const std::string &datum);

/// Of radius, flattening and prime meridian.
bool haveSameEllipsoid(const Reference &one, const Reference &other);

/// Whether two stated shifts are one: to a millimetre on the ground.
bool haveSameShift(const std::vector<double> &one, const std::vector<double> &other);

/// "565.2369,50.0087,..."
QString shownShift(const std::vector<double> &shift);

/// For messages.
QString shownDatum(const Reference &reference);

} // namespace KelStd::cli::vector
