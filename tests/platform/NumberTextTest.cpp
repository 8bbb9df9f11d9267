#include "support/Printers.h"

#include <KelStd/platform/Toolkits.h>

#include <QtCore/QLocale>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace KelStd {
namespace {

QString erased(QString text)
{
    tk::Toolkits::EraseTailZero(text);
    return text;
}

TEST(EraseTailZero, RemovesTheZerosOfTheFractionAndAnIdlePoint)
{
    struct Row
    {
        const char *text;
        const char *expected;
    };
    const Row rows[] = {
        {"1.500", "1.5"},
        {"1.5", "1.5"},
        {"1.000", "1"},
        {"1.", "1"},
        {"0.0", "0"},
        {"0.050", "0.05"},
        {"-0.50", "-0.5"},
        {"-12.00", "-12"},
        {"10.0", "10"},
        {"100.010", "100.01"},
        {"100.00", "100"},
        {"0003.500", "0003.5"},
        {"1000000.000000", "1000000"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(erased(QString::fromLatin1(row.text)), QString::fromLatin1(row.expected));
    }
}

TEST(EraseTailZero, ATextWithoutAPointStaysAsItIs)
{
    for (const char *text : {"100", "120", "00100", "0", "-10", "", "nan", "inf", "-inf", "1e10"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(erased(QString::fromLatin1(text)), QString::fromLatin1(text));
    }
}

TEST(EraseTailZero, AnExponentIsNoFraction)
{
    // Taking the zero away would make another number of it.
    EXPECT_EQ(erased(QStringLiteral("1.5e+10")), QStringLiteral("1.5e+10"));
    EXPECT_EQ(erased(QStringLiteral("1.50e+100")), QStringLiteral("1.50e+100"));
}

TEST(EraseTailZero, AMillionZerosAreNoTrouble)
{
    EXPECT_EQ(erased(QStringLiteral("1.") + QString(1000000, QLatin1Char('0'))),
              QStringLiteral("1"));
}

TEST(DoubleToString, IsTheShortestTextWithAtMostTheDecimalsAskedFor)
{
    struct Row
    {
        double value;
        int decimals;
        const char *expected;
    };
    const Row rows[] = {
        {298.257223563, 17, "298.257223563"}, // WGS 84's inverse flattening, as PROJ is given it
        {298.257222101, 17, "298.257222101"},
        {0.1, 17, "0.1"},
        {0.9996, 17, "0.9996"},
        {-0.25, 17, "-0.25"},
        {6378137.0, 17, "6378137"},
        {0.0, 17, "0"},
        {100.0, 0, "100"},
        {1.0 / 3.0, 4, "0.3333"},
        {2.0 / 3.0, 4, "0.6667"},
        {1.9996, 3, "2"},
        {1.25, 1, "1.3"}, // exactly between two: away from zero, as QString::number rounds
        {0.0001, 3, "0"},
        {12.75, 0, "13"},
        {12.25, -3, "12"},
        {1e-7, 17, "0.0000001"},
        {1e-17, 17, "0.00000000000000001"},
        {1e22, 17, "10000000000000000000000"},
        {123456789012.5, 17, "123456789012.5"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(tk::Toolkits::DoubleToString(row.value, row.decimals),
                  QString::fromLatin1(row.expected));
    }
}

TEST(DoubleToString, ReadsBackAsTheSameDoubleWhereTheDecimalsSuffice)
{
    // 17 decimals denote every double of at least 1 (its neighbours lie 2.2e-16 away or more).
    std::mt19937_64 random(20240611);
    std::uniform_real_distribution<double> exponent(0.0, 15.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = (i % 2 == 0 ? 1.0 : -1.0) * std::pow(10.0, exponent(random));
        const QString text = tk::Toolkits::DoubleToString(value, 17);
        bool ok = false;
        ASSERT_EQ(text.toDouble(&ok), value) << text.toStdString();
        ASSERT_TRUE(ok);
        ASSERT_FALSE(text.contains(QLatin1Char('e'))) << text.toStdString();
        ASSERT_FALSE(text.contains(QLatin1Char('.')) && text.endsWith(QLatin1Char('0')))
            << text.toStdString();
    }
}

TEST(DoubleToString, HasAPointInEveryLocale)
{
    const QLocale before;
    for (const char *locale : {"de_DE", "ar_EG", "fr_FR", "hi_IN"}) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        EXPECT_EQ(tk::Toolkits::DoubleToString(12345.5, 17), QStringLiteral("12345.5")) << locale;
        EXPECT_EQ(tk::Toolkits::DoubleToString(1.0 / 3.0, 2), QStringLiteral("0.33")) << locale;
    }
    QLocale::setDefault(before);
}

} // namespace
} // namespace KelStd
