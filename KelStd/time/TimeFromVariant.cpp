#include <KelStd/time/TimeFromVariant.h>

#include <QtCore/QVariant>

namespace KelStd {

EFormat TimeFromVariant::ParseFormat(const QVariant &variant)
{
    if (variant.isNull())
        return Format_None;
    const QVariantList list = variant.toList();
    return list.isEmpty() ? Format_None : static_cast<EFormat>(list.first().toInt());
}

} // namespace KelStd
