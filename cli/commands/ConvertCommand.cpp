#include <cli/commands/Command.h>

#include <cli/commands/ConvertCommandLine.h>
#include <cli/commands/ConvertSystems.h>
#include <cli/conversion/ConvertOptions.h>
#include <cli/conversion/EpochSource.h>
#include <cli/conversion/FrameWords.h>
#include <cli/conversion/LocationForms.h>
#include <cli/conversion/LocationJob.h>
#include <cli/library/DirectoryOption.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/PositionInput.h>
#include <cli/run/PositionRun.h>
#include <cli/run/RecordRun.h>
#include <cli/systems/ConfiguredDisplay.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/values/DisplayOptions.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PrintedColumns.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace KelStd::cli {

namespace {

/// What the lines of the input hold, where their headings do not say another unit: lengths in the
/// unit of --length-unit, as they are printed. Without the option northing and easting are in the
/// `planeUnit` where there is one.
positions::InputForm inputForm(positions::Frame frame, const DisplayOptions &display,
                               const std::optional<positions::PlaneUnit> &planeUnit)
{
    const bool hasUnit = display.lengthUnit != nullptr;
    positions::InputForm form(frame, positions::InputHeight::OfFrame,
                              hasUnit ? display.lengthUnit->unit : Unit_Meter);
    form.hasLengthUnit = hasUnit;
    form.planeUnit = planeUnit;
    return form;
}

/// The height of positions without one: that of --height, or 0. Above what it is taken is always
/// said of the latter, and of the former where there are two kinds of heights.
positions::MissingHeight missingHeight(const ConvertOptions &options, const QString &geoidModel)
{
    const bool isProjected = options.frame->frame == positions::Frame::LocalProjected;
    positions::MissingHeight height;
    height.isGiven = options.height.has_value();
    height.metres = options.height.value_or(0.0);
    if (!height.isGiven || !geoidModel.isEmpty()) {
        height.above = QStringLiteral("the ")
                       + positions::heightReference(isProjected ? geoidModel : QString());
    }
    return height;
}

/// The unit of northing and easting that is the system's own, unless --length-unit overrules it.
/// Nothing for metres, and after a note for a unit that the program does not have. `system`: what
/// messages call it.
std::optional<positions::PlaneUnit> planeUnitOf(const SystemOrigin &origin, const QString &system,
                                                const DisplayOptions &display, Console &console)
{
    constexpr double tolerance = 1e-9;
    if (!origin.planeUnit || display.lengthUnit != nullptr
        || std::abs(origin.planeUnit->metres - 1.0) <= tolerance)
        return std::nullopt;
    const auto unit = positions::findPlaneUnit(*origin.planeUnit);
    if (!unit) {
        console.report(QStringLiteral("note: plane coordinates of %1 are customarily in a "
                                      "unit of %2 m (%3); here they are in metres")
                           .arg(system, QString::number(origin.planeUnit->metres, 'g', 15),
                                shown(origin.planeUnit->name)));
    }
    return unit;
}

/// Says in which unit northing and easting are, where it is not that of the other lengths.
void noteOnPlaneUnit(const std::optional<positions::PlaneUnit> &unit, const QString &system,
                     bool isRead, bool isPrinted, Console &console)
{
    if (!unit || !(isRead || isPrinted))
        return;
    console.report(QStringLiteral("note: northing and easting are %1 in %2, the unit of "
                                  "%3, all other lengths in m; --length-unit overrules that")
                       .arg(isRead && isPrinted ? QStringLiteral("read and printed")
                            : isRead            ? QStringLiteral("read")
                                                : QStringLiteral("printed"),
                            unit->symbol, system));
}

/// Whether northing or easting is among the columns that are printed.
bool printsPlane(const positions::LocationPrinter &printer,
                 const positions::ColumnSelection &selection)
{
    const positions::PrintedColumns printed(printer, {}, selection);
    return std::any_of(printed.all().begin(), printed.all().end(), [](const auto &each) {
        return each.kind == positions::PrintedColumn::Kind::Component
               && positions::isPlane(positions::columns()[each.index]);
    });
}

/// Takes the display configuration of the library where the output starts from it.
void configure(ConvertOptions &options, const CommandLine &line, Console &console)
{
    if (!options.form->isConfigured && options.display.form != DisplayOptions::Form::Configured)
        return;
    QString reason;
    options.display.configured = configuredDisplay(chosenDirectory(line), reason);
    if (!reason.isEmpty())
        console.report(reason);
}

/// Converts what a receiver says.
ExitStatus convertEpochs(Input &input, const ConvertOptions &options, LocationJob &job,
                         RejectsFile &rejects, Console &console)
{
    console.report(QStringLiteral("note: ellipsoidal height = mean-sea-level height + separation, "
                                  "as the receiver gives them"));
    EpochSource source(input, options.epochNames);
    RecordRun run(source, job, console);
    run.setThreads(options.threads);
    if (rejects.isOpen())
        run.setRejects(rejects);
    const ExitStatus status = run.run();
    return status == ExitStatus::Success && source.hasLosses() ? ExitStatus::SomeFailed : status;
}

} // namespace

