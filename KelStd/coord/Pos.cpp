#include <KelStd/coord/Pos.h>

#include <KelStd/stream/BlockVersion.h>

#include <cmath>
#include <cstddef>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

/// Components that differ by at most this are equal to `equals`.
constexpr double tolerance = 0.0001;

constexpr bool sameLayout(std::size_t a, std::size_t b, std::size_t c)
{
    return a == b && b == c;
}

static_assert(sizeof(uPos) == 3 * sizeof(double));
static_assert(sameLayout(offsetof(stXYZ, x), offsetof(stLongLatH, longitude), offsetof(stENU, e)));
static_assert(sameLayout(offsetof(stXYZ, y), offsetof(stLongLatH, latitude), offsetof(stENU, n)));
static_assert(sameLayout(offsetof(stXYZ, z), offsetof(stLongLatH, height), offsetof(stENU, u)));

} // namespace

Pos Pos::fromXYZ(double x, double y, double z)
{
    Pos pos;
    pos.setXYZ(x, y, z);
    return pos;
}

Pos Pos::fromLongLatH(double longitude, double latitude, double height)
{
    Pos pos;
    pos.setLongLatH(longitude, latitude, height);
    return pos;
}

Pos Pos::fromENU(double e, double n, double u)
{
    Pos pos;
    pos.setENU(e, n, u);
    return pos;
}

bool Pos::operator==(const Pos &other) const
{
    const stXYZ &a = getXYZ();
    const stXYZ &b = other.getXYZ();
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool Pos::operator!=(const Pos &other) const
{
    return !(*this == other);
}

bool Pos::equals(const Pos &other) const
{
    const stXYZ &a = getXYZ();
    const stXYZ &b = other.getXYZ();
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance
           && std::abs(a.z - b.z) <= tolerance;
}

Pos Pos::operator-(const Pos &other) const
{
    const stXYZ &a = getXYZ();
    const stXYZ &b = other.getXYZ();
    return fromXYZ(a.x - b.x, a.y - b.y, a.z - b.z);
}

void Pos::save(QDataStream &stream) const
{
    stream << streamVersion << m_pos.xyz.x << m_pos.xyz.y << m_pos.xyz.z;
}

bool Pos::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> m_pos.xyz.x >> m_pos.xyz.y >> m_pos.xyz.z;
    return true;
}

} // namespace KelStd
