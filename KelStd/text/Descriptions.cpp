#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/RaisedException.h>
#include <KelStd/text/Translation.h>

namespace KelStd {

namespace {

template <typename Row, std::size_t count, typename Enumeration>
QString description(const Row (&rows)[count], Enumeration value)
{
    const Row *row = findRow(rows, value);
    return row != nullptr ? translated(row->description) : QString();
}

} // namespace

QString CoordStringHelper::ValueType_to_DescriptionString(EValueType value)
{
    const ValueKind kind = kindOf(value);
    if (kind == ValueKind::Time || kind == ValueKind::TimeSpan)
        raiseByPointer(noTimeInCoordinate);
    return description(valueTypeRows, value);
}

QString CoordStringHelper::Unit_to_DescriptionString(EUnit value)
{
    return description(unitRows, value);
}

QString CoordStringHelper::Format_to_DescriptionString(EFormat value)
{
    return description(formatRows, value);
}

QString CoordStringHelper::ELocationType_to_DescriptionString(ELocationType value)
{
    return description(locationTypeRows, value);
}

QString CoordStringHelper::ELocationZeroType_to_DescriptionString(ELocationZeroType value)
{
    return description(locationZeroTypeRows, value);
}

QString CoordStringHelper::EWhichHalfEarth_to_DescriptionString(EWhichHalfEarth value)
{
    return description(whichHalfEarthRows, value);
}

QString CoordStringHelper::EEllipsoidDirection_to_DescriptionString(EEllipsoidDirection value)
{
    return description(ellipsoidDirectionRows, value);
}

QString CoordStringHelper::EEllipsoinTransformFunction_to_DescriptionString(
    EEllipsoinTransformFunction value)
{
    return description(ellipsoinTransformFunctionRows, value);
}

QString CoordStringHelper::EEllipsoinTransition_to_DescriptionString(EEllipsoinTransition value)
{
    return description(ellipsoinTransitionRows, value);
}

QString
CoordStringHelper::EPlaneTransformFunction_to_DescriptionString(EPlaneTransformFunction value)
{
    return description(planeTransformFunctionRows, value);
}

QString
CoordStringHelper::EElevationFittingFunction_to_DescriptionString(EElevationFittingFunction value)
{
    return description(elevationFittingFunctionRows, value);
}

} // namespace KelStd
