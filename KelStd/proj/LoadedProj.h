#pragma once

#include <KelStd/proj/InitializationFailure.h>
#include <KelStd/proj/ProjSymbols.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <atomic>
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
    InitializationFailure load(const QString &libraryFile);

    /// Lets PROJ clean up after itself and forgets it.
    void unload();

    /// Whether PROJ can be used: no longer once the process ends and PROJ's own static objects go.
    bool isLoaded() const { return m_library != nullptr && !m_isOver; }

    /// Whether the process has come to its end with a PROJ: none can be loaded any more.
    bool isOver() const { return m_isOver; }

    /// Tells PROJ's default context where its resource files are, in the private directory. A
    /// library without that function is left as it is. False when their path does not fit what PROJ
    /// is given.
    bool setPrivateDirectory(const QString &directory);

    /// The private directory; relative names of files are looked up there. Paths are in the file
    /// system's encoding, and empty before `setPrivateDirectory`.
    const QByteArray &privateDirectory() const { return m_privateDirectory; }

    /// Where PROJ looks for files without a place in their names; empty for a library that cannot
    /// be told so.
    QByteArray searchPath() const
    {
        return m_functions.proj_context_set_search_paths == nullptr ? QByteArray() : m_searchPath;
    }

    /// A new context, which the caller destroys; null when PROJ has none to give. It finds PROJ's
    /// resource files and database where the default one does, and the files of relative names
    /// below the private directory whatever directory is the current one.
    ///
    /// It has nothing in common with the default context, with which another thread may convert.
    PJ_CONTEXT *createContext();

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

    void setSearchPath(PJ_CONTEXT *context) const;

    using Address = void (*)();
    Address resolveAddress(const char *name) const;

    std::unique_ptr<QLibrary> m_library;
    std::atomic<bool> m_isOver{false};
    ProjFunctions m_functions;
    /// As it was before any use, for others to be copied from; null for a library that cannot.
    PJ_CONTEXT *m_untouchedContext = nullptr;
    QByteArray m_privateDirectory; ///< paths are in the file system's encoding
    QByteArray m_searchPath;
    QByteArray m_database; ///< empty when there is none

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
