#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/files/FileLock.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace KelStd {
namespace {

using Outcome = FileLock::Outcome;

/// Far above what taking a free lock costs on a machine under load, far below a minute.
constexpr int atOnce = 5000; // [ms]

class FileLocks : public testing::Test
{
protected:
    QString lockFile() const { return m_dir.filePath(QStringLiteral("some.lock")); }
    void put(const QByteArray &bytes) const { test::writeFile(lockFile(), bytes); }
    bool isThere() const { return QFileInfo::exists(lockFile()); }

private:
    QTemporaryDir m_dir;
};

TEST_F(FileLocks, OneHolderAtATime)
{
    FileLock one(lockFile());
    FileLock other(lockFile());
    EXPECT_FALSE(one.isTaken());
    EXPECT_EQ(one.take(0), Outcome::Taken);
    EXPECT_TRUE(one.isTaken());
    EXPECT_EQ(one.take(0), Outcome::Taken) << "it has it already";
    EXPECT_EQ(other.take(0), Outcome::HeldByAnother);
    EXPECT_EQ(other.take(50), Outcome::HeldByAnother);
    EXPECT_FALSE(other.isTaken());
    EXPECT_TRUE(isThere());
    one.release();
    EXPECT_FALSE(isThere());
    EXPECT_EQ(other.take(0), Outcome::Taken);
}

TEST_F(FileLocks, GoWithTheObject)
{
    {
        FileLock lock(lockFile());
        EXPECT_EQ(lock.take(FileLock::forEver), Outcome::Taken);
    }
    EXPECT_FALSE(isThere());
}

TEST_F(FileLocks, WaitForTheHolder)
{
    FileLock lock(lockFile());
    ASSERT_EQ(lock.take(0), Outcome::Taken);
    std::atomic<bool> isReleased{false};
    std::thread waiting([&] {
        FileLock other(lockFile());
        EXPECT_EQ(other.take(FileLock::forEver), Outcome::Taken);
        EXPECT_TRUE(isReleased);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    isReleased = true;
    lock.release();
    waiting.join();
}

/// Not all of them may believe that they have it: a holder removes the file that others wait for.
TEST_F(FileLocks, OfManyAtOnceExcludeEachOther)
{
    constexpr int threads = 4;
    constexpr int rounds = 100;
    std::atomic<int> inside{0};
    std::atomic<int> collisions{0};
    std::vector<std::thread> workers;
    for (int i = 0; i < threads; ++i) {
        workers.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                FileLock lock(lockFile());
                ASSERT_EQ(lock.take(FileLock::forEver), Outcome::Taken);
                collisions += inside++ > 0 ? 1 : 0;
                std::this_thread::yield();
                --inside;
            }
        });
    }
    for (std::thread &worker : workers)
        worker.join();
    EXPECT_EQ(collisions, 0);
    EXPECT_FALSE(isThere());
}

// --- Files that nobody holds ---------------------------------------------------------------------

struct LeftFile
{
    std::string name;
    QByteArray bytes;
};

void PrintTo(const LeftFile &row, std::ostream *out)
{
    *out << row.name;
}

class LeftFiles : public FileLocks, public testing::WithParamInterface<LeftFile>
{};

TEST_P(LeftFiles, AreTakenOverAtOnce)
{
    put(GetParam().bytes);
    QElapsedTimer clock;
    clock.start();
    {
        FileLock lock(lockFile());
        EXPECT_EQ(lock.take(FileLock::forEver), Outcome::Taken);
        EXPECT_EQ(test::readFile(lockFile()), QByteArray::number(qint64(getpid())) + '\n');
    }
    EXPECT_LT(clock.elapsed(), atOnce);
    EXPECT_FALSE(isThere());
}

INSTANTIATE_TEST_SUITE_P(
    Contents, LeftFiles,
    testing::Values(LeftFile{"Empty", ""}, LeftFile{"CutToZeros", QByteArray(40, '\0')},
                    LeftFile{"OfADeadProcess", "2147483646\nkelstd\nhost\n"},
                    // The number of a process says nothing: it is given to another one.
                    LeftFile{"WithTheNumberOfALivingProcess", "1\nkelstd\n\n"},
                    LeftFile{"WithOurOwnNumber", QByteArray::number(qint64(getpid())) + "\n\n\n"},
                    LeftFile{"OfAnotherHost", "123\nkelstd\nanother-host\n"}),
    [](const auto &row) { return row.param.name; });

