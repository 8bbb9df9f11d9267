#include <KelStd/platform/default/LibraryLocation.h>

#include <QtCore/QFile>

#if defined(Q_OS_UNIX)
#    include <dlfcn.h>
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

} // namespace kelstd_platform
