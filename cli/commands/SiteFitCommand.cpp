#include <cli/commands/Command.h>

#include <cli/catalogue/SystemTarget.h>
#include <cli/site/ReportTarget.h>
#include <cli/site/SiteInput.h>
#include <cli/site/SiteText.h>
#include <cli/systems/RecordReview.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/calibration/FitJson.h>
#include <KelStd/calibration/SiteReport.h>
#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/library/LibraryRecord.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QDate>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString horizontalOption = QStringLiteral("horizontal");
const QString verticalOption = QStringLiteral("vertical");
const QString sigmaHOption = QStringLiteral("sigma-h");
const QString sigmaVOption = QStringLiteral("sigma-v");
const QString withoutOption = QStringLiteral("without");
const QString nameOption = QStringLiteral("name");
const QString jsonOption = QStringLiteral("json");

using calibration::HeightMethod;
using calibration::PlanMethod;

template <typename Method>
Values wordsOf(std::initializer_list<Method> methods)
{
    QStringList words;
    for (const Method method : methods)
        words += calibration::wordOf(method);
    return Values::ofWords(words);
}

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--system S --points FILE [OPTIONS]"),
        QStringLiteral("Fits a building site to control points that were measured."),
        pointsHelp()
            + QStringLiteral(
                "\n\n"
                "In plan, four fits two shifts, a rotation and a scale (from 2 points on),\n"
                "rotation holds the scale to 1 (2), shift has no rotation either (1). In height,\n"
                "fixed fits one shift (1), plane two slopes besides (3), curve a surface of the\n"
                "second degree (6). Heights are those above the geoid where S names a model.\n"
                "\n"
                "Residuals are calculated minus control. Baarda's w (with standard deviations) or\n"
                "Pope's tau tests each point at 0.001; one suspect is named at a time, and\n"
                "--without leaves it out. Nothing is dropped by itself.\n"
                "\n"
                "The document of the site keeps the control points. Site coordinates are those\n"
                "that 'kelstd convert --system SITE' prints behind the four frames.\n\n")
            + reviewHelp()
            + QStringLiteral("\n\nExit status: 0 fitted, 1 a line or the points are refused, 2 "
                             "usage, headings\nthat are not understood or a file that exists, 3 "
                             "no PROJ, no usable system, or\nit cannot be written, 4 written, but "
                             "standard output cannot be written."));
    line.setExamples(
        QStringLiteral("kelstd site fit --system EPSG:28992 --points control.csv -o new.xml"),
        QStringLiteral(
            "kelstd site fit --system harbour.xml --points control.csv --report fit.html"));
    addSiteInputOptions(line, QStringLiteral("points"), QStringLiteral("The control points."));
    line.addOption(
        {horizontalOption, QStringLiteral("four, rotation, shift or none. Default: four."),
         QStringLiteral("METHOD")},
        wordsOf({PlanMethod::Four, PlanMethod::Rotation, PlanMethod::Shift, PlanMethod::None}));
    line.addOption({verticalOption,
                    QStringLiteral("fixed, plane, curve or none. Default: plane from\n"
                                   "four points with elevations on, else fixed."),
                    QStringLiteral("METHOD")},
                   wordsOf({HeightMethod::Fixed, HeightMethod::Plane, HeightMethod::Curve,
                            HeightMethod::None}));
    line.addOption({sigmaHOption,
                    QStringLiteral("Standard deviation of northings and eastings [m]\n"
                                   "of points without one in FILE."),
                    QStringLiteral("M")});
    line.addOption({sigmaVOption, QStringLiteral("The same of elevations."), QStringLiteral("M")});
    line.addRepeatedOption({withoutOption,
                            QStringLiteral("Names of points, with commas between them, that\n"
                                           "are listed but not used; any number of times."),
                            QStringLiteral("NAMES")});
    line.addOption({nameOption,
                    QStringLiteral("The name of the site, which --add needs.\n"
                                   "Default: that of S."),
                    QStringLiteral("NAME")});
    ReportTarget::addOption(line);
    line.addOption({jsonOption, QStringLiteral("Print an object of JSON, with all digits.")});
    SystemTarget::addOptions(line);
    addLenientOption(line);
    return line;
}

/// A standard deviation; false with the mistake.
bool takeSigma(const CommandLine &line, const QString &option, std::optional<double> &sigma,
               QString &mistake)
{
    if (!line.isSet(option))
        return true;
    TypedValueFailure failure;
    sigma = readNumber(line.value(option), failure);
    if (!sigma)
        mistake = QStringLiteral("--%1 %2").arg(option, failure.text);
    else if (!(*sigma > 0.0))
        mistake = QStringLiteral("--%1 is not positive").arg(option);
    return mistake.isEmpty();
}

