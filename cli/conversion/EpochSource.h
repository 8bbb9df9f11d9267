#pragma once

#include <cli/run/Input.h>
#include <cli/run/InputText.h>
#include <cli/run/RecordSource.h>

#include <KelStd/nmea/EpochCombiner.h>

#include <QtCore/QtGlobal>

#include <cstddef>
#include <optional>
#include <vector>

namespace KelStd::cli {

/// The positions of a receiver's NMEA 0183, an epoch each, from a file or as they come. An epoch is
/// given when the next one begins, and when nothing has come for a while.
class EpochSource : public RecordSource
{
public:
    /// What a point is called.
    enum class Names
    {
        Number, ///< of its epoch, from 1
        Utc
    };

    /// Several inputs are read one behind the other, as a receiver's log of each hour.
    EpochSource(std::vector<Input *> inputs, Names names);

    /// The columns that stand behind the frames.
    static QStringList columnNames();

    QString displayName() const override { return input().displayName(); }
    QString item() const override { return QStringLiteral("line"); }
    positions::InputColumns columns() const override;
    void endAt(const streams::StopRequests *stop) override;
    bool isStopped() const override { return input().isStopped(); }
    bool isReady() override;
    Result next(SourceRecord &record) override;
    QString errorText() const override { return m_error; }
    std::optional<qint64> size() const override;
    qint64 done() const override { return m_readBytes; }
    bool isLive() const override { return m_isLive; }
    QStringList remarks() const override;

    /// Whether sentences were broken, positions of one time contradicted each other, or there was
    /// input without any that can be used: positions may be missing.
    bool hasLosses() const;

private:
    void read();
    void feed();
    void look();
    SourceRecord recordOf(const nmea::ReceiverEpoch &epoch);
    void count(const nmea::ReceiverEpoch &epoch);
    Input &input() const { return *m_inputs[m_current]; }
    QStringList inputRemarks() const;
    void beginNextInput();

    std::vector<Input *> m_inputs;
    std::size_t m_current = 0;
    Names m_names;
    bool m_isLive;
    nmea::EpochCombiner m_combiner;
    InputText m_text{InputText::LoneReturns::AreKept}; ///< of the current input
    QByteArray m_piece;                                ///< read and not yet given to the combiner
    bool m_isUtf16 = false;                            ///< the current input, without a mark
    std::optional<nmea::ReceiverEpoch> m_next;
    bool m_isInputAtEnd = false;
    bool m_isAtEnd = false;
    QString m_error;
    qint64 m_readBytes = 0;
    qint64 m_bytesOfInput = 0;
    qint64 m_epochsOfInput = 0; ///< that were given
    QStringList m_remarks;      ///< on the inputs before
    bool m_hasLosses = false;   ///< in the inputs before
    qint64 m_withoutTime = 0;   ///< epochs without a date or a time of day
    qint64 m_ofDoubtfulQuality = 0;
    qint64 m_beyondLeapSeconds = 0; ///< later than the table of leap seconds is known to be whole
};

} // namespace KelStd::cli
