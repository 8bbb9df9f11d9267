#include <KelStd/io/OverrulingParameter.h>

#include <KelStd/coord/OverrulingKeys.h>
#include <KelStd/text/Translation.h>

namespace KelStd::io {

QString whatIsOverruled(const QString &projName, const QString &value)
{
    const OverrulingKey *key = findOverrulingKey(projName);
    const bool isAtWill =
        key == nullptr || key->isHarmless == nullptr || key->isHarmless(value.trimmed());
    return isAtWill ? QString() : translated(key->overruled);
}

} // namespace KelStd::io
