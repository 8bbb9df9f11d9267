#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

const auto type = ProjLib::LocalLatLongH_to_LocalNEH;

const QString noLibraryLog = "Find proj library failed, can not do any point convert.";
const QString noLibraryError = "No proj library.";

QString refusedLog(const QString &from, const QString &to)
{
    return "Convert point by proj library failed, create project failed:\nFrom[" + from + "]\nTo["
           + to + "]";
}

/// What PROJ itself says of it stands beside it, under another module.
void expectOneError(const test::LogCapture &log, const QString &text)
{
    const QString module = QStringLiteral("app_log");
    const QList<test::LogCapture::Entry> entries = log.entriesOf(module);
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].text, text);
    EXPECT_EQ(static_cast<int>(entries[0].type), 2);
    EXPECT_FALSE(entries[0].flag);
    EXPECT_EQ(log.entries().first().module, module);
}

// --- PROJ is not loaded --------------------------------------------------------------------------

TEST(ConversionWithoutProj, SaysSoAndLogs)
{
    ProjLib::___unloadEnviroment();
    const Pos before = Pos::fromXYZ(1.0, 2.0, 3.0);
    {
        const test::LogCapture log;
        Pos pos = before;
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, &error));
        EXPECT_EQ(error, noLibraryError);
        EXPECT_EQ(pos, before);
        expectOneError(log, noLibraryLog);
    }
    for (const int count : {0, 1, 3}) {
        const test::LogCapture log;
        QList<Pos> list;
        for (int i = 0; i < count; ++i)
            list << before;
        const QList<Pos> copy = list;
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", list, type, &error));
        EXPECT_EQ(error, noLibraryError);
        EXPECT_EQ(list, copy);
        expectOneError(log, noLibraryLog);
    }
}

TEST(ConversionWithoutProj, LogsAlsoForNobody)
{
    ProjLib::___unloadEnviroment();
    const test::LogCapture log;
    Pos pos;
    EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, nullptr));
    expectOneError(log, noLibraryLog);
}

// --- PROJ refuses a definition -------------------------------------------------------------------

using RefusedDefinition = test::ProjTest;

TEST_F(RefusedDefinition, IsReportedWithBothDefinitions)
{
    const QString good = "+proj=longlat +datum=WGS84";
    const QPair<QString, QString> pairs[] = {
        {good, "+proj=no_such_projection"},
        {"nonsense", good},
        {good, "+proj=tmerc +ellps=no_such_ellipsoid"},
        {good, "+proj=longlat +a=wide +rf=298"},
        {"", good},
        {good, ""},
        {QStringLiteral(u"+proj=é%1 [测]"), "%2 %s %n"},
    };
    for (const auto &[from, to] : pairs) {
        SCOPED_TRACE(to.toStdString());
        const test::LogCapture log;
        QList<Pos> list{Pos::fromXYZ(1.0, 2.0, 3.0)};
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList(from, to, list, type, &error));
        EXPECT_EQ(error, "Error format.");
        EXPECT_EQ(list, QList<Pos>{Pos::fromXYZ(1.0, 2.0, 3.0)});
        expectOneError(log, refusedLog(from, to));
    }
}

TEST_F(RefusedDefinition, IsReportedForOnePositionAndForNone)
{
    const QString good = "+proj=longlat +datum=WGS84";
    {
        const test::LogCapture log;
        Pos pos = Pos::fromXYZ(1.0, 2.0, 3.0);
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList(good, "+proj=bad", pos, type, &error));
        EXPECT_EQ(error, "Error format.");
        EXPECT_EQ(pos, Pos::fromXYZ(1.0, 2.0, 3.0));
        expectOneError(log, refusedLog(good, "+proj=bad"));
    }
    const test::LogCapture log;
    QList<Pos> list;
    EXPECT_FALSE(ProjLib::ConvertPosList(good, "+proj=bad", list, type, nullptr));
    expectOneError(log, refusedLog(good, "+proj=bad"));
}

