#include "cli/ValueRows.h"

namespace KelStd {
namespace {

using test::ProgramRun;

using Refused = test::RefusedRow;
using Formatted = test::ValueRow;

QStringList commandOf(const QList<const char *> &arguments)
{
    return test::wordsOf("format", arguments);
}

class FormattedValues : public testing::TestWithParam<Formatted>
{};

TEST_P(FormattedValues, AreThoseOfTheLibrary)
{
    test::expectPrinted("format", GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Values, FormattedValues,
    testing::Values(
        Formatted{"DegreeMinuteSecond",
                  {"--type", "Angle", "--unit", "Degree", "--to", "Degree", "--style", "dms",
                   "--precision", "0", "--erase-zeros", "30.5"},
                  "30\u00B030\u20320\u2033"},
        Formatted{"DecimalsInEveryPart",
                  {"--type", "Angle", "--style", "dms", "--precision", "2", "30.5"},
                  "30.00\u00B030.00\u20320.00\u2033"},
        Formatted{"NegativeMinutes",
                  {"--type", "Angle", "--style", "dms", "--precision", "0", "-0.5"},
                  "-30\u20320\u2033"},
        Formatted{
            "SouthWithUnit",
            {"--type", "Latitude", "--style", "dms", "--precision", "0", "--show-unit", "-30.5"},
            "30\u00B030\u20320\u2033S\t\u00B0"},
        Formatted{"BareNumber", {"--type", "Latitude", "-30.5"}, "-30.5000"},
        Formatted{
            "SecondsFromDegrees",
            {"--type", "Angle", "--to", "Second", "--style", "second", "--precision", "1", "0.5"},
            "1800.0\u2033"},
        Formatted{"KeptZeros", {"--type", "Double", "--precision", "3", "1.5"}, "1.500"},
        Formatted{
            "ErasedZeros", {"--type", "Double", "--precision", "3", "--erase-zeros", "1.5"}, "1.5"},
        Formatted{
            "FeetWithUnit",
            {"--type", "Distance", "--to", "Foot", "--precision", "2", "--show-unit", "0.3048"},
            "1.00\tft"},
        Formatted{"AnotherFootsUnit",
                  {"--type", "X", "--unit", "US Foot", "--to", "Meter", "--precision", "3", "3937"},
                  "1200.000"},
        Formatted{"Temperature",
                  {"--type", "Temprature", "--unit", "Celsius", "--to", "Kelvin", "--precision",
                   "2", "20"},
                  "293.15"},
        Formatted{"TheUsualUnits", {"--type", "Pressure", "--to", "mbar", "1.01325"}, "1013.2500"},
        Formatted{"Exact", {"--type", "Distance", "--exact", "0.1"}, "0.10000000000000000555"},
        Formatted{"Text", {"--type", "String", "a b"}, "a b"},
        Formatted{"Integer", {"--type", "Int64", "-9007199254740993"}, "-9007199254740993"},
        Formatted{"Flag", {"--type", "Boolean", "true"}, "true"},
        Formatted{"HalfOfTheEarth", {"--type", "WhichHalfEarth", "S"}, "S"},
        Formatted{"TableLongitude",
                  {"--type", "Longitude", "--table", "--precision", "4", "116.5"},
                  "116\u00B030\u203200.0000\u2033E"},
        Formatted{"TableLatitude",
                  {"--type", "Latitude", "--table", "--precision", "0", "-45.25"},
                  "45\u00B015\u203200\u2033S"},
        Formatted{
            "TableDegrees",
            {"--type", "Longitude", "--table", "--style", "degree", "--precision", "2", "-0.5"},
            "000.50\u00B0W"},
        Formatted{"TableDistance",
                  {"--type", "Distance", "--table", "--precision", "3", "--int-digits", "4", "3.5"},
                  "0003.500"},
        Formatted{"TableDistanceWithoutZeros",
                  {"--type", "Distance", "--table", "--precision", "3", "--int-digits", "4",
                   "--erase-zeros", "3.5"},
                  "0003.5"},
        Formatted{"TableUnit",
                  {"--type", "Height", "--table", "--to", "Foot", "--show-unit", "0.6096"},
                  "2\tFoot"},
        Formatted{"TableFlag", {"--type", "Proj4_Param_Bool", "--table", "false"}, "No"},
        Formatted{"ManyValues", {"--type", "Int32", "1", "-2", "--", "3", "-4"}, "1\n-2\n3\n-4"}),
    [](const auto &row) { return row.param.testName; });

class RefusedValues : public testing::TestWithParam<Refused>
{};

TEST_P(RefusedValues, AreReportedWithAReason)
{
    test::expectRefused("format", GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedValues,
    testing::Values(
        Refused{"NotANumber", {"--type", "Angle", "x"}, 1, "\"x\" is not a number"},
        Refused{"NotFinite", {"--type", "Angle", "nan"}, 1, "\"nan\" is not a finite number"},
        Refused{"NotAnInteger", {"--type", "Int32", "1.5"}, 1, "\"1.5\" is no Int32"},
        Refused{"IntegerTooLarge", {"--type", "Int32", "2147483648"}, 1, "is no Int32"},
        Refused{"NoFlag", {"--type", "Boolean", "yes"}, 1, "\"yes\" is no Boolean"},
        Refused{"NoWord", {"--type", "EllipsoidDirection", "NEU"}, 1, "is no EllipsoidDirection"},
        Refused{"RaisedByPointer",
                {"--type", "TimeSpan", "12"},
                1,
                "\"12\" cannot be shown: No Time Value In Coordinate"},
        Refused{"DistanceInDegrees",
                {"--type", "Distance", "--to", "Degree", "12"},
                2,
                "--to 'Degree' is no unit of the kind Distance"},
        Refused{"NumberInFeet",
                {"--type", "Double", "--to", "Foot", "1"},
                2,
                "--to 'Foot' is no unit of the kind Double"},
        Refused{"PressureInMetres",
                {"--type", "Pressure", "--to", "Meter", "1"},
                2,
                "--to 'Meter' is no unit of the kind Pressure"},
        Refused{"AngleFromMetres",
                {"--type", "Angle", "--unit", "Meter", "--table", "1"},
                2,
                "--unit 'Meter' is no unit of the kind Angle"},
        Refused{"OutOfRange",
                {"--type", "Longitude", "--table", "190"},
                1,
                "\"190\" cannot be shown as Longitude in the unit Degree"},
        Refused{"TableWithoutUnit",
                {"--type", "Height", "--unit", "None", "--table", "1"},
                2,
                "--unit 'None' is no unit of the kind Height"},
        Refused{"NoType", {"12"}, 2, "--type TYPE is missing"},
        Refused{"UnknownType",
                {"--type", "angle", "12"},
                2,
                "--type 'angle' is no kind of value; did you mean Angle? There are None, String, "},
        Refused{"UnknownUnit",
                {"--type", "Angle", "--unit", "Meters", "12"},
                2,
                "--unit 'Meters' is no unit; did you mean Meter or Milli Meter? There are None, "},
        Refused{"UnknownTarget",
                {"--type", "Angle", "--to", "deg", "12"},
                2,
                "--to 'deg' is no unit; did you mean Degree? There are "},
        Refused{"EmptyType", {"--type", "", "12"}, 2, "--type '' is no kind of value"},
        Refused{"UnknownStyle",
                {"--type", "Angle", "--style", "gon", "12"},
                2,
                "--style 'gon' is no style of angles; there are dms, degree, second, radian, none"},
        Refused{"Precision",
                {"--type", "Angle", "--precision", "256", "12"},
                2,
                "--precision '256' is not a number from 0 to 255"},
        Refused{"IntDigits",
                {"--type", "Distance", "--table", "--int-digits", "-1", "12"},
                2,
                "--int-digits '-1' is not a number from 0 to 309"},
        Refused{"ExactAndTable",
                {"--type", "Angle", "--exact", "--table", "12"},
                2,
                "--exact and --table exclude each other"},
        Refused{"ExactAndPrecision",
                {"--type", "Angle", "--exact", "--precision", "2", "12"},
                2,
                "--exact excludes --to, --style, --precision and --erase-zeros"},
        Refused{"IntDigitsWithoutTable",
                {"--type", "Distance", "--int-digits", "4", "12"},
                2,
                "--int-digits needs --table"},
        Refused{"TableOfAngleInUnit",
                {"--type", "Angle", "--table", "--to", "Second", "12"},
                2,
                "--style takes the place of --to"},
        Refused{"NoValue", {"--type", "Angle"}, 2, "a VALUE is missing"}),
    [](const auto &row) { return row.param.testName; });

TEST(FormatCommand, ReadsValuesFromStandardInputAndGoesOnAfterABadOne)
{
    const auto result = ProgramRun().run(
        commandOf({"--type", "Angle", "--style", "degree", "--precision", "1", "-"}),
        "# angles\n30.26\n\n x \n-0.5\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, QString::fromUtf8("30.3\u00B0\n-0.5\u00B0\n"));
    EXPECT_EQ(result.err, QStringLiteral("kelstd: <stdin>:4: \"x\" is not a number\n"));
}

TEST(FormatCommand, AHugePrecisionIsPrinted)
{
    const auto result =
        ProgramRun().run(commandOf({"--type", "Double", "--precision", "255", "0.5"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              QStringLiteral("0.5") + QString(254, QLatin1Char('0')) + QLatin1Char('\n'));
}

TEST(FormatCommand, NeedsNoProjAndNoHome)
{
    ProgramRun program;
    program.setVariable(QStringLiteral("KELSTD_HOME_DIR"), QStringLiteral("/no/such/home"));
    program.setVariable(QStringLiteral("KELSTD_BIN_DIR"), QStringLiteral("/no/such/program"));
    EXPECT_EQ(program.run(commandOf({"--type", "Int32", "1"})).out, QStringLiteral("1\n"));
}

} // namespace
} // namespace KelStd
