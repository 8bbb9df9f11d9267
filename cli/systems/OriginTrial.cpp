#include <cli/systems/OriginTrial.h>

#include <cli/terminal/WithoutRaising.h>

#include <KelStd/location/LocationBuilder.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace KelStd::cli {

namespace {

/// The number of a parameter of PROJ; nothing where the record has none.
std::optional<double> numberOf(const Projection &projection, const char *projName)
{
    const QString name = QString::fromLatin1(projName);
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        if (entry.value() == name && projection.param.contains(entry.key()))
            return projection.param.value(entry.key()).value.toDouble();
    }
    return std::nullopt;
}

/// Where the projection is likely to be good: about its central meridian, at its latitudes.
std::vector<Pos> placesAround(const Projection &projection)
{
    double meridian = 0.0;
    for (const char *name : {"lonc", "lon_1", "lon_0"})
        meridian = numberOf(projection, name).value_or(meridian);
    if (const auto zone = numberOf(projection, "zone"))
        meridian =
            Coord::UtmZone_to_DegreedLogitude(static_cast<int>(std::clamp(*zone, 1.0, 60.0)));
    std::vector<double> latitudes;
    for (const char *name : {"lat_0", "lat_1", "lat_2", "lat_ts"}) {
        if (const auto latitude = numberOf(projection, name))
            latitudes.push_back(*latitude);
    }
    for (const double latitude : {0.0, 30.0, -30.0, 60.0, -60.0, 85.0, -85.0})
        latitudes.push_back(latitude);
    std::vector<Pos> places;
    for (const double latitude : latitudes) {
        for (const double offset : {0.0, 1.0, -1.0}) {
            for (const double rise : {0.0, 0.5, -0.5}) {
                places.push_back(Pos::fromLongLatH(meridian + offset,
                                                   std::clamp(latitude + rise, -89.9, 89.9), 0.0));
            }
        }
    }
    return places;
}

} // namespace

bool convertsAroundOrigin(const Coord &coord, QString &reason)
{
    QString failure;
    bool isMade = false;
    const auto convert = [&] {
        LocationBuilder builder(coord);
        builder.requireOneToOne(true);
        for (const Pos &place : placesAround(coord.projection)) {
            Location location;
            LocationBuilder::Outcome outcome;
            builder.make(LocationBuilder::Frame::LocalGeographic, &place, 1, &location, &outcome);
            isMade = isMade || outcome.isMade;
            if (failure.isEmpty())
                failure = outcome.reason;
        }
    };
    if (!withoutRaising(convert, reason))
        return false;
    if (!isMade)
        reason = QStringLiteral("no position around the projection's origin can be converted: %1")
                     .arg(failure);
    return isMade;
}

} // namespace KelStd::cli
