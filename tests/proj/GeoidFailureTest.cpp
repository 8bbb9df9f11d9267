// Grids that PROJ itself cannot use, and points that a grid has nothing for.

#include "support/GridFiles.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

using test::Grid;
using test::gtxBytes;
using test::slopingGrid;

constexpr double infinity = std::numeric_limits<double>::infinity();

class GeoidFailure : public test::ProjTest
{
protected:
    QString gridFile(const QByteArray &bytes, const char *name = "grid.gtx") const
    {
        const QString path = m_files.filePath(QString::fromUtf8(name));
        test::writeFile(path, bytes);
        return path;
    }

    /// Both directions fail with a text; that of the way to the geoid.
    static QString errorOf(double latitude, double longitude, double height, const QString &path)
    {
        double diff = 77.0;
        QString error;
        EXPECT_FALSE(ProjLib::Calc_geoid_diff(latitude, longitude, height, path, diff, &error))
            << diff;
        QString inverseError;
        EXPECT_FALSE(ProjLib::Calc_geoid_diff_inverse(latitude, longitude, height, path, diff,
                                                      &inverseError))
            << diff;
        EXPECT_NE(inverseError, QString());
        EXPECT_EQ(diff, 77.0);
        return error;
    }

private:
    QTemporaryDir m_files;
};

TEST_F(GeoidFailure, OutsideTheGridHasProjsText)
{
    const QString path = gridFile(gtxBytes(slopingGrid())); // 50 to 54 N, 3 to 7 E
    for (const auto &[latitude, longitude] :
         {std::pair{49.9, 5.0}, {54.1, 5.0}, {52.0, 2.9}, {52.0, 7.1}, {-52.0, 5.0}}) {
        SCOPED_TRACE(testing::Message() << latitude << ' ' << longitude);
        const test::LogCapture log;
        const QString error = errorOf(latitude, longitude, 0.0, path);
        // PROJ 9.1's text for its number PROJ_ERR_COORD_TRANSFM_OUTSIDE_GRID.
        EXPECT_EQ(error, "Coordinate to transform falls outside grid");
        ASSERT_EQ(log.entries().size(), 2);
        EXPECT_EQ(log.entries()[0].text, "Calc geoid failed: " + error);
        EXPECT_EQ(static_cast<int>(log.entries()[0].type), 1);
    }
}

TEST_F(GeoidFailure, TheEdgeOfTheGridIsInside)
{
    const QString path = gridFile(gtxBytes(slopingGrid()));
    double diff = 0.0;
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(50.0, 5.0, 0.0, path, diff));
    EXPECT_NEAR(diff, -40.2, 1e-5);
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(54.0, 7.0, 0.0, path, diff));
    EXPECT_NEAR(diff, -44.4, 1e-5);
}

/// -88.8888 marks a node without a value. Among missing nodes there is none; beside one PROJ goes
/// by the others.
TEST_F(GeoidFailure, WhereTheGridHasNoValues)
{
    Grid grid = slopingGrid();
    for (const std::size_t node : {0U, 1U, 5U, 6U})
        grid.values[node] = -88.8888F;
    const QString path = gridFile(gtxBytes(grid));
    EXPECT_EQ(errorOf(50.5, 3.5, 0.0, path),
              "Coordinate to transform falls into a grid cell that evaluates to nodata");
    double diff = 0.0;
    EXPECT_TRUE(ProjLib::Calc_geoid_diff(52.5, 5.5, 0.0, path, diff));
    EXPECT_NEAR(diff, -42.75, 1e-5);
}

TEST_F(GeoidFailure, AnUndefinedNumberIsNeverASeparation)
{
    Grid grid = slopingGrid();
    for (float &value : grid.values)
        value = std::numeric_limits<float>::quiet_NaN();
    EXPECT_NE(errorOf(52.5, 5.5, 0.0, gridFile(gtxBytes(grid), "nan.gtx")), QString());

    const QString good = gridFile(gtxBytes(slopingGrid()));
    for (const double bad : {std::nan(""), infinity, -infinity}) {
        SCOPED_TRACE(bad);
        EXPECT_NE(errorOf(bad, 5.5, 0.0, good), QString());
        EXPECT_NE(errorOf(52.5, bad, 0.0, good), QString());
        EXPECT_NE(errorOf(52.5, 5.5, bad, good), QString());
    }
}

