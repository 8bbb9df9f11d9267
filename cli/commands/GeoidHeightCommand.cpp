#include <cli/commands/Command.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/PositionRun.h>
#include <cli/run/SkipOption.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/values/OptionWords.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/PlainNumbers.h>

namespace KelStd::cli {

namespace {

/// A point with both of its heights [deg, m].
struct GeoidPoint
{
    double longitude;
    double latitude;
    double ellipsoidal;
    double separation; ///< of the geoid above the ellipsoid
    double aboveGeoid;
};

/// A column of the output, in both of its forms.
struct GeoidColumn
{
    const char *heading;
    const char *unit;
    const char *csvName;
    int width; ///< of the table
    int tableDecimals;
    int csvDecimals;
    double GeoidPoint::*value;
};

constexpr GeoidColumn geoidColumns[] = {
    {"longitude", "deg", "wgs84_longitude_deg", 14, 9, 11, &GeoidPoint::longitude},
    {"latitude", "deg", "wgs84_latitude_deg", 13, 9, 11, &GeoidPoint::latitude},
    {"height", "m (ell.)", "wgs84_height_m", 11, 4, 5, &GeoidPoint::ellipsoidal},
    {"separation", "m", "geoid_separation_m", 10, 4, 5, &GeoidPoint::separation},
    {"height", "m (geoid)", "height_above_geoid_m", 11, 4, 5, &GeoidPoint::aboveGeoid},
};

/// Prints the points as comma-separated values or as a table.
class PointWriter
{
public:
    explicit PointWriter(bool isTable) : m_isTable(isTable) {}

    QByteArray begin(bool hasNames)
    {
        m_hasNames = hasNames;
        if (!m_isTable) {
            QByteArray names = "point";
            for (const GeoidColumn &column : geoidColumns)
                names += ',' + QByteArray(column.csvName);
            return names + '\n';
        }
        QByteArray headings = nameCell("point");
        QByteArray units = nameCell({});
        for (const GeoidColumn &column : geoidColumns) {
            headings += cell(column.heading, column);
            units += cell(column.unit, column);
        }
        return headings + '\n' + units + '\n';
    }

    void write(QByteArray &bytes, std::string_view name, const GeoidPoint &point) const
    {
        if (!m_isTable) {
            positions::appendCsvField(bytes, name);
            for (const GeoidColumn &column : geoidColumns) {
                bytes += ',';
                positions::appendNumber(bytes, point.*column.value, column.csvDecimals);
            }
            bytes += '\n';
            return;
        }
        // A name that is too long stands in a line of its own, so that the numbers stay in theirs.
        const QString shown = QString::fromUtf8(name.data(), static_cast<int>(name.size()));
        const bool isLong = m_hasNames && shown.size() > nameWidth;
        if (isLong)
            bytes += shown.toUtf8() + '\n';
        bytes += nameCell(isLong ? QString() : shown);
        for (const GeoidColumn &column : geoidColumns)
            bytes += cell(positions::numberText(point.*column.value, column.tableDecimals), column);
        bytes += '\n';
    }

private:
    static constexpr int nameWidth = 10;

    QByteArray nameCell(const QString &name) const
    {
        return m_hasNames ? name.leftJustified(nameWidth).toUtf8() : QByteArray();
    }
    static QByteArray cell(const QString &text, const GeoidColumn &column)
    {
        return "  " + text.rightJustified(column.width).toUtf8();
    }

    bool m_isTable;
    bool m_hasNames = false;
};

class SeparationTaker : public PositionTaker
{
public:
    SeparationTaker(const QString &gridFile, bool inverse, const PointWriter &writer)
        : m_gridFile(gridFile), m_inverse(inverse), m_writer(writer)
    {}

    bool take(const positions::PositionParser &read, QByteArray &bytes, QString &reason) override
    {
        const stLongLatH &in = read.position().getLongLatH();
        const auto calculate =
            m_inverse ? &ProjLib::Calc_geoid_diff_inverse : &ProjLib::Calc_geoid_diff;
        double diff = 0.0;
        if (!calculate(in.latitude, in.longitude, in.height, m_gridFile, diff, &reason))
            return false;
        const double other = in.height + diff;
        m_writer.write(bytes, read.name(),
                       m_inverse ? GeoidPoint{in.longitude, in.latitude, other, diff, in.height}
                                 : GeoidPoint{in.longitude, in.latitude, in.height, -diff, other});
        return true;
    }

private:
    const QString &m_gridFile;
    bool m_inverse;
    const PointWriter &m_writer;
};

class Separations : public PositionJob
{
public:
    Separations(const QString &gridFile, bool inverse, bool isTable)
        : m_gridFile(gridFile), m_inverse(inverse), m_writer(isTable)
    {}

