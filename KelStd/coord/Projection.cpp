#include <KelStd/coord/Projection.h>

#include <KelStd/coord/MapEquality.h>

#include <algorithm>

namespace KelStd {

namespace {

bool equalIgnoringCase(const QString &a, QLatin1String b)
{
    return QString::compare(a, b, Qt::CaseInsensitive) == 0;
}

/// PROJ reads "k" and "k_0" as one parameter.
bool namesOneProjParameter(const QString &a, const QString &b)
{
    const QLatin1String k("k");
    const QLatin1String k0("k_0");
    return QString::compare(a, b, Qt::CaseInsensitive) == 0
           || (equalIgnoringCase(a, k) && equalIgnoringCase(b, k0))
           || (equalIgnoringCase(a, k0) && equalIgnoringCase(b, k));
}

/// Whether `projection` gives the PROJ parameter `name` the value `param` under any of its keys.
bool givesValue(const Projection &projection, const QString &name, const Param &param)
{
    const auto &names = projection.paramProj4;
    return std::any_of(names.keyValueBegin(), names.keyValueEnd(), [&](const auto &entry) {
        if (!namesOneProjParameter(name, entry.second.trimmed()))
            return false;
        const auto found = projection.param.constFind(entry.first);
        return found != projection.param.constEnd() && *found == param;
    });
}

} // namespace

Projection::Projection()
    : locationType(LocationType_X_Y_ElevationHeight), loc_or_height_unit(Unit_Meter)
{}

void Projection::clear()
{
    projection_name.clear();
    proj4Projection.clear();
    param.clear();
    paramProj4.clear();
}

bool Projection::operator==(const Projection &other) const
{
    return this == &other
           || (proj4Projection == other.proj4Projection && sameEntries(param, other.param)
               && sameEntries(paramProj4, other.paramProj4) && locationType == other.locationType
               && loc_or_height_unit == other.loc_or_height_unit);
}

bool Projection::operator!=(const Projection &other) const
{
    return !(*this == other);
}

bool Projection::isSameLogic(const Projection &other) const
{
    if (this == &other)
        return true;
    if (paramProj4.size() != other.paramProj4.size())
        return false;
    for (auto entry = paramProj4.constBegin(); entry != paramProj4.constEnd(); ++entry) {
        const auto own = param.constFind(entry.key());
        if (own == param.constEnd() || !givesValue(other, entry.value().trimmed(), *own))
            return false;
    }
    return proj4Projection == other.proj4Projection && locationType == other.locationType
           && loc_or_height_unit == other.loc_or_height_unit;
}

EUnit Projection::eastUnit() const
{
    switch (locationType) {
    case LocationType_X_Y_ElevationHeight: return Unit_Meter;
    case LocationType_Lat_Long_EarthHeight: return Unit_Degree;
    }
    return Unit_None;
}

EUnit Projection::northUnit() const
{
    return eastUnit();
}

EUnit Projection::heightUnit() const
{
    switch (locationType) {
    case LocationType_X_Y_ElevationHeight:
    case LocationType_Lat_Long_EarthHeight: return loc_or_height_unit;
    }
    return Unit_None;
}

} // namespace KelStd
