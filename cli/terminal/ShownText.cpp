#include <cli/terminal/ShownText.h>

#include <KelStd/text/TextDirection.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

template <typename IsCommand>
QString escaped(const QString &text, IsCommand isCommand)
{
    if (std::none_of(text.cbegin(), text.cend(), isCommand))
        return text;
    constexpr int hexadecimal = 16;
    QString result;
    for (const QChar c : text) {
        result += isCommand(c) ? QStringLiteral("\\x%1").arg(
                      QString::number(c.unicode(), hexadecimal).toUpper(), 2, QLatin1Char('0'))
                               : QString(c);
    }
    return result;
}

bool isControl(QChar c)
{
    return (c.category() == QChar::Other_Control && c != QLatin1Char('\t')) || turnsDirection(c);
}

} // namespace

QString shownLines(const QString &text)
{
    return escaped(text, [](QChar c) { return isControl(c) && c != QLatin1Char('\n'); });
}

QString shown(const QString &text)
{
    return escaped(text, &isControl);
}

QString inQuotes(const QString &text)
{
    return QLatin1Char('"') + shown(text) + QLatin1Char('"');
}

} // namespace KelStd::cli
