// kelstd convert in a system that names a geoid model.

#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QFile>

#include <ostream>

namespace KelStd {
namespace {

using test::editedSystem;
using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::slopingGrid;

const QString reference = QStringLiteral("local_height_reference");
constexpr double halfUnit = 6e-6; // [m], of five decimals

/// 50 to 54 N, 3 to 7 E; 42.55 m at 52.5 N 3.5 E.
class GeoidConvert : public testing::Test
{
protected:
    GeoidConvert()
    {
        program.file(QStringLiteral("geoid_model_list/small.gtx"), test::gtxBytes(slopingGrid()));
    }

    QString systemWith(const QString &model) const
    {
        return program.file(QStringLiteral("system.xml"),
                            editedSystem(QStringLiteral("rd_new.xml"),
                                         {{QStringLiteral("modelFileName=\"\""),
                                           QStringLiteral("modelFileName=\"%1\"").arg(model)}}));
    }

    ProgramResult convert(const QString &model, const QByteArray &input,
                          const QStringList &options = {}) const
    {
        return program.run(QStringList{"convert", "--system", systemWith(model)} + options, input);
    }

    ProgramRun program;
};

TEST_F(GeoidConvert, ProjectedHeightIsAboveTheGeoidAndSaysSo)
{
    const auto result = convert("small.gtx", "A,3.5,52.5,100\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    const auto row = test::csvRows(result.out).value(0);
    EXPECT_NEAR(numberIn(row, "local_height_m"), 100.0 - 42.55, halfUnit);
    EXPECT_EQ(row.value(reference), "geoid small.gtx");
    EXPECT_NEAR(numberIn(row, "wgs84_height_m"), 100.0, halfUnit);
    EXPECT_GT(std::abs(numberIn(row, "local_ellipsoidal_height_m") - 57.45), 0.05);
}

TEST_F(GeoidConvert, GivenProjectedHeightIsAboveTheGeoid)
{
    const auto there = test::csvRows(convert("small.gtx", "3.5,52.5,100\n").out).value(0);
    const QByteArray input =
        (there.value("local_northing_m") + ' ' + there.value("local_easting_m") + " 57.45\n")
            .toUtf8();
    const auto result = convert("small.gtx", input, {"--from", "local-neh"});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto back = test::csvRows(result.out).value(0);
    EXPECT_NEAR(numberIn(back, "wgs84_height_m"), 100.0, 0.001);
    EXPECT_EQ(back.value(reference), "geoid small.gtx");
}

/// A height of a line, and what its column says that it is above.
struct SaidHeight
{
    const char *testName;
    const char *model;   ///< of the system that reads the height
    const char *said;    ///< of a point on the grid
    const char *message; ///< empty where the line is taken
};

void PrintTo(const SaidHeight &row, std::ostream *out)
{
    *out << row.testName;
}

class GeoidConvertSaid : public GeoidConvert, public testing::WithParamInterface<SaidHeight>
{};

// 3.5 E 52.5 N in RD New, to a metre, by PROJ's cs2cs EPSG:4326 EPSG:28992.
TEST_P(GeoidConvertSaid, IsHeldAgainstTheSystem)
{
    const SaidHeight &row = GetParam();
    for (const char *line : {"A,503037,26860,57.45,%1\n", "\"A\",503037,26860,57.45,\"%1\"\n"}) {
        const QByteArray input =
            "point,local_northing_m,local_easting_m,local_height_m,local_height_reference\n"
            + QString::fromLatin1(line).arg(QLatin1String(row.said)).toLatin1();
        for (const char *columns : {"", "--columns=1,2,3,4"}) {
            QStringList options = {"--from", "local-neh"};
            if (*columns != '\0')
                options += QString::fromLatin1(columns);
            const auto result = convert(row.model, input, options);
            const bool isTaken = *row.message == '\0';
            EXPECT_EQ(result.status, isTaken ? 0 : 1);
            EXPECT_EQ(test::csvRows(result.out).size(), isTaken ? 1 : 0);
            EXPECT_THAT(result.err, Mentions(row.message));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, GeoidConvertSaid,
    testing::Values(
        SaidHeight{"Same", "small.gtx", "geoid small.gtx", ""},
        SaidHeight{"BothEllipsoidal", "", "ellipsoid", ""},
        SaidHeight{"NotSaid", "small.gtx", "", ""},
        SaidHeight{"AboveNoGeoid", "", "geoid small.gtx",
                   "<stdin>:2: the height is above \"geoid small.gtx\", as "
                   "local_height_reference says, and would be read as one above the ellipsoid"},
        SaidHeight{"AboveAGeoid", "small.gtx", "ellipsoid",
                   "the height is above \"ellipsoid\", as local_height_reference says, and would "
                   "be read as one above the geoid small.gtx"},
        SaidHeight{"OfAnotherGeoid", "small.gtx", "geoid large.gtx", "above \"geoid large.gtx\""},
        SaidHeight{"InOtherWords", "", "NAP", "above \"NAP\""}),
    [](const auto &row) { return row.param.testName; });

TEST_F(GeoidConvert, HeightOfAnotherFrameIsNotAskedWhatItIsAbove)
{
    const QByteArray input =
        "wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,local_height_reference\n"
        "3.5,52.5,100,ellipsoid\n";
    EXPECT_EQ(convert("small.gtx", input).status, 0);
}

TEST_F(GeoidConvert, GgfModelIsUsedByItsName)
{
    program.file(QStringLiteral("geoid_model_list/a.ggf"),
                 test::ggfBytes(slopingGrid(), test::RowOrder::Reversed));
    const auto row = test::csvRows(convert("a.ggf", "3.5,52.5,100\n").out).value(0);
    EXPECT_NEAR(numberIn(row, "local_height_m"), 57.45, halfUnit);
    EXPECT_EQ(row.value(reference), "geoid a.ggf");
}

TEST_F(GeoidConvert, EachPointOutsideTheModelIsWarnedOfAndEllipsoidal)
{
    const auto result = convert("small.gtx", "A,3.5,52.5,100\nB,5,49,100\nC,2,51,100\n");
    EXPECT_EQ(result.status, 0);
    const auto rows = test::csvRows(result.out);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows.at(0).value(reference), "geoid small.gtx");
    for (const int outside : {1, 2}) {
        EXPECT_EQ(rows.at(outside).value(reference), "ellipsoid");
        EXPECT_EQ(rows.at(outside).value("local_height_m"),
                  rows.at(outside).value("local_ellipsoidal_height_m"));
    }
    ASSERT_EQ(result.errLines().size(), 2);
    for (const char *line : {"<stdin>:2: ", "<stdin>:3: "})
        EXPECT_THAT(result.err,
                    Mentions((std::string("kelstd: ") + line
                              + "warning: the geoid model \"small.gtx\" has no value for the point "
                                "(Coordinate to transform falls outside grid): its projected "
                                "height is ellipsoidal")
                                 .c_str()));
}

struct UnusableModel
{
    const char *name;
    const char *reason;
};

TEST_F(GeoidConvert, AModelThatCannotBeUsedIsWarnedOfOnceARun)
{
    program.file(QStringLiteral("geoid_model_list/text.gtx"), QByteArray(500, 'x'));
    program.file(QStringLiteral("geoid_model_list/cut.ggf"), QByteArray(500, 'x'));
    program.file(QStringLiteral("beside.gtx"), test::gtxBytes(slopingGrid()));
    program.file(QStringLiteral("geoid_model_list/short.gtx"),
                 test::gtxBytes(slopingGrid()).chopped(1));
    for (const UnusableModel &row :
         {UnusableModel{"missing.gtx", "it is not in "},
          UnusableModel{"../beside.gtx", "it is not in "},
          UnusableModel{"short.gtx", "it is cut short: of 25 values only 24 are there"},
          UnusableModel{"text.gtx", "PROJ does not read "},
          UnusableModel{"cut.ggf", "it is no GGF grid"}}) {
        SCOPED_TRACE(row.name);
        const auto result = convert(row.name, "3.5,52.5,100\n3.5,52.6,100\n3.5,10,100\n");
        EXPECT_EQ(result.status, 0);
        ASSERT_EQ(result.errLines().size(), 1) << result.err;
        EXPECT_THAT(result.err, Mentions("kelstd: warning: the geoid model "));
        EXPECT_THAT(result.err, Mentions(row.name));
        EXPECT_THAT(result.err, Mentions(row.reason));
        EXPECT_THAT(result.err, Mentions("All heights are ellipsoidal."));
        for (const auto &point : test::csvRows(result.out)) {
            EXPECT_EQ(point.value(reference), "ellipsoid");
            EXPECT_EQ(point.value("local_height_m"), point.value("local_ellipsoidal_height_m"));
        }
    }
}

/// A first start that was ended after the marker was written copied no model, or a part of one.
TEST_F(GeoidConvert, ADeliveredModelThatWasNotCopiedIsUsedAllTheSame)
{
    const QByteArray delivered = test::readFile(test::egm96Path());
    const double separation = test::GridReader(delivered).separation(52.5, 3.5);
    for (const int copied : {-1, 0, 1000, static_cast<int>(delivered.size()) - 1}) {
        SCOPED_TRACE(copied);
        if (copied >= 0)
            program.file(QStringLiteral("geoid_model_list/egm96_15.gtx"), delivered.left(copied));
        const auto result = convert("egm96_15.gtx", "3.5,52.5,100\n");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, QString());
        const auto row = test::csvRows(result.out).value(0);
        EXPECT_EQ(row.value(reference), "geoid egm96_15.gtx");
        EXPECT_NEAR(numberIn(row, "local_height_m"), 100.0 - separation, 1e-5);
    }
}

TEST_F(GeoidConvert, WithoutAModelEveryHeightIsEllipsoidalWithoutAWarning)
{
    const auto result = convert(QString(), "3.5,52.5,100\n");
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(test::csvRows(result.out).value(0).value(reference), "ellipsoid");
}

TEST_F(GeoidConvert, WideTableHasAColumnForIt)
{
    const auto result = convert("small.gtx", "3.5,52.5,100\n5,49,100\n", {"--table"});
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_TRUE(lines.at(1).endsWith("      height  above the")) << lines.at(1);
    EXPECT_EQ(lines.at(2).simplified(), "dms dms m (ell.) m m m dms dms m (ell.) m m m");
    EXPECT_TRUE(lines.at(3).endsWith("     57.45    geoid small.gtx")) << lines.at(3);
    EXPECT_TRUE(lines.at(4).endsWith("  ellipsoid")) << lines.at(4);
    // Its heading, its values and its unit begin and end in one place.
    EXPECT_EQ(lines.at(1).indexOf("above the"), lines.at(3).indexOf("geoid small"));
    EXPECT_EQ(lines.at(1).indexOf("above the"), lines.at(4).indexOf("ellipsoid"));
    EXPECT_EQ(lines.at(2).size() + 2, lines.at(1).indexOf("above the"));
}

TEST_F(GeoidConvert, NarrowTableSaysItOfEachPoint)
{
    const auto shown = test::Terminal(80).run(
        program, {"convert", "--system", systemWith("small.gtx")}, "3.5,52.5,100\n5,49,100\n");
    const QStringList lines = shown.outLines();
    const int first =
        lines.indexOf(QStringLiteral("height above the geoid small.gtx").rightJustified(78));
    ASSERT_EQ(first, 8) << shown.out;
    EXPECT_EQ(lines.at(6).simplified(), "northing [m] easting [m] height [m]");
    EXPECT_TRUE(lines.at(7).endsWith("57.45")) << lines.at(7);
    EXPECT_EQ(lines.filter("northing [m]").value(1).simplified(),
              "northing [m] easting [m] ell. height [m]");
    EXPECT_EQ(lines.filter("above the").size(), 1);
    for (const QString &line : lines)
        EXPECT_LE(line.size(), line.contains("kelstd:") ? 1000 : 80) << line;
}

/// The wide table needs room for the column.
TEST_F(GeoidConvert, ATerminalThatIsTooNarrowForTheColumnGetsTheNarrowTable)
{
    const auto run = [this](const char *model, int width) {
        return test::Terminal(width).run(program, {"convert", "--system", systemWith(model)},
                                         "3.5,52.5,100\n");
    };
    const QString wide = run("small.gtx", 300).out;
    ASSERT_THAT(wide, Mentions("above the"));
    const int needed = 205 + 2 + 15; // the columns, the gap, "geoid small.gtx"
    EXPECT_EQ(run("small.gtx", needed).outLines().size(), 4);
    EXPECT_GT(run("small.gtx", needed - 1).outLines().size(), 4);
    EXPECT_EQ(run("", needed - 1).outLines().size(), 4);
}

TEST_F(GeoidConvert, SystemShowTellsWhetherTheModelIsThere)
{
    EXPECT_THAT(program.run({"system", "show", systemWith("small.gtx")}).out,
                Mentions("geoid model             small.gtx\n"));
    const auto missing = program.run({"system", "show", systemWith("missing.gtx")});
    EXPECT_THAT(missing.out, Mentions("missing.gtx (cannot be used)"));
    EXPECT_THAT(missing.out, Mentions("- The geoid model \"missing.gtx\" cannot be used: "));
}

} // namespace
} // namespace KelStd
