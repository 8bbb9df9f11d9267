#pragma once

#include <KelStd/proj/ProjSymbols.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <mutex>
#include <set>
#include <string_view>

class QLibrary;

namespace KelStd::proj {

/// Owns PROJ objects and is told before the library goes, the last moment to destroy them.
class UnloadListener
{
public:
    UnloadListener(const UnloadListener &) = delete;
    UnloadListener &operator=(const UnloadListener &) = delete;
    virtual ~UnloadListener();

    virtual void beforeUnload() = 0;

protected:
    UnloadListener();
};

/// PROJ as it is loaded in this process, or nothing.
class LoadedProj
{
public:
    LoadedProj(const LoadedProj &) = delete;
    LoadedProj &operator=(const LoadedProj &) = delete;

    /// The one of the process; unloaded until `load` succeeds.
    static LoadedProj &instance();

    /// Loads the library file and resolves every function; on failure nothing is loaded.
    bool load(const QString &libraryFile);

    /// Lets PROJ clean up after itself and forgets it.
    void unload();

    bool isLoaded() const { return m_library != nullptr; }

    /// Tells PROJ's default context where its resource files are. A library without that function
    /// is left as it is. False when the path does not fit what PROJ is given.
    bool setSearchPath(const QString &directory);

    /// Where PROJ looks for files without a place in their names, as PROJ is given it; empty when
    /// PROJ was told nothing.
    std::string_view searchPath() const
    {
        return m_setSearchPaths == nullptr
                   ? std::string_view()
                   : std::string_view(m_searchPath.constData(),
                                      static_cast<std::size_t>(m_searchPath.size()));
    }

    /// A new context that looks for resource files where the default one does; null when PROJ has
    /// none to give. The caller destroys it.
    PJ_CONTEXT *createContext() const;

    /// A function that is resolved where it is used; null when the library has none of that name.
    template <typename Function>
    Function resolve(const char *name) const
    {
        return reinterpret_cast<Function>(resolveAddress(name));
    }

    /// The resolved functions; valid while `isLoaded`.
    const ProjFunctions &functions() const { return m_functions; }

private:
    friend class UnloadListener;

    LoadedProj();
    ~LoadedProj();

    void applySearchPath(PJ_CONTEXT *context) const;

    using Address = void (*)();
    Address resolveAddress(const char *name) const;

    std::unique_ptr<QLibrary> m_library;
    ProjFunctions m_functions;
    /// Null for a library without it.
    decltype(&::proj_context_set_search_paths) m_setSearchPaths = nullptr;
    QByteArray m_searchPath; ///< as PROJ is given it

    std::mutex m_listenersMutex;
    std::set<UnloadListener *> m_listeners;
};

/// Owns a PROJ object and destroys it through the loaded library.
struct ProjObjectDeleter
{
    void operator()(PJ *object) const { LoadedProj::instance().functions().proj_destroy(object); }
};
using ProjObject = std::unique_ptr<PJ, ProjObjectDeleter>;

/// Owns a PROJ context, likewise.
struct ProjContextDeleter
{
    void operator()(PJ_CONTEXT *context) const
    {
        LoadedProj::instance().functions().proj_context_destroy(context);
    }
};
using ProjContext = std::unique_ptr<PJ_CONTEXT, ProjContextDeleter>;

} // namespace KelStd::proj
