#include <cli/terminal/CommandLine.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/UnknownWord.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// "-30.5": no option begins with a digit or a point.
bool isNegativeNumber(const QString &word)
{
    const QChar first = word.size() > 1 ? word.at(1) : QChar();
    return word.startsWith(QLatin1Char('-'))
           && (first == QLatin1Char('.')
               || (first >= QLatin1Char('0') && first <= QLatin1Char('9')));
}

/// The arguments without the word behind --help that asks for a form of it.
QStringList withoutHelpForm(QStringList arguments, HelpForm &form)
{
    const QString together = QStringLiteral("--help=");
    for (int i = 1; i < arguments.size() && arguments.at(i) != QLatin1String("--"); ++i) {
        const QString word = arguments.at(i);
        const bool isHelp = word == QLatin1String("--help") || word == QLatin1String("-h");
        const auto asked = word.startsWith(together) ? helpForm(word.mid(together.size()))
                           : isHelp                  ? helpForm(arguments.value(i + 1))
                                                     : std::nullopt;
        if (!asked)
            continue;
        form = *asked;
        if (isHelp)
            arguments.removeAt(i + 1);
        else
            arguments[i] = QStringLiteral("--help");
    }
    return arguments;
}

/// What the words of a usage tell of the arguments behind the options: "[OPTIONS] NAME FILE.xml".
QList<Values> positionalsNamedIn(const QString &usage)
{
    QList<Values> positionals;
    const QStringList words = usage.split(QLatin1Char(' '));
    for (int i = 0; i < words.size(); ++i) {
        const QString &word = words.at(i);
        if (word.startsWith(QLatin1Char('-')))
            ++i; // its value
        else if (!word.startsWith(QLatin1String("[-")) && word != QLatin1String("[OPTIONS]"))
            positionals += Values::namedIn(word);
    }
    return positionals;
}

} // namespace

CommandLine::CommandLine(const QString &usage, const QString &summary, const QString &details)
    : m_parser(std::make_unique<QCommandLineParser>())
{
    m_command.help.usage = usage;
    m_command.help.summary = summary;
    m_command.help.details = details;
    m_command.positionals = positionalsNamedIn(usage);
}

void CommandLine::setExamples(const QString &first, const QString &second)
{
    m_command.help.examples = QStringList{first, second};
}

void CommandLine::addOption(const QCommandLineOption &option)
{
    addOption(option, Values::namedIn(option.valueName()));
}

void CommandLine::addOption(const QCommandLineOption &option, const Values &proposed)
{
    m_command.help.options += option;
    m_command.values[option.names().last()] = proposed;
}

void CommandLine::addRepeatedOption(const QCommandLineOption &option)
{
    m_command.repeated += option.names().last();
    addOption(option);
}

std::optional<ExitStatus> CommandLine::parse(const QStringList &arguments, Console &console,
                                             int maxPositionals)
{
    addOption({{QStringLiteral("h"), QStringLiteral("help")},
               QStringLiteral("Show the help; 'full' behind it shows all of it.")});
    m_parser->addOptions(m_command.help.options);
    m_command.help.name = arguments.first();
    m_command.maxPositionals = maxPositionals;
    if (CommandDescription *const told = console.description()) {
        *told = m_command;
        return ExitStatus::Success;
    }
    HelpForm form = HelpForm::Short;
    const bool parsed = m_parser->parse(withValuesLast(withoutHelpForm(arguments, form)));
    if (m_parser->isSet(QStringLiteral("help"))) {
        const QString text = helpText(m_command.help, form);
        if (form == HelpForm::Manual)
            console.write(text.toUtf8() + '\n');
        else
            console.print(text);
        return ExitStatus::Success;
    }
    const QString wrong = parsed ? mistake(maxPositionals) : misreading();
    if (wrong.isEmpty())
        return std::nullopt;
    return refuse(wrong, console);
}

bool CommandLine::takesValue(const QString &word) const
{
    const QString name = word.mid(word.startsWith(QLatin1String("--")) ? 2 : 1);
    return std::any_of(m_command.help.options.cbegin(), m_command.help.options.cend(),
                       [&name](const auto &option) {
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
    const QString link =
        text.endsWith(QLatin1Char('?')) ? QStringLiteral(" ") : QStringLiteral("; ");
    console.report(
        QStringLiteral("%1%2'%3 --help' tells more").arg(text, link, m_command.help.name));
    return ExitStatus::Usage;
}

/// Why the parser could not read the options.
QString CommandLine::misreading() const
{
    QString text = m_parser->errorText();
    while (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    const QStringList unknown = m_parser->unknownOptionNames();
    QStringList known;
    for (const QCommandLineOption &option : m_command.help.options)
        known += QStringLiteral("--") + option.names().last();
    return unknown.isEmpty() ? text : text + nearHint(unknown.first(), known);
}

QString CommandLine::mistake(int maxPositionals) const
{
    for (const QCommandLineOption &option : m_command.help.options) {
        if (!option.valueName().isEmpty() && m_parser->values(option).size() > 1
            && !m_command.repeated.contains(option.names().last()))
            return QStringLiteral("--%1 is given twice").arg(option.names().last());
    }
    if (positionals().size() > maxPositionals) {
        return QStringLiteral("'%1' is one argument too many")
            .arg(positionals().at(maxPositionals));
    }
    return {};
}

} // namespace KelStd::cli
