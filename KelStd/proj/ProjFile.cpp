#include <KelStd/proj/ProjFile.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <new>

#if defined(Q_OS_UNIX)
#    include <fcntl.h>
#    include <sys/stat.h>
#    include <unistd.h>
#endif

namespace KelStd::proj {

#if defined(Q_OS_UNIX)

namespace {

constexpr off_t lastPosition = std::numeric_limits<off_t>::max();

int flagsOf(PROJ_OPEN_ACCESS access)
{
    switch (access) {
    case PROJ_OPEN_ACCESS_READ_UPDATE: return O_RDWR;
    case PROJ_OPEN_ACCESS_CREATE: return O_RDWR | O_CREAT | O_TRUNC;
    case PROJ_OPEN_ACCESS_READ_ONLY: break;
    }
    return O_RDONLY;
}

/// Has it done over where a signal came between.
template <typename Call>
ssize_t completed(Call call)
{
    for (;;) {
        const ssize_t done = call();
        if (done >= 0 || errno != EINTR)
            return done;
    }
}

/// A sum of positions, or -1 for none that a file can have.
off_t sumOf(off_t start, long long offset)
{
    if (offset > 0 && start > lastPosition - offset)
        return -1;
    return start + static_cast<off_t>(offset);
}

} // namespace

std::unique_ptr<ProjFile> ProjFile::open(const QByteArray &name, PROJ_OPEN_ACCESS access)
{
    constexpr mode_t forAllButTheMask = 0666;
    // Not for the programs that a host starts meanwhile.
    const int descriptor = static_cast<int>(completed(
        [&] { return ::open(name.constData(), flagsOf(access) | O_CLOEXEC, forAllButTheMask); }));
    if (descriptor < 0)
        return nullptr;
    std::unique_ptr<ProjFile> file(new (std::nothrow) ProjFile(descriptor));
    if (file == nullptr)
        ::close(descriptor);
    return file;
}

ProjFile::~ProjFile()
{
    ::close(m_descriptor);
}

std::size_t ProjFile::readAt(off_t position, char *bytes, std::size_t size) const
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t part = completed([&] {
            return ::pread(m_descriptor, bytes + done, size - done,
                           position + static_cast<off_t>(done));
        });
        if (part <= 0)
            break;
        done += static_cast<std::size_t>(part);
    }
    return done;
}

std::size_t ProjFile::read(void *bytes, std::size_t size)
{
    auto *const to = static_cast<char *>(bytes);
    if (size >= sizeof m_block) {
        const std::size_t done = readAt(m_position, to, size);
        m_position += static_cast<off_t>(done);
        return done;
    }
    const off_t behindStart = m_position - m_blockPosition;
    const bool isInBlock = behindStart >= 0 && size <= m_blockSize
                           && behindStart <= static_cast<off_t>(m_blockSize - size);
    if (!isInBlock) {
        m_blockSize = readAt(m_position, m_block, sizeof m_block);
        m_blockPosition = m_position;
    }
    const auto start = static_cast<std::size_t>(m_position - m_blockPosition);
    const std::size_t done = std::min(size, m_blockSize - start);
    std::memcpy(to, m_block + start, done);
    m_position += static_cast<off_t>(done);
    return done;
}

std::size_t ProjFile::write(const void *bytes, std::size_t size)
{
    m_blockSize = 0;
    const auto *const from = static_cast<const char *>(bytes);
    std::size_t done = 0;
    while (done < size) {
        const ssize_t part =
            completed([&] { return ::pwrite(m_descriptor, from + done, size - done, m_position); });
        if (part <= 0)
            break;
        done += static_cast<std::size_t>(part);
        m_position += static_cast<off_t>(part);
    }
    return done;
}

bool ProjFile::seek(long long offset, int whence)
{
    off_t start = 0;
    if (whence == SEEK_CUR) {
        start = m_position;
    } else if (whence == SEEK_END) {
        start = ::lseek(m_descriptor, 0, SEEK_END);
        if (start < 0)
            return false;
    }
    const off_t position = sumOf(start, offset);
    if (position < 0)
        return false;
    m_position = position;
    return true;
}

long long ProjFile::tell() const
{
    return m_position;
}

#else

namespace {

const wchar_t *modeOf(PROJ_OPEN_ACCESS access)
{
    switch (access) {
    case PROJ_OPEN_ACCESS_READ_UPDATE: return L"r+b";
    case PROJ_OPEN_ACCESS_CREATE: return L"w+b";
    case PROJ_OPEN_ACCESS_READ_ONLY: break;
    }
    return L"rb";
}

} // namespace

std::unique_ptr<ProjFile> ProjFile::open(const QByteArray &name, PROJ_OPEN_ACCESS access)
{
    std::FILE *const stream =
        _wfopen(QString::fromUtf8(name).toStdWString().c_str(), modeOf(access));
    if (stream == nullptr)
        return nullptr;
    std::unique_ptr<ProjFile> file(new (std::nothrow) ProjFile(stream));
    if (file == nullptr)
        std::fclose(stream);
    return file;
}

ProjFile::~ProjFile()
{
    std::fclose(m_stream);
}

std::size_t ProjFile::read(void *bytes, std::size_t size)
{
    return std::fread(bytes, 1, size, m_stream);
}

std::size_t ProjFile::write(const void *bytes, std::size_t size)
{
    return std::fwrite(bytes, 1, size, m_stream);
}

bool ProjFile::seek(long long offset, int whence)
{
    return _fseeki64(m_stream, offset, whence) == 0;
}

long long ProjFile::tell() const
{
    return _ftelli64(m_stream);
}

#endif

} // namespace KelStd::proj
