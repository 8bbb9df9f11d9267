#pragma once

#include <KelStd/grid/GridNodes.h>

#include <QtCore/QString>

/// A geoid grid in words.
namespace KelStd::cli {

/// A number of degrees with the digits that it has, at most nine after the point.
QString degreesText(double degrees);

/// "-90 to 90 deg"
QString latitudesText(const GridNodes &nodes);
QString longitudesText(const GridNodes &nodes);

/// "0.25 deg", or both spacings where they differ.
QString spacingText(const GridNodes &nodes);

/// What is to be said of one that ends in zeros.
QString zerosText();

} // namespace KelStd::cli
