#pragma once

#include <cli/run/OutputForm.h>
#include <cli/values/DisplayOptions.h>

#include <KelStd/positions/ColumnSelection.h>
#include <KelStd/positions/PlaneUnit.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>

#include <memory>
#include <optional>

namespace KelStd::cli {

/// What a writer of locations has to know.
struct LocationOutput
{
    DisplayOptions display;
    /// Of northing and easting; nothing for that of the other lengths.
    std::optional<positions::PlaneUnit> planeUnit;
    QString geoidModel; ///< the one in use; empty for none
    bool hasHeader = true;
    positions::ColumnSelection columns;
    int width = 0; ///< of the terminal in columns of text; 0 when it has none or is not known
};

/// A form in which locations are printed. A new one is a writer and a row in LocationForms.cpp.
struct LocationForm
{
    OutputForm form;
    bool mayLackHeader; ///< whether --no-header has a meaning
    bool isConfigured;  ///< whether the library's display configuration is its default
    std::unique_ptr<positions::PositionWriter> (*makeWriter)(const LocationOutput &output);
};

/// In the order of `OutputForms`.
const std::vector<LocationForm> &locationForms();

/// The same, as options.
OutputForms locationOutputForms();

} // namespace KelStd::cli
