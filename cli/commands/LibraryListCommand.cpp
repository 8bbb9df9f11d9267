#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryOptions.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>

#include <KelStd/library/LibraryRecord.h>
#include <KelStd/library/RecordFilter.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QVector>

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

QString descriptionOf(RecordKind kind, const QString &name)
{
    return std::visit(Description{}, *library::find(kind, name));
}

/// The names of a kind that have the words.
QStringList namesOf(RecordKind kind, const library::RecordFilter &filter)
{
    QStringList names;
    for (const QString &name : library::namesOf(kind)) {
        if (filter.matches(kind, name))
            names += name;
    }
    return names;
}

/// The beginning of an area's description, which may be a list of thirty countries.
QString shortArea(const QString &area)
{
    constexpr int maxLength = 60;
    if (area.size() <= maxLength)
        return area;
    const auto end = area.lastIndexOf(QLatin1Char(' '), maxLength - 3);
    return area.left(end > 0 ? end : maxLength - 3) + QStringLiteral("...");
}

/// One field for each column: name, code, description, area.
QStringList fieldsOf(RecordKind kind, const QString &name)
{
    const SystemOrigin origin = library::originOf(kind, name);
    return {shown(name), shown(origin.fullCode()), shown(descriptionOf(kind, name)),
            shown(shortArea(origin.areaName))};
}

/// A line without what a terminal of this width would break it for; 0 is any width.
QString fitted(const QString &line, int width)
{
    const QString dots = QStringLiteral("...");
    return width > dots.size() && line.size() > width ? line.left(width - dots.size()) + dots
                                                      : line;
}

/// The records of a kind in columns of their own widths: the ellipsoids' numbers need the room that
/// the names of systems take. A column without a text is left out.
void printTable(const QList<RecordKind> &kinds, const library::RecordFilter &filter,
                Console &console)
{
    int kindWidth = 0;
    for (const RecordKind kind : kinds)
        kindWidth = std::max(kindWidth, static_cast<int>(library::wordOf(kind).size()));
    const QString gap(2, QLatin1Char(' '));
    const int terminalWidth =
        console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
    for (const RecordKind kind : kinds) {
        QList<QStringList> rows;
        QVector<int> widths(4, 0);
        for (const QString &name : namesOf(kind, filter)) {
            rows += fieldsOf(kind, name);
            for (int i = 0; i < widths.size(); ++i)
                widths[i] = std::max(widths[i], static_cast<int>(rows.constLast()[i].size()));
        }
        for (const QStringList &row : rows) {
            QString line = library::wordOf(kind).leftJustified(kindWidth);
            for (int i = 0; i < widths.size(); ++i) {
                if (widths[i] > 0)
                    line += gap + row[i].leftJustified(widths[i]);
            }
            while (line.endsWith(QLatin1Char(' ')))
                line.chop(1);
            console.print(fitted(line, terminalWidth));
        }
    }
}

/// A text, or null where there is none.
QJsonValue orNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

void printJson(const QList<RecordKind> &kinds, const library::RecordFilter &filter,
               Console &console)
{
    for (const RecordKind kind : kinds) {
        for (const QString &name : namesOf(kind, filter)) {
            const SystemOrigin origin = library::originOf(kind, name);
            QJsonObject object = {
                {QStringLiteral("kind"), library::wordOf(kind)},
                {QStringLiteral("name"), name},
                {QStringLiteral("description"), descriptionOf(kind, name)},
                {QStringLiteral("code"), orNull(origin.fullCode())},
                {QStringLiteral("area"), QJsonValue()},
                {QStringLiteral("area_name"), orNull(origin.areaName)},
                {QStringLiteral("countries"), QJsonArray::fromStringList(origin.countries)}};
            if (origin.area) {
                object[QStringLiteral("area")] = QJsonArray{origin.area->west, origin.area->south,
                                                            origin.area->east, origin.area->north};
            }
            console.print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
        }
    }
}

} // namespace

ExitStatus runLibraryList(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] [WORDS...]"),
                     QStringLiteral("Lists what a library holds: of systems the PROJ name of the "
                                    "projection and the\nellipsoid, their code and their area of "
                                    "use; of ellipsoids the semi-major axis\nand the flattening."),
                     QStringLiteral("With WORDS only what has all of them, in any order, in its "
                                    "name, code, area or\ncountries: 'utm 31n', '28992', "
                                    "'schweiz'. Case and accents do not matter, and\nthe "
                                    "beginning of a word will do.\n\n"
                                    "What loading skips is not listed; 'kelstd library check' "
                                    "tells of it."));
    line.setExamples(QStringLiteral("kelstd library list utm 31n"),
                     QStringLiteral("kelstd library list --kind ellipsoids --names"));
    addDirectoryOption(line);
    addKindOption(line);
    line.addOption(
        {QStringLiteral("names"), QStringLiteral("Print nothing but the names, one a line.")});
    line.addOption({QStringLiteral("json"),
                    QStringLiteral("Print a JSON object a line: kind, name, description,\n"
                                   "code, area ([west, south, east, north] in degrees;\n"
                                   "west > east across 180 degrees), area_name and\n"
                                   "countries, or null for what is not known.")});
    constexpr int maxWords = 64;
    if (const auto status = line.parse(arguments, console, maxWords))
        return *status;
    if (line.isSet(QStringLiteral("names")) && line.isSet(QStringLiteral("json")))
        return line.refuse(QStringLiteral("--names and --json exclude each other"), console);
    const library::RecordFilter filter(line.positionals());
    QString mistake;
    const auto kinds = kindsFrom(line, mistake);
    if (kinds.isEmpty())
        return line.refuse(mistake, console);
    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library || !loadRecords(*library, console))
        return ExitStatus::Environment;
    if (line.isSet(QStringLiteral("json"))) {
        printJson(kinds, filter, console);
    } else if (!line.isSet(QStringLiteral("names"))) {
        printTable(kinds, filter, console);
    } else {
        for (const RecordKind kind : kinds) {
            for (const QString &name : namesOf(kind, filter))
                console.print(shown(name));
        }
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
