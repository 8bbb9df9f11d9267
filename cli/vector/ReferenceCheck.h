#pragma once

#include <cli/vector/VectorFiles.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <optional>

namespace KelStd::cli::vector {

/// The coordinate reference system of a layer held against a frame of the program.
struct ReferenceFit
{
    QString mistake;      ///< why the layer is not in the frame; empty when it may be
    QStringList notes;    ///< what is taken for granted
    QStringList warnings; ///< what only the user can know
};

/// Compares layers with a system.
class ReferenceCheck
{
public:
    using SameDatum = std::function<bool(const std::string &one, const std::string &other)>;

    /// `system`: the facts of the system's plane, of kind `None` where they are not known, with the
    /// reason. `systemName`: what messages call it. `sameDatum` compares two definitions.
    ReferenceCheck(Reference system, QString systemName, bool hasGeoid, SameDatum sameDatum)
        : m_system(std::move(system)), m_systemName(std::move(systemName)), m_hasGeoid(hasGeoid),
          m_sameDatum(std::move(sameDatum))
    {}

    /// Why there are no facts of the system, for messages.
    void setUnknown(const QString &reason) { m_unknown = reason; }

    /// Whether positions of the layer are in the frame. `hasHeights`: whether they may have
    /// heights, which have to be of the frame, too.
    ReferenceFit fit(const Reference &layer, positions::Frame frame, bool hasHeights) const;

    /// The one frame that a layer's system names; one that fits without a note goes before others.
    /// Nothing, with the `mistake`, where that is none or several.
    std::optional<positions::Frame> onlyFrame(const Reference &layer, bool hasHeights,
                                              QString &mistake) const;

private:
    QString datumMistake(const Reference &layer, positions::Frame frame, QStringList &notes) const;
    QString systemDatumMistake(const Reference &layer, QStringList &notes) const;
    QString planeMistake(const Reference &layer) const;
    QString shiftMistake(const Reference &layer, positions::Frame frame) const;
    QString heightMistake(const Reference &layer, positions::Frame frame,
                          QStringList &warnings) const;

    Reference m_system;
    QString m_systemName;
    QString m_unknown;
    bool m_hasGeoid;
    SameDatum m_sameDatum;
};

/// "RD New (EPSG:28992)"
QString shownName(const Reference &reference);

} // namespace KelStd::cli::vector
