#include <cli/vector/LayerRecords.h>

#include <cli/terminal/StandardStreams.h>
#include <cli/vector/FieldNames.h>

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/text/TextDecoder.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace KelStd::cli::vector {

namespace {

using positions::Frame;

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray shortest(double value)
{
    return QByteArray::number(value, 'f', QLocale::FloatingPointShortest);
}

/// A number that is not finite is none.
QByteArray textOf(double value)
{
    return std::isfinite(value) ? QByteArray::number(value, 'g', QLocale::FloatingPointShortest)
                                : QByteArray();
}

/// The first of the words by which the component is called in an input.
QByteArray headingOf(Frame frame, int component)
{
    return QByteArray(positions::columnOf(frame, component).headerWords).split(' ').first();
}

/// "1 feature has", "2 features have"
QString counted(qint64 count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

positions::ExtraColumn::Kind kindOf(FieldType type)
{
    switch (type) {
    case FieldType::Text: break;
    case FieldType::Integer: return positions::ExtraColumn::Kind::Integer;
    case FieldType::Real: return positions::ExtraColumn::Kind::Number;
    }
    return positions::ExtraColumn::Kind::Text;
}

void appendField(QByteArray &line, const QByteArray &field)
{
    if (!line.isEmpty())
        line += ',';
    positions::appendCsvField(line, viewOf(field));
}

} // namespace

LayerRecords::LayerRecords(LayerReader &reader, QString name, const LayerForm &form)
    : m_reader(reader), m_name(std::move(name)), m_form(form)
{
    QStringList fields;
    for (const Field &field : reader.layer().fields)
        fields += QString::fromStdString(field.name);
    m_isOwn = ownCoordinates(fields);
}

positions::InputColumns LayerRecords::columns() const
{
    positions::InputColumns columns;
    columns.hasNames = m_form.nameField >= 0;
    int index = 0;
    for (const Field &field : m_reader.layer().fields) {
        if (!isCarried(index++))
            continue;
        columns.extras.push_back({QString::fromStdString(field.name), kindOf(field.type)});
    }
    return columns;
}

bool LayerRecords::isStopped() const
{
    return m_stop != nullptr && m_stop->isMade();
}

std::optional<qint64> LayerRecords::size() const
{
    const long long features = m_reader.layer().features;
    return features >= 0 ? std::optional<qint64>(features) : std::nullopt;
}

QString LayerRecords::errorText() const
{
    return QString::fromStdString(m_reader.errorText());
}

RecordSource::Result LayerRecords::next(SourceRecord &record)
{
    Feature feature;
    LayerReader::Result result = LayerReader::Result::None;
    while (result == LayerReader::Result::None) {
        if (isStopped())
            return Result::End;
        result = m_reader.next(feature);
        ++m_done;
        if (result == LayerReader::Result::None)
            ++m_labels;
    }
    if (result == LayerReader::Result::Error)
        return Result::Error;
    if (result == LayerReader::Result::End)
        return Result::End;
    take(feature, record);
    return Result::Record;
}

void LayerRecords::take(const Feature &feature, SourceRecord &record)
{
    record.number = feature.id;
    record.failure = QString::fromStdString(feature.failure);
    int index = 0;
    for (const Value &value : feature.values) {
        QByteArray text;
        if (const auto *const words = std::get_if<std::string>(&value)) {
            text = QByteArray(words->data(), static_cast<int>(words->size()));
            if (!isUtf8(text.constData(), text.size())) {
                ++m_otherBytes;
                text = TextDecoder("windows-1252").decode(text).toUtf8();
            }
        } else if (const auto *const number = std::get_if<double>(&value)) {
            text = textOf(*number);
        } else if (const auto *const whole = std::get_if<long long>(&value)) {
            text = QByteArray::number(*whole);
        }
        if (index == m_form.nameField)
            record.name = text;
        else if (isCarried(index))
            record.extras.push_back(text);
        ++index;
    }
    if (record.failure.isEmpty())
        record.failure = placeOf(feature, record.position);
    record.source = sourceLine(feature, record);
}

/// Sets the position; or returns why there is none.
QString LayerRecords::placeOf(const Feature &feature, Pos &position)
{
    const bool isPlane = m_form.frame == Frame::LocalProjected;
    const bool isCartesian = m_form.frame == Frame::Wgs84Cartesian;
    if (feature.hasZ && !m_form.whyNoHeights.isEmpty())
        return m_form.whyNoHeights;
    double height = feature.z;
    if (!feature.hasZ) {
        if (isCartesian)
            return QStringLiteral("it has no Z");
        height = m_form.height.value_or(0.0);
        ++m_withoutHeight;
    }
    // In the order of the components, the northing before the easting.
    double values[] = {isPlane ? feature.y : feature.x, isPlane ? feature.x : feature.y, height};
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const positions::Column &column = positions::columnOf(m_form.frame, i);
        if (positions::isPlane(column))
            values[i] *= m_form.planeUnit;
        else if (!positions::isAngle(column))
            values[i] *= m_form.heightUnit;
        if (!(std::abs(values[i]) <= column.limit)) {
            return QStringLiteral("its %1 is %2, and none is beyond %3")
                .arg(QString::fromLatin1(column.label), QString::number(values[i], 'g', 12),
                     QString::number(column.limit));
        }
    }
    position = positions::rowOf(m_form.frame).position(values[0], values[1], values[2]);
    return {};
}

QByteArray LayerRecords::headerLine() const
{
    QByteArray line;
    QStringList names;
    if (m_form.nameField >= 0)
        names += QStringLiteral("point");
    for (int i = 0; i < positions::componentsPerFrame; ++i)
        names += QString::fromLatin1(headingOf(m_form.frame, i));
    for (const positions::ExtraColumn &extra : columns().extras) {
        QString name = extra.name;
        for (int number = 2; names.contains(name, Qt::CaseInsensitive); ++number)
            name = QStringLiteral("%1_%2").arg(extra.name).arg(number);
        names += name;
    }
    for (const QString &name : names)
        appendField(line, name.toUtf8());
    return line;
}

/// The feature as a line of text, in the units in which the program reads such lines.
QByteArray LayerRecords::sourceLine(const Feature &feature, const SourceRecord &record) const
{
    if (!m_form.keepsSource)
        return {};
    const bool isPlane = m_form.frame == Frame::LocalProjected;
    QByteArray line;
    const bool isPlaced = feature.failure.empty();
    const QByteArray x = isPlaced ? shortest(feature.x) : QByteArray();
    const QByteArray y = isPlaced ? shortest(feature.y) : QByteArray();
    const QByteArray z =
        !isPlaced ? QByteArray() : shortest(feature.hasZ ? feature.z : m_form.height.value_or(0.0));
    QList<QByteArray> fields = {isPlane ? y : x, isPlane ? x : y, z};
    if (m_form.nameField >= 0)
        fields.prepend(record.name);
    for (const QByteArray &extra : record.extras)
        fields += extra;
    for (int i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += ',';
        positions::appendCsvField(line, viewOf(fields[i]));
    }
    return line;
}

QStringList LayerRecords::remarks() const
{
    QStringList remarks;
    QStringList own;
    for (std::size_t i = 0; i < m_isOwn.size(); ++i) {
        if (m_isOwn[i])
            own += QString::fromStdString(m_reader.layer().fields[i].name);
    }
    if (!own.isEmpty()) {
        remarks += QStringLiteral("note: %1 of an earlier run and passed over: %2")
                       .arg(counted(own.size(), "field of the layer is a coordinate",
                                    "fields of the layer are coordinates"),
                            own.join(QLatin1String(", ")));
    }
    if (m_withoutHeight > 0) {
        const double height = m_form.height.value_or(0.0);
        remarks += QStringLiteral("note: %1 no height: %2 is taken")
                       .arg(counted(m_withoutHeight, "feature has", "features have"))
                       .arg(height == 0.0 ? QStringLiteral("0")
                                          : QString::number(height, 'g', 12) + QLatin1String(" m"));
    }
    if (m_labels > 0) {
        remarks +=
            QStringLiteral("note: %1")
                .arg(counted(m_labels, "text of the drawing is passed over, it is no position",
                             "texts of the drawing are passed over, they are no positions"));
    }
    if (m_otherBytes > 0) {
        remarks += QStringLiteral("note: %1 read as Windows-1252")
                       .arg(counted(m_otherBytes, "text of the layer is not UTF-8 and was",
                                    "texts of the layer are not UTF-8 and were"));
    }
    return remarks;
}

} // namespace KelStd::cli::vector