bool takeOptions(const CommandLine &line, calibration::SiteFitOptions &options, QString &mistake)
{
    const QString horizontal = line.value(horizontalOption);
    const QString vertical = line.value(verticalOption);
    options.plan = calibration::planMethodOf(horizontal);
    options.height = calibration::heightMethodOf(vertical);
    if (line.isSet(horizontalOption) && !options.plan)
        mistake = QStringLiteral("--horizontal '%1' is none of four, rotation, shift, none")
                      .arg(horizontal);
    else if (line.isSet(verticalOption) && !options.height)
        mistake =
            QStringLiteral("--vertical '%1' is none of fixed, plane, curve, none").arg(vertical);
    else if (line.isSet(nameOption) && library::withoutMarks(line.value(nameOption)).isEmpty())
        mistake = QStringLiteral("--name is empty");
    else if (line.isSet(QStringLiteral("add")) && !line.isSet(nameOption)
             && !line.isSet(QStringLiteral("as")))
        mistake = QStringLiteral("--add needs --name: the site is another system than its base");
    return mistake.isEmpty() && takeSigma(line, sigmaHOption, options.sigmaH, mistake)
           && takeSigma(line, sigmaVOption, options.sigmaV, mistake);
}

/// The names that the values of --without list. One that is the name of a point as a whole may have
/// commas.
QStringList namesIn(const QStringList &values, const ControlPoints &points)
{
    QStringList names;
    for (const QString &value : values) {
        const bool isWhole =
            std::any_of(points.begin(), points.end(),
                        [&value](const ControlPoint &point) { return point.name == value; });
        const QStringList listed =
            isWhole ? QStringList(value) : value.split(QLatin1Char(','), Qt::SkipEmptyParts);
        for (const QString &name : listed)
            names += isWhole ? name : name.trimmed();
    }
    return names;
}

/// The whole chain as PROJ reads it, or why there is none.
void describeChain(const Coord &coord, calibration::SiteReportFacts &facts)
{
    catalogue::Catalogue catalogue;
    catalogue::CatalogueFailure failure;
    const auto exported =
        catalogue.exportSystem(coord, catalogue::ExportForm::Proj, QString(), &failure);
    if (exported)
        facts.pipeline = exported->text;
    else
        facts.pipelineNote =
            QStringLiteral("The chain cannot be written for PROJ: %1.").arg(failure.text);
}

} // namespace

ExitStatus runSiteFit(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    SiteInput input(QStringLiteral("points"));
    if (const auto status = input.takeOptions(line, console))
        return *status;
    calibration::SiteFitOptions options;
    SystemTarget target;
    ReportTarget report;
    QString mistake;
    if (!takeOptions(line, options, mistake) || !target.takeOptions(line, mistake)
        || !report.takeOptions(line, mistake))
        return line.refuse(mistake, console);
    for (const QString &source : input.names()) {
        if (const auto status = target.refusal(source, console))
            return *status;
    }
    const QStringList others = input.names() + QStringList(line.value(QStringLiteral("output")));
    if (const auto status = report.refusal(others, console))
        return *status;
    if (const auto status = input.readSystem(line, console))
        return *status;
    ControlPoints points;
    if (const auto status = input.readPoints(points, console))
        return *status;

    options.without = namesIn(line.values(withoutOption), points);
    calibration::CalibrationFailure failure;
    auto fit = calibration::fitSite(input.system().coord, points, options, &failure);
    if (!fit) {
        console.report(QStringLiteral("nothing is fitted: %1").arg(shown(failure.text)));
        return ExitStatus::SomeFailed;
    }
    if (line.isSet(nameOption))
        fit->coord.coord_name = library::withoutMarks(line.value(nameOption));
    const bool isJson = line.isSet(jsonOption);
    reportWarnings(fit->warnings, console);
    if (isJson)
        console.write(jsonLine(*fit));
    else
        printText(*fit, console);
    ExitStatus status = ExitStatus::Success;
    if (target.isNamed()) {
        status =
            target.put(fit->coord, calibration::siteOrigin(input.system().origin, fit->control),
                       line, isJson, console);
    }
    if (status != ExitStatus::Success || !report.isNamed())
        return status;
    calibration::SiteReportFacts facts;
    facts.baseName = input.system().coord.coord_name;
    facts.madeOn = QDate::currentDate().toString(Qt::ISODate);
    describeChain(fit->coord, facts);
    return report.write(calibration::siteReport(*fit, facts), isJson, console);
}

} // namespace KelStd::cli
