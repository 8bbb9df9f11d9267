#pragma once

#include <KelStd/nmea/Message.h>

#include <QtCore/QString>

#include <cstddef>
#include <optional>
#include <string_view>

namespace KelStd::nmea {

/// Reads the fields of a sentence by their places, from 1. An empty field is nothing; what a field
/// cannot hold is nothing, too, and the first such field is the mistake.
class FieldReader
{
public:
    explicit FieldReader(const Sentence &sentence) : m_sentence(sentence) {}

    std::string_view text(std::size_t place) const { return m_sentence.field(place); }
    std::optional<TimeOfDay> time(std::size_t place);
    std::optional<int> digit(std::size_t place);
    std::optional<int> count(std::size_t place);
    std::optional<Decimal> number(std::size_t place);
    std::optional<Decimal> notNegative(std::size_t place);
    /// With the unit in its own field, which has to be M.
    std::optional<Decimal> metres(std::size_t place, std::size_t unitPlace);
    /// One of `letters`; 0 for none.
    char letter(std::size_t place, std::string_view letters);
    /// The quality of the modes of GNS, a letter for each system.
    std::optional<int> modes(std::size_t place);
    /// Latitude and longitude of the message from four fields; both or none.
    void position(std::size_t place, Message &message);
    std::optional<ReceivedDate> shortDate(std::size_t place);
    std::optional<ReceivedDate> fullDate(std::size_t place);

    /// What is wrong; empty when nothing is.
    const QString &mistake() const { return m_mistake; }

private:
    std::nullopt_t fail(std::size_t place, const char *what);
    std::optional<double> angle(std::size_t place, int maxDegrees, std::string_view letters);
    std::optional<ReceivedDate> checked(std::size_t place, const ReceivedDate &date);

    const Sentence &m_sentence;
    QString m_mistake;
};

} // namespace KelStd::nmea
