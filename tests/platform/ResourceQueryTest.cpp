#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// A home with one model, and a file beside the folder that no model name may reach.
class ResourceQueryTest : public testing::Test
{
protected:
    ResourceQueryTest()
    {
        test::writeFile(home.path(QStringLiteral("geoid_model_list/mine.gtx")), "grid");
        test::writeFile(home.path(QStringLiteral("secret.gtx")), "not a model");
    }

    static QString query(const QString &name)
    {
        return AppConfig::getInstance()
            .module_resourceQuery()
            ->makeAndQuery_gnss_geoid_model_relativeFilepath(name);
    }

    test::TemporaryHome home;
};

TEST_F(ResourceQueryTest, AModelOfTheFolderIsGivenAsAnAbsolutePath)
{
    const QString path = query(QStringLiteral("mine.gtx"));
    EXPECT_EQ(path, home.path(QStringLiteral("geoid_model_list/mine.gtx")));
    EXPECT_TRUE(QDir::isAbsolutePath(path));
    EXPECT_EQ(test::readFile(path), "grid");
}

TEST_F(ResourceQueryTest, AMissingModelIsTheEmptyText)
{
    EXPECT_EQ(query(QStringLiteral("egm2008.gtx")), QString());
    EXPECT_EQ(query(QString()), QString());
}

TEST_F(ResourceQueryTest, AFolderIsNoModel)
{
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("geoid_model_list/folder.gtx")));
    EXPECT_EQ(query(QStringLiteral("folder.gtx")), QString());
    EXPECT_EQ(query(QStringLiteral(".")), QString());
}

TEST_F(ResourceQueryTest, AModelMayLieInASubfolder)
{
    test::writeFile(home.path(QStringLiteral("geoid_model_list/europe/de.gtx")), "grid");
    EXPECT_EQ(query(QStringLiteral("europe/de.gtx")),
              home.path(QStringLiteral("geoid_model_list/europe/de.gtx")));
}

TEST_F(ResourceQueryTest, BlanksDotsAndOtherScriptsAreOrdinaryCharacters)
{
    for (const QString &name :
         {QStringLiteral("my model.gtx"), QStringLiteral("..model.gtx"), QStringLiteral("a..b"),
          QStringLiteral("%1"), QString::fromUtf8("Höhe 似大地水准面.gtx")}) {
        SCOPED_TRACE(name.toStdString());
        const QString path = home.path(QStringLiteral("geoid_model_list/") + name);
        test::writeFile(path, "grid");
        EXPECT_EQ(query(name), path);
    }
}

TEST_F(ResourceQueryTest, NoNameLeadsOutOfTheFolder)
{
    const QString absolute = home.path(QStringLiteral("secret.gtx"));
    ASSERT_TRUE(QFileInfo(absolute).isFile());
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("geoid_model_list/sub")));
    for (const QString &name :
         {QStringLiteral("../secret.gtx"), QStringLiteral("sub/../../secret.gtx"),
          QStringLiteral("./../secret.gtx"), QStringLiteral("..//secret.gtx"), absolute,
          QStringLiteral("..")}) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(query(name), QString());
    }
}

/// To PROJ a comma separates the paths of two grids: the first piece might be another model.
TEST_F(ResourceQueryTest, ANameThatProjReadsAsTwoIsNotAvailable)
{
    test::writeFile(home.path(QStringLiteral("geoid_model_list/mine.gtx,@b.gtx")), "grid");
    EXPECT_EQ(query(QStringLiteral("mine.gtx,@b.gtx")), QString());
}

TEST_F(ResourceQueryTest, AZeroCharacterDoesNotCutTheName)
{
    const QString name = QStringLiteral("mine.gtx") + QChar(0) + QStringLiteral(".txt");
    EXPECT_EQ(query(name), QString());
}

TEST_F(ResourceQueryTest, TheHomeDirectoryOfTheMomentCounts)
{
    const test::TemporaryHome other;
    EXPECT_EQ(query(QStringLiteral("mine.gtx")), QString());
    home.use();
    EXPECT_NE(query(QStringLiteral("mine.gtx")), QString());
}

} // namespace
} // namespace KelStd
