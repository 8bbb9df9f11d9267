#include <cli/commands/Command.h>

#include <cli/systems/SystemFile.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/WithoutRaising.h>

#include <KelStd/coord/PlaneLimit.h>
#include <KelStd/coord/ScaleLimits.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <cmath>

namespace KelStd::cli {

namespace {

// Of every UTM zone.
constexpr double utmScale = 0.9996;
constexpr double utmFalseEasting = 500000.0;
constexpr double utmFalseNorthingSouth = 10000000.0;
constexpr int lastUtmZone = 60;

/// What is set in a default system.
struct TransverseMercator
{
    QString name;
    double centralMeridian = 0.0;
    double scale = 1.0;
    double falseEasting = 0.0;
    double falseNorthing = 0.0;
};

Coord makeSystem(const TransverseMercator &choice)
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.coord_name = choice.name;
    auto &params = coord.projection.param;
    params[QStringLiteral("lon_0")].value = choice.centralMeridian;
    params[QStringLiteral("k")].value = choice.scale;
    params[QStringLiteral("FalseEast")].value = choice.falseEasting;
    params[QStringLiteral("FalseNorth")].value = choice.falseNorthing;
    return coord;
}

/// A zone as "31", "31N" or "31S"; a zone without a letter is a northern one.
bool chooseZone(const QString &text, TransverseMercator &choice, QString &mistake)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A(?<zone>[0-9]{1,2})(?<half>[NnSs]?)\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    const int zone = match.captured(QStringLiteral("zone")).toInt();
    if (!match.hasMatch() || zone < 1 || zone > lastUtmZone) {
        mistake = QStringLiteral("--utm-zone '%1' is no zone: 1 to %2, with N or S after it")
                      .arg(text)
                      .arg(lastUtmZone);
        return false;
    }
    const bool isSouth = match.captured(QStringLiteral("half")).toUpper() == QLatin1String("S");
    choice.name = QStringLiteral("WGS 84 / UTM zone %1%2")
                      .arg(zone)
                      .arg(isSouth ? QLatin1Char('S') : QLatin1Char('N'));
    choice.centralMeridian = Coord::UtmZone_to_DegreedLogitude(zone);
    choice.scale = utmScale;
    choice.falseEasting = utmFalseEasting;
    choice.falseNorthing = isSouth ? utmFalseNorthingSouth : 0.0;
    return true;
}

/// Reads the number of an option that was given; false with the mistake.
bool readOption(const CommandLine &line, const char *option, double min, double max, double &value,
                QString &mistake)
{
    const QString name = QString::fromLatin1(option);
    if (!line.isSet(name))
        return true;
    constexpr int digits = 9; // a bound in full
    TypedValueFailure failure;
    const auto number = readNumber(line.value(name).trimmed(), failure);
    if (!number) {
        mistake = QStringLiteral("--%1 %2").arg(name, failure.text);
        return false;
    }
    if (*number < min || *number > max) {
        mistake = QStringLiteral("--%1 %2 is not between %3 and %4")
                      .arg(name, quoted(line.value(name)))
                      .arg(min, 0, 'g', digits)
                      .arg(max, 0, 'g', digits);
        return false;
    }
    value = *number;
    return true;
}

bool chooseMeridian(const CommandLine &line, TransverseMercator &choice, QString &mistake)
{
    if (!readOption(line, "central-meridian", -180.0, 180.0, choice.centralMeridian, mistake)
        || !readOption(line, "scale", lowestScale, highestScale, choice.scale, mistake)
        || !readOption(line, "false-easting", -maxPlane, maxPlane, choice.falseEasting, mistake)
        || !readOption(line, "false-northing", -maxPlane, maxPlane, choice.falseNorthing, mistake))
        return false;
    choice.name = QStringLiteral("WGS 84 / transverse Mercator %1 deg")
                      .arg(tk::Toolkits::DoubleToString(choice.centralMeridian, 9));
    return true;
}

