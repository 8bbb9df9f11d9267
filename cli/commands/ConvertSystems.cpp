#include <cli/commands/ConvertSystems.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <KelStd/location/SystemNotes.h>
#include <KelStd/positions/Columns.h>

namespace KelStd::cli {

namespace {

/// The geoid model that the system names, as far as it can be used. Empty when it names none, and
/// after a warning when it names one that is no use.
QString usableGeoidModel(const ConversionSystem &of, const QString &system, Console &console)
{
    QString name = of.coord.geoidModel.modelFileName;
    if (name.isEmpty())
        return {};
    QString reason;
    const auto path = findGeoidModel(name, reason);
    if (path && geoidGridIsReadable(*path, reason))
        return name;
    console.report(QStringLiteral("warning: the geoid model \"%1\" of %2 cannot be used: "
                                  "%3. All heights are ellipsoidal%4.")
                       .arg(name, system, reason,
                            of.site.hasSurface()
                                ? QStringLiteral(", and there are none at the site")
                                : QString()));
    return {};
}

/// Reads the records of the system's site; false after a report where they cannot be applied.
bool takeSite(ConversionSystem &system, Console &console)
{
    calibration::SiteFailure failure;
    const auto site = calibration::SiteTransform::of(system.coord, &failure);
    if (site)
        system.site = *site;
    else
        console.report(QStringLiteral("cannot use the coordinate system %1: %2")
                           .arg(system.name, failure.text));
    return site.has_value();
}

} // namespace

bool ConvertSystems::read(const QString &system, const std::optional<QString> &to,
                          const CommandLine &line, Console &console)
{
    QStringList names{system};
    if (to)
        names += *to;
    for (const QString &name : names) {
        const auto chosen = readChosenSystem(name, line, console);
        if (!chosen)
            return false;
        m_reviews.push_back(chosen->review);
        m_systems.push_back({name, chosen->coord, chosen->origin, {}, {}});
    }
    return true;
}

bool ConvertSystems::canBeUsed(const CommandLine &line, Console &console)
{
    for (std::size_t i = 0; i < m_systems.size(); ++i) {
        if (!cli::canBeUsed(m_systems[i].coord, m_reviews[i], m_systems[i].name, line, console)
            || !takeSite(m_systems[i], console))
            return false;
    }
    for (const ConversionSystem &system : m_systems) {
        const QString about = hasTarget() ? system.name + QLatin1String(": ") : QString();
        for (const QString &note : location::notesOn(system.coord))
            console.report(QStringLiteral("note: %1%2").arg(about, note));
    }
    return true;
}

void ConvertSystems::findGeoidModels(Console &console)
{
    for (ConversionSystem &system : m_systems)
        system.geoidModel = usableGeoidModel(system, wordFor(system), console);
}

bool ConvertSystems::hasSite(const ConversionSystem &system, const QString &option,
                             Console &console)
{
    if (system.site.hasSite())
        return true;
    console.report(QStringLiteral("cannot use the coordinate system %1: it has no site, neither a "
                                  "planar transformation nor a height fitting, for %2 %3")
                       .arg(system.name, option, QLatin1String(positions::siteFrameName)));
    return false;
}

QString ConvertSystems::wordFor(const ConversionSystem &system) const
{
    return hasTarget() ? system.name : QStringLiteral("the system");
}

} // namespace KelStd::cli
