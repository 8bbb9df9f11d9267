#include <cli/commands/Command.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/library/LibraryDirectory.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/PositionRun.h>
#include <cli/run/SkipOption.h>
#include <cli/systems/ConfiguredDisplay.h>
#include <cli/systems/SystemChoice.h>
#include <cli/systems/SystemFile.h>
#include <cli/systems/SystemNotes.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/values/DisplayOptions.h>
#include <cli/values/OptionWords.h>
#include <cli/values/TableWriter.h>

#include <KelStd/location/LocationBuilder.h>
#include <KelStd/positions/ColumnChoice.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/JsonWriter.h>
#include <KelStd/positions/ValuePrinter.h>

#include <algorithm>
#include <memory>
#include <thread>

namespace KelStd::cli {

namespace {

QString componentLabels(const positions::InputForm &form)
{
    QStringList labels;
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const positions::Column &column = positions::columnOf(form.frame, i);
        const QString unit = positions::isAngle(column) ? QString::fromLatin1(column.unit)
                                                        : unitSymbol(form.lengthUnit);
        labels += QStringLiteral("%1 [%2]").arg(QString::fromLatin1(column.label), unit);
    }
    return labels.join(QLatin1String(", "));
}

/// What the lines of the input hold. Lengths of the plane are in the unit of --length-unit, as they
/// are printed; of the other frames only the output is, whose heights stand beside degrees.
positions::InputForm inputForm(positions::Frame frame, const DisplayOptions &display)
{
    const bool hasUnit = frame == positions::Frame::LocalProjected && display.lengthUnit != nullptr;
    positions::InputForm form(frame, positions::InputHeight::OfFrame,
                              hasUnit ? display.lengthUnit->unit : Unit_Meter);
    form.words = optionWords();
    return form;
}

QString frameNames(const QString &separator)
{
    QStringList names;
    for (const positions::FrameRow &row : positions::frames())
        names += QString::fromLatin1(row.option);
    return names.join(separator);
}

QString details()
{
    QString text = systemChoiceHelp() + QStringLiteral("\n\n") + reviewHelp();
    text += QStringLiteral(
        "\n\n"
        "INPUT is a file, or - for standard input, which is the default. It holds one\n"
        "position a line, separated by commas, semicolons, tabulators or blanks, after a\n"
        "point name if the first line has one. Blank lines and lines that begin with #\n"
        "are skipped. The order is\n");
    for (const positions::FrameRow &row : positions::frames()) {
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(row.option), -9)
                    .arg(componentLabels(row.frame));
    }
    text += QStringLiteral(
        "unless a line of headings before them names the columns, in any order, such as\n"
        "  point,easting,northing,height     or     name;lat;lon;h\n"
        "Headings may stand behind a # and below a title. Further down they may be\n"
        "repeated; others end the run, and so does a first line that is neither headings\n"
        "nor a position: --skip N passes over it. A heading in another unit or of another\n"
        "frame is refused.\n"
        "Every line has as many fields as the first. With --columns the fields may stand\n"
        "anywhere and have any headings that do not say otherwise:\n"
        "  --columns 2,3,4     --columns \"station id,east,north,7\"\n"
        "picks those of the components, in the order above, after that of the point name\n"
        "if there is one. The other fields are carried through, behind the frames.\n"
        "\n"
        "Longitudes and latitudes are typed as decimal degrees or as in "
        "52\u00B030\u203215.5\u2033,\n"
        "52d30'15.5\", 52\u00B030.25', 52:30:15.5, with a sign before the whole angle or N, S,\n"
        "E or W before or behind it. Degree signs are \u00B0 \u00BA \u02DA d, minute signs \u2032 "
        "' \u2019, second\n"
        "signs \u2033 \" \u201D ''. Where blanks separate the fields, an angle holds none. "
        "Lengths\n"
        "are metres; those of local-neh are in the unit of --length-unit. Decimals stand\n"
        "behind a point, whatever the locale, or behind a comma where semicolons or\n"
        "tabulators separate the fields. A line that can be read in two ways is refused.\n"
        "\n"
        "The output has the name and all four frames: WGS84 longitude, latitude, height;\n"
        "WGS84 X, Y, Z; local longitude, latitude, height; northing, easting, height.\n"
        "Heights are ellipsoidal (ell.), but the last one is above the geoid in a system\n"
        "that names a geoid model; the output says which. Where the model cannot be used\n"
        "or has no value for a point, a warning says so, and the height is ellipsoidal.\n"
        "A table has degrees, minutes and seconds with %1 decimals and metres with up to\n"
        "%2; --angle degree has %3 decimals. CSV has plain numbers, degrees with %4\n"
        "decimals and metres with %5, unless --format or --angle is given. Units stand in\n"
        "the headings. A display configuration in the library (its \"display.bin\") changes\n"
        "units, styles and decimals of a table and of --format configured; options go\n"
        "before it. JSON has the names of the CSV's columns, with numbers as they stand\n"
        "there; angles in another style are texts. GeoJSON has WGS84 longitude, latitude\n"
        "and height for coordinates.\n"
        "\n"
        "A line that cannot be read or converted is reported on standard error as\n"
        "INPUT:LINE: reason, and the run goes on. --rejects keeps such lines, below the\n"
        "header if there is one, to be mended and converted again; its FILE appears, in\n"
        "place of an older one, at the end of the run.\n"
        "\n"
        "The input may have any length: it is read, converted on all cores and printed\n"
        "in its order a piece at a time. Where it is a file, the output is no terminal\n"
        "and standard error is one, a bar there shows how far it is. The interrupt key\n"
        "ends the run behind a whole line, which is reported; a second one at once.\n"
        "\n"
        "Exit status: 0 all converted, 1 some failed, 2 usage, 3 no PROJ, no usable\n"
        "system, or output that cannot be written.");
    return text.arg(positions::defaultAngleStyle().decimals)
        .arg(stShowConfig().xyPrecision)
        .arg(findAngleStyle(QStringLiteral("degree"))->decimals)
        .arg(positions::csvAngleDecimals)
        .arg(positions::csvLengthDecimals);
}

