#include <cli/conversion/ConvertOptions.h>

#include <cli/conversion/ColumnOptions.h>
#include <cli/conversion/FrameWords.h>
#include <cli/run/PositionInput.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/UnknownWord.h>

#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedNumber.h>

#include <algorithm>
#include <thread>

namespace KelStd::cli {

namespace {

/// Threads for a run: as many as --threads says, or as the machine has cores. Nothing, with the
/// `mistake`, for what is no number of threads.
std::optional<std::size_t> threadsOf(const CommandLine &line, QString &mistake)
{
    constexpr unsigned maxThreads = 64; // each holds some blocks of lines in memory
    if (!line.isSet(QStringLiteral("threads")))
        return std::clamp(std::thread::hardware_concurrency(), 1U, maxThreads);
    const QString text = line.value(QStringLiteral("threads"));
    bool ok = false;
    const unsigned threads = text.toUInt(&ok);
    if (ok && threads >= 1 && threads <= maxThreads)
        return threads;
    mistake = QStringLiteral("--threads '%1' is no number from 1 to %2").arg(text).arg(maxThreads);
    return std::nullopt;
}

/// The options of the input that is NMEA 0183, whose frame and fields are what they are.
bool takeNmea(const CommandLine &line, ConvertOptions &options, QString &mistake)
{
    options.isNmea = line.isSet(QStringLiteral("nmea"));
    if (!options.isNmea)
        return true;
    if (options.frame->frame != positions::Frame::Wgs84Geographic) {
        mistake = QStringLiteral("--from '%1' does not go with --nmea, whose positions are %2")
                      .arg(line.value(QStringLiteral("from")),
                           QString::fromLatin1(
                               positions::rowOf(positions::Frame::Wgs84Geographic).option));
        return false;
    }
    for (const char *option : {"columns", "skip", "height"}) {
        if (line.isSet(QString::fromLatin1(option))) {
            mistake = QStringLiteral("--%1 does not go with --nmea, whose fields are known")
                          .arg(QString::fromLatin1(option));
            return false;
        }
    }
    if (line.isSet(QStringLiteral("height"))) {
        mistake = QStringLiteral("--height does not go with --nmea, whose heights are the "
                                 "receiver's: a position without one fails");
        return false;
    }
    const QString names = line.value(QStringLiteral("names"));
    if (names == QLatin1String("utc"))
        options.epochNames = EpochSource::Names::Utc;
    else if (line.isSet(QStringLiteral("names")) && names != QLatin1String("number"))
        mistake = QStringLiteral("--names '%1' is none; there are number, utc").arg(names);
    return mistake.isEmpty();
}

/// --height, in the unit of lengths; false with the mistake for what is none.
bool takeHeight(const CommandLine &line, ConvertOptions &options, QString &mistake)
{
    const QString option = QStringLiteral("height");
    if (!line.isSet(option))
        return true;
    if (options.frame->frame == positions::Frame::Wgs84Cartesian) {
        mistake = QStringLiteral("--height is for positions without one, and those of %1 have none")
                      .arg(QLatin1String(options.frame->option));
        return false;
    }
    TypedValueFailure failure;
    const auto height = readNumber(line.value(option), failure);
    if (!height) {
        mistake = QStringLiteral("--height %1").arg(failure.text);
        return false;
    }
    const LengthUnit *unit = options.display.lengthUnit;
    options.height = unit == nullptr
                         ? *height
                         : CoordStringHelper::ConvertUnit_Length(*height, unit->unit, Unit_Meter);
    return true;
}

} // namespace

std::optional<ConvertOptions> convertOptionsOf(const CommandLine &line, const QString &formOption,
                                               PositionInput &input, const Console &console,
                                               QString &mistake)
{
    ConvertOptions options;
    options.system = line.value(QStringLiteral("system"));
    if (options.system.isEmpty()) {
        mistake = QStringLiteral("--system FILE.xml is missing");
        return std::nullopt;
    }
    if (line.isSet(QStringLiteral("to"))) {
        options.to = line.value(QStringLiteral("to"));
        if (options.to->isEmpty()) {
            mistake = QStringLiteral("--to has no system");
            return std::nullopt;
        }
    }
    const QString from = line.value(QStringLiteral("from"));
    options.isFromSite = from == QLatin1String(positions::siteFrameName);
    options.frame = options.isFromSite ? &positions::rowOf(positions::Frame::LocalProjected)
                                       : positions::findFrame(from);
    if (options.frame == nullptr) {
        mistake = unknownWord(QStringLiteral("from"), from, QStringLiteral("frame"),
                              frameNames(QStringLiteral(" ")).split(QLatin1Char(' ')));
        return std::nullopt;
    }
    options.isFrameGiven = line.isSet(QStringLiteral("from"));
    if (!takeNmea(line, options, mistake))
        return std::nullopt;
    const auto form = chosenForm(line, locationOutputForms(), console, mistake);
    if (!form)
        return std::nullopt;
    options.form = &locationForms()[*form];
    for (const LocationForm &row : locationForms()) {
        if (formOption == QLatin1String(row.form.option))
            options.form = &row;
    }
    options.hasHeader = !line.isSet(QStringLiteral("no-header"));
    if (!options.hasHeader && !options.form->mayLackHeader) {
        mistake =
            QStringLiteral("--no-header is for comma-separated values, which are not printed");
        return std::nullopt;
    }
    const auto display = DisplayOptions::from(line, mistake);
    if (!display)
        return std::nullopt;
    options.display = *display;
    const auto columns = columnOptions(line, mistake);
    if (!columns)
        return std::nullopt;
    options.columns = *columns;
    const auto threads = threadsOf(line, mistake);
    if (!threads)
        return std::nullopt;
    options.threads = *threads;
    options.rejects = line.value(QStringLiteral("rejects"));
    if (options.rejects.isEmpty() && line.isSet(QStringLiteral("rejects"))) {
        mistake = QStringLiteral("--rejects has no file's name");
        return std::nullopt;
    }
    if (!takeHeight(line, options, mistake))
        return std::nullopt;
    return input.takeOptions(line, mistake) ? std::optional(options) : std::nullopt;
}

} // namespace KelStd::cli
