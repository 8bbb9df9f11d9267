#include <cli/terminal/Report.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

namespace KelStd::cli {

namespace {

constexpr int labelWidth = 26;

} // namespace

void Report::section(const QString &heading, const QString &value)
{
    if (!m_isFirst)
        m_console.print({});
    m_isFirst = false;
    labelled(heading, value);
}

void Report::value(const QString &label, const QString &text)
{
    labelled(QLatin1String("  ") + label, text);
}

void Report::line(const QString &text)
{
    m_console.print(QLatin1String("  ") + shown(text));
}

void Report::labelled(const QString &label, const QString &text)
{
    m_console.print(text.isEmpty() ? label : label.leftJustified(labelWidth) + shown(text));
}

} // namespace KelStd::cli
