#include <cli/terminal/CommandLine.h>

#include <cli/terminal/Console.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// "-o, --output FILE"
QString optionHead(const QCommandLineOption &option)
{
    QStringList names;
    for (const QString &name : option.names())
        names += (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
    QString head = names.join(QLatin1String(", "));
    if (!option.valueName().isEmpty())
        head += QLatin1Char(' ') + option.valueName();
    return head;
}

/// "-30.5": no option begins with a digit or a point.
bool isNegativeNumber(const QString &word)
{
    const QChar first = word.size() > 1 ? word.at(1) : QChar();
    return word.startsWith(QLatin1Char('-'))
           && (first == QLatin1Char('.')
               || (first >= QLatin1Char('0') && first <= QLatin1Char('9')));
}

} // namespace

CommandLine::CommandLine(const QString &usage, const QString &summary, const QString &details)
    : m_usage(usage), m_summary(summary), m_details(details),
      m_parser(std::make_unique<QCommandLineParser>())
{}

void CommandLine::addOption(const QCommandLineOption &option)
{
    m_options += option;
}

void CommandLine::addRepeatedOption(const QCommandLineOption &option)
{
    m_repeated += option.names().last();
    addOption(option);
}

std::optional<ExitStatus> CommandLine::parse(const QStringList &arguments, Console &console,
                                             int maxPositionals)
{
    addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    m_parser->addOptions(m_options);
    m_name = arguments.first();
    const bool parsed = m_parser->parse(withValuesLast(arguments));
    if (m_parser->isSet(QStringLiteral("help"))) {
        console.print(help());
        return ExitStatus::Success;
    }
    const QString wrong = parsed ? mistake(maxPositionals) : m_parser->errorText();
    if (wrong.isEmpty())
        return std::nullopt;
    return refuse(wrong, console);
}

bool CommandLine::takesValue(const QString &word) const
{
    const QString name = word.mid(word.startsWith(QLatin1String("--")) ? 2 : 1);
    return std::any_of(m_options.cbegin(), m_options.cend(), [&name](const auto &option) {
        return !option.valueName().isEmpty() && option.names().contains(name);
    });
}

/// The options with their values, "--", and everything else in its order: the parser takes what
/// follows "--" as it is.
QStringList CommandLine::withValuesLast(const QStringList &arguments) const
{
    QStringList options = arguments.mid(0, 1);
    QStringList values;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString &word = arguments.at(i);
        if (word == QLatin1String("--")) {
            values += arguments.mid(i + 1);
            break;
        }
        const bool isOption =
            word.size() > 1 && word.startsWith(QLatin1Char('-')) && !isNegativeNumber(word);
        (isOption ? options : values) += word;
        if (!isOption || !takesValue(word))
            continue;
        if (i + 1 == arguments.size())
            return arguments; // the parser says what is missing
        options += arguments.at(++i);
    }
    return options + QStringList(QStringLiteral("--")) + values;
}

ExitStatus CommandLine::refuse(const QString &mistake, Console &console) const
{
    QString text = mistake;
    while (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    console.report(QStringLiteral("%1; '%2 --help' tells more").arg(text, m_name));
    return ExitStatus::Usage;
}

QString CommandLine::mistake(int maxPositionals) const
{
    for (const QCommandLineOption &option : m_options) {
        if (!option.valueName().isEmpty() && m_parser->values(option).size() > 1
            && !m_repeated.contains(option.names().last()))
            return QStringLiteral("--%1 is given twice").arg(option.names().last());
    }
    if (positionals().size() > maxPositionals) {
        return QStringLiteral("'%1' is one argument too many")
            .arg(positionals().at(maxPositionals));
    }
    return {};
}

QString CommandLine::help() const
{
    int width = 0;
    for (const QCommandLineOption &option : m_options)
        width = std::max(width, optionHead(option).size());

    QString text = QStringLiteral("Usage: %1 %2\n%3\n\nOptions:").arg(m_name, m_usage, m_summary);
    for (const QCommandLineOption &option : m_options) {
        const QString indent = QLatin1Char('\n') + QString(width + 4, QLatin1Char(' '));
        text += QStringLiteral("\n  %1  %2")
                    .arg(optionHead(option), -width)
                    .arg(option.description().replace(QLatin1Char('\n'), indent));
    }
    if (!m_details.isEmpty())
        text += QLatin1String("\n\n") + m_details;
    return text;
}

} // namespace KelStd::cli
