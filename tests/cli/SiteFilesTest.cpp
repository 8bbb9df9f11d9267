// The files that a fit reads and writes, where names, disks and places are bad.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// A made-up site in the plane of RD New.
const QByteArray controlPoints = "name,longitude,latitude,height,northing,easting,elevation\n"
                                 "A,5.387203528,52.155172227,84.548,1000.002,499.994,39.855\n"
                                 "B,5.399069047,52.155558095,87.247,1021.723,1312.861,42.550\n"
                                 "C,5.398018763,52.163000196,85.834,1851.353,1262.648,41.151\n"
                                 "D,5.387656629,52.163171476,90.434,1888.905,554.281,45.759\n"
                                 "E,5.393122140,52.158964975,88.941,1411.267,915.924,44.253\n";

class SiteFiles : public testing::Test
{
protected:
    QString path(const char *name) const { return m_program.home().path(text(name)); }

    ProgramResult fit(const QStringList &options) const
    {
        return m_program.run(QStringList{text("site"), text("fit"), text("--system"),
                                         test::systemPath(text("rd_new.xml")), text("--points"),
                                         m_program.file(text("points.csv"), controlPoints)}
                             + options);
    }

    ProgramRun m_program;
};

// The report would replace the document that was just written.
TEST_F(SiteFiles, OneFileIsNotBothDocumentAndReport)
{
    const QDir home(m_program.home().path(QString()));
    ASSERT_TRUE(home.mkdir(text("folder")));
    ASSERT_EQ(symlink("folder", QFile::encodeName(path("link")).constData()), 0);
    ASSERT_EQ(symlink("folder/page", QFile::encodeName(path("alias")).constData()), 0);
    const struct
    {
        const char *document;
        const char *report;
    } rows[] = {
        {"site.xml", "site.xml"},           {"site.xml", "./site.xml"},
        {"site.xml", "folder/../site.xml"}, {"folder/page", "link/page"},
        {"folder/page", "alias"},           {"alias", "folder/page"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.report);
        const ProgramResult result =
            fit({text("-o"), path(row.document), text("--report"), path(row.report)});
        EXPECT_EQ(result.status, 2) << result.err;
        EXPECT_THAT(result.err, Mentions("another file"));
        EXPECT_FALSE(QFile::exists(path(row.document)));
        EXPECT_FALSE(QFile::exists(path(row.report)));
    }
}

// Otherwise a second try finds a document that is there, or a name that is taken.
TEST_F(SiteFiles, NothingIsStoredWhereTheReportHasNoPlace)
{
    const QString report = path("none/report.html");
    const ProgramResult written = fit({text("-o"), path("site.xml"), text("--report"), report});
    EXPECT_EQ(written.status, 3);
    EXPECT_THAT(written.err, Mentions("report.html"));
    EXPECT_FALSE(QFile::exists(path("site.xml")));

    const QStringList add = {text("--add"), text("--name"), text("Building 7")};
    EXPECT_EQ(fit(add + QStringList{text("--report"), report}).status, 3);
    EXPECT_EQ(fit(add).status, 0);
}

TEST_F(SiteFiles, SystemShowCountsTheControlPoints)
{
    const QString site = path("site.xml");
    ASSERT_EQ(fit({text("-o"), site, text("--without"), text("B")}).status, 0);
    const ProgramResult shown = m_program.run({text("system"), text("show"), site});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_THAT(shown.out.simplified(),
                Mentions("control points 5, of which 4 are used in plan and 4 in height"));
    const ProgramResult none =
        m_program.run({text("system"), text("show"), test::systemPath(text("rd_new.xml"))});
    EXPECT_FALSE(none.out.contains(text("control points")));
}

TEST_F(SiteFiles, ALibraryKeepsTheControlPoints)
{
    const auto shown = [this](const char *name) {
        return m_program.run({text("system"), text("show"), text(name)}).out.simplified();
    };
    const QString file = path("hospital.xml");
    const QString other = path("other.xml");
    const QStringList named = {text("--name"), text("Hospital"), text("-o")};
    ASSERT_EQ(fit(named + QStringList(file)).status, 0);
    ASSERT_EQ(fit(named + QStringList{other, text("--without"), text("B")}).status, 0);
    for (const QStringList &change :
         {QStringList{text("library"), text("add"), file},
          {text("library"), text("add"), file, text("--as"), text("Clinic")}}) {
        const ProgramResult result = m_program.run(change);
        ASSERT_EQ(result.status, 0) << result.err;
    }
    for (const char *name : {"Hospital", "Clinic"})
        EXPECT_THAT(shown(name), Mentions("control points 5, of which 5 are used in plan and 5"));
    ASSERT_EQ(m_program.run({text("library"), text("replace"), text("Hospital"), other}).status, 0);
    EXPECT_THAT(shown("Hospital"), Mentions("control points 5, of which 4 are used in plan and 4"));
    EXPECT_EQ(m_program.run({text("library"), text("check")}).status, 0);
    const ProgramResult exported = m_program.run(
        {text("system"), text("export"), text("Hospital"), text("--as"), text("xml")});
    EXPECT_EQ(exported.out.count(text("<Point ")), 5);
}

