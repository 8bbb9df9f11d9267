#include <cli/commands/Command.h>

#include <cli/catalogue/SystemTarget.h>
#include <cli/site/SiteInput.h>
#include <cli/site/SiteText.h>
#include <cli/systems/RecordReview.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/calibration/FitJson.h>
#include <KelStd/library/LibraryRecord.h>
#include <KelStd/location/SystemNotes.h>

#include <cmath>
#include <vector>

namespace KelStd::cli {

namespace {

using calibration::DatumMethod;

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--system S --pairs FILE [OPTIONS]"),
        QStringLiteral("Fits the datum shift of a system to points that are known on both "
                       "sides."),
        QStringLiteral(
            "FILE is a list with a line of headings, in any order: name and, of each side,\n"
            "local_x, local_y, local_z or local_longitude, local_latitude, local_height; and\n"
            "so with wgs84. Local longitudes and latitudes are on the system's ellipsoid;\n"
            "those of a system whose axes point west or south may count that way, or to the\n"
            "east and north: the positions in WGS84 tell.\n"
            "\n"
            "Printed is the shift from the local ellipsoid to WGS 84, with rotations by the\n"
            "position vector convention and the exact matrix: each parameter, its standard\n"
            "deviation where the points tell one, and beside it that of the linear matrix.\n"
            "The document keeps translations and scale with their signs reversed, as all\n"
            "documents do.\n"
            "\n")
            + reviewHelp()
            + QStringLiteral("\n\nExit status: 0 fitted, 1 a line or the points are refused, 2 "
                             "usage, headings\nthat are not understood or a file that exists, 3 "
                             "no PROJ, no usable system, or\nit cannot be written, 4 written, but "
                             "standard output cannot be written."));
    line.setExamples(
        QStringLiteral(
            "kelstd datum fit --system harbour.xml --pairs pairs.csv --parameters three"),
        QStringLiteral(
            "kelstd datum fit --system harbour.xml --pairs pairs.csv --name Y -o new.xml"));
    addSiteInputOptions(line, QStringLiteral("pairs"), QStringLiteral("The points."));
    line.addOption({QStringLiteral("parameters"), QStringLiteral("three or seven. Default: seven."),
                    QStringLiteral("COUNT")},
                   Values::ofWords({QStringLiteral("three"), QStringLiteral("seven")}));
    line.addOption({QStringLiteral("name"),
                    QStringLiteral("The name of the system with the shift. Default:\n"
                                   "that of S."),
                    QStringLiteral("NAME")});
    line.addOption({QStringLiteral("json"), QStringLiteral("Print an object of JSON, with all\n"
                                                           "digits.")});
    SystemTarget::addOptions(line);
    addLenientOption(line);
    return line;
}

/// The local position of each pair; empty after a report.
std::vector<Pos> cartesianLocals(const positions::PairListReader &reader,
                                 const Ellipsoid &ellipsoid, Console &console)
{
    std::vector<Pos> locals;
    for (const positions::PositionPair &given : reader.pairs()) {
        calibration::CalibrationFailure failure;
        const auto local = calibration::cartesianOf(ellipsoid, given.local, &failure);
        if (!local) {
            console.report(QStringLiteral("nothing is fitted: %1").arg(shown(failure.text)));
            return {};
        }
        locals.push_back(*local);
    }
    return locals;
}

double distanceOf(const std::vector<Pos> &locals, const QVector<calibration::DatumPair> &pairs)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < locals.size(); ++i) {
        const stXYZ &a = locals[i].getXYZ();
        const stXYZ &b = pairs.at(static_cast<int>(i)).wgs84.getXYZ();
        sum += std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
    }
    return sum;
}

