#include <KelStd/library/ShowConfigInUse.h>

namespace KelStd::library {

stShowConfig &showConfigInUse()
{
    static stShowConfig &config = *new stShowConfig; // never destroyed
    return config;
}

} // namespace KelStd::library
