// What a geoid grid file says of itself, and why one is not read.

#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/grid/GridFile.h>

#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include <sys/stat.h>

namespace KelStd {
namespace {

using test::ggfBytes;
using test::Grid;
using test::gtxBytes;
using test::RowOrder;
using test::slopingGrid;

using Kind = GridFailureKind;

class GridFiles : public testing::Test
{
protected:
    QString file(const char *name, const QByteArray &bytes) const
    {
        const QString path = home.path(name);
        test::writeFile(path, bytes);
        return path;
    }

    test::TemporaryHome home;
};

Grid changed(const std::function<void(Grid &)> &change)
{
    Grid grid = slopingGrid();
    change(grid);
    return grid;
}

TEST_F(GridFiles, SayWhereTheirNodesAre)
{
    Grid grid = slopingGrid();
    grid.longitudeSpacing = 0.5;
    const struct
    {
        const char *name;
        QByteArray bytes;
        GridFile::Format format;
        const char *formatName;
    } rows[] = {
        {"a.gtx", gtxBytes(grid), GridFile::Format::Gtx, "GTX"},
        {"a.bin", gtxBytes(grid), GridFile::Format::Gtx, "GTX"},
        {"a.ggf", ggfBytes(grid, RowOrder::OutputOrder), GridFile::Format::Ggf, "GGF"},
        {"b.GGF", ggfBytes(grid, RowOrder::Reversed), GridFile::Format::Ggf, "GGF"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        GridFile read;
        ASSERT_EQ(read.open(file(row.name, row.bytes)).kind, Kind::None);
        EXPECT_EQ(read.format(), row.format);
        EXPECT_EQ(GridFile::formatName(read.format()), row.formatName);
        EXPECT_EQ(read.completeness().kind, Kind::None);
        EXPECT_EQ(read.nodes().rows, 5);
        EXPECT_EQ(read.nodes().columns, 5);
        EXPECT_EQ(read.nodes().count(), 25);
        EXPECT_EQ(read.nodes().latitudeOf(4), 54.0);
        EXPECT_EQ(read.nodes().longitudeOf(3), 4.5);
    }
}

TEST_F(GridFiles, HaveTheirLowestAndHighestValuesWhereTheGridHasThem)
{
    Grid grid = slopingGrid();
    grid.values[24] = -88.8888F; // the north-eastern corner
    grid.values[1] = std::numeric_limits<float>::quiet_NaN();
    grid.values[2] = 1000.5F;
    for (const auto &[name, bytes] : QList<std::pair<const char *, QByteArray>>{
             {"a.gtx", gtxBytes(grid)},
             {"a.ggf", ggfBytes(grid, RowOrder::OutputOrder)},
             {"b.ggf", ggfBytes(grid, RowOrder::Reversed)}}) {
        SCOPED_TRACE(name);
        GridFile read;
        GridFile::Values values;
        ASSERT_FALSE(read.open(file(name, bytes)));
        ASSERT_FALSE(read.readValues(values));
        EXPECT_EQ(values.missing, 3);
        EXPECT_EQ(values.lowest.value, 40.0);
        EXPECT_EQ(values.lowest.row, 0);
        EXPECT_EQ(values.lowest.column, 0);
        EXPECT_FLOAT_EQ(static_cast<float>(values.highest.value), 44.3F);
        EXPECT_EQ(values.highest.row, 4);
        EXPECT_EQ(values.highest.column, 3);
    }
}

/// A last quarter of zeros, where it is as large as a block of a disk.
TEST_F(GridFiles, MayEndInZeros)
{
    Grid grid = slopingGrid();
    grid.rows = grid.columns = 30;
    grid.latitudeSpacing = 1.0;
    grid.values.assign(900, 1.0F);
    std::fill(grid.values.begin() + 675, grid.values.end(), 0.0F);
    GridFile read;
    ASSERT_FALSE(read.open(file("zeros.gtx", gtxBytes(grid))));
    EXPECT_TRUE(read.endsInZeros());
    grid.values.back() = 1.0F;
    ASSERT_FALSE(read.open(file("values.gtx", gtxBytes(grid))));
    EXPECT_FALSE(read.endsInZeros());
    ASSERT_FALSE(read.open(
        file("small.gtx", gtxBytes(changed([](Grid &small) { small.values.assign(25, 0.0F); })))));
    EXPECT_FALSE(read.endsInZeros());
}

TEST_F(GridFiles, AreRefusedWithAKindAndAReason)
{
    constexpr qint32 largest = std::numeric_limits<qint32>::max();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const QByteArray whole = gtxBytes(slopingGrid());
    const QByteArray ggf = ggfBytes(slopingGrid(), RowOrder::OutputOrder);
    const struct
    {
        QString file;
        Kind kind;
        const char *text;
    } rows[] = {
        {QStringLiteral("/no/such/file.gtx"), Kind::Unreadable, "No such file or directory"},
        {home.path(), Kind::NotAFile, "it is a directory"},
        {QStringLiteral("/dev/null"), Kind::NotAFile, "it is no regular file"},
        {file("empty.gtx", {}), Kind::TooShort, "its 0 bytes are too short for a GTX header"},
        {file("short.ggf", QByteArray(145, 'x')), Kind::TooShort,
         "its 145 bytes are too short for a GGF header"},
        {file("letters.gtx", QByteArray(500, 'x')), Kind::NoGrid,
         "it is no GTX grid: its header has no rows, columns, spacing or place on the earth"},
        {file("no_rows.gtx", gtxBytes(changed([](Grid &grid) { grid.rows = 0; }))), Kind::NoGrid,
         "it is no GTX grid: its header has no rows, columns, spacing or place on the earth"},
        {file("flat.gtx", gtxBytes(changed([](Grid &grid) { grid.latitudeSpacing = 0.0; }))),
         Kind::NoGrid,
         "it is no GTX grid: its header has no rows, columns, spacing or place on the earth"},
        {file("undefined.gtx", gtxBytes(changed([=](Grid &grid) { grid.longitude = nan; }))),
         Kind::NoGrid,
         "it is no GTX grid: its header has no rows, columns, spacing or place on the earth"},
        {file("huge.gtx",
              gtxBytes(changed([=](Grid &grid) { grid.rows = grid.columns = largest; }))),
         Kind::CutShort, "it is cut short: of 4611686014132420609 values only 25 are there"},
        {file("cut.gtx", whole.chopped(3)), Kind::CutShort,
         "it is cut short: of 25 values only 24 are there"},
        {file("cut.ggf", ggf.chopped(1)), Kind::CutShort,
         "it is cut short: of 25 values only 24 are there"},
        {file("long.gtx", whole + QByteArray(100, '\0')), Kind::TooLong,
         "it has 240 bytes, but 5 rows of 5 values take 140"},
        {file("pole.ggf", ggfBytes(changed([](Grid &grid) { grid.latitudeSpacing = 20.0; }),
                                   RowOrder::OutputOrder)),
         Kind::OffTheEarth,
         "its header leads beyond the pole or around the earth: 5 rows every 20 deg from latitude "
         "50, 5 columns every 1 deg"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file.toStdString());
        GridFile read;
        GridFile::Values values;
        GridFailure failure = read.open(row.file);
        if (!failure)
            failure = read.readValues(values);
        EXPECT_EQ(failure.kind, row.kind);
        EXPECT_EQ(failure.text, row.text);
    }
}

/// More than PROJ counts, in a file without its blocks on the disk.
TEST_F(GridFiles, AreRefusedWhereTheyHaveMoreNodesThanProjCounts)
{
    const Grid grid = changed([](Grid &many) {
        many.latitude = many.longitude = 0.0;
        many.latitudeSpacing = many.longitudeSpacing = 0.001;
        many.rows = 50000;
        many.columns = 50000;
        many.values.clear();
    });
    const QString path = file("many.gtx", gtxBytes(grid));
    ASSERT_TRUE(QFile::resize(path, 40 + 4LL * grid.rows * grid.columns));
    GridFile read;
    ASSERT_FALSE(read.open(path));
    EXPECT_EQ(read.completeness().kind, Kind::TooManyNodes);
}

/// What stands behind the last value of a GGF grid has no meaning.
TEST_F(GridFiles, InTheGgfLayoutMayBeLonger)
{
    GridFile read;
    const QByteArray bytes = ggfBytes(slopingGrid(), RowOrder::OutputOrder);
    ASSERT_FALSE(read.open(file("long.ggf", bytes + "and more")));
    EXPECT_FALSE(read.completeness());
}

// TIFF 6.0, section 2: the order of bytes ("II", "MM"), then 42; BigTIFF has 43.
TEST_F(GridFiles, AreKnownAsGeoTiff)
{
    for (const QByteArray &magic : {QByteArray("II*\0", 4), QByteArray("MM\0*", 4),
                                    QByteArray("II+\0", 4), QByteArray("MM\0+", 4)}) {
        for (const int size : {4, 40, 1000}) {
            for (const char *name : {"grid.tif", "grid.tiff", "grid", "grid.gtx", "grid.ggf"}) {
                SCOPED_TRACE(name + magic.toHex().toStdString());
                GridFile read;
                const GridFailure failure =
                    read.open(file(name, magic + QByteArray(size - 4, '\x01')));
                EXPECT_EQ(failure.kind, Kind::OnlyForProj);
                EXPECT_EQ(read.format(), GridFile::Format::GeoTiff);
                EXPECT_EQ(GridFile::formatName(read.format()), "GeoTIFF");
                EXPECT_TRUE(failure.text.contains("GeoTIFF")) << failure.text;
                EXPECT_EQ(read.nodes(), GridNodes());
                GridFile::Values values;
                EXPECT_TRUE(read.readValues(values));
            }
        }
    }
}

/// A GGF header's first bytes may be anything.
TEST_F(GridFiles, AreNotTakenForGeoTiffByTheFirstBytesOfAGoodHeader)
{
    QByteArray bytes = ggfBytes(slopingGrid(), RowOrder::OutputOrder);
    bytes.replace(0, 4, QByteArray("II*\0", 4));
    GridFile read;
    EXPECT_FALSE(read.open(file("named.ggf", bytes)));
    EXPECT_EQ(read.format(), GridFile::Format::Ggf);
}

TEST_F(GridFiles, CanBeOpenedOneAfterAnother)
{
    GridFile read;
    GridFile::Values values;
    EXPECT_EQ(read.completeness().kind, Kind::NoGrid);
    ASSERT_FALSE(read.open(file("a.gtx", gtxBytes(slopingGrid()))));
    EXPECT_TRUE(read.open(QStringLiteral("/no/such/file.gtx")));
    EXPECT_EQ(read.nodes(), GridNodes());
    EXPECT_TRUE(read.readValues(values));
    EXPECT_FALSE(read.endsInZeros());
    ASSERT_FALSE(read.open(file("b.ggf", ggfBytes(slopingGrid(), RowOrder::Reversed))));
    EXPECT_FALSE(read.readValues(values));
    EXPECT_EQ(values.lowest.row, 0);
}

} // namespace
} // namespace KelStd