/// The local positions of angles. Those of a system whose axes point west or south may count that
/// way, as `convert` prints them, or to the east and north, as lists of stations mostly do: the
/// positions in WGS84 beside them, which are near, tell.
std::vector<Pos> localsOfAngles(const positions::PairListReader &reader, const Ellipsoid &ellipsoid,
                                const QVector<calibration::DatumPair> &pairs, Console &console)
{
    std::vector<Pos> locals = cartesianLocals(reader, ellipsoid, console);
    const QString axes = location::unusualAxes(ellipsoid);
    if (locals.empty() || axes.isEmpty())
        return locals;
    Ellipsoid eastAndNorth = ellipsoid;
    eastAndNorth.positiveDir = EllipsoidDirection_ENU;
    std::vector<Pos> others = cartesianLocals(reader, eastAndNorth, console);
    const bool isOther = distanceOf(others, pairs) < distanceOf(locals, pairs);
    console.report(QStringLiteral("note: the axes of the system point %1; the local longitudes and "
                                  "latitudes of the list are read as counting positive to the %2, "
                                  "by which they are near those in WGS84")
                       .arg(axes, isOther ? QStringLiteral("east and north") : axes));
    return isOther ? others : locals;
}

/// The pairs in cartesian coordinates; nothing after a report.
std::optional<QVector<calibration::DatumPair>>
cartesianPairs(const positions::PairListReader &reader, const Coord &coord, Console &console)
{
    QVector<calibration::DatumPair> pairs;
    for (const positions::PositionPair &given : reader.pairs()) {
        calibration::DatumPair pair;
        pair.name = given.name;
        pair.local = given.local;
        pair.wgs84 =
            reader.isWgs84Geographic() ? calibration::wgs84CartesianOf(given.wgs84) : given.wgs84;
        pairs += pair;
    }
    if (!reader.isLocalGeographic() || pairs.isEmpty())
        return pairs;
    const std::vector<Pos> locals = localsOfAngles(reader, coord.ellipsoid, pairs, console);
    if (locals.empty())
        return std::nullopt;
    for (int i = 0; i < pairs.size(); ++i)
        pairs[i].local = locals[static_cast<std::size_t>(i)];
    return pairs;
}

} // namespace

ExitStatus runDatumFit(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    SiteInput input(QStringLiteral("pairs"));
    if (const auto status = input.takeOptions(line, console))
        return *status;
    const QString count = line.value(QStringLiteral("parameters"));
    const QString name = library::withoutMarks(line.value(QStringLiteral("name")));
    const bool isJson = line.isSet(QStringLiteral("json"));
    if (line.isSet(QStringLiteral("parameters")) && count != QLatin1String("three")
        && count != QLatin1String("seven"))
        return line.refuse(
            QStringLiteral("--parameters '%1' is neither three nor seven").arg(count), console);
    if (line.isSet(QStringLiteral("name")) && name.trimmed().isEmpty())
        return line.refuse(QStringLiteral("--name is empty"), console);
    SystemTarget target;
    QString mistake;
    if (!target.takeOptions(line, mistake))
        return line.refuse(mistake, console);
    for (const QString &source : input.names()) {
        if (const auto status = target.refusal(source, console))
            return *status;
    }
    if (const auto status = input.readSystem(line, console))
        return *status;
    positions::PairListReader reader;
    if (const auto status = input.readPairs(reader, console))
        return *status;
    const ChosenSystem &system = input.system();
    const auto pairs = cartesianPairs(reader, system.coord, console);
    if (!pairs)
        return ExitStatus::SomeFailed;

    calibration::CalibrationFailure failure;
    auto fit = calibration::fitDatum(
        system.coord, *pairs,
        count == QLatin1String("three") ? DatumMethod::Three : DatumMethod::Seven, &failure);
    if (!fit) {
        console.report(QStringLiteral("nothing is fitted: %1").arg(shown(failure.text)));
        return ExitStatus::SomeFailed;
    }
    if (!name.isEmpty())
        fit->coord.coord_name = name;
    reportWarnings(fit->warnings, console);
    if (isJson)
        console.write(jsonLine(*fit));
    else
        printText(*fit, console);
    if (!target.isNamed())
        return ExitStatus::Success;
    return target.put(fit->coord, calibration::datumOrigin(system.origin), line, isJson, console);
}

} // namespace KelStd::cli
