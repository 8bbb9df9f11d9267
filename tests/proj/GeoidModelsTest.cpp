// The geoid models that a host can offer its user, and why one gives no heights.

#include "proj/ProgramDirectory.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/proj/GeoidModels.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using test::ggfBytes;
using test::gtxBytes;
using test::ProgramDirectory;
using test::RowOrder;
using test::slopingGrid;
using test::TemporaryHome;
using test::writeFile;

using Kind = GeoidModelFailureKind;

class ModelFolders : public testing::Test
{
protected:
    QString own(const QString &name, const QByteArray &bytes) const
    {
        const QString path = home.path("geoid_model_list/") + name;
        writeFile(path, bytes);
        return path;
    }
    QString delivered(const QString &name, const QByteArray &bytes) const
    {
        program.writeGeoidModel(name, bytes);
        return program.path("geoid_model_list/") + name;
    }

    const QByteArray gtx = gtxBytes(slopingGrid());
    const QByteArray ggf = ggfBytes(slopingGrid(), RowOrder::Reversed);
    const QByteArray tiff = QByteArray("II*\0", 4) + QByteArray(100, 'x');
    TemporaryHome home;
    ProgramDirectory program;
};

TEST_F(ModelFolders, AreWhereTheConfigurationSays)
{
    EXPECT_EQ(GeoidModels::directory(GeoidModels::Folder::Home).path(),
              home.path("geoid_model_list"));
    EXPECT_EQ(GeoidModels::directory(GeoidModels::Folder::Program).path(),
              program.path("geoid_model_list"));
    EXPECT_EQ(GeoidModels::names(), QStringList());
}

TEST_F(ModelFolders, HaveNames)
{
    own("b.gtx", gtx);
    own("a.ggf", ggf);
    own("a.ggf.gtx", gtx); // what a.ggf was converted to
    own("c.ggf.gtx", gtx); // there is no c.ggf
    own("europe/de.GTX", gtx);
    own("image.TIF", tiff);
    own("letters.tif", "no image");
    own("image.png", tiff);
    own("readme.txt", "no grid");
    own("broken.gtx", "no grid");
    delivered("b.gtx", gtx);
    delivered("z.tiff", tiff);
    EXPECT_EQ(GeoidModels::names(), (QStringList{"a.ggf", "b.gtx", "broken.gtx", "c.ggf.gtx",
                                                 "europe/de.GTX", "image.TIF", "z.tiff"}));
}

TEST_F(ModelFolders, UseTheWholeFileOfTwo)
{
    const QString cut = own("a.gtx", gtx.chopped(1));
    const QString whole = delivered("a.gtx", gtx);
    QList<GeoidModels::File> files = GeoidModels::files("a.gtx");
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(files[0].path, whole);
    EXPECT_EQ(files[0].folder, GeoidModels::Folder::Program);
    EXPECT_EQ(files[0].failure.kind, Kind::None);
    EXPECT_FALSE(files[0].endsInZeros);
    EXPECT_EQ(files[1].path, cut);
    EXPECT_EQ(files[1].folder, GeoidModels::Folder::Home);
    EXPECT_EQ(files[1].failure.kind, Kind::BadGrid);
    EXPECT_EQ(files[1].failure.text, "it is cut short: of 25 values only 24 are there");
    EXPECT_EQ(GeoidModels::find("a.gtx"), whole);
    own("a.gtx", gtx);
    files = GeoidModels::files("a.gtx");
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(files[0].path, cut);
    EXPECT_EQ(GeoidModels::find("a.gtx"), cut);
    for (const char *name : {"", "./a.gtx", "../geoid_model_list/a.gtx", "x/../a.gtx", "b.gtx"})
        EXPECT_TRUE(GeoidModels::files(name).isEmpty()) << name;
    EXPECT_TRUE(GeoidModels::files(cut).isEmpty());
}

TEST(GeoidModelNames, MeanAFileWithADotAndASlashInFront)
{
    for (const char *name : {"./a.gtx", "../a.gtx", "./", "../sub/a.ggf"})
        EXPECT_TRUE(GeoidModels::meansFile(QString::fromLatin1(name))) << name;
    for (const char *name : {"", "a.gtx", ".a.gtx", "..a.gtx", "sub/./a.gtx", "/a.gtx"})
        EXPECT_FALSE(GeoidModels::meansFile(QString::fromLatin1(name))) << name;
}

