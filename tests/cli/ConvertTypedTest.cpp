// Lines as people type them: what they mean, and that a line which can mean two things means none.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

struct TypedLine
{
    const char *testName;
    const char *line;
    const char *longitude = "5.20361111111"; // 5 + 12/60 + 13/3600
    const char *latitude = "52.50430555556"; // 52 + 30/60 + 15.5/3600
    const char *height = "7.12500";
};

void PrintTo(const TypedLine &row, std::ostream *out)
{
    *out << row.testName;
}

class TypedLines : public testing::TestWithParam<TypedLine>
{};

TEST_P(TypedLines, ArePositions)
{
    const auto result = ProgramRun().convert(system, QByteArray(GetParam().line) + '\n');
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    const auto row = csvRows(result.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("wgs84_longitude_deg")),
              QString::fromLatin1(GetParam().longitude));
    EXPECT_EQ(row.value(QStringLiteral("wgs84_latitude_deg")),
              QString::fromLatin1(GetParam().latitude));
    EXPECT_EQ(row.value(QStringLiteral("wgs84_height_m")), QString::fromLatin1(GetParam().height));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TypedLines,
    testing::Values(
        TypedLine{"PrimesAndCommas", "5\u00B012\u203213\u2033,52\u00B030\u203215.5\u2033,7.125"},
        TypedLine{"KeyboardAndBlanks", "5d12'13\" 52d30'15.5\" 7.125"},
        TypedLine{"NameAndBlanks", "P1 5d12'13\" 52d30'15.5\" 7.125"},
        TypedLine{"Colons", "5:12:13 52:30:15.5 7.125"},
        TypedLine{"LettersBehind", "5d12'13\"E,52d30'15.5\"N,7.125"},
        TypedLine{"LettersBefore", "E5:12:13 N52:30:15.5 7.125"},
        TypedLine{"BlanksInside", "5\u00B0 12' 13\" E, 52\u00B0 30' 15.5\" N, 7.125"},
        TypedLine{"TwoApostrophes", "5\u00B012'13'';52\u00B030'15.5'';7.125"},
        TypedLine{"QuotedCsv", "\"5\u00B012'13\"\"\",\"52\u00B030'15.5\"\"\",7.125"},
        TypedLine{"DecimalCommasBetweenSemicolons", "5:12:13;52:30:15,5;7,125"},
        TypedLine{"DecimalCommasBetweenTabulators", "P1\t5\u00B012'13\"\t52\u00B030'15,5\"\t7,125"},
        TypedLine{"PlainDecimalCommas", "5,25;52,5;7,125", "5.25000000000", "52.50000000000"},
        // Thousands of degrees there are none, so that the height's comma is decimal, too.
        TypedLine{"ThreeDecimalsOfAngles", "5,125;52,250;7,125", "5.12500000000", "52.25000000000"},
        TypedLine{"NegativeAngles", "-0\u00B030',-30:15,7.125", "-0.50000000000",
                  "-30.25000000000"},
        TypedLine{"WestAndSouth", "0\u00B030'W 30:15s 7.125", "-0.50000000000", "-30.25000000000"},
        TypedLine{"OneTypedOnePlain", "5d12'13\" 52.5 7.125", "5.20361111111", "52.50000000000"},
        TypedLine{"WholeDegrees", "5\u00B0 52\u00B0 7.125", "5.00000000000", "52.00000000000"},
        // Quotation marks and semicolons leave no doubt about a name.
        TypedLine{"QuotedNameOfOneLetter", "\"W\" 5.25 52.5 7.125", "5.25000000000",
                  "52.50000000000"},
        TypedLine{"SeparatedNameOfOneLetter", "W;5.25;52.5;7.125", "5.25000000000",
                  "52.50000000000"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertTyped, LocalGeographicPositionsAreTypedLikewise)
{
    const auto typed = ProgramRun().convert(system, "5:48:38.3390 52:10:46.2700 47.582\n",
                                            {QStringLiteral("--from=local-llh")});
    ASSERT_EQ(typed.status, 0) << typed.err;
    const auto row = csvRows(typed.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("local_longitude_deg")), QStringLiteral("5.81064972222"));
    // Meetkundige Dienst, report MDGAP-2000.31: the test point TM08.
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_easting_m")), 183928.877, 0.01);
    EXPECT_NEAR(test::numberIn(row, QStringLiteral("local_northing_m")), 465682.965, 0.01);
}

