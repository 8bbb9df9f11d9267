#include "cli/ValueRows.h"

namespace KelStd {
namespace {

using test::ProgramRun;

using Refused = test::RefusedRow;
using Parsed = test::ValueRow;

QStringList commandOf(const QList<const char *> &arguments)
{
    return test::wordsOf("parse", arguments);
}

class ParsedValues : public testing::TestWithParam<Parsed>
{};

TEST_P(ParsedValues, HaveEveryDigit)
{
    test::expectPrinted("parse", GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Values, ParsedValues,
    testing::Values(
        Parsed{"DegreesAndMinutes",
               {"--type", "Latitude", "--unit", "Degree", "30\u00B030\u2032"},
               "30.5"},
        Parsed{"ToSeconds", {"--type", "Angle", "--unit", "Second", "30\u00B030\u2032"}, "109800"},
        Parsed{"PartsWithTheirOwnSigns", {"--type", "Angle", "-30\u00B015\u2032"}, "-29.75"},
        Parsed{"MinutesBeyondSixty", {"--type", "Angle", "10\u00B075\u2032"}, "11.25"},
        Parsed{"PlainLength", {"--type", "Distance", "0.1"}, "0.1"},
        Parsed{"Exponent", {"--type", "Double", "1e-7"}, "0.0000001"},
        Parsed{"Integer", {"--type", "Int32", "-7"}, "-7"},
        Parsed{"LargeInteger", {"--type", "Int64", "9007199254740993"}, "9007199254740993"},
        Parsed{"Text", {"--type", "String", "a b"}, "a b"},
        Parsed{"StyleDegreeMinuteSecond",
               {"--style", "dms", "10\u00B06\u20320\u2033", "-5"},
               "10.1\n-5"},
        Parsed{"StyleDegree", {"--style", "degree", "10.5\u00B0"}, "10.5"},
        Parsed{"StyleSecond", {"--style", "second", "1800\u2033"}, "0.5"},
        Parsed{"StyleRadian", {"--style", "radian", "1"}, "57.29577951308232"},
        Parsed{"Typed",
               {"--typed", "52d30'", "-30\u00B015\u2032", "52,5", "52:30:15.5"},
               "52.5\n-30.25\n52.5\n52.504305555555554"},
        Parsed{"LetterBehindTheSigns",
               {"--type", "Latitude", "30\u00B030\u203200.000000\u2033S",
                "30\u00B030\u203200.000000\u2033N"},
               "-30.5\n30.5"},
        Parsed{"LongitudesWithLetters",
               {"--type", "Longitude", "73\u00B057\u2032W", "0\u00B030\u2032 e"},
               "-73.95\n0.5"},
        Parsed{"LetterToSeconds",
               {"--type", "Longitude", "--unit", "Second", "0\u00B030\u2032W"},
               "-1800"},
        Parsed{"LetterInAStyle",
               {"--type", "Latitude", "--style", "dms", "10\u00B06\u20320\u2033S"},
               "-10.1"},
        Parsed{"BlanksBehindTheSigns", {"--type", "Angle", "30\u00B030\u2032 "}, "30.5"},
        Parsed{"NumbersThatAreNoSize", {"--type", "Distance", "inf", "nan"}, "inf\nnan"},
        Parsed{"TypedLimits", {"--typed", "--type", "Latitude", "90", "S90"}, "90\n-90"},
        Parsed{"TypedLatitude", {"--typed", "--type", "Latitude", "S 30:15"}, "-30.25"},
        Parsed{"TypedLongitude", {"--typed", "--type", "Longitude", "0\u00B030'w"}, "-0.5"}),
    [](const auto &row) { return row.param.testName; });

class RefusedTexts : public testing::TestWithParam<Refused>
{};

TEST_P(RefusedTexts, AreReportedWithAReason)
{
    test::expectRefused("parse", GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedTexts,
    testing::Values(
        Refused{"LatitudeInMetres",
                {"--type", "Latitude", "--unit", "Meter", "12.5"},
                1,
                "\"12.5\" is no Latitude in the unit Meter"},
        Refused{"Boolean", {"--type", "Boolean", "true"}, 1, "\"true\" is no Boolean"},
        Refused{"KeyboardFormToTheLibrary",
                {"--type", "Angle", "52d30'"},
                1,
                "\"52d30'\" is no Angle in the unit Degree"},
        Refused{"MinutesOutOfRange",
                {"--style", "dms", "10\u00B061\u20320\u2033"},
                1,
                "is no angle in the style dms"},
        Refused{"SecondsMissing",
                {"--style", "dms", "30\u00B015\u2032"},
                1,
                "is no angle in the style dms"},
        Refused{"TypedLetterOfAnAngle",
                {"--typed", "52.5N"},
                1,
                "\"52.5N\" has a hemisphere letter, which only longitudes and latitudes have"},
        Refused{"TypedPointAndComma", {"--typed", "1.234,5"}, 1, "\"1.234,5\" is not a number"},
        Refused{"TypedNan", {"--typed", "nan"}, 1, "\"nan\" is not a finite number"},
        Refused{"TypedLatitudeBeyondThePole",
                {"--typed", "--type", "Latitude", "91"},
                1,
                "\"91\" is not between -90 and 90"},
        Refused{"TypedLongitudeTooLarge",
                {"--typed", "--type", "Longitude", "361W"},
                1,
                "\"361W\" is not between -360 and 360"},
        Refused{"LetterBeyondThePole",
                {"--type", "Latitude", "90\u00B000\u20321\u2033S"},
                1,
                "is not between -90 and 90"},
        Refused{
            "TextBehindTheMinutes",
            {"--type", "Latitude", "30\u00B030\u2032garbage"},
            1,
            "\"30\u00B030\u2032garbage\" has \"garbage\" behind the angle; --typed reads angles"},
        Refused{"TextBehindTheDegrees",
                {"--type", "Angle", "30\u00B0x"},
                1,
                "has \"x\" behind the angle"},
        Refused{"SecondsWithoutTheirSign",
                {"--type", "Angle", "30\u00B030\u203215"},
                1,
                "has \"15\" behind the angle"},
        Refused{"SecondsOfAKeyboard",
                {"--type", "Angle", "30\u00B030\u203215''"},
                1,
                "has \"15''\" behind the angle"},
        Refused{"LetterOfAnAngle",
                {"--type", "Angle", "30\u00B030\u2032S"},
                1,
                "has a hemisphere letter, which only longitudes and latitudes have"},
        Refused{"LetterOfTheOtherCoordinate",
                {"--type", "Longitude", "30\u00B030\u2032S"},
                1,
                "has the letter S of a latitude; a longitude has E or W"},
        Refused{"LetterAndMinus",
                {"--type", "Latitude", "-30\u00B030\u2032S"},
                1,
                "has a sign and a hemisphere letter; write one of them"},
        Refused{"MinutesInTheStyleOfDegrees",
                {"--style", "degree", "30\u00B015\u2032"},
                1,
                "has \"15\u2032\" behind the angle"},
        Refused{"NoType", {"12"}, 2, "--type TYPE is missing"},
        Refused{"UnknownType",
                {"--type", "Lattitude", "12"},
                2,
                "--type 'Lattitude' is no kind of value; did you mean Latitude? There are "},
        Refused{"UnknownUnit",
                {"--type", "Latitude", "--unit", "deg", "12"},
                2,
                "--unit 'deg' is no unit; did you mean Degree? There are "},
        Refused{"UnknownStyle",
                {"--style", "gon", "12"},
                2,
                "--style 'gon' is no style of angles; there are dms, degree, second, radian"},
        Refused{"StyleAndTyped",
                {"--style", "dms", "--typed", "12"},
                2,
                "--style and --typed exclude each other"},
        Refused{"TypedLength",
                {"--type", "Distance", "--typed", "12"},
                2,
                "--style and --typed are for Angle, Longitude and Latitude"},
        Refused{
            "TypedSeconds", {"--typed", "--unit", "Second", "12"}, 2, "--unit can only be Degree"},
        Refused{"NoText", {"--type", "Angle"}, 2, "a TEXT is missing"}),
    [](const auto &row) { return row.param.testName; });

TEST(ParseCommand, ReadsTextsFromStandardInputAndGoesOnAfterABadOne)
{
    const auto result =
        ProgramRun().run(commandOf({"--typed", "-", "7"}), "# angles\n5:15\n5:60\n\n-0\u00B030'\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, QStringLiteral("5.25\n-0.5\n7\n"));
    EXPECT_EQ(result.err,
              QStringLiteral("kelstd: <stdin>:3: \"5:60\" has 60 minutes; they are below 60\n"));
}

TEST(ParseCommand, ALineOfAMegabyteIsRefusedAndTheNextIsRead)
{
    const auto result =
        ProgramRun().run(commandOf({"--typed", "-"}), QByteArray(1 << 20, '1') + "\n5:15\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, QStringLiteral("5.25\n"));
    EXPECT_LT(result.err.size(), 200);
}

TEST(ParseCommand, ReadsWhatFormatPrintsForATable)
{
    const ProgramRun program;
    for (const char *value : {"116.5", "-0.5", "5.810649732"}) {
        const auto shown = program.run({QStringLiteral("format"), QStringLiteral("--type"),
                                        QStringLiteral("Longitude"), QStringLiteral("--table"),
                                        QStringLiteral("--precision"), QStringLiteral("9"),
                                        QString::fromLatin1(value)});
        const auto read = program.run(commandOf({"--typed", "--type", "Longitude"})
                                      + QStringList(shown.out.trimmed()));
        EXPECT_EQ(read.status, 0) << read.err;
        EXPECT_NEAR(read.out.toDouble(), QByteArray(value).toDouble(), 0.5e-9 / 3600 + 1e-14);
    }
}

} // namespace
} // namespace KelStd
