// Models that are GGF grids: found by their names, given as the GTX files beside them.

#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/ResourceQuery.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::readFile;
using test::RowOrder;
using test::writeFile;

class GgfModel : public testing::Test
{
protected:
    static QString query(const QString &name = QStringLiteral("model.ggf"))
    {
        return AppConfig::getInstance()
            .module_resourceQuery()
            ->makeAndQuery_gnss_geoid_model_relativeFilepath(name);
    }

    QString path(const char *name) const
    {
        return home.path(QStringLiteral("geoid_model_list/") + QString::fromUtf8(name));
    }

    void writeModel(double firstLatitude, const char *name = "model.ggf") const
    {
        writeFile(path(name), test::ggfBytes(grid(firstLatitude), RowOrder::Reversed));
    }

    static test::Grid grid(double firstLatitude)
    {
        test::Grid made = test::slopingGrid();
        made.latitude = firstLatitude;
        return made;
    }

    static QByteArray gtx(double firstLatitude) { return test::gtxBytes(grid(firstLatitude)); }

    static void setModified(const QString &file, const QDateTime &time)
    {
        QFile opened(file);
        ASSERT_TRUE(opened.open(QIODevice::ReadWrite));
        ASSERT_TRUE(opened.setFileTime(time, QFileDevice::FileModificationTime));
    }

    QStringList files() const
    {
        return QDir(home.path(QStringLiteral("geoid_model_list")))
            .entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    test::TemporaryHome home;
};

TEST_F(GgfModel, IsGivenAsTheGtxFileBesideIt)
{
    writeModel(50.0);
    const QString found = query();
    EXPECT_EQ(found, path("model.ggf.gtx"));
    EXPECT_TRUE(QDir::isAbsolutePath(found));
    EXPECT_EQ(readFile(found), gtx(50.0));
    EXPECT_EQ(files(), (QStringList{"model.ggf", "model.ggf.gtx"}));
}

TEST_F(GgfModel, IsNotWrittenThroughALink)
{
    writeModel(50.0);
    writeFile(home.path("thesis.tex"), "years of work");
    ASSERT_TRUE(QFile::link(home.path("thesis.tex"), path("model.ggf.gtx")));
    EXPECT_EQ(query(), QString());
    EXPECT_EQ(readFile(home.path("thesis.tex")), "years of work");
}

TEST_F(GgfModel, InALinkedFolderIsConvertedButOverwritesNothing)
{
    writeFile(home.path("elsewhere/model.ggf"), test::ggfBytes(grid(50.0), RowOrder::Reversed));
    writeFile(home.path("elsewhere/other.ggf"), test::ggfBytes(grid(50.0), RowOrder::Reversed));
    writeFile(home.path("elsewhere/other.ggf.gtx"), "the user's");
    QDir(home.path("geoid_model_list")).removeRecursively();
    ASSERT_TRUE(QFile::link(home.path("elsewhere"), home.path("geoid_model_list")));
    EXPECT_EQ(readFile(query()), gtx(50.0));
    EXPECT_EQ(query(QStringLiteral("other.ggf")), QString());
    EXPECT_EQ(readFile(home.path("elsewhere/other.ggf.gtx")), "the user's");
}

TEST_F(GgfModel, IsKnownByItsEndingInAnyCaseAndInASubfolder)
{
    writeModel(50.0, "MODEL.GGF");
    EXPECT_EQ(query(QStringLiteral("MODEL.GGF")), path("MODEL.GGF.gtx"));
    writeModel(51.0, "europe/de.Ggf");
    EXPECT_EQ(query(QStringLiteral("europe/de.Ggf")), path("europe/de.Ggf.gtx"));
    EXPECT_EQ(readFile(path("europe/de.Ggf.gtx")), gtx(51.0));
}

TEST_F(GgfModel, DoesNotTakeThePlaceOfAGtxModelOfTheSameName)
{
    writeFile(path("model.gtx"), "the user's own");
    writeModel(50.0);
    EXPECT_NE(query(), QString());
    EXPECT_EQ(readFile(path("model.gtx")), "the user's own");
    EXPECT_EQ(query(QStringLiteral("model.gtx")), path("model.gtx"));
}

TEST_F(GgfModel, IsConvertedOnce)
{
    writeModel(50.0);
    ASSERT_NE(query(), QString());
    // Another grid of the same nodes shows that nothing writes over it.
    test::Grid other = grid(50.0);
    other.values[0] = 99.0F;
    const QDateTime time = QFileInfo(path("model.ggf")).lastModified();
    writeFile(path("model.ggf.gtx"), test::gtxBytes(other));
    setModified(path("model.ggf.gtx"), time);
    EXPECT_EQ(query(), path("model.ggf.gtx"));
    EXPECT_EQ(readFile(path("model.ggf.gtx")), test::gtxBytes(other));
}

TEST_F(GgfModel, IsConvertedAgainWhenTheTimeOfTheSourceIsAnother)
{
    writeModel(50.0);
    ASSERT_NE(query(), QString());
    const QDateTime now = QDateTime::currentDateTime();
    double latitude = 50.0;
    // Later, earlier (an older model is put back, with its own time) and in the same second.
    for (const qint64 difference : {10'000LL, -86'400'000LL, -86'399'999LL, -86'399'000LL}) {
        SCOPED_TRACE(difference);
        latitude += 1.0;
        writeModel(latitude);
        setModified(path("model.ggf"), now.addMSecs(difference));
        EXPECT_EQ(query(), path("model.ggf.gtx"));
        EXPECT_EQ(readFile(path("model.ggf.gtx")), gtx(latitude));
        EXPECT_EQ(QFileInfo(path("model.ggf.gtx")).lastModified(),
                  QFileInfo(path("model.ggf")).lastModified());
    }
}

/// As file systems keep times that know whole seconds, or two of them, only.
TEST_F(GgfModel, IsNotConvertedAgainWhereTimesAreKeptBySeconds)
{
    writeModel(50.0);
    setModified(path("model.ggf"), QDateTime::fromMSecsSinceEpoch(1'600'000'001'123));
    ASSERT_NE(query(), QString());
    test::Grid other = grid(50.0);
    other.values[0] = 99.0F;
    for (const qint64 kept : {1'600'000'001'000, 1'600'000'000'000}) {
        writeFile(path("model.ggf.gtx"), test::gtxBytes(other));
        setModified(path("model.ggf.gtx"), QDateTime::fromMSecsSinceEpoch(kept));
        ASSERT_NE(query(), QString());
        EXPECT_EQ(readFile(path("model.ggf.gtx")), test::gtxBytes(other));
    }
}

/// The file of a conversion that was spoilt, or that belongs to another grid, is not believed.
TEST_F(GgfModel, IsConvertedAgainWhenTheGtxFileIsNotItsOwn)
{
    writeModel(50.0);
    ASSERT_NE(query(), QString());
    const QDateTime time = QFileInfo(path("model.ggf")).lastModified();
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("converted"), gtx(50.0).chopped(1), gtx(60.0)}) {
        writeFile(path("model.ggf.gtx"), bytes);
        setModified(path("model.ggf.gtx"), time);
        EXPECT_EQ(query(), path("model.ggf.gtx"));
        EXPECT_EQ(readFile(path("model.ggf.gtx")), gtx(50.0));
    }
}

