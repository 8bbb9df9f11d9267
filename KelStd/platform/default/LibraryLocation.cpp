#include <KelStd/platform/default/LibraryLocation.h>

#include <QtCore/QFile>

#if defined(Q_OS_UNIX)
#    include <dlfcn.h>
#endif

#if defined(Q_OS_UNIX)
/// In the program that links the static libraries, where its build has it
/// (cmake/KelStdProgramDirectory.cmake).
extern "C" const char *kelstdProgramDirectory() __attribute__((weak));
#endif

namespace kelstd_platform {

QString ownLibraryPath()
{
#if defined(Q_OS_UNIX)
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void *>(&ownLibraryPath), &info) != 0
        && info.dli_fname != nullptr)
        return QFile::decodeName(info.dli_fname);
#endif
    return {};
}

QString toldProgramDirectory()
{
#if defined(Q_OS_UNIX)
    if (kelstdProgramDirectory != nullptr)
        return QFile::decodeName(kelstdProgramDirectory());
#endif
    return {};
}

} // namespace kelstd_platform
