// Files of positions are written whole or not at all, in the bytes of their writer.

#include <KelStd/positions/PositionFile.h>

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/JsonWriter.h>

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace KelStd {
namespace {

using positions::InputColumns;
using positions::ValuePrinter;
using positions::WritePosition;

const QString noModel;

Location someLocation()
{
    Location location;
    location.wgs84LLH = Pos::fromLongLatH(5.25, 52.5, 40.0);
    location.wgs84XYZ = Pos::fromXYZ(3874000.0, 356000.0, 5036500.0);
    location.localLLH = Pos::fromLongLatH(5.5, 52.25, 1.5);
    location.localNEH = Pos::fromENU(155000.0, 463000.0, -0.25);
    return location;
}

const QByteArray line = "P1,5.25000000000,52.50000000000,40.00000,3874000.00000,356000.00000,"
                        "5036500.00000,5.50000000000,52.25000000000,1.50000,463000.00000,"
                        "155000.00000,-0.25000,ellipsoid,oak\n";

ValuePrinter printer()
{
    return {{}, ValuePrinter::Output::Csv};
}

InputColumns someColumns()
{
    InputColumns columns;
    columns.hasNames = true;
    columns.carried = QStringList{QStringLiteral("tree")};
    return columns;
}

bool writeSome(const WritePosition &write, int count)
{
    const Location location = someLocation();
    for (int i = 0; i < count; ++i)
        write({"P1", location, noModel, {"oak"}});
    return true;
}

class PositionFile : public testing::Test
{
protected:
    test::TemporaryHome m_home;
    QString m_name = m_home.path(QStringLiteral("site.csv"));
};

TEST_F(PositionFile, HasTheLinesOfItsWriter)
{
    positions::CsvWriter writer(printer(), true);
    // More than is kept in memory.
    const int count = 2000;
    ASSERT_TRUE(
        positions::writePositionFile(m_name, writer, someColumns(), [](const WritePosition &write) {
            return writeSome(write, count);
        }));
    EXPECT_EQ(test::readFile(m_name),
              "point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,wgs84_x_m,wgs84_y_m,"
              "wgs84_z_m,local_longitude_deg,local_latitude_deg,local_ellipsoidal_height_m,"
              "local_northing_m,local_easting_m,local_height_m,local_height_reference,tree\n"
                  + line.repeated(count));
}

TEST_F(PositionFile, HasTheSeparatorsAndTheEndingOfItsWriter)
{
    positions::GeoJsonWriter writer(printer());
    ASSERT_TRUE(
        positions::writePositionFile(m_name, writer, someColumns(), [](const WritePosition &write) {
            return writeSome(write, 2);
        }));
    const QByteArray bytes = test::readFile(m_name);
    EXPECT_TRUE(bytes.startsWith("{\"type\":\"FeatureCollection\",\"features\":[\n{"));
    EXPECT_EQ(bytes.count("\n,{\"type\":\"Feature\","), 1);
    EXPECT_TRUE(bytes.endsWith("\"tree\":\"oak\"}}\n]}\n"));
}

TEST_F(PositionFile, StaysWhereNotAllPositionsAreThere)
{
    test::writeFile(m_name, "old");
    positions::CsvWriter writer(printer(), true);
    QString error = QStringLiteral("?");
    EXPECT_FALSE(positions::writePositionFile(
        m_name, writer, someColumns(),
        [](const WritePosition &write) { return !writeSome(write, 2000); }, &error));
    EXPECT_EQ(error, QString());
    const auto raises = [](const WritePosition &write) -> bool {
        writeSome(write, 1);
        throw std::runtime_error("no more");
    };
    EXPECT_THROW(positions::writePositionFile(m_name, writer, someColumns(), raises),
                 std::runtime_error);
    EXPECT_EQ(test::readFile(m_name), "old");
}

TEST_F(PositionFile, SaysWhyItCannotBeWritten)
{
    positions::CsvWriter writer(printer(), true);
    bool isAsked = false;
    QString error;
    EXPECT_FALSE(positions::writePositionFile(
        m_home.path(QStringLiteral("none/site.csv")), writer, someColumns(),
        [&](const WritePosition &) { return isAsked = true; }, &error));
    EXPECT_FALSE(isAsked);
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
} // namespace KelStd
