#pragma once

#include <KelStd/grid/GridFile.h>

#include <QtCore/QString>

/// A geoid grid in words.
namespace KelStd::cli {

/// A number of degrees with the digits that it has, at most nine after the point.
QString degreesText(double degrees);

/// "-90 to 90 deg"
QString latitudesText(const GridFile &grid);
QString longitudesText(const GridFile &grid);

/// "0.25 deg", or both spacings where they differ.
QString spacingText(const GridFile &grid);

/// What is to be said of one that ends in zeros.
QString zerosText();

} // namespace KelStd::cli
