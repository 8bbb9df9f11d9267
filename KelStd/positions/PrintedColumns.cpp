#include <KelStd/positions/PrintedColumns.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/OtherColumns.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/text/NearNames.h>

#include <algorithm>
#include <iterator>

namespace KelStd::positions {

namespace {

using Kind = PrintedColumn::Kind;

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// The name without the unit, of a column that has one; otherwise empty.
QString nameWithoutUnit(const PrintedColumn &column)
{
    if (const Column *const component = column.component())
        return QString::fromLatin1(component->csvName);
    if (column.kind == Kind::Factor)
        return QString::fromLatin1(factorColumns()[column.index].csvName);
    return {};
}

template <typename Is>
const PrintedColumn *findIf(const std::vector<PrintedColumn> &columns, Is is)
{
    const auto found = std::find_if(columns.begin(), columns.end(), is);
    return found != columns.end() ? &*found : nullptr;
}

const PrintedColumn *findExact(const std::vector<PrintedColumn> &columns, const QString &name)
{
    return findIf(columns, [&](const PrintedColumn &each) { return each.name == name; });
}

/// The column of this name, or else the one of this name without its unit; null for none.
const PrintedColumn *find(const std::vector<PrintedColumn> &columns, const QString &name)
{
    const PrintedColumn *const exact = findExact(columns, name);
    return exact != nullptr ? exact : findIf(columns, [&](const PrintedColumn &each) {
        return nameWithoutUnit(each) == name;
    });
}

QString namesOf(const std::vector<PrintedColumn> &columns)
{
    QStringList names;
    for (const PrintedColumn &each : columns)
        names += each.name;
    return names.join(QLatin1String(", "));
}

/// "did you mean local_northing? There are": what stands before the list of the columns.
QString beforeNames(const QString &given, const std::vector<PrintedColumn> &columns)
{
    QStringList names;
    for (const PrintedColumn &each : columns) {
        const QString name = nameWithoutUnit(each);
        names += name.isEmpty() ? each.name : name;
    }
    QStringList near = nearNames(given, names);
    if (near.isEmpty() && isNameWord(normalisedHeading(given)))
        near += QStringLiteral("point");
    return near.isEmpty() ? QStringLiteral("there are")
                          : hintAt(near) + QStringLiteral(" There are");
}

/// Adds a column, with a number behind the name where that is taken.
void add(std::vector<PrintedColumn> &columns, PrintedColumn column)
{
    const QString heading = column.name;
    for (int number = 2; findExact(columns, column.name) != nullptr; ++number)
        column.name = QStringLiteral("%1_%2").arg(heading).arg(number);
    columns.push_back(std::move(column));
}

/// All that may be selected.
std::vector<PrintedColumn> everyColumn(const LocationPrinter &printer, const InputColumns &input,
                                       SiteKind site)
{
    std::vector<PrintedColumn> all;
    add(all, {Kind::Name, 0, QStringLiteral("point"), false});
    for (std::size_t i = 0; i < columnCount; ++i) {
        const Column &column = columns()[i];
        add(all, {Kind::Component, i, printer.csvName(column), printer.printsNumbers(column)});
    }
    add(all, {Kind::HeightReference, 0, QString::fromLatin1(heightReferenceName), false});
    for (std::size_t i = 0; i < siteColumns().size() && site != SiteKind::None; ++i) {
        const Column &column = siteColumns()[i];
        PrintedColumn printed{Kind::Site, i, printer.csvName(column),
                              printer.printsNumbers(column)};
        printed.isFitted = site == SiteKind::Heights && i + 1 == siteColumns().size();
        add(all, printed);
    }
    for (std::size_t i = 0; i < factorCount; ++i)
        add(all, {Kind::Factor, i, nameOf(factorColumns()[i]), true});
    for (std::size_t i = 0; i < input.extras.size(); ++i) {
        const ExtraColumn &extra = input.extras[i];
        const bool isNumber =
            extra.kind == ExtraColumn::Kind::Number || extra.kind == ExtraColumn::Kind::Integer;
        add(all, {Kind::Extra, i, extra.name, isNumber, extra.width, extra.kind});
    }
    for (int i = 0; i < input.carried.size(); ++i)
        add(all, {Kind::Carried, static_cast<std::size_t>(i), input.carried.at(i), false});
    return all;
}

} // namespace

const Column *PrintedColumn::component() const
{
    if (kind == Kind::Component)
        return &columns()[index];
    return kind == Kind::Site ? &siteColumns()[index] : nullptr;
}

const Location *PrintedColumn::locationIn(const PrintedPosition &position) const
{
    if (kind == Kind::Component)
        return &position.location;
    const bool isKnown =
        kind == Kind::Site && position.site != nullptr && (position.site->hasHeight || !isFitted);
    return isKnown ? &position.site->location : nullptr;
}

PrintedColumns::PrintedColumns(const LocationPrinter &printer, const InputColumns &columns,
                               const ColumnSelection &selection)
    : m_areNamed(!selection.fields.isEmpty())
{
    const std::vector<PrintedColumn> all = everyColumn(printer, columns, selection.site);
    if (m_areNamed)
        takeNamed(all, selection.fields);
    else
        takeFrames(all, selection);
}

/// The frames, and what belongs to every location in front of them and behind.
void PrintedColumns::takeFrames(const std::vector<PrintedColumn> &all,
                                const ColumnSelection &selection)
{
    const auto takeIf = [&](auto isTaken) {
        std::copy_if(all.begin(), all.end(), std::back_inserter(m_columns), isTaken);
    };
    const auto takeKind = [&](Kind kind) {
        takeIf([kind](const PrintedColumn &each) { return each.kind == kind; });
    };
    const auto takeFrame = [&](FrameOrSite frame) {
        takeIf([frame](const PrintedColumn &each) {
            return frame ? each.kind == Kind::Component && columns()[each.index].frame == *frame
                         : each.kind == Kind::Site;
        });
    };
    takeKind(Kind::Name);
    const auto &frames = selection.frames;
    if (frames.empty())
        takeKind(Kind::Component);
    std::for_each(frames.begin(), frames.end(), takeFrame);
    const bool hasProjected =
        std::find(frames.begin(), frames.end(), FrameOrSite(Frame::LocalProjected)) != frames.end();
    const bool hasProjectedHeight =
        hasProjected || (selection.namesSite() && selection.site == SiteKind::Plane);
    if (frames.empty() || hasProjectedHeight)
        takeKind(Kind::HeightReference);
    if (frames.empty())
        takeKind(Kind::Site);
    if (selection.hasFactors)
        takeKind(Kind::Factor);
    takeKind(Kind::Extra);
    takeKind(Kind::Carried);
}

void PrintedColumns::takeNamed(const std::vector<PrintedColumn> &all, const QStringList &fields)
{
    for (const QString &field : fields) {
        const PrintedColumn *const column = find(all, field);
        QString mistake;
        if (column == nullptr)
            mistake = QStringLiteral("'%1' is no column; %2 %3")
                          .arg(field, beforeNames(field, all), namesOf(all));
        else if (findExact(m_columns, column->name) != nullptr)
            mistake = QStringLiteral("'%1' names the column %2 again").arg(field, column->name);
        else
            m_columns.push_back(*column);
        if (m_mistake.isEmpty())
            m_mistake = mistake;
    }
}

std::string_view PrintedColumns::text(const PrintedColumn &column, const PrintedPosition &position,
                                      QByteArray &buffer)
{
    static const QByteArray ellipsoid = heightReference({}).toUtf8();
    switch (column.kind) {
    case Kind::Name: return position.name;
    case Kind::HeightReference:
        if (position.geoidModel.isEmpty())
            return viewOf(ellipsoid);
        buffer = heightReference(position.geoidModel).toUtf8();
        return viewOf(buffer);
    case Kind::Factor: {
        const FactorColumn &factor = factorColumns()[column.index];
        buffer.clear();
        if (position.factors != nullptr && (position.factors->*factor.value).has_value())
            appendNumber(buffer, *(position.factors->*factor.value), factor.decimals);
        return viewOf(buffer);
    }
    case Kind::Extra: return position.extras[column.index];
    case Kind::Carried: return position.carried[column.index];
    case Kind::Component:
    case Kind::Site: break;
    }
    return {};
}

} // namespace KelStd::positions
