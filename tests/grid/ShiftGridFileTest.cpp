// What a file with grids of datum shifts says of itself.

#include "support/Printers.h"
#include "support/ShiftGrids.h"
#include "support/TemporaryHome.h"

#include <KelStd/grid/ShiftGridFile.h>

#include <gtest/gtest.h>

#include <limits>

#include <sys/stat.h>

namespace KelStd {
namespace {

using test::geoTiffBytes;
using test::ntv2Bytes;
using test::ShiftGridNodes;

using Kind = GridFailureKind;

class ShiftGridFiles : public testing::Test
{
protected:
    QString file(const QByteArray &bytes) const
    {
        const QString path = home.path(QStringLiteral("grid"));
        test::writeFile(path, bytes);
        return path;
    }

    test::TemporaryHome home;
    ShiftGridFile grid;
};

TEST_F(ShiftGridFiles, Ntv2HasItsNodesAndSystems)
{
    const auto failure = grid.open(file(ntv2Bytes({41.0, -5.5, 0.1, 0.25, 4, 3})));
    ASSERT_FALSE(failure) << failure.text;
    EXPECT_EQ(grid.format(), ShiftGridFile::Format::Ntv2);
    EXPECT_EQ(grid.fromSystem(), QStringLiteral("SITE"));
    EXPECT_EQ(grid.toSystem(), QStringLiteral("WORLD"));
    EXPECT_EQ(grid.valuesPerNode(), 4);
    ASSERT_EQ(grid.grids().size(), 1);
    const GridNodes &nodes = grid.grids().first();
    EXPECT_EQ(nodes.rows, 4);
    EXPECT_EQ(nodes.columns, 3);
    EXPECT_NEAR(nodes.latitude, 41.0, 1e-12);
    EXPECT_NEAR(nodes.longitude, -5.5, 1e-12);
    EXPECT_NEAR(nodes.latitudeOf(3), 41.3, 1e-12);
    EXPECT_NEAR(nodes.longitudeOf(2), -5.0, 1e-12);
}

// As PROJ's own grids have it.
TEST_F(ShiftGridFiles, GeoTiffSaysItsSystemsByCodes)
{
    const char *const metadata =
        "<GDALMetadata>\n  <Item name=\"area_of_use\">Australia</Item>\n"
        "  <Item name=\"target_crs_epsg_code\">7844</Item>\n</GDALMetadata>\n";
    ASSERT_FALSE(grid.open(file(geoTiffBytes(2, metadata))));
    EXPECT_EQ(grid.fromSystem(), QStringLiteral("EPSG:4283"));
    EXPECT_EQ(grid.toSystem(), QStringLiteral("EPSG:7844"));
    EXPECT_EQ(grid.grids().size(), 1);
    for (const char *other :
         {"<Item name=\"target_crs_epsg_code\">x</Item>", "<Item name=\"target_crs_epsg_code\">",
          "<Item name=\"target_crs_epsg_code\">99999</Item>", "\xFF\xFE", "</"}) {
        ASSERT_FALSE(grid.open(file(geoTiffBytes(2, other)))) << other;
        EXPECT_EQ(grid.toSystem(), QString()) << other;
    }
}

TEST_F(ShiftGridFiles, GeoTiffHasTheCentresOfItsPixels)
{
    const auto failure = grid.open(file(geoTiffBytes(2)));
    ASSERT_FALSE(failure) << failure.text;
    EXPECT_EQ(grid.format(), ShiftGridFile::Format::GeoTiff);
    EXPECT_EQ(grid.valuesPerNode(), 2);
    ASSERT_EQ(grid.grids().size(), 1);
    EXPECT_TRUE(grid.grids().first() == (GridNodes{50.0, 5.0, 1.0, 1.0, 3, 3}));
}

// Each byte of the headers is there to be cut off behind.
TEST_F(ShiftGridFiles, EveryCutIsSeen)
{
    for (const QByteArray &whole : {ntv2Bytes(), geoTiffBytes(2)}) {
        const bool isTiff = whole.startsWith("II");
        const int needed = isTiff ? whole.size() : whole.size() - 16; // the last record ends NTv2
        for (int size = 0; size < needed; size += size < 600 ? 1 : 7) {
            EXPECT_TRUE(grid.open(file(whole.left(size)))) << size;
            EXPECT_TRUE(grid.grids().isEmpty());
        }
        EXPECT_FALSE(grid.open(file(whole.left(needed))));
    }
}

/// Bytes of an NTv2 file in place of those of a record's value.
QByteArray withValue(int record, const QByteArray &value)
{
    return ntv2Bytes().replace(record * 16 + 8, value.size(), value);
}

// Records 0 to 10 are those of the file, 11 to 21 those of the grid.
TEST_F(ShiftGridFiles, HeadersThatPromiseNoGridAreRefused)
{
    const QByteArray notANumber = QByteArray::fromHex("000000000000f87f");
    const QByteArray infinite = QByteArray::fromHex("000000000000f07f");
    const QByteArray zero(8, '\0');
    const QByteArray many = QByteArray::fromHex("ffffff7f");
    const QByteArray negative = QByteArray::fromHex("ffffffff");
    struct Row
    {
        const char *what;
        QByteArray bytes;
    };
    const Row rows[] = {
        {"no grids", withValue(2, QByteArray(4, '\0'))},
        {"two thousand million grids", withValue(2, many)},
        {"a negative number of grids", withValue(2, negative)},
        {"an unknown unit", withValue(3, "FEET    ")},
        {"a latitude that is none", withValue(15, notANumber)},
        {"an infinite latitude", withValue(16, infinite)},
        {"a spacing of zero", withValue(19, zero)},
        {"a spacing that is none", withValue(20, notANumber)},
        {"another number of nodes", withValue(21, QByteArray::fromHex("08000000"))},
        {"two thousand million nodes", withValue(21, many)},
        {"a negative number of nodes", withValue(21, negative)},
        {"nothing", {}},
        {"a text", "OSTN15 is not in this file"},
        {"another image", QByteArray("II*\0\xff\xff\xff\xff", 8)},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        const auto failure = grid.open(file(row.bytes));
        EXPECT_TRUE(failure);
        EXPECT_FALSE(failure.text.isEmpty());
        EXPECT_TRUE(grid.grids().isEmpty());
    }
}

// A chain of directories that leads back to its beginning would be read for ever.
TEST_F(ShiftGridFiles, DirectoriesInACircleAreRefused)
{
    QByteArray bytes = geoTiffBytes(2);
    constexpr int nextAt = 8 + 2 + 14 * 12;
    bytes.replace(nextAt, 4, QByteArray::fromHex("08000000"));
    EXPECT_EQ(grid.open(file(bytes)).kind, Kind::CutShort);
}

TEST_F(ShiftGridFiles, OnlyRegularFilesAreRead)
{
    EXPECT_EQ(grid.open(home.path()).kind, Kind::NotAFile);
    EXPECT_EQ(grid.open(home.path(QStringLiteral("nothing"))).kind, Kind::Unreadable);
    const QString pipe = home.path(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(grid.open(pipe).kind, Kind::NotAFile);
}

} // namespace
} // namespace KelStd
