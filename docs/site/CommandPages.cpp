#include "docs/site/CommandPages.h"

#include <QtCore/QMap>
#include <QtCore/QRegularExpression>

namespace KelStd::site {
namespace {

/// A run of lines of the help: a paragraph, or lines that stand apart by an indent.
struct Piece
{
    QStringList lines;
    bool isIndented = false;
};

QList<Piece> piecesOf(const QString &text)
{
    QList<Piece> pieces;
    bool isNew = true;
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (line.trimmed().isEmpty()) {
            isNew = true;
            continue;
        }
        const bool isIndented = line.startsWith(QLatin1String("  "));
        if (isNew || pieces.last().isIndented != isIndented)
            pieces.append({{}, isIndented});
        pieces.last().lines += line;
        isNew = false;
    }
    return pieces;
}

/// A text that Markdown leaves as it is; options are set in the type of code.
QString escaped(QString text)
{
    static const QRegularExpression sign(QStringLiteral("([\\\\`*_<>\\[\\]|#&])"));
    static const QRegularExpression option(
        QStringLiteral("(?<![\\w`-])(--[a-z][a-z-]*|-[a-z])(?![\\w-])"));
    text.replace(sign, QStringLiteral("\\\\1"));
    return text.replace(option, QStringLiteral("`\\1`"));
}

QString code(const QStringList &lines)
{
    int indent = 80;
    for (const QString &line : lines) {
        int blanks = 0;
        while (blanks < line.size() && line.at(blanks) == QLatin1Char(' '))
            ++blanks;
        indent = std::min(indent, blanks);
    }
    QString block = QStringLiteral("```text\n");
    for (const QString &line : lines)
        block += line.mid(indent) + QLatin1Char('\n');
    return block + QStringLiteral("```\n");
}

/// Rows of a name and its meaning, which begins two blanks behind the name or in the next line.
QString table(const QStringList &lines, const QString &title, bool areCommands)
{
    static const QRegularExpression row(QStringLiteral("\\A  (\\S.*?)(?:  +(\\S.*))?\\z"));
    QList<QPair<QString, QString>> rows;
    for (const QString &line : lines) {
        const auto found = row.match(line);
        if (found.hasMatch())
            rows.append({found.captured(1), found.captured(2)});
        else
            rows.last().second += QLatin1Char(' ') + line.trimmed();
    }
    QString text = QStringLiteral("| %1 | meaning |\n|---|---|\n").arg(title);
    for (const auto &[name, meaning] : rows) {
        QString shown = QString(name).replace(QLatin1Char('|'), QLatin1String("\\|"));
        shown = QLatin1Char('`') + shown + QLatin1Char('`');
        if (areCommands)
            shown = QStringLiteral("[%1](%2.md)").arg(name, commandPageName(name));
        text += QStringLiteral("| %1 | %2 |\n").arg(shown, escaped(meaning.trimmed()));
    }
    return text;
}

/// Above the column of names: "option" below "Options".
QString headingOf(const QString &title)
{
    const QString word = title.toLower();
    return word.endsWith(QLatin1Char('s')) && !word.endsWith(QLatin1String("us")) ? word.chopped(1)
                                                                                  : word;
}

/// "Options:", whose lines stand below it.
bool isTitle(const Piece &piece, const Piece *next)
{
    static const QRegularExpression title(QStringLiteral("\\A[A-Z][A-Za-z ]*:\\z"));
    return !piece.isIndented && piece.lines.size() == 1 && next && next->isIndented
           && title.match(piece.lines.first()).hasMatch();
}

} // namespace

QString commandPageName(const QString &command)
{
    if (command.isEmpty())
        return QStringLiteral("commands");
    return QStringLiteral("command-")
           + QString(command).replace(QLatin1Char(' '), QLatin1Char('-'));
}

QString commandPage(const QString &command, const QString &fullHelp)
{
    QString page = command.isEmpty() ? QStringLiteral("# Commands\n")
                                     : QStringLiteral("# kelstd %1\n").arg(command);
    const QList<Piece> pieces = piecesOf(fullHelp);
    for (int i = 0; i < pieces.size(); ++i) {
        const Piece &piece = pieces.at(i);
        const Piece *next = i + 1 < pieces.size() ? &pieces.at(i + 1) : nullptr;
        page += QLatin1Char('\n');
        if (isTitle(piece, next)) {
            const QString title = piece.lines.first().chopped(1);
            page += QStringLiteral("## %1\n\n").arg(title);
            const bool areExamples = title == QLatin1String("Examples");
            page += areExamples
                        ? code(next->lines)
                        : table(next->lines, headingOf(title), title == QLatin1String("Commands"));
            ++i;
        } else if (piece.isIndented) {
            page += code(piece.lines);
        } else if (piece.lines.first().startsWith(QLatin1String("Usage: "))) {
            QStringList usage(piece.lines.first().mid(7));
            int at = 1;
            while (at < piece.lines.size() && piece.lines.at(at).startsWith(QLatin1Char(' ')))
                usage += piece.lines.at(at++);
            page += QStringLiteral("## Usage\n\n") + code(usage) + QLatin1Char('\n')
                    + escaped(piece.lines.mid(at).join(QLatin1Char(' '))) + QLatin1Char('\n');
        } else {
            page += escaped(piece.lines.join(QLatin1Char(' '))) + QLatin1Char('\n');
        }
    }
    if (!command.isEmpty())
        page += QStringLiteral("\n[All commands](commands.md)\n");
    return page;
}

QString commandTabs(const QStringList &commands)
{
    QStringList firsts;
    QMap<QString, QStringList> byFirst;
    for (const QString &command : commands) {
        const QString first = command.section(QLatin1Char(' '), 0, 0);
        if (!byFirst.contains(first))
            firsts += first;
        byFirst[first] += command;
    }
    const auto tab = [](const QString &command) {
        return QStringLiteral("<tab type=\"user\" url=\"@ref %1\" title=\"%2\"/>\n")
            .arg(commandPageName(command), command);
    };
    QString tabs = QStringLiteral(
        "<tab type=\"usergroup\" visible=\"yes\" url=\"@ref commands\" title=\"Commands\">\n");
    for (const QString &first : qAsConst(firsts)) {
        const QStringList &together = byFirst.value(first);
        if (together.size() == 1) {
            tabs += tab(together.first());
            continue;
        }
        tabs += QStringLiteral("<tab type=\"usergroup\" url=\"[none]\" title=\"%1\">\n").arg(first);
        for (const QString &command : together)
            tabs += tab(command);
        tabs += QStringLiteral("</tab>\n");
    }
    return tabs + QStringLiteral("</tab>\n");
}

} // namespace KelStd::site
