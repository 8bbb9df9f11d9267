#include <cli/vector/LayerRecords.h>

#include <cli/terminal/StandardStreams.h>
#include <cli/vector/FieldNames.h>
#include <cli/vector/ShortestNumber.h>

#include <KelStd/text/TextDecoder.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace KelStd::cli::vector {

namespace {

using positions::Frame;

/// "1 feature has", "2 features have"
QString counted(qint64 count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

/// Whether a text is in the words of `positions::heightReference`.
bool isHeightReference(const QByteArray &text)
{
    return text == positions::heightReference({}).toUtf8() || text.startsWith("geoid ");
}

positions::ExtraColumn::Kind kindOf(FieldType type)
{
    switch (type) {
    case FieldType::Text: break;
    case FieldType::Integer: return positions::ExtraColumn::Kind::Integer;
    case FieldType::Real: return positions::ExtraColumn::Kind::Number;
    case FieldType::Boolean: return positions::ExtraColumn::Kind::Boolean;
    case FieldType::Date: return positions::ExtraColumn::Kind::Date;
    }
    return positions::ExtraColumn::Kind::Text;
}

/// Those that are neither the name nor `own`.
QStringList carriedNames(const QStringList &names, int nameField, const std::vector<bool> &own)
{
    QStringList carried;
    for (int i = 0; i < names.size(); ++i) {
        if (i != nameField && !own[static_cast<std::size_t>(i)])
            carried += names.at(i);
    }
    return carried;
}

} // namespace

LayerRecords::LayerRecords(LayerReader &reader, QString name, const LayerForm &form)
    : m_reader(reader), m_name(std::move(name)), m_form(form),
      m_isOwn(ownCoordinates(fieldNames(reader.layer()))),
      m_heightReferenceField(heightReferenceAmong(fieldNames(reader.layer()))),
      m_rejected(reader.layer(), form,
                 carriedNames(fieldNames(reader.layer()), form.nameField, m_isOwn),
                 !form.heightReference.isEmpty()
                     || (m_heightReferenceField >= 0
                         && m_isOwn[static_cast<std::size_t>(m_heightReferenceField)]))
{}

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
    while (result == LayerReader::Result::None || result == LayerReader::Result::OnPaper) {
        if (isStopped())
            return Result::End;
        result = m_reader.next(feature);
        ++m_done;
        if (result == LayerReader::Result::None)
            ++m_labels;
        if (result == LayerReader::Result::OnPaper)
            ++m_onPaper;
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
    const std::vector<Field> &fields = m_reader.layer().fields;
    for (std::size_t i = 0; i < feature.values.size() && i < fields.size(); ++i) {
        const int index = static_cast<int>(i);
        const QByteArray text = textOf(feature.values[i], fields[i].type);
        const auto *const number = std::get_if<double>(&feature.values[i]);
        if (index == m_form.nameField)
            record.name = number != nullptr && !text.isEmpty() ? shortestDecimal(*number) : text;
        else if (isCarried(index))
            record.extras.push_back(text);
        if (index == m_heightReferenceField && (m_isOwn[i] || isHeightReference(text)))
            record.heightReference = text;
    }
    if (record.heightReference.isEmpty() && feature.hasZ) {
        record.heightReference = m_form.heightReference.toUtf8();
        if (record.failure.isEmpty())
            record.failure = m_form.whyOtherHeights;
    }
    if (record.failure.isEmpty())
        record.failure = placeOf(feature, record.position);
    if (m_form.keepsSource)
        record.source = m_rejected.line(feature, record);
}

/// The value as it is carried; null for none.
QByteArray LayerRecords::textOf(const Value &value, FieldType type)
{
    if (const auto *const words = std::get_if<std::string>(&value)) {
        const QByteArray text(words->data(), static_cast<int>(words->size()));
        if (isUtf8(text.constData(), text.size()))
            return text;
        ++m_otherBytes;
        return TextDecoder("windows-1252").decode(text).toUtf8();
    }
    if (const auto *const number = std::get_if<double>(&value)) {
        constexpr double firstRounded = 9007199254740992.0; // 2^53, which the next one is read as
        if (std::isfinite(*number)) {
            m_manyDigits += std::abs(*number) >= firstRounded ? 1 : 0;
            return shortestNumber(*number);
        }
        ++m_notFinite;
        return {};
    }
    if (const auto *const whole = std::get_if<long long>(&value)) {
        if (type == FieldType::Boolean)
            return *whole != 0 ? "true" : "false";
        // What the layer's text or number beyond them was, nobody knows any more.
        using Limits = std::numeric_limits<long long>;
        if (*whole == Limits::max() || *whole == Limits::min()) {
            ++m_tooLarge;
            return {};
        }
        return QByteArray::number(*whole);
    }
    return {};
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
        height = m_form.height.value_or(0.0) / m_form.heightUnit;
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
    if (m_form.height && m_withoutHeight == 0) {
        remarks += QStringLiteral("warning: the height of --height is that of no feature: all have "
                                  "one of their own");
    }
    if (m_labels > 0) {
        remarks +=
            QStringLiteral("note: %1")
                .arg(counted(m_labels, "text of the drawing is passed over, it is no position",
                             "texts of the drawing are passed over, they are no positions"));
    }
    if (m_onPaper > 0) {
        remarks += QStringLiteral("note: %1")
                       .arg(counted(m_onPaper,
                                    "feature of the drawing is passed over: it is on a sheet of "
                                    "paper (group 67), not in the plane",
                                    "features of the drawing are passed over: they are on a sheet "
                                    "of paper (group 67), not in the plane"));
    }
    if (m_otherBytes > 0) {
        remarks += QStringLiteral("note: %1 read as Windows-1252")
                       .arg(counted(m_otherBytes, "text of the layer is not UTF-8 and was",
                                    "texts of the layer are not UTF-8 and were"));
    }
    if (!m_reader.warningText().empty()) {
        remarks += QStringLiteral("warning: reading %1: %2")
                       .arg(m_name, QString::fromStdString(m_reader.warningText()));
    }
    if (m_tooLarge > 0) {
        remarks +=
            QStringLiteral("warning: %1")
                .arg(counted(m_tooLarge, "whole number of the layer is too large and stays empty",
                             "whole numbers of the layer are too large and stay empty"));
    }
    if (m_manyDigits > 0) {
        remarks +=
            QStringLiteral("warning: %1, because the format has no whole numbers of so many digits")
                .arg(counted(m_manyDigits,
                             "number of the layer is of 2^53 or more and may be rounded",
                             "numbers of the layer are of 2^53 or more and may be rounded"));
    }
    if (m_notFinite > 0) {
        remarks +=
            QStringLiteral("note: %1")
                .arg(counted(m_notFinite, "number of the layer is not finite and stays empty",
                             "numbers of the layer are not finite and stay empty"));
    }
    return remarks;
}

} // namespace KelStd::cli::vector
