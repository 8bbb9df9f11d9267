#include <KelStd/display/ShowConfigInUse.h>

namespace KelStd::display {

stShowConfig &showConfigInUse()
{
    static stShowConfig &config = *new stShowConfig; // never destroyed
    return config;
}

} // namespace KelStd::display
