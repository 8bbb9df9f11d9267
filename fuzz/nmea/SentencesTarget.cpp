// What a receiver says, as `kelstd convert --nmea` reads it: whole, and cut into pieces of the size
// that the first byte says. Its uppermost bit says whether the checksums are put right before.

#include "FuzzTarget.h"

#include <KelStd/nmea/EpochCombiner.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace KelStd::nmea;
using KelStd::fuzz::require;

using Order = EpochCombiner::Order;

std::vector<ReceiverEpoch> epochsOf(std::string_view bytes, std::size_t piece, Order order,
                                    SentenceTally &tally)
{
    EpochCombiner combiner(order);
    std::vector<ReceiverEpoch> epochs;
    const auto take = [&] {
        while (auto epoch = combiner.next())
            epochs.push_back(std::move(*epoch));
    };
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
        combiner.feed(bytes.substr(i, piece));
        take();
    }
    combiner.finish();
    take();
    tally = combiner.tally();
    return epochs;
}

/// With the checksums that the sentences should have, which a fuzzer does not find.
std::string withChecksums(std::string_view bytes)
{
    std::string mended;
    std::size_t begin = std::string::npos; // of the sentence, behind its "$"
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        mended += bytes[i];
        if (bytes[i] == '$')
            begin = mended.size();
        if (bytes[i] != '*' || begin == std::string::npos)
            continue;
        static constexpr char digits[] = "0123456789ABCDEF";
        const unsigned char sum =
            checksumOf(std::string_view(mended).substr(begin, mended.size() - 1 - begin));
        mended += digits[sum / 16U];
        mended += digits[sum % 16U];
        begin = std::string::npos;
        const auto isDigit = [](char c) { return std::strchr(digits, c) != nullptr && c != 0; };
        for (int skipped = 0; skipped < 2 && i + 1 < bytes.size() && isDigit(bytes[i + 1]);
             ++skipped)
            ++i;
    }
    return mended;
}

bool isJsonNumber(const QByteArray &text)
{
    return QJsonDocument::fromJson("{\"a\":" + text + '}')
        .object()
        .value(QStringLiteral("a"))
        .isDouble();
}

void requireNumber(const std::optional<Decimal> &number)
{
    require(!number || std::isfinite(number->value), "a number is finite");
    require(!number || isJsonNumber(number->text), "a number is one of JSON");
}

void requireSound(const ReceiverEpoch &epoch)
{
    const Message &position = epoch.position;
    require(epoch.line > 0 && epoch.number > 0, "an epoch has a line and a number");
    require(!epoch.sentences.isEmpty(), "an epoch has sentences");
    require(position.latitude.has_value() == position.longitude.has_value(),
            "a latitude has a longitude");
    require(!position.latitude || std::abs(*position.latitude) <= 90, "a latitude is one");
    require(!position.longitude || std::abs(*position.longitude) <= 180, "a longitude is one");
    require(epoch.failure() || (position.hasFix() && position.height && position.undulation),
            "a position is whole");
    require(!epoch.failure() || !epoch.failure().text.isEmpty(), "a failure has a reason");
    require(std::isfinite(epoch.ellipsoidalHeight()), "a height is finite");
    for (const auto &number : {position.hdop, position.height, position.undulation,
                               epoch.sdLatitude, epoch.sdLongitude, epoch.sdHeight})
        requireNumber(number);
    require(!epoch.date || epoch.date->isValid(), "a date is one");
    const auto gps = epoch.gps();
    require(!gps || !epoch.utc().isEmpty(), "a GPS time has its UTC");
    require(!gps || isJsonNumber(gps->seconds), "seconds are a number of JSON");
    require(!gps || (gps->week >= 0 && gps->seconds.toDouble() <= 604800), "a week has its end");
}

