#pragma once

#include <KelStd/proj/ProjLib.h>

namespace KelStd::cli {

/// PROJ, ready while this lives. Preparing it for the first time also copies the delivered geoid
/// models into the home directory.
class ProjEnvironment
{
public:
    ProjEnvironment() : m_isReady(ProjLib::___InitializeEnviroment()) {}
    ~ProjEnvironment() { ProjLib::___unloadEnviroment(); }
    ProjEnvironment(const ProjEnvironment &) = delete;
    ProjEnvironment &operator=(const ProjEnvironment &) = delete;

    bool isReady() const { return m_isReady; }

private:
    bool m_isReady;
};

} // namespace KelStd::cli
