#pragma once

#include <KelStd/proj/ProjSymbols.h>

#include <QtCore/QString>

#include <memory>

class QLibrary;

namespace KelStd::proj {

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

    /// A function that is resolved where it is used; null when the library has none of that name.
    template <typename Function>
    Function resolve(const char *name) const
    {
        return reinterpret_cast<Function>(resolveAddress(name));
    }

    /// The resolved functions; valid while `isLoaded`.
    const ProjFunctions &functions() const { return m_functions; }

private:
    LoadedProj();
    ~LoadedProj();

    using Address = void (*)();
    Address resolveAddress(const char *name) const;

    std::unique_ptr<QLibrary> m_library;
    ProjFunctions m_functions;
};

/// Owns a PROJ object and destroys it through the loaded library.
struct ProjObjectDeleter
{
    void operator()(PJ *object) const { LoadedProj::instance().functions().proj_destroy(object); }
};
using ProjObject = std::unique_ptr<PJ, ProjObjectDeleter>;

} // namespace KelStd::proj
