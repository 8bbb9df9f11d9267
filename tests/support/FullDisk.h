#pragma once

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>

namespace KelStd::test {

/// No file of this process grows beyond `bytes` while it lives, as if the disk were full there.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limited{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    }
    ~FullDisk()
    {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &m_before), 0);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

/// No file of a process that has yet to start its program grows beyond `bytes`: it is sent the
/// signal that ends programs that do not know it, as by `ulimit -f`.
inline void limitFilesOfThisProcess(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_DFL);
    const rlimit limited{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limited);
}

} // namespace KelStd::test
