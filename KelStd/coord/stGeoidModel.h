#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

namespace KelStd {

/// The geoid model that a coordinate system's heights refer to.
class KELSTD_EXPORT stGeoidModel
{
public:
    stGeoidModel();

    void clear();

    bool operator==(const stGeoidModel &other) const;
    bool operator!=(const stGeoidModel &other) const;
    /// The same as `operator==`.
    bool isSameLogic(const stGeoidModel &other) const;

    QString
        modelFileName; ///< name by which the host's `ResourceQuery` finds the grid; empty for none
};

} // namespace KelStd
