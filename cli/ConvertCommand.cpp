#include <cli/Command.h>

#include <cli/Columns.h>
#include <cli/CommandLine.h>
#include <cli/ConfiguredDisplay.h>
#include <cli/Console.h>
#include <cli/CsvWriter.h>
#include <cli/DisplayOptions.h>
#include <cli/GeoidModel.h>
#include <cli/PositionRun.h>
#include <cli/ProjEnvironment.h>
#include <cli/StandardStreams.h>
#include <cli/SystemChoice.h>
#include <cli/SystemFile.h>
#include <cli/SystemNotes.h>
#include <cli/TableWriter.h>
#include <cli/ValuePrinter.h>

#include <memory>

namespace KelStd::cli {

namespace {

QString componentLabels(const FrameRow &frame)
{
    QStringList labels;
    for (int i = 0; i < componentsPerFrame; ++i) {
        const Column &column = columnOf(frame.frame, i);
        labels += QStringLiteral("%1 [%2]").arg(QString::fromLatin1(column.label),
                                                QString::fromLatin1(column.quantity->unit));
    }
    return labels.join(QLatin1String(", "));
}

QString frameNames(const QString &separator)
{
    QStringList names;
    for (const FrameRow &row : frames())
        names += QString::fromLatin1(row.option);
    return names.join(separator);
}

QString details()
{
    QString text = systemChoiceHelp();
    text += QStringLiteral(
        "\n\n"
        "INPUT is a file, or - for standard input, which is the default. It holds one\n"
        "position a line, separated by commas, semicolons, tabulators or blanks, after a\n"
        "point name if the first line has one. Blank lines and lines that begin with #\n"
        "are skipped. The order is\n");
    for (const FrameRow &row : frames()) {
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(row.option), -9)
                    .arg(componentLabels(row));
    }
    text += QStringLiteral(
        "unless a first line without numbers names the columns, in any order, such as\n"
        "  point,easting,northing,height     or     name;lat;lon;h\n"
        "Every line has as many fields as the first.\n"
        "\n"
        "Longitudes and latitudes are typed as decimal degrees or as in 52°30′15.5″,\n"
        "52d30'15.5\", 52°30.25', 52:30:15.5, with a sign before the whole angle or N, S,\n"
        "E or W before or behind it. Degree signs are ° º ˚ d, minute signs ′ ' ’, second\n"
        "signs ″ \" ” ''. Where blanks separate the fields, an angle holds none. Lengths\n"
        "are metres. Decimals stand behind a point, whatever the locale, or behind a\n"
        "comma where semicolons or tabulators separate the fields. A line that can be\n"
        "read in two ways is refused.\n"
        "\n"
        "The output has the name and all four frames: WGS84 longitude, latitude, height;\n"
        "WGS84 X, Y, Z; local longitude, latitude, height; northing, easting, height.\n"
        "Heights are ellipsoidal (ell.), but the last one is above the geoid in a system\n"
        "that names a geoid model; the output says which. Where the model cannot be used\n"
        "or has no value for a point, a warning says so, and the height is ellipsoidal.\n"
        "A table has degrees, minutes and seconds with %1 decimals and metres with up to\n"
        "%2; --angle degree has %3 decimals. CSV has plain numbers, degrees with %4\n"
        "decimals and metres with %5, unless --format or --angle is given. Units stand in\n"
        "the headings. A display configuration in the library (\"library/display.bin\" in\n"
        "the home directory) changes units, styles and decimals of a table and of\n"
        "--format configured; options go before it.\n"
        "\n"
        "A line that cannot be read or converted is reported on standard error as\n"
        "INPUT:LINE: reason, and the run goes on. Exit status: 0 all converted, 1 some\n"
        "failed, 2 usage, 3 no PROJ, no usable system, or output that cannot be written.");
    return text.arg(defaultAngleStyle().decimals)
        .arg(stShowConfig().xyPrecision)
        .arg(findAngleStyle(QStringLiteral("degree"))->decimals)
        .arg(csvAngleDecimals)
        .arg(csvLengthDecimals);
}

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
    line.addOption(
        {QStringLiteral("from"),
         QStringLiteral("The frame of the input:\n%1.\nDefault: %2.")
             .arg(frameNames(QStringLiteral(", ")), QString::fromLatin1(frames().front().option)),
         QStringLiteral("FRAME"), QString::fromLatin1(frames().front().option)});
    line.addOption({QStringLiteral("table"),
                    QStringLiteral("Print an aligned table, the default on a terminal.")});
    line.addOption({QStringLiteral("csv"),
                    QStringLiteral("Print comma-separated values, the default\nelsewhere.")});
    DisplayOptions::addTo(line);
    return line;
}

