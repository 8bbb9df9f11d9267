#pragma once

#include <QtCore/QByteArray>

#include <optional>
#include <utility>
#include <vector>

/// PROJ's texts of operations, taken apart.
namespace KelStd::catalogue {

/// One step of a pipeline.
struct ProjStep
{
    QByteArray name; ///< "helmert"
    bool isInverse = false;
    /// Parameters in their order, without the plus sign; those without a value have an empty one.
    std::vector<std::pair<QByteArray, QByteArray>> parameters;

    bool has(const char *key) const;
    /// The text of a parameter; empty where there is none.
    QByteArray text(const char *key) const;
    /// The number of a parameter; nothing where there is none, or no number.
    std::optional<double> number(const char *key) const;
};

/// The steps of "+proj=pipeline +step ..." or of a single "+proj=..."; empty for an empty text.
/// Values may stand in quotation marks.
std::vector<ProjStep> stepsOf(const QByteArray &text);

/// The pipeline of some steps; "+proj=noop" of none.
QByteArray pipelineText(const std::vector<ProjStep> &steps);

/// The steps without those that only change the order or the unit of coordinates.
std::vector<ProjStep> withoutBookkeeping(const std::vector<ProjStep> &steps);

} // namespace KelStd::catalogue
