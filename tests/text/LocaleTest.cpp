#include "support/Printers.h"
#include "support/TemporaryHome.h"
#include "text/Symbols.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <string>

namespace KelStd {
namespace {

using test::text;
using Helper = CoordStringHelper;

/// The texts that every user must see alike, whatever the machine is set to.
void expectPlainNumbers()
{
    const auto formatted = [](EValueType type, const QVariant &value, EUnit from, EUnit to,
                              EFormat format) {
        return Helper::GetFormatString(type, value, from, to, format, 3, false);
    };
    EXPECT_EQ(formatted(ValueType_Double, -1234567.25, Unit_None, Unit_None, Format_None),
              text("-1234567.250"));
    EXPECT_EQ(formatted(ValueType_X, 1234567.5, Unit_Meter, Unit_MilliMeter, Format_None),
              text("1234567500.000"));
    EXPECT_EQ(formatted(ValueType_Int32, 1234567, Unit_None, Unit_None, Format_None),
              text("1234567"));
    EXPECT_EQ(formatted(ValueType_Int64, Q_INT64_C(-5000000000), Unit_None, Unit_None, Format_None),
              text("-5000000000"));
    EXPECT_EQ(formatted(ValueType_Pressure, 1013.25, Unit_MilliBar, Unit_MilliBar, Format_None),
              text("1013.250"));
    EXPECT_EQ(formatted(ValueType_Temprature, -10.5, Unit_Celsius, Unit_Celsius, Format_None),
              text("-10.500"));
    EXPECT_EQ(formatted(ValueType_Latitude, -30.504, Unit_Degree, Unit_Degree, Format_Degree),
              text("-30.504°S"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_Longitude, 12.582438888888889, Unit_Degree,
                                      Unit_Degree, Format_DegreeMinuteSecond, 2, true),
              text("12°34′56.78″E"));
    // A value that came as a text, and one that leaves as the variant's own.
    EXPECT_EQ(formatted(ValueType_Double, text("1.25"), Unit_None, Unit_None, Format_None),
              text("1.250"));
    EXPECT_EQ(formatted(ValueType_None, 1.25, Unit_None, Unit_None, Format_None), text("1.25"));
    EXPECT_EQ(Helper::GetNoFormatString(Param(ValueType_Distance, Unit_Meter, 6378137.5)),
              text("6378137.5"));
    EXPECT_EQ(Helper::GetNoFormatString(Param(ValueType_Int64, Unit_None, 1234567)),
              text("1234567"));
    EXPECT_EQ(Helper::GetFormatString(ValueType_X, 4321.5, Unit_Meter), text("4321.5"));
}

/// What a user may type is alike everywhere, too: a decimal comma is no point, and the digits are
/// Latin.
void expectPlainReading()
{
    const auto parsed = [](EValueType type, const char *typed) {
        QVariant value(text("refused"));
        Helper::GetValueFromString(type, Unit_Degree, text(typed), value);
        return value;
    };
    EXPECT_EQ(parsed(ValueType_Double, "1234.5"), QVariant(1234.5));
    EXPECT_EQ(parsed(ValueType_X, "1.234"), QVariant(1.234));
    EXPECT_EQ(parsed(ValueType_Int32, "1234567"), QVariant(1234567));
    EXPECT_EQ(parsed(ValueType_Angle, "30.5°30.5′0″"), QVariant(30.5 + 30.5 / 60.0));
    EXPECT_EQ(parsed(ValueType_Latitude, "-30.25"), QVariant(-30.25));
    for (const char *typed : {"1,5", "1.234,5", "1,234.5", "1 234", "١٫٥", "۱۵", "१५"}) {
        for (const EValueType type : {ValueType_Double, ValueType_Int32, ValueType_Int64,
                                      ValueType_Distance, ValueType_Angle, ValueType_Longitude})
            EXPECT_EQ(parsed(type, typed), QVariant(text("refused"))) << typed;
    }
    double degrees = 0.0;
    EXPECT_TRUE(Helper::GetAngleValue(text("12°34′56.78″"), Format_DegreeMinuteSecond, degrees));
    EXPECT_NEAR(degrees, 12.582438888888889, 2e-15);
    EXPECT_TRUE(Helper::GetAngleValue(text("5400.5″"), Format_Second, degrees));
    EXPECT_EQ(degrees, 5400.5 / 3600.0);
    EXPECT_FALSE(Helper::GetAngleValue(text("12°34′56,78″"), Format_DegreeMinuteSecond, degrees));
    EXPECT_FALSE(Helper::GetAngleValue(text("1,5"), Format_Radian, degrees));
}

/// Tables and positions.
void expectPlainTables()
{
    stShowConfig config;
    const auto shown = [&config](EValueType type, EUnit unit, const QVariant &value,
                                 int intDigits = -1) {
        return config.getParamValueString(Param(type, unit, value), intDigits);
    };
    EXPECT_EQ(shown(ValueType_Double, Unit_None, -1234567.25), text("-1234567.25"));
    EXPECT_EQ(shown(ValueType_Int32, Unit_None, 1234567), text("1234567"));
    EXPECT_EQ(shown(ValueType_X, Unit_Meter, 1234567.5), text("1234567.5"));
    EXPECT_EQ(shown(ValueType_Distance, Unit_Meter, 1234.5, 6), text("001234.5"));
    EXPECT_EQ(shown(ValueType_Angle, Unit_Degree, 1000.5), text("3601800.00″"));
    EXPECT_EQ(shown(ValueType_Longitude, Unit_Degree, 12.582438888888889),
              text("012°34′56.780000″E"));
    config.latLongFormat = Format_Second;
    EXPECT_EQ(shown(ValueType_Latitude, Unit_Degree, -1.5), text("005400.000000″S"));
    EXPECT_EQ(shown(ValueType_Time, Unit_None, QVariantList{30, Q_INT64_C(1704067200000)}),
              text("2024-01-01 00:00:00"));
    config.timeFormat = Format_GPSW;
    EXPECT_EQ(shown(ValueType_Time, Unit_None, QVariantList{30, Q_INT64_C(1704067200000)}),
              text("2295week 86418sec"));
    EXPECT_EQ(shown(ValueType_TimeSpan, Unit_None, Q_INT64_C(86400000000)),
              text("1000 day 0 hour 0 minute 0 sec "));

    QString north;
    QString east;
    QString height;
    Helper::GetFormatString(Pos::fromENU(500000.25, 4321000.5, 1234.5), Coord(), north, east,
                            height, nullptr, nullptr, nullptr);
    EXPECT_EQ(east, text("500000.25"));
    EXPECT_EQ(north, text("4321000.5"));
    EXPECT_EQ(height, text("1234.5"));
}

TEST(Locale, OfQtDecidesNoNumber)
{
    const QLocale before;
    for (const QLocale &locale :
         {QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::Arabic, QLocale::Egypt),
          QLocale(QLocale::French, QLocale::France), QLocale(QLocale::Hindi, QLocale::India),
          QLocale(QLocale::Persian, QLocale::Iran)}) {
        SCOPED_TRACE(locale.name().toStdString());
        QLocale::setDefault(locale);
        // The locale would show, were it asked.
        EXPECT_NE(QLocale().toString(1234567.25, 'f', 3), text("1234567.250"));
        expectPlainNumbers();
        expectPlainReading();
        expectPlainTables();
    }
    QLocale::setDefault(before);
}

/// What the C library keeps about the numbers of a locale: a comma, points between thousands.
/// Machines seldom have such a locale installed, so the test brings one.
QByteArray commaNumericCategory()
{
    const quint32 header[] = {0x20031114, 6, 32, 34, 36, 40, 44, 48};
    const char texts[] = ",\0.\0\3\3\0\0" // point, thousands, grouping, padding
                         ",\0\0\0.\0\0\0" // the first two again as wide characters
                         "UTF-8";
    QByteArray bytes(reinterpret_cast<const char *>(header), sizeof header);
    return bytes.append(texts, sizeof texts);
}

TEST(Locale, OfTheCLibraryDecidesNoNumber)
{
    const QTemporaryDir place;
    test::writeFile(place.filePath(QStringLiteral("comma/LC_NUMERIC")), commaNumericCategory());
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    const QByteArray pathBefore = qgetenv("LOCPATH");
    const bool hadPath = qEnvironmentVariableIsSet("LOCPATH");
    qputenv("LOCPATH", place.path().toLocal8Bit());
    const bool set = std::setlocale(LC_NUMERIC, "comma") != nullptr;
    if (hadPath)
        qputenv("LOCPATH", pathBefore);
    else
        qunsetenv("LOCPATH");
    ASSERT_TRUE(set);

    char shown[16];
    std::snprintf(shown, sizeof shown, "%.1f", 1.5);
    EXPECT_STREQ(shown, "1,5");
    expectPlainNumbers();
    expectPlainReading();
    expectPlainTables();

    std::setlocale(LC_NUMERIC, before.c_str());
}

} // namespace
} // namespace KelStd
