// Every kind of value in every style, at several precisions, with both trailing-zero rules and both
// signs.

#include "support/Printers.h"
#include "support/Raised.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

namespace KelStd {
namespace {

using test::text;

/// A value's texts at one precision, without its sign.
struct Row
{
    double value;
    int precision;
    bool eraseTailZero;
    const char *number;
    const char *sexagesimal;
    bool hasDegrees; ///< a sexagesimal text with degrees gives its minus to the hemisphere

    friend void PrintTo(const Row &row, std::ostream *out) { *out << row.number; }
};

constexpr bool keep = false;
constexpr bool erase = true;

/// 12 34 56.78 is 12.582438888888889 degrees, to the last digit of a double; the doubles beside
/// the decimals 12.582438888888889 and 56.78 are 12.5824388888888890 and 56.7800000000000011.
const Row rows[] = {
    {12.582438888888889, 0, keep, "13", "12°34′57″", true},
    {12.582438888888889, 0, erase, "13", "12°34′57″", true},
    {12.582438888888889, 1, keep, "12.6", "12.0°34.0′56.8″", true},
    {12.582438888888889, 1, erase, "12.6", "12°34′56.8″", true},
    {12.582438888888889, 4, keep, "12.5824", "12.0000°34.0000′56.7800″", true},
    {12.582438888888889, 4, erase, "12.5824", "12°34′56.78″", true},
    {12.582438888888889, 15, keep, "12.582438888888889",
     "12.000000000000000°34.000000000000000′56.780000000000001″", true},
    {12.582438888888889, 15, erase, "12.582438888888889", "12°34′56.780000000000001″", true},
    {0.6, 0, keep, "1", "36′0″", false},
    {0.6, 0, erase, "1", "36′0″", false},
    {0.6, 1, keep, "0.6", "36.0′0.0″", false},
    {0.6, 1, erase, "0.6", "36′0″", false},
    {0.6, 4, keep, "0.6000", "36.0000′0.0000″", false},
    {0.6, 4, erase, "0.6", "36′0″", false},
    {0.6, 15, keep, "0.600000000000000", "36.000000000000000′0.000000000000000″", false},
    {0.6, 15, erase, "0.6", "36′0″", false},
    {100.0, 0, keep, "100", "100°0′0″", true},
    {100.0, 0, erase, "100", "100°0′0″", true},
    {100.0, 1, keep, "100.0", "100.0°0.0′0.0″", true},
    {100.0, 1, erase, "100", "100°0′0″", true},
    {100.0, 4, keep, "100.0000", "100.0000°0.0000′0.0000″", true},
    {100.0, 4, erase, "100", "100°0′0″", true},
    {100.0, 15, keep, "100.000000000000000",
     "100.000000000000000°0.000000000000000′0.000000000000000″", true},
    {100.0, 15, erase, "100", "100°0′0″", true},
};

constexpr int formats[] = {-1, 0, 1, 2, 20, 21, 22, 23, 24, 30, 31, 32, 33, 1000};

class FormattedTable : public testing::TestWithParam<Row>
{
protected:
    /// Of `value`, with the row's settings; the unit text must be that of `unit`.
    static QString shown(int type, const QVariant &value, int format, EUnit unit,
                         const char *unitText)
    {
        const Row &row = GetParam();
        QString shownUnit = text("old");
        const QString result = CoordStringHelper::GetFormatString(
            static_cast<EValueType>(type), value, unit, unit, static_cast<EFormat>(format),
            static_cast<unsigned char>(row.precision), row.eraseTailZero, &shownUnit);
        EXPECT_EQ(shownUnit, text(unitText)) << type;
        return result;
    }

