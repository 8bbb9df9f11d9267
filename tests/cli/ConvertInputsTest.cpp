// What may be given to be converted: several files, a position on the command line, text as other
// programs write it, and the program's own output.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/Utf16.h"

#include <QtCore/QProcess>

#include <cmath>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");
const QString longitude = QStringLiteral("wgs84_longitude_deg");
const QString latitude = QStringLiteral("wgs84_latitude_deg");
const QString height = QStringLiteral("wgs84_height_m");
const QString point = QStringLiteral("point");

/// `kelstd convert` of operands.
ProgramResult convertOf(const ProgramRun &program, const QStringList &operands,
                        const QByteArray &input = {})
{
    return program.run(QStringList{QStringLiteral("convert"), QStringLiteral("--csv"),
                                   QStringLiteral("--system"), test::systemPath(system)}
                           + operands,
                       input);
}

TEST(SeveralInputs, AreReadEachByItsOwnHeadings)
{
    const ProgramRun program;
    const QString one =
        program.file(QStringLiteral("one.csv"), "name,lat,lon,h,code\nA,52.5,5.25,1,x\n");
    const QString two = program.file(QStringLiteral("two.csv"),
                                     "h;code;lon;lat;name\n2;y;5,25;52,5;B\n3;z;x;52;C\n");
    const auto result = convertOf(program, {one, two});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errLines().value(0),
              QStringLiteral("kelstd: %1:3: longitude \"x\" is not a number").arg(two));
    EXPECT_EQ(result.errLines().value(1), QStringLiteral("kelstd: 1 of 3 positions failed"));
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(rows.at(i).value(point), i == 0 ? QStringLiteral("A") : QStringLiteral("B"));
        EXPECT_EQ(rows.at(i).value(longitude), QStringLiteral("5.25000000000"));
        EXPECT_EQ(rows.at(i).value(latitude), QStringLiteral("52.50000000000"));
        EXPECT_EQ(numberIn(rows.at(i), height), i + 1);
        EXPECT_EQ(rows.at(i).value(QStringLiteral("code")),
                  i == 0 ? QStringLiteral("x") : QStringLiteral("y"));
    }
}

TEST(SeveralInputs, GiveWhatEachGivesAlone)
{
    const ProgramRun program;
    const QString one = program.file(QStringLiteral("one.csv"), "A,5.25,52.5,1\nB,5.5,52.5,2\n");
    const QString two = program.file(QStringLiteral("two.csv"), "C,5.25,52.25,3\n");
    for (const char *form : {"--csv", "--json", "--geojson"}) {
        SCOPED_TRACE(form);
        const auto both =
            program.run({QStringLiteral("convert"), QString::fromLatin1(form),
                         QStringLiteral("--system"), test::systemPath(system), one, two});
        const auto joined = program.run({QStringLiteral("convert"), QString::fromLatin1(form),
                                         QStringLiteral("--system"), test::systemPath(system)},
                                        "A,5.25,52.5,1\nB,5.5,52.5,2\nC,5.25,52.25,3\n");
        EXPECT_EQ(both.status, 0) << both.err;
        EXPECT_EQ(both.out, joined.out);
    }
    const auto withInput = convertOf(program, {one, QStringLiteral("-")}, "C,5.25,52.25,3\n");
    EXPECT_EQ(withInput.out, convertOf(program, {one, two}).out);
}

