#include "location/CountedCalls.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The program's functions come before the C library's for every library that it loads: each of
// these counts and passes on.

namespace {

std::atomic<long> allocations{0};
std::atomic<long> files{0};
std::atomic<long> directoryChanges{0};

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

#define KELSTD_COUNT(counter, result, name, parameters, arguments)                                 \
    result name parameters                                                                         \
    {                                                                                              \
        static const auto forward = next<result(*) parameters>(#name);                             \
        ++counter;                                                                                 \
        return forward arguments;                                                                  \
    }

KELSTD_COUNT(files, FILE *, fopen, (const char *path, const char *mode), (path, mode))
KELSTD_COUNT(files, FILE *, fopen64, (const char *path, const char *mode), (path, mode))
KELSTD_COUNT(files, DIR *, opendir, (const char *path), (path))
KELSTD_COUNT(files, int, access, (const char *path, int mode) noexcept, (path, mode))
KELSTD_COUNT(files, ssize_t, readlink, (const char *path, char *to, std::size_t size) noexcept,
             (path, to, size))
KELSTD_COUNT(files, int, stat, (const char *path, struct stat *to) noexcept, (path, to))
KELSTD_COUNT(files, int, stat64, (const char *path, struct stat64 *to) noexcept, (path, to))
KELSTD_COUNT(files, int, lstat, (const char *path, struct stat *to) noexcept, (path, to))
KELSTD_COUNT(files, int, lstat64, (const char *path, struct stat64 *to) noexcept, (path, to))
KELSTD_COUNT(files, int, fstatat, (int at, const char *path, struct stat *to, int flags) noexcept,
             (at, path, to, flags))
KELSTD_COUNT(files, int, fstatat64,
             (int at, const char *path, struct stat64 *to, int flags) noexcept,
             (at, path, to, flags))
KELSTD_COUNT(files, int, statx,
             (int at, const char *path, int flags, unsigned mask, struct statx *to) noexcept,
             (at, path, flags, mask, to))
KELSTD_COUNT(directoryChanges, int, chdir, (const char *path) noexcept, (path))
KELSTD_COUNT(directoryChanges, int, fchdir, (int directory) noexcept, (directory))

#undef KELSTD_COUNT

/// These have a mode only where a file may be created.
#define KELSTD_COUNT_OPEN(name, parameters, arguments)                                             \
    int name(parameters, int flags, ...)                                                           \
    {                                                                                              \
        static const auto forward = next<int (*)(parameters, int, ...)>(#name);                    \
        mode_t mode = 0;                                                                           \
        if ((flags & (O_CREAT | O_TMPFILE)) != 0) {                                                \
            va_list rest;                                                                          \
            va_start(rest, flags);                                                                 \
            mode = va_arg(rest, mode_t);                                                           \
            va_end(rest);                                                                          \
        }                                                                                          \
        ++files;                                                                                   \
        return forward(arguments, flags, mode);                                                    \
    }
#define KELSTD_TWO(first, second) first, second

KELSTD_COUNT_OPEN(open, const char *path, path)
KELSTD_COUNT_OPEN(open64, const char *path, path)
KELSTD_COUNT_OPEN(openat, KELSTD_TWO(int at, const char *path), KELSTD_TWO(at, path))
KELSTD_COUNT_OPEN(openat64, KELSTD_TWO(int at, const char *path), KELSTD_TWO(at, path))

#undef KELSTD_TWO
#undef KELSTD_COUNT_OPEN

#ifdef KELSTD_TEST_SANITIZER_HEAP

int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void *, std::size_t),
                                              void (*freed)(const volatile void *));

#else

// The C library's own names: looking its functions up would allocate.
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);

void *malloc(std::size_t size) noexcept
{
    ++allocations;
    return __libc_malloc(size);
}

void *calloc(std::size_t count, std::size_t size) noexcept
{
    ++allocations;
    return __libc_calloc(count, size);
}

void *realloc(void *block, std::size_t size) noexcept
{
    ++allocations;
    return __libc_realloc(block, size);
}

void *memalign(std::size_t alignment, std::size_t size) noexcept
{
    ++allocations;
    return __libc_memalign(alignment, size);
}

void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return memalign(alignment, size);
}

int posix_memalign(void **block, std::size_t alignment, std::size_t size) noexcept
{
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

#endif

} // extern "C"

#ifdef KELSTD_TEST_SANITIZER_HEAP

namespace {

/// A sanitizer brings a heap of its own, which tells.
[[maybe_unused]] const int hooks = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void *, std::size_t) { ++allocations; }, [](const volatile void *) {});

} // namespace

#endif

namespace KelStd::test {

CountedCalls countedCalls()
{
    return {allocations, files, directoryChanges};
}

} // namespace KelStd::test
