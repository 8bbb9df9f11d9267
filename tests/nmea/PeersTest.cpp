// The same log as other programs read it: gpsd's gpsdecode and GPSBabel.

#include "nmea/Sentences.h"
#include "support/Printers.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

#include <cmath>

namespace KelStd {
namespace {

QByteArray outputOf(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForStarted()) << program << " is missing";
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

/// Degrees and minutes with eight decimals.
QByteArray angle(int degrees, int digits, qint64 minutes)
{
    constexpr qint64 unit = 100000000;
    return QByteArray::number(degrees).rightJustified(digits, '0')
           + QByteArray::number(minutes / unit).rightJustified(2, '0') + '.'
           + QByteArray::number(minutes % unit).rightJustified(8, '0');
}

/// An hour at 5 Hz over a midnight before a leap day, in all four quarters of the earth.
QByteArray longLog()
{
    QByteArray bytes;
    QDateTime time({2024, 2, 28}, QTime(23, 30), Qt::UTC);
    quint64 random = 17;
    const auto next = [&random](int bound) {
        random = random * 6364136223846793005U + 1442695040888963407U;
        return static_cast<int>((random >> 33U) % static_cast<unsigned>(bound));
    };
    constexpr int epochs = 18000;
    for (int i = 0; i < epochs; ++i, time = time.addMSecs(200)) {
        const QByteArray clock = time.toString(QStringLiteral("HHmmss.zzz")).toLatin1().chopped(1);
        const QByteArray place = angle(48 + i % 5, 2, next(2000000000) * 2LL + next(1999999999))
                                 + (i % 2000 < 1000 ? ",N," : ",S,")
                                 + angle(8 + i % 7, 3, next(2000000000) * 2LL)
                                 + (i % 4000 < 2000 ? ",E," : ",W,");
        const QByteArray height = QByteArray::number(next(900000) / 1000.0, 'f', 3);
        const QByteArray undulation = QByteArray::number(next(90000) / 1000.0 - 45, 'f', 3);
        bytes += test::log({"GNGGA," + clock + ',' + place + "4,17,0.6," + height + ",M,"
                                + undulation + ",M,1.0,0001",
                            "GNRMC," + clock + ",A," + place + "0.0,0.0,"
                                + time.toString(QStringLiteral("ddMMyy")).toLatin1() + ",,,R,V"});
    }
    return bytes;
}

/// What another program reads of an epoch.
struct PeerEpoch
{
    double latitude;
    double longitude;
    double height; ///< NaN where it is not printed
};

/// Compares to half a unit of the last printed digit and what doubles lose.
void expectSame(const QMap<QString, PeerEpoch> &peer, int missing, double angleUnit,
                double heightUnit)
{
    const auto epochs = test::epochsOf(longLog());
    EXPECT_EQ(epochs.size(), 18000);
    int found = 0;
    for (const nmea::ReceiverEpoch &epoch : epochs) {
        ASSERT_FALSE(epoch.failure());
        const QString time =
            QDateTime::fromString(QString::fromLatin1(epoch.utc()), Qt::ISODateWithMs)
                .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
        const auto other = peer.constFind(time);
        if (other == peer.constEnd())
            continue;
        ++found;
        ASSERT_NEAR(*epoch.position.latitude, other->latitude, angleUnit / 2 + 1e-12) << time;
        ASSERT_NEAR(*epoch.position.longitude, other->longitude, angleUnit / 2 + 1e-12) << time;
        ASSERT_NEAR(std::isnan(other->height) ? 0 : epoch.ellipsoidalHeight(),
                    std::isnan(other->height) ? 0 : other->height, heightUnit / 2 + 1e-9)
            << time;
    }
    EXPECT_EQ(found, peer.size());
    EXPECT_GE(found, epochs.size() - missing);
}

QString timeKey(const QString &iso)
{
    const QDateTime time = QDateTime::fromString(iso, Qt::ISODateWithMs);
    EXPECT_TRUE(time.isValid()) << iso;
    return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
}

TEST(NmeaPeers, GpsdReadsTheSame)
{
    QMap<QString, PeerEpoch> peer;
    const QByteArray output =
        outputOf(QStringLiteral("gpsdecode"), {QStringLiteral("-j")}, longLog());
    for (const QByteArray &line : output.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (object.value(QStringLiteral("class")) != QStringLiteral("TPV")
            || !object.contains(QStringLiteral("altHAE")))
            continue;
        peer.insert(timeKey(object.value(QStringLiteral("time")).toString()),
                    {object.value(QStringLiteral("lat")).toDouble(),
                     object.value(QStringLiteral("lon")).toDouble(),
                     object.value(QStringLiteral("altHAE")).toDouble()});
    }
    // It reports an epoch when the next begins, so not the last one, and learns at the first how
    // they end.
    expectSame(peer, 3, 1e-9, 1e-4);
}

TEST(NmeaPeers, GpsBabelReadsTheSame)
{
    QMap<QString, PeerEpoch> peer;
    QXmlStreamReader reader(outputOf(
        QStringLiteral("gpsbabel"),
        {QStringLiteral("-i"), QStringLiteral("nmea"), QStringLiteral("-f"), QStringLiteral("-"),
         QStringLiteral("-o"), QStringLiteral("gpx"), QStringLiteral("-F"), QStringLiteral("-")},
        longLog()));
    PeerEpoch point{};
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("trkpt")) {
            point = {reader.attributes().value(QLatin1String("lat")).toDouble(),
                     reader.attributes().value(QLatin1String("lon")).toDouble(), std::nan("")};
        } else if (reader.name() == QLatin1String("time") && point.latitude != 0) {
            peer.insert(timeKey(reader.readElementText()), point);
        }
    }
    EXPECT_FALSE(reader.hasError());
    expectSame(peer, 0, 1e-9, 1);
}

} // namespace
} // namespace KelStd
