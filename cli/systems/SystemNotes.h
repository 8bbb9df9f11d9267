#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

/// What a surveyor has to know about a system before trusting its numbers, each in a sentence or
/// two. Empty for a system without peculiarities.
QStringList notesOn(const Coord &coord);

/// "west and south" of an ellipsoid whose axes do not point east and north; else empty.
QString unusualAxes(const Ellipsoid &ellipsoid);

} // namespace KelStd::cli
