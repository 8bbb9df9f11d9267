#include <KelStd/coord/Location.h>

#include <KelStd/stream/BlockVersion.h>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

/// In the order in which a stream holds them.
constexpr Pos Location::*positions[] = {&Location::wgs84LLH, &Location::wgs84XYZ,
                                        &Location::localLLH, &Location::localNEH};

} // namespace

void Location::clear()
{
    *this = Location();
}

double Location::get_WGS84_LLH_Long() const
{
    return wgs84LLH.getLongLatH().longitude;
}

double Location::get_WGS84_LLH_Lat() const
{
    return wgs84LLH.getLongLatH().latitude;
}

double Location::get_WGS84_LLH_Height() const
{
    return wgs84LLH.getLongLatH().height;
}

double Location::get_WGS84_XYZ_X() const
{
    return wgs84XYZ.getXYZ().x;
}

double Location::get_WGS84_XYZ_Y() const
{
    return wgs84XYZ.getXYZ().y;
}

double Location::get_WGS84_XYZ_Z() const
{
    return wgs84XYZ.getXYZ().z;
}

double Location::get_Local_LLH_Long() const
{
    return localLLH.getLongLatH().longitude;
}

double Location::get_Local_LLH_Lat() const
{
    return localLLH.getLongLatH().latitude;
}

double Location::get_Local_LLH_Height() const
{
    return localLLH.getLongLatH().height;
}

double Location::get_NEH_E() const
{
    return localNEH.getENU().e;
}

double Location::get_NEH_N() const
{
    return localNEH.getENU().n;
}

double Location::get_NEH_H() const
{
    return localNEH.getENU().u;
}

bool Location::operator==(const Location &other) const
{
    return this == &other
           || (wgs84LLH == other.wgs84LLH && wgs84XYZ == other.wgs84XYZ
               && localLLH == other.localLLH && localNEH == other.localNEH);
}

bool Location::operator!=(const Location &other) const
{
    return !(*this == other);
}

bool Location::equals(const Location &other) const
{
    return wgs84LLH.equals(other.wgs84LLH) && wgs84XYZ.equals(other.wgs84XYZ)
           && localLLH.equals(other.localLLH) && localNEH.equals(other.localNEH);
}

void Location::save(QDataStream &stream) const
{
    stream << streamVersion;
    for (const auto position : positions)
        (this->*position).save(stream);
}

bool Location::load(QDataStream &stream)
{
    clear();
    return readVersion(stream) == streamVersion
           && std::all_of(std::begin(positions), std::end(positions),
                          [&](const auto position) { return (this->*position).load(stream); });
}

} // namespace KelStd