TEST_F(RefusedDefinition, LeavesTheNextConversionAlone)
{
    const test::LogCapture log;
    Pos pos = Pos::fromLongLatH(9.0, 0.0, 0.0);
    EXPECT_FALSE(ProjLib::ConvertPosList("+proj=longlat", "+proj=bad", pos, type));
    EXPECT_TRUE(ProjLib::ConvertPosList("+proj=longlat +datum=WGS84",
                                        "+proj=utm +zone=32 +datum=WGS84", pos, type));
    EXPECT_NEAR(pos.getENU().e, 500000.0, 1e-6); // a micrometre: the arithmetic's last bits
}

// --- PROJ marks a position as failed, by its stand-in
// ---------------------------------------------

using MarkedPosition = test::FakeProjTest;

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST_F(MarkedPosition, FailsByAnyOfTheThreeComponents)
{
    fake().errorNumber = 2050;
    fake().errorText = "PROJ's own text";
    for (const double mark : {1e30, infinity, -infinity, std::nan("")}) {
        for (int component = 0; component < 3; ++component) {
            SCOPED_TRACE(std::to_string(mark) + " in component " + std::to_string(component));
            PJ_COORD result{{7.0, 8.0, 9.0, 0.0}};
            result.v[component] = mark;
            fake().results = {result};
            fake().calls.clear();

            const test::LogCapture log;
            Pos pos = Pos::fromXYZ(1.0, 2.0, 3.0);
            QString error;
            EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, &error));
            EXPECT_EQ(error, "PROJ's own text");
            EXPECT_EQ(pos, Pos::fromXYZ(1.0, 2.0, 3.0));
            EXPECT_EQ(fake().count("proj_destroy"), 1);
            EXPECT_TRUE(log.entries().isEmpty());

            QList<Pos> list{Pos::fromXYZ(1.0, 2.0, 3.0)};
            EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", list, type, nullptr));
            EXPECT_EQ(list.first(), Pos::fromXYZ(1.0, 2.0, 3.0));
        }
    }
    EXPECT_EQ(fake().livingObjects, 0);
}

TEST_F(MarkedPosition, IsNotTheFourthComponentNorANearbyNumber)
{
    const double nearby = std::nextafter(1e30, 0.0);
    const double beyond = std::nextafter(1e30, infinity);
    const PJ_COORD results[] = {
        {{1.0, 2.0, 3.0, 1e30}},       {{1.0, 2.0, 3.0, infinity}}, {{-1e30, -1e30, -1e30, 0.0}},
        {{nearby, beyond, 1e29, 0.0}}, {{1e300, -1e300, 0.0, 0.0}},
    };
    for (const PJ_COORD &result : results) {
        fake().results = {result};
        fake().errorNumber = 2050; // left over from another position
        Pos pos;
        EXPECT_TRUE(ProjLib::ConvertPosList("a", "b", pos, type));
        EXPECT_EQ(pos, Pos::fromXYZ(result.v[0], result.v[1], result.v[2]));
    }
    EXPECT_TRUE(fake().explainedNumbers.empty());
}

TEST_F(MarkedPosition, EndsTheListPartlyConverted)
{
    fake().results = {PJ_COORD{{10.0, 10.0, 10.0, 0.0}}, PJ_COORD{{20.0, 20.0, 20.0, 0.0}},
                      PJ_COORD{{0.0, 0.0, 1e30, 0.0}}, PJ_COORD{{40.0, 40.0, 40.0, 0.0}}};
    fake().errorNumber = 1;
    fake().errorText = "why";
    QList<Pos> list{Pos::fromXYZ(1.0, 1.0, 1.0), Pos::fromXYZ(2.0, 2.0, 2.0),
                    Pos::fromXYZ(3.0, 3.0, 3.0), Pos::fromXYZ(4.0, 4.0, 4.0)};
    const QList<Pos> shared = list;
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", list, type, &error));
    EXPECT_EQ(error, "why");
    const QList<Pos> expected{Pos::fromXYZ(10.0, 10.0, 10.0), Pos::fromXYZ(20.0, 20.0, 20.0),
                              Pos::fromXYZ(3.0, 3.0, 3.0), Pos::fromXYZ(4.0, 4.0, 4.0)};
    EXPECT_EQ(list, expected);
    EXPECT_EQ(shared[0], Pos::fromXYZ(1.0, 1.0, 1.0));
    EXPECT_EQ(fake().count("proj_trans"), 3);
    EXPECT_EQ(fake().count("proj_destroy"), 1);
}

