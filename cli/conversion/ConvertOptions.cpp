#include <cli/conversion/ConvertOptions.h>

#include <cli/conversion/FrameWords.h>
#include <cli/run/PositionInput.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

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

} // namespace

std::optional<ConvertOptions> convertOptionsOf(const CommandLine &line, PositionInput &input,
                                               const Console &console, QString &mistake)
{
    ConvertOptions options;
    options.system = line.value(QStringLiteral("system"));
    if (options.system.isEmpty()) {
        mistake = QStringLiteral("--system FILE.xml is missing");
        return std::nullopt;
    }
    const QString from = line.value(QStringLiteral("from"));
    options.isFromSite = from == QLatin1String(positions::siteFrameName);
    options.frame = options.isFromSite ? &positions::rowOf(positions::Frame::LocalProjected)
                                       : positions::findFrame(from);
    if (options.frame == nullptr) {
        mistake = QStringLiteral("--from '%1' is no frame; there are %2")
                      .arg(from, frameNames(QStringLiteral(", ")));
        return std::nullopt;
    }
    const auto form = chosenForm(line, locationOutputForms(), console, mistake);
    if (!form)
        return std::nullopt;
    options.form = &locationForms()[*form];
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
    const auto threads = threadsOf(line, mistake);
    if (!threads)
        return std::nullopt;
    options.threads = *threads;
    options.rejects = line.value(QStringLiteral("rejects"));
    if (options.rejects.isEmpty() && line.isSet(QStringLiteral("rejects"))) {
        mistake = QStringLiteral("--rejects has no file's name");
        return std::nullopt;
    }
    return input.takeOptions(line, mistake) ? std::optional(options) : std::nullopt;
}

} // namespace KelStd::cli
