#pragma once

#include <cli/vector/DrawingComment.h>
#include <cli/vector/LayerRecords.h>
#include <cli/vector/ReferenceCheck.h>
#include <cli/vector/VectorFiles.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/positions/Columns.h>

#include <QtCore/QString>

#include <memory>
#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

namespace vector {

/// The system that positions are converted by, as a layer is held against it.
struct LayerSystem
{
    const Coord &coord;
    const SystemOrigin &origin;
    QString name;       ///< what messages call it
    QString geoidModel; ///< the one in use; empty for none
};

/// What one unit of northings and eastings, and of all other lengths, measures [m].
struct LayerUnits
{
    double plane = 1.0;
    double others = 1.0;
    bool areGiven = false; ///< whether the user said so
};

/// The facts of a system's plane; of kind `None` with the `reason` where it has no reference system
/// to be compared with. PROJ has to be loaded.
Reference referenceOf(const LayerSystem &system, VectorFiles &files, QString &reason);

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
