#include <KelStd/coord/Projection.h>

#include <KelStd/coord/MapEquality.h>
#include <KelStd/stream/BlockVersion.h>
#include <KelStd/stream/VariantWriter.h>

#include <algorithm>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

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

/// Not as Qt writes a map: the count is signed, and the entries stand in key order.
void saveEntries(const QMap<QString, Param> &entries, QDataStream &stream)
{
    stream << static_cast<qint32>(entries.size());
    for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
        stream << entry.key();
        entry.value().save(stream);
    }
}

/// False at the first parameter that fails, which is not inserted. Behind the end of the stream
/// every parameter fails, whatever the count says.
bool loadEntries(QMap<QString, Param> &entries, QDataStream &stream)
{
    qint32 count = 0;
    stream >> count;
    for (qint32 i = 0; i < count; ++i) {
        QString key;
        stream >> key;
        Param entry;
        if (!entry.load(stream))
            return false;
        entries.insert(key, entry);
    }
    return true;
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

void Projection::save(QDataStream &stream) const
{
    stream << streamVersion << projection_name << proj4Projection;
    saveEntries(param, stream);
    writeTexts(stream, paramProj4);
    stream << locationType;
}

bool Projection::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> projection_name >> proj4Projection;
    if (!loadEntries(param, stream))
        return false;
    stream >> paramProj4 >> locationType;
    return true;
}

} // namespace KelStd
