#include <cli/commands/Command.h>

#include <cli/commands/ConvertCommandLine.h>
#include <cli/commands/ConvertSystems.h>
#include <cli/conversion/ConvertOptions.h>
#include <cli/conversion/FrameWords.h>
#include <cli/conversion/LocationForms.h>
#include <cli/conversion/LocationJob.h>
#include <cli/library/DirectoryOption.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/PositionInput.h>
#include <cli/run/PositionRun.h>
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

/// What the lines of the input hold. Lengths of the plane are in the unit of --length-unit, as they
/// are printed; of the other frames only the output is, whose heights stand beside degrees. Without
/// the option northing and easting are in the `planeUnit` where there is one.
positions::InputForm inputForm(positions::Frame frame, const DisplayOptions &display,
                               const std::optional<positions::PlaneUnit> &planeUnit)
{
    const bool hasUnit = frame == positions::Frame::LocalProjected && display.lengthUnit != nullptr;
    positions::InputForm form(frame, positions::InputHeight::OfFrame,
                              hasUnit ? display.lengthUnit->unit : Unit_Meter);
    form.planeUnit = planeUnit;
    return form;
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

} // namespace

ExitStatus runConvert(const QStringList &arguments, Console &console)
{
    CommandLine line = convertCommandLine();
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    PositionInput input(PositionInput::Columns::MayBePicked);
    QString reason;
    auto options = convertOptionsOf(line, input, console, reason);
    if (!options)
        return line.refuse(reason, console);
    if (!input.open(line, console))
        return ExitStatus::Usage;

    ConvertSystems systems;
    if (!systems.read(options->system, options->to, line, console))
        return ExitStatus::Environment;
    const ProjEnvironment environment;
    if (!environment.isReady()) {
        console.report(environment.failure());
        return ExitStatus::Environment;
    }
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
    const positions::InputForm form = inputForm(options->frame->frame, options->display, givenUnit);
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
    const int width = console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
    const auto writer =
        options->form->makeWriter({options->display, printedUnit, printed.geoidModel,
                                   options->hasHeader, options->columns, width});
    LocationJob job({given, systems.target(), *options->frame, options->columns.factors()},
                    *writer);
    PositionRun run(input.input(), input.parser(form), job, console);
    run.setThreads(options->threads);
    if (rejects.isOpen())
        run.setRejects(rejects);
    return run.run();
}

} // namespace KelStd::cli
