#include "proj/FakeProjHome.h"
#include "proj/ProgramDirectory.h"
#include "support/LogCapture.h"
#include "support/Printers.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace KelStd {
namespace {

using test::FakeProjHome;
using test::FakeUnpacker;
using test::ProgramDirectory;
using test::readFile;
using test::writeFile;

struct MarkerRow
{
    std::string name;
    std::optional<QByteArray> hex; ///< nothing: no marker at all
};

void PrintTo(const MarkerRow &row, std::ostream *out)
{
    *out << row.name;
}

class MarkerHome : public testing::TestWithParam<MarkerRow>
{
protected:
    MarkerHome()
    {
        program.writeArchive(test::smallArchive());
        program.writeGeoidModel("model.gtx", "delivered");
        writeFile(home.path("proj/stale.txt"), "from an older release");
        writeFile(home.path("proj/.hidden/deep.txt"), "from an older release");
        writeFile(home.path("other.txt"), "the user's");
        writeFile(home.path("geoid_model_list/own.gtx"), "the user's");
        QFile::remove(marker);
    }

    void SetUp() override
    {
        if (GetParam().hex)
            writeFile(marker, QByteArray::fromHex(*GetParam().hex));
    }

    void TearDown() override { ProjLib::___unloadEnviroment(); }

    FakeProjHome home;
    ProgramDirectory program;
    QString marker = home.path("proj/proj_enviroment");
};

using OutdatedMarker = MarkerHome;

TEST_P(OutdatedMarker, EmptiesAndInstallsAnew)
{
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());

    EXPECT_EQ(readFile(marker).toHex(), "00000003");
    EXPECT_FALSE(QFile::exists(home.path("proj/stale.txt")));
    EXPECT_FALSE(QFile::exists(home.path("proj/.hidden")));
    EXPECT_TRUE(QFile::exists(home.path("proj/share/proj.ini")));
    EXPECT_EQ(readFile(home.path("geoid_model_list/model.gtx")), "delivered");

    // Only the private directory is the library's to empty.
    EXPECT_EQ(readFile(home.path("other.txt")), "the user's");
    EXPECT_EQ(readFile(home.path("geoid_model_list/own.gtx")), "the user's");
}

TEST_P(OutdatedMarker, WithoutAnArchiveLosesNothing)
{
    ASSERT_TRUE(QFile::remove(program.archiveFile()));
    const test::LogCapture log;
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(log.entries().isEmpty());
    EXPECT_TRUE(test::projIsMissing());
    ASSERT_EQ(QFile::exists(marker), GetParam().hex.has_value());
    EXPECT_EQ(GetParam().hex ? readFile(marker).toHex() : QByteArray(),
              GetParam().hex.value_or(QByteArray()));
    EXPECT_EQ(readFile(home.path("proj/stale.txt")), "from an older release");
    EXPECT_EQ(readFile(home.libraryFile()), test::fakeProjBytes());
    EXPECT_FALSE(QFile::exists(home.path("geoid_model_list/model.gtx")));

    // The next start finds the archive in its place and makes good.
    program.writeArchive(test::smallArchive());
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(readFile(marker).toHex(), "00000003");
}

const auto rowName = [](const auto &row) { return row.param.name; };

INSTANTIATE_TEST_SUITE_P(
    Markers, OutdatedMarker,
    testing::Values(MarkerRow{"Missing", std::nullopt}, MarkerRow{"Empty", ""},
                    MarkerRow{"OneByte", "03"}, MarkerRow{"ThreeBytes", "000003"},
                    MarkerRow{"Version0", "00000000"}, MarkerRow{"Version1", "00000001"},
                    MarkerRow{"Version2", "00000002"}, MarkerRow{"Version4", "00000004"},
                    MarkerRow{"MinusThree", "fffffffd"},
                    MarkerRow{"ThreeInLittleEndian", "03000000"},
                    MarkerRow{"ThreeAsSecondNumber", "0000000200000003"},
                    MarkerRow{"ThreeAsText", "33"}),
    rowName);

using ValidMarker = MarkerHome;

TEST_P(ValidMarker, OnlyLoads)
{
    const FakeUnpacker unpacker("exit 1");
    const QByteArray library = readFile(home.libraryFile());
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(test::projIsMissing());

    EXPECT_TRUE(unpacker.runs().isEmpty());
    EXPECT_EQ(readFile(marker).toHex(), *GetParam().hex);
    EXPECT_EQ(readFile(home.libraryFile()), library);
    EXPECT_EQ(readFile(home.path("proj/stale.txt")), "from an older release");
    EXPECT_FALSE(QFile::exists(home.path("geoid_model_list/model.gtx")));
}

INSTANTIATE_TEST_SUITE_P(Markers, ValidMarker,
                         testing::Values(MarkerRow{"Version3", "00000003"},
                                         MarkerRow{"Version3AndMore", "00000003ffff4b"}),
                         rowName);

TEST(Marker, ThatCannotBeOpenedFailsWithoutInstalling)
{
    const FakeProjHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    const QString marker = home.path("proj/proj_enviroment");
    ASSERT_TRUE(QFile::remove(marker));
    ASSERT_TRUE(QDir().mkdir(marker));
    writeFile(home.path("proj/stale.txt"), "kept");

    const FakeUnpacker unpacker("exit 0");
    const test::LogCapture log;
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(log.entries().isEmpty());
    EXPECT_TRUE(test::projIsMissing());
    EXPECT_TRUE(unpacker.runs().isEmpty());
    EXPECT_EQ(readFile(home.path("proj/stale.txt")), "kept");
    EXPECT_TRUE(QFile::exists(home.libraryFile()));
}

TEST(Marker, ThatLeadsNowhereCountsAsMissing)
{
    const FakeProjHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    const QString marker = home.path("proj/proj_enviroment");
    ASSERT_TRUE(QFile::remove(marker));
    ASSERT_TRUE(QFile::link(home.path("nowhere"), marker));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(readFile(marker).toHex(), "00000003");
    EXPECT_FALSE(QFile::exists(home.path("nowhere")));
    ProjLib::___unloadEnviroment();
}

TEST(Marker, EmptyingFollowsNoLinkOutOfThePrivateDirectory)
{
    const FakeProjHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    writeFile(home.path("elsewhere/grid.gtx"), "the user's");
    ASSERT_TRUE(QFile::link(home.path("elsewhere"), home.path("proj/linked")));
    writeFile(home.path("proj/proj_enviroment"), test::markerBytes(2));
    EXPECT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_FALSE(QFile::exists(home.path("proj/linked")));
    EXPECT_EQ(readFile(home.path("elsewhere/grid.gtx")), "the user's");
    ProjLib::___unloadEnviroment();
}

TEST(Marker, MissingLibraryUnderAValidMarkerFailsWithoutInstalling)
{
    const FakeProjHome home;
    const ProgramDirectory program;
    program.writeArchive(test::smallArchive());
    ASSERT_TRUE(QFile::remove(home.libraryFile()));
    EXPECT_FALSE(ProjLib::___InitializeEnviroment());
    EXPECT_TRUE(test::projIsMissing());
    EXPECT_FALSE(QFile::exists(home.libraryFile()));
}

} // namespace
} // namespace KelStd
