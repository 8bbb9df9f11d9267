#include <KelStd/positions/PrintedColumns.h>

#include <KelStd/positions/Columns.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

PrintedColumns::PrintedColumns(const LocationPrinter &printer, const InputColumns &input)
{
    using Kind = PrintedColumn::Kind;
    const auto isTaken = [this](const QString &name) {
        return std::any_of(m_columns.begin(), m_columns.end(),
                           [&name](const PrintedColumn &column) { return column.name == name; });
    };
    const auto add = [&](Kind kind, std::size_t index, const QString &heading, bool isNumber) {
        QString name = heading;
        for (int number = 2; isTaken(name); ++number)
            name = QStringLiteral("%1_%2").arg(heading).arg(number);
        m_columns.push_back({kind, index, name, isNumber});
    };
    add(Kind::Name, 0, QStringLiteral("point"), false);
    for (std::size_t i = 0; i < columnCount; ++i) {
        const Column &column = columns()[i];
        add(Kind::Component, i, printer.csvName(column), printer.printsNumbers(column));
    }
    add(Kind::HeightReference, 0, QStringLiteral("local_height_reference"), false);
    for (std::size_t i = 0; i < input.extras.size(); ++i) {
        add(Kind::Extra, i, input.extras[i].name,
            input.extras[i].kind == ExtraColumn::Kind::Number);
    }
    for (int i = 0; i < input.carried.size(); ++i)
        add(Kind::Carried, static_cast<std::size_t>(i), input.carried.at(i), false);
}

std::string_view PrintedColumns::text(const PrintedColumn &column, const PrintedPosition &position,
                                      QByteArray &buffer)
{
    static const QByteArray ellipsoid = heightReference({}).toUtf8();
    switch (column.kind) {
    case PrintedColumn::Kind::Name: return position.name;
    case PrintedColumn::Kind::HeightReference:
        if (position.geoidModel.isEmpty())
            return viewOf(ellipsoid);
        buffer = heightReference(position.geoidModel).toUtf8();
        return viewOf(buffer);
    case PrintedColumn::Kind::Extra: return position.extras[column.index];
    case PrintedColumn::Kind::Carried: return position.carried[column.index];
    case PrintedColumn::Kind::Component: break;
    }
    return {};
}

} // namespace KelStd::positions
