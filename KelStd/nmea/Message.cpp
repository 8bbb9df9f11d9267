#include <KelStd/nmea/Message.h>

#include <KelStd/nmea/FieldReader.h>

#include <iterator>

namespace KelStd::nmea {

namespace {

void readGga(FieldReader &fields, Message &message)
{
    message.time = fields.time(1);
    fields.position(2, message);
    message.quality = fields.digit(6);
    message.satellites = fields.count(7);
    message.hdop = fields.notNegative(8);
    message.height = fields.metres(9, 10);
    message.undulation = fields.metres(11, 12);
}

void readGns(FieldReader &fields, Message &message)
{
    message.time = fields.time(1);
    fields.position(2, message);
    message.quality = fields.modes(6);
    message.satellites = fields.count(7);
    message.hdop = fields.notNegative(8);
    message.height = fields.number(9);
    message.undulation = fields.number(10);
}

void readRmc(FieldReader &fields, Message &message)
{
    constexpr std::size_t mode = 12;
    message.time = fields.time(1);
    message.isVoid = fields.letter(2, "AV") != 'A' || fields.text(mode) == "N";
    fields.position(3, message);
    message.date = fields.shortDate(9);
}

void readZda(FieldReader &fields, Message &message)
{
    message.time = fields.time(1);
    message.date = fields.fullDate(2);
}

void readGst(FieldReader &fields, Message &message)
{
    message.time = fields.time(1);
    message.sdLatitude = fields.notNegative(6);
    message.sdLongitude = fields.notNegative(7);
    message.sdHeight = fields.notNegative(8);
}

void readDtm(FieldReader &fields, Message &message)
{
    const std::string_view code = fields.text(1);
    message.datum = QByteArray(code.data(), static_cast<int>(code.size()));
}

struct MessageRow
{
    MessageKind kind;
    const char *type;
    std::size_t fields; ///< that it has at least
    void (*read)(FieldReader &fields, Message &message);
};

/// The fields of NMEA 0183, version 2.00 and later, which added some at the ends.
constexpr MessageRow rows[] = {
    {MessageKind::Gga, "GGA", 12, readGga}, {MessageKind::Gns, "GNS", 10, readGns},
    {MessageKind::Rmc, "RMC", 9, readRmc},  {MessageKind::Zda, "ZDA", 4, readZda},
    {MessageKind::Gst, "GST", 8, readGst},  {MessageKind::Dtm, "DTM", 1, readDtm},
};

} // namespace

std::optional<Message> Message::read(const Sentence &sentence, SentenceFailure &failure)
{
    failure = {};
    if (sentence.talker.empty())
        return std::nullopt;
    for (const MessageRow &row : rows) {
        if (sentence.type != row.type)
            continue;
        const QString type = QString::fromLatin1(row.type);
        if (sentence.fields.size() < row.fields) {
            failure = {SentenceFault::Malformed, QStringLiteral("%1 has %2 fields, not %3")
                                                     .arg(type)
                                                     .arg(sentence.fields.size())
                                                     .arg(row.fields)};
            return std::nullopt;
        }
        Message message;
        message.kind = row.kind;
        message.talker =
            QByteArray(sentence.talker.data(), static_cast<int>(sentence.talker.size()));
        FieldReader fields(sentence);
        row.read(fields, message);
        if (!fields.mistake().isEmpty()) {
            failure = {SentenceFault::Malformed,
                       QStringLiteral("%1: %2").arg(type, fields.mistake())};
            return std::nullopt;
        }
        return message;
    }
    return std::nullopt;
}

} // namespace KelStd::nmea
