#include <KelStd/coord/stGeoidModel.h>

namespace KelStd {

stGeoidModel::stGeoidModel() = default;

void stGeoidModel::clear()
{
    modelFileName.clear();
}

bool stGeoidModel::operator==(const stGeoidModel &other) const
{
    return modelFileName == other.modelFileName;
}

bool stGeoidModel::operator!=(const stGeoidModel &other) const
{
    return !(*this == other);
}

bool stGeoidModel::isSameLogic(const stGeoidModel &other) const
{
    return *this == other;
}

} // namespace KelStd
