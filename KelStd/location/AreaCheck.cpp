#include <KelStd/location/AreaCheck.h>

#include <KelStd/coord/AxisDirections.h>

#include <QtCore/QObject>

#include <algorithm>
#include <limits>

namespace KelStd {

namespace {

using Frame = LocationBuilder::Frame;

struct Pair
{
    double first;
    double second;
};

struct MistakeRow
{
    PositionMistake mistake;
    Pair (*undo)(Pair given);
};

/// In the order in which they are looked for.
constexpr MistakeRow mistakeRows[] = {
    {PositionMistake::Swapped,
     [](Pair p) {
         return Pair{p.second, p.first};
     }},
    {PositionMistake::FirstSign,
     [](Pair p) {
         return Pair{-p.first, p.second};
     }},
    {PositionMistake::SecondSign,
     [](Pair p) {
         return Pair{p.first, -p.second};
     }},
    {PositionMistake::BothSigns,
     [](Pair p) {
         return Pair{-p.first, -p.second};
     }},
};

/// The first mistake whose undoing is inside.
template <typename IsInside>
PositionMistake firstMistake(Pair given, IsInside isInside)
{
    const auto row =
        std::find_if(std::begin(mistakeRows), std::end(mistakeRows),
                     [&](const MistakeRow &each) { return isInside(each.undo(given)); });
    return row != std::end(mistakeRows) ? row->mistake : PositionMistake::None;
}

} // namespace

/// The area in the plane of the system.
class AreaCheck::Plane
{
public:
    Plane(const Coord &coord, const AreaOfUse &area) : m_area(area), m_builder(coord)
    {
        m_builder.requireOneToOne();
        // The borders of the area are curves in the plane, so points of all of it are taken, and a
        // margin for what lies between them.
        constexpr int steps = 16;
        for (int i = 0; i <= steps; ++i) {
            for (int j = 0; j <= steps; ++j) {
                include(area.west + area.width() * i / steps,
                        area.south + (area.north - area.south) * j / steps);
            }
        }
        const double margin = std::max(m_east.width(), m_north.width()) / 4.0;
        m_east.widen(margin);
        m_north.widen(margin);
    }

    /// Whether a point of the plane lies in the area. Most that do not are told by two ranges, the
    /// others by the way back.
    bool holds(double easting, double northing, double height)
    {
        if (!m_east.holds(easting) || !m_north.holds(northing))
            return false;
        Location location;
        return m_builder.make(Frame::LocalProjected, Pos::fromENU(easting, northing, height),
                              location)
               && m_area.contains(location.get_WGS84_LLH_Long(), location.get_WGS84_LLH_Lat());
    }

private:
    /// Empty until a value was included.
    struct Range
    {
        double lowest = std::numeric_limits<double>::infinity();
        double highest = -std::numeric_limits<double>::infinity();

        void include(double value)
        {
            lowest = std::min(lowest, value);
            highest = std::max(highest, value);
        }
        void widen(double margin)
        {
            lowest -= margin;
            highest += margin;
        }
        double width() const { return highest >= lowest ? highest - lowest : 0.0; }
        bool holds(double value) const { return value >= lowest && value <= highest; }
    };

    void include(double longitude, double latitude)
    {
        Location location;
        if (!m_builder.make(Frame::Wgs84Geographic, Pos::fromLongLatH(longitude, latitude, 0.0),
                            location))
            return;
        m_east.include(location.get_NEH_E());
        m_north.include(location.get_NEH_N());
    }

    AreaOfUse m_area;
    LocationBuilder m_builder;
    Range m_east;
    Range m_north;
};

AreaCheck::AreaCheck(const Coord &coord, const AreaOfUse &area)
    : m_area(area), m_holdsEverything(!area.isValid()), m_coord(coord)
{}

AreaCheck::~AreaCheck() = default;
AreaCheck::AreaCheck(AreaCheck &&other) noexcept = default;
AreaCheck &AreaCheck::operator=(AreaCheck &&other) noexcept = default;

PositionMistake AreaCheck::mistakeIn(Frame from, const Pos &position)
{
    if (m_holdsEverything)
        return PositionMistake::None;
    switch (from) {
    case Frame::Wgs84Cartesian: return PositionMistake::None;
    case Frame::Wgs84Geographic:
    case Frame::LocalGeographic: {
        // In a datum of its own a position is some hundred metres elsewhere: a mistake is not.
        const EEllipsoidDirection axes =
            from == Frame::LocalGeographic ? m_coord.ellipsoid.positiveDir : EllipsoidDirection_ENU;
        const stLongLatH &given = position.getLongLatH();
        const Pair pair = {given.longitude, given.latitude};
        const auto isInside = [&](Pair p) {
            return m_area.contains(countsWest(axes) ? -p.first : p.first,
                                   countsSouth(axes) ? -p.second : p.second);
        };
        return isInside(pair) ? PositionMistake::None : firstMistake(pair, isInside);
    }
    case Frame::LocalProjected: break;
    }
    if (!m_plane)
        m_plane = std::make_unique<Plane>(m_coord, m_area);
    const stENU &given = position.getENU();
    return firstMistake({given.e, given.n},
                        [&](Pair p) { return m_plane->holds(p.first, p.second, given.u); });
}

QString describedMistake(PositionMistake mistake, Frame frame)
{
    const bool isPlane = frame == Frame::LocalProjected;
    switch (mistake) {
    case PositionMistake::None: break;
    case PositionMistake::Swapped:
        return isPlane ? QObject::tr("northing and easting swapped")
                       : QObject::tr("longitude and latitude swapped");
    case PositionMistake::FirstSign:
        return isPlane ? QObject::tr("the sign of the easting changed")
                       : QObject::tr("the sign of the longitude changed");
    case PositionMistake::SecondSign:
        return isPlane ? QObject::tr("the sign of the northing changed")
                       : QObject::tr("the sign of the latitude changed");
    case PositionMistake::BothSigns:
        return isPlane ? QObject::tr("the signs of northing and easting changed")
                       : QObject::tr("the signs of longitude and latitude changed");
    }
    return {};
}

} // namespace KelStd
