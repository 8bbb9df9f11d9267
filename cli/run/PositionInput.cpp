#include <cli/run/PositionInput.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

namespace KelStd::cli {

namespace {

const QString columnsOption = QStringLiteral("columns");
const QString skipOption = QStringLiteral("skip");

/// What messages about an input call the options of the commands that read one.
positions::InputWords optionWords()
{
    return {QStringLiteral("--columns"), QStringLiteral("--skip"), QStringLiteral("--from"),
            QStringLiteral("--length-unit")};
}

/// How many lines at the beginning of the input are passed over; nothing and the `mistake` for
/// what is no number of lines.
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

} // namespace

void PositionInput::addColumnsOption(CommandLine &line, const QString &description)
{
    line.addOption({columnsOption, description, QStringLiteral("LIST")});
}

void PositionInput::addSkipOption(CommandLine &line)
{
    line.addOption({skipOption,
                    QStringLiteral("Pass over the first N lines, whatever they hold: a\n"
                                   "title, or headings that are wrong."),
                    QStringLiteral("N")});
}

bool PositionInput::takeOptions(const CommandLine &line, QString &mistake)
{
    const auto skipped = skippedLines(line, mistake);
    if (!skipped)
        return false;
    m_skippedLines = *skipped;
    if (m_columns == Columns::MayBePicked && line.isSet(columnsOption)) {
        m_choice = positions::ColumnChoice::from(line.value(columnsOption), mistake, optionWords());
        return m_choice.has_value();
    }
    return true;
}

bool PositionInput::open(const CommandLine &line, Console &console)
{
    const QString name = line.positionals().value(0, QStringLiteral("-"));
    QString reason;
    if (m_input.open(name, reason))
        return true;
    console.report(QStringLiteral("cannot open %1: %2").arg(name, reason));
    return false;
}

void PositionInput::promptFor(const QString &components, Console &console) const
{
    if (m_input.isTerminal()) {
        console.report(QStringLiteral("type positions, one a line (%1); the end-of-file key ends")
                           .arg(components));
    }
}

positions::PositionParser PositionInput::parser(const positions::InputForm &form) const
{
    positions::InputForm worded = form;
    worded.words = optionWords();
    positions::PositionParser parser(worded, m_choice);
    parser.setSkippedLines(m_skippedLines);
    return parser;
}

} // namespace KelStd::cli
