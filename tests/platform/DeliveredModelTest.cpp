// Models of the program directory: what a first start that was ended too early, or ran out of room,
// did not copy to the user.

#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using test::readFile;
using test::RowOrder;
using test::writeFile;

class DeliveredModel : public testing::Test
{
protected:
    DeliveredModel() { AppConfig::setBinDir(QDir(home.path(QStringLiteral("program")))); }

    static QString query(const char *name)
    {
        return AppConfig::getInstance()
            .module_resourceQuery()
            ->makeAndQuery_gnss_geoid_model_relativeFilepath(QString::fromUtf8(name));
    }

    QString own(const char *name) const
    {
        return home.path(QStringLiteral("geoid_model_list/") + QString::fromUtf8(name));
    }

    QString delivered(const char *name) const
    {
        return home.path(QStringLiteral("program/geoid_model_list/") + QString::fromUtf8(name));
    }

    static test::Grid grid(double firstLatitude)
    {
        test::Grid made = test::slopingGrid();
        made.latitude = firstLatitude;
        return made;
    }

    static QByteArray gtx(double firstLatitude) { return test::gtxBytes(grid(firstLatitude)); }
    static QByteArray ggf(double firstLatitude)
    {
        return test::ggfBytes(grid(firstLatitude), RowOrder::Reversed);
    }

    test::TemporaryHome home;
};

TEST_F(DeliveredModel, IsFoundWhereTheUserHasNone)
{
    writeFile(delivered("model.gtx"), gtx(50.0));
    EXPECT_EQ(query("model.gtx"), delivered("model.gtx"));
    writeFile(delivered("europe/de.gtx"), gtx(50.0));
    EXPECT_EQ(query("europe/de.gtx"), delivered("europe/de.gtx"));
    EXPECT_EQ(query("other.gtx"), QString());
}

TEST_F(DeliveredModel, StandsBackBehindTheUsers)
{
    writeFile(delivered("model.gtx"), gtx(50.0));
    writeFile(own("model.gtx"), gtx(60.0));
    EXPECT_EQ(query("model.gtx"), own("model.gtx"));
    writeFile(delivered("model.ggf"), ggf(50.0));
    writeFile(own("model.ggf"), ggf(60.0));
    EXPECT_EQ(query("model.ggf"), own("model.ggf.gtx"));
    EXPECT_EQ(readFile(own("model.ggf.gtx")), gtx(60.0));
}

/// Whatever a copy that was ended in its middle leaves.
TEST_F(DeliveredModel, GoesBeforeTheUsersThatIsNotWhole)
{
    const QByteArray wholeGtx = gtx(50.0);
    writeFile(delivered("model.gtx"), wholeGtx);
    for (const int size : {0, 1, 39, 40, int(wholeGtx.size()) - 1}) {
        SCOPED_TRACE(size);
        writeFile(own("model.gtx"), wholeGtx.left(size));
        EXPECT_EQ(query("model.gtx"), delivered("model.gtx"));
    }
    const QByteArray wholeGgf = ggf(50.0);
    writeFile(delivered("model.ggf"), wholeGgf);
    for (const int size : {0, 145, 146, int(wholeGgf.size()) - 1}) {
        SCOPED_TRACE(size);
        writeFile(own("model.ggf"), wholeGgf.left(size));
        EXPECT_EQ(query("model.ggf"), delivered("model.ggf.gtx"));
    }
    writeFile(delivered("model.tif"), "PROJ's to judge");
    writeFile(own("model.tif"), {});
    EXPECT_EQ(query("model.tif"), delivered("model.tif"));
}

/// The geoid operations refuse it with a message; no model at all would be ellipsoidal heights
/// without one.
TEST_F(DeliveredModel, ThatIsNotWholeEitherLeavesTheUsers)
{
    writeFile(own("model.gtx"), gtx(50.0).chopped(1));
    EXPECT_EQ(query("model.gtx"), own("model.gtx"));
    writeFile(delivered("model.gtx"), gtx(50.0).chopped(2));
    EXPECT_EQ(query("model.gtx"), own("model.gtx"));
}

TEST_F(DeliveredModel, IsReachedByNoNameThatLeadsOutOfItsFolder)
{
    writeFile(home.path("program/secret.gtx"), gtx(50.0));
    writeFile(delivered("sub/model.gtx"), gtx(50.0));
    EXPECT_EQ(query("../secret.gtx"), QString());
    EXPECT_EQ(query("sub/../../secret.gtx"), QString());
    EXPECT_EQ(query("a,b.gtx"), QString());
}

TEST_F(DeliveredModel, InTheGgfLayoutIsConvertedBesideItself)
{
    writeFile(delivered("model.ggf"), ggf(50.0));
    EXPECT_EQ(query("model.ggf"), delivered("model.ggf.gtx"));
    EXPECT_EQ(readFile(delivered("model.ggf.gtx")), gtx(50.0));
    EXPECT_FALSE(QFileInfo::exists(own("model.ggf.gtx")));
}

/// A directory in the place of the file stands for a folder without the right to write, which would
/// not keep the administrator out.
TEST_F(DeliveredModel, InTheGgfLayoutIsConvertedForTheUserWhereNothingCanBeWrittenBesideIt)
{
    writeFile(delivered("europe/model.ggf"), ggf(50.0));
    ASSERT_TRUE(QDir().mkpath(delivered("europe/model.ggf.gtx")));
    EXPECT_EQ(query("europe/model.ggf"), own("europe/model.ggf.gtx"));
    EXPECT_EQ(readFile(own("europe/model.ggf.gtx")), gtx(50.0));
    EXPECT_EQ(QFileInfo(own("europe/model.ggf.gtx")).lastModified(),
              QFileInfo(delivered("europe/model.ggf")).lastModified());

    // Once; and again when another one is delivered.
    test::Grid other = grid(50.0);
    other.values[0] = 99.0F;
    writeFile(own("europe/model.ggf.gtx"), test::gtxBytes(other));
    {
        QFile converted(own("europe/model.ggf.gtx"));
        ASSERT_TRUE(converted.open(QIODevice::ReadWrite));
        ASSERT_TRUE(converted.setFileTime(QFileInfo(delivered("europe/model.ggf")).lastModified(),
                                          QFileDevice::FileModificationTime));
    }
    EXPECT_EQ(query("europe/model.ggf"), own("europe/model.ggf.gtx"));
    EXPECT_EQ(readFile(own("europe/model.ggf.gtx")), test::gtxBytes(other));
    QFile source(delivered("europe/model.ggf"));
    ASSERT_TRUE(source.open(QIODevice::ReadWrite));
    ASSERT_TRUE(source.setFileTime(QDateTime::currentDateTime().addDays(-1),
                                   QFileDevice::FileModificationTime));
    source.close();
    EXPECT_EQ(query("europe/model.ggf"), own("europe/model.ggf.gtx"));
    EXPECT_EQ(readFile(own("europe/model.ggf.gtx")), gtx(50.0));
}

} // namespace
} // namespace KelStd
