#include <cli/terminal/CommandHelp.h>

#include <QtCore/QMap>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// "-o, --output FILE"
QString headOf(const QCommandLineOption &option)
{
    QStringList names;
    for (const QString &name : option.names())
        names += (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
    QString head = names.join(QLatin1String(", "));
    if (!option.valueName().isEmpty())
        head += QLatin1Char(' ') + option.valueName();
    return head;
}

QString listOf(const QList<QCommandLineOption> &options)
{
    int width = 0;
    for (const QCommandLineOption &option : options)
        width = std::max(width, static_cast<int>(headOf(option).size()));
    QString text;
    for (const QCommandLineOption &option : options) {
        const QString indent = QLatin1Char('\n') + QString(width + 4, QLatin1Char(' '));
        text += QStringLiteral("\n  %1  %2")
                    .arg(headOf(option), -width)
                    .arg(option.description().replace(QLatin1Char('\n'), indent));
    }
    return text;
}

QList<QCommandLineOption> usualOptions(const CommandHelp &help)
{
    QList<QCommandLineOption> usual;
    for (const QCommandLineOption &option : help.options) {
        const QString name = option.names().last();
        if (help.usual.isEmpty() || help.usual.contains(name) || name == QLatin1String("help"))
            usual += option;
    }
    return usual;
}

QString beginning(const CommandHelp &help)
{
    QString text = QStringLiteral("Examples:\n");
    for (const QString &example : help.examples)
        text += QStringLiteral("  %1\n").arg(example);
    return text + QStringLiteral("\nUsage: %1 %2\n%3\n\n").arg(help.name, help.usage, help.summary);
}

QString shortHelp(const CommandHelp &help)
{
    const QList<QCommandLineOption> usual = usualOptions(help);
    const auto others = help.options.size() - usual.size();
    const QString more = help.name + QLatin1String(" --help full");
    QString text = beginning(help)
                   + (others > 0 ? QLatin1String("The usual options:") : QLatin1String("Options:"));
    text += listOf(usual);
    if (others > 0)
        text += QStringLiteral("\n\n'%1' tells of %2 more, and the rest.").arg(more).arg(others);
    else if (!help.details.isEmpty())
        text += QStringLiteral("\n\n'%1' tells the rest.").arg(more);
    return text;
}

QString fullHelp(const CommandHelp &help)
{
    QString text = beginning(help) + QLatin1String("Options:") + listOf(help.options);
    if (!help.details.isEmpty())
        text += QLatin1String("\n\n") + help.details;
    return text;
}

/// A text as roff shows it: what roff would take for an instruction, and what is not in ASCII, in
/// its own notation.
QString escaped(const QString &text)
{
    QString roff;
    for (const QChar c : text) {
        constexpr ushort lastAscii = 0x7E;
        const bool begins = roff.isEmpty() || roff.endsWith(QLatin1Char('\n'));
        if (begins && (c == QLatin1Char('.') || c == QLatin1Char('\'')))
            roff += QLatin1String("\\&");
        if (c == QLatin1Char('\\'))
            roff += QLatin1String("\\e");
        else if (c == QLatin1Char('-'))
            roff += QLatin1String("\\-");
        else if (c == QLatin1Char('\''))
            roff += QLatin1String("\\(aq");
        else if (c == QLatin1Char('`'))
            roff += QLatin1String("\\(ga");
        else if (c == QLatin1Char('^'))
            roff += QLatin1String("\\(ha");
        else if (c == QLatin1Char('~'))
            roff += QLatin1String("\\(ti");
        else if (c.unicode() > lastAscii)
            roff += QStringLiteral("\\[u%1]")
                        .arg(static_cast<uint>(c.unicode()), 4, 16, QLatin1Char('0'))
                        .toUpper()
                        .replace(QLatin1String("\\[U"), QLatin1String("\\[u"));
        else
            roff += c;
    }
    return roff;
}

/// Lines that stay as they are; one that is empty is a paragraph's end.
QString asItStands(const QString &text)
{
    QString roff = QStringLiteral(".nf\n");
    static const QRegularExpression blankLines(QStringLiteral("\\A\n+|\\s+\\z"));
    for (const QString &line : QString(text).remove(blankLines).split(QLatin1Char('\n')))
        roff += line.isEmpty() ? QStringLiteral(".sp\n") : escaped(line) + QLatin1Char('\n');
    return roff + QLatin1String(".fi\n");
}

QString section(const QString &title)
{
    return QStringLiteral(".SH \"%1\"\n").arg(escaped(title));
}

QString pageName(const QString &command)
{
    return QString(command).replace(QLatin1Char(' '), QLatin1Char('-'));
}

QString pageHead(const QString &command, const QString &brief)
{
    return QStringLiteral(".TH \"%1\" 1 \"\" \"KelStd %2\" \"KelStd\"\n")
               .arg(escaped(pageName(command).toUpper()), QStringLiteral(KELSTD_VERSION))
           + section(QStringLiteral("NAME"))
           + QStringLiteral("%1 \\- %2\n").arg(escaped(pageName(command)), escaped(brief));
}

/// The first sentence, without its point.
QString briefOf(const QString &summary)
{
    const QString text = QString(summary).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const auto end = text.indexOf(QLatin1String(". "));
    QString brief = end < 0 ? text : text.left(end);
    while (brief.endsWith(QLatin1Char('.')))
        brief.chop(1);
    return brief;
}

QString manualPage(const CommandHelp &help)
{
    QString page = pageHead(help.name, briefOf(help.summary));
    page += section(QStringLiteral("SYNOPSIS"))
            + QStringLiteral(".B \"%1\"\n%2\n").arg(escaped(help.name), escaped(help.usage));
    page += section(QStringLiteral("DESCRIPTION")) + asItStands(help.summary);
    page += section(QStringLiteral("OPTIONS"));
    for (const QCommandLineOption &option : help.options) {
        page += QStringLiteral(".TP\n.B \"%1\"\n%2\n")
                    .arg(escaped(headOf(option)), escaped(option.description()));
    }
    if (!help.details.isEmpty())
        page += section(QStringLiteral("DETAILS")) + asItStands(help.details);
    page += section(QStringLiteral("EXAMPLES")) + asItStands(help.examples.join(QLatin1Char('\n')));
    page += section(QStringLiteral("SEE ALSO")) + QStringLiteral(".BR kelstd (1)");
    return page;
}

} // namespace