TEST(SeveralInputs, MustHaveTheSameColumnsBesides)
{
    const ProgramRun program;
    const QString one =
        program.file(QStringLiteral("one.csv"), "name,lat,lon,h,code\nA,52.5,5.25,1,x\n");
    const QString two =
        program.file(QStringLiteral("two.csv"), "name,lat,lon,h,kind\nB,52.5,5.25,2,y\n");
    const QString bare = program.file(QStringLiteral("bare.csv"), "5.25,52.5,1\n");
    const QString empty = program.file(QStringLiteral("empty.csv"), "# nothing\n");
    const auto others = convertOf(program, {one, two});
    EXPECT_EQ(others.status, 2);
    EXPECT_THAT(others.err, Mentions("two.csv:1: the inputs before have other columns besides the "
                                     "positions (code) than this one (kind)"));
    EXPECT_EQ(csvRows(others.out).size(), 1);
    EXPECT_FALSE(others.out.contains(QLatin1String("\nB,")));
    const auto named =
        convertOf(program, {bare, program.file(QStringLiteral("n.csv"), "C,5,52,3\n")});
    EXPECT_EQ(named.status, 2);
    EXPECT_THAT(named.err, Mentions("the inputs before have no names of points"));
    EXPECT_EQ(convertOf(program, {empty, one, empty}).out, convertOf(program, {one}).out);
    EXPECT_EQ(convertOf(program, {empty, one}).status, 0);
}

TEST(SeveralInputs, AreAllOpenedBeforeAnythingIsPrinted)
{
    const ProgramRun program;
    const QString one = program.file(QStringLiteral("one.csv"), "5.25,52.5,1\n");
    const auto missing = convertOf(program, {one, program.home().path(QStringLiteral("no.csv"))});
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.out, QString());
    EXPECT_THAT(missing.err, Mentions("no.csv: "));
    EXPECT_THAT(convertOf(program, {QStringLiteral("-"), QStringLiteral("-")}).err,
                Mentions("standard input can be read once only"));
    const auto rejects = convertOf(
        program, {one, one, QStringLiteral("--rejects"), program.home().path(QStringLiteral("r"))});
    EXPECT_EQ(rejects.status, 2);
    EXPECT_THAT(rejects.err, Mentions("--rejects is for one input"));
    EXPECT_FALSE(QFile::exists(program.home().path(QStringLiteral("r"))));
}

TEST(PositionOnTheCommandLine, IsConverted)
{
    const ProgramRun program;
    const auto expected = convertOf(program, {}, "5.25,52.5,40\n");
    for (const QStringList &operands :
         {QStringList{QStringLiteral("5.25"), QStringLiteral("52.5"), QStringLiteral("40")},
          QStringList{QStringLiteral("5,25"), QStringLiteral("52,5"), QStringLiteral("40,0")},
          QStringList{QString::fromUtf8("5\u00B015'"), QString::fromUtf8("52\u00B030'0\"N"),
                      QStringLiteral("40")},
          QStringList{QStringLiteral("--height=40"), QStringLiteral("5.25"),
                      QStringLiteral("52.5")},
          QStringList{QStringLiteral("--"), QStringLiteral("5:15:00"), QStringLiteral("52:30"),
                      QStringLiteral("40")}}) {
        const auto result = convertOf(program, operands);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, QString());
        EXPECT_EQ(result.out, expected.out) << operands.join(QLatin1Char(' ')).toStdString();
    }
    const auto flat = convertOf(program, {QStringLiteral("5"), QStringLiteral("52")});
    EXPECT_EQ(flat.status, 0);
    EXPECT_THAT(flat.err, Mentions("note: no height given: 0 is taken, above the ellipsoid"));
    EXPECT_EQ(csvRows(flat.out).value(0).value(longitude), QStringLiteral("5.00000000000"));
    for (const QStringList &operands :
         {QStringList{QStringLiteral("-5.25"), QStringLiteral("52.5"), QStringLiteral("-40")},
          QStringList{QStringLiteral("--"), QStringLiteral("-5.25"), QStringLiteral("52.5"),
                      QStringLiteral("-40")}}) {
        const auto west = csvRows(convertOf(program, operands).out).value(0);
        EXPECT_EQ(west.value(longitude), QStringLiteral("-5.25000000000"));
        EXPECT_EQ(west.value(height), QStringLiteral("-40.00000"));
    }
}

