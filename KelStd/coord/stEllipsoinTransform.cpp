#include <KelStd/coord/stEllipsoinTransform.h>

#include <KelStd/coord/RecordParams.h>
#include <KelStd/stream/BlockVersion.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

using Record = stEllipsoinTransform;

/// In declaration order: the three translations come first and stand alone in a three-parameter
/// shift.
constexpr RecordParam<Record> rows[] = {
    {&Record::x_translate, ValueType_Distance, Unit_Meter},
    {&Record::y_translate, ValueType_Distance, Unit_Meter},
    {&Record::z_translate, ValueType_Distance, Unit_Meter},
    {&Record::x_rotate, ValueType_Angle, Unit_Second},
    {&Record::y_rotate, ValueType_Angle, Unit_Second},
    {&Record::z_rotate, ValueType_Angle, Unit_Second},
    {&Record::ratio_ppm, ValueType_Double, Unit_None},
};
constexpr std::size_t translations = 3;

} // namespace

stEllipsoinTransform::stEllipsoinTransform()
{
    clear();
}

void stEllipsoinTransform::clear()
{
    fuction = EllipsoinTransformFunction_None;
    nofuction_transtion = EllipsoinTransition_XYZ;
    resetParams(*this, rows);
}

bool stEllipsoinTransform::operator==(const stEllipsoinTransform &other) const
{
    return this == &other
           || (fuction == other.fuction && nofuction_transtion == other.nofuction_transtion
               && sameParams(*this, other, rows));
}

bool stEllipsoinTransform::operator!=(const stEllipsoinTransform &other) const
{
    return !(*this == other);
}

bool stEllipsoinTransform::isSameLogic(const stEllipsoinTransform &other) const
{
    if (this == &other)
        return true;
    if (fuction != other.fuction)
        return false;
    switch (fuction) {
    case EllipsoinTransformFunction_None: return nofuction_transtion == other.nofuction_transtion;
    case EllipsoinTransformFunction_Three: return sameParams(*this, other, rows, translations);
    case EllipsoinTransformFunction_Seven: return sameParams(*this, other, rows);
    }
    return false;
}

void stEllipsoinTransform::save(QDataStream &stream) const
{
    stream << streamVersion << fuction << nofuction_transtion;
    saveParams(*this, rows, stream);
}

bool stEllipsoinTransform::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> fuction >> nofuction_transtion;
    return loadParams(*this, rows, stream);
}

} // namespace KelStd
