#include <cli/values/TableWriter.h>

#include <KelStd/positions/Columns.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

constexpr int nameWidth = 16;
const QString gap = QStringLiteral("  ");

QString rightAligned(const QString &text, int width)
{
    return text.rightJustified(width);
}

bool isHeight(const positions::Column &column)
{
    return positions::columnOf(column.frame, positions::componentsPerFrame - 1).value
               == column.value
           && column.frame != positions::Frame::Wgs84Cartesian;
}

/// Every height is above the ellipsoid but the projected one with a geoid model.
bool isEllipsoidal(const positions::Column &column, const QString &geoidModel)
{
    return isHeight(column)
           && (column.frame != positions::Frame::LocalProjected || geoidModel.isEmpty());
}

/// The unit, and what a height is above where the values do not say it.
QString unitText(const positions::LocationPrinter &printer, const positions::Column &column,
                 const QString &geoidModel)
{
    const QString unit = printer.unit(column);
    return isEllipsoidal(column, geoidModel) ? unit + QLatin1String(" (ell.)") : unit;
}

int columnWidth(const positions::LocationPrinter &printer, const positions::Column &column,
                const QString &geoidModel)
{
    return std::max(printer.width(column), unitText(printer, column, geoidModel).size());
}

int frameWidth(const positions::LocationPrinter &printer, positions::Frame frame,
               const QString &geoidModel)
{
    int width = gap.size() * (positions::componentsPerFrame - 1);
    for (int i = 0; i < positions::componentsPerFrame; ++i)
        width += columnWidth(printer, positions::columnOf(frame, i), geoidModel);
    return width;
}

/// A title in the middle of a rule.
QString ruled(const QString &title, int width)
{
    const int dashes = width - title.size() - 2;
    return QString(dashes / 2, QLatin1Char('-')) + QLatin1Char(' ') + title + QLatin1Char(' ')
           + QString(dashes - dashes / 2, QLatin1Char('-'));
}

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// Without the blanks that stand for trailing zeros of the last number.
void appendLine(QByteArray &bytes, QString line)
{
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    bytes += line.toUtf8();
    bytes += '\n';
}

/// A field behind those of the location, below its heading.
QString furtherCell(const QString &text, const QString &heading)
{
    constexpr int minWidth = 8;
    return gap + text.leftJustified(std::max(minWidth, heading.size()));
}

} // namespace

/// Of the extra columns and, behind them, those that are carried through.
QString TableWriter::furtherText(const positions::PrintedPosition &position, int index) const
{
    const auto field = static_cast<std::size_t>(index);
    const std::size_t extras = m_columns.extras.size();
    return fromUtf8(field < extras ? position.extras[field] : position.carried[field - extras]);
}

int TableWriter::wideWidth(const positions::LocationPrinter &printer, const QString &geoidModel)
{
    int width = nameWidth;
    if (!geoidModel.isEmpty())
        width += gap.size() + positions::heightReference(geoidModel).size();
    for (const positions::Column &column : positions::columns())
        width += gap.size() + columnWidth(printer, column, geoidModel);
    return width;
}

QByteArray TableWriter::begin(const positions::InputColumns &columns)
{
    m_columns = columns;
    m_further.clear();
    for (const positions::ExtraColumn &extra : columns.extras)
        m_further += extra.name;
    m_further += columns.carried;
    if (m_layout == Layout::Narrow)
        return {};

    const QString indent = columns.hasNames ? QString(nameWidth, QLatin1Char(' ')) : QString();
    QString titles = indent;
    QString labels =
        columns.hasNames ? QStringLiteral("point").leftJustified(nameWidth) : QString();
    QString units = indent;
    for (const positions::FrameRow &frame : positions::frames()) {
        titles += gap
                  + ruled(QString::fromLatin1(frame.title),
                          frameWidth(m_printer, frame.frame, m_geoidModel));
        for (int i = 0; i < positions::componentsPerFrame; ++i) {
            const positions::Column &column = positions::columnOf(frame.frame, i);
            const int width = columnWidth(m_printer, column, m_geoidModel);
            labels += gap + rightAligned(QString::fromLatin1(column.label), width);
            units += gap + rightAligned(unitText(m_printer, column, m_geoidModel), width);
        }
    }
    if (!m_geoidModel.isEmpty())
        labels += gap
                  + QStringLiteral("above the")
                        .leftJustified(positions::heightReference(m_geoidModel).size());
    for (const QString &heading : m_further)
        labels += furtherCell(heading, heading);
    QByteArray heading;
    for (const QString &line : {titles, labels, units})
        appendLine(heading, line);
    return heading;
}

QByteArray TableWriter::separator() const
{
    return m_layout == Layout::Narrow ? QByteArray("\n") : QByteArray();
}

void TableWriter::write(QByteArray &bytes, const positions::PrintedPosition &position) const
{
    if (m_layout == Layout::Wide)
        writeWide(bytes, position);
    else
        writeNarrow(bytes, position);
}

void TableWriter::writeWide(QByteArray &bytes, const positions::PrintedPosition &position) const
{
    QString line;
    if (m_columns.hasNames) {
        // A name that is too long stands in a line of its own, so that the numbers stay in theirs.
        const QString name = fromUtf8(position.name);
        if (name.size() > nameWidth)
            appendLine(bytes, name);
        line = (name.size() > nameWidth ? QString() : name).leftJustified(nameWidth);
    }
    for (const positions::Column &column : positions::columns())
        line += gap
                + rightAligned(m_printer.cell(column, position.location),
                               columnWidth(m_printer, column, m_geoidModel));
    if (!m_geoidModel.isEmpty())
        line += gap
                + positions::heightReference(position.geoidModel)
                      .leftJustified(positions::heightReference(m_geoidModel).size());
    for (int i = 0; i < m_further.size(); ++i)
        line += furtherCell(furtherText(position, i), m_further.at(i));
    appendLine(bytes, line);
}

void TableWriter::writeNarrow(QByteArray &bytes, const positions::PrintedPosition &position) const
{
    constexpr int titleWidth = 18;
    constexpr int minWidth = 18; // 179°59′59.999999″W, and three of them fit 80 columns

    if (m_columns.hasNames)
        appendLine(bytes, fromUtf8(position.name));
    for (const positions::FrameRow &frame : positions::frames()) {
        QString labels(titleWidth, QLatin1Char(' '));
        QString numbers = (gap + QLatin1String(frame.title)).leftJustified(titleWidth);
        for (int i = 0; i < positions::componentsPerFrame; ++i) {
            const positions::Column &column = positions::columnOf(frame.frame, i);
            const QString label =
                QStringLiteral("%1%2 [%3]")
                    .arg(isEllipsoidal(column, position.geoidModel) ? QStringLiteral("ell. ")
                                                                    : QString(),
                         QString::fromLatin1(column.label), m_printer.unit(column));
            const QString number = m_printer.cell(column, position.location);
            const int width = std::max({minWidth, label.size(), number.size()});
            labels += gap + rightAligned(label, width);
            numbers += gap + rightAligned(number, width);
        }
        appendLine(bytes, labels);
        appendLine(bytes, numbers);
    }
    if (!position.geoidModel.isEmpty()) {
        constexpr int lineWidth = titleWidth + positions::componentsPerFrame * (minWidth + 2);
        appendLine(bytes, (QLatin1String("height above the ")
                           + positions::heightReference(position.geoidModel))
                              .rightJustified(lineWidth));
    }
    for (int i = 0; i < m_further.size(); ++i)
        appendLine(bytes, gap + m_further.at(i) + QLatin1String(": ") + furtherText(position, i));
}

} // namespace KelStd::cli