TEST(PositionOnTheCommandLine, ThatCannotBeOneIsRefused)
{
    const ProgramRun program;
    const auto pole = convertOf(program, {QStringLiteral("5"), QStringLiteral("95")});
    EXPECT_EQ(pole.status, 1);
    EXPECT_THAT(pole.err, Mentions("<arguments>:1: latitude 95 is not between -90 and 90"));
    // One number, four of them, and words are files.
    EXPECT_EQ(convertOf(program, {QStringLiteral("5.25")}).status, 2);
    EXPECT_THAT(
        convertOf(program, {QStringLiteral("5"), QStringLiteral("52"), QStringLiteral("x")}).err,
        Mentions("cannot open 5: "));
    EXPECT_THAT(
        convertOf(program, {QStringLiteral("5"), QStringLiteral("52"), QStringLiteral("--skip=1")})
            .err,
        Mentions("--columns and --skip are for lines"));
    EXPECT_THAT(convertOf(program, {QStringLiteral("5"), QStringLiteral("52"), QStringLiteral("40"),
                                    QStringLiteral("--height=7")})
                    .err,
                Mentions("--height is for positions without a height, and 5 52 40 has one"));
}

TEST(PositionOnTheCommandLine, IsAFileWhereOneHasItsName)
{
    const ProgramRun program;
    program.file(QStringLiteral("5"), "5.25,52.5,1\n");
    program.file(QStringLiteral("6"), "5.5,52.5,1\n");
    auto process = program.process({QStringLiteral("convert"), QStringLiteral("--csv"),
                                    QStringLiteral("--system"), test::systemPath(system),
                                    QStringLiteral("5"), QStringLiteral("6")});
    process->setWorkingDirectory(program.home().path({}));
    process->start();
    ASSERT_TRUE(process->waitForFinished());
    EXPECT_EQ(csvRows(QString::fromUtf8(process->readAllStandardOutput())).size(), 2);
    EXPECT_THAT(QString::fromUtf8(process->readAllStandardError()),
                Mentions("note: \"5\" is a file"));
}

struct Written
{
    const char *testName;
    QByteArray bytes; ///< of a point named Müller at 5.25, 52.5, 40
};

void PrintTo(const Written &row, std::ostream *out)
{
    *out << row.testName;
}

QByteArray utf16(const char *codec, const char *text)
{
    return test::utf16(QChar(QChar::ByteOrderMark) + QString::fromUtf8(text),
                       QByteArray(codec).endsWith("BE"));
}

class TextOfOtherPrograms : public testing::TestWithParam<Written>
{};

TEST_P(TextOfOtherPrograms, IsRead)
{
    const auto result = ProgramRun().convert(system, GetParam().bytes);
    EXPECT_EQ(result.status, 0) << result.err;
    const auto rows = csvRows(result.out);
    ASSERT_EQ(rows.size(), 1) << result.out;
    EXPECT_EQ(rows.first().value(point), QString::fromUtf8("M\xC3\xBCller"));
    EXPECT_EQ(rows.first().value(longitude), QStringLiteral("5.25000000000"));
    EXPECT_EQ(rows.first().value(latitude), QStringLiteral("52.50000000000"));
    EXPECT_EQ(rows.first().value(height), QStringLiteral("40.00000"));
    const bool isUtf8 = !GetParam().bytes.contains("M\xFCller");
    EXPECT_EQ(result.err.contains(QLatin1String("read as Windows-1252")), !isUtf8) << result.err;
}

