#pragma once

#include <cli/run/RecordSource.h>
#include <cli/vector/RejectedFeatures.h>
#include <cli/vector/VectorFiles.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QString>

#include <optional>
#include <vector>

namespace KelStd::cli::vector {

/// How the features of a layer become positions.
struct LayerForm
{
    positions::Frame frame = positions::Frame::Wgs84Geographic;
    double planeUnit = 1.0;       ///< what one of the northings and eastings measures [m]
    double heightUnit = 1.0;      ///< the same of heights, and of X, Y, Z
    std::optional<double> height; ///< of features without one [m]
    QString heightReference;  ///< of features that do not say it themselves; empty where unknown
    QString whyOtherHeights;  ///< why one above that can not be taken; empty where it can
    QString whyNoHeights;     ///< why a height can not be taken; empty where it can
    int nameField = -1;       ///< the field of the names; -1 for none
    bool keepsSource = false; ///< whether features that fail are kept as lines
};

/// The features of a layer as positions. Their attributes are extra columns, but for coordinates
/// that the program itself wrote.
class LayerRecords : public RecordSource
{
public:
    /// `name`: what messages call the layer. `reader` must outlive it.
    LayerRecords(LayerReader &reader, QString name, const LayerForm &form);

    QString displayName() const override { return m_name; }
    QString item() const override { return QStringLiteral("feature"); }
    positions::InputColumns columns() const override;
    QByteArray headerLine() const override { return m_rejected.headerLine(); }
    void endAt(const streams::StopRequests *stop) override { m_stop = stop; }
    bool isStopped() const override;
    bool isReady() override { return true; }
    Result next(SourceRecord &record) override;
    QString errorText() const override;
    std::optional<qint64> size() const override;
    qint64 done() const override { return m_done; }
    QStringList remarks() const override;

private:
    void take(const Feature &feature, SourceRecord &record);
    QByteArray textOf(const Value &value, FieldType type);
    QString placeOf(const Feature &feature, Pos &position);

    bool isCarried(int field) const
    {
        return field != m_form.nameField && !m_isOwn[static_cast<std::size_t>(field)];
    }

    LayerReader &m_reader;
    QString m_name;
    LayerForm m_form;
    std::vector<bool> m_isOwn;       ///< fields that are passed over: coordinates of an earlier run
    int m_heightReferenceField = -1; ///< among them, what the height is above; -1 for none
    RejectedFeatures m_rejected;
    const streams::StopRequests *m_stop = nullptr;
    qint64 m_done = 0;
    qint64 m_labels = 0;
    qint64 m_onPaper = 0;
    qint64 m_withoutHeight = 0;
    qint64 m_otherBytes = 0; ///< texts that were not UTF-8
    qint64 m_tooLarge = 0;   ///< whole numbers
    qint64 m_notFinite = 0;  ///< numbers
    qint64 m_manyDigits = 0; ///< numbers that may be rounded ones
};

} // namespace KelStd::cli::vector
