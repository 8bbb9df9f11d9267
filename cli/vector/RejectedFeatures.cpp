#include <cli/vector/RejectedFeatures.h>

#include <cli/vector/LayerRecords.h>
#include <cli/vector/ShortestNumber.h>

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/UnitWords.h>

#include <cmath>
#include <string_view>

namespace KelStd::cli::vector {

namespace {

using positions::Frame;

QByteArray joined(const QList<QByteArray> &fields)
{
    QByteArray line;
    bool isFirst = true;
    for (const QByteArray &field : fields) {
        if (!isFirst)
            line += ',';
        isFirst = false;
        positions::appendCsvField(
            line, std::string_view(field.constData(), static_cast<std::size_t>(field.size())));
    }
    return line;
}

QByteArray wellKnownText(const Feature &feature)
{
    return "POINT Z (" + shortestDecimal(feature.x) + ' ' + shortestDecimal(feature.y) + ' '
           + shortestDecimal(feature.z) + ')';
}

} // namespace

RejectedFeatures::RejectedFeatures(const Layer &layer, const LayerForm &form, QStringList extras,
                                   bool saysReference)
    : m_frame(form.frame), m_hasNames(form.nameField >= 0),
      m_hasGeometries(layer.mayHaveOthers || !form.whyNoHeights.isEmpty()),
      m_readsHeights(form.whyNoHeights.isEmpty()),
      m_saysReference(saysReference && form.frame == Frame::LocalProjected),
      m_planeUnit(unitOf(form.planeUnit)), m_lengthUnit(unitOf(form.heightUnit)),
      m_extras(std::move(extras))
{}

/// The unit itself where it has a name that is read beside any frame, else metres.
RejectedFeatures::Unit RejectedFeatures::unitOf(double metres)
{
    constexpr double tolerance = 1e-9; // feet differ by two millionths
    for (const LengthUnit &unit : lengthUnits()) {
        const double known = CoordStringHelper::LengthRatio_otherToMeter(unit.unit);
        if (std::abs(known - metres) <= tolerance * metres)
            return {QString::fromLatin1(unit.symbol), 1.0};
    }
    return {QStringLiteral("m"), metres};
}

const RejectedFeatures::Unit &RejectedFeatures::unitOf(const positions::Column &column) const
{
    if (positions::isAngle(column))
        return m_angleUnit;
    return positions::isPlane(column) ? m_planeUnit : m_lengthUnit;
}

QByteArray RejectedFeatures::headerLine() const
{
    QStringList names;
    if (m_hasNames)
        names += QStringLiteral("point");
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const positions::Column &column = positions::columnOf(m_frame, i);
        names += positions::csvNameOf(column, unitOf(column).symbol);
    }
    if (m_saysReference)
        names += QString::fromLatin1(positions::heightReferenceName);
    QStringList others = m_extras;
    if (m_hasGeometries)
        others += QStringLiteral("geometry");
    for (const QString &heading : others) {
        QString name = heading;
        for (int number = 2; names.contains(name, Qt::CaseInsensitive); ++number)
            name = QStringLiteral("%1_%2").arg(heading).arg(number);
        names += name;
    }
    QList<QByteArray> fields;
    for (const QString &name : names)
        fields += name.toUtf8();
    return joined(fields);
}

QByteArray RejectedFeatures::line(const Feature &feature, const SourceRecord &record) const
{
    const bool isPlane = m_frame == Frame::LocalProjected;
    const bool isPlaced = feature.failure.empty();
    const bool hasHeight = isPlaced && feature.hasZ && m_readsHeights;
    const double values[] = {isPlane ? feature.y : feature.x, isPlane ? feature.x : feature.y,
                             feature.z};
    QList<QByteArray> fields;
    if (m_hasNames)
        fields += record.name;
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const Unit &unit = unitOf(positions::columnOf(m_frame, i));
        const bool isKnown = i + 1 < positions::componentsPerFrame ? isPlaced : hasHeight;
        fields += isKnown ? shortestDecimal(values[i] * unit.factor) : QByteArray();
    }
    if (m_saysReference)
        fields += record.heightReference;
    for (const QByteArray &extra : record.extras)
        fields += extra;
    if (m_hasGeometries) {
        const bool isHeightLost = isPlaced && feature.hasZ && !m_readsHeights;
        fields +=
            isHeightLost ? wellKnownText(feature) : QByteArray::fromStdString(feature.geometry);
    }
    return joined(fields);
}

} // namespace KelStd::cli::vector
