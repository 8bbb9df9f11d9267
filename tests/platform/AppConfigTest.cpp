#include "support/Printers.h"
#include "support/ScopedMask.h"
#include "support/TemporaryHome.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace KelStd {
namespace {

QString builtBinDir()
{
    return QDir(QStringLiteral(KELSTD_TEST_BIN_DIR)).canonicalPath();
}

/// Ends the process: 0 when the two are equal, otherwise 1 and both texts on standard error.
[[noreturn]] void exitWhetherEqual(const QString &actual, const QString &expected)
{
    if (actual != expected)
        std::fprintf(stderr, "is \"%s\"\nshould be \"%s\"\n", qPrintable(actual),
                     qPrintable(expected));
    std::exit(actual == expected ? 0 : 1);
}

/// The default home when the system's data directory lies at `base`, and whether it exists.
QString defaultHomeBelow(const QString &base)
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(base));
    QCoreApplication::setOrganizationName(QString());
    QCoreApplication::setApplicationName(QStringLiteral("surveying"));
    const QDir home = AppConfig::getInstance().homeDir();
    const bool exists = QDir(base + QStringLiteral("/surveying")).exists();
    return QDir(base).relativeFilePath(home.absolutePath())
           + (exists ? QStringLiteral(" exists") : QStringLiteral(" is missing"));
}