/// Its heights would be of no place.
TEST_F(GgfModel, WithoutPlacesIsNotAvailable)
{
    writeModel(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(query(), QString());
    writeModel(std::numeric_limits<double>::infinity());
    EXPECT_EQ(query(), QString());
    EXPECT_EQ(files(), QStringList{"model.ggf"});
}

/// A source that is written while it is converted must not be taken for converted: the GTX file
/// has the time of what was read.
TEST_F(GgfModel, HasTheTimeOfItsSource)
{
    writeModel(50.0);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(1'600'000'000'123);
    setModified(path("model.ggf"), time);
    EXPECT_EQ(QFileInfo(query()).lastModified(), time);
}

TEST_F(GgfModel, ThatCannotBeConvertedIsNotAvailable)
{
    writeFile(path("model.ggf"), "no grid");
    EXPECT_EQ(query(), QString());
    EXPECT_EQ(files(), QStringList{"model.ggf"});
    EXPECT_EQ(query(QStringLiteral("missing.ggf")), QString());
}

/// What was converted before is another model.
TEST_F(GgfModel, ThatCannotBeConvertedAgainIsNotAvailable)
{
    writeModel(50.0);
    ASSERT_NE(query(), QString());
    writeFile(path("model.ggf"), "no grid");
    setModified(path("model.ggf"), QDateTime::currentDateTime().addSecs(10));
    EXPECT_EQ(query(), QString());
}

TEST_F(GgfModel, IsNotAvailableWhereTheGtxFileCannotBe)
{
    writeModel(50.0);
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("geoid_model_list/model.ggf.gtx")));
    EXPECT_EQ(query(), QString());
}

TEST_F(GgfModel, ThatIsGoneIsNotAvailableThoughItWasConverted)
{
    writeModel(50.0);
    ASSERT_NE(query(), QString());
    ASSERT_TRUE(QFile::remove(path("model.ggf")));
    EXPECT_EQ(query(), QString());
}

/// Every process that asks at the same time is given a whole file, at any moment: while there is
/// none yet, and while the others put new ones in its place.
TEST_F(GgfModel, IsWholeForProcessesThatAskAtTheSameTime)
{
    constexpr int processes = 4;
    constexpr int rounds = 40;
    writeModel(50.0);
    const QByteArray expected = gtx(50.0);
    const QDateTime past = QFileInfo(path("model.ggf")).lastModified().addDays(-1);
    std::vector<pid_t> children;
    for (int i = 0; i < processes; ++i) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            bool good = true;
            for (int round = 0; good && round < rounds; ++round) {
                const QString found = query();
                QFile file(found);
                good = !found.isEmpty() && file.open(QIODevice::ReadWrite)
                       && file.readAll() == expected
                       // Makes the conversion due again, also for the others.
                       && file.setFileTime(past, QFileDevice::FileModificationTime);
            }
            _exit(good ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
    EXPECT_NE(query(), QString());
    EXPECT_EQ(readFile(path("model.ggf.gtx")), expected);
    EXPECT_EQ(files(), (QStringList{"model.ggf", "model.ggf.gtx"}));
}

} // namespace
} // namespace KelStd
