#include <cli/values/TableWriter.h>

#include <cli/terminal/ShownText.h>

#include <KelStd/positions/Columns.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

using positions::PrintedColumn;

/// A title in the middle of a rule.
QString ruled(const QString &title, int width)
{
    const auto dashes = width - title.size() - 2;
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

/// Numbers end below their labels, texts begin there.
QString aligned(const QString &text, const TableGroup &group, const TableColumn &column)
{
    return group.hasNumbers() ? text.rightJustified(column.width)
                              : text.leftJustified(column.width);
}

QString joined(const TableGroup &group, QString (*textOf)(const TableColumn &column))
{
    QStringList texts;
    for (const TableColumn &column : group.columns)
        texts += aligned(textOf(column), group, column);
    return texts.join(tableGap);
}

} // namespace

int TableWriter::wideWidth(const positions::LocationPrinter &printer, const QString &geoidModel,
                           const positions::ColumnSelection &selection)
{
    return widthOf(
        tableGroups(positions::PrintedColumns(printer, {}, selection), printer, geoidModel, true));
}

QString TableWriter::mistakeIn(const positions::InputColumns &columns) const
{
    return positions::PrintedColumns(m_printer, columns, m_selection).mistake();
}

QByteArray TableWriter::begin(const positions::InputColumns &columns)
{
    m_groups = tableGroups(positions::PrintedColumns(m_printer, columns, m_selection), m_printer,
                           m_geoidModel, columns.hasNames);
    return m_layout == Layout::Narrow ? QByteArray() : wideHeading();
}

QByteArray TableWriter::wideHeading() const
{
    // Without a column of names, the first column stands away from the border, too.
    const bool hasNames = !m_groups.empty() && m_groups.front().kind == TableGroup::Kind::Name;
    QStringList lines{QString(), QString(), QString()};
    for (const TableGroup &group : m_groups) {
        const QString gap = lines.at(0).isEmpty() && hasNames ? QString() : tableGap;
        const QString labels =
            joined(group, [](const TableColumn &column) { return column.label; });
        lines[0] += gap
                    + (group.title.isEmpty() ? QString(labels.size(), QLatin1Char(' '))
                                             : ruled(group.title, static_cast<int>(labels.size())));
        lines[1] += gap + labels;
        lines[2] += gap + joined(group, [](const TableColumn &column) { return column.unit; });
    }
    QByteArray heading;
    for (const QString &line : lines)
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

QString TableWriter::cell(const PrintedColumn &column,
                          const positions::PrintedPosition &position) const
{
    if (const Location *const location = column.locationIn(position))
        return m_printer.cell(*column.component(), *location);
    QByteArray buffer;
    // A line break would tear the row.
    return shown(fromUtf8(positions::PrintedColumns::text(column, position, buffer)));
}

void TableWriter::writeWide(QByteArray &bytes, const positions::PrintedPosition &position) const
{
    QString line;
    for (const TableGroup &group : m_groups) {
        for (const TableColumn &column : group.columns) {
            QString text = cell(column.column, position);
            if (&group == &m_groups.front() && group.kind == TableGroup::Kind::Name) {
                // A name that is too long stands in a line of its own, so that the numbers stay in
                // theirs.
                if (text.size() > column.width) {
                    appendLine(bytes, text);
                    text.clear();
                }
                line += aligned(text, group, column);
            } else {
                line += tableGap + aligned(text, group, column);
            }
        }
    }
    appendLine(bytes, line);
}

void TableWriter::writeNarrow(QByteArray &bytes, const positions::PrintedPosition &position) const
{
    constexpr int lineWidth = 78;
    for (const TableGroup &group : m_groups) {
        if (group.hasNumbers()) {
            writeNumbers(bytes, group, position);
            continue;
        }
        for (const TableColumn &column : group.columns) {
            const QString text = cell(column.column, position);
            if (&group == &m_groups.front() && group.kind == TableGroup::Kind::Name)
                appendLine(bytes, text);
            else if (group.kind != TableGroup::Kind::HeightReference)
                appendLine(bytes, tableGap + column.label + QLatin1String(": ") + text);
            else if (!position.geoidModel.isEmpty() || m_geoidModel.isEmpty())
                appendLine(bytes,
                           (QLatin1String("height above the ") + text).rightJustified(lineWidth));
        }
    }
}

/// A line of labels with their units, and one of numbers below it.
void TableWriter::writeNumbers(QByteArray &bytes, const TableGroup &group,
                               const positions::PrintedPosition &position) const
{
    constexpr int titleWidth = 18;
    const bool isFrame = group.kind == TableGroup::Kind::Frame;
    // 179°59′59.999999″W, and three of them fit 80 columns; four factors of nine decimals do, too.
    const int minWidth = isFrame ? 18 : 11;

    QString labels(titleWidth, QLatin1Char(' '));
    QString numbers = (tableGap + group.title).leftJustified(titleWidth);
    for (const TableColumn &column : group.columns) {
        QString label = column.label;
        QString unit = column.unit;
        if (isFrame) {
            unit = m_printer.unit(*column.column.component());
            if (isEllipsoidalHeight(column.column, position.geoidModel))
                label.prepend(QLatin1String("ell. "));
            else if (column.isAboveGeoid)
                label.prepend(QLatin1String("geoid "));
        }
        if (!unit.isEmpty())
            label += QLatin1String(" [") + unit + QLatin1Char(']');
        const QString number = cell(column.column, position);
        const int width =
            std::max({minWidth, static_cast<int>(label.size()), static_cast<int>(number.size())});
        labels += tableGap + label.rightJustified(width);
        numbers += tableGap + number.rightJustified(width);
    }
    appendLine(bytes, labels);
    appendLine(bytes, numbers);
}

} // namespace KelStd::cli