/// Places that nothing has set. Once set, a place stays set until the process ends, so every such
/// statement runs in a process of its own.
class AppConfigUnset : public testing::Test
{
protected:
    AppConfigUnset() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(AppConfigUnset, HomeComesFromTheEnvironment)
{
    EXPECT_EXIT(
        {
            qputenv("KELSTD_HOME_DIR", "/somewhere/of the user");
            exitWhetherEqual(AppConfig::getInstance().homeDir().absolutePath(),
                             QStringLiteral("/somewhere/of the user"));
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, ProgramDirectoryComesFromTheEnvironment)
{
    EXPECT_EXIT(
        {
            qputenv("KELSTD_BIN_DIR", "/opt/survey program/bin");
            exitWhetherEqual(AppConfig::getInstance().binDir().absolutePath(),
                             QStringLiteral("/opt/survey program/bin"));
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, AnEmptyVariableIsNoChoice)
{
    EXPECT_EXIT(
        {
            qputenv("KELSTD_BIN_DIR", "");
            exitWhetherEqual(AppConfig::getInstance().binDir().canonicalPath(), builtBinDir());
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, HomeIsOtherwiseTheApplicationDataDirectoryWhichIsCreated)
{
    EXPECT_EXIT(
        {
            QString seen;
            {
                const QTemporaryDir base;
                seen = defaultHomeBelow(base.path());
            }
            exitWhetherEqual(seen, QStringLiteral("surveying exists"));
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, TheHomeThatIsCreatedIsNotForAllToWrite)
{
    EXPECT_EXIT(
        {
            QTemporaryDir base;
            const test::ScopedMask nothing(0);
            defaultHomeBelow(base.filePath(QStringLiteral("share")));
            const auto mode = [&base](const QString &name) {
                struct stat status = {};
                stat(QFile::encodeName(base.filePath(name)).constData(), &status);
                return QString::number(status.st_mode & 0777U, 8);
            };
            const QString modes =
                mode(QStringLiteral("share")) + mode(QStringLiteral("share/surveying"));
            base.remove();
            exitWhetherEqual(modes, QStringLiteral("775775"));
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, ADirectoryThatTheUserNamedIsNotCreated)
{
    EXPECT_EXIT(
        {
            bool created = true;
            {
                const QTemporaryDir base;
                const QString chosen = base.filePath(QStringLiteral("chosen"));
                qputenv("KELSTD_HOME_DIR", QFile::encodeName(chosen));
                created = AppConfig::getInstance().homeDir().exists();
            }
            std::exit(created ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, ProgramDirectoryIsTheRunningProgramsIfItHoldsTheArchive)
{
    // In the build the test programs lie apart from the archive, which lies beside the library.
    EXPECT_EXIT(
        {
            const QDir program(QCoreApplication::applicationDirPath());
            const bool holdsArchive = program.exists(QStringLiteral("proj/proj.zip"));
            exitWhetherEqual(AppConfig::getInstance().binDir().canonicalPath(),
                             holdsArchive ? program.canonicalPath() : builtBinDir());
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AppConfigUnset, ProgramDirectoryIsOtherwiseTheLibrarys)
{
    EXPECT_EXIT(exitWhetherEqual(AppConfig::getInstance().binDir().canonicalPath(),
                                 qEnvironmentVariable("KELSTD_TEST_EXPECTED_BIN", builtBinDir())),
                testing::ExitedWithCode(0), "");
}

/// A test of this program passes in a process of its own, whatever share of the tests this one was
/// dealt.
void expectPasses(const QString &executable, const char *test, const QMap<QString, QString> &set)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *dealt : {"GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX", "GTEST_BRIEF"})
        environment.remove(QString::fromLatin1(dealt));
    for (auto entry = set.constBegin(); entry != set.constEnd(); ++entry)
        environment.insert(entry.key(), entry.value());
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(executable,
                  {QStringLiteral("--gtest_filter=AppConfigUnset.") + QLatin1String(test)});
    ASSERT_TRUE(program.waitForFinished());
    const QByteArray report = program.readAll();
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << report.constData();
    EXPECT_TRUE(report.contains("[  PASSED  ] 1 test")) << report.constData();
}

TEST(AppConfig, TheSameProgramBesideAnArchiveTakesThatOne)
{
    QTemporaryDir place;
    const QString copy = place.filePath(QStringLiteral("program"));
    ASSERT_TRUE(QFile::copy(QCoreApplication::applicationFilePath(), copy));
    test::writeFile(place.filePath(QStringLiteral("proj/proj.zip")), "an archive");
    expectPasses(copy, "ProgramDirectoryIsTheRunningProgramsIfItHoldsTheArchive", {});
}

// An operating system's libraries have a folder of their own in lib/<architecture>, and programs
// lie in a bin/ without folders.
TEST(AppConfig, ALibraryTakesTheFolderBesideItAndElseTheNextBin)
{
    const QFileInfo library(QStringLiteral(KELSTD_TEST_PLATFORM_LIBRARY));
    QTemporaryDir place;
    QDir(place.path()).mkpath(QStringLiteral("lib/any-linux"));
    const QString copy = place.filePath(QStringLiteral("lib/any-linux/") + library.fileName());
    ASSERT_TRUE(QFile::copy(library.filePath(), copy));
    const auto expectTaken = [&](const char *folder) {
        const QString expected = place.filePath(QString::fromLatin1(folder));
        test::writeFile(expected + QStringLiteral("/proj/proj.zip"), "an archive");
        expectPasses(QCoreApplication::applicationFilePath(),
                     "ProgramDirectoryIsOtherwiseTheLibrarys",
                     {{QStringLiteral("LD_LIBRARY_PATH"), QFileInfo(copy).path()},
                      {QStringLiteral("KELSTD_TEST_EXPECTED_BIN"),
                       QFileInfo(expected).canonicalFilePath()}});
    };
    expectTaken("bin");
    expectTaken("lib/any-linux/kelstd");
}

TEST_F(AppConfigUnset, WhatIsSetWinsOverTheEnvironment)
{
    EXPECT_EXIT(
        {
            qputenv("KELSTD_HOME_DIR", "/from/environment");
            qputenv("KELSTD_BIN_DIR", "/from/environment");
            AppConfig::setHomeDir(QDir(QStringLiteral("/set/home")));
            AppConfig::setBinDir(QDir(QStringLiteral("/set/bin")));
            const AppConfig &config = AppConfig::getInstance();
            exitWhetherEqual(config.homeDir().path() + config.binDir().path(),
                             QStringLiteral("/set/home/set/bin"));
        },
        testing::ExitedWithCode(0), "");
}

TEST(AppConfig, SettingTakesEffectAtOnceAnyNumberOfTimes)
{
    const AppConfig &config = AppConfig::getInstance();
    for (const char *place : {"/first", "/second", "/third", "/first"}) {
        AppConfig::setHomeDir(QDir(QString::fromLatin1(place) + QStringLiteral("/home")));
        AppConfig::setBinDir(QDir(QString::fromLatin1(place) + QStringLiteral("/bin")));
        EXPECT_EQ(config.homeDir().path(), QString::fromLatin1(place) + QStringLiteral("/home"));
        EXPECT_EQ(config.binDir().path(), QString::fromLatin1(place) + QStringLiteral("/bin"));
    }
}

TEST(AppConfig, OneInstanceWithModulesThatAreNeverNull)
{
    AppConfig &config = AppConfig::getInstance();
    EXPECT_EQ(&config, &AppConfig::getInstance());
    ASSERT_NE(config.module_logLib(), nullptr);
    ASSERT_NE(config.module_resourceQuery(), nullptr);
    EXPECT_EQ(config.module_logLib(), AppConfig::getInstance().module_logLib());
    EXPECT_EQ(config.module_resourceQuery(), AppConfig::getInstance().module_resourceQuery());
}

} // namespace
} // namespace KelStd
