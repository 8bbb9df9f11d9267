#pragma once

#include <cli/conversion/ConversionSystem.h>
#include <cli/systems/SystemChoice.h>

#include <QtCore/QString>

#include <optional>
#include <vector>

namespace KelStd::cli {

class CommandLine;
class Console;

/// The systems of a conversion: that of the input and, where another one is asked for, that of the
/// output. With two, messages say which of them they are about.
class ConvertSystems
{
public:
    /// Reads the system of the input and, if there is one, that whose frames are printed `to`;
    /// before PROJ is loaded. False after a report.
    bool read(const QString &system, const std::optional<QString> &to, const CommandLine &line,
              Console &console);

    /// Whether PROJ can convert by them and the records of their sites can be applied, with notes
    /// on how they are read. False after a report.
    bool canBeUsed(const CommandLine &line, Console &console);

    /// Finds the models that they name; after a warning, one that is no use is left out.
    void findGeoidModels(Console &console);

    /// Whether a system has the site that an option asks for. False after a report.
    static bool hasSite(const ConversionSystem &system, const QString &option, Console &console);

    const ConversionSystem &given() const { return m_systems.front(); }
    const ConversionSystem &printed() const { return m_systems.back(); }

    /// The one that is printed instead of that of the input; null for none.
    const ConversionSystem *target() const { return hasTarget() ? &m_systems.back() : nullptr; }

    /// What messages call a system.
    QString wordFor(const ConversionSystem &system) const;

private:
    bool hasTarget() const { return m_systems.size() > 1; }

    std::vector<RecordReview> m_reviews; ///< one for each system
    std::vector<ConversionSystem> m_systems;
};

} // namespace KelStd::cli
