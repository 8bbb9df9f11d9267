#include <KelStd/proj/GridFileCheck.h>

#include <KelStd/grid/GridHeader.h>
#include <KelStd/proj/LoadedProj.h>

#include <QtCore/QtGlobal>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#if defined(Q_OS_UNIX)
#    include <sys/stat.h>
#endif

namespace KelStd::proj {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view blanks = " \t\r\n";

bool beginsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// A path that PROJ takes as it stands.
bool saysWhere(std::string_view name)
{
    const bool hasDrive = name.size() > 2 && name[1] == ':' && (name[2] == '/' || name[2] == '\\');
    return beginsWith(name, "/") || beginsWith(name, "./") || beginsWith(name, "../") || hasDrive
           || beginsWith(name, "\\") || beginsWith(name, ".\\") || beginsWith(name, "..\\");
}

std::string fileIn(const QByteArray &directory, std::string_view name)
{
    return directory.isEmpty() ? std::string(name)
                               : directory.toStdString() + '/' + std::string(name);
}

/// The file that PROJ opens for a name, or nothing where this machine has no such file.
std::string fileOf(std::string_view name)
{
    const LoadedProj &loaded = LoadedProj::instance();
    if (saysWhere(name))
        return fileIn(name.front() == '.' ? loaded.privateDirectory() : QByteArray(), name);
    if (beginsWith(name, "http://") || beginsWith(name, "https://"))
        return {};
    if (beginsWith(name, "~/")) {
        const char *home = std::getenv("HOME");
        return home == nullptr ? std::string() : std::string(home) + '/' + std::string(name);
    }
    const QByteArray searchPath = loaded.searchPath();
    return searchPath.isEmpty() ? std::string() : fileIn(searchPath, name);
}

#if defined(Q_OS_UNIX)

/// What tells a file from an earlier one of its name.
struct FileState
{
    dev_t device;
    ino_t file;
    off_t size;
    timespec written;
    timespec changed; ///< also where the time of writing was set back

    bool operator==(const FileState &other) const
    {
        const auto same = [](const timespec &left, const timespec &right) {
            return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
        };
        return device == other.device && file == other.file && size == other.size
               && same(written, other.written) && same(changed, other.changed);
    }
};

bool stateOf(const char *file, FileState &state)
{
    struct stat found = {};
    if (stat(file, &found) != 0)
        return false;
#    if defined(Q_OS_DARWIN)
    state = {found.st_dev, found.st_ino, found.st_size, found.st_mtimespec, found.st_ctimespec};
#    else
    state = {found.st_dev, found.st_ino, found.st_size, found.st_mtim, found.st_ctim};
#    endif
    return true;
}

/// The file that was found whole last: the next point's is nearly always the same, and to open it
/// again would cost a tenth of the separation. Without a destructor, so that it outlives every
/// object that may still ask.
struct LastWholeFile
{
    char name[1024];
    std::size_t length;
    FileState state;
};

bool isWhole(std::string_view file)
{
    thread_local LastWholeFile last = {};
    char name[sizeof last.name]; // with a zero at its end
    FileState state;
    if (file.size() >= sizeof name)
        return kelstd_grid::isForProj(std::filesystem::u8path(file));
    std::memcpy(name, file.data(), file.size());
    name[file.size()] = '\0';
    if (!stateOf(name, state))
        return true; // there is none
    if (std::string_view(last.name, last.length) == file && last.state == state)
        return true;
    if (!kelstd_grid::isForProj(std::filesystem::u8path(file)))
        return false;
    std::memcpy(last.name, name, file.size());
    last.length = file.size();
    last.state = state;
    return true;
}

#else

bool isWhole(std::string_view file)
{
    return kelstd_grid::isForProj(std::filesystem::u8path(file));
}

#endif

/// Whether the grid of this name, which may be marked as one that need not be there, is whole.
bool isGridWhole(std::string_view name)
{
    if (beginsWith(name, "@"))
        name.remove_prefix(1);
    if (name.empty() || name == "null"sv)
        return true;
    if (saysWhere(name) && name.front() != '.')
        return isWhole(name); // as nearly all are named
    const std::string file = fileOf(name);
    return file.empty() || isWhole(file);
}

/// What stands behind a key and its sign of equality, quotation marks removed. PROJ allows for
/// blanks around the sign.
std::string_view valueBehind(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (!beginsWith(text, "="))
        return {};
    text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (beginsWith(text, "\"")) {
        text.remove_prefix(1);
        return text.substr(0, text.find('"'));
    }
    return text.substr(0, text.find_first_of(blanks));
}

} // namespace

bool areGridsWhole(std::string_view names)
{
    while (!names.empty()) {
        const std::size_t comma = std::min(names.find(','), names.size());
        if (!isGridWhole(names.substr(0, comma)))
            return false;
        names.remove_prefix(std::min(comma + 1, names.size()));
    }
    return true;
}

bool areGridsOfDefinitionWhole(std::string_view definition)
{
    constexpr std::string_view key = "grids";
    for (std::size_t at = definition.find(key); at != std::string_view::npos;
         at = definition.find(key, at + key.size())) {
        if (!areGridsWhole(valueBehind(definition.substr(at + key.size()))))
            return false;
    }
    return true;
}

} // namespace KelStd::proj
