#include <cli/commands/Command.h>

#include <cli/geoids/GeoidModel.h>
#include <cli/geoids/SeparationJob.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/run/OutputForm.h>
#include <cli/run/PositionInput.h>
#include <cli/run/PositionRun.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

namespace KelStd::cli {

namespace {

const OutputForms forms = {
    {"table", "Print an aligned table, the default on a terminal."},
    {"csv", "Print comma-separated values, the default otherwise."},
};
constexpr std::size_t table = 0;

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
    line.setExamples(
        QStringLiteral("kelstd geoid height --model egm96_15.gtx points.csv"),
        QStringLiteral("kelstd geoid height --model egm96_15.gtx --inverse --csv points.csv"));
    line.addOption({QStringLiteral("model"),
                    QStringLiteral("The geoid model: a name that 'kelstd geoid list' lists,\n"
                                   "or a file."),
                    QStringLiteral("NAME|FILE")},
                   geoidModelValues(Values::Files::All));
    line.addOption({QStringLiteral("inverse"),
                    QStringLiteral("The input's heights are above the geoid; wanted are the\n"
                                   "ellipsoidal ones.")});
    PositionInput::addSkipOption(line);
    addFormOptions(line, forms);
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
    PositionInput input(PositionInput::Columns::AsHeaded);
    QString reason;
    const auto form = chosenForm(line, forms, console, reason);
    if (!form || !input.takeOptions(line, reason))
        return line.refuse(reason, console);
    if (!input.open(line, console))
        return ExitStatus::Usage;
    const ProjEnvironment environment;
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    ChosenGrid grid;
    if (!grid.choose(model, reason) || !geoidGridIsReadable(grid.path(), reason)) {
        console.report(QStringLiteral("cannot use the geoid model %1: %2").arg(model, reason));
        return ExitStatus::Environment;
    }
    const bool inverse = line.isSet(QStringLiteral("inverse"));
    input.promptFor(QStringLiteral("longitude [deg], latitude [deg], height above the %1 [m]")
                        .arg(inverse ? QStringLiteral("geoid") : QStringLiteral("ellipsoid")),
                    console);
    SeparationJob job(grid.path(), inverse, *form == table);
    const positions::InputForm lines(positions::Frame::Wgs84Geographic,
                                     inverse ? positions::InputHeight::AboveGeoid
                                             : positions::InputHeight::AboveEllipsoid);
    return PositionRun({&input.input()}, input.parser(lines), job, console).run();
}

} // namespace KelStd::cli