TEST_F(FileLocks, OfAKilledProcessAreTakenOverAtOnce)
{
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        FileLock lock(lockFile());
        const char byte = lock.take(0) == Outcome::Taken ? '1' : '0';
        _exit(write(ready[1], &byte, 1) == 1 ? pause() : 1);
    }
    char byte = '\0';
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_EQ(byte, '1');
    FileLock lock(lockFile());
    EXPECT_EQ(lock.take(0), Outcome::HeldByAnother);
    ASSERT_EQ(kill(child, SIGKILL), 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_TRUE(isThere());
    EXPECT_EQ(lock.take(0), Outcome::Taken);
    close(ready[0]);
    close(ready[1]);
}

/// An earlier release holds its lock by Qt's class.
TEST_F(FileLocks, RespectThoseOfQt)
{
    QLockFile qts(lockFile());
    ASSERT_TRUE(qts.lock());
    FileLock lock(lockFile());
    EXPECT_EQ(lock.take(50), Outcome::HeldByAnother);
    qts.unlock();
    EXPECT_EQ(lock.take(0), Outcome::Taken);
    EXPECT_FALSE(qts.tryLock(0));
}

/// A killed process lets go, and so does not what it has started and told to keep the lock.
TEST_F(FileLocks, ArePassedOnOnlyOnDemand)
{
    for (const bool isPassedOn : {false, true}) {
        SCOPED_TRACE(isPassedOn);
        int input[2];
        ASSERT_EQ(pipe(input), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            close(input[1]);
            FileLock lock(lockFile());
            if (lock.take(0) != Outcome::Taken)
                _exit(1);
            if (fork() != 0)
                _exit(0); // as if it were killed: nothing is released
            if (isPassedOn)
                lock.keepInChild();
            dup2(input[0], STDIN_FILENO);
            execl("/bin/cat", "cat", nullptr); // until its input ends
            _exit(1);
        }
        close(input[0]);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
        if (isPassedOn)
            EXPECT_EQ(FileLock(lockFile()).take(100), Outcome::HeldByAnother);
        else
            EXPECT_EQ(FileLock(lockFile()).take(atOnce), Outcome::Taken);
        close(input[1]);
        EXPECT_EQ(FileLock(lockFile()).take(atOnce), Outcome::Taken);
    }
}

// --- What is no lock -----------------------------------------------------------------------------

TEST_F(FileLocks, AFileOfSomethingElseStays)
{
    put("[project]\nlocked = true\n");
    {
        FileLock lock(lockFile());
        EXPECT_EQ(lock.take(FileLock::forEver), Outcome::Unavailable);
    }
    EXPECT_EQ(test::readFile(lockFile()), "[project]\nlocked = true\n");
}

TEST_F(FileLocks, NeitherALinkNorADirectoryNorAPipeIsOne)
{
    const QString other = lockFile() + QStringLiteral(".other");
    test::writeFile(other, "");
    ASSERT_TRUE(QFile::link(other, lockFile()));
    EXPECT_EQ(FileLock(lockFile()).take(0), Outcome::Unavailable);
    EXPECT_TRUE(QFileInfo(lockFile()).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(other));

    ASSERT_TRUE(QFile::remove(lockFile()));
    ASSERT_TRUE(QDir().mkdir(lockFile()));
    EXPECT_EQ(FileLock(lockFile()).take(0), Outcome::Unavailable);
    EXPECT_TRUE(QFileInfo(lockFile()).isDir());

    ASSERT_TRUE(QDir().rmdir(lockFile()));
    ASSERT_EQ(mkfifo(QFile::encodeName(lockFile()).constData(), 0600), 0);
    EXPECT_EQ(FileLock(lockFile()).take(0), Outcome::Unavailable);
    EXPECT_TRUE(QFile::exists(lockFile()));
}

TEST_F(FileLocks, WhereNothingCanBeMadeThereIsNone)
{
    EXPECT_EQ(FileLock(QStringLiteral("/no/such/directory/lock")).take(FileLock::forEver),
              Outcome::Unavailable);
    EXPECT_EQ(FileLock(QStringLiteral("/proc/lock")).take(FileLock::forEver), Outcome::Unavailable);
}

} // namespace
} // namespace KelStd
