#include <KelStd/nmea/EpochCombiner.h>

#include <algorithm>
#include <utility>

namespace KelStd::nmea {

namespace {

/// How many epochs are remembered that have ended, for what comes late.
constexpr std::size_t maxEnded = 4;

} // namespace

void SentenceCount::add(qint64 line, const QString &reason)
{
    if (count == 0) {
        firstLine = line;
        firstReason = reason;
    }
    ++count;
}

EpochCombiner::EpochCombiner(Order order)
    : m_order(order),
      m_scanner([this](std::string_view text, qint64 line) { takeText(text, line); })
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
    case SentenceFault::TextBehind: m_tally.textBehind.add(line, failure.text); return;
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

/// The epoch that the sentence belongs to. One before the last one lacks its type and talker:
/// otherwise it is the same time of another day.
OpenEpoch *EpochCombiner::openEpochOf(const Message &message)
{
    for (auto epoch = m_open.rbegin(); epoch != m_open.rend(); ++epoch) {
        const bool isLast = epoch == m_open.rbegin();
        if (epoch->isOf(message) && (isLast || (message.time && !epoch->hasAlready(message))))
            return &*epoch;
    }
    return nullptr;
}

bool EpochCombiner::comesLate(const Message &message) const
{
    if (!message.time)
        return false;
    if (m_flushed && *message.time == *m_flushed)
        return true;
    const bool hasHeights = message.kind == MessageKind::Gga || message.kind == MessageKind::Gns;
    return std::any_of(m_recent.begin(), m_recent.end(), [&](const OpenEpoch &epoch) {
        return epoch.hasPosition() && (epoch.hasHeights() || !hasHeights) && epoch.isOf(message)
               && !epoch.hasAlready(message);
    });
}

void EpochCombiner::take(Message message, std::string_view text, qint64 line)
{
    OpenEpoch *epoch = openEpochOf(message);
    if (epoch == nullptr && comesLate(message)) {
        m_tally.late.add(line);
        if (message.date && !message.isVoid)
            dateOf(*message.time, message.date, line);
        return;
    }
    m_flushed.reset();
    if (epoch == nullptr) {
        m_open.emplace_back(line);
        endSurplus();
        epoch = &m_open.back();
    }
    if (epoch->contradicts(message))
        m_tally.contradicting.add(line);
    epoch->add(std::move(message), text);
}

/// Ends what has to make place for the epoch that begins. One without heights is not in a hurry:
/// GGA or GNS may yet come.
void EpochCombiner::endSurplus()
{
    const auto room = [this] {
        return m_order == Order::MayInterleave || !m_open.front().hasHeights() ? 2U : 1U;
    };
    while (m_open.size() > room())
        endEpoch();
}

std::optional<QDate> EpochCombiner::dateOf(const TimeOfDay &time,
                                           const std::optional<ReceivedDate> &date, qint64 line)
{
    const auto kept = m_dates.dateOf(time, date);
    if (!m_dates.contradiction().isEmpty())
        m_tally.otherDate.add(line, m_dates.contradiction());
    return kept;
}

/// Ends the oldest one.
void EpochCombiner::endEpoch()
{
    OpenEpoch open = std::move(m_open.front());
    m_open.pop_front();
    ReceiverEpoch epoch = open.epoch();
    if (epoch.time) {
        if (open.hasDifferentDates())
            m_tally.otherDate.add(open.line(), QStringLiteral("RMC and ZDA have different ones"));
        epoch.date = dateOf(*epoch.time, open.date(), open.line());
    }
    if (open.hasPosition()) {
        epoch.number = ++m_lastNumber;
        m_ended.push_back(std::move(epoch));
    }
    m_recent.push_back(std::move(open));
    if (m_recent.size() > maxEnded)
        m_recent.pop_front();
}

bool EpochCombiner::canFlush() const
{
    return std::any_of(m_open.begin(), m_open.end(),
                       [](const OpenEpoch &epoch) { return epoch.hasHeights(); });
}

void EpochCombiner::flush()
{
    while (canFlush()) {
        m_flushed = m_open.front().time();
        endEpoch();
    }
}

void EpochCombiner::finish()
{
    m_scanner.finish();
    abandon();
}

void EpochCombiner::beginInput()
{
    finish();
    m_scanner.beginInput();
    m_dates.beginLog();
    m_recent.clear();
    m_flushed.reset();
    m_otherLine = 0;
    m_tally = {};
}

void EpochCombiner::abandon()
{
    while (!m_open.empty())
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
