#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/stShowConfig.h>

#include <QtCore/QObject>

namespace KelStd {

/// The process-wide holder of the display configuration, and the place where the registry of
/// definitions will stand.
class KELSTD_EXPORT StandardLibrary : public QObject
{
    Q_OBJECT

public:
    /// The one object, created by the first call; concurrent first calls are safe.
    static StandardLibrary &getInstance();

    ~StandardLibrary() override;

    /// The current display configuration; never null, valid until the process ends. It starts with
    /// the constructor defaults of `stShowConfig`.
    const stShowConfig *getShowConfig() const;

private:
    StandardLibrary();
    Q_DISABLE_COPY(StandardLibrary)

    stShowConfig showConfig;
};

} // namespace KelStd
