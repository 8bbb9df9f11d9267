// What PROJ is asked for a separation, by its stand-in.

#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace KelStd {
namespace {

using test::LogCapture;

constexpr double infinity = std::numeric_limits<double>::infinity();
const QString refusedText = "Create proj geoid model failed.";

using Calculation = bool (*)(double, double, double, const QString &, double &, QString *);
constexpr Calculation calculations[] = {&ProjLib::Calc_geoid_diff,
                                        &ProjLib::Calc_geoid_diff_inverse};

void expectOneWarning(const LogCapture &log, const QString &text)
{
    ASSERT_EQ(log.entries().size(), 1);
    EXPECT_EQ(log.entries()[0].module, "app_log");
    EXPECT_EQ(log.entries()[0].text, text);
    EXPECT_EQ(static_cast<int>(log.entries()[0].type), 1);
    EXPECT_FALSE(log.entries()[0].flag);
}

using GeoidCalls = test::FakeProjTest;

TEST_F(GeoidCalls, DefineTheGridInQuotationMarks)
{
    double diff = 0.0;
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "/my grids/a.gtx", diff));
    EXPECT_TRUE(ProjLib::Calc_geoid_diff_inverse(1.0, 2.0, 3.0, "./b.gtx", diff));
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, QStringLiteral(u"ö%1 +inv"), diff));
    const std::vector<std::string> expected{"+proj=vgridshift +grids=\"/my grids/a.gtx\"",
                                            "+proj=vgridshift +grids=\"./b.gtx\" +inv",
                                            "+proj=vgridshift +grids=\"\xC3\xB6%1 +inv\""};
    EXPECT_EQ(fake().definitions, expected);
}

TEST_F(GeoidCalls, PassLongitudeLatitudeHeightAndNoTimeForward)
{
    for (const Calculation calculate : calculations) {
        fake().positions.clear();
        fake().directions.clear();
        fake().calls.clear();
        double diff = 0.0;
        ASSERT_TRUE(calculate(52.5, 5.25, 45.0, "a.gtx", diff, nullptr));
        ASSERT_EQ(fake().positions.size(), 1U);
        const PJ_COORD &position = fake().positions[0];
        EXPECT_EQ(position.v[0], 5.25); // the stand-in's radians are degrees
        EXPECT_EQ(position.v[1], 52.5);
        EXPECT_EQ(position.v[2], 45.0);
        EXPECT_EQ(position.v[3], infinity);
        EXPECT_EQ(fake().directions, std::vector<PJ_DIRECTION>{PJ_FWD});
        EXPECT_EQ(fake().count("proj_torad"), 2);
        EXPECT_EQ(fake().count("proj_create"), 1);
        EXPECT_EQ(diff, 3.0); // what the stand-in adds to a third component
    }
}

TEST_F(GeoidCalls, HappenInThePrivateDirectoryAndTheDefaultContext)
{
    fake().calls.clear();
    double diff = 0.0;
    ASSERT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "a.gtx", diff));
    ASSERT_FALSE(fake().calls.empty());
    const QString canonical = QDir(home().path("proj")).canonicalPath();
    for (const auto &call : fake().calls) {
        EXPECT_EQ(QString::fromStdString(call.directory), canonical) << call.function;
        EXPECT_EQ(call.context, nullptr);
    }
}

/// An absolute path may stand in a list with relative ones.
TEST_F(GeoidCalls, HappenInThePrivateDirectoryForAnAbsolutePathToo)
{
    const QString before = QDir::currentPath();
    fake().calls.clear();
    double diff = 0.0;
    ASSERT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "/models/a.gtx", diff));
    ASSERT_FALSE(fake().calls.empty());
    const QString canonical = QDir(home().path("proj")).canonicalPath();
    for (const auto &call : fake().calls)
        EXPECT_EQ(QString::fromStdString(call.directory), canonical) << call.function;
    EXPECT_EQ(QDir::currentPath(), before);
}

/// PROJ finds a name that begins with a dot from the private directory.
TEST_F(GeoidCalls, RestoreTheCurrentDirectoryAfterARelativePath)
{
    const QString before = QDir::currentPath();
    const LogCapture log;
    double diff = 0.0;
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "./a.gtx", diff));
    EXPECT_EQ(QDir::currentPath(), before);
    fake().raises = true;
    EXPECT_THROW(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "./a.gtx", diff), std::runtime_error);
    EXPECT_EQ(QDir::currentPath(), before);
    fake().refusesDefinitions = true;
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "./a.gtx", diff));
    EXPECT_EQ(QDir::currentPath(), before);
}

TEST_F(GeoidCalls, FailByTheMarksOfTheThirdComponent)
{
    fake().errorNumber = 2050;
    fake().errorText = "PROJ's own text";
    for (const Calculation calculate : calculations) {
        for (const double mark : {1e30, infinity, -infinity, std::nan("")}) {
            SCOPED_TRACE(mark);
            fake().results = {PJ_COORD{{1.0, 2.0, mark, 0.0}}};
            const LogCapture log;
            double diff = 77.0;
            QString error;
            EXPECT_FALSE(calculate(1.0, 2.0, 3.0, "a.gtx", diff, &error));
            EXPECT_EQ(error, "PROJ's own text");
            EXPECT_EQ(diff, 77.0);
            expectOneWarning(log, "Calc geoid failed: PROJ's own text");
        }
    }
    EXPECT_EQ(fake().livingObjects, 0);
}

