// Grids of datum shifts where PROJ finds them.

#include "support/ShiftGrids.h"
#include "support/FullDisk.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/proj/ProjLib.h>
#include <KelStd/proj/ShiftGrids.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using Kind = ShiftGridFailureKind;

QString given(const test::TemporaryHome &home, const char *name, const QByteArray &bytes)
{
    const QString path = home.path(QStringLiteral("given/") + QString::fromLatin1(name));
    test::writeFile(path, bytes);
    return path;
}

TEST(ShiftGrids, OutliveANewInstallationOfProj)
{
    const test::TemporaryHome home;
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    ASSERT_FALSE(ShiftGrids::add(given(home, "site.gsb", test::ntv2Bytes())));
    const QString share = home.path(QStringLiteral("proj/share/"));
    test::writeFile(share + QStringLiteral("broken.gsb"), test::ntv2Bytes().chopped(100));
    test::writeFile(share + QStringLiteral("note.txt"), "mine");
    const QByteArray delivered = test::readFile(share + QStringLiteral("BETA2007.gsb"));
    test::writeFile(share + QStringLiteral("BETA2007.gsb"), test::ntv2Bytes());

    test::writeFile(home.path(QStringLiteral("proj/proj_enviroment")), test::markerBytes(2));
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(test::readFile(share + QStringLiteral("site.gsb")), test::ntv2Bytes());
    EXPECT_EQ(test::readFile(share + QStringLiteral("BETA2007.gsb")), delivered);
    EXPECT_FALSE(QFileInfo::exists(share + QStringLiteral("broken.gsb")));
    EXPECT_FALSE(QFileInfo::exists(share + QStringLiteral("note.txt")));
    ProjLib::___unloadEnviroment();
}

TEST(ShiftGrids, AFullDiskLeavesNothing)
{
    const test::TemporaryHome home(test::TemporaryHome::PreparedProj);
    test::ownResourceDirectory(home);
    const QString file =
        given(home, "large.gsb", test::ntv2Bytes({50.0, 5.0, 0.01, 0.01, 200, 200}));
    const QStringList before = ShiftGrids::directory().entryList(QDir::Files | QDir::Hidden);
    {
        const test::FullDisk disk(100000);
        const auto failure = ShiftGrids::add(file);
        EXPECT_EQ(failure.kind, Kind::NotWritable);
        EXPECT_FALSE(failure.text.isEmpty());
    }
    EXPECT_EQ(ShiftGrids::directory().entryList(QDir::Files | QDir::Hidden), before);
    EXPECT_FALSE(ShiftGrids::add(file));
    EXPECT_EQ(test::readFile(ShiftGrids::directory().filePath(QStringLiteral("large.gsb"))),
              test::readFile(file));
}

TEST(ShiftGrids, WithoutProjThereIsNoPlace)
{
    const test::TemporaryHome home;
    EXPECT_EQ(ShiftGrids::add(given(home, "site.gsb", test::ntv2Bytes())).kind, Kind::NotReady);
    EXPECT_TRUE(ShiftGrids::files().isEmpty());
}

// The delivered grids' areas are those of their headers, as "gdalinfo" and "projinfo" print them.
TEST(ShiftGrids, DeliveredOnesAreListed)
{
    const test::TemporaryHome home(test::TemporaryHome::PreparedProj);
    bool isFound = false;
    for (const ShiftGrids::File &file : ShiftGrids::files()) {
        EXPECT_FALSE(file.failure) << file.name;
        if (file.name != QLatin1String("ntf_r93.gsb"))
            continue;
        isFound = true;
        ASSERT_TRUE(file.area.has_value());
        EXPECT_TRUE(*file.area == (AreaOfUse{-5.5, 41.0, 10.0, 52.0}));
    }
    EXPECT_TRUE(isFound);
}

} // namespace
} // namespace KelStd
