#include "support/Printers.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

namespace KelStd {
namespace {

using test::text;

/// What a failed reading must leave behind.
const QVariant before(QStringLiteral("untouched"));

/// The value that a text gives; `before` when it is refused.
QVariant parsed(EValueType type, const QString &typed, EUnit unit = Unit_Degree)
{
    QVariant value = before;
    const bool read = CoordStringHelper::GetValueFromString(type, unit, typed, value);
    EXPECT_EQ(read, value != before) << typed.left(100).toStdString();
    return value;
}

constexpr EValueType realTypes[] = {
    ValueType_Double,   ValueType_Distance,    ValueType_Height,
    ValueType_Pressure, ValueType_Temprature,  ValueType_X,
    ValueType_Y,        ValueType_EarthHeight, ValueType_ElevationHeight,
};

TEST(TypedValue, HasTheTypeOfItsKindAndOtherKindsCannotBeTyped)
{
    const std::map<int, QMetaType::Type> kinds = {
        {1, QMetaType::QString},  {2, QMetaType::Int},      {3, QMetaType::LongLong},
        {4, QMetaType::Double},   {6, QMetaType::Double},   {7, QMetaType::Double},
        {8, QMetaType::Double},   {11, QMetaType::Double},  {12, QMetaType::Double},
        {100, QMetaType::Double}, {101, QMetaType::Double}, {102, QMetaType::Double},
        {103, QMetaType::Double}, {104, QMetaType::Double}, {105, QMetaType::Double},
    };
    for (int number = -3; number <= 310; ++number) {
        SCOPED_TRACE(number);
        const QVariant value = parsed(static_cast<EValueType>(number), text("17"));
        const auto kind = kinds.find(number);
        if (kind == kinds.end()) {
            ASSERT_EQ(value, before);
            continue;
        }
        ASSERT_EQ(value.userType(), kind->second);
        ASSERT_EQ(value.toInt(), 17);
    }
    for (const int number : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_EQ(parsed(static_cast<EValueType>(number), text("17")), before);
}

TEST(TypedValue, OfAFlagATimeOrAnEnumerationIsRefusedWhateverTheText)
{
    for (const EValueType type :
         {ValueType_None, ValueType_Boolean, ValueType_Time, ValueType_TimeSpan,
          ValueType_LocationZeroType, ValueType_WhichHalfEarth, ValueType_EllipsoidDirection,
          ValueType_Proj4_Param_Bool}) {
        for (const char *typed : {"true", "1", "0", "", "N", "2024-01-01 00:00:00"})
            EXPECT_EQ(parsed(type, text(typed)), before) << type << ' ' << typed;
    }
}

TEST(TypedString, IsTheTextItself)
{
    for (const char *typed : {"", " ", "text", "高程 Höhe ارتفاع", "1.5", "30°30′"}) {
        const QVariant value = parsed(ValueType_String, text(typed));
        EXPECT_EQ(value.userType(), QMetaType::QString);
        EXPECT_EQ(value.toString(), text(typed));
    }
}

TEST(TypedInteger, IsDecimalAndFitsItsWidth)
{
    struct Row
    {
        const char *typed;
        bool fits32;
        bool fits64;
        qint64 value;
    };
    const Row rows[] = {
        {"0", true, true, 0},
        {"7", true, true, 7},
        {"-7", true, true, -7},
        {"+7", true, true, 7},
        {"007", true, true, 7}, // not octal
        {" 42 ", true, true, 42},
        {"2147483647", true, true, 2147483647},
        {"2147483648", false, true, Q_INT64_C(2147483648)},
        {"-2147483648", true, true, Q_INT64_C(-2147483648)},
        {"-2147483649", false, true, Q_INT64_C(-2147483649)},
        {"9223372036854775807", false, true, std::numeric_limits<qint64>::max()},
        {"-9223372036854775808", false, true, std::numeric_limits<qint64>::min()},
        {"9223372036854775808", false, false, 0},
        {"-9223372036854775809", false, false, 0},
        {"", false, false, 0},
        {" ", false, false, 0},
        {"-", false, false, 0},
        {"4.0", false, false, 0},
        {"1e3", false, false, 0},
        {"0x10", false, false, 0},
        {"1,000", false, false, 0},
        {"1 000", false, false, 0},
        {"seven", false, false, 0},
        {"7°", false, false, 0},
        {"٤٢", false, false, 0},
        {"四二", false, false, 0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.typed);
        EXPECT_EQ(parsed(ValueType_Int32, text(row.typed)),
                  row.fits32 ? QVariant(static_cast<int>(row.value)) : before);
        EXPECT_EQ(parsed(ValueType_Int64, text(row.typed)),
                  row.fits64 ? QVariant(row.value) : before);
    }
}

TEST(TypedNumber, IsDecimalInTheCLocale)
{
    struct Row
    {
        const char *typed;
        double value;
    };
    const Row taken[] = {
        {"1.5", 1.5},    {"-1.5", -1.5},           {"+1.5", 1.5}, {"1e3", 1000.0},
        {"1E-3", 0.001}, {" 1.5 ", 1.5},           {"5.", 5.0},   {".5", 0.5},
        {"0", 0.0},      {"4321.1234", 4321.1234}, {"007", 7.0},  {"1e300", 1e300},
    };
    const char *const refused[] = {"",        " ",     "-",     ".",     "1,5",   "1.000,5",
                                   "1,000.5", "1.5 m", "1.5.2", "one",   "0x1p3", "1.5°",
                                   "1 000",   "1e",    "--1",   "1e400", "١٫٥",   "一点五"};
    for (const EValueType type : realTypes) {
        SCOPED_TRACE(type);
        for (const Row &row : taken)
            EXPECT_EQ(parsed(type, text(row.typed)), QVariant(row.value)) << row.typed;
        for (const char *typed : refused)
            EXPECT_EQ(parsed(type, text(typed)), before) << typed;
    }
}

TEST(TypedNumber, StandsInItsOwnUnit)
{
    for (const EValueType type : realTypes) {
        for (const EUnit unit : {Unit_None, Unit_Meter, Unit_Foot, Unit_MmHg, Unit_Kelvin,
                                 Unit_Second, static_cast<EUnit>(999)})
            EXPECT_EQ(parsed(type, text("2.5"), unit), QVariant(2.5)) << type << ' ' << unit;
    }
}

TEST(TypedNumber, MayBeUndefinedOrInfinite)
{
    // As the reader of numbers has it: who takes the value tests its range positively.
    for (const EValueType type : realTypes) {
        EXPECT_TRUE(std::isnan(parsed(type, text("nan")).toDouble()));
        EXPECT_EQ(parsed(type, text("inf")).toDouble(), std::numeric_limits<double>::infinity());
        EXPECT_EQ(parsed(type, text("-inf")).toDouble(), -std::numeric_limits<double>::infinity());
    }
}

TEST(TypedValue, OfAMegabyteIsReadOrRefusedAtOnce)
{
    QElapsedTimer clock;
    clock.start();
    constexpr int million = 1000000;
    const QString digits(million, QLatin1Char('9'));
    const QString degreeSigns(million, QChar(0x00B0));
    const QString minuteSigns(million, QChar(0x2032));
    const QString secondSigns(million, QChar(0x2033));
    const QString script(million, QChar(0x6E2C));
    for (const QString &typed :
         {digits, degreeSigns, minuteSigns, secondSigns, script, text("1°") + digits + text("′"),
          QString(million, QLatin1Char('-')), text("x").repeated(million) + text("″")}) {
        EXPECT_EQ(parsed(ValueType_String, typed), QVariant(typed));
        for (const EValueType type : {ValueType_Int32, ValueType_Int64, ValueType_Double,
                                      ValueType_Angle, ValueType_Latitude})
            EXPECT_EQ(parsed(type, typed), before) << type;
    }
    EXPECT_EQ(parsed(ValueType_Double, text("1.5") + QString(million, QLatin1Char('0'))),
              QVariant(1.5));
    EXPECT_EQ(parsed(ValueType_Angle, text("1.5°") + script), QVariant(1.5));
    EXPECT_LT(clock.elapsed(), 20000) << "milliseconds"; // under the sanitizers, too
}

} // namespace
} // namespace KelStd