TEST_F(MarkedPosition, AsksProjForTheTextOfItsNumber)
{
    fake().results = {PJ_COORD{{infinity, infinity, infinity, infinity}}};
    fake().errorNumber = 2049;
    fake().errorText = "Koordinate ung\xC3\xBCltig";
    Pos pos;
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, &error));
    EXPECT_EQ(fake().explainedNumbers, std::vector<int>{2049});
    EXPECT_EQ(error, QStringLiteral(u"Koordinate ungültig"));
}

TEST_F(MarkedPosition, WithoutProjsTextHasOneOfOurOwn)
{
    fake().results = {PJ_COORD{{infinity, infinity, infinity, infinity}}};
    struct Row
    {
        int number;
        const char *text;
    };
    QString first;
    for (const Row &row : {Row{0, nullptr}, Row{2049, nullptr}, Row{2049, ""}}) {
        SCOPED_TRACE(row.number);
        fake().errorNumber = row.number;
        fake().errorText = row.text;
        Pos pos;
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, &error));
        EXPECT_GT(error.size(), 10) << error; // a sentence
        EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, nullptr));
        first = first.isEmpty() ? error : first;
        EXPECT_EQ(error, first);
    }
}

// --- Translation ---------------------------------------------------------------------------------

/// Marks every text of the context "QObject".
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "QObject") == 0 ? "<" + QString::fromUtf8(text) + ">" : QString();
    }
    bool isEmpty() const override { return false; }
};

class TranslatedMessage : public test::ProjTest
{
protected:
    TranslatedMessage() { QCoreApplication::installTranslator(&m_translator); }
    ~TranslatedMessage() override { QCoreApplication::removeTranslator(&m_translator); }

private:
    MarkingTranslator m_translator;
};

TEST_F(TranslatedMessage, OfARefusedDefinition)
{
    const test::LogCapture log;
    Pos pos;
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, &error));
    EXPECT_EQ(error, "<Error format.>");
    expectOneError(log, "<Convert point by proj library failed, create project failed>:\n"
                        "<From>[a]\n<To>[b]");

    Projection projection;
    QString out;
    error.clear();
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, nullptr, out, &error));
    EXPECT_EQ(error, "<Error format.>");
}

TEST_F(TranslatedMessage, OfAMissingLibrary)
{
    ProjLib::___unloadEnviroment();
    const test::LogCapture log;
    Pos pos;
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList("a", "b", pos, type, &error));
    EXPECT_EQ(error, "<No proj library.>");
    expectOneError(log, '<' + noLibraryLog + '>');

    const Projection projection;
    QString out;
    error.clear();
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, nullptr, out, &error));
    EXPECT_EQ(error, "<No proj library.>");
}

TEST_F(TranslatedMessage, OfOursForAPositionButNotOfProjs)
{
    const char *const from = "+proj=longlat +datum=WGS84 +axis=enu";
    const char *const to = "+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m";
    Pos pos = Pos::fromLongLatH(9.0, HUGE_VAL, 0.0);
    QString error;
    EXPECT_FALSE(ProjLib::ConvertPosList(from, to, pos, type, &error));
    EXPECT_TRUE(error.startsWith('<') && error.endsWith('>')) << error;
    pos = Pos::fromLongLatH(9.0, 91.0, 0.0);
    EXPECT_FALSE(ProjLib::ConvertPosList(from, to, pos, type, &error));
    EXPECT_EQ(error, "Invalid coordinate");
}

} // namespace
} // namespace KelStd
