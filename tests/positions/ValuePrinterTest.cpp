// Numbers of decimals beyond those that can be asked for: the nearest one is taken.

#include "support/Printers.h"

#include <KelStd/positions/ValuePrinter.h>

#include <gtest/gtest.h>

#include <algorithm>

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

} // namespace
} // namespace KelStd
