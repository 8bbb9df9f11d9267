#include <cli/site/SiteInput.h>

#include <cli/site/PointFile.h>
#include <cli/systems/SystemProposals.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/positions/PlaneUnit.h>

#include <cmath>

namespace KelStd::cli {

namespace {

std::optional<positions::PlaneUnit> planeUnitOf(const SystemOrigin &origin, Console &console)
{
    constexpr double tolerance = 1e-9;
    if (!origin.planeUnit || std::abs(origin.planeUnit->metres - 1.0) <= tolerance)
        return std::nullopt;
    const auto unit = positions::findPlaneUnit(*origin.planeUnit);
    if (!unit) {
        console.report(QStringLiteral("note: plane coordinates of the system are customarily in a "
                                      "unit of %1 m (%2); here they are read in metres, or in the "
                                      "unit of their heading")
                           .arg(origin.planeUnit->metres, 0, 'g', 15)
                           .arg(shown(origin.planeUnit->name)));
    }
    return unit;
}

/// "-" is standard input.
QString listFile(const QString &name)
{
    return name == QLatin1String("-") ? name : onDisk(name);
}

} // namespace

void addSiteInputOptions(CommandLine &line, const QString &listOption, const QString &description)
{
    line.addOption({QStringLiteral("system"),
                    QStringLiteral("The coordinate system: a document, or a name."),
                    QStringLiteral("S")},
                   systemValues());
    line.addOption({listOption, description, QStringLiteral("FILE")});
}

QString pointsHelp()
{
    return QStringLiteral(
        "FILE is a list with a line of headings, in any order: name, longitude, latitude,\n"
        "height (in WGS 84, as measured), northing, easting, and, where they are there,\n"
        "elevation (of the site), use (h in plan, v in height, hv both, - neither),\n"
        "sigma_h and sigma_v (standard deviations). Lengths are in the unit of their\n"
        "heading, as in northing_ft. Without one northing and easting are in the unit\n"
        "that the system is given in, as US survey feet of EPSG:2263, and a note says so\n"
        "where that is not metres; all others are metres. Longitudes and latitudes are\n"
        "typed as for 'kelstd convert'. A point without an elevation is left out of the\n"
        "heights. Where a line can be read in two ways nothing is computed.");
}

std::optional<ExitStatus> SiteInput::takeOptions(const CommandLine &line, Console &console)
{
    const struct
    {
        QString option;
        QString *name;
    } rows[] = {{QStringLiteral("system"), &m_systemName}, {m_listOption, &m_listName}};
    for (const auto &row : rows) {
        *row.name = line.value(row.option);
        if (row.name->isEmpty())
            return line.refuse(QStringLiteral("--%1 is missing").arg(row.option), console);
    }
    return std::nullopt;
}

std::optional<ExitStatus> SiteInput::readSystem(const CommandLine &line, Console &console)
{
    const auto system = readChosenSystem(m_systemName, line, console);
    if (!system)
        return ExitStatus::Environment;
    m_system = *system;
    m_environment.emplace();
    if (!m_environment->isReady(console)
        || !canBeUsed(m_system.coord, m_system.review, m_systemName, line, console))
        return ExitStatus::Environment;
    return std::nullopt;
}

std::optional<ExitStatus> SiteInput::readPoints(ControlPoints &points, Console &console) const
{
    const auto planeUnit = planeUnitOf(m_system.origin, console);
    positions::ControlListReader reader(planeUnit);
    if (const auto status = readPointFile(listFile(m_listName), reader, console))
        return status;
    if (reader.usesPlaneUnit()) {
        console.report(
            QStringLiteral("note: northing and easting are read in %1, the unit of the "
                           "system, all other lengths in m, where their headings name no unit")
                .arg(planeUnit->symbol));
    }
    points = reader.points();
    return std::nullopt;
}

std::optional<ExitStatus> SiteInput::readPairs(positions::PairListReader &reader,
                                               Console &console) const
{
    return readPointFile(listFile(m_listName), reader, console);
}

} // namespace KelStd::cli
