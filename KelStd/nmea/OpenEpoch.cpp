#include <KelStd/nmea/OpenEpoch.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
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

/// How positions of a quality are to be taken.
struct QualityRow
{
    int quality;
    int rank;        ///< the greater one is the better one
    double accuracy; ///< how far such a position may be off horizontally [m]
};

constexpr QualityRow qualities[] = {
    {4, 5, 0.5},   // fixed ambiguities
    {5, 4, 3.0},   // floating ones
    {2, 3, 10.0},  // differential
    {3, 3, 10.0},  // precise
    {1, 2, 30.0},  // single
    {6, 1, 300.0}, // estimated, with nothing received for a while
};
constexpr QualityRow otherQuality = {0, 0, 30.0}; // typed in, simulated, not said

const QualityRow &rowOf(const Message &message)
{
    const auto *const row = std::find_if(
        std::begin(qualities), std::end(qualities),
        [&message](const QualityRow &each) { return each.quality == message.quality.value_or(0); });
    return row == std::end(qualities) ? otherQuality : *row;
}

/// What makes a sentence the better one, the weightiest first.
std::array<int, 5> meritOf(const Message &message)
{
    return {message.hasFix() ? 1 : 0, hasHeights(message.kind) ? 1 : 0, rowOf(message).rank,
            message.talker == "GN" ? 1 : 0, message.kind == MessageKind::Gga ? 1 : 0};
}

/// Whether both say it, and not the same.
bool areDifferent(const std::optional<Decimal> &one, const std::optional<Decimal> &other)
{
    return one && other && one->value != other->value;
}

constexpr double metresPerDegree = 111320.0; // of latitude, and of longitude on the equator

/// How far two angles are apart [deg] at least: the one in fewer digits is rounded or cut. In equal
/// digits one solution gives equal numbers.
double differenceOf(double difference, double digit, double otherDigit)
{
    const double rounding = digit == otherDigit ? 0.0 : std::max(digit, otherDigit);
    return std::max(std::abs(difference) - rounding, 0.0);
}

/// How far two positions are apart horizontally [m] at least. Not exact where that is far.
double distanceOf(const Message &one, const Message &other)
{
    constexpr double degree = 0.017453292519943295; // [rad]
    const double north =
        differenceOf(*one.latitude - *other.latitude, one.latitudeDigit, other.latitudeDigit);
    const double east = differenceOf(std::remainder(*one.longitude - *other.longitude, 360.0),
                                     one.longitudeDigit, other.longitudeDigit);
    return metresPerDegree * std::hypot(north, east * std::cos(*one.latitude * degree));
}

/// How far two heights are apart [m]: above the ellipsoid where both sentences know it, for
/// receivers have different geoids; 0 where one has none.
double heightDifferenceOf(const Message &one, const Message &other)
{
    if (!one.height || !other.height)
        return 0.0;
    const bool areEllipsoidal = one.undulation && other.undulation;
    return std::abs(one.height->value - other.height->value
                    + (areEllipsoidal ? one.undulation->value - other.undulation->value : 0.0));
}

/// Whether two sentences of different talkers or types are further apart than their qualities
/// explain. Those of one talker are of one solution, and differ by their digits alone.
bool areApart(const Message &one, const Message &other)
{
    if (!one.isBelieved() || !other.isBelieved())
        return false;
    constexpr double ofOneSolution = 1.0; // [m] together
    constexpr double perHeight = 2.0;     // heights are some two times as inaccurate
    const double accuracy =
        one.talker == other.talker ? ofOneSolution : rowOf(one).accuracy + rowOf(other).accuracy;
    return distanceOf(one, other) > accuracy
           || heightDifferenceOf(one, other) > perHeight * accuracy;
}

/// Whether two sentences of one time have different positions.
bool contradict(const Message &one, const Message &other)
{
    if (one.kind != other.kind || one.talker != other.talker)
        return areApart(one, other);
    return one.hasPosition() && other.hasPosition()
           && (one.latitude != other.latitude || one.longitude != other.longitude
               || areDifferent(one.height, other.height)
               || areDifferent(one.undulation, other.undulation));
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
    return std::any_of(m_messages.begin(), m_messages.end(),
                       [&message](const Message &before) { return contradict(before, message); });
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
