// How many decimals numbers have, and radians.

#include "support/Printers.h"

#include <KelStd/positions/ValuePrinter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace KelStd {
namespace {

using positions::PrintOptions;
using positions::ValuePrinter;

QString printed(const PrintOptions &options, const char *csvName)
{
    Location location;
    location.localLLH = Pos::fromLongLatH(5.5, 52.25, 40.0);
    location.localNEH = Pos::fromENU(0.25, 463000.0, 40.0); // easting, northing, height [m]
    const auto &all = positions::columns();
    const auto column = std::find_if(all.begin(), all.end(), [csvName](const auto &each) {
        return QLatin1String(each.csvName) == QLatin1String(csvName);
    });
    if (column == all.end()) {
        ADD_FAILURE() << csvName;
        return {};
    }
    const ValuePrinter printer(options, ValuePrinter::Output::Csv);
    QByteArray bytes;
    printer.append(bytes, *column, location);
    EXPECT_EQ(printer.text(*column, location), QString::fromUtf8(bytes));
    return QString::fromUtf8(bytes);
}

TEST(ValuePrinter, TakesTheNearestNumberOfDecimals)
{
    const struct
    {
        int decimals;
        const char *easting;
        const char *latitude;
    } rows[] = {
        {2, "0.25", "52.25"},
        {0, "0", "52"},
        {-1, "0", "52"},
        {-300, "0", "52"},
        {17, "0.25000000000000000", "52.25000000000000000"},
        {18, "0.25000000000000000", "52.25000000000000000"},
        {300, "0.25000000000000000", "52.25000000000000000"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.decimals);
        PrintOptions options;
        options.lengthDecimals = row.decimals;
        options.angleDecimals = row.decimals;
        EXPECT_EQ(printed(options, "local_easting"), QString::fromLatin1(row.easting));
        EXPECT_EQ(printed(options, "local_latitude"), QString::fromLatin1(row.latitude));
    }
}

/// A degree of the mean sphere of 6371008.8 m [m].
constexpr double degreeOnTheGround = 6371008.8 * 3.14159265358979323846 / 180.0;

TEST(ValuePrinter, AnglesFollowTheDecimalsOfLengthsOnTheGround)
{
    const struct
    {
        const char *style;
        double partsPerDegree;
        int beside[4]; ///< decimals beside 0, 2, 3 and 5 of a metre
    } rows[] = {
        {"dms", 3600.0, {2, 4, 5, 7}},
        {"degree", 1.0, {5, 7, 8, 10}},
        {"second", 3600.0, {2, 4, 5, 7}},
        {"radian", 3.14159265358979323846 / 180.0, {7, 9, 10, 12}},
    };
    constexpr int decimals[] = {0, 2, 3, 5};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.style);
        const AngleStyle &style = *findAngleStyle(QString::fromLatin1(row.style));
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(positions::angleDecimalsFor(style, decimals[i], 1.0), row.beside[i]);
        for (const double metres : {1.0, 0.3048, 1200.0 / 3937.0, 0.001}) {
            for (int length = 0; length <= 7; ++length) {
                const int angle = positions::angleDecimalsFor(style, length, metres);
                const double digit =
                    degreeOnTheGround / row.partsPerDegree * std::pow(10.0, -angle);
                const double wanted = metres * std::pow(10.0, -length);
                EXPECT_LE(digit, 1.125 * wanted) << length << ' ' << metres;
                EXPECT_GT(10.0 * digit, wanted) << length << ' ' << metres;
            }
        }
    }
    EXPECT_EQ(positions::angleDecimalsFor(*findAngleStyle(Format_Degree), 17, 1.0), 17);
}

TEST(ValuePrinter, OneNumberOfDecimalsIsThatOfLengths)
{
    PrintOptions options;
    options.lengthDecimals = 3;
    EXPECT_EQ(printed(options, "local_easting"), QStringLiteral("0.250"));
    EXPECT_EQ(printed(options, "local_latitude"), QStringLiteral("52.25000000"));
    // A thousandth of a foot is 0.3 mm, which is less than 0.00000001 of a degree.
    options.lengthUnit = findLengthUnit(QStringLiteral("ft"));
    EXPECT_EQ(printed(options, "local_latitude"), QStringLiteral("52.250000000"));
    options.angleDecimals = 3;
    EXPECT_EQ(printed(options, "local_latitude"), QStringLiteral("52.250"));
}

// 5.5 and 52.25 degrees, and the same in the west and south, times pi / 180; 185 degrees east are
// 175 west.
TEST(ValuePrinter, RadiansAreNumbersWithASign)
{
    PrintOptions options;
    options.angleStyle = findAngleStyle(QStringLiteral("radian"));
    options.angleDecimals = 9;
    EXPECT_EQ(printed(options, "local_longitude"), QStringLiteral("0.095993109"));
    EXPECT_EQ(printed(options, "local_latitude"), QStringLiteral("0.911934534"));
    const ValuePrinter printer(options, ValuePrinter::Output::Table);
    const positions::Column &longitude = positions::columnOf(positions::Frame::LocalGeographic, 0);
    const positions::Column &latitude = positions::columnOf(positions::Frame::LocalGeographic, 1);
    Location location;
    location.localLLH = Pos::fromLongLatH(-5.5, -52.25, 40.0);
    EXPECT_EQ(printer.cell(longitude, location), QStringLiteral("-0.095993109"));
    EXPECT_EQ(printer.cell(latitude, location), QStringLiteral("-0.911934534"));
    EXPECT_TRUE(printer.printsNumbers(latitude));
    location.localLLH = Pos::fromLongLatH(185.0, -1e-12, 40.0);
    EXPECT_EQ(printer.cell(longitude, location), QStringLiteral("-3.054326191"));
    EXPECT_EQ(printer.cell(latitude, location), QStringLiteral("0.000000000"));
}

} // namespace
} // namespace KelStd
