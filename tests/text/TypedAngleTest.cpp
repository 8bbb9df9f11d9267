#include "support/Printers.h"
#include "text/Symbols.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

using test::text;
using Helper = CoordStringHelper;

constexpr EValueType angleTypes[] = {ValueType_Angle, ValueType_Longitude, ValueType_Latitude};

const QVariant before(QStringLiteral("untouched"));

QVariant parsed(EValueType type, EUnit unit, const char *typed)
{
    QVariant value = before;
    const bool read = Helper::GetValueFromString(type, unit, text(typed), value);
    EXPECT_EQ(read, value != before) << typed;
    return value;
}

struct Row
{
    const char *typed;
    double degrees;
    double arcSeconds;
};

TEST(TypedAngle, IsTheSumOfItsPartsInTheUnitAskedFor)
{
    const Row rows[] = {
        // without a symbol: degrees
        {"30.5", 30.5, 109800.0},
        {"-30.5", -30.5, -109800.0},
        {" 2 ", 2.0, 7200.0},
        {"1e2", 100.0, 360000.0},
        {"0", 0.0, 0.0},
        {"400", 400.0, 1440000.0}, // an angle has no range
        // one symbol
        {"30°", 30.0, 108000.0},
        {"30.5°", 30.5, 109800.0},
        {"-30.5°", -30.5, -109800.0},
        {"15′", 0.25, 900.0},
        {"-15′", -0.25, -900.0},
        {"36″", 0.01, 36.0},
        {"-36″", -0.01, -36.0},
        // two, of which any may be left out
        {"30°30′", 30.5, 109800.0},
        {"30°36″", 30.01, 108036.0},
        {"15′36″", 0.26, 936.0},
        // all three
        {"30°15′36″", 30.26, 108936.0},
        {"0°0′0″", 0.0, 0.0},
        {"012°03′04.5″", 12.05125, 43384.5},
        {" 30 ° 15 ′ 36 ″ ", 30.26, 108936.0},
        {"1e1°1e1′0″", 10.0 + 10.0 / 60.0, 36600.0},
        // fractions and sizes of minutes and seconds are free
        {"30.5°30.5′0″", 30.5 + 30.5 / 60.0, 111630.0},
        {"30°75′", 31.25, 112500.0},
        {"10°0′90″", 10.025, 36090.0},
        {"10°61′0″", 11.0 + 1.0 / 60.0, 39660.0},
    };
    for (const EValueType type : angleTypes) {
        for (const Row &row : rows) {
            SCOPED_TRACE(row.typed);
            // The same sum may be formed in another order: a few last bits.
            const double degreeBits = 4e-16 * std::abs(row.degrees);
            const double secondBits = 4e-16 * std::abs(row.arcSeconds);
            EXPECT_NEAR(parsed(type, Unit_Degree, row.typed).toDouble(), row.degrees, degreeBits);
            EXPECT_NEAR(parsed(type, Unit_Second, row.typed).toDouble(), row.arcSeconds,
                        secondBits);
        }
    }
}

TEST(TypedAngle, AddsEveryPartWithItsOwnSign)
{
    // Deliberately: a minus before the degrees reaches neither minutes nor seconds.
    const Row rows[] = {
        {"-30°15′", -29.75, -107100.0},
        {"-30°-15′", -30.25, -108900.0},
        {"-30°0′36″", -29.99, -107964.0},
        {"-30°-15′-36″", -30.26, -108936.0},
        {"30°-15′", 29.75, 107100.0},
        {"0°-30′0″", -0.5, -1800.0},
        {"-30′15″", -0.49583333333333335, -1785.0},
        {"−30°15′", -29.75, -107100.0}, // the minus of typesetters
    };
    for (const EValueType type : angleTypes) {
        for (const Row &row : rows) {
            SCOPED_TRACE(row.typed);
            EXPECT_NEAR(parsed(type, Unit_Degree, row.typed).toDouble(), row.degrees, 1e-14);
            EXPECT_NEAR(parsed(type, Unit_Second, row.typed).toDouble(), row.arcSeconds, 1e-10);
        }
    }
}

TEST(TypedAngle, IgnoresWhatFollowsTheLastSymbol)
{
    const Row rows[] = {
        {"30°15′36″N", 30.26, 108936.0},
        {"30°15′36″S", 30.26, 108936.0}, // the letter, and the sign that it stands for
        {"30.5°W", 30.5, 109800.0},
        {"30°15′ north", 30.25, 108900.0},
        {"30° 15 minutes", 30.0, 108000.0},
        {"30°15'", 30.0, 108000.0},                            // an apostrophe is no minute sign
        {"1°2′3″4″", 1.0 + 2.0 / 60.0 + 3.0 / 3600.0, 3723.0}, // the first of each symbol
        {"36″ 高", 0.01, 36.0},
    };
    for (const EValueType type : angleTypes) {
        for (const Row &row : rows) {
            SCOPED_TRACE(row.typed);
            EXPECT_NEAR(parsed(type, Unit_Degree, row.typed).toDouble(), row.degrees, 1e-14);
            EXPECT_NEAR(parsed(type, Unit_Second, row.typed).toDouble(), row.arcSeconds, 1e-10);
        }
    }
}

TEST(TypedAngle, WithoutANumberBeforeASymbolIsRefused)
{
    const char *const refused[] = {
        "",
        " ",
        "x",
        "30.5 deg",
        "30d15",
        "30:15:36",
        "1,5",
        "30,5°",
        "-",
        "°",
        "′",
        "″",
        "°′″",
        "x°",
        "°30′",
        "30°′",
        "30°x′",
        "30°15′″",
        "30°15′x″",
        "30°″",
        "30 15′",
        "30°1 5′",
        "N30°15′",
        // symbols in another order have no number between them
        "30′15°",
        "36″15′",
        "36″30°",
        "30°36″15′",
        "15′36″30°",
        "15′30°36″",
        "36″30°15′",
        // the first of each counts
        "30°15°20′",
        "30°15′20′36″",
        // look-alikes: the masculine ordinal, full-width and Arabic digits
        "30º15′",
        "３０°",
        "٣٠°",
    };
    for (const EValueType type : angleTypes) {
        for (const char *typed : refused) {
            for (const EUnit unit : {Unit_Degree, Unit_Second})
                EXPECT_EQ(parsed(type, unit, typed), before) << typed;
        }
    }
}

TEST(TypedAngle, InAnotherUnitIsRefused)
{
    for (const EValueType type : angleTypes) {
        for (const char *typed : {"12.5", "12°30′", "12°", "30′", "36″", "0"}) {
            for (int unit = -2; unit <= 310; ++unit) {
                if (unit == Unit_Degree || unit == Unit_Second)
                    continue;
                ASSERT_EQ(parsed(type, static_cast<EUnit>(unit), typed), before)
                    << typed << " in " << unit;
            }
        }
    }
}

TEST(TypedAngle, MayBeUndefinedOrInfinite)
{
    for (const EUnit unit : {Unit_Degree, Unit_Second}) {
        EXPECT_TRUE(std::isnan(parsed(ValueType_Angle, unit, "nan").toDouble()));
        EXPECT_TRUE(std::isnan(parsed(ValueType_Angle, unit, "10°nan′").toDouble()));
        EXPECT_EQ(parsed(ValueType_Angle, unit, "-inf").toDouble(),
                  -std::numeric_limits<double>::infinity());
    }
}

} // namespace
} // namespace KelStd