    static QString shownAngle(int type, double value, int format)
    {
        return shown(type, value, format, Unit_Degree, "°");
    }
};

TEST_P(FormattedTable, NumbersLengthsPressuresAndTemperaturesHaveNoStyle)
{
    struct Kind
    {
        int type;
        EUnit unit;
        const char *unitText;
    };
    const Kind kinds[] = {
        {4, Unit_None, ""},         {4, Unit_Yard, ""},           {6, Unit_Meter, "m"},
        {7, Unit_USFoot, "U.S ft"}, {102, Unit_MilliMeter, "mm"}, {103, Unit_Foot, "ft"},
        {104, Unit_Mile, ""},       {105, Unit_Inch, ""},         {11, Unit_Pascal, "par"},
        {11, Unit_Bar, "bar"},      {12, Unit_Celsius, "°C"},     {12, Unit_Kelvin, "K"},
    };
    const Row &row = GetParam();
    for (const Kind &kind : kinds) {
        for (const int format : formats) {
            SCOPED_TRACE(std::to_string(kind.type) + " in style " + std::to_string(format));
            EXPECT_EQ(shown(kind.type, row.value, format, kind.unit, kind.unitText),
                      text(row.number));
            EXPECT_EQ(shown(kind.type, -row.value, format, kind.unit, kind.unitText),
                      text("-") + text(row.number));
        }
    }
}

TEST_P(FormattedTable, AnglesHaveAStyle)
{
    const Row &row = GetParam();
    for (const int format : formats) {
        SCOPED_TRACE(format);
        const QString expected = format == 20   ? text(row.sexagesimal)
                                 : format == 22 ? text(row.number) + text("°")
                                 : format == 23 ? text(row.number) + text("″")
                                                : text(row.number);
        EXPECT_EQ(shownAngle(8, row.value, format), expected);
        EXPECT_EQ(shownAngle(8, -row.value, format), text("-") + expected);
    }
}

TEST_P(FormattedTable, LongitudesAndLatitudesHaveALetterToo)
{
    const Row &row = GetParam();
    for (const int format : formats) {
        SCOPED_TRACE(format);
        const QString angle = format == 20   ? text(row.sexagesimal)
                              : format == 22 ? text(row.number) + text("°")
                              : format == 23 ? text(row.number) + text("″")
                                             : text(row.number);
        const QString negative = format == 20 && row.hasDegrees ? angle : text("-") + angle;
        const auto lettered = [format](const QString &shown, const char *letter) {
            return format == 0 ? shown : shown + text(letter);
        };
        EXPECT_EQ(shownAngle(100, row.value, format), lettered(angle, "E"));
        EXPECT_EQ(shownAngle(100, -row.value, format), lettered(negative, "W"));
        EXPECT_EQ(shownAngle(101, row.value, format), lettered(angle, "N"));
        EXPECT_EQ(shownAngle(101, -row.value, format), lettered(negative, "S"));
    }
}

TEST_P(FormattedTable, EveryOtherKindLooksAtNoSetting)
{
    struct Kind
    {
        int type;
        QVariant value;
        const char *expected;
    };
    const Kind kinds[] = {
        {0, 1.25, "1.25"},
        {1, text("a 高"), "a 高"},
        {1, -1.25, "-1.25"},
        {2, 100, "100"},
        {2, -100, "-100"},
        {3, 100LL, "100"},
        {3, -100LL, "-100"},
        {5, true, "true"},
        {5, false, "false"},
        {300, true, "true"},
        {300, false, "false"},
        {200, 0, "Equator_Zero"},
        {200, 1, "Central_Meridian_Zero"},
        {200, 2, ""},
        {201, 0, "N"},
        {201, 1, "S"},
        {201, -1, ""},
        {202, 0, "ENU"},
        {202, 1, "WSU"},
        {202, 2, "ESU"},
        {202, 3, "WNU"},
        {202, 4, ""},
        {13, text("text"), "text"},
        {106, 7, "7"},
        {-1, text("text"), "text"},
        {1000000, 7, "7"},
    };
    for (const Kind &kind : kinds) {
        for (const int format : formats) {
            SCOPED_TRACE(std::to_string(kind.type) + " in style " + std::to_string(format));
            EXPECT_EQ(shown(kind.type, kind.value, format, Unit_Foot, "ft"), text(kind.expected));
            EXPECT_EQ(shown(kind.type, kind.value, format, Unit_None, ""), text(kind.expected));
        }
    }
}

TEST_P(FormattedTable, TimesAreRefusedByPointerInEveryStyle)
{
    for (const int type : {9, 10}) {
        for (const int format : formats) {
            EXPECT_EQ(test::messageRaisedByPointer(
                          [=] { shown(type, GetParam().value, format, Unit_Meter, "m"); }),
                      std::optional<std::string>("No Time Value In Coordinate"));
        }
    }
}

TEST_P(FormattedTable, LengthsWithoutAFactorAreRefusedByValueInEveryStyle)
{
    const Row &row = GetParam();
    for (const int type : {6, 7, 102, 103, 104, 105}) {
        for (const int format : formats) {
            EXPECT_EQ(test::messageRaisedByValue([&row, type, format] {
                          CoordStringHelper::GetFormatString(
                              static_cast<EValueType>(type), row.value, Unit_Meter, Unit_None,
                              static_cast<EFormat>(format),
                              static_cast<unsigned char>(row.precision), row.eraseTailZero);
                      }),
                      std::optional<std::string>(""));
        }
    }
}

std::string nameOf(const testing::TestParamInfo<Row> &info)
{
    const std::string value = info.param.value == 0.6     ? "NoDegrees"
                              : info.param.value == 100.0 ? "WholeDegrees"
                                                          : "EveryPart";
    return value + std::to_string(info.param.precision)
           + (info.param.eraseTailZero ? "Erased" : "Kept");
}

INSTANTIATE_TEST_SUITE_P(EveryPrecision, FormattedTable, testing::ValuesIn(rows), nameOf);

} // namespace
} // namespace KelStd
