#include <cli/values/ValueArguments.h>

#include <cli/run/LineReader.h>
#include <cli/terminal/Console.h>

namespace KelStd::cli {

namespace {

using Taker = std::function<void(const QString &value, const QString &place)>;

bool takeLines(Console &console, const Taker &take)
{
    LineReader lines;
    QString error;
    lines.open(QStringLiteral("-"), error);
    QByteArray line;
    for (;;) {
        const LineReader::Result result = lines.next(line);
        if (result == LineReader::Result::End || !console.canPrint())
            return true;
        if (result == LineReader::Result::Error) {
            console.report(
                QStringLiteral("cannot read %1: %2").arg(lines.displayName(), lines.errorText()));
            return false;
        }
        const QString value = QString::fromUtf8(line).trimmed();
        const bool isTooLong = result == LineReader::Result::TooLong;
        if (!isTooLong && (value.isEmpty() || value.startsWith(QLatin1Char('#'))))
            continue;
        // A line that is longer than any value is no value.
        take(value, QStringLiteral("%1:%2: ").arg(lines.displayName()).arg(lines.lineNumber()));
    }
}

} // namespace

bool takeValues(const QStringList &words, Console &console, const Taker &take)
{
    bool isComplete = true;
    for (const QString &word : words) {
        if (word == QLatin1String("-"))
            isComplete = takeLines(console, take) && isComplete;
        else
            take(word, {});
    }
    return isComplete;
}

ExitStatus printValues(
    const QStringList &words, Console &console,
    const std::function<std::optional<QString>(const QString &value, QString &reason)> &lineOf)
{
    ExitStatus status = ExitStatus::Success;
    const auto show = [&](const QString &value, const QString &place) {
        QString reason;
        if (const auto shown = lineOf(value, reason)) {
            console.print(*shown);
            return;
        }
        console.report(place + reason);
        status = ExitStatus::SomeFailed;
    };
    return takeValues(words, console, show) ? status : ExitStatus::SomeFailed;
}

} // namespace KelStd::cli
