#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/site/SiteInput.h>
#include <cli/site/SiteText.h>
#include <cli/systems/RecordReview.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/calibration/FitJson.h>

namespace KelStd::cli {

namespace {

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--system SITE --points FILE [OPTIONS]"),
        QStringLiteral("Holds independent points against a site; nothing is fitted."),
        pointsHelp()
            + QStringLiteral("\n\n"
                             "Printed are the differences, site coordinates by the system less "
                             "those given.\n\n")
            + reviewHelp()
            + QStringLiteral("\n\nExit status: 0 checked, 1 a line or the points are refused, 2 "
                             "usage or headings\nthat are not understood, 3 no PROJ, no usable "
                             "system."));
    line.setExamples(
        QStringLiteral("kelstd site check --system hospital.xml --points control.csv"),
        QStringLiteral("kelstd site check --system hospital.xml --points control.csv --json"));
    addSiteInputOptions(line, QStringLiteral("points"), QStringLiteral("The points."));
    line.addOption({QStringLiteral("json"), QStringLiteral("Print an object of JSON, with all\n"
                                                           "digits.")});
    addDirectoryOption(line);
    addLenientOption(line);
    return line;
}

} // namespace

ExitStatus runSiteCheck(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    SiteInput input(QStringLiteral("points"));
    if (const auto status = input.takeOptions(line, console))
        return *status;
    if (const auto status = input.readSystem(line, console))
        return *status;
    ControlPoints points;
    if (const auto status = input.readPoints(points, console))
        return *status;

    calibration::CalibrationFailure failure;
    const auto check = calibration::checkSite(input.system().coord, points, &failure);
    if (!check) {
        console.report(QStringLiteral("nothing is checked: %1").arg(shown(failure.text)));
        return ExitStatus::SomeFailed;
    }
    if (!check->hasSite) {
        console.report(
            QStringLiteral("warning: %1 has no site, neither a planar transformation nor "
                           "a height fitting: the points are held against its own plane")
                .arg(shown(input.names().constFirst())));
    }
    if (line.isSet(QStringLiteral("json")))
        console.write(jsonLine(*check));
    else
        printText(*check, console);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
