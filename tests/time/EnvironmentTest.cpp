// The runs under other zones and locales would prove nothing if the settings did not arrive.

#include "support/Printers.h"
#include "time/TimePrinters.h"

#include <KelStd/time/TimeSpan.h>

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QTimeZone>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(Environment, TheZoneOfTheVariableIsQts)
{
    QByteArray zone = qgetenv("TZ");
    if (zone.isEmpty() || !QTimeZone::isTimeZoneIdAvailable(zone))
        zone = QTimeZone::systemTimeZoneId(); // not one of those runs: whatever the machine has
    EXPECT_EQ(QTimeZone::systemTimeZoneId(), zone);
    EXPECT_TRUE(QTimeZone(zone).isValid());
}

TEST(Environment, TheLocaleOfTheVariableIsQts)
{
    const QString shown = QLocale::system().toString(1234.5, 'f', 1);
    const QByteArray locale = qgetenv("LC_ALL");
    if (locale.startsWith("ar_EG"))
        EXPECT_EQ(shown, QString::fromUtf8("\u0661\u066c\u0662\u0663\u0664\u066b\u0665"));
    else if (locale.startsWith("de_DE"))
        EXPECT_EQ(shown, QStringLiteral("1.234,5"));
    else
        EXPECT_FALSE(shown.isEmpty());
}

// Whatever Qt's default locale or the system's is.
TEST(Environment, TextsHaveLatinDigits)
{
    const QLocale before;
    for (const QLocale &locale :
         {QLocale(QLocale::Arabic, QLocale::Egypt), QLocale(QLocale::German, QLocale::Germany),
          QLocale(QLocale::Hindi, QLocale::India), QLocale::c()}) {
        QLocale::setDefault(locale);
        SCOPED_TRACE(locale.name().toStdString());
        const TimeUtc time(2024, 2, 9, 4, 5, 6, 7);
        EXPECT_EQ(time.toString(true), QStringLiteral("2024-02-09 04:05:06.007"));
        EXPECT_EQ(TimeLocal(time, 19800).toString(true), QStringLiteral("2024-02-09 09:35:06.007"));
        EXPECT_EQ(time.toGpsT().toString(), QStringLiteral("2024-02-09 04:05:24"));
        EXPECT_EQ(TimeGpsW(2300, 345600).toString(), QStringLiteral("2300week 345600sec"));
        EXPECT_EQ(TimeSpan(1234567890123).toString(true),
                  QStringLiteral("14288 day 23 hour 31 minute 30 sec .123"));
        EXPECT_EQ(TimeSpan::toTimeSpanString(12345678 * 3600000LL),
                  QStringLiteral("12345678:00:00.000"));
        EXPECT_EQ(TimeSpan::fromTimeSpanString(QStringLiteral("1000:00:00.000")), 3600000000);
    }
    QLocale::setDefault(before);
}

} // namespace
} // namespace KelStd
