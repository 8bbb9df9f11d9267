#include <cli/conversion/EpochSource.h>

#include <cli/terminal/StandardStreams.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/time/LeapSecondTable.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace KelStd::cli {

namespace {

using positions::ExtraColumn;

/// How long a receiver is silent between two epochs: at 1 Hz and more it sends what belongs
/// together with smaller gaps.
constexpr int silence = 300; // [ms]

QByteArray numberOf(const std::optional<int> &number)
{
    return number ? QByteArray::number(*number) : QByteArray();
}

QByteArray textOf(const std::optional<nmea::Decimal> &number)
{
    return number ? number->text : QByteArray();
}

struct EpochColumn
{
    const char *name;
    ExtraColumn::Kind kind;
    int width; ///< in a table, where its name is shorter
    /// Empty where the receiver did not say.
    QByteArray (*value)(const nmea::ReceiverEpoch &epoch);
};

using Epoch = nmea::ReceiverEpoch;

constexpr EpochColumn epochColumns[] = {
    {"utc", ExtraColumn::Kind::Text, 24, [](const Epoch &epoch) { return epoch.utc(); }},
    {"gps_week", ExtraColumn::Kind::Integer, 0,
     [](const Epoch &epoch) {
         const auto gps = epoch.gps();
         return gps ? QByteArray::number(gps->week) : QByteArray();
     }},
    {"gps_seconds", ExtraColumn::Kind::Number, 0,
     [](const Epoch &epoch) {
         const auto gps = epoch.gps();
         return gps ? gps->seconds : QByteArray();
     }},
    {"quality", ExtraColumn::Kind::Integer, 0,
     [](const Epoch &epoch) { return numberOf(epoch.position.quality); }},
    {"satellites", ExtraColumn::Kind::Integer, 0,
     [](const Epoch &epoch) { return numberOf(epoch.position.satellites); }},
    {"hdop", ExtraColumn::Kind::Number, 0,
     [](const Epoch &epoch) { return textOf(epoch.position.hdop); }},
    {"undulation_m", ExtraColumn::Kind::Number, 0,
     [](const Epoch &epoch) { return textOf(epoch.position.undulation); }},
    {"sd_latitude_m", ExtraColumn::Kind::Number, 0,
     [](const Epoch &epoch) { return textOf(epoch.sdLatitude); }},
    {"sd_longitude_m", ExtraColumn::Kind::Number, 0,
     [](const Epoch &epoch) { return textOf(epoch.sdLongitude); }},
    {"sd_height_m", ExtraColumn::Kind::Number, 0,
     [](const Epoch &epoch) { return textOf(epoch.sdHeight); }},
};

/// "3 sentences", "1 sentence"
QString counted(qint64 count, const char *one, const char *several)
{
    return QStringLiteral("%1 %2").arg(count).arg(QString::fromLatin1(count == 1 ? one : several));
}

/// Whether an input that begins so is UTF-16 without a byte-order mark.
bool hasUtf16Zeros(const QByteArray &bytes)
{
    constexpr int twoCharacters = 4;
    return bytes.size() >= twoCharacters
           && ((bytes.at(0) == '\0' && bytes.at(2) == '\0')
               || (bytes.at(1) == '\0' && bytes.at(3) == '\0'));
}

/// What is said of sentences that were not used. %1 how many, %2 where the first is, %3 its reason.
struct SentenceRemark
{
    nmea::SentenceCount nmea::SentenceTally::*count;
    const char *text;
};

constexpr SentenceRemark sentenceRemarks[] = {
    {&nmea::SentenceTally::noChecksum,
     "warning: broken: %1 without a checksum, the first in line %2; nothing of them was used"},
    {&nmea::SentenceTally::badChecksum,
     "warning: broken: %1 with a wrong checksum, the first in line %2; nothing of them was used"},
    {&nmea::SentenceTally::textBehind,
     "warning: broken: %1 with text behind the checksum, the first in line %2; nothing of them was "
     "used"},
    {&nmea::SentenceTally::malformed,
     "warning: broken: %1 with a field that cannot be, the first in line %2 (%3); nothing of "
     "them was used"},
    {&nmea::SentenceTally::late,
     "warning: late: %1 of an epoch that had ended before, not used; the first in line %2"},
    {&nmea::SentenceTally::contradicting,
     "warning: contradicting: %1 with another position of the same time, the first in line %2; "
     "one position of each time was taken, that of the best quality, and where the times lack "
     "decimals the others are lost"},
    {&nmea::SentenceTally::otherDate,
     "warning: dates: %1 with one that contradicts another or the time, the first of the epoch in "
     "line %2 (%3)"},
    {&nmea::SentenceTally::otherDatum,
     "warning: %1 (DTM) naming another datum of the positions than WGS84, the first in line %2 "
     "(\"%3\"); they were taken as WGS84 all the same"},
};

} // namespace