CommandLine makeCommandLine()
{
    CommandLine line(QStringLiteral("--utm-zone N|--central-meridian D -o FILE [OPTIONS]"),
                     QStringLiteral("Writes a transverse Mercator system on the WGS84 ellipsoid, "
                                    "without datum shift."),
                     QStringLiteral("With --central-meridian alone the scale is 1, the false "
                                    "easting and northing 0.\n"
                                    "\n"
                                    "Exit status: 0 written, 2 usage or a file that exists, 3 it "
                                    "cannot be written,\n4 written, but standard output cannot be "
                                    "written."));
    line.setExamples(
        QStringLiteral("kelstd system default --utm-zone 32N -o utm32.xml"),
        QStringLiteral(
            "kelstd system default --central-meridian 9 --false-easting 3500000 -o z3.xml"));
    line.addOption({QStringLiteral("utm-zone"),
                    QStringLiteral("A UTM zone, 1 to 60, with N or S after it; N if\n"
                                   "neither stands there. It sets the meridian, the\n"
                                   "scale 0.9996, the false easting 500000 m and, for\n"
                                   "S, the false northing 10000000 m."),
                    QStringLiteral("N")});
    line.addOption({QStringLiteral("central-meridian"),
                    QStringLiteral("The central meridian's longitude, -180 to 180 [deg].\n"
                                   "The next three options go with it:"),
                    QStringLiteral("D")});
    line.addOption({QStringLiteral("scale"),
                    QStringLiteral("The scale on the central meridian, 0.9 to 1.1."),
                    QStringLiteral("K")});
    line.addOption({QStringLiteral("false-easting"),
                    QStringLiteral("The easting of the central meridian [m]."),
                    QStringLiteral("E")});
    line.addOption({QStringLiteral("false-northing"),
                    QStringLiteral("The northing of the equator [m]."), QStringLiteral("N")});
    line.addOption({QStringLiteral("name"), QStringLiteral("The name of the system."),
                    QStringLiteral("NAME")});
    line.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                    QStringLiteral("The file to write."),
                    QStringLiteral("FILE")});
    line.addOption({QStringLiteral("force"), QStringLiteral("Replace a file that exists.")});
    return line;
}

/// What the command line asks for; false with the mistake.
bool choose(const CommandLine &line, TransverseMercator &choice, QString &mistake)
{
    const bool byZone = line.isSet(QStringLiteral("utm-zone"));
    if (byZone == line.isSet(QStringLiteral("central-meridian"))) {
        mistake = QStringLiteral("give one of --utm-zone and --central-meridian");
        return false;
    }
    for (const char *option : {"scale", "false-easting", "false-northing"}) {
        if (byZone && line.isSet(QLatin1String(option))) {
            mistake = QStringLiteral("--%1 belongs to --central-meridian: a UTM zone has its own")
                          .arg(QLatin1String(option));
            return false;
        }
    }
    if (!(byZone ? chooseZone(line.value(QStringLiteral("utm-zone")), choice, mistake)
                 : chooseMeridian(line, choice, mistake)))
        return false;
    if (line.isSet(QStringLiteral("name")))
        choice.name = line.value(QStringLiteral("name"));
    return true;
}

} // namespace

ExitStatus runSystemDefault(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    TransverseMercator choice;
    QString mistake;
    if (!choose(line, choice, mistake))
        return line.refuse(mistake, console);
    const QString fileName = onDisk(line.value(QStringLiteral("output")));
    if (fileName.isEmpty())
        return line.refuse(QStringLiteral("-o FILE is missing"), console);
    if (fileName == QLatin1String("-"))
        return line.refuse(QStringLiteral("a system is written to a file, not to standard output"),
                           console);
    if (QFileInfo::exists(fileName) && !line.isSet(QStringLiteral("force"))) {
        console.report(QStringLiteral("%1 exists; --force replaces it").arg(fileName));
        return ExitStatus::Usage;
    }

    QString reason;
    bool written = false;
    const Coord coord = makeSystem(choice);
    if (!withoutRaising([&] { written = Coord_IO::xml_write(coord, fileName, &reason); }, reason)
        || !written) {
        console.report(QStringLiteral("cannot write %1: %2").arg(fileName, reason));
        return ExitStatus::Environment;
    }
    console.printChange(QStringLiteral("Wrote %1: %2").arg(fileName, coord.coord_name));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
