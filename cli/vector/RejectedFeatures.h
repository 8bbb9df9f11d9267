#pragma once

#include <cli/run/RecordSource.h>
#include <cli/vector/VectorFiles.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli::vector {

struct LayerForm;

/// Features that fail as lines of a list that the program reads: the headings name the frame and
/// the units, so that nothing is read otherwise than it stood in the layer.
class RejectedFeatures
{
public:
    /// `extras`: the names of the attributes that are carried. `saysReference`: a field that is not
    /// carried says what the projected height is above.
    RejectedFeatures(const Layer &layer, const LayerForm &form, QStringList extras,
                     bool saysReference);

    QByteArray headerLine() const;

    /// The record must have the feature's attributes, and the reason why it fails, if it does so
    /// already. What is no point, or has a height that cannot be read, stands as well-known text
    /// behind the attributes.
    QByteArray line(const Feature &feature, const SourceRecord &record) const;

private:
    /// A unit that headings name, and what numbers of the layer are multiplied with to be in it.
    struct Unit
    {
        QString symbol;
        double factor = 1.0;
    };

    static Unit unitOf(double metres);
    const Unit &unitOf(const positions::Column &column) const;

    positions::Frame m_frame;
    bool m_hasNames;
    bool m_hasGeometries;
    bool m_readsHeights;
    bool m_saysReference;
    Unit m_planeUnit;
    Unit m_lengthUnit;
    Unit m_angleUnit = {QStringLiteral("deg"), 1.0};
    QStringList m_extras;
};

} // namespace KelStd::cli::vector
