#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryOptions.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/LibraryRecord.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/text/CoordStringHelper.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

QString numberOf(double value)
{
    constexpr int allDecimals = 17;
    return tk::Toolkits::DoubleToString(value, allDecimals);
}

/// What tells one record from another, in a few words.
struct Description
{
    QString operator()(const Coord &coord) const
    {
        QStringList parts;
        for (const QString &part :
             {coord.projection.proj4Projection, coord.ellipsoid.ellipsoid_name}) {
            if (!part.trimmed().isEmpty())
                parts += part;
        }
        return parts.join(QLatin1String(", "));
    }
    QString operator()(const Ellipsoid &ellipsoid) const
    {
        return QStringLiteral("%1 %2, 1/%3")
            .arg(numberOf(ellipsoid.biggerHalfAxle.value.toDouble()),
                 CoordStringHelper::Unit_to_String(ellipsoid.biggerHalfAxle.unit),
                 numberOf(ellipsoid.reciprocal));
    }
    QString operator()(const Projection &projection) const { return projection.proj4Projection; }
};

/// The names of each kind in a column of their own width: the ellipsoids' numbers need the room
/// that the names of systems take.
void printTable(const QList<RecordKind> &kinds, Console &console)
{
    int kindWidth = 0;
    for (const RecordKind kind : kinds)
        kindWidth = std::max(kindWidth, library::wordOf(kind).size());
    const QString gap(2, QLatin1Char(' '));
    for (const RecordKind kind : kinds) {
        const QStringList names = library::namesOf(kind);
        int nameWidth = 0;
        for (const QString &name : names)
            nameWidth = std::max(nameWidth, shown(name).size());
        for (const QString &name : names) {
            QString line = library::wordOf(kind).leftJustified(kindWidth) + gap
                           + shown(name).leftJustified(nameWidth) + gap
                           + shown(std::visit(Description{}, *library::find(kind, name)));
            while (line.endsWith(QLatin1Char(' ')))
                line.chop(1);
            console.print(line);
        }
    }
}

} // namespace

ExitStatus runLibraryList(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS]"),
                     QStringLiteral("Lists what a library holds: of systems the PROJ name of the "
                                    "projection and the\nellipsoid, of ellipsoids the semi-major "
                                    "axis and the flattening."),
                     QStringLiteral("What loading skips is not listed; 'kelstd library check' "
                                    "tells of it."));
    addDirectoryOption(line);
    addKindOption(line);
    line.addOption(
        {QStringLiteral("names"), QStringLiteral("Print nothing but the names, one a line.")});
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    QString mistake;
    const auto kinds = kindsFrom(line, mistake);
    if (kinds.isEmpty())
        return line.refuse(mistake, console);
    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library || !loadRecords(*library, console))
        return ExitStatus::Environment;
    if (!line.isSet(QStringLiteral("names"))) {
        printTable(kinds, console);
        return ExitStatus::Success;
    }
    for (const RecordKind kind : kinds) {
        for (const QString &name : library::namesOf(kind))
            console.print(shown(name));
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
