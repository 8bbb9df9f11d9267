#include "cli/DoctorRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace KelStd {
namespace {

using test::Mentions;

const QStringList reinstall = {QStringLiteral("--reinstall")};

class DoctorReinstall : public test::DoctorTest
{};

TEST_F(DoctorReinstall, UnpacksProjAnew)
{
    // The resources of a prepared home are a link; these are the home's own.
    ASSERT_TRUE(QFile::remove(privateFile("share")));
    test::writeFile(privateFile("share/left-over"), "of an earlier release");
    const auto result = doctor(reinstall);
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(result.out, Mentions("/proj (prepared just now)"));
    EXPECT_FALSE(QFileInfo::exists(privateFile("share/left-over")));
    EXPECT_TRUE(QFileInfo(privateFile(KELSTD_PROJ_LIBRARY_NAME)).isFile());
    EXPECT_FALSE(QFileInfo(privateFile(KELSTD_PROJ_LIBRARY_NAME)).isSymLink());
    EXPECT_EQ(test::readFile(privateFile("proj_enviroment")), test::markerBytes(3));
}

TEST_F(DoctorReinstall, CuresWhatTheDoctorAdvisesItFor)
{
    for (const char *piece : {KELSTD_PROJ_LIBRARY_NAME, "share"}) {
        SCOPED_TRACE(piece);
        ASSERT_TRUE(QFile::remove(privateFile(piece))
                    || QDir(privateFile(piece)).removeRecursively());
        EXPECT_EQ(doctor().status, 3);
        EXPECT_EQ(doctor(reinstall).status, 0);
        EXPECT_EQ(doctor().status, 0);
    }
}

TEST_F(DoctorReinstall, PreparesANewHome)
{
    const QString home = m_program.home().path(QStringLiteral("new"));
    QDir().mkpath(home);
    m_program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), home);
    EXPECT_EQ(doctor(reinstall).status, 0);
}

TEST_F(DoctorReinstall, KeepsTheUsersGeoidModels)
{
    const QByteArray mine = test::gtxBytes(test::slopingGrid());
    const QString own = m_program.file(QStringLiteral("geoid_model_list/own.gtx"), mine);
    EXPECT_EQ(doctor(reinstall).status, 0);
    EXPECT_EQ(test::readFile(own), mine);
    EXPECT_TRUE(
        QFileInfo(m_program.home().path(QStringLiteral("geoid_model_list/egm96_15.gtx"))).isFile());
}

/// What works is not given up for what cannot replace it.
TEST_F(DoctorReinstall, ChangesNothingWithoutAGoodArchive)
{
    const QString program = ownProgramDirectory();
    for (const QByteArray &archive : {QByteArray(), QByteArray("this is no archive")}) {
        if (!archive.isNull())
            test::writeFile(program + QStringLiteral("/proj/proj.zip"), archive);
        const auto result = doctor(reinstall);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, Mentions("PROJ cannot be unpacked anew; nothing was changed."));
        EXPECT_EQ(markOf(result, "PROJ archive"), QStringLiteral("problem"));
        EXPECT_EQ(test::readFile(privateFile("proj_enviroment")), test::markerBytes(3));
        EXPECT_EQ(m_program.convert(QStringLiteral("rd_new.xml"), "5.25,52.5,1\n").status, 0);
    }
}

TEST_F(DoctorReinstall, ChangesNothingWithoutAnUnpacker)
{
    m_program.setVariable(QStringLiteral("PATH"), m_program.home().path());
    const auto result = doctor(reinstall);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("nothing was changed"));
    EXPECT_EQ(test::readFile(privateFile("proj_enviroment")), test::markerBytes(3));
}

TEST_F(DoctorReinstall, AMarkerThatCannotBeRemovedIsReported)
{
    QFile::remove(privateFile("proj_enviroment"));
    QDir().mkpath(privateFile("proj_enviroment/directory"));
    const auto result = doctor(reinstall);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("/proj/proj_enviroment: "));
    EXPECT_THAT(result.err, Mentions("kelstd: cannot remove "));
}

} // namespace
} // namespace KelStd
