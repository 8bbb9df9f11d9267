// A line that cannot be read or converted is reported, and the run goes on.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

struct BadLine
{
    const char *testName;
    QByteArray line;
    const char *reason;
};

void PrintTo(const BadLine &row, std::ostream *out)
{
    *out << row.testName;
}

class BadLines : public testing::TestWithParam<BadLine>
{};

/// The bad line is the fourth of five; the lines around it are converted.
TEST_P(BadLines, AreReportedWithNumberAndReason)
{
    const auto result = ProgramRun().convert(system, "# five lines\nA,5.25,52.5,1\n\n"
                                                         + GetParam().line + "\nB,5.5,52.25,2\n");
    EXPECT_EQ(result.status, 1);
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.at(0).value(QStringLiteral("point")), QStringLiteral("A"));
    EXPECT_EQ(rows.at(1).value(QStringLiteral("point")), QStringLiteral("B"));
    ASSERT_EQ(result.errLines().size(), 2) << result.err;
    EXPECT_EQ(result.errLines().at(0),
              QStringLiteral("kelstd: <stdin>:4: ") + QString::fromUtf8(GetParam().reason));
    EXPECT_EQ(result.errLines().at(1), QStringLiteral("kelstd: 1 of 3 positions failed"));
}

// PROJ's texts for a position that it refuses are those of its release 9.1.
INSTANTIATE_TEST_SUITE_P(
    Reasons, BadLines,
    testing::Values(
        BadLine{"NotANumber", "C,5.2x,52.5,1", "longitude \"5.2x\" is not a number"},
        BadLine{"DegreesMinutesSecondsWithoutSigns", "C,5 12 13,52.5,1",
                "longitude \"5 12 13\" is not a number (write an angle as 5\u00B012'13\" or "
                "5:12:13)"},
        BadLine{"QuotedDecimalComma", "C,5.25,\"52,5\",1",
                "\"52,5\" has a comma and \"5.25\" a point; write every number with a decimal "
                "point, or every one with a decimal comma"},
        BadLine{"MissingHeight", "C,5.25,52.5,",
                "height is missing; --height says that of positions without one"},
        BadLine{"NotANumberWord", "C,nan,52.5,1", "longitude \"nan\" is not a finite number"},
        BadLine{"Infinity", "C,5.25,52.5,-inf", "height \"-inf\" is not a finite number"},
        BadLine{"TooLargeForADouble", "C,5.25,52.5,1e999",
                "height \"1e999\" is not a finite number"},
        BadLine{"Hexadecimal", "C,0x5,52.5,1", "longitude \"0x5\" is not a number"},
        BadLine{"OtherDigits", "C,\xD9\xA5,52.5,1", "longitude \"\xD9\xA5\" is not a number"},
        BadLine{"LongField", "C," + QByteArray(100, 'x') + ",52.5,1",
                "longitude \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\" is not a number"},
        BadLine{"OneField", "C", "1 field found; line 2 has 4"},
        BadLine{"TooManyFields", "C,5.25,52.5,1,7", "5 fields found; line 2 has 4"},
        // Without the rule that all lines are alike this would be a position at 101 degrees east: a
        // numbered point whose height was lost.
        BadLine{"ANumberedPointWithoutHeight", "101 5.25 52.5", "3 fields found; line 2 has 4"},
        BadLine{"OpenQuotation", "\"C,5.25,52.5,1", "a quotation mark is not closed"},
        BadLine{"TextAfterQuotation", "\"C\"x,5.25,52.5,1",
                "text follows a closing quotation mark"},
        BadLine{"NoCharacterOfAnyEncoding", "B\x8Dro,5.25,52.5,1",
                "the line holds control characters: it is not text"},
        BadLine{"ZeroByte", QByteArray("C,5.25\0,52.5,1", 14),
                "the line holds control characters: it is not text"},
        BadLine{"EscapeSequence", "\x1B[31mC,5.25,52.5,1",
                "the line holds control characters: it is not text"},
        BadLine{"TooLong", "C,5.25,52.5," + QByteArray(5000, '1'),
                "the line is longer than 4096 bytes"},
        // PROJ itself makes cartesian coordinates of a local latitude beyond the pole.
        BadLine{"LatitudeOutOfRange", "C,5.25,90.5,1", "latitude 90.5 is not between -90 and 90"},
        BadLine{"LongitudeOutOfRange", "C,-360.5,52.5,1",
                "longitude -360.5 is not between -360 and 360"},
        // Higher than every satellite; PROJ has no cartesian coordinates there.
        BadLine{
            "HeightOutOfRange", "C,5.25,52.5,1e308",
            "outside where the projection is one-to-one: the height, 1e+308 m, is no position's "
            "(at 0 m there is one)"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertLineErrors, TheFilesNameStandsBeforeTheLine)
{
    const ProgramRun program;
    const QString file = program.file(QStringLiteral("points.csv"), "5.25,52.5,1\n5.25,x,1\n");
    const auto result = program.convert(system, {}, {file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errLines().value(0),
              QStringLiteral("kelstd: %1:2: latitude \"x\" is not a number").arg(file));
}

TEST(ConvertLineErrors, WithoutHeaderOrModelAWrongNumberOfFieldsSaysWhatIsExpected)
{
    const auto result =
        ProgramRun().convert(system, "5.25,52.5,1,2,3\n5.25,52.5,1\n",
                             {QStringLiteral("--from"), QStringLiteral("wgs84-llh")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(csvRows(result.out).size(), 1);
    EXPECT_EQ(result.errLines().value(0),
              QStringLiteral("kelstd: <stdin>:1: 5 fields found; expected are longitude, latitude, "
                             "height, after a point name if there is one"));
}

TEST(ConvertLineErrors, NobodyIsToldToPassOverPositionsWithFurtherFields)
{
    for (const QByteArray &line :
         {QByteArray("P1,5.25,52.5,40,TREE"), QByteArray("P1;5,25;52,5;40;TREE"),
          QByteArray("1,5\u00B015'0\"E,52\u00B030'0\"N,40,TREE")}) {
        const auto result = ProgramRun().convert(system, line + '\n' + line + '\n');
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, Mentions("5 fields found"));
        EXPECT_FALSE(result.err.contains(QLatin1String("--skip"))) << result.err;
    }
    const auto title =
        ProgramRun().convert(system, "Job 7,2024-05-01,10.5 degrees\nA,5.25,52.5,40\n");
    EXPECT_EQ(title.status, 2);
    EXPECT_THAT(title.err, Mentions("--skip 1 passes over the line"));
}

TEST(ConvertLineErrors, LimitsAreInTheUnitOfTheInput)
{
    const struct
    {
        QByteArray input;
        const char *reason;
    } rows[] = {
        {"lat_rad,lon_rad,h\n0.9,100,3\n",
         "longitude 100 is not between -6.2831853 and 6.2831853 rad"},
        {"lat_gon,lon_gon,h\n101,5,3\n", "latitude 101 is not between -100 and 100 gon"},
        {"lat,lon,h\n91,5,3\n", "latitude 91 is not between -90 and 90\n"},
    };
    for (const auto &row : rows) {
        const auto result = ProgramRun().convert(system, row.input);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, Mentions(row.reason));
    }
}

/// Who knows what such a line says of the others.
TEST(ConvertLineErrors, AFirstLineThatIsNeitherHeadingsNorAPositionEndsTheRunUnlessItIsSkipped)
{
    for (const QByteArray &first :
         {QByteArray("5.25,x,1"), QByteArray("\x01\x02\xFF"), QByteArray(100000, 'x'),
          QByteArray("P\x8D,5.25,52.5,1"), QByteArray("\"P,5.25,52.5,1")}) {
        SCOPED_TRACE(first.left(20).toStdString());
        const QByteArray input = first + "\n5.25,52.5,1\n";
        const auto result = ProgramRun().convert(system, input);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err, Mentions("<stdin>:1: "));
        // What holds coordinates is no title to be passed over.
        const bool isData = first.contains("5.25,52.5");
        EXPECT_EQ(result.err.contains(QLatin1String("; --skip 1 passes over the line")), !isData);
        const auto skipped = ProgramRun().convert(system, input, {QStringLiteral("--skip=1")});
        EXPECT_EQ(skipped.status, 0) << skipped.err;
        EXPECT_EQ(csvRows(skipped.out).size(), 1);
    }
}

TEST(ConvertLineErrors, ALineOfTheHeadersKindMustHaveItsFields)
{
    const auto result =
        ProgramRun().convert(system, "point,lon,lat,h\nA,5.25,52.5,1\nB,5.25,52.5\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, Mentions("<stdin>:3: 3 fields found; line 1 has 4"));
}

TEST(ConvertLineErrors, WhenEveryLineFailsTheStatusIsStillSomeFailed)
{
    const auto result = ProgramRun().convert(system, "5.25,95,1\n5.25,-95,1\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.outLines().size(), 1);
    EXPECT_EQ(result.errLines().value(2), QStringLiteral("kelstd: 2 of 2 positions failed"));
}

TEST(ConvertLineErrors, AFailingPositionLeavesNothingOnTheNext)
{
    const ProgramRun program;
    const auto alone = program.convert(system, "5.25,52.5,1\n");
    const auto after = program.convert(system, "5.25,52.5,1e308\n5.25,52.5,1\n");
    EXPECT_EQ(after.status, 1);
    EXPECT_EQ(after.out, alone.out);
}

// A south orientated system with a false easting: PROJ makes the transformation and then refuses
// every position.
TEST(ConvertLineErrors, PositionsThatProjRefusesOneByOneHaveItsText)
{
    // Beyond a right angle from the central meridian.
    const auto result = ProgramRun().convert(QStringLiteral("hartebeesthoek94_lo29.xml"),
                                             "28.5,-25.5,1\n119.5,0.5,1\n");
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_THAT(result.err, Mentions("<stdin>:2: "));
    EXPECT_THAT(result.err, Mentions("Point outside of projection domain"));
    EXPECT_THAT(result.err, Mentions("1 of 2 positions failed"));
}

TEST(ConvertLineErrors, ProjItselfStaysSilent)
{
    // Far outside the projection: PROJ refuses it, and would say so on standard error, too.
    const auto result =
        ProgramRun().convert(QStringLiteral("british_national_grid.xml"), "1e12,1e12,0\n",
                             {QStringLiteral("--from"), QStringLiteral("local-neh")});
    EXPECT_EQ(result.errLines().size(), 2) << result.err;
    EXPECT_FALSE(result.err.contains(QLatin1String("proj_")));
}

TEST(ConvertLineErrors, ProjSpeaksWhenTheUserWantsIt)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("PROJ_DEBUG"), QStringLiteral("3"));
    const auto result = program.convert(system, "5.25,52.5,1\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(result.err.isEmpty());
}

} // namespace
} // namespace KelStd