INSTANTIATE_TEST_SUITE_P(
    Programs, TextOfOtherPrograms,
    testing::Values(
        Written{"CarriageReturns", "name,lat,lon,h\rM\xC3\xBCller,52.5,5.25,40\r"},
        Written{"CarriageReturnsAndMark", "\xEF\xBB\xBFM\xC3\xBCller,5.25,52.5,40\r\r"},
        Written{"LittleEndian",
                utf16("UTF-16LE", "name\tlat\tlon\th\r\nM\xC3\xBCller\t52.5\t5.25\t40\r\n")},
        Written{"BigEndian", utf16("UTF-16BE", "M\xC3\xBCller\t5,25\t52,5\t40\r\n")},
        Written{"SixteenBitsAndCarriageReturns",
                utf16("UTF-16LE", "name;lat;lon;h\rM\xC3\xBCller;52.5;5.25;40")},
        Written{"SeparatorLine",
                "sep=;\r\nName;Breite;L\xC3\xA4nge;H\xC3\xB6he\r\nM\xC3\xBCller;52,5;5,25;40\r\n"},
        Written{"SeparatorLineBehindAMark", "\xEF\xBB\xBFSEP=,\nM\xC3\xBCller,5.25,52.5,40\n"},
        Written{"GermanSpreadsheet", "Punkt;Breite;L\xE4nge;H\xF6he\r\nM\xFCller;52,5;5,25;40\r\n"},
        Written{
            "TurkishSpreadsheet",
            "Nokta;Enlem;Boylam;Y\xFCkseklik;A\xE7\xFDklama\r\nM\xFCller;52,5;5,25;40;\xFE\r\n"},
        Written{"QuotedDecimalCommas", "M\xC3\xBCller,\"5,25\",\"52,5\",\"40,0\"\n"},
        Written{"DegreeSignOfWindows", "M\xFCller,5\xB0"
                                       "15',52\xB0"
                                       "30'N,40\n"},
        Written{"QuotesOfWindows", "M\xFCller;5\xB0"
                                   "15\x92"
                                   "00\x94;52\xB0"
                                   "30\x92;40\n"}),
    [](const auto &row) { return row.param.testName; });

TEST(TextOfOtherProgramsRefused, HasItsReason)
{
    const auto noMark = ProgramRun().convert(system, utf16("UTF-16LE", "5.25,52.5,40\n").mid(2));
    EXPECT_EQ(noMark.status, 2);
    EXPECT_THAT(noMark.err, Mentions("the input is UTF-16 text; convert it to UTF-8"));
    const auto bars = ProgramRun().convert(system, "sep=|\n5.25|52.5|40\n");
    EXPECT_EQ(bars.status, 2);
    EXPECT_THAT(bars.err, Mentions("<stdin>:1: fields are separated by commas, semicolons"));
    // A byte more than whole characters.
    const auto torn = ProgramRun().convert(system, utf16("UTF-16LE", "5.25,52.5,40") + "5");
    EXPECT_EQ(torn.status, 2) << torn.out;
    EXPECT_THAT(torn.err, Mentions("<stdin>:1: "));
    // Thousands, not decimals.
    const auto thousands = ProgramRun().convert(system, "n,e,h\n\"465,682\",\"183,928\",40\n",
                                                {QStringLiteral("--from=local-neh")});
    EXPECT_EQ(thousands.status, 1);
    EXPECT_THAT(thousands.err, Mentions("may stand before decimals or thousands"));
    const auto xy = ProgramRun().convert(system, "Punkt;X;Y;Z\n1;463000,5;155000,5;40\n",
                                         {QStringLiteral("--from=local-neh")});
    EXPECT_EQ(xy.status, 2);
    EXPECT_THAT(xy.err, Mentions("x is the northing in some countries and the easting in others, "
                                 "which --columns says"));
}

