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

bool isHeight(const Column &column)
{
    return columnOf(column.frame, componentsPerFrame - 1).value == column.value
           && column.frame != Frame::Wgs84XYZ;
}

/// Every height is above the ellipsoid but the projected one with a geoid model.
bool isEllipsoidal(const Column &column, const QString &geoidModel)
{
    return isHeight(column) && (column.frame != Frame::LocalNEH || geoidModel.isEmpty());
}

/// The unit, and what a height is above where the values do not say it.
QString unitText(const ValuePrinter &printer, const Column &column, const QString &geoidModel)
{
    const QString unit = printer.unit(column);
    return isEllipsoidal(column, geoidModel) ? unit + QLatin1String(" (ell.)") : unit;
}

int columnWidth(const ValuePrinter &printer, const Column &column, const QString &geoidModel)
{
    return std::max(printer.width(column), unitText(printer, column, geoidModel).size());
}

int frameWidth(const ValuePrinter &printer, Frame frame, const QString &geoidModel)
{
    int width = gap.size() * (componentsPerFrame - 1);
    for (int i = 0; i < componentsPerFrame; ++i)
        width += columnWidth(printer, columnOf(frame, i), geoidModel);
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

int TableWriter::wideWidth(const ValuePrinter &printer, const QString &geoidModel)
{
    int width = nameWidth;
    if (!geoidModel.isEmpty())
        width += gap.size() + heightReference(geoidModel).size();
    for (const Column &column : columns())
        width += gap.size() + columnWidth(printer, column, geoidModel);
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
        titles += gap
                  + ruled(QString::fromLatin1(frame.title),
                          frameWidth(m_printer, frame.frame, m_geoidModel));
        for (int i = 0; i < componentsPerFrame; ++i) {
            const Column &column = columnOf(frame.frame, i);
            const int width = columnWidth(m_printer, column, m_geoidModel);
            labels += gap + rightAligned(QString::fromLatin1(column.label), width);
            units += gap + rightAligned(unitText(m_printer, column, m_geoidModel), width);
        }
    }
    if (!m_geoidModel.isEmpty())
        labels += gap + QLatin1String("above the");
    m_console.print(titles);
    m_console.print(labels);
    m_console.print(units);
}

void TableWriter::write(const QString &name, const Location &location, const QString &geoidModel)
{
    if (m_layout == Layout::Wide)
        writeWide(name, location, geoidModel);
    else
        writeNarrow(name, location, geoidModel);
    m_isFirst = false;
}

/// Without the blanks that stand for trailing zeros of the last number.
void TableWriter::printLine(QString line)
{
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    m_console.print(line);
}

void TableWriter::writeWide(const QString &name, const Location &location,
                            const QString &geoidModel)
{
    QString line;
    if (m_hasNames) {
        // A name that is too long stands in a line of its own, so that the numbers stay in theirs.
        if (name.size() > nameWidth)
            m_console.print(name);
        line = (name.size() > nameWidth ? QString() : name).leftJustified(nameWidth);
    }
    for (const Column &column : columns())
        line += gap
                + rightAligned(m_printer.cell(column, location),
                               columnWidth(m_printer, column, m_geoidModel));
    if (!m_geoidModel.isEmpty())
        line += gap + heightReference(geoidModel);
    printLine(line);
}

void TableWriter::writeNarrow(const QString &name, const Location &location,
                              const QString &geoidModel)
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
            const QString label =
                QStringLiteral("%1%2 [%3]")
                    .arg(isEllipsoidal(column, geoidModel) ? QStringLiteral("ell. ") : QString(),
                         QString::fromLatin1(column.label), m_printer.unit(column));
            const QString number = m_printer.cell(column, location);
            const int width = std::max({leastWidth, label.size(), number.size()});
            labels += gap + rightAligned(label, width);
            numbers += gap + rightAligned(number, width);
        }
        m_console.print(labels);
        printLine(numbers);
    }
    if (!geoidModel.isEmpty()) {
        constexpr int lineWidth = titleWidth + componentsPerFrame * (leastWidth + 2);
        m_console.print((QLatin1String("height above the ") + heightReference(geoidModel))
                            .rightJustified(lineWidth));
    }
}

} // namespace KelStd::cli
