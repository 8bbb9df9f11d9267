#include <cli/vector/LayerOutput.h>

#include <cli/terminal/FilePath.h>
#include <cli/vector/FieldNames.h>
#include <cli/vector/LayerRow.h>

#include <KelStd/positions/AttributeColumns.h>
#include <KelStd/positions/Columns.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>

namespace KelStd::cli::vector {

namespace {

const std::string shapefile = "ESRI Shapefile";

/// A Shapefile has no truth values that all programs read.
FieldType typeOf(const positions::PrintedColumn &column, bool isShapefile)
{
    using Kind = positions::ExtraColumn::Kind;
    if (column.kind != positions::PrintedColumn::Kind::Extra)
        return column.isNumber ? FieldType::Real : FieldType::Text;
    switch (column.extraKind) {
    case Kind::Text: break;
    case Kind::Number: return FieldType::Real;
    case Kind::Integer: return FieldType::Integer;
    case Kind::Boolean: return isShapefile ? FieldType::Text : FieldType::Boolean;
    case Kind::Date: return FieldType::Date;
    }
    return FieldType::Text;
}

/// A height of 0 comes back from the ellipsoid as some 1e-10, of which GDAL 3.6 prints "E-10" as
/// "E-1".
double withoutNoise(double coordinate)
{
    constexpr double perUnit = 1e8;
    return std::abs(coordinate) < 1.0 ? std::round(coordinate * perUnit) / perUnit + 0.0
                                      : coordinate;
}

} // namespace

LayerOutput::LayerOutput(VectorFiles &files, const positions::LocationPrinter &printer,
                         positions::ColumnSelection selection, LayerPlan plan)
    : FeatureWriter(printer, std::move(selection)), m_files(files), m_plan(std::move(plan)),
      m_set(onDisk(m_plan.target))
{}

bool LayerOutput::open()
{
    return m_set.prepare(m_error);
}

QByteArray LayerOutput::begin(const positions::InputColumns &columns)
{
    using Kind = positions::PrintedColumn::Kind;
    QStringList names;
    const positions::PrintedColumns printed = printedColumns(columns);
    for (const positions::PrintedColumn &column : printed.all()) {
        if (column.kind == Kind::Name && !columns.hasNames)
            continue;
        m_columns.push_back(column);
        names += column.name;
    }
    const bool isShapefile = m_plan.format == shapefile;
    const QStringList held = isShapefile ? shapefileNames(names) : positions::numberedNames(names);
    const QString changed = changedNames(names, held);
    if (!changed.isEmpty()) {
        m_plan.notes.prepend(
            QStringLiteral("note: names of fields in %1: %2").arg(m_plan.target, changed));
    }
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_fields.push_back(
            {held.at(static_cast<int>(i)).toStdString(), typeOf(m_columns[i], isShapefile)});
    }
    const bool saysHeights =
        std::any_of(m_columns.begin(), m_columns.end(), [](const positions::PrintedColumn &each) {
            return each.kind == Kind::HeightReference;
        });
    if (isShapefile && !saysHeights && m_plan.heightReference != positions::heightReference({})) {
        m_plan.notes.prepend(
            QStringLiteral("warning: nothing in %1 says that its heights are above "
                           "the %2; the column %3 among --fields does")
                .arg(m_plan.target, m_plan.heightReference,
                     QLatin1String(positions::heightReferenceName)));
    }
    NewLayer layer;
    layer.path = m_set.path().toStdString();
    layer.format = m_plan.format;
    layer.name = QFileInfo(m_plan.target).completeBaseName().toStdString();
    layer.reference = m_plan.reference;
    layer.heightReference = m_plan.heightReference.toStdString();
    layer.fields = m_fields;
    std::string error;
    m_writer = m_files.create(layer, error);
    if (m_writer == nullptr)
        m_error = QString::fromStdString(error);
    return {};
}

void LayerOutput::write(QByteArray &bytes, const positions::PrintedPosition &position) const
{
    const Location &location = position.location;
    std::vector<QByteArray> texts;
    texts.reserve(m_columns.size());
    QByteArray buffer;
    for (const positions::PrintedColumn &column : m_columns) {
        const std::string_view text =
            positions::AttributeColumns::text(printer(), column, position, buffer);
        texts.push_back(positions::AttributeColumns::isValue(column, text)
                            ? QByteArray(text.data(), static_cast<int>(text.size()))
                            : QByteArray());
    }
    appendRow(bytes,
              {withoutNoise(location.get_NEH_E() / m_plan.planeUnit),
               withoutNoise(location.get_NEH_N() / m_plan.planeUnit),
               withoutNoise(location.get_NEH_H() / m_plan.heightUnit)},
              texts);
}

void LayerOutput::write(const QByteArray &bytes)
{
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    Feature feature;
    while (m_error.isEmpty() && takeRow(rest, m_fields, feature)) {
        ++m_rows;
        std::string error;
        if (!m_writer->add(feature, error)) {
            m_error =
                QStringLiteral("point %1 of it: %2").arg(m_rows).arg(QString::fromStdString(error));
        }
    }
}

bool LayerOutput::finish()
{
    std::string error;
    if (m_writer == nullptr || !m_writer->finish(error)) {
        m_error = QString::fromStdString(error);
        return false;
    }
    if (const long long rounded = m_writer->roundedNumbers(); rounded > 0) {
        m_plan.notes += QStringLiteral("note: numbers in %1 that are rounded to 15 decimals, which "
                                       "a Shapefile holds: %2")
                            .arg(m_plan.target)
                            .arg(rounded);
    }
    return m_set.commit(m_error);
}

} // namespace KelStd::cli::vector
