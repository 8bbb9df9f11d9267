#include <cli/vector/LayerOutput.h>

#include <cli/terminal/FilePath.h>
#include <cli/vector/FieldNames.h>
#include <cli/vector/LayerRow.h>

#include <KelStd/positions/AttributeColumns.h>
#include <KelStd/positions/Columns.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli::vector {

namespace {

const std::string shapefile = "ESRI Shapefile";

FieldType typeOf(const positions::PrintedColumn &column)
{
    if (!column.isNumber)
        return FieldType::Text;
    return column.isWhole ? FieldType::Integer : FieldType::Real;
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
        m_fields.push_back({held.at(static_cast<int>(i)).toStdString(), typeOf(m_columns[i])});
    }
    NewLayer layer;
    layer.path = m_set.path().toStdString();
    layer.format = m_plan.format;
    layer.name = QFileInfo(m_plan.target).completeBaseName().toStdString();
    layer.reference = m_plan.reference;
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
        texts.emplace_back(text.data(), static_cast<int>(text.size()));
    }
    appendRow(bytes,
              {location.get_NEH_E() / m_plan.planeUnit, location.get_NEH_N() / m_plan.planeUnit,
               location.get_NEH_H() / m_plan.heightUnit},
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
    return m_set.commit(m_error);
}

} // namespace KelStd::cli::vector
