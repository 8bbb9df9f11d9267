#pragma once

#include <KelStd/nmea/EpochCombiner.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>

namespace KelStd::test {

/// "$GPGGA,...*47" of "GPGGA,...".
inline QByteArray sentence(const QByteArray &body)
{
    unsigned sum = 0;
    for (const char c : body)
        sum ^= static_cast<unsigned char>(c);
    return '$' + body + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper();
}

/// Sentences of these bodies, a line each, as receivers end them.
inline QByteArray log(const QList<QByteArray> &bodies)
{
    QByteArray bytes;
    for (const QByteArray &body : bodies)
        bytes += sentence(body) + "\r\n";
    return bytes;
}

/// Every epoch of an input.
inline QList<nmea::ReceiverEpoch>
epochsOf(const QByteArray &bytes, nmea::SentenceTally *tally = nullptr,
         nmea::EpochCombiner::Order order = nmea::EpochCombiner::Order::InTurn)
{
    nmea::EpochCombiner combiner(order);
    combiner.feed({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    combiner.finish();
    QList<nmea::ReceiverEpoch> epochs;
    while (auto epoch = combiner.next())
        epochs += *epoch;
    if (tally != nullptr)
        *tally = combiner.tally();
    return epochs;
}

} // namespace KelStd::test
