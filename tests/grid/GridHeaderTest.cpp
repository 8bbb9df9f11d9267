// Grid files are held against their headers before PROJ sees them: a few kilobytes that announce
// rows of two thousand million values let PROJ set gigabytes aside.

#include "proj/ProjPrograms.h"
#include "support/GridFiles.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Location.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace KelStd {
namespace {

using test::Grid;
using test::gtxBytes;
using test::slopingGrid;

const QString refusedModel = QStringLiteral("Create proj geoid model failed.");
constexpr qint32 largest = std::numeric_limits<qint32>::max();

long peakMemory() ///< [KiB]
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

constexpr long allowed = 64 * 1024; // [KiB]; what the headers below announce is gigabytes

/// PROJ in a private directory of its own, into which files can be written.
class GridHeader : public testing::Test
{
protected:
    void SetUp() override
    {
        const QString staged = QStringLiteral(KELSTD_TEST_STAGED_PROJ);
        ASSERT_TRUE(QDir().mkpath(home.path("proj/share")));
        ASSERT_TRUE(QFile::link(staged + "/" KELSTD_PROJ_LIBRARY_NAME,
                                home.path("proj/" KELSTD_PROJ_LIBRARY_NAME)));
        for (const QFileInfo &entry : QDir(staged + "/share").entryInfoList(QDir::Files))
            ASSERT_TRUE(QFile::link(entry.filePath(), home.path("proj/share/" + entry.fileName())));
        test::writeFile(home.path("proj/proj_enviroment"), test::markerBytes(3));
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
        memoryBefore = peakMemory();
    }

    void TearDown() override
    {
        EXPECT_LE(peakMemory() - memoryBefore, allowed);
        ProjLib::___unloadEnviroment();
    }

    QString file(const char *name, const QByteArray &bytes) const
    {
        const QString path = home.path(QString::fromUtf8(name));
        test::writeFile(path, bytes);
        return path;
    }

    /// In both directions and by a builder.
    static void expectRefused(const QString &gridFile)
    {
        using Calculate = decltype(&ProjLib::Calc_geoid_diff);
        for (const Calculate calculate :
             {&ProjLib::Calc_geoid_diff, &ProjLib::Calc_geoid_diff_inverse}) {
            const test::LogCapture log;
            double diff = 77.0;
            QString error;
            EXPECT_FALSE(calculate(50.5, 3.5, 0.0, gridFile, diff, &error)) << diff;
            EXPECT_EQ(error, refusedModel);
            EXPECT_EQ(diff, 77.0);
            ASSERT_EQ(log.entries().size(), 1);
            EXPECT_EQ(log.entries()[0].module, "app_log");
            EXPECT_EQ(log.entries()[0].text, refusedModel);
            EXPECT_EQ(static_cast<int>(log.entries()[0].type), 1);
        }
    }

    static void expectSeparation(const QString &gridFile, double separation)
    {
        double diff = 0.0;
        QString error;
        EXPECT_TRUE(ProjLib::Calc_geoid_diff(50.5, 3.5, 0.0, gridFile, diff, &error)) << error;
        EXPECT_NEAR(-diff, separation, 1e-5);
    }

