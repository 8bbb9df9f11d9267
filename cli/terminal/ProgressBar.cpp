#include <cli/terminal/ProgressBar.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/StandardStreams.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr qint64 pause = 100; // [ms]
constexpr int usualColumns = 80;

/// "1:05:09", "0:12"
QString duration(qint64 seconds)
{
    constexpr int perPart = 60;
    const auto twoDigits = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    };
    const qint64 minutes = seconds / perPart;
    const QString end = QLatin1Char(':') + twoDigits(seconds % perPart);
    return minutes < perPart ? QString::number(minutes) + end
                             : QString::number(minutes / perPart) + QLatin1Char(':')
                                   + twoDigits(minutes % perPart) + end;
}

} // namespace

QString progressText(qint64 done, qint64 size, qint64 elapsed, int columns)
{
    constexpr int maxCells = 40;
    constexpr int brackets = 2;
    const double share =
        size > 0 ? std::clamp(static_cast<double>(done) / static_cast<double>(size), 0.0, 1.0)
                 : 1.0;
    QString text = QStringLiteral(" %1 %").arg(static_cast<int>(100.0 * share), 3);
    // An estimate from the first moments would be far off.
    if (share > 0.0 && elapsed >= 1000) {
        const double left = static_cast<double>(elapsed) * (1.0 / share - 1.0) / 1000.0;
        constexpr double maxSeconds = 1e9;
        text += QStringLiteral("  %1 left")
                    .arg(duration(static_cast<qint64>(std::min(left + 0.5, maxSeconds))));
    }
    const int cells = std::min(maxCells, columns - static_cast<int>(text.size()) - brackets);
    if (cells > 0) {
        const int full = static_cast<int>(cells * share);
        text.prepend(QLatin1Char('[') + QString(full, QLatin1Char('#'))
                     + QString(cells - full, QLatin1Char('-')) + QLatin1Char(']'));
    }
    return text;
}

ProgressBar::ProgressBar(Console &console, qint64 size)
    : m_console(console), m_size(size),
      m_isShown(streams::isTerminal(streams::standardError) && !console.isTerminal())
{
    m_clock.start();
}

ProgressBar::~ProgressBar()
{
    if (m_isShown)
        m_console.showStatus({});
}

void ProgressBar::show(qint64 done)
{
    const qint64 now = m_clock.elapsed();
    if (!m_isShown || (m_lastDrawn >= 0 && now < m_lastDrawn + pause))
        return;
    m_lastDrawn = now;
    const int known = streams::terminalWidth(streams::standardError);
    // The last column stays free: some terminals go to the next line with it.
    m_console.showStatus(progressText(done, m_size, now, (known > 0 ? known : usualColumns) - 1));
}

} // namespace KelStd::cli
