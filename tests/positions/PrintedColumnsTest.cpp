// Extra columns stand behind the frames and before what is carried through, in every form.

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/JsonWriter.h>
#include <KelStd/positions/PrintedColumns.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::ExtraColumn;
using positions::InputColumns;
using positions::ValuePrinter;

const QString noModel;

InputColumns someColumns()
{
    InputColumns columns;
    columns.carried = QStringList{QStringLiteral("hdop"), QStringLiteral("point")};
    columns.extras = {{QStringLiteral("utc"), ExtraColumn::Kind::Text},
                      {QStringLiteral("hdop"), ExtraColumn::Kind::Number}};
    return columns;
}

ValuePrinter printer()
{
    return {{}, ValuePrinter::Output::Csv};
}

/// What a writer makes of a location of zeros with a time, the given hdop and two carried fields.
QByteArray written(positions::PositionWriter &writer, std::string_view hdop)
{
    writer.begin(someColumns());
    QByteArray bytes;
    const std::vector<std::string_view> carried{"first", "second"};
    const std::vector<std::string_view> extras{"2026-11-23T00:00:00.1Z", hdop};
    writer.write(bytes, {{}, Location(), noModel, carried, extras});
    return bytes;
}

TEST(PrintedColumns, HaveEachNameOnce)
{
    QStringList names;
    const positions::PrintedColumns printed(printer(), someColumns());
    for (const auto &column : printed.all())
        names += column.name;
    EXPECT_EQ(names.join(QLatin1Char(' ')),
              "point wgs84_longitude_deg wgs84_latitude_deg wgs84_height_m wgs84_x_m wgs84_y_m "
              "wgs84_z_m local_longitude_deg local_latitude_deg local_ellipsoidal_height_m "
              "local_northing_m "
              "local_easting_m local_height_m local_height_reference utc hdop hdop_2 "
              "point_2");
}

TEST(PrintedColumns, StandInCommaSeparatedValuesAsTheyAre)
{
    positions::CsvWriter writer(printer(), true);
    EXPECT_TRUE(
        written(writer, "0.90").endsWith(",ellipsoid,2026-11-23T00:00:00.1Z,0.90,first,second\n"));
    EXPECT_TRUE(written(writer, "").endsWith(",ellipsoid,2026-11-23T00:00:00.1Z,,first,second\n"));
}

TEST(PrintedColumns, AreNumbersOrNullInJson)
{
    positions::JsonWriter writer(printer());
    EXPECT_TRUE(
        written(writer, "0.90")
            .endsWith("\"utc\":\"2026-11-23T00:00:00.1Z\",\"hdop\":0.90,\"hdop_2\":\"first\","
                      "\"point_2\":\"second\"}\n"));
    EXPECT_TRUE(written(writer, "").contains("\"hdop\":null,"));
}

} // namespace
} // namespace KelStd
