#include <KelStd/positions/AttributeColumns.h>

#include <KelStd/positions/Columns.h>

namespace KelStd::positions {

QStringList numberedNames(const QStringList &names)
{
    QStringList result;
    for (const QString &name : names) {
        QString unique = name;
        for (int number = 2; result.contains(unique, Qt::CaseInsensitive); ++number)
            unique = QStringLiteral("%1_%2").arg(name).arg(number);
        result += unique;
    }
    return result;
}

QStringList AttributeColumns::names() const
{
    QStringList all;
    for (const PrintedColumn &column : m_columns)
        all += column.name;
    return all;
}

void AttributeColumns::take(const PrintedColumns &columns)
{
    m_columns.clear();
    for (const PrintedColumn &column : columns.all()) {
        if (column.kind != PrintedColumn::Kind::Name)
            m_columns.push_back(column);
    }
}

bool AttributeColumns::isValue(const PrintedColumn &column, std::string_view text)
{
    const bool mayBeEmptyText =
        column.kind == PrintedColumn::Kind::Extra && column.extraKind == ExtraColumn::Kind::Text;
    return mayBeEmptyText ? text.data() != nullptr : !text.empty();
}

std::string_view AttributeColumns::text(const LocationPrinter &printer, const PrintedColumn &column,
                                        const PrintedPosition &position, QByteArray &buffer)
{
    const Location *const location = column.locationIn(position);
    if (location == nullptr)
        return PrintedColumns::text(column, position, buffer);
    buffer.clear();
    printer.append(buffer, *column.component(), *location);
    return {buffer.constData(), static_cast<std::size_t>(buffer.size())};
}

} // namespace KelStd::positions
