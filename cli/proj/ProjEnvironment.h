#pragma once

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QString>

namespace KelStd::cli {

class Console;

/// PROJ, ready while this lives. Preparing it for the first time also copies the delivered geoid
/// models into the home directory.
///
/// What is in the private PROJ directory and is not PROJ's stays: then nothing is prepared, while
/// the library would empty it.
class ProjEnvironment
{
public:
    ProjEnvironment();
    ~ProjEnvironment();
    ProjEnvironment(const ProjEnvironment &) = delete;
    ProjEnvironment &operator=(const ProjEnvironment &) = delete;

    bool isReady() const { return m_isReady; }

    /// Why it is not; empty when it is.
    const QString &failure() const { return m_failure; }

    /// The same, with a report of the reason where it is not.
    bool isReady(Console &console) const;

private:
    bool m_isReady = false;
    QString m_failure;
};

} // namespace KelStd::cli