TEST(ConvertTyped, PlaneCoordinatesMayHaveDecimalCommas)
{
    const QStringList options = {QStringLiteral("--from=local-neh")};
    const auto row =
        csvRows(ProgramRun().convert(system, "465682,965;183928,877;47,582\n", options).out)
            .value(0);
    EXPECT_EQ(row.value(QStringLiteral("local_northing_m")), QStringLiteral("465682.96500"));
    EXPECT_EQ(row.value(QStringLiteral("local_easting_m")), QStringLiteral("183928.87700"));
    EXPECT_EQ(row.value(QStringLiteral("local_height_m")), QStringLiteral("47.58200"));
}

struct DoubtfulLine
{
    const char *testName;
    const char *from;
    QByteArray line;
    const char *reason;
};

void PrintTo(const DoubtfulLine &row, std::ostream *out)
{
    *out << row.testName;
}

class DoubtfulLines : public testing::TestWithParam<DoubtfulLine>
{};

TEST_P(DoubtfulLines, AreRefusedWithAHint)
{
    const auto result =
        ProgramRun().convert(system, GetParam().line + '\n',
                             {QStringLiteral("--from"), QString::fromLatin1(GetParam().from)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(csvRows(result.out).size(), 0) << result.out;
    EXPECT_EQ(result.errLines().value(0),
              QStringLiteral("kelstd: <stdin>:1: ") + QString::fromUtf8(GetParam().reason));
}

constexpr const char *llh = "wgs84-llh";
constexpr const char *neh = "local-neh";

INSTANTIATE_TEST_SUITE_P(
    Doubts, DoubtfulLines,
    testing::Values(
        DoubtfulLine{"DecimalCommasBetweenBlanks", llh, "5,5 52,1 3,0",
                     "the commas separate the fields, and \"5 52\" is not a number; where commas "
                     "mark decimals, write semicolons between the fields"},
        DoubtfulLine{"NamedDecimalCommasBetweenBlanks", neh, "P1 465682,9 183928,8 47,5",
                     "the commas separate the fields, and \"9 183928\" is not a number; where "
                     "commas mark decimals, write semicolons between the fields"},
        DoubtfulLine{"DecimalCommasInAnglesBetweenBlanks", llh, "5:12,5 52:30,5 3",
                     "latitude \"5 52:30\" lacks a sign behind 5; write \u00B0 or d for degrees, ' "
                     "for minutes, \" for seconds"},
        DoubtfulLine{"PointsAndCommas", llh, "5.25;52,5;7",
                     "\"52,5\" has a comma and \"5.25\" a point; write every number with a decimal "
                     "point, or every one with a decimal comma"},
        DoubtfulLine{"GroupedThousands", neh, "465,682;183,928;47",
                     "the comma of \"183,928\" may stand before decimals or thousands; write a "
                     "decimal point"},
        DoubtfulLine{"GroupedThousandsAndDecimalPoint", neh, "465,682.9;183,928.8;47.5",
                     "\"183,928.8\" has a comma and \"47.5\" a point; write every number with a "
                     "decimal point, or every one with a decimal comma"},
        DoubtfulLine{"GroupsBetweenTabulators", neh, "465,682\t183,928\t47",
                     "the comma of \"183,928\" may stand before decimals or thousands; write a "
                     "decimal point"},
        DoubtfulLine{"LetterBesideItsAngle", llh, "W 5.25 52.5 7",
                     "\"W\" and \"5.25\" may be one angle; write it without blanks, or separate "
                     "the fields by semicolons"},
        DoubtfulLine{"MinusBesideItsAngle", llh, "- 5.25 52.5 7",
                     "\"-\" and \"5.25\" may be one angle; write it without blanks, or separate "
                     "the fields by semicolons"},
        DoubtfulLine{"DegreesAsName", llh, "5\u00B0 12' 52.5 7",
                     "\"5\u00B0\" and \"12'\" may be one angle; write it without blanks, or "
                     "separate the fields by semicolons"},
        DoubtfulLine{"AnAngleAsName", llh, "5:12 13 52:30 7",
                     "\"5:12\" and \"13\" may be one angle; write it without blanks, or separate "
                     "the fields by semicolons"},
        DoubtfulLine{"KeyboardDegreesAsName", llh, "5d 12 52.5 7",
                     "\"5d\" and \"12\" may be one angle; write it without blanks, or separate "
                     "the fields by semicolons"},
        DoubtfulLine{
            "LettersApart", llh, "5.25 E 52.5 N 7",
            "5 fields found; expected are longitude, latitude, height, after a point name "
            "if there is one; where blanks separate the fields, an angle holds none: write "
            "it without, or semicolons between the fields"},
        DoubtfulLine{"MinutesAsLatitude", llh, "P1 5\u00B0 12' 7",
                     "latitude \"12'\" has no degrees"},
        DoubtfulLine{"SecondsAsLatitude", llh, "5\u00B012' 30\" 7",
                     "latitude \"30\"\" has no degrees"},
        DoubtfulLine{"MinutesWithoutSignAsLatitude", llh, "5\u00B0 12 7",
                     "\"5\u00B0\" and \"12\" may be one angle; write it without blanks, or "
                     "separate the fields by semicolons"},
        DoubtfulLine{"BlankBeforeTheSecondsSign", llh, "5\u00B012'13 \" 52\u00B030'15 \" 7",
                     "longitude \"5\u00B012'13\" lacks a sign behind 13; write \u00B0 or d for "
                     "degrees, ' for minutes, \" for seconds"},
        DoubtfulLine{"LongitudeAndLatitudeExchanged", llh, "52d30'N,5d12'E,7",
                     "the latitude \"52d30'N\" stands before the longitude \"5d12'E\"; say the "
                     "order with a line of headings or --columns (lat,lon,h)"},
        DoubtfulLine{"LetterOfALatitude", llh, "52d30'N,5d12',7",
                     "longitude \"52d30'N\" has the letter N of a latitude; a longitude has E or "
                     "W"},
        DoubtfulLine{"SignedTwice", llh, "5d12'E,-52d30'S,7",
                     "latitude \"-52d30'S\" has a sign and a hemisphere letter; write one of "
                     "them"},
        DoubtfulLine{"DegreesOfAHeight", llh, "5.25,52.5,7\u00B0",
                     "height \"7\u00B0\" is not a number"},
        DoubtfulLine{"AngleOfThePlane", neh, "46:5,52.5,7", "northing \"46:5\" is not a number"},
        DoubtfulLine{"LatitudeOutOfRange", llh, "5:12,90:0:0.0001,7",
                     "latitude 90:0:0.0001 is not between -90 and 90"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertTyped, AFirstLineOfTypedValuesIsNoHeader)
{
    for (const char *line :
         {"A;5:15;52:30;7,0", "A;5,25E;52:30;7,0", "A,5\u00B015',52d30',7\u00B0"}) {
        const auto result = ProgramRun().convert(system, QByteArray(line) + "\nB,5.5,52.25,2\n");
        EXPECT_NE(result.status, 2) << result.err;
        EXPECT_FALSE(csvRows(result.out).isEmpty()) << line;
    }
}

TEST(ConvertTyped, AHeaderMayHaveHeadingsThatLookLikeAngles)
{
    const auto result =
        ProgramRun().convert(system, "point;lat;lon;h;3D;5E;12:30\nA;52.5;5.25;40;1;2;3\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(csvRows(result.out).value(0).value(QStringLiteral("wgs84_latitude_deg")),
              QStringLiteral("52.50000000000"));
    EXPECT_EQ(ProgramRun().convert(system, "point;Breite;lon;3D\nA;52.5;5.25;40\n").status, 2);
}

} // namespace
} // namespace KelStd