QStringList EpochSource::columnNames()
{
    QStringList names;
    for (const EpochColumn &column : epochColumns)
        names += QString::fromLatin1(column.name);
    return names;
}

EpochSource::EpochSource(std::vector<Input *> inputs, Names names)
    : m_inputs(std::move(inputs)), m_names(names), m_isLive(!size()),
      m_combiner(m_isLive ? nmea::EpochCombiner::Order::InTurn
                          : nmea::EpochCombiner::Order::MayInterleave)
{}

positions::InputColumns EpochSource::columns() const
{
    positions::InputColumns columns;
    columns.hasNames = true;
    for (const EpochColumn &column : epochColumns)
        columns.extras.push_back({QString::fromLatin1(column.name), column.kind, column.width});
    return columns;
}

/// Nothing where one of them is no file.
std::optional<qint64> EpochSource::size() const
{
    qint64 sum = 0;
    for (const Input *each : m_inputs) {
        const auto size = each->size();
        if (!size)
            return std::nullopt;
        sum += *size;
    }
    return sum;
}

void EpochSource::endAt(const streams::StopRequests *stop)
{
    for (Input *each : m_inputs)
        each->endAt(stop);
}

void EpochSource::beginNextInput()
{
    m_remarks += inputRemarks();
    m_hasLosses = hasLosses();
    m_combiner.beginInput();
    ++m_current;
    m_isInputAtEnd = false;
    m_bytesOfInput = 0;
    m_epochsOfInput = 0;
    m_text = InputText(InputText::LoneReturns::AreKept);
    m_isUtf16 = false;
}

void EpochSource::read()
{
    if (m_isInputAtEnd)
        beginNextInput();
    constexpr int pieceSize = 1 << 16;
    const int kept = static_cast<int>(m_piece.size());
    m_piece.resize(kept + pieceSize);
    const qint64 count = input().read(m_piece.data() + kept, pieceSize);
    m_piece.truncate(kept + static_cast<int>(std::max<qint64>(count, 0)));
    if (m_bytesOfInput == 0)
        m_isUtf16 = hasUtf16Zeros(m_piece);
    m_text.normalise(m_piece, kept, count <= 0);
    if (count > 0) {
        m_readBytes += count;
        m_bytesOfInput += count;
        if (m_text.knowsEncoding())
            feed();
        return;
    }
    feed();
    if (count < 0)
        m_error = streams::lastErrorText();
    m_isInputAtEnd = true;
    m_isAtEnd = count < 0 || input().isStopped() || m_current + 1 == m_inputs.size();
    // What was read of a sentence before a stop was requested is none.
    if (input().isStopped())
        m_combiner.abandon();
    else
        m_combiner.finish();
}

/// Gives the combiner what was read.
void EpochSource::feed()
{
    m_combiner.feed({m_piece.constData(), static_cast<std::size_t>(m_piece.size())});
    m_piece.clear();
}

void EpochSource::look()
{
    if (!m_next)
        m_next = m_combiner.next();
}

bool EpochSource::isReady()
{
    for (look(); !m_next && !m_isAtEnd && input().isReady(); look())
        read();
    return m_next || m_isAtEnd;
}

RecordSource::Result EpochSource::next(SourceRecord &record)
{
    for (look(); !m_next && !m_isAtEnd; look()) {
        if (m_combiner.canFlush() && !input().isReadyWithin(silence))
            m_combiner.flush();
        else
            read();
    }
    if (!m_next)
        return m_error.isEmpty() ? Result::End : Result::Error;
    ++m_epochsOfInput;
    record = recordOf(*m_next);
    m_next.reset();
    return Result::Record;
}

