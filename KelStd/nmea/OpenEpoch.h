#pragma once

#include <KelStd/Export.h>
#include <KelStd/nmea/ReceiverEpoch.h>

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <optional>
#include <string_view>
#include <vector>

namespace KelStd::nmea {

/// The sentences of one time, as they come.
class KELSTD_EXPORT OpenEpoch
{
public:
    /// Without sentences; the first one stands in this line of the input.
    explicit OpenEpoch(qint64 line) : m_line(line) {}

    /// Whether the sentence is one of these: of the same time, and of the same day as far as is
    /// said. Without times, a type that comes again is not.
    bool isOf(const Message &message) const;

    /// Whether there is one of the same type and talker.
    bool hasAlready(const Message &message) const;

    /// Whether there is another position: other numbers by the same type and talker, or one of
    /// another type or talker that is further away than the qualities of both explain.
    bool contradicts(const Message &message) const;

    /// Of sentences that come again the first ones are enough: a stream may repeat one for ever.
    void add(Message message, std::string_view text);

    /// Whether GGA or GNS is among them.
    bool hasHeights() const;

    /// Whether any of them tells a position, or that there is none.
    bool hasPosition() const;

    /// The date by RMC or ZDA, whose full year goes before two digits.
    std::optional<ReceivedDate> date() const;
    /// Whether two sentences have dates that contradict each other.
    bool hasDifferentDates() const;

    /// The time of day of the sentences (UTC), from the one that gives it with most decimals.
    std::optional<TimeOfDay> time() const;
    qint64 line() const { return m_line; } ///< of the first sentence

    /// What they say together, but for date and number.
    ReceiverEpoch epoch() const;

private:
    const Message *position() const;
    void takeDeviations(ReceiverEpoch &epoch) const;
    void takeUndulation(Message &position) const;

    std::vector<Message> m_messages; ///< in their order
    QByteArray m_sentences;
    qint64 m_line;
};

} // namespace KelStd::nmea
