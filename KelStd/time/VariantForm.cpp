#include <KelStd/time/VariantForm.h>

namespace KelStd::variantForm {

QVariantList listIn(const QVariant &variant)
{
    const int type = variant.userType();
    if (variant.isNull() || type == QMetaType::QString || type == QMetaType::QByteArray)
        return {};
    return variant.toList();
}

std::optional<QVariantList> read(const QVariant &variant, EFormat code, int size)
{
    const QVariantList list = listIn(variant);
    if (list.size() != size || list.first().toInt() != code)
        return std::nullopt;
    return list;
}

} // namespace KelStd::variantForm