void requireSound(std::string_view bytes, std::size_t piece, Order order)
{
    SentenceTally whole;
    SentenceTally cut;
    const auto epochs = epochsOf(bytes, std::max<std::size_t>(bytes.size(), 1), order, whole);
    const auto same = epochsOf(bytes, piece, order, cut);
    require(epochs.size() == same.size(), "pieces make the same epochs");
    require(whole.used == cut.used && whole.broken() == cut.broken()
                && whole.late.count == cut.late.count && whole.otherLines == cut.otherLines
                && whole.ofOtherTypes == cut.ofOtherTypes,
            "pieces make the same sentences");
    qint64 number = 0;
    qint64 line = 0;
    for (std::size_t i = 0; i < epochs.size(); ++i) {
        requireSound(epochs[i]);
        require(epochs[i].number == ++number, "epochs are counted");
        require(epochs[i].line >= line, "epochs come in order");
        line = epochs[i].line;
        require(epochs[i].sentences == same[i].sentences && epochs[i].utc() == same[i].utc(),
                "pieces make the same epoch");
        // What is kept of an epoch says the same when it is read again, alone.
        SentenceTally tally;
        const QByteArray &kept = epochs[i].sentences;
        const auto again = epochsOf({kept.constData(), static_cast<std::size_t>(kept.size())},
                                    static_cast<std::size_t>(kept.size()), order, tally);
        require(again.size() == 1 && tally.broken() == 0, "what is kept is one epoch");
        require(again.front().failure().kind == epochs[i].failure().kind,
                "what is kept says the same");
        require(again.front().position.latitude == epochs[i].position.latitude
                    && again.front().ellipsoidalHeight() == epochs[i].ellipsoidalHeight(),
                "what is kept is the same position");
    }
}

/// Two files of one receiver, the second behind the first: as it is alone, but for what is carried
/// on.
void requireSoundBehindAnother(std::string_view first, std::string_view second, Order order)
{
    EpochCombiner combiner(order);
    const auto epochsOfInput = [&combiner](std::string_view bytes) {
        std::vector<ReceiverEpoch> epochs;
        combiner.feed(bytes);
        combiner.finish();
        while (auto epoch = combiner.next())
            epochs.push_back(std::move(*epoch));
        return epochs;
    };
    const auto before = epochsOfInput(first);
    combiner.beginInput();
    require(combiner.tally().used == 0 && combiner.tally().broken() == 0,
            "sentences are counted anew");
    const auto epochs = epochsOfInput(second);
    const SentenceTally behind = combiner.tally();
    SentenceTally tally;
    const auto alone = epochsOf(second, std::max<std::size_t>(second.size(), 1), order, tally);
    require(epochs.size() == alone.size(), "an input has its epochs");
    require(behind.used == tally.used && behind.broken() == tally.broken()
                && behind.late.count == tally.late.count && behind.otherLines == tally.otherLines,
            "an input has its sentences");
    qint64 number = static_cast<qint64>(before.size());
    for (std::size_t i = 0; i < epochs.size(); ++i) {
        requireSound(epochs[i]);
        require(epochs[i].number == ++number, "epochs are counted on");
        require(epochs[i].line == alone[i].line && epochs[i].sentences == alone[i].sentences,
                "an epoch is the same behind another input");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    constexpr unsigned mendingBit = 0x80;
    const std::string_view given(reinterpret_cast<const char *>(data) + 1, size - 1);
    const std::string mended =
        (data[0] & mendingBit) != 0 ? withChecksums(given) : std::string(given);
    const std::string_view bytes = mended;
    // Two inputs, cut behind as many lines.
    const unsigned piece = (data[0] & ~mendingBit) + 1U;
    std::size_t end = 0;
    for (unsigned i = 0; i < piece && end != std::string_view::npos; ++i)
        end = bytes.find('\n', end == 0 ? 0 : end + 1);
    const std::size_t cut = end == std::string_view::npos ? bytes.size() / 2 : end + 1;
    for (const Order order : {Order::InTurn, Order::MayInterleave}) {
        requireSound(bytes, piece, order);
        requireSoundBehindAnother(bytes.substr(0, cut), bytes.substr(cut), order);
    }
    return 0;
}