TEST_F(ModelFolders, DoubtAModelThatEndsInZeros)
{
    test::Grid grid = slopingGrid();
    grid.rows = grid.columns = 30;
    grid.values.assign(900, 0.0F);
    own("zeros.gtx", gtxBytes(grid));
    ASSERT_EQ(GeoidModels::files("zeros.gtx").size(), 1);
    EXPECT_TRUE(GeoidModels::files("zeros.gtx").first().endsInZeros);
}

TEST_F(ModelFolders, GiveTheFileOfAName)
{
    EXPECT_EQ(GeoidModels::find("a.gtx"), std::nullopt);
    EXPECT_EQ(GeoidModels::find(own("a.gtx", gtx).section('/', -1)),
              home.path("geoid_model_list/a.gtx"));
    const QString source = own("b.ggf", ggf);
    EXPECT_EQ(GeoidModels::conversionOf(source), source + ".gtx");
    EXPECT_EQ(GeoidModels::find("b.ggf"), source + ".gtx");
    EXPECT_EQ(test::readFile(source + ".gtx"), gtx);
    EXPECT_EQ(GeoidModels::find("c.tif"), std::nullopt);
    EXPECT_EQ(GeoidModels::find(own("c.tif", tiff).section('/', -1)),
              home.path("geoid_model_list/c.tif"));
}

TEST_F(ModelFolders, SayWhyAModelGivesNoHeights)
{
    own("cut.gtx", gtx.chopped(1));
    own("cut.ggf", ggf.chopped(1));
    own("empty.tif", "");
    own("image.gtx", tiff);
    own("a,b.gtx", gtx);
    own("a#b.gtx", gtx);
    own("blocked.ggf", ggf);
    ASSERT_TRUE(QDir().mkpath(home.path("geoid_model_list/blocked.ggf.gtx")));
    const struct
    {
        const char *name;
        Kind kind;
        const char *said;
    } rows[] = {
        {"absent.gtx", Kind::NotFound, "it is not in "},
        {"../absent.gtx", Kind::NotFound, "it is not in "},
        {"cut.gtx", Kind::BadGrid, "of 25 values only 24 are there"},
        {"cut.ggf", Kind::BadGrid, "of 25 values only 24 are there"},
        {"empty.tif", Kind::BadGrid, "it is empty"},
        {"image.gtx", Kind::BadGrid, "it is a GeoTIFF file by its first bytes"},
        {"a,b.gtx", Kind::BadPath, "its name has a comma"},
        {"a#b.gtx", Kind::BadPath, "its name has a \"#\""},
        {"blocked.ggf", Kind::NotConverted, "blocked.ggf.gtx is a directory"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        GeoidModelFailure failure;
        EXPECT_EQ(GeoidModels::find(row.name, &failure), std::nullopt);
        EXPECT_EQ(failure.kind, row.kind);
        EXPECT_TRUE(failure.text.contains(row.said)) << failure.text;
    }
}

TEST(GeoidModelInProj, IsReadOrNot)
{
    const TemporaryHome home(TemporaryHome::PreparedProj);
    const QString good = home.path("good.gtx");
    writeFile(good, gtxBytes(slopingGrid()));
    const QString bad = home.path("bad.tif");
    writeFile(bad, QByteArray("II*\0", 4) + QByteArray(100, 'x'));
    EXPECT_EQ(GeoidModels::tryInProj(good).kind, Kind::NotLoaded);
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    EXPECT_EQ(GeoidModels::tryInProj(good).kind, Kind::None);
    for (const QString &path : {bad, home.path("absent.gtx"), QString()}) {
        const GeoidModelFailure failure = GeoidModels::tryInProj(path);
        EXPECT_EQ(failure.kind, Kind::RefusedByProj) << path;
        EXPECT_TRUE(failure.text.startsWith("PROJ does not read " + path)) << failure.text;
    }
    EXPECT_EQ(GeoidModels::tryInProj("/nowhere/absent.tif").text,
              "PROJ does not read /nowhere/absent.tif: it is not there");
    EXPECT_EQ(GeoidModels::tryInProj(home.path()).text,
              "PROJ does not read " + home.path() + ": it is no file");
    ProjLib::___unloadEnviroment();
}

} // namespace
} // namespace KelStd
