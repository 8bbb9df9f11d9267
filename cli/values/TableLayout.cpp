#include <cli/values/TableLayout.h>

#include <cli/terminal/ShownText.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/FactorColumns.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

using positions::PrintedColumn;
using Kind = TableGroup::Kind;

constexpr int nameWidth = 16;
constexpr int furtherWidth = 8;

bool isHeight(const positions::Column &column)
{
    return positions::columnOf(column.frame, positions::componentsPerFrame - 1).value
               == column.value
           && column.frame != positions::Frame::Wgs84Cartesian;
}

TableColumn componentColumn(const PrintedColumn &column, const positions::LocationPrinter &printer,
                            const QString &geoidModel)
{
    const positions::Column &component = *column.component();
    QString unit = printer.unit(component);
    if (isEllipsoidalHeight(column, geoidModel))
        unit += QLatin1String(" (ell.)");
    return {column, QString::fromLatin1(component.label), unit,
            std::max(printer.width(component), static_cast<int>(unit.size()))};
}

TableColumn factorColumn(const PrintedColumn &column)
{
    const positions::FactorColumn &factor = positions::factorColumns()[column.index];
    const QString label = QString::fromLatin1(factor.label);
    const int digits = factor.integerWidth + 1 + factor.decimals;
    return {column, label, QString::fromLatin1(factor.unit),
            std::max(digits, static_cast<int>(label.size()))};
}

TableGroup groupOf(const PrintedColumn &column, const positions::LocationPrinter &printer,
                   const QString &geoidModel)
{
    switch (column.kind) {
    case PrintedColumn::Kind::Name: return {Kind::Name, {}, {{column, column.name, {}, nameWidth}}};
    case PrintedColumn::Kind::Component: {
        const auto frame = positions::columns()[column.index].frame;
        return {Kind::Frame,
                QString::fromLatin1(positions::rowOf(frame).title),
                {componentColumn(column, printer, geoidModel)}};
    }
    case PrintedColumn::Kind::Site:
        return {Kind::Frame,
                QStringLiteral("at the site"),
                {componentColumn(column, printer, geoidModel)}};
    case PrintedColumn::Kind::HeightReference: {
        const QString label = QStringLiteral("above the");
        const int width = static_cast<int>(positions::heightReference(geoidModel).size());
        return {Kind::HeightReference, {}, {{column, label, {}, width}}};
    }
    case PrintedColumn::Kind::Factor:
        return {Kind::Factors, QStringLiteral("factors"), {factorColumn(column)}};
    case PrintedColumn::Kind::Extra:
    case PrintedColumn::Kind::Carried: break;
    }
    const QString label = shown(column.name);
    return {Kind::Further,
            {},
            {{column,
              label,
              {},
              std::max({furtherWidth, column.width, static_cast<int>(label.size())})}}};
}

int widthOf(const TableGroup &group)
{
    int width = static_cast<int>(tableGap.size()) * (static_cast<int>(group.columns.size()) - 1);
    for (const TableColumn &column : group.columns)
        width += column.width;
    return width;
}

/// Gives the title room, with a dash and a blank on both sides.
void widenToTitle(TableGroup &group)
{
    constexpr int frill = 4;
    if (!group.title.isEmpty())
        group.columns.back().width +=
            std::max(0, static_cast<int>(group.title.size()) + frill - widthOf(group));
}

/// Where columns were asked for by their names, that of what heights are above may be missing.
void sayGeoid(std::vector<TableGroup> &groups, const positions::PrintedColumns &columns,
              const QString &geoidModel)
{
    const bool isSaid =
        std::any_of(columns.all().begin(), columns.all().end(), [](const PrintedColumn &column) {
            return column.kind == PrintedColumn::Kind::HeightReference;
        });
    if (geoidModel.isEmpty() || isSaid)
        return;
    for (TableGroup &group : groups) {
        for (TableColumn &each : group.columns) {
            const positions::Column *const component = each.column.component();
            each.isAboveGeoid = component != nullptr && isHeight(*component)
                                && component->frame == positions::Frame::LocalProjected
                                && !each.column.isFitted;
            if (!each.isAboveGeoid)
                continue;
            each.unit += QLatin1String(" (geoid)");
            each.width = std::max(each.width, static_cast<int>(each.unit.size()));
        }
    }
}

} // namespace

bool isEllipsoidalHeight(const positions::PrintedColumn &column, const QString &geoidModel)
{
    const positions::Column *const component = column.component();
    return component != nullptr && isHeight(*component) && !column.isFitted
           && (component->frame != positions::Frame::LocalProjected || geoidModel.isEmpty());
}

std::vector<TableGroup> tableGroups(const positions::PrintedColumns &columns,
                                    const positions::LocationPrinter &printer,
                                    const QString &geoidModel, bool hasNames)
{
    std::vector<TableGroup> groups;
    for (const PrintedColumn &column : columns.all()) {
        const bool isSaidElsewhere =
            (column.kind == PrintedColumn::Kind::Name && !hasNames)
            || (column.kind == PrintedColumn::Kind::HeightReference && geoidModel.isEmpty());
        if (isSaidElsewhere && !columns.areNamed())
            continue;
        TableGroup group = groupOf(column, printer, geoidModel);
        const bool isContinued = !groups.empty() && groups.back().kind == group.kind
                                 && groups.back().title == group.title;
        if (isContinued)
            groups.back().columns.push_back(group.columns.front());
        else
            groups.push_back(group);
    }
    sayGeoid(groups, columns, geoidModel);
    std::for_each(groups.begin(), groups.end(), widenToTitle);
    return groups;
}

int widthOf(const std::vector<TableGroup> &groups)
{
    int width = 0;
    for (const TableGroup &group : groups)
        width += widthOf(group) + (width > 0 ? static_cast<int>(tableGap.size()) : 0);
    return width;
}

} // namespace KelStd::cli
