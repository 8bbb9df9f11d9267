#include <cli/commands/Command.h>

#include <cli/commands/ConvertCommandLine.h>
#include <cli/commands/ConvertInputs.h>
#include <cli/commands/ConvertSystems.h>
#include <cli/conversion/ConvertOptions.h>
#include <cli/conversion/EpochSource.h>
#include <cli/conversion/FrameWords.h>
#include <cli/conversion/LineForm.h>
#include <cli/conversion/LocationForms.h>
#include <cli/conversion/LocationJob.h>
#include <cli/conversion/PlaneUnitChoice.h>
#include <cli/library/DirectoryOption.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/PositionInput.h>
#include <cli/run/PositionRun.h>
#include <cli/run/RecordRun.h>
#include <cli/systems/ConfiguredDisplay.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/values/DisplayOptions.h>
#include <cli/vector/FileOutput.h>
#include <cli/vector/VectorInput.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PrintedColumns.h>
#include <KelStd/text/CoordStringHelper.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace KelStd::cli {

namespace {

/// Whether northing or easting is among the columns that are printed.
bool printsPlane(const positions::LocationPrinter &printer,
                 const positions::ColumnSelection &selection)
{
    const positions::PrintedColumns printed(printer, {}, selection);
    return std::any_of(printed.all().begin(), printed.all().end(), [](const auto &each) {
        return each.component() != nullptr && positions::isPlane(*each.component());
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

/// False with the `mistake` where options do not fit the file that is written.
bool fits(const CommandLine &line, const std::optional<vector::FileOutput> &file, QString &mistake)
{
    if (!file || file->mayLackHeader() || !line.isSet(QStringLiteral("no-header")))
        return true;
    mistake = QStringLiteral("--no-header is for comma-separated values, which are not written");
    return false;
}

/// Sets the frame of a layer; false after a report. Lengths of a layer that states no unit are in
/// that of --length-unit, else in the system's own.
bool takeFrame(vector::VectorInput &layer, const vector::LayerSystem &system,
               const std::optional<positions::PlaneUnit> &planeUnit, ConvertOptions &options,
               Console &console)
{
    vector::LayerUnits units;
    if (options.display.lengthUnit != nullptr) {
        units.others =
            CoordStringHelper::LengthRatio_otherToMeter(options.display.lengthUnit->unit);
        units.plane = units.others;
        units.areGiven = true;
    } else if (planeUnit) {
        units.plane = planeUnit->metres;
    }
    if (options.isFromSite)
        return layer.takeAtSite(units, console);
    const std::optional<positions::Frame> given =
        options.isFrameGiven ? std::optional(options.frame->frame) : std::nullopt;
    const auto frame = layer.frame(system, given, units, console);
    if (frame)
        options.frame = &positions::rowOf(*frame);
    return frame.has_value();
}

/// A conversion, step by step: what it reads is opened before PROJ is loaded, what it writes once
/// the systems are known.
class Conversion
{
public:
    Conversion(const CommandLine &line, Console &console)
        : m_line(line), m_console(console), m_input(PositionInput::Columns::MayBePicked)
    {}

    ExitStatus run()
    {
        for (const auto step :
             {&Conversion::takeOptions, &Conversion::openInput, &Conversion::prepareFile,
              &Conversion::prepareSystems, &Conversion::takeSites, &Conversion::prepareOutput}) {
            if (const auto status = (this->*step)())
                return *status;
        }
        return convert();
    }

private:
    /// Nothing: the next step may follow.
    using Status = std::optional<ExitStatus>;

    Status takeOptions()
    {
        QString reason;
        m_file = vector::FileOutput::from(m_line, reason);
        if (reason.isEmpty()) {
            m_options = convertOptionsOf(m_line, m_file ? m_file->formOption() : QString(), m_input,
                                         m_console, reason);
        }
        if (!m_options || !fits(m_line, m_file, reason))
            return m_line.refuse(reason, m_console);
        return {};
    }

    /// Of a vector file before the system is read, which may load PROJ.
    Status openInput()
    {
        const QStringList operands = m_line.positionals();
        QString reason = mistakeInOperands(operands);
        if (!reason.isEmpty())
            return m_line.refuse(reason, m_console);
        if (isLayer(operands, *m_options)) {
            reason = mistakeForLayer(m_line);
            if (!reason.isEmpty())
                return m_line.refuse(reason, m_console);
            if (!m_layer.emplace().open(operands.value(0), m_line, m_console))
                return ExitStatus::Usage;
            if (m_options->height)
                m_layer->setHeight(*m_options->height);
            return {};
        }
        reason = mistakeForList(m_line, *m_options);
        if (!reason.isEmpty())
            return m_line.refuse(reason, m_console);
        if (!m_input.open(m_line, m_console))
            return ExitStatus::Usage;
        reason = mistakeInInputs(*m_options, m_input);
        return reason.isEmpty() ? Status() : m_line.refuse(reason, m_console);
    }

    Status prepareFile()
    {
        if (!m_file)
            return {};
        if (!m_file->prepare(m_console))
            return ExitStatus::Environment;
        if (m_file->writes(m_options->rejects)) {
            m_console.report(QStringLiteral("cannot write %1: rejected lines go to the same file")
                                 .arg(m_options->rejects));
            return ExitStatus::Usage;
        }
        QStringList read = m_line.positionals();
        read += {m_options->system, m_options->to.value_or(QString()), m_options->rejects};
        return m_file->mayBeWritten(read, m_line, m_console) ? Status() : ExitStatus::Usage;
    }

    Status prepareSystems()
    {
        if (!m_systems.read(m_options->system, m_options->to, m_line, m_console))
            return ExitStatus::Environment;
        m_environment.emplace();
        if (!m_environment->isReady(m_console) || !m_systems.canBeUsed(m_line, m_console))
            return ExitStatus::Environment;
        m_systems.findGeoidModels(m_console);
        m_givenUnit = planeUnitOf(m_systems.given());
        m_printedUnit =
            m_systems.target() != nullptr ? planeUnitOf(m_systems.printed()) : m_givenUnit;
        if (m_layer
            && !takeFrame(*m_layer, layerSystem(given()), m_givenUnit, *m_options, m_console))
            return ExitStatus::Usage;
        return {};
    }

    /// The sites that options ask for must be there.
    Status takeSites()
    {
        const calibration::SiteTransform &site = printed().site;
        positions::ColumnSelection &columns = m_options->columns;
        columns.site = site.hasSurface() ? positions::SiteKind::Heights
                       : site.hasSite()  ? positions::SiteKind::Plane
                                         : positions::SiteKind::None;
        const bool isThere =
            (!m_options->isFromSite
             || ConvertSystems::hasSite(given(), QStringLiteral("--from"), m_console))
            && (!columns.namesSite()
                || ConvertSystems::hasSite(printed(), QStringLiteral("--frames"), m_console));
        return isThere ? Status() : ExitStatus::Environment;
    }

    Status prepareOutput()
    {
        configure(*m_options, m_line, m_console);
        m_options->display.localAxes = printed().coord.ellipsoid.positiveDir;
        noteOnUnits();
        QString reason;
        if (!openRejects(reason)) {
            m_console.report(QStringLiteral("cannot write %1: %2").arg(m_options->rejects, reason));
            return ExitStatus::Environment;
        }
        const int width =
            m_console.isTerminal() ? streams::terminalWidth(streams::standardOutput) : 0;
        const LocationOutput output = {m_options->display,   m_printedUnit,
                                       printed().geoidModel, m_options->hasHeader,
                                       m_options->columns,   width};
        if (!m_file)
            m_writer = m_options->form->makeWriter(output);
        else if (!m_file->open(layerSystem(printed()), output, m_console))
            return ExitStatus::Environment;
        return {};
    }

    ExitStatus convert()
    {
        LocationJob job({given(), m_systems.target(), *m_options->frame, m_options->isFromSite,
                         m_options->columns.factors()},
                        m_file ? m_file->writer() : *m_writer);
        if (m_layer) {
            m_layer->keepSource(m_rejects.isOpen());
            return start(RecordRun(m_layer->records(), job, m_console));
        }
        if (m_options->isNmea)
            return convertEpochs(job);
        const positions::InputForm form = lineForm(*m_options, given(), m_givenUnit);
        m_input.promptFor(componentLabels(form), m_console);
        return start(PositionRun(m_input.inputs(), m_input.parser(form), job, m_console));
    }

    ExitStatus convertEpochs(LocationJob &job)
    {
        m_console.report(QStringLiteral("note: ellipsoidal height = mean-sea-level height + "
                                        "separation, as the receiver gives them"));
        EpochSource source(m_input.inputs(), m_options->epochNames);
        const ExitStatus status = start(RecordRun(source, job, m_console));
        return status == ExitStatus::Success && source.hasLosses() ? ExitStatus::SomeFailed
                                                                   : status;
    }

    template <typename Run>
    ExitStatus start(Run &&run)
    {
        run.setThreads(m_options->threads);
        if (m_rejects.isOpen())
            run.setRejects(m_rejects);
        if (m_file)
            run.setSink(m_file->sink());
        return run.run();
    }

    const ConversionSystem &given() const { return m_systems.given(); }
    const ConversionSystem &printed() const { return m_systems.printed(); }

    static vector::LayerSystem layerSystem(const ConversionSystem &system)
    {
        return {system.coord, system.origin, system.name, system.geoidModel};
    }

    std::optional<positions::PlaneUnit> planeUnitOf(const ConversionSystem &system)
    {
        return cli::planeUnitOf(system.origin, m_systems.wordFor(system), m_options->display,
                                m_console);
    }

    void noteOnUnits()
    {
        const auto output = m_options->form->isConfigured ? positions::ValuePrinter::Output::Table
                                                          : positions::ValuePrinter::Output::Csv;
        const positions::LocationPrinter printer(m_options->display, output, m_printedUnit);
        const bool isRead = !m_layer && m_options->frame->frame == positions::Frame::LocalProjected;
        const bool isPrinted =
            printer.hasOwnPlaneUnit() && printsPlane(printer, m_options->columns);
        const bool isOne = m_systems.target() == nullptr;
        noteOnPlaneUnit(m_givenUnit, m_systems.wordFor(given()), isRead, isOne && isPrinted,
                        m_console);
        if (!isOne)
            noteOnPlaneUnit(m_printedUnit, m_systems.wordFor(printed()), false, isPrinted,
                            m_console);
    }

    /// False with the reason.
    bool openRejects(QString &reason)
    {
        const QString name = m_options->rejects;
        if (name.isEmpty())
            return true;
        QStringList read{m_options->system};
        if (m_options->to)
            read += *m_options->to;
        const QStringList inputs = m_line.positionals();
        const bool isInput =
            std::any_of(inputs.begin(), inputs.end(), [&name](const QString &each) {
                return streams::areSameFile(onDisk(each), onDisk(name));
            });
        const Input none;
        if (!isInput)
            return m_rejects.open(name, m_layer ? none : m_input.input(), read, reason);
        reason = QStringLiteral("it is the input");
        return false;
    }

    const CommandLine &m_line;
    Console &m_console;
    PositionInput m_input;
    std::optional<vector::FileOutput> m_file;
    std::optional<vector::VectorInput> m_layer; ///< where the input is one
    std::optional<ConvertOptions> m_options;
    ConvertSystems m_systems;
    std::optional<ProjEnvironment> m_environment;
    std::optional<positions::PlaneUnit> m_givenUnit;
    std::optional<positions::PlaneUnit> m_printedUnit;
    RejectsFile m_rejects;
    std::unique_ptr<positions::PositionWriter> m_writer; ///< of what is printed
};

} // namespace

ExitStatus runConvert(const QStringList &arguments, Console &console)
{
    constexpr int maxOperands = 1000;
    CommandLine line = convertCommandLine();
    if (const auto status = line.parse(arguments, console, maxOperands))
        return *status;
    return Conversion(line, console).run();
}

} // namespace KelStd::cli
