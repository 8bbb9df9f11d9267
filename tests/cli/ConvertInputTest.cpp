// The forms in which a line may hold a position.

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
const QString point = QStringLiteral("point");
const QString longitude = QStringLiteral("wgs84_longitude_deg");
const QString latitude = QStringLiteral("wgs84_latitude_deg");
const QString height = QStringLiteral("wgs84_height_m");

/// The position that every row of `SeparatorsAndNames` means.
struct InputForm
{
    const char *testName;
    const char *input;
    const char *expectedName;
};

void PrintTo(const InputForm &row, std::ostream *out)
{
    *out << row.testName;
}

class InputForms : public testing::TestWithParam<InputForm>
{};

TEST_P(InputForms, GiveThePosition)
{
    const auto result = ProgramRun().convert(system, GetParam().input);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, QString());
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 1) << result.out;
    EXPECT_EQ(rows.first().value(point), QString::fromUtf8(GetParam().expectedName));
    EXPECT_EQ(rows.first().value(longitude), QStringLiteral("5.25000000000"));
    EXPECT_EQ(rows.first().value(latitude), QStringLiteral("52.50000000000"));
    EXPECT_EQ(rows.first().value(height), QStringLiteral("-4.12500"));
}

INSTANTIATE_TEST_SUITE_P(
    SeparatorsAndNames, InputForms,
    testing::Values(
        InputForm{"Commas", "5.25,52.5,-4.125\n", ""},
        InputForm{"CommasAndBlanks", " 5.25 ,  52.5, -4.125 \n", ""},
        InputForm{"Blanks", "5.25 52.5 -4.125\n", ""},
        InputForm{"RunsOfBlanks", "   5.25    52.5  -4.125   \n", ""},
        InputForm{"Semicolons", "5.25;52.5;-4.125\n", ""},
        InputForm{"Tabulators", "5.25\t52.5\t-4.125\n", ""},
        InputForm{"NameAndCommas", "P1,5.25,52.5,-4.125\n", "P1"},
        InputForm{"NameAndBlanks", "P1 5.25 52.5 -4.125\n", "P1"},
        InputForm{"NameAndSemicolons", "P1;5.25;52.5;-4.125\n", "P1"},
        InputForm{"NameWithBlanksAndTabulators", "Point 1\t5.25\t52.5\t-4.125\n", "Point 1"},
        InputForm{"NameWithBlanksAndCommas", "Point 1,5.25,52.5,-4.125\n", "Point 1"},
        InputForm{"NumberAsName", "101 5.25 52.5 -4.125\n", "101"},
        InputForm{"EmptyName", ",5.25,52.5,-4.125\n", ""},
        InputForm{"QuotedName", "\"Point 1\" 5.25 52.5 -4.125\n", "Point 1"},
        InputForm{"NameOfOtherScripts",
                  "Gr\xC3\xB6\xC3\x9F"
                  "e,5.25,52.5,-4.125\n",
                  "Gr\xC3\xB6\xC3\x9F"
                  "e"},
        InputForm{"Exponents", "525e-2,0.525E+2,-4.125e0\n", ""},
        InputForm{"PlusSigns", "+5.25,+52.5,-4.125\n", ""},
        InputForm{"UnterminatedLine", "5.25,52.5,-4.125", ""},
        InputForm{"CarriageReturnAndLineFeed", "5.25,52.5,-4.125\r\n", ""},
        InputForm{"UnterminatedCarriageReturn", "5.25,52.5,-4.125\r", ""},
        InputForm{"ByteOrderMark",
                  "\xEF\xBB\xBF"
                  "5.25,52.5,-4.125\n",
                  ""},
        InputForm{"BlankLinesAround", "\n  \n\r\n5.25,52.5,-4.125\n\n\t\n", ""},
        InputForm{"Comments", "# positions\n  # of today\n5.25,52.5,-4.125\n#end\n", ""},
        InputForm{"QuotedNumbers", "\"5.25\",\"52.5\",\"-4.125\"\n", ""}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertInput, EmptyInputGivesTheHeaderLineOnly)
{
    for (const char *input : {"", "\n\n", "# nothing\n", "\xEF\xBB\xBF", "point,lon,lat,h\n"}) {
        const auto result = ProgramRun().convert(system, input);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, QString());
        ASSERT_EQ(result.outLines().size(), 1);
        EXPECT_TRUE(result.out.startsWith(QLatin1String("point,wgs84_longitude_deg,")));
    }
}