TEST_F(GeoidCalls, DoNotFailByTheOtherComponents)
{
    for (const double mark : {1e30, infinity}) {
        fake().results = {PJ_COORD{{mark, mark, 10.0, mark}}};
        double diff = 0.0;
        EXPECT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "a.gtx", diff));
        EXPECT_EQ(diff, 7.0);
    }
}

TEST_F(GeoidCalls, HaveATextAlsoWhenProjHasNone)
{
    fake().results = {PJ_COORD{{1.0, 2.0, infinity, 0.0}}};
    fake().errorNumber = 0;
    const LogCapture log;
    double diff = 0.0;
    QString error;
    EXPECT_FALSE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "a.gtx", diff, &error));
    EXPECT_GT(error.size(), 10) << error; // a sentence
    expectOneWarning(log, "Calc geoid failed: " + error);
}

TEST_F(GeoidCalls, FailWhenProjMakesNothing)
{
    fake().refusesDefinitions = true;
    for (const Calculation calculate : calculations) {
        const LogCapture log;
        double diff = 77.0;
        QString error;
        EXPECT_FALSE(calculate(1.0, 2.0, 3.0, "a.gtx", diff, &error));
        EXPECT_EQ(error, refusedText);
        EXPECT_EQ(diff, 77.0);
        expectOneWarning(log, refusedText);
    }
    EXPECT_TRUE(fake().positions.empty());
}

TEST_F(GeoidCalls, NeedAPath)
{
    for (const Calculation calculate : calculations) {
        fake().calls.clear();
        const LogCapture log;
        double diff = 77.0;
        QString error;
        EXPECT_FALSE(calculate(1.0, 2.0, 3.0, QString(), diff, &error));
        EXPECT_EQ(error, "Geoid model file is empty.");
        EXPECT_EQ(diff, 77.0);
        expectOneWarning(log, "Geoid model file is empty.");
        EXPECT_TRUE(fake().calls.empty());
    }
}

/// A quotation mark would end the path, and let the rest of it be PROJ parameters.
TEST_F(GeoidCalls, RefuseAPathThatCannotBeQuoted)
{
    for (const char *path : {"\"", "a\".gtx", "a.gtx\" +multiplier=\"2"}) {
        SCOPED_TRACE(path);
        const LogCapture log;
        double diff = 77.0;
        QString error;
        EXPECT_FALSE(
            ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, QString::fromUtf8(path), diff, &error));
        EXPECT_EQ(error, refusedText);
        EXPECT_EQ(diff, 77.0);
        expectOneWarning(log, refusedText);
    }
    EXPECT_TRUE(fake().definitions.empty());
}

/// 520 bytes hold the definition and its terminating zero. "+proj=vgridshift +grids=" and two
/// quotation marks take 26 of them, " +inv" five.
TEST_F(GeoidCalls, FitTheirBufferOrFail)
{
    struct Row
    {
        Calculation calculate;
        int most;
    };
    for (const Row &row : {Row{calculations[0], 493}, Row{calculations[1], 488}}) {
        double diff = 77.0;
        EXPECT_TRUE(row.calculate(1.0, 2.0, 3.0, QString(row.most, 'g'), diff, nullptr));
        EXPECT_EQ(fake().definitions.back().size(), 519U);

        const std::size_t asked = fake().definitions.size();
        const QString twoBytesEach(row.most / 2 + 1, QChar(u'é'));
        for (const QString &path : {QString(row.most + 1, 'g'), QString(5000, 'g'), twoBytesEach}) {
            const LogCapture log;
            diff = 77.0;
            QString error;
            EXPECT_FALSE(row.calculate(1.0, 2.0, 3.0, path, diff, &error));
            EXPECT_EQ(error, refusedText);
            EXPECT_EQ(diff, 77.0);
            expectOneWarning(log, refusedText);
        }
        EXPECT_EQ(fake().definitions.size(), asked);
    }
}

TEST_F(GeoidCalls, ReleaseTheirObjectOnEveryExit)
{
    double diff = 0.0;
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "a.gtx", diff));
    EXPECT_EQ(fake().livingObjects, 0);
    fake().raises = true;
    EXPECT_THROW(ProjLib::Calc_geoid_diff(1.0, 2.0, 3.0, "a.gtx", diff), std::runtime_error);
    EXPECT_EQ(fake().livingObjects, 0);
}

TEST(GeoidWithoutProj, SaysSoAndLogs)
{
    ProjLib::___unloadEnviroment();
    for (const Calculation calculate : calculations) {
        // Also without a path: PROJ is asked for first.
        for (const QString &path : {QStringLiteral("a.gtx"), QString()}) {
            const LogCapture log;
            double diff = 77.0;
            QString error;
            EXPECT_FALSE(calculate(1.0, 2.0, 3.0, path, diff, &error));
            EXPECT_EQ(error, "No proj library.");
            EXPECT_EQ(diff, 77.0);
            expectOneWarning(log, "Find proj library failed, can not do any point convert.");
        }
        const LogCapture log;
        double diff = 0.0;
        EXPECT_FALSE(calculate(1.0, 2.0, 3.0, "a.gtx", diff, nullptr));
        EXPECT_EQ(log.entries().size(), 1);
    }
}

} // namespace
} // namespace KelStd