/// The geoid model that the system names, as far as it can be used. Empty when it names none, and
/// after a warning when it names one that is no use.
QString usableGeoidModel(const Coord &coord, Console &console)
{
    const QString name = coord.geoidModel.modelFileName;
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

bool isTable(const CommandLine &line, const Console &console)
{
    return line.isSet(QStringLiteral("table"))
           || (console.isTerminal() && !line.isSet(QStringLiteral("csv")));
}

std::unique_ptr<PositionWriter> makeWriter(const CommandLine &line, const DisplayOptions &display,
                                           const QString &geoidModel, Console &console)
{
    if (!isTable(line, console))
        return std::make_unique<CsvWriter>(console,
                                           ValuePrinter(display, ValuePrinter::Output::Csv));
    const ValuePrinter printer(display, ValuePrinter::Output::Table);
    const int width = console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
    const bool fits = width == 0 || width >= TableWriter::wideWidth(printer, geoidModel);
    return std::make_unique<TableWriter>(
        console, printer, fits ? TableWriter::Layout::Wide : TableWriter::Layout::Narrow,
        geoidModel);
}

class Conversion : public PositionRun
{
public:
    Conversion(const Coord &coord, const QString &geoidModel, const FrameRow &frame,
               LineReader &lines, PositionWriter &writer, Console &console)
        : PositionRun(lines, PositionReader(lines, frame.frame), console), m_coord(coord),
          m_geoidModel(geoidModel), m_frame(frame), m_writer(writer)
    {}

private:
    bool take(const PositionReader &read, QString &reason) override
    {
        Location location;
        bool converted = false;
        const auto makeLocation = [&] {
            converted = m_frame.makeLocation(read.position(), location, nullptr, &m_coord, &reason);
        };
        if (!withoutRaising(makeLocation, reason) || !converted)
            return false;
        // A model that has no value for the point is no failure; its text is all that tells.
        const bool isAboveGeoid = !m_geoidModel.isEmpty() && reason.isEmpty();
        if (!m_geoidModel.isEmpty() && !isAboveGeoid) {
            report(QStringLiteral("warning: the geoid model \"%1\" has no value for the point "
                                  "(%2): its projected height is ellipsoidal")
                       .arg(m_geoidModel, reason));
        }
        begin();
        m_writer.write(read.name(), location, isAboveGeoid ? m_geoidModel : QString());
        return true;
    }

    void printHeading(bool hasNames) override { m_writer.begin(hasNames); }

    const Coord &m_coord;
    const QString &m_geoidModel; ///< the one in use; empty for none
    const FrameRow &m_frame;
    PositionWriter &m_writer;
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
    if (line.isSet(QStringLiteral("table")) && line.isSet(QStringLiteral("csv")))
        return line.refuse(QStringLiteral("--table and --csv exclude each other"), console);
    const QString from = line.value(QStringLiteral("from"));
    const FrameRow *frame = findFrame(from);
    if (frame == nullptr) {
        return line.refuse(QStringLiteral("--from '%1' is no frame; there are %2")
                               .arg(from, frameNames(QStringLiteral(", "))),
                           console);
    }

    QString reason;
    auto display = DisplayOptions::from(line, reason);
    if (!display)
        return line.refuse(reason, console);

    LineReader lines;
    const QString input = line.positionals().value(0, QStringLiteral("-"));
    if (!lines.open(input, reason)) {
        console.report(QStringLiteral("cannot open %1: %2").arg(input, reason));
        return ExitStatus::Usage;
    }

    Coord coord;
    if (!readChosenSystem(systemFile, coord, console))
        return ExitStatus::Environment;
    const ProjEnvironment environment;
    if (!environment.isReady()) {
        console.report(QStringLiteral("PROJ is not ready; 'kelstd doctor' tells why"));
        return ExitStatus::Environment;
    }
    const auto definitions = definitionsOf(coord, reason);
    if (!definitions || !acceptedByProj(*definitions, reason)) {
        console.report(
            QStringLiteral("cannot use the coordinate system %1: %2").arg(systemFile, reason));
        return ExitStatus::Environment;
    }
    for (const QString &note : notesOn(coord))
        console.report(QStringLiteral("note: %1").arg(note));
    if (lines.isTerminal()) {
        console.report(QStringLiteral("type positions, one a line (%1); the end-of-file key ends")
                           .arg(componentLabels(*frame)));
    }

    reason.clear();
    if (isTable(line, console) || display->form == DisplayOptions::Form::Configured)
        display->configured = configuredDisplay(reason);
    if (!reason.isEmpty())
        console.report(reason);
    const QString geoidModel = usableGeoidModel(coord, console);
    const auto writer = makeWriter(line, *display, geoidModel, console);
    return Conversion(coord, geoidModel, *frame, lines, *writer, console).run();
}

} // namespace KelStd::cli