void EpochSource::count(const nmea::ReceiverEpoch &epoch)
{
    constexpr int firstDoubtful = 6; // estimated, typed in, simulated
    constexpr int lastDoubtful = 8;
    const int quality = epoch.position.quality.value_or(0);
    if (quality >= firstDoubtful && quality <= lastDoubtful)
        ++m_ofDoubtfulQuality;
    if (!epoch.date || !epoch.time) {
        ++m_withoutTime;
        return;
    }
    const TimeUtc known = leapSecondTableKnownUntil();
    if (*epoch.date >= QDate(known.year(), known.month(), known.day()))
        ++m_beyondLeapSeconds;
}

SourceRecord EpochSource::recordOf(const nmea::ReceiverEpoch &epoch)
{
    SourceRecord record;
    record.number = epoch.line;
    record.inputName = input().displayName();
    record.source = epoch.sentences.chopped(1);
    const nmea::EpochFailure failure = epoch.failure();
    if (failure) {
        record.failure = failure.text;
        return record;
    }
    count(epoch);
    record.position = positions::rowOf(positions::Frame::Wgs84Geographic)
                          .position(*epoch.position.longitude, *epoch.position.latitude,
                                    epoch.ellipsoidalHeight());
    record.name = m_names == Names::Utc ? epoch.utc() : QByteArray::number(epoch.number);
    record.extras.reserve(std::size(epochColumns));
    for (const EpochColumn &column : epochColumns)
        record.extras.push_back(column.value(epoch));
    return record;
}

bool EpochSource::hasLosses() const
{
    const nmea::SentenceTally tally = m_combiner.tally();
    return m_hasLosses || tally.broken() > 0 || tally.contradicting.count > 0
           || (m_bytesOfInput > 0 && m_epochsOfInput == 0);
}

/// Of the input that is being read.
QStringList EpochSource::inputRemarks() const
{
    const auto placeOf = [this](qint64 line) {
        const QString number = QString::number(line);
        return m_inputs.size() > 1 ? number + QLatin1String(" of ") + displayName() : number;
    };
    const nmea::SentenceTally tally = m_combiner.tally();
    QStringList remarks;
    for (const SentenceRemark &row : sentenceRemarks) {
        const nmea::SentenceCount &found = tally.*row.count;
        if (found.count == 0)
            continue;
        const QString text = QString::fromLatin1(row.text);
        const QString sentences = counted(found.count, "sentence", "sentences");
        const QString place = placeOf(found.firstLine);
        remarks += text.contains(QLatin1String("%3"))
                       ? text.arg(sentences, place, found.firstReason)
                       : text.arg(sentences, place);
    }
    if (m_epochsOfInput == 0 && m_isUtf16) {
        remarks +=
            QStringLiteral("warning: %1 is UTF-16 text without a byte-order mark; convert it "
                           "to UTF-8")
                .arg(displayName());
    } else if (m_epochsOfInput == 0) {
        remarks += QStringLiteral("warning: %1 has no sentence of NMEA 0183 that tells a position "
                                  "(GGA, GNS, RMC)")
                       .arg(displayName());
    }
    if (tally.otherLines > 0) {
        remarks += QStringLiteral("note: %1 of %2 without a sentence")
                       .arg(counted(tally.otherLines, "line", "lines"), displayName());
    }
    return remarks;
}

QStringList EpochSource::remarks() const
{
    QStringList remarks = m_remarks + inputRemarks();
    if (m_withoutTime > 0) {
        remarks += QStringLiteral("note: the time of %1 is empty: no date (RMC, ZDA) came before "
                                  "or the times of day went back since")
                       .arg(counted(m_withoutTime, "position", "positions"));
    }
    if (m_ofDoubtfulQuality > 0) {
        remarks += QStringLiteral("warning: %1 estimated, typed in or simulated (quality 6, 7 or "
                                  "8), not measured")
                       .arg(counted(m_ofDoubtfulQuality, "position is", "positions are"));
    }
    if (m_beyondLeapSeconds > 0) {
        remarks += QStringLiteral("note: leap seconds are known until %1: GPS times behind that "
                                  "lack one that was announced since")
                       .arg(leapSecondTableKnownUntil().toString().left(10));
    }
    return remarks;
}

} // namespace KelStd::cli
