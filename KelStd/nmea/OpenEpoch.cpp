#include <KelStd/nmea/OpenEpoch.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

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

/// What a receiver without a fix takes for the date may be anything.
bool hasValidDate(const Message &message)
{
    return message.date && !message.isVoid;
}

} // namespace

bool OpenEpoch::isOf(const Message &message) const
{
    if (m_messages.empty())
        return true;
    const auto &first = m_messages.front();
    if (first.time.has_value() != message.time.has_value()
        || (message.time && *message.time != *first.time))
        return false;
    return std::none_of(m_messages.begin(), m_messages.end(), [&message](const Message &before) {
        const bool isAgain = before.kind == message.kind && before.talker == message.talker;
        // The same time of two days.
        const bool isOtherDay = before.kind == message.kind && before.date && message.date
                                && !isSameDate(*before.date, *message.date);
        return (isAgain && !message.time) || isOtherDay;
    });
}

bool OpenEpoch::hasAlready(const Message &message) const
{
    return std::any_of(m_messages.begin(), m_messages.end(), [&message](const Message &before) {
        return before.kind == message.kind && before.talker == message.talker;
    });
}

bool OpenEpoch::contradicts(const Message &message) const
{
    return std::any_of(m_messages.begin(), m_messages.end(), [&message](const Message &before) {
        return before.kind == message.kind && before.talker == message.talker
               && before.hasPosition() && message.hasPosition()
               && (before.latitude != message.latitude || before.longitude != message.longitude);
    });
}

void OpenEpoch::add(Message message, std::string_view text)
{
    constexpr std::size_t maxMessages = 64;
    if (m_messages.size() >= maxMessages)
        return;
    m_messages.push_back(std::move(message));
    m_sentences.append(text.data(), static_cast<int>(text.size()));
    m_sentences += '\n';
}

bool OpenEpoch::hasHeights() const
{
    return std::any_of(m_messages.begin(), m_messages.end(),
                       [](const Message &message) { return nmea::hasHeights(message.kind); });
}

bool OpenEpoch::hasPosition() const
{
    return position() != nullptr;
}

std::optional<ReceivedDate> OpenEpoch::date() const
{
    std::optional<ReceivedDate> date;
    for (const Message &message : m_messages) {
        if (hasValidDate(message) && (!date || (message.date->hasFullYear && !date->hasFullYear)))
            date = message.date;
    }
    return date;
}

bool OpenEpoch::hasDifferentDates() const
{
    const auto taken = date();
    return std::any_of(m_messages.begin(), m_messages.end(), [&taken](const Message &message) {
        return hasValidDate(message) && !isSameDate(*message.date, *taken);
    });
}

std::optional<TimeOfDay> OpenEpoch::time() const
{
    std::optional<TimeOfDay> time;
    for (const Message &message : m_messages) {
        if (message.time && (!time || message.time->fraction.size() > time->fraction.size()))
            time = message.time;
    }
    return time;
}

const Message *OpenEpoch::position() const
{
    const Message *best = nullptr;
    for (const Message &message : m_messages) {
        if (isPosition(message.kind) && (best == nullptr || meritOf(message) > meritOf(*best)))
            best = &message;
    }
    return best;
}

/// Those of another talker are of another solution, which may be metres worse.
void OpenEpoch::takeDeviations(ReceiverEpoch &epoch) const
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
void OpenEpoch::takeUndulation(Message &position) const
{
    const auto found =
        std::find_if(m_messages.begin(), m_messages.end(), [&position](const Message &message) {
            return message.undulation && isSamePosition(message, position);
        });
    if (!position.undulation && found != m_messages.end())
        position.undulation = found->undulation;
}

ReceiverEpoch OpenEpoch::epoch() const
{
    ReceiverEpoch epoch;
    epoch.time = time();
    epoch.isVoid = std::any_of(m_messages.begin(), m_messages.end(),
                               [](const Message &message) { return message.isVoid; });
    epoch.sentences = m_sentences;
    epoch.line = m_line;
    if (const Message *const best = position()) {
        epoch.position = *best;
        epoch.hasHeights = nmea::hasHeights(best->kind);
        takeDeviations(epoch);
        takeUndulation(epoch.position);
    }
    return epoch;
}

} // namespace KelStd::nmea
