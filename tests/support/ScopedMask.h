#pragma once

#include <sys/stat.h>

namespace KelStd::test {

/// The permissions that new files and directories of this process do not get while it lives.
class ScopedMask
{
public:
    explicit ScopedMask(mode_t mask) : m_before(umask(mask)) {}
    ~ScopedMask() { umask(m_before); }
    ScopedMask(const ScopedMask &) = delete;
    ScopedMask &operator=(const ScopedMask &) = delete;

private:
    mode_t m_before;
};

} // namespace KelStd::test
