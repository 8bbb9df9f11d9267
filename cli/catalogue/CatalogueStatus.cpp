#include <cli/catalogue/CatalogueStatus.h>

#include <QtCore/QString>

namespace KelStd::cli {

bool isRefusal(const catalogue::CatalogueFailure &failure)
{
    return !catalogue::refusalWord(failure.kind).isEmpty();
}

ExitStatus statusOf(const catalogue::CatalogueFailure &failure)
{
    if (!failure)
        return ExitStatus::Success;
    return isRefusal(failure) ? ExitStatus::SomeFailed : ExitStatus::Environment;
}

} // namespace KelStd::cli