TEST(HeightOption, IsTheHeightOfAllInTheUnitOfLengths)
{
    const auto metres = ProgramRun().convert(system, "A,5.25,52.5\n101,5.5,52.5\n",
                                             {QStringLiteral("--height=12.5")});
    EXPECT_EQ(metres.status, 0) << metres.err;
    EXPECT_EQ(metres.err, QString());
    const auto rows = csvRows(metres.out);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.at(1).value(point), QStringLiteral("101"));
    EXPECT_EQ(rows.at(1).value(height), QStringLiteral("12.50000"));
    const auto feet =
        ProgramRun().convert(system, "lat,lon\n52.5,5.25\n",
                             {QStringLiteral("--height=100"), QStringLiteral("--length-unit=ft")});
    EXPECT_EQ(csvRows(feet.out).value(0).value(QStringLiteral("wgs84_height_ft")),
              QStringLiteral("100.00000"));
    for (const char *wrong : {"--height=x", "--height=", "--height=nan"}) {
        EXPECT_EQ(ProgramRun().convert(system, "5.25,52.5\n", {QString::fromLatin1(wrong)}).status,
                  2)
            << wrong;
    }
    const auto cartesian = ProgramRun().convert(
        system, "1,2,3\n", {QStringLiteral("--height=1"), QStringLiteral("--from=wgs84-xyz")});
    EXPECT_EQ(cartesian.status, 2);
}

TEST(HeightOption, FillsWhatIsEmptyBelowAHeading)
{
    const QByteArray some =
        "name,lat,lon,h,code\nA,52.5,5.25,,x\nB,52.5,5.5,40,y\nC,52.5,5.75,,z\n";
    const auto result = ProgramRun().convert(
        system, some,
        {QStringLiteral("--height=1"), QStringLiteral("--fields=point,wgs84_height")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.toStdString(), "point,wgs84_height_m\nA,1.00000\nB,40.00000\nC,1.00000\n");
    EXPECT_EQ(result.err.toStdString(),
              "kelstd: note: the height of --height is taken for 2 positions without one\n");
    const auto without = ProgramRun().convert(system, some, {});
    EXPECT_EQ(without.status, 1);
    EXPECT_THAT(without.err, Mentions(":2: height is missing; --height says that of"));
    const auto needless =
        ProgramRun().convert(system, "lat,lon,h\n52.5,5.25,40\n", {QStringLiteral("--height=1")});
    EXPECT_EQ(needless.status, 0);
    EXPECT_THAT(needless.err, Mentions("warning: the height of --height is that of no position"));
}

TEST(SeveralFiles, MayHaveTheirFurtherColumnsInAnotherOrder)
{
    const ProgramRun program;
    const QString one = program.file(QStringLiteral("one.csv"),
                                     "name,lat,lon,h,code,remark\nA,52.5,5.25,40,c1,r1\n");
    const QString other = program.file(QStringLiteral("other.csv"),
                                       "remark,name,code,h,lat,lon\nr2,B,c2,41,52.5,5.25\n"
                                       "remark,name,code,h,lat,lon\nr3,C,\"c3,\",42,52.5,5.25\n");
    const auto result =
        convertOf(program, {QStringLiteral("--fields=point,wgs84_height,code,remark"), one, other});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.toStdString(), "point,wgs84_height_m,code,remark\nA,40.00000,c1,r1\n"
                                        "B,41.00000,c2,r2\nC,42.00000,\"c3,\",r3\n");
}

TEST(SeveralFiles, WithoutPositionsAreSaid)
{
    const ProgramRun program;
    const QString empty = program.file(QStringLiteral("empty.csv"), "");
    const QString headings = program.file(QStringLiteral("headings.csv"), "lat,lon,h\n\n");
    const QString one = program.file(QStringLiteral("one.csv"), "lat,lon,h\n52.5,5.25,40\n");
    const QString bad = program.file(QStringLiteral("bad.csv"), "lat,lon,h\n95,5.25,40\n");
    const auto result = convertOf(program, {empty, one, headings, bad});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, Mentions("empty.csv has no positions\n"));
    EXPECT_THAT(result.err, Mentions("headings.csv has no positions\n"));
    EXPECT_EQ(result.err.count(QLatin1String("has no positions")), 2) << result.err;
}

