#include <KelStd/nmea/EpochCombiner.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace KelStd::nmea {

namespace {

bool isPosition(MessageKind kind)
{
    return kind == MessageKind::Gga || kind == MessageKind::Gns || kind == MessageKind::Rmc;
}

bool hasHeights(MessageKind kind)
{
    return kind == MessageKind::Gga || kind == MessageKind::Gns;
}

/// What makes a sentence the better one, the weightiest first.
std::array<bool, 4> meritOf(const Message &message)
{
    return {message.hasFix(), hasHeights(message.kind), message.talker == "GN",
            message.kind == MessageKind::Gga};
}

/// What makes the GST for a position of this talker the better one, the weightiest first.
std::array<bool, 3> meritOf(const Message &deviations, const QByteArray &talker)
{
    return {deviations.talker == talker, deviations.talker == "GN",
            deviations.sdLatitude || deviations.sdLongitude || deviations.sdHeight};
}

/// Whether they give one and the same position.
bool isSamePosition(const Message &one, const Message &other)
{
    constexpr double rounding = 0.1; // [m] of a height with one decimal
    const bool isSameHeight = !one.height || !other.height
                              || std::abs(one.height->value - other.height->value) <= rounding;
    return one.talker == other.talker && one.hasPosition() && one.latitude == other.latitude
           && one.longitude == other.longitude && isSameHeight;
}

bool isSameDate(const ReceivedDate &one, const ReceivedDate &other)
{
    constexpr int century = 100;
    return one.day == other.day && one.month == other.month
           && one.year % century == other.year % century;
}

} // namespace

void SentenceCount::add(qint64 line, const QString &reason)
{
    if (count == 0) {
        firstLine = line;
        firstReason = reason;
    }
    ++count;
}

EpochCombiner::EpochCombiner()
    : m_scanner([this](std::string_view text, qint64 line) { takeText(text, line); })
{}

void EpochCombiner::takeText(std::string_view text, qint64 line)
{
    SentenceFailure failure;
    const auto sentence = readSentence(text, failure);
    std::optional<Message> message;
    if (sentence)
        message = Message::read(*sentence, failure);
    switch (failure.kind) {
    case SentenceFault::None: break;
    case SentenceFault::NotASentence:
        m_tally.otherLines += line != m_otherLine ? 1 : 0;
        m_otherLine = line;
        return;
    case SentenceFault::NoChecksum: m_tally.noChecksum.add(line, failure.text); return;
    case SentenceFault::BadChecksum: m_tally.badChecksum.add(line, failure.text); return;
    case SentenceFault::Malformed: m_tally.malformed.add(line, failure.text); return;
    }
    if (!message) {
        ++m_tally.ofOtherTypes;
        return;
    }
    ++m_tally.used;
    if (message->kind == MessageKind::Dtm) {
        if (message->datum != "W84")
            m_tally.otherDatum.add(line, QString::fromLatin1(message->datum));
        return;
    }
    take(std::move(*message), text, line);
}

bool EpochCombiner::beginsEpoch(const Message &message) const
{
    const auto &first = m_messages.front();
    if (first.time.has_value() != message.time.has_value()
        || (message.time && *message.time != *first.time))
        return true;
    return std::any_of(m_messages.begin(), m_messages.end(), [&message](const Message &before) {
        const bool isAgain = before.kind == message.kind && before.talker == message.talker;
        // The same time of two days.
        const bool isOtherDay = before.kind == message.kind && before.date && message.date
                                && !isSameDate(*before.date, *message.date);
        return (isAgain && !message.time) || isOtherDay;
    });
}

bool EpochCombiner::comesLate(const Message &message) const
{
    return m_flushed && message.time && *message.time == *m_flushed;
}

void EpochCombiner::take(Message message, std::string_view text, qint64 line)
{
    if (m_messages.empty() && comesLate(message)) {
        m_tally.late.add(line);
        if (message.date && !message.isVoid)
            dateOf(*message.time, message.date, line);
        return;
    }
    m_flushed.reset();
    if (!m_messages.empty() && beginsEpoch(message))
        endEpoch();
    if (m_messages.empty())
        m_firstLine = line;
    const auto contradicts = [&message](const Message &before) {
        return before.kind == message.kind && before.talker == message.talker
               && before.hasPosition() && message.hasPosition()
               && (before.latitude != message.latitude || before.longitude != message.longitude);
    };
    if (std::any_of(m_messages.begin(), m_messages.end(), contradicts))
        m_tally.contradicting.add(line);
    // Of sentences that come again the first ones are enough: a stream may repeat one for ever.
    constexpr std::size_t maxMessages = 64;
    if (m_messages.size() >= maxMessages)
        return;
    m_messages.push_back(std::move(message));
    m_sentences.append(text.data(), static_cast<int>(text.size()));
    m_sentences += '\n';
}