/// The forms of output, of which an option picks one.
enum class Output
{
    Table,
    Csv,
    Json,
    GeoJson
};

struct OutputRow
{
    const char *option;
    Output output;
    const char *description;
};

constexpr OutputRow outputs[] = {
    {"table", Output::Table, "Print an aligned table, the default on a terminal."},
    {"csv", Output::Csv, "Print comma-separated values, the default\nelsewhere."},
    {"json", Output::Json, "Print a JSON object a line."},
    {"geojson", Output::GeoJson, "Print a GeoJSON FeatureCollection, a feature a\nline."},
};

CommandLine makeCommandLine()
{
    CommandLine line(QStringLiteral("--system FILE.xml|NAME [OPTIONS] [INPUT]"),
                     QStringLiteral("Converts positions of one frame to all four frames of a "
                                    "system."),
                     details());
    line.addOption({QStringLiteral("system"),
                    QStringLiteral("The coordinate system: its document, or its\n"
                                   "name in the library (see below)."),
                    QStringLiteral("FILE.xml|NAME")});
    addDirectoryOption(line);
    addLenientOption(line);
    line.addOption({QStringLiteral("from"),
                    QStringLiteral("The frame of the input:\n%1.\nDefault: %2.")
                        .arg(frameNames(QStringLiteral(", ")),
                             QString::fromLatin1(positions::frames().front().option)),
                    QStringLiteral("FRAME"),
                    QString::fromLatin1(positions::frames().front().option)});
    line.addOption({QStringLiteral("columns"),
                    QStringLiteral("The columns of longitude, latitude, height (or\n"
                                   "those of the frame, in its order) and, before\n"
                                   "them, of the point name if there is one: headings\n"
                                   "or numbers. The others are carried through."),
                    QStringLiteral("LIST")});
    addSkipOption(line);
    for (const OutputRow &row : outputs)
        line.addOption({QString::fromLatin1(row.option), QString::fromLatin1(row.description)});
    line.addOption({QStringLiteral("no-header"),
                    QStringLiteral("Print comma-separated values without a header\nline.")});
    DisplayOptions::addTo(line);
    line.addOption({QStringLiteral("rejects"),
                    QStringLiteral("Write the lines that fail to FILE, as they stand."),
                    QStringLiteral("FILE")});
    line.addOption({QStringLiteral("threads"),
                    QStringLiteral("On how many threads to convert. Default: one for\n"
                                   "each core."),
                    QStringLiteral("N")});
    return line;
}

/// The geoid model that the system names, as far as it can be used. Empty when it names none, and
/// after a warning when it names one that is no use.
QString usableGeoidModel(const Coord &coord, Console &console)
{
    QString name = coord.geoidModel.modelFileName;
    if (name.isEmpty())
        return {};
    QString reason;
    const auto path = findGeoidModel(name, reason);
    if (path && geoidGridIsReadable(*path, reason))
        return name;
    console.report(QStringLiteral("warning: the geoid model \"%1\" of the system cannot be used: "
                                  "%2. All heights are ellipsoidal.")
                       .arg(name, reason));
    return {};
}