    test::TemporaryHome home;
    long memoryBefore = 0;
};

const QString plain = QStringLiteral("+proj=longlat +datum=WGS84 +axis=enu");

bool convert(const QString &from, const QString &to, Pos &pos, QString *error = nullptr)
{
    return ProjLib::ConvertPosList(from, to, pos, ProjLib::WGS84XYZ_to_LocalLatLongH, error);
}

QString shifted(const QString &grids)
{
    return QStringLiteral("+proj=longlat +ellps=WGS84 +axis=enu +nadgrids=") + grids;
}

/// The sloping grid with another header.
QByteArray gtxWith(void (*change)(Grid &))
{
    Grid grid = slopingGrid();
    change(grid);
    return gtxBytes(grid);
}

struct BadGtx
{
    const char *claim;
    QByteArray bytes;
};

QList<BadGtx> badGtxFiles()
{
    const QByteArray whole = gtxBytes(slopingGrid());
    return {
        {"a row of 8 GB", gtxWith([](Grid &grid) {
             grid.columns = largest;
             grid.rows = 2;
             grid.longitudeSpacing = 1e-7;
         })},
        {"everything of everything", gtxWith([](Grid &grid) {
             grid.rows = grid.columns = largest;
             grid.latitudeSpacing = grid.longitudeSpacing = 1e-8;
         })},
        {"counts whose product overflows to what is there",
         gtxWith([](Grid &grid) { grid.rows = grid.columns = 65536; })},
        {"a byte less than it needs", whole.left(whole.size() - 1)},
        {"a row less than it needs", whole.left(whole.size() - 20)},
        {"a value more than it says", whole + QByteArray(4, '\0')},
        {"values of eight bytes", whole + QByteArray(25 * 4, '\0')},
        {"negative rows and columns", gtxWith([](Grid &grid) { grid.rows = grid.columns = -5; })},
        {"no number as its origin", gtxWith([](Grid &grid) { grid.latitude = std::nan(""); })},
        {"no number as its spacing",
         gtxWith([](Grid &grid) { grid.longitudeSpacing = std::nan(""); })},
        {"an infinite spacing", gtxWith([](Grid &grid) {
             grid.latitudeSpacing = std::numeric_limits<double>::infinity();
         })},
        {"no spacing", gtxWith([](Grid &grid) { grid.latitudeSpacing = 0.0; })},
        {"a spacing so small that PROJ gives up the process",
         gtxWith([](Grid &grid) { grid.latitudeSpacing = 3.7e-15; })},
        {"a spacing backwards", gtxWith([](Grid &grid) { grid.latitudeSpacing = -1.0; })},
        {"nodes far beyond the pole", gtxWith([](Grid &grid) { grid.latitudeSpacing = 1000.0; })},
        {"nodes more than once around the earth",
         gtxWith([](Grid &grid) { grid.longitudeSpacing = 120.0; })},
    };
}

TEST_F(GridHeader, OfAGtxFileThatDoesNotFitItIsRefused)
{
    for (const BadGtx &bad : badGtxFiles()) {
        SCOPED_TRACE(bad.claim);
        expectRefused(file("bad.gtx", bad.bytes));
        expectRefused(file("BAD.GTX", bad.bytes));
    }
}

/// A grid may lie anywhere, with a node on both sides of its seam and half a cell beyond a pole.
TEST_F(GridHeader, OfAGridAroundTheEarthFits)
{
    Grid grid = slopingGrid();
    grid.latitude = -88.75;
    grid.latitudeSpacing = 44.875;
    grid.longitude = 360.0;
    grid.longitudeSpacing = 90.0;
    double diff = 0.0;
    QString error;
    EXPECT_TRUE(
        ProjLib::Calc_geoid_diff(0.0, 3.5, 0.0, file("globe.gtx", gtxBytes(grid)), diff, &error))
        << error;
}

/// By every name that PROJ finds a grid by.
TEST_F(GridHeader, IsReadWhereverProjFindsTheFile)
{
    const QByteArray good = gtxBytes(slopingGrid());
    const QByteArray bad = badGtxFiles().first().bytes;
    const struct
    {
        const char *place;
        const char *name;
    } rows[] = {
        {"proj/a.gtx", "./a.gtx"},
        {"geoid_model_list/b.gtx", "../geoid_model_list/b.gtx"},
        {"proj/share/c.gtx", "c.gtx"},
        {"proj/share/sub/d.gtx", "sub/d.gtx"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        file(row.place, bad);
        expectRefused(row.name);
        file(row.place, good);
        expectSeparation(row.name, 40.55);
    }
    const QString first = file("first.gtx", good);
    const QString second = file("second.gtx", bad);
    expectRefused(first + ',' + second);
    expectRefused('@' + second + ',' + first);
}

/// The file of the separation before is not opened again, unless it is another one by now.
TEST_F(GridHeader, IsReadAgainOfAFileThatWasReplaced)
{
    const QByteArray good = gtxBytes(slopingGrid());
    QByteArray bad = good;
    bad[35] = 50; // ten times the rows
    const QString path = file("grid.gtx", good);
    expectSeparation(path, 40.55);
    struct stat before = {};
    ASSERT_EQ(stat(path.toUtf8().constData(), &before), 0);
    file("grid.gtx", bad);
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
    expectRefused(path);
    file("grid.gtx", good);
    expectSeparation(path, 40.55);
}

TEST_F(GridHeader, OfWhatIsNoRegularFileIsNotWaitedFor)
{
    for (const char *name : {"pipe.gtx", "pipe.tif"}) {
        const QString pipe = home.path(name);
        ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
        expectRefused(pipe);
        Pos pos = Pos::fromLongLatH(5.0, 52.0, 10.0);
        EXPECT_FALSE(convert(shifted(pipe), plain, pos));
    }
    expectRefused(home.path("proj"));
}

// --- In a system's chain
// --------------------------------------------------------------------------

/// An NTv2 grid from 50 to 54 N and 3 to 7 E, little-endian, which shifts every position by one
/// second of arc to the north and two to the west.
struct Ntv2
{
    qint32 grids = 1;
    double latitudeSpacing = 3600.0; ///< [seconds of arc], like the longitudes positive westwards
    double longitudeSpacing = 3600.0;
    qint32 announced = 25;
    int nodes = 25;

    QByteArray bytes() const
    {
        const QByteArray text = "        ";
        QByteArray out =
            record("NUM_OREC", integer(11)) + record("NUM_SREC", integer(11))
            + record("NUM_FILE", integer(grids)) + record("GS_TYPE ", "SECONDS ")
            + record("VERSION ", "NTv2.0  ") + record("SYSTEM_F", text) + record("SYSTEM_T", text)
            + record("MAJOR_F ", number(6378137.0)) + record("MINOR_F ", number(6356752.314))
            + record("MAJOR_T ", number(6378137.0)) + record("MINOR_T ", number(6356752.314));
        out +=
            record("SUB_NAME", "ALL     ") + record("PARENT  ", "NONE    ")
            + record("CREATED ", text) + record("UPDATED ", text)
            + record("S_LAT   ", number(50.0 * 3600.0)) + record("N_LAT   ", number(54.0 * 3600.0))
            + record("E_LONG  ", number(-7.0 * 3600.0)) + record("W_LONG  ", number(-3.0 * 3600.0))
            + record("LAT_INC ", number(latitudeSpacing))
            + record("LONG_INC", number(longitudeSpacing)) + record("GS_COUNT", integer(announced));
        for (int node = 0; node < nodes; ++node)
            out += single(1.0F) + single(2.0F) + single(0.0F) + single(0.0F);
        return out;
    }

private:
    static QByteArray record(const char *name, const QByteArray &value) { return name + value; }
    template <typename Bits, typename Number>
    static QByteArray littleEndian(Number number)
    {
        Bits bits{};
        static_assert(sizeof bits == sizeof number);
        std::memcpy(&bits, &number, sizeof bits);
        QByteArray bytes(sizeof bits, '\0');
        qToLittleEndian(bits, bytes.data());
        return bytes;
    }
    static QByteArray number(double value) { return littleEndian<quint64>(value); }
    static QByteArray single(float value) { return littleEndian<quint32>(value); }
    static QByteArray integer(qint32 value)
    {
        return littleEndian<quint32>(value) + QByteArray(4, '\0');
    }
};

TEST_F(GridHeader, OfAnNtv2FileThatDoesNotFitItIsRefused)
{
    Ntv2 hugeRows; // 500 million columns
    hugeRows.latitudeSpacing = 4 * 3600.0;
    hugeRows.longitudeSpacing = 4 * 3600.0 / (5e8 - 1);
    hugeRows.announced = 1'000'000'000;
    Ntv2 cut;
    cut.nodes = 5;
    Ntv2 moreGrids;
    moreGrids.grids = largest;
    Ntv2 negative;
    negative.announced = -25;
    Ntv2 noNumber;
    noNumber.longitudeSpacing = std::nan("");
    for (const Ntv2 &bad : {hugeRows, cut, moreGrids, negative, noNumber}) {
        const QString path = file("bad.gsb", bad.bytes());
        for (const QString &grids : {path, "@" + path, "\"" + path + "\""}) {
            SCOPED_TRACE(grids.toStdString());
            for (const bool isSource : {true, false}) {
                Pos pos = Pos::fromLongLatH(5.0, 52.0, 10.0);
                QString error;
                EXPECT_FALSE(isSource ? convert(shifted(grids), plain, pos, &error)
                                      : convert(plain, shifted(grids), pos, &error));
                EXPECT_EQ(error, "Error format.");
                EXPECT_EQ(pos, Pos::fromLongLatH(5.0, 52.0, 10.0));
            }
        }
    }
}

TEST_F(GridHeader, OfAnNtv2FileThatFitsLetsPositionsBeShifted)
{
    // The end record of some producers, and nothing.
    for (const QByteArray &end : {QByteArray("END     \0\0\0\0\0\0\0\0", 16), QByteArray()}) {
        const QString path = file("good.gsb", Ntv2().bytes() + end);
        Pos pos = Pos::fromLongLatH(5.0, 52.0, 10.0);
        QString error;
        ASSERT_TRUE(convert(shifted(path), plain, pos, &error)) << error;
        EXPECT_NEAR(pos.getLongLatH().longitude, 5.0 - 2.0 / 3600.0, 1e-9);
        EXPECT_NEAR(pos.getLongLatH().latitude, 52.0 + 1.0 / 3600.0, 1e-9);
    }
}

/// The grids of national surveys that PROJ's packages bring: little- and big-endian, of one grid
/// and of several.
TEST_F(GridHeader, OfTheGridsThatProjBringsFits)
{
    const struct
    {
        const char *grid;
        double longitude;
        double latitude;
    } rows[] = {
        {"BETA2007.gsb", 10.0, 50.0},
        {"CHENYX06.gsb", 8.0, 47.0},
        {"nzgd2kgrid0005.gsb", 172.0, -41.0},
        {"ntf_r93.gsb", 2.0, 47.0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.grid);
        ASSERT_TRUE(QFileInfo(home.path(QStringLiteral("proj/share/") + row.grid)).isFile());
        Pos pos = Pos::fromLongLatH(row.longitude, row.latitude, 0.0);
        const auto expected =
            test::runCct(QStringLiteral("+proj=hgridshift +grids=") + row.grid, {pos});
        QString error;
        ASSERT_TRUE(convert(shifted(row.grid), plain, pos, &error)) << error;
        EXPECT_NEAR(pos.getLongLatH().longitude, expected.first().getXYZ().x, 1e-9);
        EXPECT_NEAR(pos.getLongLatH().latitude, expected.first().getXYZ().y, 1e-9);
        EXPECT_NE(pos.getLongLatH().longitude, row.longitude);
    }
}

/// A geoid's grid in a definition, and in a coordinate system by way of a parameter.
TEST_F(GridHeader, IsReadInEveryChainOfASystem)
{
    const QString bad = file("bad.gtx", badGtxFiles().first().bytes);
    const QString good = file("good.gtx", gtxBytes(slopingGrid()));
    Pos pos = Pos::fromLongLatH(3.5, 50.5, 100.0);
    QString error;
    EXPECT_FALSE(
        convert(plain + " +vunits=m", plain + " +vunits=m +geoidgrids=" + bad, pos, &error));
    EXPECT_EQ(error, "Error format.");
    ASSERT_TRUE(
        convert(plain + " +vunits=m", plain + " +vunits=m +geoidgrids=" + good, pos, &error));
    EXPECT_NEAR(pos.getLongLatH().height, 100.0 - 40.55, 1e-5);

    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.projection.param.insert("grid", Param(ValueType_String, Unit_None, bad));
    coord.projection.paramProj4.insert("grid", "geoidgrids");
    Location location;
    EXPECT_FALSE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 50.5, 100.0), location,
                                                     nullptr, &coord, &error));
    EXPECT_EQ(error, "Error format.");
    LocationBuilder builder(coord);
    EXPECT_FALSE(builder.make(LocationBuilder::Frame::Wgs84Geographic,
                              Pos::fromLongLatH(3.5, 50.5, 100.0), location, &error));
    EXPECT_EQ(error, "Error format.");
    coord.projection.param.insert("grid", Param(ValueType_String, Unit_None, good));
    EXPECT_TRUE(Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 50.5, 100.0), location,
                                                    nullptr, &coord, &error))
        << error.toStdString();
}

} // namespace
} // namespace KelStd
