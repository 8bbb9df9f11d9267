#include <cli/commands/Command.h>

#include <cli/commands/ConvertCommandLine.h>
#include <cli/conversion/ConvertOptions.h>
#include <cli/conversion/FrameWords.h>
#include <cli/conversion/LocationForms.h>
#include <cli/conversion/LocationJob.h>
#include <cli/geoids/GeoidModel.h>
#include <cli/library/DirectoryOption.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/PositionInput.h>
#include <cli/run/PositionRun.h>
#include <cli/systems/ConfiguredDisplay.h>
#include <cli/systems/SystemChoice.h>
#include <cli/systems/SystemFile.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/values/DisplayOptions.h>

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/location/SystemNotes.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/positions/LocationPrinter.h>

#include <cmath>
#include <optional>

namespace KelStd::cli {

namespace {

/// What the lines of the input hold. Lengths of the plane are in the unit of --length-unit, as they
/// are printed; of the other frames only the output is, whose heights stand beside degrees. Without
/// the option northing and easting are in the `planeUnit` where there is one.
positions::InputForm inputForm(const ConvertOptions &options,
                               const std::optional<positions::PlaneUnit> &planeUnit)
{
    const positions::Frame frame = options.frame->frame;
    const LengthUnit *const unit = options.display.lengthUnit;
    positions::InputForm form(
        frame, positions::InputHeight::OfFrame,
        frame == positions::Frame::LocalProjected && unit != nullptr ? unit->unit : Unit_Meter);
    form.isAtSite = options.isFromSite;
    form.planeUnit = planeUnit;
    return form;
}

/// The unit of northing and easting that is the system's own, unless --length-unit overrules it.
/// Nothing for metres, and after a note for a unit that the program does not have.
std::optional<positions::PlaneUnit> planeUnitOf(const SystemOrigin &origin,
                                                const DisplayOptions &display, Console &console)
{
    constexpr double tolerance = 1e-9;
    if (!origin.planeUnit || display.lengthUnit != nullptr
        || std::abs(origin.planeUnit->metres - 1.0) <= tolerance)
        return std::nullopt;
    const auto unit = positions::findPlaneUnit(*origin.planeUnit);
    if (!unit) {
        console.report(QStringLiteral("note: plane coordinates of the system are customarily in a "
                                      "unit of %1 m (%2); here they are in metres")
                           .arg(origin.planeUnit->metres, 0, 'g', 15)
                           .arg(shown(origin.planeUnit->name)));
    }
    return unit;
}

/// Says in which unit northing and easting are, where it is not that of the other lengths.
void noteOnPlaneUnit(const std::optional<positions::PlaneUnit> &unit, bool isRead, bool isPrinted,
                     Console &console)
{
    if (!unit || !(isRead || isPrinted))
        return;
    console.report(QStringLiteral("note: northing and easting are %1 in %2, the unit of the "
                                  "system, all other lengths in m; --length-unit overrules that")
                       .arg(isRead && isPrinted ? QStringLiteral("read and printed")
                            : isRead            ? QStringLiteral("read")
                                                : QStringLiteral("printed"),
                            unit->symbol));
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

/// The site of the system; nothing after a report where its records cannot be applied, or there
/// are none for positions at the site.
std::optional<calibration::SiteTransform> siteOf(const Coord &coord, const ConvertOptions &options,
                                                 Console &console)
{
    calibration::SiteFailure failure;
    auto site = calibration::SiteTransform::of(coord, &failure);
    if (site && !site->hasSite() && options.isFromSite) {
        site.reset();
        failure.text = QStringLiteral("it has no site, neither a planar transformation nor a "
                                      "height fitting, and --from %1 reads positions of one")
                           .arg(QLatin1String(positions::siteFrameName));
    }
    if (!site) {
        console.report(QStringLiteral("cannot use the coordinate system %1: %2")
                           .arg(options.system, failure.text));
    }
    return site;
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

    const auto system = readChosenSystem(options->system, line, console);
    if (!system)
        return ExitStatus::Environment;
    const Coord &coord = system->coord;
    const ProjEnvironment environment;
    if (!environment.isReady()) {
        console.report(environment.failure());
        return ExitStatus::Environment;
    }
    if (!canBeUsed(*system, options->system, line, console))
        return ExitStatus::Environment;
    const auto site = siteOf(coord, *options, console);
    if (!site)
        return ExitStatus::Environment;
    for (const QString &note : location::notesOn(coord))
        console.report(QStringLiteral("note: %1").arg(note));
    const auto planeUnit = planeUnitOf(system->origin, options->display, console);
    const positions::InputForm form = inputForm(*options, planeUnit);
    configure(*options, line, console);
    const auto output = options->form->isConfigured ? positions::ValuePrinter::Output::Table
                                                    : positions::ValuePrinter::Output::Csv;
    const positions::LocationPrinter printer(options->display, output, planeUnit);
    noteOnPlaneUnit(planeUnit, options->frame->frame == positions::Frame::LocalProjected,
                    printer.hasOwnPlaneUnit(), console);
    input.promptFor(componentLabels(form), console);

    RejectsFile rejects;
    if (!options->rejects.isEmpty()
        && !rejects.open(options->rejects, input.input(), options->system, reason)) {
        console.report(QStringLiteral("cannot write %1: %2").arg(options->rejects, reason));
        return ExitStatus::Environment;
    }
    const QString geoidModel = usableGeoidModel(coord, console);
    const int width = console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
    const auto writer = options->form->makeWriter(
        {options->display, planeUnit, geoidModel, options->hasHeader, width});
    const auto siteColumns =
        site->hasSite() ? std::make_optional<SiteColumns>(printer) : std::nullopt;
    LocationJob job(coord, system->origin, geoidModel, form, siteColumns, *writer);
    PositionRun run(input.input(), input.parser(form), job, console);
    run.setThreads(options->threads);
    if (rejects.isOpen())
        run.setRejects(rejects);
    return run.run();
}

} // namespace KelStd::cli
