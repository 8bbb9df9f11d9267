#include <cli/TableWriter.h>

#include <cli/Columns.h>
#include <cli/Console.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr int nameWidth = 16;
const QString gap = QStringLiteral("  ");

QString rightAligned(const QString &text, int width)
{
    return text.rightJustified(width);
}

int frameWidth(const ValuePrinter &printer, Frame frame)
{
    int width = gap.size() * (componentsPerFrame - 1);
    for (int i = 0; i < componentsPerFrame; ++i)
        width += printer.width(columnOf(frame, i));
    return width;
}

/// A title in the middle of a rule.
QString ruled(const QString &title, int width)
{
    const int dashes = width - title.size() - 2;
    return QString(dashes / 2, QLatin1Char('-')) + QLatin1Char(' ') + title + QLatin1Char(' ')
           + QString(dashes - dashes / 2, QLatin1Char('-'));
}

} // namespace

int TableWriter::wideWidth(const ValuePrinter &printer)
{
    int width = nameWidth;
    for (const Column &column : columns())
        width += gap.size() + printer.width(column);
    return width;
}

void TableWriter::begin(bool hasNames)
{
    m_hasNames = hasNames;
    if (m_layout == Layout::Narrow)
        return;

    const QString indent = hasNames ? QString(nameWidth, QLatin1Char(' ')) : QString();
    QString titles = indent;
    QString labels = hasNames ? QStringLiteral("point").leftJustified(nameWidth) : QString();
    QString units = indent;
    for (const FrameRow &frame : frames()) {
        titles += gap + ruled(QString::fromLatin1(frame.title), frameWidth(m_printer, frame.frame));
        for (int i = 0; i < componentsPerFrame; ++i) {
            const Column &column = columnOf(frame.frame, i);
            const int width = m_printer.width(column);
            labels += gap + rightAligned(QString::fromLatin1(column.label), width);
            units += gap + rightAligned(m_printer.unit(column), width);
        }
    }
    m_console.print(titles);
    m_console.print(labels);
    m_console.print(units);
}

void TableWriter::write(const QString &name, const Location &location)
{
    if (m_layout == Layout::Wide)
        writeWide(name, location);
    else
        writeNarrow(name, location);
    m_isFirst = false;
}

/// Without the blanks that stand for trailing zeros of the last number.
void TableWriter::printLine(QString line)
{
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    m_console.print(line);
}

void TableWriter::writeWide(const QString &name, const Location &location)
{
    QString line;
    if (m_hasNames) {
        // A name that is too long stands in a line of its own, so that the numbers stay in theirs.
        if (name.size() > nameWidth)
            m_console.print(name);
        line = (name.size() > nameWidth ? QString() : name).leftJustified(nameWidth);
    }
    for (const Column &column : columns())
        line += gap + rightAligned(m_printer.cell(column, location), m_printer.width(column));
    printLine(line);
}

void TableWriter::writeNarrow(const QString &name, const Location &location)
{
    constexpr int titleWidth = 18;
    constexpr int leastWidth = 18; // 179°59′59.999999″W, and three of them fit 80 columns

    if (!m_isFirst)
        m_console.print({});
    if (m_hasNames)
        m_console.print(name);
    for (const FrameRow &frame : frames()) {
        QString labels(titleWidth, QLatin1Char(' '));
        QString numbers = (gap + QLatin1String(frame.title)).leftJustified(titleWidth);
        for (int i = 0; i < componentsPerFrame; ++i) {
            const Column &column = columnOf(frame.frame, i);
            const QString label = QStringLiteral("%1 [%2]").arg(QString::fromLatin1(column.label),
                                                                m_printer.unit(column));
            const QString number = m_printer.cell(column, location);
            const int width = std::max({leastWidth, label.size(), number.size()});
            labels += gap + rightAligned(label, width);
            numbers += gap + rightAligned(number, width);
        }
        m_console.print(labels);
        printLine(numbers);
    }
}

} // namespace KelStd::cli
