#pragma once

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// A coordinate system as a conversion uses it.
struct ConversionSystem
{
    QString name; ///< as the command line has it
    Coord coord;
    SystemOrigin origin; ///< whose area the positions are held against
    QString geoidModel;  ///< the one in use; empty for none
    calibration::SiteTransform site;
};

} // namespace KelStd::cli
