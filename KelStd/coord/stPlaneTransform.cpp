#include <KelStd/coord/stPlaneTransform.h>

#include <KelStd/coord/RecordParams.h>
#include <KelStd/stream/BlockVersion.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

using Record = stPlaneTransform;

constexpr RecordParam<Record> rows[] = {
    {&Record::north_translate, ValueType_Distance, Unit_Meter},
    {&Record::east_translate, ValueType_Distance, Unit_Meter},
    {&Record::rotate_angle, ValueType_Angle, Unit_Second},
    {&Record::ratio, ValueType_Double, Unit_None},
};

} // namespace

stPlaneTransform::stPlaneTransform()
{
    clear();
}

void stPlaneTransform::clear()
{
    fuction = PlaneTransformFunction_None;
    resetParams(*this, rows);
}

bool stPlaneTransform::operator==(const stPlaneTransform &other) const
{
    return this == &other || (fuction == other.fuction && sameParams(*this, other, rows));
}

bool stPlaneTransform::operator!=(const stPlaneTransform &other) const
{
    return !(*this == other);
}

bool stPlaneTransform::isSameLogic(const stPlaneTransform &other) const
{
    if (this == &other)
        return true;
    if (fuction != other.fuction)
        return false;
    switch (fuction) {
    case PlaneTransformFunction_None: return true;
    case PlaneTransformFunction_Four: return sameParams(*this, other, rows);
    }
    return false;
}

void stPlaneTransform::save(QDataStream &stream) const
{
    stream << streamVersion << fuction;
    saveParams(*this, rows, stream);
}

bool stPlaneTransform::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> fuction;
    return loadParams(*this, rows, stream);
}

} // namespace KelStd
