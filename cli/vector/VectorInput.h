#pragma once

#include <cli/vector/DrawingComment.h>
#include <cli/vector/LayerRecords.h>
#include <cli/vector/PlaneText.h>
#include <cli/vector/ReferenceCheck.h>
#include <cli/vector/VectorFiles.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QString>

#include <memory>
#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

namespace vector {

/// What one unit of northings and eastings, and of all other lengths, measures [m].
struct LayerUnits
{
    double plane = 1.0;
    double others = 1.0;
    bool areGiven = false; ///< whether the user said so
};

/// A layer of a vector file as the input of a run.
class VectorInput
{
public:
    /// The option --layer. That of the names is one for all inputs: --names.
    static void addOptions(CommandLine &line);

    /// Opens the file and picks the layer; false after a report. To be called before PROJ is loaded
    /// (see `vectorFiles`).
    bool open(const QString &name, const CommandLine &line, Console &console);

    /// Holds the layer against the frame, and finds the frame where none is `given`. Nothing after
    /// a report. `units`: those of a layer that states none.
    std::optional<positions::Frame> frame(const LayerSystem &system,
                                          std::optional<positions::Frame> given,
                                          const LayerUnits &units, Console &console);

    /// Takes the layer's coordinates as those at a site, in these units. False, after a report,
    /// where the layer states a reference system of the earth or is a drawing of the program, whose
    /// points lie in the plane of a projection.
    bool takeAtSite(const LayerUnits &units, Console &console);

    /// Of features that have none [m]; without one 0 is taken.
    void setHeight(double height) { m_form.height = height; }

    /// Whether features that fail are kept as lines.
    void keepSource(bool keeps) { m_form.keepsSource = keeps; }

    /// The features in the frame that was found.
    RecordSource &records();

private:
    void warnOfLineBreaks(const QString &path, Console &console) const;
    bool pickLayer(const QString &wanted, Console &console);
    bool pickName(const QString &wanted, Console &console);
    bool mayHaveHeights() const;
    /// What the layer states, or what the program wrote into a drawing.
    Reference layerReference() const;
    std::optional<positions::Frame> frameByName(const LayerSystem &system,
                                                std::optional<positions::Frame> given,
                                                Console &console) const;
    QString mistakeOfDrawn(const LayerSystem &system) const;
    ReferenceCheck checkOf(const Reference &own, const LayerSystem &system,
                           const QString &unknown) const;
    std::optional<positions::Frame> frameOf(const Reference &layer, const LayerSystem &system,
                                            std::optional<positions::Frame> given,
                                            Console &console);
    void takeHeightReference(const Reference &layer, const LayerSystem &system, Console &console);
    bool takeUnits(const LayerUnits &units, Console &console);

    QString m_name;
    std::optional<double> m_drawingUnit;   ///< [m]
    std::optional<DrawingComment> m_drawn; ///< of a drawing of the program
    VectorFiles *m_files = nullptr;
    std::unique_ptr<LayerSource> m_source;
    std::unique_ptr<LayerReader> m_reader;
    LayerForm m_form;
    std::unique_ptr<LayerRecords> m_records;
};

} // namespace vector

} // namespace KelStd::cli
