// Libraries with a directory that cannot be read, which is not the same as an empty one.

#include "cli/LibraryRun.h"

#include <QtCore/QDir>

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>

namespace KelStd {
namespace {

using test::LibraryRun;
using test::Mentions;

class LibraryUnreadable : public LibraryRun
{
protected:
    LibraryUnreadable()
    {
        // Permissions are nothing to a superuser, unless that is given up before the program
        // starts.
        m_program.beforeStart([] {
            prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
            prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
        });
        put("custom/A.xml", system("A"));
        put("ellipsoids/E.xml", ellipsoids(ellipsoid("E")));
    }
    ~LibraryUnreadable() override
    {
        for (const QString &directory : m_closed)
            chmod(directory.toUtf8().constData(), 0700); // or it would stay
    }

    void close(const QString &directory, mode_t mode)
    {
        m_closed += directory;
        ASSERT_EQ(chmod(directory.toUtf8().constData(), mode), 0);
    }

    QStringList m_closed;
};

constexpr mode_t notSearchable = 0444;
constexpr mode_t notReadable = 0111;

TEST_F(LibraryUnreadable, PlacesAreFoundByCheck)
{
    close(path("custom"), notSearchable);
    close(path("ellipsoids"), notReadable);
    const auto result = library({text("check")});
    EXPECT_EQ(result.status, 1);
    for (const char *place : {"custom", "ellipsoids"}) {
        EXPECT_THAT(result.out, Mentions((QByteArray(place).leftJustified(13) + "not read\n  "
                                          + place + "\n    skipped: the directory cannot be read\n")
                                             .constData()));
    }
    EXPECT_THAT(result.out, Mentions("skipped: 2, problems: 0, notes: 0\n"));
}

TEST_F(LibraryUnreadable, PlacesEndEveryOtherCommand)
{
    const QString file = given("s.xml", system("S"));
    for (const mode_t mode : {notSearchable, notReadable}) {
        close(path("custom"), mode);
        for (const auto &result :
             {library({text("list")}), library({text("show"), text("E")}),
              library({text("add"), file}), library({text("replace"), text("A"), file}),
              library({text("remove"), text("E")})}) {
            EXPECT_EQ(result.status, 3);
            EXPECT_EQ(result.out, QString());
            EXPECT_EQ(result.err, text("kelstd: cannot read the directory ") + path("custom")
                                      + text(": Permission denied\n"));
        }
    }
    EXPECT_TRUE(has("ellipsoids/E.xml"));
}

TEST_F(LibraryUnreadable, OnesHoldNoLibraryThatAnybodyKnowsOf)
{
    close(directory(), notSearchable);
    const auto result = library({text("list")});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, Mentions("cannot read the directory "));
}

TEST_F(LibraryUnreadable, OnesOfTheHomeDirectoryEndAConversion)
{
    const QString custom = m_program.home().path(text("library/custom"));
    test::writeFile(custom + text("/A.xml"), system("A"));
    test::writeFile(m_program.home().path(text("library/standard/A.xml")), system("A"));
    close(custom, notReadable);
    const auto result = m_program.run({text("convert"), text("--system"), text("A")}, "5,52,10\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("cannot read the directory "));
}

} // namespace
} // namespace KelStd
