// Programs that change one library at the same moment.

#include "cli/LibraryRun.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QLockFile>

#include <memory>
#include <vector>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;

class LibraryTogether : public LibraryRun
{
protected:
    LibraryTogether() { QDir().mkpath(path("custom")); }

    QString lockFile() const { return path(".changing.lock"); }

    /// Starts the program once for each document, and gives the exit statuses.
    std::vector<int> statusesOf(const std::vector<QStringList> &runs) const
    {
        std::vector<std::unique_ptr<QProcess>> programs;
        for (const QStringList &words : runs) {
            programs.push_back(m_program.process(
                QStringList{text("library"), text("--dir"), directory()} + words));
            programs.back()->start();
        }
        constexpr int patience = 60000; // [ms], for a machine under load
        std::vector<int> statuses;
        for (const auto &program : programs) {
            EXPECT_TRUE(program->waitForFinished(patience));
            statuses.push_back(program->exitCode());
        }
        return statuses;
    }
};

TEST_F(LibraryTogether, OneOfTwoAddsAName)
{
    const QString one = given("one.xml", system("Harbour"));
    const QString other = given("other.xml", system("Harbour"));
    for (int round = 0; round < 20; ++round) {
        EXPECT_THAT(statusesOf({{text("add"), one}, {text("add"), other}}),
                    testing::UnorderedElementsAre(0, 1))
            << round;
        EXPECT_EQ(names("custom"), QStringList{text("Harbour")});
        ASSERT_EQ(library({text("remove"), text("Harbour")}).status, 0);
    }
    EXPECT_FALSE(QFileInfo::exists(lockFile()));
}

TEST_F(LibraryTogether, AProgramThatNeverEndsIsNotWaitedForForever)
{
    put("custom/Harbour.xml", system("Harbour"));
    QLockFile lock(lockFile());
    ASSERT_TRUE(lock.lock());
    const auto result = library({text("remove"), text("Harbour")});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, text("kelstd: another program is changing the library and holds ")
                              + lockFile() + text("; try again when it has ended\n"));
    EXPECT_TRUE(has("custom/Harbour.xml"));
    // Reading is not disturbed.
    EXPECT_EQ(names("custom"), QStringList{text("Harbour")});
    EXPECT_EQ(library({text("check")}).outLines().last(), text("Everything is loaded."));
}

TEST_F(LibraryTogether, TheLockOfADeadProgramIsNone)
{
    const auto dead = m_program.process({text("--version")});
    dead->start();
    ASSERT_TRUE(dead->waitForStarted());
    const QByteArray number = QByteArray::number(dead->processId());
    ASSERT_TRUE(dead->waitForFinished());
    test::writeFile(lockFile(), number + "\nkelstd\n\n");
    const auto result = library({text("add"), given("s.xml", system("Harbour"))});
    EXPECT_EQ(result.status, 0) << result.err;
}

/// A full disk, or a kill at the wrong moment, leaves an empty one.
TEST_F(LibraryTogether, ALockThatNobodyHoldsIsTakenOverAtOnce)
{
    int number = 0;
    for (const char *content : {"", "1\ninit\n\n", "99\nkelstd\nanother-host\n"}) {
        SCOPED_TRACE(content);
        test::writeFile(lockFile(), content);
        const QByteArray name = "Harbour " + QByteArray::number(++number);
        QElapsedTimer clock;
        clock.start();
        const auto result = library({text("add"), given("s.xml", system(name.constData()))});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_LT(clock.elapsed(), 8000) << "less than the patience with a living program";
        EXPECT_FALSE(QFileInfo::exists(lockFile()));
    }
}

} // namespace
} // namespace KelStd
