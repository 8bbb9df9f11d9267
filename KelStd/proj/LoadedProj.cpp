#include <KelStd/proj/LoadedProj.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLibrary>

#include <algorithm>

namespace KelStd::proj {

namespace {

/// Of the path handed to PROJ, terminating zero included.
constexpr int searchPathSize = 2014;

} // namespace

LoadedProj::LoadedProj() = default;
LoadedProj::~LoadedProj() = default;

LoadedProj &LoadedProj::instance()
{
    static LoadedProj loaded;
    return loaded;
}

LoadedProj::Address LoadedProj::resolveAddress(const char *name) const
{
    return m_library->resolve(name);
}

bool LoadedProj::load(const QString &libraryFile)
{
    m_library = std::make_unique<QLibrary>(QDir::fromNativeSeparators(libraryFile));
    bool complete = m_library->load();
    if (complete) {
#define KELSTD_RESOLVE(name)                                                                       \
    m_functions.name = resolve<decltype(m_functions.name)>(#name);                                 \
    complete = complete && m_functions.name != nullptr;
        KELSTD_PROJ_FUNCTIONS(KELSTD_RESOLVE)
#undef KELSTD_RESOLVE
    }
    if (!complete) {
        m_functions = {};
        m_library.reset();
    }
    return complete;
}

void LoadedProj::unload()
{
    if (!isLoaded())
        return;
    m_functions.proj_cleanup();
    m_functions = {};
    m_library.reset();
}

bool LoadedProj::setSearchPath(const QString &directory)
{
    const auto setSearchPaths =
        resolve<decltype(&::proj_context_set_search_paths)>("proj_context_set_search_paths");
    if (setSearchPaths == nullptr)
        return true;

    const QByteArray path = QFile::encodeName(QDir::toNativeSeparators(directory));
    if (path.size() >= searchPathSize)
        return false;
    char buffer[searchPathSize] = {};
    std::copy(path.cbegin(), path.cend(), buffer);
    const char *const paths[] = {buffer};
    setSearchPaths(defaultContext, 1, paths);
    return true;
}

} // namespace KelStd::proj
