#pragma once

#include <KelStd/library/StandardLibrary.h>

namespace KelStd::test {

/// Gives the library another display configuration while it lives.
class ScopedShowConfig
{
public:
    explicit ScopedShowConfig(const stShowConfig &config) : m_previous(current())
    {
        current() = config;
    }
    ~ScopedShowConfig() { current() = m_previous; }
    ScopedShowConfig(const ScopedShowConfig &) = delete;
    ScopedShowConfig &operator=(const ScopedShowConfig &) = delete;

private:
    /// The object itself is not const; the registry only hands it out so.
    static stShowConfig &current()
    {
        return const_cast<stShowConfig &>(*StandardLibrary::getInstance().getShowConfig());
    }

    stShowConfig m_previous;
};

} // namespace KelStd::test