TEST(SeveralFiles, OfAReceiverAreTold)
{
    const ProgramRun program;
    const QString log = program.file(
        QStringLiteral("log.txt"), "$GPGGA,120000,5210.1,N,00523.7,E,1,08,0.9,9.4,M,43.2,M,,*50\n");
    const auto result = convertOf(program, {log});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err,
                Mentions("log.txt begins with a sentence of NMEA 0183, which --nmea reads"));
}

TEST(SeveralFiles, AreNotWhatIsToBeWritten)
{
    const ProgramRun program;
    const QString in = program.file(QStringLiteral("in.csv"), "5.25,52.5,40\n");
    for (const char *name : {"out.gpkg", "out.csv", "out.kml", "OUT.DXF"}) {
        const QString out = program.home().path(QString::fromLatin1(name));
        const auto result = convertOf(program, {in, out});
        EXPECT_EQ(result.status, 2) << name;
        EXPECT_EQ(result.out, QString());
        EXPECT_THAT(result.err,
                    Mentions(QStringLiteral("-o %1 writes a file").arg(out).toUtf8().constData()))
            << name;
    }
}

TEST(PickedHeights, ThatAreSaidToBeOfAnotherKindAreNoted)
{
    const struct
    {
        const char *from;
        const char *heading;
        bool isNoted;
    } rows[] = {{"local-neh", "Ortho. Height [m]", true},
                {"local-neh", "NHN", true},
                {"wgs84-llh", "MSL height", true},
                {"local-neh", "Level", false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.heading);
        const QString heading = QString::fromLatin1(row.heading);
        const auto result =
            ProgramRun().convert(system, "a,b," + QByteArray(row.heading) + "\n5.25,52.5,40\n",
                                 {QStringLiteral("--from"), QString::fromLatin1(row.from),
                                  QStringLiteral("--columns"), QStringLiteral("a,b,") + heading});
        EXPECT_EQ(result.err.contains(QStringLiteral("\"%1\" is read as a height above the "
                                                     "ellipsoid")
                                          .arg(heading)),
                  row.isNoted)
            << result.err;
    }
}

TEST(HeightOption, SaysWhatTheHeightIsAboveInASystemWithAGeoid)
{
    const ProgramRun program;
    program.file(QStringLiteral("geoid_model_list/small.gtx"), test::gtxBytes(test::slopingGrid()));
    const QString file =
        program.file(QStringLiteral("geoid.xml"),
                     test::editedSystem(system, {{QStringLiteral("modelFileName=\"\""),
                                                  QStringLiteral("modelFileName=\"small.gtx\"")}}));
    const auto convert = [&](const char *from, const char *given, const QByteArray &input) {
        return program.run({QStringLiteral("convert"), QStringLiteral("--csv"),
                            QStringLiteral("--system"), file, QStringLiteral("--from"),
                            QString::fromLatin1(from), QString::fromLatin1(given)},
                           input);
    };
    const auto plane = convert("local-neh", "--height=12.5", "465682.96,183928.88\n");
    ASSERT_EQ(plane.status, 0) << plane.err;
    EXPECT_EQ(plane.err, QStringLiteral("kelstd: note: the height of --height is taken as it is, "
                                        "above the geoid small.gtx\n"));
    EXPECT_EQ(csvRows(plane.out).value(0).value(QStringLiteral("local_height_m")),
              QStringLiteral("12.50000"));
    EXPECT_EQ(csvRows(plane.out).value(0).value(QStringLiteral("local_height_reference")),
              QStringLiteral("geoid small.gtx"));
    const auto filled = convert("local-neh", "--height=12.5", "n,e,h\n465682.96,183928.88,\n");
    EXPECT_EQ(filled.err, QStringLiteral("kelstd: note: the height of --height is taken as it is, "
                                         "above the geoid small.gtx\n"
                                         "kelstd: note: the height of --height is taken for 1 "
                                         "position without one\n"));
    const auto table = [&](const char *fields) {
        return program
            .run({QStringLiteral("convert"), QStringLiteral("--table"), QStringLiteral("--system"),
                  file, QStringLiteral("--fields"), QString::fromLatin1(fields)},
                 "5.25,52.5,40\n")
            .out;
    };
    EXPECT_THAT(table("local_height"), Mentions("m (geoid)\n"));
    EXPECT_FALSE(table("local_height,local_height_reference").contains(QLatin1String("(geoid)")));
    EXPECT_THAT(table("wgs84_height"), Mentions("m (ell.)\n"));
    const auto angles = convert("wgs84-llh", "--height=12.5", "5.25,52.5\n");
    EXPECT_EQ(angles.err, QStringLiteral("kelstd: note: the height of --height is taken as it is, "
                                         "above the ellipsoid\n"));
    EXPECT_EQ(csvRows(angles.out).value(0).value(height), QStringLiteral("12.50000"));
}

