#include <cli/catalogue/PlaceOptions.h>

#include <cli/terminal/CommandLine.h>

#include <KelStd/text/TypedAngle.h>

#include <QtCore/QStringList>

namespace KelStd::cli {

namespace {

const QString atOption = QStringLiteral("at");
const QString boxOption = QStringLiteral("bbox");

// Some count longitudes from 0 to 360.
constexpr double lowestLongitude = -180.0;
constexpr double highestLongitude = 360.0;
constexpr double highestLatitude = 90.0;

/// A longitude or latitude as people type it [deg]; nothing with the mistake.
std::optional<double> readAngle(const QString &text, AngleSense sense, QString &mistake)
{
    const bool isLongitude = sense == AngleSense::Longitude;
    const QString what = isLongitude ? QStringLiteral("longitude") : QStringLiteral("latitude");
    TypedValueFailure failure;
    const auto angle = readTypedAngle(text.trimmed(), sense, DecimalMark::Point, failure);
    if (!angle) {
        mistake = QStringLiteral("the %1 %2").arg(what, failure.text);
        return std::nullopt;
    }
    const double lowest = isLongitude ? lowestLongitude : -highestLatitude;
    const double highest = isLongitude ? highestLongitude : highestLatitude;
    if (*angle < lowest || *angle > highest) {
        mistake = QStringLiteral("the %1 %2 is not between %3 and %4; the longitude comes first")
                      .arg(what, quoted(text))
                      .arg(lowest)
                      .arg(highest);
        return std::nullopt;
    }
    return angle;
}

/// Longitudes and latitudes in turn, separated by commas; false with the mistake.
template <std::size_t count>
bool readAngles(const CommandLine &line, const QString &option, double (&angles)[count],
                QString &mistake)
{
    const QString given = line.value(option);
    const QStringList fields = given.split(QLatin1Char(','));
    QString reason;
    if (fields.size() != static_cast<int>(count)) {
        reason = QStringLiteral("%1 numbers with commas between them are needed").arg(count);
    } else {
        for (std::size_t i = 0; i < count && reason.isEmpty(); ++i) {
            const auto sense = i % 2 == 0 ? AngleSense::Longitude : AngleSense::Latitude;
            if (const auto angle = readAngle(fields.at(static_cast<int>(i)), sense, reason))
                angles[i] = *angle;
        }
    }
    if (reason.isEmpty())
        return true;
    mistake = QStringLiteral("--%1 %2: %3").arg(option, quoted(given), reason);
    return false;
}

double withinOneTurn(double longitude)
{
    constexpr double turn = 360.0;
    return longitude > turn / 2.0 ? longitude - turn : longitude;
}

} // namespace

void addPlaceOption(CommandLine &line, const QString &help)
{
    line.addOption({atOption, help, QStringLiteral("LON,LAT")});
}

bool takePlace(const CommandLine &line, std::optional<catalogue::GroundPoint> &place,
               QString &mistake)
{
    double angles[2] = {};
    if (!line.isSet(atOption))
        return true;
    if (!readAngles(line, atOption, angles, mistake))
        return false;
    place = catalogue::GroundPoint{withinOneTurn(angles[0]), angles[1]};
    return true;
}

void addBoxOption(CommandLine &line)
{
    line.addOption({boxOption,
                    QStringLiteral("Only systems whose area has something in common with\n"
                                   "this box: WGS84 longitude and latitude of its corner\n"
                                   "in the south-west, then of that in the north-east\n"
                                   "[deg]. Across 180 degrees W is greater than E."),
                    QStringLiteral("W,S,E,N")});
}

bool takeBox(const CommandLine &line, std::optional<catalogue::SystemArea> &box, QString &mistake)
{
    double angles[4] = {};
    if (!line.isSet(boxOption))
        return true;
    if (!readAngles(line, boxOption, angles, mistake))
        return false;
    if (angles[1] > angles[3]) {
        mistake = QStringLiteral("--%1 %2: its south lies north of its north")
                      .arg(boxOption, quoted(line.value(boxOption)));
        return false;
    }
    constexpr double wholeTurn = 360.0;
    catalogue::SystemArea area;
    area.isKnown = true;
    const bool isRoundTheEarth = angles[2] - angles[0] >= wholeTurn;
    area.west = isRoundTheEarth ? lowestLongitude : withinOneTurn(angles[0]);
    area.east = isRoundTheEarth ? -lowestLongitude : withinOneTurn(angles[2]);
    area.south = angles[1];
    area.north = angles[3];
    box = area;
    return true;
}

} // namespace KelStd::cli
