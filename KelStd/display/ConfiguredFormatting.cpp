/// The forms of formatting that take units, styles and decimals from the display configuration.

#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/display/ShowConfigInUse.h>
#include <KelStd/display/ShowConfigRows.h>
#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/RaisedException.h>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

/// Kinds that are shown without any unit or setting.
constexpr EValueType plainTypes[] = {
    ValueType_String,
    ValueType_Boolean,
    ValueType_LocationZeroType,
    ValueType_WhichHalfEarth,
    ValueType_EllipsoidDirection,
    ValueType_Proj4_Param_Bool,
};

bool isPlain(EValueType type)
{
    return std::find(std::begin(plainTypes), std::end(plainTypes), type) != std::end(plainTypes);
}

} // namespace

QString CoordStringHelper::GetFormatString(EValueType type, const QVariant &value, EUnit unit,
                                           QString *unitText)
{
    if (isPlain(type))
        return GetFormatString(type, value, unit, Unit_None, Format_None, 0, false, unitText);

    const ValueKind kind = kindOf(type);
    if (kind == ValueKind::Time || kind == ValueKind::TimeSpan)
        raiseByPointer(noTimeInCoordinate);

    const ShowConfigRow *row = findShowConfigRow(type);
    if (row == nullptr)
        return {};
    const stShowConfig &config = display::showConfigInUse();
    return GetFormatString(type, value, unit, row->unitIn(config, unit), row->formatIn(config),
                           row->precisionIn(config), row->erasesTailZero(config), unitText);
}

QString CoordStringHelper::GetFormatString(const Param &param, QString *unitText)
{
    return GetFormatString(param.valType, param.value, param.unit, unitText);
}

namespace {

/// Which kind of value each component of a position is; an `ELocationType` without a row is not
/// formatted.
struct PositionRow
{
    ELocationType locationType;
    EValueType east;
    EValueType north;
    EValueType height;
};

constexpr PositionRow positionRows[] = {
    {LocationType_X_Y_ElevationHeight, ValueType_Y, ValueType_X, ValueType_ElevationHeight},
    {LocationType_Lat_Long_EarthHeight, ValueType_Longitude, ValueType_Latitude,
     ValueType_EarthHeight},
};

/// A component's texts: all three are made before the first is handed out, so that a unit that
/// raises leaves the caller's texts alone.
class Shown
{
public:
    Shown(EValueType type, double value, EUnit unit)
        : m_text(CoordStringHelper::GetFormatString(type, value, unit, &m_unit))
    {}

    void writeTo(QString &text, QString *unit) const
    {
        text = m_text;
        if (unit != nullptr)
            *unit = m_unit;
    }

private:
    QString m_unit; // before the text, whose making fills it
    QString m_text;
};

} // namespace

void CoordStringHelper::GetFormatString(const Pos &pos, const Coord &coord, QString &north,
                                        QString &east, QString &height, QString *northUnit,
                                        QString *eastUnit, QString *heightUnit)
{
    const Projection &projection = coord.projection;
    const auto row = std::find_if(
        std::begin(positionRows), std::end(positionRows),
        [&projection](const PositionRow &r) { return r.locationType == projection.locationType; });
    if (row == std::end(positionRows))
        return;

    const stENU &enu = pos.getENU();
    // The north component, too, is converted from the unit of the east, deliberately.
    const EUnit planeUnit = projection.eastUnit();
    const Shown shownEast(row->east, enu.e, planeUnit);
    const Shown shownNorth(row->north, enu.n, planeUnit);
    const Shown shownHeight(row->height, enu.u, projection.heightUnit());
    shownEast.writeTo(east, eastUnit);
    shownNorth.writeTo(north, northUnit);
    shownHeight.writeTo(height, heightUnit);
}

} // namespace KelStd
