#include <KelStd/time/VariantForm.h>

namespace KelStd::variantForm {

std::optional<QVariantList> read(const QVariant &variant, EFormat code, int size)
{
    if (variant.isNull())
        return std::nullopt;
    const QVariantList list = variant.toList();
    if (list.size() != size || list.first().toInt() != code)
        return std::nullopt;
    return list;
}

} // namespace KelStd::variantForm
