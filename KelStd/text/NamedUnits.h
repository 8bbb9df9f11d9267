#pragma once

#include <QtCore/QString>

#include <string_view>

/// Units of coordinate systems by the names that definitions and documents give them.
namespace KelStd::text {

/// The size of the EPSG Dataset and of PROJ's table of units.
struct NamedUnit
{
    std::string_view name; ///< in small letters, without what parts words
    double size;           ///< in metres or radians
    bool isAngle = false;
};

/// The unit of a name, whatever its case and what parts its words; null where it is not known.
const NamedUnit *namedUnit(const QString &name);

/// How far a size is off that of its name, relative to it.
double differenceOf(const NamedUnit &named, double size);

/// Whether a size is that of its name, but for digits that nobody loses.
bool isSizeOf(const NamedUnit &named, double size);

} // namespace KelStd::text
