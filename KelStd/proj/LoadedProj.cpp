#include <KelStd/proj/LoadedProj.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLibrary>

namespace KelStd::proj {

namespace {

/// Of the path handed to PROJ, terminating zero included.
constexpr int searchPathSize = 2014;

} // namespace

UnloadListener::UnloadListener()
{
    LoadedProj &loaded = LoadedProj::instance();
    const std::lock_guard lock(loaded.m_listenersMutex);
    loaded.m_listeners.insert(this);
}

UnloadListener::~UnloadListener()
{
    LoadedProj &loaded = LoadedProj::instance();
    const std::lock_guard lock(loaded.m_listenersMutex);
    loaded.m_listeners.erase(this);
}

LoadedProj::LoadedProj() = default;
LoadedProj::~LoadedProj() = default;

LoadedProj &LoadedProj::instance()
{
    // Never destroyed: a host's static objects may hold a `LocationBuilder`.
    static LoadedProj &loaded = *new LoadedProj;
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
    {
        const std::lock_guard lock(m_listenersMutex);
        for (UnloadListener *listener : m_listeners)
            listener->beforeUnload();
    }
    m_functions.proj_cleanup();
    m_functions = {};
    m_setSearchPaths = nullptr;
    m_library.reset();
}

bool LoadedProj::setSearchPath(const QString &directory)
{
    m_setSearchPaths =
        resolve<decltype(&::proj_context_set_search_paths)>("proj_context_set_search_paths");
    if (m_setSearchPaths == nullptr)
        return true;
    m_searchPath = QFile::encodeName(QDir::toNativeSeparators(directory));
    if (m_searchPath.size() >= searchPathSize)
        return false;
    applySearchPath(defaultContext);
    return true;
}

void LoadedProj::applySearchPath(PJ_CONTEXT *context) const
{
    if (m_setSearchPaths == nullptr)
        return;
    const char *const paths[] = {m_searchPath.constData()};
    m_setSearchPaths(context, 1, paths);
}

PJ_CONTEXT *LoadedProj::createContext() const
{
    PJ_CONTEXT *context = m_functions.proj_context_create();
    if (context != nullptr)
        applySearchPath(context);
    return context;
}

} // namespace KelStd::proj
