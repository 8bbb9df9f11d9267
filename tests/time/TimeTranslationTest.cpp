#include "support/Printers.h"

#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeSpan.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// Turns every word into one with a place marker in it, which must not be filled.
class MarkerTranslator : public QTranslator
{
public:
    MarkerTranslator() { QCoreApplication::installTranslator(this); }
    ~MarkerTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *disambiguation,
                      int /*n*/) const override
    {
        EXPECT_STREQ(context, "QObject");
        EXPECT_EQ(disambiguation, nullptr);
        return QStringLiteral("<%1 %2 ") + QString::fromUtf8(source) + QLatin1Char('>');
    }
};

TEST(TimeTranslation, TheWordsOfASpanAreTranslated)
{
    const MarkerTranslator translator;
    EXPECT_EQ(TimeSpan(-90061005).toString(true),
              QStringLiteral("-1 <%1 %2 day> 1 <%1 %2 hour> 1 <%1 %2 minute> 1 <%1 %2 sec> .5"));
}

TEST(TimeTranslation, TheWordsOfWeekAndSecondsAreTranslated)
{
    const MarkerTranslator translator;
    EXPECT_EQ(TimeGpsW(2300, 345600).toString(),
              QStringLiteral("2300<%1 %2 week> 345600<%1 %2 sec>"));
}

TEST(TimeTranslation, TheClockFormIsNot)
{
    const MarkerTranslator translator;
    EXPECT_EQ(TimeSpan::toTimeSpanString(3723004), QStringLiteral("01:02:03.004"));
}

} // namespace
} // namespace KelStd