TEST_F(SiteFiles, ACheckAgainstASystemWithoutASiteIsWarnedOf)
{
    const QString points = m_program.file(text("points.csv"), controlPoints);
    const auto check = [&](const QString &system) {
        return m_program.run({text("site"), text("check"), text("--system"), system,
                              text("--points"), points, text("--json")});
    };
    const ProgramResult base = check(test::systemPath(text("rd_new.xml")));
    EXPECT_EQ(base.status, 0) << base.err;
    EXPECT_THAT(base.err, Mentions("rd_new.xml has no site"));
    const QString site = path("site.xml");
    ASSERT_EQ(fit({text("-o"), site}).status, 0);
    EXPECT_EQ(check(site).err, QString());
}

// New York Long Island in US survey feet; northings and eastings by PROJ's cct, shifted by 200,000
// and 980,000 ft. Elevations in feet would be 3.3 times as high.
TEST_F(SiteFiles, ThePlaneOfASystemInFeetIsSaidToBeInFeet)
{
    const QString list = m_program.file(
        text("feet.csv"), "name,longitude,latitude,height,northing,easting,elevation\n"
                          "A,-73.98,40.75,10,12522.5192,9791.4573,43\n"
                          "B,-73.97,40.75,20,12523.3100,12562.1859,53\n"
                          "C,-73.97,40.757,15,15073.6366,12561.3125,48\n");
    const ProgramResult result =
        m_program.run({text("site"), text("fit"), text("--system"), text("EPSG:2263"),
                       text("--points"), list, text("--json")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, Mentions("northing and easting are read in us-ft, the unit of the "
                                     "system, all other lengths in m, where their headings"));
    const QJsonObject fit = QJsonDocument::fromJson(result.out.toUtf8()).object();
    const QJsonObject plan = fit.value(text("horizontal")).toObject();
    EXPECT_NEAR(plan.value(text("scale")).toDouble(), 1.0, 1e-6);
    EXPECT_NEAR(plan.value(text("north_shift_m")).toDouble(), -200000.0 * 1200.0 / 3937.0, 0.01);
    EXPECT_NEAR(plan.value(text("east_shift_m")).toDouble(), -980000.0 * 1200.0 / 3937.0, 0.01);
    EXPECT_NEAR(fit.value(text("vertical")).toObject().value(text("a")).toDouble(), 33.0, 1e-3);
}

// A file that cannot grow, as on a full disk: what was there stays, and nothing is half written.
TEST_F(SiteFiles, WhatCannotBeWrittenWholeIsNotWritten)
{
    ASSERT_EQ(fit({text("-o"), path("ready.xml")}).status, 0); // PROJ is unpacked
    const QString old = m_program.file(text("old.xml"), "mine");
    const QString page = m_program.file(text("page.html"), "mine");
    m_program.beforeStart([] {
        const rlimit tooLittle = {2000, 2000};
        setrlimit(RLIMIT_FSIZE, &tooLittle);
        std::signal(SIGXFSZ, SIG_IGN);
    });
    for (const QStringList &options : {QStringList{text("-o"), path("new.xml")},
                                       {text("-o"), old, text("--force")},
                                       {text("--report"), path("new.html")},
                                       {text("--report"), page, text("--force")}}) {
        SCOPED_TRACE(options.value(1).toStdString());
        const ProgramResult result = fit(options);
        EXPECT_EQ(result.status, 3) << result.err;
        EXPECT_THAT(result.err, Mentions("cannot write"));
    }
    EXPECT_EQ(test::readFile(old), QByteArray("mine"));
    EXPECT_EQ(test::readFile(page), QByteArray("mine"));
    const QStringList left = QDir(m_program.home().path(QString())).entryList(QDir::Files);
    EXPECT_FALSE(left.contains(text("new.xml")));
    EXPECT_FALSE(left.contains(text("new.html")));
    for (const QString &name : left)
        EXPECT_FALSE(name.startsWith(text("new")) || name.startsWith(text("old.xml."))) << name;
}

// A file's name is not a pattern that numbers and mistakes are put into.
TEST_F(SiteFiles, MistakesStandBesideTheirLineWhateverTheFileIsCalled)
{
    const QString list = m_program.file(text("100%1 %2 %3.csv"), controlPoints + "F,x,y,1,2,3,4\n");
    const ProgramResult result =
        m_program.run({text("site"), text("fit"), text("--system"),
                       test::systemPath(text("rd_new.xml")), text("--points"), list});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, Mentions("100%1 %2 %3.csv:7: "));
}

// Numbers in a line with a name that turns the direction of text would be read backwards.
TEST_F(SiteFiles, NamesDoNotTurnTheNumbersBehindThem)
{
    QByteArray list = controlPoints;
    list.replace("\nA,", "\nA\xE2\x80\xAE"
                         "B,"); // right-to-left override
    const QString file = m_program.file(text("turned.csv"), list);
    const QString report = path("turned.html");
    const ProgramResult result = m_program.run({text("site"), text("fit"), text("--system"),
                                                test::systemPath(text("rd_new.xml")),
                                                text("--points"), file, text("--report"), report});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_FALSE(result.out.contains(QChar(0x202E)));
    EXPECT_THAT(result.out, Mentions("A\\x202EB"));
    const QString page = QString::fromUtf8(test::readFile(report));
    EXPECT_FALSE(page.contains(QChar(0x202E)));
    EXPECT_TRUE(page.contains(QStringLiteral("A\uFFFDB")));
}

} // namespace
} // namespace KelStd