void EpochCombiner::keepDate(ReceiverEpoch &epoch)
{
    if (!epoch.time)
        return;
    std::optional<ReceivedDate> date;
    for (const Message &message : m_messages) {
        // What a receiver without a fix takes for the date may be anything.
        const bool counts = message.date && !message.isVoid;
        if (counts && date && !isSameDate(*date, *message.date))
            m_tally.otherDate.add(m_firstLine, QStringLiteral("RMC and ZDA have different ones"));
        if (counts && (!date || (message.date->hasFullYear && !date->hasFullYear)))
            date = message.date;
    }
    epoch.date = dateOf(*epoch.time, date, m_firstLine);
}

std::optional<QDate> EpochCombiner::dateOf(const TimeOfDay &time,
                                           const std::optional<ReceivedDate> &date, qint64 line)
{
    const auto kept = m_dates.dateOf(time, date);
    if (!m_dates.contradiction().isEmpty())
        m_tally.otherDate.add(line, m_dates.contradiction());
    return kept;
}

/// Those of another talker are of another solution, which may be metres worse.
void EpochCombiner::takeDeviations(ReceiverEpoch &epoch) const
{
    const QByteArray &talker = epoch.position.talker;
    const Message *best = nullptr;
    for (const Message &message : m_messages) {
        if (message.kind == MessageKind::Gst
            && (best == nullptr || meritOf(message, talker) > meritOf(*best, talker)))
            best = &message;
    }
    if (best == nullptr)
        return;
    epoch.sdLatitude = best->sdLatitude;
    epoch.sdLongitude = best->sdLongitude;
    epoch.sdHeight = best->sdHeight;
}

/// A receiver may say it in one of GGA and GNS alone.
void EpochCombiner::takeUndulation(Message &position) const
{
    const auto found =
        std::find_if(m_messages.begin(), m_messages.end(), [&position](const Message &message) {
            return message.undulation && isSamePosition(message, position);
        });
    if (!position.undulation && found != m_messages.end())
        position.undulation = found->undulation;
}

void EpochCombiner::endEpoch()
{
    ReceiverEpoch epoch;
    const Message *position = nullptr;
    for (const Message &message : m_messages) {
        if (message.time
            && (!epoch.time || message.time->fraction.size() > epoch.time->fraction.size()))
            epoch.time = message.time;
        epoch.isVoid = epoch.isVoid || message.isVoid;
        if (isPosition(message.kind)
            && (position == nullptr || meritOf(message) > meritOf(*position)))
            position = &message;
    }
    keepDate(epoch);
    if (position != nullptr) {
        epoch.position = *position;
        takeDeviations(epoch);
        takeUndulation(epoch.position);
        epoch.hasHeights = hasHeights(position->kind);
        epoch.sentences = m_sentences;
        epoch.line = m_firstLine;
        epoch.number = ++m_lastNumber;
        m_ended.push_back(std::move(epoch));
    }
    m_messages.clear();
    m_sentences.clear();
}

bool EpochCombiner::canFlush() const
{
    return std::any_of(m_messages.begin(), m_messages.end(),
                       [](const Message &message) { return hasHeights(message.kind); });
}

void EpochCombiner::flush()
{
    if (!canFlush())
        return;
    const auto time = m_messages.front().time;
    endEpoch();
    m_flushed = time;
}

void EpochCombiner::finish()
{
    m_scanner.finish();
    abandon();
}

void EpochCombiner::abandon()
{
    if (!m_messages.empty())
        endEpoch();
}

std::optional<ReceiverEpoch> EpochCombiner::next()
{
    if (m_ended.empty())
        return std::nullopt;
    ReceiverEpoch epoch = std::move(m_ended.front());
    m_ended.pop_front();
    return epoch;
}

SentenceTally EpochCombiner::tally() const
{
    SentenceTally tally = m_tally;
    tally.otherLines += m_scanner.otherLines();
    return tally;
}

} // namespace KelStd::nmea