    QByteArray begin(const positions::InputColumns &columns) override
    {
        return m_writer.begin(columns.hasNames);
    }

    std::unique_ptr<PositionTaker> makeTaker() const override
    {
        return std::make_unique<SeparationTaker>(m_gridFile, m_inverse, m_writer);
    }

private:
    QString m_gridFile;
    bool m_inverse;
    PointWriter m_writer;
};

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--model NAME|FILE [OPTIONS] [INPUT]"),
        QStringLiteral("Gives WGS84 positions the height above the geoid."),
        QStringLiteral(
            "INPUT is a file, or - for standard input, which is the default. It holds one\n"
            "position a line: longitude [deg], latitude [deg], height [m], after a point\n"
            "name if there is one, as 'kelstd convert' reads them; a line of headings\n"
            "before them, also behind a #, names the columns.\n"
            "\n"
            "The separation is how far the geoid lies above the ellipsoid:\n"
            "  height above the geoid = ellipsoidal height - separation\n"
            "The output has both heights, whichever was given.\n"
            "\n"
            "A model's name goes before a file's; ./FILE is always a file. FILE is a GTX\n"
            "grid, a GGF grid (converted for the run), or what else PROJ reads.\n"
            "\n"
            "A line that cannot be read, and a point outside the model's grid, is reported\n"
            "on standard error as INPUT:LINE: reason, and the run goes on. Exit status: 0\n"
            "all done, 1 some failed, 2 usage, 3 no PROJ, no usable model, or output that\n"
            "cannot be written."));
    line.addOption({QStringLiteral("model"),
                    QStringLiteral("The geoid model: a name that 'kelstd geoid list' lists,\n"
                                   "or a file."),
                    QStringLiteral("NAME|FILE")});
    line.addOption({QStringLiteral("inverse"),
                    QStringLiteral("The input's heights are above the geoid; wanted are the\n"
                                   "ellipsoidal ones.")});
    addSkipOption(line);
    line.addOption({QStringLiteral("table"),
                    QStringLiteral("Print an aligned table, the default on a terminal.")});
    line.addOption({QStringLiteral("csv"),
                    QStringLiteral("Print comma-separated values, the default otherwise.")});
    return line;
}

} // namespace

ExitStatus runGeoidHeight(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString model = line.value(QStringLiteral("model"));
    if (model.isEmpty())
        return line.refuse(QStringLiteral("--model NAME|FILE is missing"), console);
    const bool asksForTable = line.isSet(QStringLiteral("table"));
    const bool asksForCsv = line.isSet(QStringLiteral("csv"));
    if (asksForTable && asksForCsv)
        return line.refuse(QStringLiteral("--table and --csv exclude each other"), console);
    QString reason;
    const auto skipped = skippedLines(line, reason);
    if (!skipped)
        return line.refuse(reason, console);

    Input input;
    const QString inputName = line.positionals().value(0, QStringLiteral("-"));
    if (!input.open(inputName, reason)) {
        console.report(QStringLiteral("cannot open %1: %2").arg(inputName, reason));
        return ExitStatus::Usage;
    }
    const ProjEnvironment environment;
    if (!environment.isReady()) {
        console.report(environment.failure());
        return ExitStatus::Environment;
    }
    ChosenGrid grid;
    if (!grid.choose(model, reason) || !geoidGridIsReadable(grid.path(), reason)) {
        console.report(QStringLiteral("cannot use the geoid model %1: %2").arg(model, reason));
        return ExitStatus::Environment;
    }
    const bool inverse = line.isSet(QStringLiteral("inverse"));
    if (input.isTerminal()) {
        console.report(
            QStringLiteral("type positions, one a line (longitude [deg], latitude [deg], height "
                           "above the %1 [m]); the end-of-file key ends")
                .arg(inverse ? QStringLiteral("geoid") : QStringLiteral("ellipsoid")));
    }
    Separations separations(grid.path(), inverse,
                            asksForTable || (console.isTerminal() && !asksForCsv));
    positions::InputForm form(positions::Frame::Wgs84Geographic,
                              inverse ? positions::InputHeight::AboveGeoid
                                      : positions::InputHeight::AboveEllipsoid);
    form.words = optionWords();
    positions::PositionParser parser(form);
    parser.setSkippedLines(*skipped);
    // On one thread: these separations are calculated in the working directory.
    return PositionRun(input, parser, separations, console).run();
}

} // namespace KelStd::cli
