#include <KelStd/coord/stGeoidModel.h>

#include <KelStd/stream/BlockVersion.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

} // namespace

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

void stGeoidModel::save(QDataStream &stream) const
{
    stream << streamVersion << modelFileName;
}

bool stGeoidModel::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> modelFileName;
    return true;
}

} // namespace KelStd