/// US survey feet of New York as cs2cs reads them.
TEST(FeetOfTheInput, AreThoseOfAnIndependentProgram)
{
    QProcess cs2cs;
    cs2cs.start(QStringLiteral("cs2cs"),
                {QStringLiteral("-f"), QStringLiteral("%.11f"), QStringLiteral("EPSG:2263"),
                 QStringLiteral("EPSG:4269")});
    ASSERT_TRUE(cs2cs.waitForStarted());
    cs2cs.write("987654.321 212345.678\n"); // easting, northing
    cs2cs.closeWriteChannel();
    ASSERT_TRUE(cs2cs.waitForFinished());
    const QStringList expected =
        QString::fromUtf8(cs2cs.readAllStandardOutput()).simplified().split(QLatin1Char(' '));
    ASSERT_GE(expected.size(), 2);
    const ProgramRun program;
    const QByteArray metres = "name,northing_m,easting_m,height_m\nA,"
                              + QByteArray::number(212345.678 * 1200 / 3937, 'f', 9) + ','
                              + QByteArray::number(987654.321 * 1200 / 3937, 'f', 9) + ",12\n";
    const struct
    {
        QByteArray input;
        const char *option;
        double height; ///< [m]
    } rows[] = {
        {"name,northing_usft,easting_usft,height_m\nA,212345.678,987654.321,12\n", "", 12},
        {"A,212345.678,987654.321,39.37\n", "--length-unit=us-ft", 12},
        {"A,212345.678,987654.321,12\n", "", 12}, // the system's own unit
        {"name,e,n,h_ft\nA,987654.321,212345.678,100\n", "", 30.48},
        {"northing (US survey feet);easting (US survey feet)\n212345,678;987654,321\n", "", 0},
        {metres, "", 12},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.input.toStdString());
        QStringList arguments{QStringLiteral("convert"),  QStringLiteral("--csv"),
                              QStringLiteral("--system"), QStringLiteral("EPSG:2263"),
                              QStringLiteral("--from"),   QStringLiteral("local-neh")};
        if (*row.option != '\0')
            arguments += QString::fromLatin1(row.option);
        const auto result = program.run(arguments, row.input);
        ASSERT_EQ(result.status, 0) << result.err;
        const auto values = csvRows(result.out).value(0);
        EXPECT_NEAR(numberIn(values, QStringLiteral("local_latitude_deg")), expected[0].toDouble(),
                    2e-11);
        EXPECT_NEAR(numberIn(values, QStringLiteral("local_longitude_deg")), expected[1].toDouble(),
                    2e-11);
        const bool inFeet = values.contains(QStringLiteral("local_height_us_ft"));
        EXPECT_NEAR(numberIn(values, inFeet ? QStringLiteral("local_height_us_ft")
                                            : QStringLiteral("local_height_m"))
                        * (inFeet ? 1200.0 / 3937 : 1.0),
                    row.height, 1e-5);
    }
}

