// How `kelstd convert` prints, and that it computes the same whatever it prints.

#include "cli/ProgramRun.h"
#include "cli/Terminal.h"
#include "location/PublishedFigures.h"
#include "support/Printers.h"

#include <KelStd/positions/ValuePrinter.h>
#include <KelStd/text/TypedAngle.h>

#include <cmath>
#include <ostream>

namespace KelStd {
namespace {

using test::csvRows;
using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");
const QByteArray point = "A,-170.5041666667,52.25,1234.56789\n";
const QByteArray inMetres = "name,lon,lat,h_m\n"; // whatever --length-unit says
const QString table = QStringLiteral("--table");

QStringList options(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list += QString::fromLatin1(text);
    return list;
}

/// The words of the table's line for one point named A, and of its units.
QStringList wordsOf(const QStringList &more, int line)
{
    const auto result = ProgramRun().convert(system, inMetres + point, more + QStringList(table));
    EXPECT_EQ(result.status, 0) << result.err;
    return result.outLines().value(line).simplified().split(QLatin1Char(' '));
}

struct Shown
{
    const char *testName;
    QStringList options;
    const char *angleUnit;
    const char *lengthUnit;
    const char *longitude;
    const char *latitude;
    const char *height;
};

void PrintTo(const Shown &row, std::ostream *out)
{
    *out << row.testName;
}

class ShownTables : public testing::TestWithParam<Shown>
{};

TEST_P(ShownTables, HaveUnitStyleAndDecimalsOfTheOptions)
{
    const QStringList words = wordsOf(GetParam().options, 3);
    ASSERT_EQ(words.size(), 13);
    EXPECT_EQ(words.at(1), QString::fromUtf8(GetParam().longitude));
    EXPECT_EQ(words.at(2), QString::fromUtf8(GetParam().latitude));
    EXPECT_EQ(words.at(3), QString::fromUtf8(GetParam().height));
    const QString angle = QString::fromUtf8(GetParam().angleUnit);
    const QString length = QString::fromUtf8(GetParam().lengthUnit);
    QStringList units = wordsOf(GetParam().options, 2);
    EXPECT_EQ(units.removeAll(QStringLiteral("(ell.)")), 3); // what the heights are above
    EXPECT_EQ(units, (QStringList{angle, angle, length, length, length, length, angle, angle,
                                  length, length, length, length}));
}

// -170.5041666667 degrees are 170 degrees, 30 minutes and 15.00000012 seconds; an international
// foot is 0.3048 m and a US survey foot 1200/3937 m.
INSTANTIATE_TEST_SUITE_P(
    Options, ShownTables,
    testing::Values(
        Shown{"Default",
              {},
              "dms",
              "m",
              "170\u00B030\u203215.000000\u2033W",
              "52\u00B015\u203200.000000\u2033N",
              "1234.5679"},
        Shown{"Configured", options({"--format", "configured"}), "dms", "m",
              "170\u00B030\u203215.000000\u2033W", "52\u00B015\u203200.000000\u2033N", "1234.5679"},
        Shown{"Precision", options({"--precision", "7"}), "dms", "m",
              "170\u00B030\u203215.000000120\u2033W", "52\u00B015\u203200.000000000\u2033N",
              "1234.5678900"},
        // 0.00001 of a second is 0.3 mm on the ground, 0.00000001 of a degree 1.1 mm.
        Shown{"Millimetres", options({"--precision", "3"}), "dms", "m",
              "170\u00B030\u203215.00000\u2033W", "52\u00B015\u203200.00000\u2033N", "1234.568"},
        Shown{"MillimetresInDegrees", options({"--precision", "3", "--angle", "degree"}), "deg",
              "m", "170.50416667\u00B0W", "52.25000000\u00B0N", "1234.568"},
        Shown{"TwoPrecisions", options({"--precision", "0,2"}), "dms", "m",
              "170\u00B030\u203215.00\u2033W", "52\u00B015\u203200.00\u2033N", "1235"},
        Shown{"NoDecimals", options({"--precision", "3,0"}), "dms", "m",
              "170\u00B030\u203215\u2033W", "52\u00B015\u203200\u2033N", "1234.568"},
        Shown{"Degrees", options({"--angle", "degree"}), "deg", "m", "170.5041666667\u00B0W",
              "52.2500000000\u00B0N", "1234.5679"},
        Shown{"Seconds", options({"--angle", "second", "--precision", "1,3"}), "arcsec", "m",
              "613815.000\u2033W", "188100.000\u2033N", "1234.6"},
        // -170.5041666667 and 52.25 degrees, times pi / 180.
        Shown{"Radians", options({"--angle", "radian", "--precision", "2,6"}), "rad", "m",
              "-2.975859", "0.911935", "1234.57"},
        Shown{"Feet", options({"--length-unit", "ft"}), "dms", "ft",
              "170\u00B030\u203215.000000\u2033W", "52\u00B015\u203200.000000\u2033N", "4050.4196"},
        Shown{"UsSurveyFeet", options({"--length-unit", "us-ft"}), "dms", "us-ft",
              "170\u00B030\u203215.000000\u2033W", "52\u00B015\u203200.000000\u2033N", "4050.4115"},
        Shown{"Exact", options({"--format", "exact"}), "deg", "m", "-170.5041666667", "52.25",
              "1234.56789"}),
    [](const auto &row) { return row.param.testName; });

TEST(ConvertDisplay, CsvHasTheUnitsOfTheOptionsInItsHeader)
{
    const ProgramRun program;
    struct Row
    {
        QStringList options;
        const char *longitudeName;
        const char *heightName;
        const char *longitude;
        const char *height;
    };
    const Row rows[] = {
        {{}, "wgs84_longitude_deg", "wgs84_height_m", "-170.50416666670", "1234.56789"},
        {options({"--precision", "3,8"}), "wgs84_longitude_deg", "wgs84_height_m", "-170.50416667",
         "1234.568"},
        {options({"--length-unit", "ft"}), "wgs84_longitude_deg", "wgs84_height_ft",
         "-170.50416666670", "4050.41959"},
        {options({"--length-unit", "us-ft"}), "wgs84_longitude_deg", "wgs84_height_us_ft",
         "-170.50416666670", "4050.41149"},
        {options({"--angle", "dms"}), "wgs84_longitude_dms", "wgs84_height_m",
         "170\u00B030\u203215.000000\u2033W", "1234.5679"},
        {options({"--angle", "second"}), "wgs84_longitude_arcsec", "wgs84_height_m",
         "613815.000000\u2033W", "1234.5679"},
        {options({"--angle", "radian"}), "wgs84_longitude_rad", "wgs84_height_m", "-2.975859096703",
         "1234.5679"},
        {options({"--format", "configured"}), "wgs84_longitude_dms", "wgs84_height_m",
         "170\u00B030\u203215.000000\u2033W", "1234.5679"},
        {options({"--format", "exact"}), "wgs84_longitude_deg", "wgs84_height_m", "-170.5041666667",
         "1234.56789"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.options.join(QLatin1Char(' ')).toStdString());
        const auto result = program.convert(system, inMetres + point, row.options);
        ASSERT_EQ(result.status, 0) << result.err;
        const auto values = csvRows(result.out).value(0);
        EXPECT_EQ(values.value(QString::fromLatin1(row.longitudeName)),
                  QString::fromUtf8(row.longitude));
        EXPECT_EQ(values.value(QString::fromLatin1(row.heightName)), QString::fromUtf8(row.height));
    }
}

TEST(ConvertDisplay, ColumnsAreAlignedByCharacters)
{
    const QByteArray two = "A,-10.5,52.25,1234.5\nB,5.25,50.0001,-1.25\n";
    for (const QStringList &more :
         {options({}), options({"--angle", "degree"}), options({"--angle", "second"}),
          options({"--angle", "radian"}), options({"--precision", "0"}),
          options({"--precision", "17"}), options({"--length-unit", "ft"}),
          options({"--format", "exact"})}) {
        SCOPED_TRACE(more.join(QLatin1Char(' ')).toStdString());
        const auto result = ProgramRun().convert(system, two, more + QStringList(table));
        ASSERT_EQ(result.status, 0) << result.err;
        // "m (ell.)" is one unit.
        const QString units =
            result.outLines().value(2).replace(QLatin1String(" (ell.)"), QLatin1String("_(ell.)"));
        int checked = 0;
        for (int i = 1; i < units.size(); ++i) {
            const bool isEnd = units.at(i) != QLatin1Char(' ')
                               && (i + 1 == units.size() || units.at(i + 1) == QLatin1Char(' '));
            if (!isEnd)
                continue;
            ++checked;
            // No number crosses the gap behind its column.
            for (const QString &line : {result.outLines().value(3), result.outLines().value(4)})
                EXPECT_EQ(line.mid(i + 1, 2).trimmed(), QString()) << line;
        }
        EXPECT_EQ(checked, 12);
    }
}

TEST(ConvertDisplay, EveryOptionFitsANarrowTerminal)
{
    const ProgramRun program;
    for (const QStringList &more :
         {options({}), options({"--angle", "degree"}), options({"--length-unit", "us-ft"}),
          options({"--angle", "radian"})}) {
        const auto shown = test::Terminal(80).run(
            program,
            options({"convert", "--system"}) + QStringList(test::systemPath(system)) + more, point);
        ASSERT_EQ(shown.status, 0) << shown.err;
        for (const QString &line : shown.outLines())
            EXPECT_LE(line.size(), 80) << line;
    }
}

TEST(ConvertDisplay, ExactNumbersReadBackAsTheSameDoubles)
{
    const ProgramRun program;
    const QStringList exact = options({"--format", "exact"});
    const auto first = program.convert(system, "A,5.1234567890123456,52.3,1e-7\n", exact);
    ASSERT_EQ(first.status, 0) << first.err;
    const auto row = csvRows(first.out).value(0);
    EXPECT_EQ(test::numberIn(row, QStringLiteral("wgs84_longitude_deg")), 5.1234567890123456);
    EXPECT_EQ(row.value(QStringLiteral("wgs84_height_m")), QStringLiteral("0.0000001"));
    const auto again = program.convert(system, first.out.toUtf8(), exact);
    EXPECT_EQ(again.out, first.out);
}

TEST(ConvertDisplay, ConfiguredLongitudesAreThoseOfTheMeridian)
{
    const auto shown = [](const char *longitude) {
        return ProgramRun()
            .convert(system, QByteArray(longitude) + ",52,0\n", options({"--angle", "dms"}))
            .outLines()
            .value(1)
            .section(QLatin1Char(','), 1, 1);
    };
    EXPECT_EQ(shown("190"), QString::fromUtf8("170\u00B000\u203200.000000\u2033W"));
    EXPECT_EQ(shown("-190"), QString::fromUtf8("170\u00B000\u203200.000000\u2033E"));
    EXPECT_EQ(shown("360"), QString::fromUtf8("000\u00B000\u203200.000000\u2033E"));
    EXPECT_EQ(shown("180"), QString::fromUtf8("180\u00B000\u203200.000000\u2033E"));
}

TEST(ConvertDisplay, AZeroHasNoSign)
{
    const auto row =
        csvRows(ProgramRun()
                    .convert(system, "5,52,-0.00001\n", options({"--format", "configured"}))
                    .out)
            .value(0);
    EXPECT_EQ(row.value(QStringLiteral("wgs84_height_m")), QStringLiteral("0"));
}

struct Contradiction
{
    const char *testName;
    QStringList options;
    const char *message;
};

void PrintTo(const Contradiction &row, std::ostream *out)
{
    *out << row.testName;
}

class DisplayMistakes : public testing::TestWithParam<Contradiction>
{};

TEST_P(DisplayMistakes, AreUsageErrors)
{
    const auto result = ProgramRun().convert(system, point, GetParam().options);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    EXPECT_EQ(result.err, QStringLiteral("kelstd: %1; 'kelstd convert --help' tells more\n")
                              .arg(QString::fromLatin1(GetParam().message)));
}

INSTANTIATE_TEST_SUITE_P(
    Options, DisplayMistakes,
    testing::Values(
        Contradiction{"UnknownFormat", options({"--format", "pretty"}),
                      "--format 'pretty' is no format; there are configured, exact"},
        Contradiction{"UnknownStyle", options({"--angle", "gon"}),
                      "--angle 'gon' is no style of angles; there are dms, degree, second, radian"},
        Contradiction{"UnknownUnit", options({"--length-unit", "km"}),
                      "--length-unit 'km' is no unit of lengths; there are m, ft, us-ft"},
        Contradiction{"TooManyDecimals", options({"--precision", "18"}),
                      "--precision '18' is not N or N,M with numbers from 0 to 17"},
        Contradiction{"NegativeDecimals", options({"--precision", "-1"}),
                      "--precision '-1' is not N or N,M with numbers from 0 to 17"},
        Contradiction{"ThreePrecisions", options({"--precision", "1,2,3"}),
                      "--precision '1,2,3' is not N or N,M with numbers from 0 to 17"},
        Contradiction{"EmptyPrecision", options({"--precision", "3,"}),
                      "--precision '3,' is not N or N,M with numbers from 0 to 17"},
        Contradiction{"ExactFeet", options({"--format", "exact", "--length-unit", "ft"}),
                      "--format exact prints all digits of decimal degrees and metres; it excludes "
                      "--precision, --angle and --length-unit"},
        Contradiction{"ExactDecimals", options({"--format", "exact", "--precision", "3"}),
                      "--format exact prints all digits of decimal degrees and metres; it excludes "
                      "--precision, --angle and --length-unit"}),
    [](const auto &row) { return row.param.testName; });

/// An ellipsoid without a PROJ name reaches PROJ by the registry's display configuration, which no
/// option may change: another unit or fewer decimals there move every position.
TEST(ConvertDisplay, NoOptionChangesWhatIsComputed)
{
    const ProgramRun program;
    const QString spelledOut =
        program.file(QStringLiteral("spelled_out.xml"),
                     test::editedSystem(system, {{QStringLiteral("proj4EllpsName=\"bessel\""),
                                                  QStringLiteral("proj4EllpsName=\"\"")}}));
    const auto convert = [&](const QStringList &more) {
        const auto result =
            program.run(options({"convert", "--csv", "--system"}) + QStringList(spelledOut) + more,
                        inMetres + "A,5.81015219,52.17852792,90.865\n");
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    };
    const auto exact = csvRows(convert(options({"--format", "exact"}))).value(0);
    // The same with the ellipsoid's PROJ name.
    EXPECT_NEAR(test::numberIn(exact, QStringLiteral("local_easting_m")), 183928.88, 0.005);
    EXPECT_NEAR(test::numberIn(exact, QStringLiteral("local_northing_m")), 465682.97, 0.005);

    struct Unit
    {
        const char *option;
        const char *suffix;
        double metres;
    };
    const Unit units[] = {{"m", "m", 1.0}, {"ft", "ft", 0.3048}, {"us-ft", "us_ft", 1200.0 / 3937}};
    for (const Unit &unit : units) {
        for (const char *style : {"dms", "degree", "second", "radian"}) {
            for (const char *precision : {"0", "2", "6"}) {
                for (const char *format : {"--format=configured", "--csv"}) {
                    const QStringList more = options({"--length-unit", unit.option, "--angle",
                                                      style, "--precision", precision, format});
                    SCOPED_TRACE(more.join(QLatin1Char(' ')).toStdString());
                    const auto row = csvRows(convert(more)).value(0);
                    const double halfUnit =
                        0.5 * std::pow(10.0, -QByteArray(precision).toInt()) * unit.metres;
                    for (const char *column : {"wgs84_x", "wgs84_z", "local_northing",
                                               "local_easting", "local_height"}) {
                        const QString name = QString::fromLatin1(column) + QLatin1Char('_');
                        EXPECT_NEAR(test::numberIn(row, name + QLatin1String(unit.suffix))
                                        * unit.metres,
                                    test::numberIn(exact, name + QLatin1Char('m')), halfUnit + 1e-9)
                            << column;
                    }
                }
            }
        }
    }
    const auto dms = csvRows(convert(options({"--angle", "dms", "--precision", "9"}))).value(0);
    TypedValueFailure failure;
    const auto latitude = readTypedAngle(dms.value(QStringLiteral("local_latitude_dms")),
                                         AngleSense::Latitude, DecimalMark::Point, failure);
    ASSERT_TRUE(latitude.has_value()) << failure.text;
    EXPECT_NEAR(*latitude, test::numberIn(exact, QStringLiteral("local_latitude_deg")),
                0.5e-9 / 3600 + 1e-14);
}

// Hartebeesthoek94 is WGS 84 here, and its longitudes and latitudes count westwards and southwards
// in EPSG:2053, as those of Krovak's S-JTSK do in EPSG:5513, some 100 m from WGS 84.
TEST(ConvertDisplay, LettersNameTheSideOfTheEarthWhereAxesCountTheOtherWay)
{
    const struct
    {
        const char *code;
        const char *wgs84;
        const char *longitude; ///< both begin so
        const char *latitude;
        char side;         ///< of the latitude
        const char *typed; ///< local
        const char *plain; ///< the same
    } rows[] = {
        {"EPSG:2053", "29.5001,-29.5001,1\n", "029\u00B030\u2032", "29\u00B030\u2032", 'S',
         "29\u00B030'E,29\u00B030'S,1\n", "-29.5,29.5,1\n"},
        {"EPSG:5513", "14.51,50.01,1\n", "014\u00B030\u2032", "50\u00B000\u2032", 'N',
         "14\u00B030'E,50\u00B000'N,1\n", "-14.5,-50,1\n"},
    };
    const ProgramRun program;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.code);
        const auto run = [&](const QStringList &more, const char *input) {
            const auto result =
                program.run(options({"convert", "--system", row.code}) + more, input);
            EXPECT_EQ(result.status, 0) << result.err;
            return result;
        };
        const QStringList bothFrames = options({"--frames=wgs84-llh,local-llh"});
        const auto printed = run(bothFrames + options({"--angle=dms"}), row.wgs84);
        const auto angles = csvRows(printed.out).value(0);
        for (const char *frame : {"wgs84", "local"}) {
            const QString name = QString::fromLatin1(frame);
            const QString east = angles.value(name + "_longitude_dms");
            const QString north = angles.value(name + "_latitude_dms");
            EXPECT_TRUE(east.startsWith(QString::fromUtf8(row.longitude))
                        && east.endsWith(QLatin1Char('E')))
                << east;
            EXPECT_TRUE(north.startsWith(QString::fromUtf8(row.latitude))
                        && north.endsWith(QLatin1Char(row.side)))
                << north;
        }
        const QStringList local = options({"--from=local-llh"});
        EXPECT_EQ(run(local, row.typed).out, run(local, row.plain).out);
        const auto back =
            csvRows(run(local + options({"--frames=local-llh"}), row.typed).out).value(0);
        EXPECT_LT(back.value(QStringLiteral("local_longitude_deg")).toDouble(), 0);
        // What was printed is read.
        const QStringList onlyWgs84 = options({"--frames=wgs84-llh"});
        const auto again = csvRows(run(local + onlyWgs84, printed.out.toUtf8().constData()).out);
        const auto first = csvRows(run(onlyWgs84, row.wgs84).out);
        for (const char *name : {"wgs84_longitude_deg", "wgs84_latitude_deg"}) {
            EXPECT_NEAR(again.value(0).value(QLatin1String(name)).toDouble(),
                        first.value(0).value(QLatin1String(name)).toDouble(), 1e-8);
        }
    }
}

} // namespace
} // namespace KelStd
