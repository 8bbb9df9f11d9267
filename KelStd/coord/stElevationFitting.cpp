#include <KelStd/coord/stElevationFitting.h>

#include <KelStd/coord/RecordParams.h>
#include <KelStd/stream/BlockVersion.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

using Record = stElevationFitting;

/// In declaration order: a constant uses the first coefficient, a plane the first three, a curved
/// surface all six and the origin.
constexpr RecordParam<Record> rows[] = {
    {&Record::a, ValueType_Double, Unit_None},
    {&Record::b, ValueType_Double, Unit_None},
    {&Record::c, ValueType_Double, Unit_None},
    {&Record::d, ValueType_Double, Unit_None},
    {&Record::e, ValueType_Double, Unit_None},
    {&Record::f, ValueType_Double, Unit_None},
    {&Record::north_zero_x0, ValueType_X, Unit_Meter},
    {&Record::east_zero_y0, ValueType_Y, Unit_Meter},
};

} // namespace

stElevationFitting::stElevationFitting()
{
    clear();
}

void stElevationFitting::clear()
{
    function = ElevationFittingFunction_None;
    resetParams(*this, rows);
}

bool stElevationFitting::operator==(const stElevationFitting &other) const
{
    return this == &other || (function == other.function && sameParams(*this, other, rows));
}

bool stElevationFitting::operator!=(const stElevationFitting &other) const
{
    return !(*this == other);
}

bool stElevationFitting::isSameLogic(const stElevationFitting &other) const
{
    if (this == &other)
        return true;
    if (function != other.function)
        return false;
    switch (function) {
    case ElevationFittingFunction_None: return true;
    case ElevationFittingFunction_Fixed: return sameParams(*this, other, rows, 1);
    case ElevationFittingFunction_Plane: return sameParams(*this, other, rows, 3);
    case ElevationFittingFunction_Curve: return sameParams(*this, other, rows);
    }
    return false;
}

void stElevationFitting::save(QDataStream &stream) const
{
    stream << streamVersion << function;
    saveParams(*this, rows, stream);
}

bool stElevationFitting::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> function;
    return loadParams(*this, rows, stream);
}

} // namespace KelStd
