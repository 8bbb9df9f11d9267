#include <cli/run/SkipOption.h>

#include <cli/terminal/CommandLine.h>

namespace KelStd::cli {

namespace {

const QString skipOption = QStringLiteral("skip");

} // namespace

void addSkipOption(CommandLine &line)
{
    line.addOption({skipOption,
                    QStringLiteral("Pass over the first N lines, whatever they hold: a\n"
                                   "title, or headings that are wrong."),
                    QStringLiteral("N")});
}

std::optional<qint64> skippedLines(const CommandLine &line, QString &mistake)
{
    if (!line.isSet(skipOption))
        return 0;
    const QString text = line.value(skipOption);
    bool ok = false;
    const qint64 count = text.toLongLong(&ok);
    if (ok && count >= 0)
        return count;
    mistake = QStringLiteral("--skip '%1' is no number of lines").arg(text);
    return std::nullopt;
}

} // namespace KelStd::cli
