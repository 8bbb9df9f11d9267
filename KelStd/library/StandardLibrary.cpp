#include <KelStd/library/StandardLibrary.h>

namespace KelStd {

StandardLibrary::StandardLibrary() = default;

StandardLibrary::~StandardLibrary() = default;

StandardLibrary &StandardLibrary::getInstance()
{
    static StandardLibrary instance;
    return instance;
}

const stShowConfig *StandardLibrary::getShowConfig() const
{
    return &showConfig;
}

} // namespace KelStd