/// Nothing, with the `mistake`, when several are asked for.
std::optional<Output> outputOf(const CommandLine &line, const Console &console, QString &mistake)
{
    const OutputRow *chosen = nullptr;
    for (const OutputRow &row : outputs) {
        if (!line.isSet(QLatin1String(row.option)))
            continue;
        if (chosen != nullptr) {
            mistake = QStringLiteral("--%1 and --%2 exclude each other")
                          .arg(QLatin1String(chosen->option), QLatin1String(row.option));
            return std::nullopt;
        }
        chosen = &row;
    }
    if (chosen != nullptr)
        return chosen->output;
    return console.isTerminal() ? Output::Table : Output::Csv;
}

std::unique_ptr<positions::PositionWriter> makeWriter(Output output, bool hasHeader,
                                                      const DisplayOptions &display,
                                                      const QString &geoidModel,
                                                      const Console &console)
{
    const positions::ValuePrinter printer(display, output == Output::Table
                                                       ? positions::ValuePrinter::Output::Table
                                                       : positions::ValuePrinter::Output::Csv);
    switch (output) {
    case Output::Csv: return std::make_unique<positions::CsvWriter>(printer, hasHeader);
    case Output::Json: return std::make_unique<positions::JsonWriter>(printer);
    case Output::GeoJson: return std::make_unique<positions::GeoJsonWriter>(printer);
    case Output::Table: break;
    }
    const int width = console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
    const bool fits = width == 0 || width >= TableWriter::wideWidth(printer, geoidModel);
    return std::make_unique<TableWriter>(
        printer, fits ? TableWriter::Layout::Wide : TableWriter::Layout::Narrow, geoidModel);
}

/// Threads for a run: as many as --threads says, or as the machine has cores. Nothing, with the
/// `mistake`, for what is no number of threads.
std::optional<std::size_t> threadsOf(const CommandLine &line, QString &mistake)
{
    constexpr unsigned most = 64; // each holds some blocks of lines in memory
    if (!line.isSet(QStringLiteral("threads")))
        return std::clamp(std::thread::hardware_concurrency(), 1U, most);
    const QString text = line.value(QStringLiteral("threads"));
    bool ok = false;
    const unsigned threads = text.toUInt(&ok);
    if (ok && threads >= 1 && threads <= most)
        return threads;
    mistake = QStringLiteral("--threads '%1' is no number from 1 to %2").arg(text).arg(most);
    return std::nullopt;
}

/// Locations of positions, on one thread.
class LocationTaker : public PositionTaker
{
public:
    LocationTaker(const Coord &coord, const QString &geoidModel, LocationBuilder::Frame frame,
                  const positions::PositionWriter &writer)
        : m_builder(coord), m_geoidModel(geoidModel), m_frame(frame), m_writer(writer)
    {
        m_builder.requireOneToOne();
    }

    bool take(const positions::PositionParser &read, QByteArray &bytes, QString &reason) override
    {
        Location location;
        if (!m_builder.make(m_frame, read.position(), location, m_outcome)) {
            reason = m_outcome.reason;
            return false;
        }
        const bool isAboveGeoid = m_outcome.projectedHeight == LocationBuilder::Height::AboveGeoid;
        if (!isAboveGeoid && !m_geoidModel.isEmpty()) {
            reason = QStringLiteral("warning: the geoid model \"%1\" has no value for the point "
                                    "(%2): its projected height is ellipsoidal")
                         .arg(m_geoidModel, m_outcome.reason);
        }
        const QString &model = isAboveGeoid ? m_geoidModel : m_noModel;
        m_writer.write(bytes, {read.name(), location, model, read.carried()});
        return true;
    }

private:
    LocationBuilder m_builder;
    LocationBuilder::Outcome m_outcome;
    const QString &m_geoidModel; ///< the one in use; empty for none
    const QString m_noModel;
    LocationBuilder::Frame m_frame;
    const positions::PositionWriter &m_writer;
};

class Conversion : public PositionJob
{
public:
    Conversion(const Coord &coord, const QString &geoidModel, const positions::FrameRow &frame,
               positions::PositionWriter &writer)
        : m_coord(coord), m_geoidModel(geoidModel), m_frame(frame), m_writer(writer)
    {}

