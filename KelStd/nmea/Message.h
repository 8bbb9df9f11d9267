#pragma once

#include <KelStd/Export.h>
#include <KelStd/nmea/ReceiverTime.h>
#include <KelStd/nmea/Sentence.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace KelStd::nmea {

/// A number as a receiver gave it.
struct Decimal
{
    double value = 0; ///< the number
    QByteArray text;  ///< all its digits, as JSON has numbers: "-34.10"
};

/// The sentences that are read. A new one is an enumerator and a row in Message.cpp.
enum class MessageKind
{
    Gga, ///< position, height, quality
    Gns, ///< the same of several systems
    Rmc, ///< position without height, date
    Zda, ///< date and time
    Gst, ///< standard deviations
    Dtm  ///< which datum positions are on
};

/// What a sentence says, as far as it is of use here. What a receiver left empty is nothing.
struct KELSTD_EXPORT Message
{
    /// Reads what the sentence says.
    ///
    /// \param failure becomes `Malformed` with the field at fault, or no failure
    /// \return nothing after a failure, and for a sentence of another type
    static std::optional<Message> read(const Sentence &sentence, SentenceFailure &failure);

    MessageKind kind = MessageKind::Gga; ///< the type of the sentence
    QByteArray talker;                   ///< "GP"
    std::optional<TimeOfDay> time;       ///< UTC, where the sentence has it
    std::optional<ReceivedDate> date;    ///< UTC, where the sentence has it
    std::optional<double> latitude;      ///< [deg], north positive; with a longitude or not at all
    std::optional<double> longitude;     ///< [deg], east positive
    double latitudeDigit = 0;            ///< what one of the last digit of it is [deg]
    double longitudeDigit = 0;           ///< what one of the last digit of it is [deg]
    /// As GGA counts it: 0 no fix, 1 single, 2 differential, 3 precise, 4 fixed and 5 floating
    /// ambiguities, 6 estimated, 7 typed in, 8 simulated. That of GNS is the least of the systems
    /// that take part.
    std::optional<int> quality;
    bool isVoid = false;                ///< what RMC says of its position
    std::optional<int> satellites;      ///< in use
    std::optional<Decimal> hdop;        ///< horizontal dilution of precision, without unit
    std::optional<Decimal> height;      ///< above mean sea level [m]
    std::optional<Decimal> undulation;  ///< of mean sea level above the ellipsoid [m]
    std::optional<Decimal> sdLatitude;  ///< standard deviation [m]
    std::optional<Decimal> sdLongitude; ///< standard deviation [m]
    std::optional<Decimal> sdHeight;    ///< standard deviation [m]
    QByteArray datum;                   ///< "W84" for WGS84

    /// Whether latitude and longitude are there.
    bool hasPosition() const { return latitude && longitude; }
    /// Whether it has a position that the receiver stands by.
    bool hasFix() const { return hasPosition() && quality.value_or(0) > 0; }
    /// The same, also of RMC, which has no quality.
    bool isBelieved() const
    {
        return kind == MessageKind::Rmc ? hasPosition() && !isVoid : hasFix();
    }
};

} // namespace KelStd::nmea