TEST(ConvertInput, LinesKeepTheirOrder)
{
    QByteArray input;
    for (int i = 0; i < 40; ++i)
        input += "P" + QByteArray::number(i) + ",5.25,52.5," + QByteArray::number(i) + "\n";
    const auto rows = csvRows(ProgramRun().convert(system, input).out);
    ASSERT_EQ(rows.size(), 40);
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(rows.at(i).value(point), QStringLiteral("P%1").arg(i));
        EXPECT_EQ(rows.at(i).value(height), QStringLiteral("%1.00000").arg(i));
    }
}

TEST(ConvertInput, EachLineMayHaveItsOwnSeparator)
{
    const auto result = ProgramRun().convert(system, "A,5,52,1\nB;5;52;2\nC 5 52 3\nD\t5\t52\t4\n");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(csvRows(result.out).size(), 4);
}

TEST(ConvertInput, AFileAndStandardInputGiveTheSame)
{
    const ProgramRun program;
    const QByteArray input = "A,5.25,52.5,1\nB,5.5,52.25,2\n";
    const QString file = program.file(QStringLiteral("my points.csv"), input);
    const auto fromFile = program.convert(system, {}, {file});
    EXPECT_EQ(fromFile.status, 0) << fromFile.err;
    EXPECT_EQ(csvRows(fromFile.out).size(), 2);
    EXPECT_EQ(program.convert(system, input, {QStringLiteral("-")}).out, fromFile.out);
    EXPECT_EQ(program.convert(system, input).out, fromFile.out);
}

TEST(ConvertInput, AFileThatCannotBeOpenedIsAUsageError)
{
    const ProgramRun program;
    const auto missing =
        program.convert(system, {}, {program.home().path(QStringLiteral("no.csv"))});
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.out, QString());
    EXPECT_THAT(missing.err, Mentions("no.csv: No such file or directory"));

    const auto directory = program.convert(system, {}, {program.home().path()});
    EXPECT_EQ(directory.status, 2);
    EXPECT_THAT(directory.err, Mentions("directory"));
}

// The program's own output holds every frame, so that it is input of every frame.
TEST(ConvertInput, TheCsvOutputIsAnInput)
{
    const ProgramRun program;
    const auto first = program.convert(system, "\"a, b\",5.25,52.5,40\n\"#1\",5.5,52.25,41\n");
    ASSERT_EQ(first.status, 0);
    for (const char *frame : {"wgs84-llh", "wgs84-xyz", "local-llh", "local-neh"}) {
        SCOPED_TRACE(frame);
        const auto again = program.convert(system, first.out.toUtf8(),
                                           {QStringLiteral("--from"), QString::fromLatin1(frame)});
        EXPECT_EQ(again.status, 0) << again.err;
        ASSERT_EQ(again.outLines().size(), 3);
        const QStringList names = {QStringLiteral("\"a, b\","), QStringLiteral("\"#1\",")};
        const double longitudes[] = {5.25, 5.5};
        for (int i = 0; i < 2; ++i) {
            const QString line = again.outLines().at(i + 1);
            ASSERT_TRUE(line.startsWith(names.at(i))) << line;
            // The printed 0.00001 m are 1e-10 degrees, and a chain of them a few.
            EXPECT_NEAR(line.mid(names.at(i).size()).section(QLatin1Char(','), 0, 0).toDouble(),
                        longitudes[i], 1e-9);
        }
    }
}

} // namespace
} // namespace KelStd