    QByteArray begin(const positions::InputColumns &columns) override
    {
        return m_writer.begin(columns);
    }
    QByteArray separator() const override { return m_writer.separator(); }
    QByteArray ending() const override { return m_writer.ending(); }

    std::unique_ptr<PositionTaker> makeTaker() const override
    {
        return std::make_unique<LocationTaker>(m_coord, m_geoidModel, m_frame.frame, m_writer);
    }

private:
    const Coord &m_coord;
    const QString &m_geoidModel;
    const positions::FrameRow &m_frame;
    positions::PositionWriter &m_writer;
};

} // namespace

ExitStatus runConvert(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString systemFile = line.value(QStringLiteral("system"));
    if (systemFile.isEmpty())
        return line.refuse(QStringLiteral("--system FILE.xml is missing"), console);
    const QString from = line.value(QStringLiteral("from"));
    const positions::FrameRow *frame = positions::findFrame(from);
    if (frame == nullptr) {
        return line.refuse(QStringLiteral("--from '%1' is no frame; there are %2")
                               .arg(from, frameNames(QStringLiteral(", "))),
                           console);
    }

    QString reason;
    const auto output = outputOf(line, console, reason);
    if (!output)
        return line.refuse(reason, console);
    const bool hasHeader = !line.isSet(QStringLiteral("no-header"));
    if (!hasHeader && output != Output::Csv) {
        return line.refuse(QStringLiteral("--no-header is for comma-separated values, which are "
                                          "not printed"),
                           console);
    }
    auto display = DisplayOptions::from(line, reason);
    if (!display)
        return line.refuse(reason, console);
    const auto threads = threadsOf(line, reason);
    if (!threads)
        return line.refuse(reason, console);
    const auto skipped = skippedLines(line, reason);
    if (!skipped)
        return line.refuse(reason, console);
    const positions::InputForm form = inputForm(frame->frame, *display);
    std::optional<positions::ColumnChoice> choice;
    if (line.isSet(QStringLiteral("columns"))) {
        choice = positions::ColumnChoice::from(line.value(QStringLiteral("columns")), reason,
                                               form.words);
        if (!choice)
            return line.refuse(reason, console);
    }

    Input input;
    const QString inputName = line.positionals().value(0, QStringLiteral("-"));
    if (!input.open(inputName, reason)) {
        console.report(QStringLiteral("cannot open %1: %2").arg(inputName, reason));
        return ExitStatus::Usage;
    }

    const auto chosen = readChosenSystem(systemFile, line, console);
    if (!chosen)
        return ExitStatus::Environment;
    const Coord &coord = chosen->coord;
    const ProjEnvironment environment;
    if (!environment.isReady()) {
        console.report(environment.failure());
        return ExitStatus::Environment;
    }
    const auto definitions = definitionsOf(coord, reason);
    // What nothing can be converted with is said alone.
    if (definitions && !mayBeUsed(chosen->review, line, console))
        return ExitStatus::Environment;
    if (!definitions || !acceptedByProj(*definitions, reason)) {
        console.report(
            QStringLiteral("cannot use the coordinate system %1: %2").arg(systemFile, reason));
        return ExitStatus::Environment;
    }
    for (const QString &note : notesOn(coord))
        console.report(QStringLiteral("note: %1").arg(note));
    if (input.isTerminal()) {
        console.report(QStringLiteral("type positions, one a line (%1); the end-of-file key ends")
                           .arg(componentLabels(form)));
    }

    reason.clear();
    if (output == Output::Table || display->form == DisplayOptions::Form::Configured)
        display->configured = configuredDisplay(chosenDirectory(line), reason);
    if (!reason.isEmpty())
        console.report(reason);

    RejectsFile rejects;
    const QString rejectsName = line.value(QStringLiteral("rejects"));
    if (!rejectsName.isEmpty() && !rejects.open(rejectsName, input, systemFile, reason)) {
        console.report(QStringLiteral("cannot write %1: %2").arg(rejectsName, reason));
        return ExitStatus::Environment;
    }
    const QString geoidModel = usableGeoidModel(coord, console);
    const auto writer = makeWriter(*output, hasHeader, *display, geoidModel, console);
    Conversion conversion(coord, geoidModel, *frame, *writer);
    positions::PositionParser parser(form, choice);
    parser.setSkippedLines(*skipped);
    PositionRun run(input, std::move(parser), conversion, console);
    run.setThreads(*threads);
    if (rejects.isOpen())
        run.setRejects(rejects);
    return run.run();
}

} // namespace KelStd::cli