/// What was printed in any style is an input of each frame, and gives the same again.
TEST(OwnOutput, IsReadInEveryStyleAndFrame)
{
    const ProgramRun program;
    const QByteArray input = "name,lat,lon,h_m,code\nA,52.1234567,5.7654321,43.21,x\n"
                             "B,-0.25,-0.125,-1.5,\"y, z\"\n";
    const auto exact = csvRows(program
                                   .convert(system, input.left(input.indexOf("B,")),
                                            {QStringLiteral("--format=exact")})
                                   .out)
                           .value(0);
    const char *const styles[][2] = {
        {"", ""},
        {"--angle=dms", "--precision=6,9"},
        {"--angle=degree", "--precision=6,12"},
        {"--angle=second", "--precision=6,9"},
        {"--angle=radian", "--precision=6,14"},
        {"--format=configured", "--precision=6,9"},
        {"--format=exact", ""},
        {"--length-unit=ft", ""},
        {"--length-unit=us-ft", "--angle=radian"},
        {"--length-unit=ft", "--angle=dms"},
        {"--precision=5,11", ""},
    };
    for (const auto &style : styles) {
        QStringList options;
        for (const char *option : style) {
            if (*option != '\0')
                options += QString::fromLatin1(option);
        }
        const auto printed = program.convert(system, input, options);
        ASSERT_EQ(printed.status, 0) << printed.err;
        for (const char *frame : {"wgs84-llh", "wgs84-xyz", "local-llh", "local-neh"}) {
            SCOPED_TRACE(testing::Message() << style[0] << ' ' << style[1] << ' ' << frame);
            const QStringList from{QStringLiteral("--from"), QString::fromLatin1(frame)};
            const auto again = program.convert(
                system, printed.out.left(printed.out.indexOf(QLatin1String("\nB,")) + 1).toUtf8(),
                from + QStringList(QStringLiteral("--format=exact")));
            ASSERT_EQ(again.status, 0) << again.err;
            const auto row = csvRows(again.out).value(0);
            for (auto value = exact.cbegin(); value != exact.cend(); ++value) {
                const bool isAngle = value.key().endsWith(QLatin1String("_deg"));
                if (!isAngle && !value.key().endsWith(QLatin1String("_m")))
                    EXPECT_EQ(row.value(value.key()), value.value());
                else if (style[1] != std::string("--angle=radian"))
                    EXPECT_NEAR(numberIn(row, value.key()), value.value().toDouble(),
                                isAngle ? 3e-10 : 3e-5)
                        << value.key().toStdString();
                else // 12 decimals of a radian
                    EXPECT_NEAR(numberIn(row, value.key()), value.value().toDouble(),
                                isAngle ? 1e-9 : 1e-4)
                        << value.key().toStdString();
            }
            // Nothing is lost and nothing added, however often it is read.
            const auto same = program.convert(system, printed.out.toUtf8(), from + options);
            EXPECT_EQ(same.status, 0) << same.err;
            EXPECT_EQ(same.outLines().value(0), printed.outLines().value(0));
            EXPECT_TRUE(same.outLines().value(2).endsWith(QLatin1String(",\"y, z\""))) << same.out;
        }
    }
}

TEST(ConvertInputs, PositionThatIsNotOneOperandEachIsNamed)
{
    const std::initializer_list<const char *> nearMisses[] = {
        {"5.1,52.1,3"}, {"5.1 52.1 3"}, {"P1", "5.1", "52.1", "3"}, {"P1,5.1,52.1,3"}};
    for (const auto &operands : nearMisses) {
        QStringList list;
        for (const char *operand : operands)
            list += QString::fromLatin1(operand);
        const auto result = ProgramRun().convert(system, "", list);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, Mentions("a position is two or three operands, without a name: "
                                         "5.1 52.1 3"));
    }
    const auto file = ProgramRun().convert(system, "", {QStringLiteral("points-2024-05-17.csv")});
    EXPECT_FALSE(file.err.contains(QStringLiteral("a position is"))) << file.err;
}

} // namespace
} // namespace KelStd