std::optional<HelpForm> helpForm(const QString &word)
{
    if (word == QLatin1String("full"))
        return HelpForm::Full;
    return word == QLatin1String("man") ? std::optional(HelpForm::Manual) : std::nullopt;
}

QString helpText(const CommandHelp &help, HelpForm form)
{
    switch (form) {
    case HelpForm::Short: return shortHelp(help);
    case HelpForm::Full: return fullHelp(help);
    case HelpForm::Manual: break;
    }
    return manualPage(help);
}

QString programPage(const QString &brief, const QString &text, const QStringList &commands)
{
    const QString examples = QStringLiteral("Examples");
    const QString usage = QStringLiteral("Usage: ");
    QString page = pageHead(QStringLiteral("kelstd"), brief);
    QString title;
    QStringList titles;
    QMap<QString, QString> sections;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (line.startsWith(usage)) {
            title = QStringLiteral("Synopsis");
            sections[title] = line.mid(usage.size()) + QLatin1Char('\n');
        } else if (line.endsWith(QLatin1Char(':')) && !line.startsWith(QLatin1Char(' '))) {
            title = line.chopped(1);
        } else {
            sections[title] += line + QLatin1Char('\n');
            continue;
        }
        titles += title;
    }
    titles.removeAll(examples);
    titles += examples;
    for (const QString &each : qAsConst(titles))
        page += section(each.toUpper()) + asItStands(sections.value(each));
    page += section(QStringLiteral("SEE ALSO"));
    for (const QString &command : commands) {
        page += QStringLiteral(".BR %1 (1)%2\n")
                    .arg(escaped(pageName(QStringLiteral("kelstd ") + command)),
                         command == commands.last() ? QString() : QStringLiteral(","));
    }
    return page.trimmed();
}

} // namespace KelStd::cli