/// A GTX file may promise values that are not there: then nothing in it is where it says.
TEST_F(GeoidFailure, AFileThatIsCutShort)
{
    const QByteArray whole = gtxBytes(slopingGrid());
    const QString path = gridFile(whole.left(whole.size() - 5 * 4)); // the northernmost row is gone
    for (const double latitude : {52.5, 53.5})
        EXPECT_EQ(errorOf(latitude, 5.5, 0.0, path), "Create proj geoid model failed.");
}

TEST_F(GeoidFailure, FilesThatAreNoGrid)
{
    const QString refused = "Create proj geoid model failed.";
    Grid noRows = slopingGrid();
    noRows.rows = 0;
    Grid elsewhere = slopingGrid();
    elsewhere.latitude = 5000.0;
    const QString paths[] = {
        QStringLiteral("/no/such/grid.gtx"),
        gridFile({}, "empty.gtx"),
        gridFile("no grid", "short.gtx"),
        gridFile(QByteArray(10'000, 'x'), "letters.gtx"),
        gridFile(gtxBytes(noRows), "no_rows.gtx"),
        gridFile(gtxBytes(elsewhere), "elsewhere.gtx"),
        gridFile(test::ggfBytes(slopingGrid(), test::RowOrder::OutputOrder), "unconverted.ggf"),
    };
    for (const QString &path : paths) {
        SCOPED_TRACE(path.toStdString());
        const test::LogCapture log;
        EXPECT_EQ(errorOf(52.5, 5.5, 0.0, path), refused);
        EXPECT_EQ(log.entriesOf("app_log").size(), 2);
        ASSERT_FALSE(log.entries().isEmpty());
        EXPECT_EQ(log.entries()[0].module, "app_log");
        EXPECT_EQ(log.entries()[0].text, refused);
        EXPECT_EQ(static_cast<int>(log.entries()[0].type), 1);
    }
}

TEST_F(GeoidFailure, AHeaderWithoutNumbersGivesNoNumber)
{
    for (double Grid::*field :
         {&Grid::latitude, &Grid::longitude, &Grid::latitudeSpacing, &Grid::longitudeSpacing}) {
        Grid grid = slopingGrid();
        grid.*field = std::nan("");
        EXPECT_NE(errorOf(52.5, 5.5, 0.0, gridFile(gtxBytes(grid))), QString());
    }
}

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

class TranslatedGeoidMessage : public GeoidFailure
{
protected:
    TranslatedGeoidMessage() { QCoreApplication::installTranslator(&m_translator); }
    ~TranslatedGeoidMessage() override { QCoreApplication::removeTranslator(&m_translator); }

private:
    MarkingTranslator m_translator;
};

TEST_F(TranslatedGeoidMessage, InErrorsAndLog)
{
    struct Row
    {
        QString path;
        QString error;
        QString logged;
    };
    const QString grid = gridFile(gtxBytes(slopingGrid()));
    const Row rows[] = {
        {QString(), "<Geoid model file is empty.>", "<Geoid model file is empty.>"},
        {"/no/such.gtx", "<Create proj geoid model failed.>", "<Create proj geoid model failed.>"},
        {grid, "Coordinate to transform falls outside grid",
         "<Calc geoid failed>: Coordinate to transform falls outside grid"},
    };
    for (const Row &row : rows) {
        const test::LogCapture log;
        EXPECT_EQ(errorOf(0.0, 0.0, 0.0, row.path), row.error);
        EXPECT_EQ(log.entries().value(0).text, row.logged);
    }
    ProjLib::___unloadEnviroment();
    const test::LogCapture log;
    EXPECT_EQ(errorOf(0.0, 0.0, 0.0, grid), "<No proj library.>");
    EXPECT_EQ(log.entries().value(0).text,
              "<Find proj library failed, can not do any point convert.>");
}

} // namespace
} // namespace KelStd
