// What happens to files and memory when a write cannot be finished.

#include "library/RecordKinds.h"
#include "support/FullDisk.h"

#include <QtCore/QSet>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

namespace KelStd::test {
namespace {

template <typename Kind>
class SafeWriting : public RecordTest<Kind>
{};
TYPED_TEST_SUITE(SafeWriting, RecordKinds);

TYPED_TEST(SafeWriting, OnAFullDiskLeavesFileAndMemory)
{
    for (const QString &name : {this->name("a"), QString(250, QLatin1Char('n'))}) {
        ASSERT_TRUE(this->addNew(name, 1));
        const QStringList entries = this->files();
        const QByteArray before = readFile(this->file(name + ".xml"));
        const auto size = static_cast<rlim_t>(before.size());
        for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{40}, size / 2, size - 1}) {
            SCOPED_TRACE(testing::Message() << size << " bytes into " << room);
            bool answer = true;
            {
                const FullDisk disk(room);
                answer = this->replace(name, 2);
            }
            EXPECT_FALSE(answer);
            EXPECT_EQ(this->value(name), 1);
            EXPECT_EQ(readFile(this->file(name + ".xml")), before);
            EXPECT_EQ(this->files(), entries);
        }
        const FullDisk disk(size);
        EXPECT_TRUE(this->replace(name, 2));
        EXPECT_EQ(this->value(name), 2);
    }
}

TYPED_TEST(SafeWriting, OnAFullDiskAddsNothing)
{
    for (const QString &name : {this->name("a"), QString(250, QLatin1Char('n'))}) {
        bool answer = true;
        {
            const FullDisk disk(100);
            answer = this->addNew(name, 1);
        }
        EXPECT_FALSE(answer);
        EXPECT_EQ(this->find(name), nullptr);
        EXPECT_TRUE(this->files().isEmpty());
        EXPECT_TRUE(this->addNew(name, 1)); // the name is still free
        EXPECT_TRUE(this->remove(name));
    }
}

// --- A writer that is killed -----------------------------------------------------------------

/// A library of one file of each kind, each with a short and a long content.
class KilledWriter : public LibraryTest
{
protected:
    void SetUp() override
    {
        LibraryTest::SetUp();
        for (int i = 0; i < 400; ++i) // larger than every buffer on its way
            m_long.projection.param[QString::number(i)] = Param(ValueType_Double, Unit_None, i);
        m_short.coord_name = m_long.coord_name = QStringLiteral("c");
        const Ellipsoid ellipsoid;
        ASSERT_TRUE(library().addEllipsoidToLibrary(QStringLiteral("e"), &ellipsoid));
        ASSERT_TRUE(library().addProjectionToLibrary(QStringLiteral("p"), &m_short.projection));
        ASSERT_TRUE(library().addCoordToCustomLibrary(QStringLiteral("c"), &m_short));
        for (const bool isLong : {true, false}) {
            for (int file = 0; file < fileCount; ++file) {
                writeOne(file, isLong);
                m_contents[files[file]] << readFile(path(files[file]));
            }
        }
    }

    /// Replaces a file by its short or long content.
    void writeOne(int file, bool isLong) const
    {
        const Coord &coord = isLong ? m_long : m_short;
        switch (file) {
        case 0: {
            Ellipsoid ellipsoid;
            ellipsoid.proj4EllpsName = QString(isLong ? 50000 : 5, QLatin1Char('e'));
            library().setEllipsoidInLibrary(QStringLiteral("e"), &ellipsoid);
            break;
        }
        case 1: library().setProjectionInLibrary(QStringLiteral("p"), &coord.projection); break;
        case 2: library().setCoordInCustomLibrary(QStringLiteral("c"), &coord); break;
        case 3: {
            NamePairs pairs;
            for (int i = 0; i < (isLong ? 1000 : 1); ++i)
                pairs.append({QStringLiteral("c"), QString::number(i)});
            library().setShowInCreateProjectCoords(pairs);
            break;
        }
        default: {
            stShowConfig config;
            config.xyPrecision = isLong ? 15 : 1;
            library().setShowConfig(config);
        }
        }
    }

    /// Lets a process write over and over and kills it after some time [µs]. Each time it begins
    /// with another file, and with the other content.
    void killWriterAfter(useconds_t delay, int run) const
    {
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            for (int i = run;; ++i)
                writeOne(i % fileCount, (i / fileCount) % 2 == 0);
        }
        usleep(delay);
        ASSERT_EQ(kill(writer, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(waitpid(writer, &status, 0), writer);
        ASSERT_TRUE(WIFSIGNALED(status)); // and did not end by itself
    }

    static constexpr int fileCount = 5;
    static constexpr const char *files[fileCount] = {"ellipsoids/e.xml", "projections/p.xml",
                                                     "custom/c.xml", "names.xml", "show.cfg"};

    QMap<QByteArray, QList<QByteArray>> m_contents; ///< of each file, both

private:
    Coord m_short;
    Coord m_long;
};

TEST_F(KilledWriter, LeavesEveryFileWhole)
{
    constexpr int kills = 300;
    std::mt19937 random(20240506);
    std::uniform_int_distribution<useconds_t> delay(0, 20000);
    QMap<QByteArray, QSet<int>> seen; // which content of each file
    const auto allSeen = [&seen] {
        return std::all_of(std::begin(files), std::end(files),
                           [&seen](const char *file) { return seen[file].size() == 2; });
    };
    // A machine that is busy with other tests gives a writer less time than it is told here.
    for (int i = 0; i < kills || (i < 2 * kills && !allSeen()); ++i) {
        const useconds_t patience = i < kills ? 1 : 10;
        ASSERT_NO_FATAL_FAILURE(killWriterAfter(patience * delay(random), i));
        for (const char *file : files) {
            const int content = m_contents[file].indexOf(readFile(path(file)));
            ASSERT_GE(content, 0) << file << " after kill " << i;
            seen[file].insert(content);
        }
    }
    // The moments were such that the writer was at work.
    EXPECT_TRUE(allSeen());

    library().loadLibrary();
    QMap<QString, const Ellipsoid *> ellipsoids;
    QMap<QString, const Coord *> systems;
    library().getEllipsoidLibrary(ellipsoids);
    library().getCustomCoordLibrary(systems);
    EXPECT_EQ(ellipsoids.size(), 1);
    EXPECT_EQ(systems.size(), 1);
}

} // namespace
} // namespace KelStd::test