ExitStatus runConvert(const QStringList &arguments, Console &console)
{
    constexpr int maxOperands = 1000;
    CommandLine line = convertCommandLine();
    if (const auto status = line.parse(arguments, console, maxOperands))
        return *status;
    PositionInput input(PositionInput::Columns::MayBePicked);
    QString reason;
    auto options = convertOptionsOf(line, input, console, reason);
    if (!options)
        return line.refuse(reason, console);
    if (!input.open(line, console))
        return ExitStatus::Usage;
    if (options->isNmea && input.inputs().size() > 1)
        return line.refuse(QStringLiteral("--nmea takes one input"), console);
    if (!options->rejects.isEmpty() && input.inputs().size() > 1) {
        return line.refuse(QStringLiteral("--rejects is for one input: lines of several have "
                                          "several orders"),
                           console);
    }

    ConvertSystems systems;
    if (!systems.read(options->system, options->to, line, console))
        return ExitStatus::Environment;
    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    if (!systems.canBeUsed(line, console))
        return ExitStatus::Environment;
    const ConversionSystem &given = systems.given();
    const ConversionSystem &printed = systems.printed();
    const bool readsPlane = options->frame->frame == positions::Frame::LocalProjected;
    const auto givenUnit =
        planeUnitOf(given.origin, systems.wordFor(given), options->display, console);
    const auto printedUnit =
        systems.target() != nullptr
            ? planeUnitOf(printed.origin, systems.wordFor(printed), options->display, console)
            : givenUnit;
    positions::InputForm form = inputForm(options->frame->frame, options->display, givenUnit);
    configure(*options, line, console);
    const auto output = options->form->isConfigured ? positions::ValuePrinter::Output::Table
                                                    : positions::ValuePrinter::Output::Csv;
    const positions::LocationPrinter printer(options->display, output, printedUnit);
    const bool printsUnit = printer.hasOwnPlaneUnit() && printsPlane(printer, options->columns);
    if (systems.target() == nullptr) {
        noteOnPlaneUnit(givenUnit, systems.wordFor(given), readsPlane, printsUnit, console);
    } else {
        noteOnPlaneUnit(givenUnit, systems.wordFor(given), readsPlane, false, console);
        noteOnPlaneUnit(printedUnit, systems.wordFor(printed), false, printsUnit, console);
    }
    if (!options->isNmea)
        input.promptFor(componentLabels(form), console);

    RejectsFile rejects;
    QStringList systemFiles{options->system};
    if (options->to)
        systemFiles += *options->to;
    if (!options->rejects.isEmpty()
        && !rejects.open(options->rejects, input.input(), systemFiles, reason)) {
        console.report(QStringLiteral("cannot write %1: %2").arg(options->rejects, reason));
        return ExitStatus::Environment;
    }
    systems.findGeoidModels(console);
    form.missingHeight = missingHeight(*options, given.geoidModel);
    const int width = console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
    const auto writer =
        options->form->makeWriter({options->display, printedUnit, printed.geoidModel,
                                   options->hasHeader, options->columns, width});
    LocationJob job({given, systems.target(), *options->frame, options->columns.factors()},
                    *writer);
    if (options->isNmea)
        return convertEpochs(input.input(), *options, job, rejects, console);
    PositionRun run(input.inputs(), input.parser(form), job, console);
    run.setThreads(options->threads);
    if (rejects.isOpen())
        run.setRejects(rejects);
    return run.run();
}

} // namespace KelStd::cli
