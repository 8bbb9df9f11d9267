#include <KelStd/time/TimeFromVariant.h>

#include <KelStd/time/VariantForm.h>

#include <QtCore/QVariant>

namespace KelStd {

EFormat TimeFromVariant::ParseFormat(const QVariant &variant)
{
    const QVariantList list = variantForm::listIn(variant);
    return list.isEmpty() ? Format_None : static_cast<EFormat>(list.first().toInt());
}

} // namespace KelStd
