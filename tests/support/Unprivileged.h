#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

namespace KelStd::test {

/// While it lives this process is refused what a file's permissions refuse, even when root runs it.
class Unprivileged
{
public:
    Unprivileged()
    {
        constexpr uid_t nobody = 65534;
        const uid_t user = m_before == 0 ? nobody : m_before;
        EXPECT_EQ(setresuid(user, user, m_before), 0); // by the saved one it becomes root again
    }
    ~Unprivileged() { EXPECT_EQ(setresuid(m_before, m_before, m_before), 0); }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    const uid_t m_before = geteuid();
};

} // namespace KelStd::test
