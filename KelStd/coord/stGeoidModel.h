#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// The geoid model that a coordinate system's heights refer to.
class KELSTD_EXPORT stGeoidModel
{
public:
    stGeoidModel();

    /// Empties the name.
    void clear();

    /// Equality of all members.
    bool operator==(const stGeoidModel &other) const;
    /// The negation of `operator==`.
    bool operator!=(const stGeoidModel &other) const;
    /// The same as `operator==`.
    bool isSameLogic(const stGeoidModel &other) const;

    /// Writes the block of version 1: the version [int32] and the name.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when the version is not 1: the name is then empty. The
    /// stream's status is neither inspected nor reset (see `Param::load`).
    bool load(QDataStream &stream);

    /// Name by which the host's `ResourceQuery` finds the grid; empty for none.
    QString modelFileName;
};

} // namespace KelStd
