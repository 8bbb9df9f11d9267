// A system that is imported by a grid of datum shifts whose values are known.

#include "catalogue/CatalogueTest.h"
#include "support/Mentions.h"
#include "support/Printers.h"
#include "support/ShiftGrids.h"
#include "support/TemporaryHome.h"

#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>
#include <KelStd/proj/ShiftGrids.h>

#include <QtCore/QDir>

namespace KelStd::catalogue {
namespace {

constexpr double seconds = 1.0 / 3600.0;

/// The British grid by a file that bears the name of the national one. It lies from 49 to 61 N and
/// from 9 W to 2 E. Its southern row moves 4.5" northwards, each further one 0.5" more; its eastern
/// column 7" westwards, each further one 0.25" more. All of these are exact as 32-bit numbers, and
/// interpolation between them is exact, too.
class GridImport : public test::CatalogueTest
{
protected:
    void SetUp() override
    {
        CatalogueTest::SetUp();
        ProjLib::___unloadEnviroment();
        test::ownResourceDirectory(home);
        home.use();
        ASSERT_TRUE(ProjLib::___InitializeEnviroment());
        test::writeFile(ShiftGrids::directory().filePath(name),
                        test::ntv2Bytes({49.0, -9.0, 1.0, 1.0, 13, 12, 4.5, 0.5, 7.0, 0.25}));
    }

    const QString name = QStringLiteral("OSTN15_NTv2_OSGBtoETRS.gsb");
    test::TemporaryHome home{test::TemporaryHome::PreparedProj};
};

TEST_F(GridImport, ConvertsByTheGridsValues)
{
    ImportOptions options;
    options.shift = QStringLiteral("EPSG:7710"); // OSGB36 to WGS 84 (9), OSTN15
    const ImportedSystem british = import("EPSG:27700", options);
    ASSERT_TRUE(british.system);
    EXPECT_EQ(british.report.shift.kind, ShiftKind::Grid);
    EXPECT_EQ(british.report.shift.grids, QStringList(name));
    EXPECT_EQ(british.report.shift.frame, QStringLiteral("WORLD")); // its header's SYSTEM_T
    EXPECT_EQ(british.report.shift.operationFrame, QStringLiteral("WGS 84"));

    struct Row
    {
        double longitude, latitude; ///< of the local frame
        double west, north;         ///< by hand ["]: 7 + 0.25 (2 - longitude), 4.5 + 0.5 (lat - 49)
    };
    constexpr Row rows[] = {{-2.25, 51.5, 8.0625, 5.75},
                            {-5.0, 58.0, 8.75, 9.0},
                            {1.5, 52.75, 7.125, 6.375},
                            {-8.5, 49.25, 9.625, 4.625}};
    LocationBuilder builder(*british.system);
    for (const Row &row : rows) {
        Location location;
        ASSERT_TRUE(builder.make(LocationBuilder::Frame::LocalGeographic,
                                 Pos::fromLongLatH(row.longitude, row.latitude, 12.5), location));
        // 1e-10 degrees are 0.01 mm.
        EXPECT_NEAR(location.get_WGS84_LLH_Long(), row.longitude - row.west * seconds, 1e-10);
        EXPECT_NEAR(location.get_WGS84_LLH_Lat(), row.latitude + row.north * seconds, 1e-10);
        EXPECT_NEAR(location.get_WGS84_LLH_Height(), 12.5, 1e-6);
        const Pos world =
            Pos::fromLongLatH(location.get_WGS84_LLH_Long(), location.get_WGS84_LLH_Lat(), 12.5);
        ASSERT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic, world, location));
        EXPECT_NEAR(location.get_Local_LLH_Long(), row.longitude, 1e-10);
        EXPECT_NEAR(location.get_Local_LLH_Lat(), row.latitude, 1e-10);
    }
}

TEST_F(GridImport, FailsOutsideOfTheGrid)
{
    ImportOptions options;
    options.shift = QStringLiteral("EPSG:7710");
    const ImportedSystem british = import("EPSG:27700", options);
    ASSERT_TRUE(british.system);
    LocationBuilder builder(*british.system);
    for (const auto &outside :
         {Pos::fromLongLatH(-2.0, 48.9, 0.0), Pos::fromLongLatH(-2.0, 61.1, 0.0),
          Pos::fromLongLatH(-9.1, 52.0, 0.0), Pos::fromLongLatH(2.1, 52.0, 0.0)}) {
        Location location;
        EXPECT_FALSE(builder.make(LocationBuilder::Frame::Wgs84Geographic, outside, location));
        EXPECT_FALSE(builder.make(LocationBuilder::Frame::LocalGeographic, outside, location));
    }
}

TEST_F(GridImport, IsRefusedByAGridThatIsCutShort)
{
    QByteArray bytes = test::readFile(ShiftGrids::directory().filePath(name));
    bytes.chop(500);
    test::writeFile(ShiftGrids::directory().filePath(name), bytes);
    ImportOptions options;
    options.shift = QStringLiteral("EPSG:7710");
    const ImportedSystem british = catalogue().importSystem("EPSG:27700", options);
    EXPECT_FALSE(british.system.has_value());
    EXPECT_EQ(british.refusal.kind, CatalogueFailureKind::GridOnly);
    EXPECT_THAT(british.refusal.text, test::Mentions("OSTN15_NTv2_OSGBtoETRS.gsb"));
    EXPECT_THAT(british.refusal.text,
                test::Mentions("it has fewer values than its header promises"));
}

} // namespace
} // namespace KelStd::catalogue
