#pragma once

#include <proj.h>

#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdio>
#include <memory>

#if defined(Q_OS_UNIX)
#    include <sys/types.h>
#endif

class QByteArray;

namespace KelStd::proj {

/// A file that PROJ reads, or keeps something in.
///
/// A separation of the geoid is little else than opening a grid and reading two of its rows. Where
/// the system reads at a position that is done without the detour by a stream, which fetches a
/// block of its own size before and behind each row.
class ProjFile
{
public:
    /// Null for a file that cannot be opened so. The name is in UTF-8, as PROJ has it.
    static std::unique_ptr<ProjFile> open(const QByteArray &name, PROJ_OPEN_ACCESS access);
    ~ProjFile();

    ProjFile(const ProjFile &) = delete;
    ProjFile &operator=(const ProjFile &) = delete;

    /// How much was read or written from the position on, which moves behind it.
    std::size_t read(void *bytes, std::size_t size);
    std::size_t write(const void *bytes, std::size_t size);

    /// Moves the position, `whence` as in `fseek`; false for one that cannot be.
    bool seek(long long offset, int whence);
    long long tell() const;

private:
#if defined(Q_OS_UNIX)
    explicit ProjFile(int descriptor) : m_descriptor(descriptor) {}

    std::size_t readAt(off_t position, char *bytes, std::size_t size) const;

    const int m_descriptor;
    off_t m_position = 0;
    /// What small reads are served from, such as those of headers.
    char m_block[512];
    off_t m_blockPosition = 0;
    std::size_t m_blockSize = 0;
#else
    explicit ProjFile(std::FILE *stream) : m_stream(stream) {}

    std::FILE *const m_stream;
#endif
};

} // namespace KelStd::proj
