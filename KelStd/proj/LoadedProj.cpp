#include <KelStd/proj/LoadedProj.h>

#include <KelStd/proj/DirectoryFiles.h>
#include <KelStd/proj/PrivateDirectory.h>
#include <KelStd/proj/ProjMessages.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLibrary>
#include <QtCore/QObject>

#include <cstdlib>

#if defined(Q_OS_LINUX)
#    include <dlfcn.h>
#endif

namespace KelStd::proj {

namespace {

/// Of the path handed to PROJ, terminating zero included.
constexpr int searchPathSize = 2014;

#if defined(Q_OS_LINUX)

bool hasSymbol(const char *name)
{
    return dlsym(RTLD_DEFAULT, name) != nullptr;
}

/// How the library finds what it calls. In a host that is linked to a PROJ itself, or to what
/// brings one, as GDAL does, it would find the host's functions and static objects instead of its
/// own: of another version perhaps, and destroyed twice. AddressSanitizer does not know that way.
QLibrary::LoadHints loadHints()
{
    return hasSymbol("proj_create") && !hasSymbol("__asan_init") ? QLibrary::DeepBindHint
                                                                 : QLibrary::LoadHints();
}

#else

QLibrary::LoadHints loadHints()
{
    return {};
}

#endif

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

InitializationFailure LoadedProj::load(const QString &libraryFile)
{
    m_library = std::make_unique<QLibrary>(QDir::fromNativeSeparators(libraryFile));
    m_library->setLoadHints(loadHints());
    if (!m_library->load()) {
        const QString text = m_library->errorString();
        m_library.reset();
        return {InitializationFailureKind::LibraryNotLoadable, text};
    }
    // Called before PROJ's static objects are destroyed, which were made just now.
    std::atexit([] { instance().m_isOver = true; });
    const char *missing = nullptr;
#define KELSTD_RESOLVE(name)                                                                       \
    m_functions.name = resolve<decltype(m_functions.name)>(#name);                                 \
    if (m_functions.name == nullptr && missing == nullptr)                                         \
        missing = #name;
    KELSTD_PROJ_FUNCTIONS(KELSTD_RESOLVE)
#undef KELSTD_RESOLVE
#define KELSTD_RESOLVE(name) m_functions.name = resolve<decltype(m_functions.name)>(#name);
    KELSTD_OPTIONAL_PROJ_FUNCTIONS(KELSTD_RESOLVE)
    KELSTD_CATALOGUE_PROJ_FUNCTIONS(KELSTD_RESOLVE)
#undef KELSTD_RESOLVE
    if (missing != nullptr) {
        m_functions = {};
        m_library.reset();
        return {InitializationFailureKind::FunctionMissing,
                QObject::tr("%1 has no function %2").arg(libraryFile, QLatin1String(missing))};
    }
    if (m_functions.proj_log_func != nullptr)
        m_functions.proj_log_func(defaultContext, nullptr, &ProjMessages::take);
    if (m_functions.proj_context_set_fileapi != nullptr)
        m_functions.proj_context_set_fileapi(defaultContext, &directoryFiles(), nullptr);
    if (m_functions.proj_context_clone != nullptr)
        m_untouchedContext = m_functions.proj_context_create();
    return {};
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
    if (m_untouchedContext != nullptr)
        m_functions.proj_context_destroy(m_untouchedContext);
    m_untouchedContext = nullptr;
    m_functions.proj_cleanup();
    m_functions = {};
    m_library.reset();
}

bool LoadedProj::setPrivateDirectory(const QString &directory)
{
    const QDir resources(QDir(directory).absoluteFilePath(resourceDirectoryName()));
    const QString database = resources.absoluteFilePath(databaseFileName());
    const auto encoded = [](const QString &path) {
        return QFile::encodeName(QDir::toNativeSeparators(path));
    };
    m_privateDirectory = encoded(directory);
    m_searchPath = encoded(resources.absolutePath());
    m_database = QFile::exists(database) ? encoded(database) : QByteArray();
    if (m_functions.proj_context_set_search_paths == nullptr)
        return true;
    if (m_searchPath.size() >= searchPathSize)
        return false;
    setSearchPath(defaultContext);
    return true;
}

void LoadedProj::setSearchPath(PJ_CONTEXT *context) const
{
    const char *const paths[] = {m_searchPath.constData()};
    if (m_functions.proj_context_set_search_paths != nullptr)
        m_functions.proj_context_set_search_paths(context, 1, paths);
}

PJ_CONTEXT *LoadedProj::createContext()
{
    // Copied from the default context, as PROJ creates one, it would be copied while another thread
    // changes that.
    PJ_CONTEXT *const context = m_untouchedContext != nullptr
                                    ? m_functions.proj_context_clone(m_untouchedContext)
                                    : m_functions.proj_context_create();
    if (context == nullptr)
        return nullptr;
    if (m_functions.proj_log_func != nullptr)
        m_functions.proj_log_func(context, nullptr, &ProjMessages::take);
    setSearchPath(context);
    if (m_functions.proj_context_set_fileapi != nullptr)
        m_functions.proj_context_set_fileapi(context, &directoryFiles(), &m_privateDirectory);
    if (m_functions.proj_context_set_database_path != nullptr && !m_database.isEmpty()) {
        m_functions.proj_context_set_database_path(context, m_database.constData(), nullptr,
                                                   nullptr);
    }
    return context;
}

} // namespace KelStd::proj
