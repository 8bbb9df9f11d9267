// Chosen frames, columns and factors, in every form of output.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");
const QByteArray remarked = "id,lon,lat,h,code,point_scale\nA,6,53,43.5,\"x, y\",own\n";

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

test::ProgramResult convert(std::initializer_list<const char *> options,
                            const QByteArray &input = remarked, const QString &of = system)
{
    QStringList words{text("--columns=id,lon,lat,h")};
    if (input != remarked)
        words.clear();
    for (const char *option : options)
        words += text(option);
    return ProgramRun().convert(of, input, words);
}

/// The numbers of the whole line, by the names of their columns.
QMap<QString, QString> allFields()
{
    const auto all = convert({});
    const QStringList names = all.outLines().value(0).split(QLatin1Char(','));
    QString line = all.outLines().value(1);
    const QStringList fields = line.replace(text("\"x, y\""), text("x;y")).split(QLatin1Char(','));
    QMap<QString, QString> byName;
    for (int i = 0; i < names.size(); ++i)
        byName[names.at(i)] = fields.value(i);
    return byName;
}

TEST(ConvertFrames, ArePrintedInTheOrderAskedFor)
{
    const auto all = allFields();
    const auto result = convert({"--frames=local-neh,wgs84-llh"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.outLines().value(0),
              text("point,local_northing_m,local_easting_m,local_height_m,wgs84_longitude_deg,"
                   "wgs84_latitude_deg,wgs84_height_m,local_height_reference,code,point_scale_2"));
    EXPECT_EQ(result.outLines().value(1),
              text("A,%1,%2,%3,6.00000000000,53.00000000000,43.50000,ellipsoid,\"x, y\",own")
                  .arg(all[text("local_northing_m")], all[text("local_easting_m")],
                       all[text("local_height_m")]));
}

TEST(ConvertFrames, HaveNoReferenceOfAHeightThatIsNotPrinted)
{
    const auto result = convert({"--frames", "wgs84-llh"});
    EXPECT_EQ(result.out, text("point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,code,"
                               "point_scale_2\nA,6.00000000000,53.00000000000,43.50000,"
                               "\"x, y\",own\n"));
}

TEST(ConvertFields, ArePrintedInTheOrderAskedFor)
{
    const auto all = allFields();
    const auto result = convert({"--fields", "code,local_easting_m, local_northing,point"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, text("code,local_easting_m,local_northing_m,point\n\"x, y\",%1,%2,A\n")
                              .arg(all[text("local_easting_m")], all[text("local_northing_m")]));
}

TEST(ConvertFields, AreTheOnlyOnesInJsonToo)
{
    EXPECT_EQ(convert({"--json", "--fields=code,wgs84_height,point_scale_2"}).out,
              text("{\"code\":\"x, y\",\"wgs84_height_m\":43.50000,\"point_scale_2\":\"own\"}\n"));
    EXPECT_EQ(convert({"--geojson", "--fields=code"}).out,
              text("{\"type\":\"FeatureCollection\",\"features\":[\n"
                   "{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\",\"coordinates\":"
                   "[6.00000000000,53.00000000000,43.50000]},\"properties\":{\"code\":\"x, y\"}}\n"
                   "]}\n"));
}

TEST(ConvertFields, StandInATableBelowTheirFrames)
{
    const auto result = convert({"--table", "--fields=code,wgs84_height_m,point,elevation_factor"});
    ASSERT_EQ(result.status, 0) << result.err;
    const QStringList lines = result.outLines();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines.at(0).simplified(), text("- WGS84 geographic - - factors -"));
    EXPECT_EQ(lines.at(1).simplified(), text("code height point elevation"));
    EXPECT_EQ(lines.at(2).simplified(), text("m (ell.)"));
    EXPECT_EQ(lines.at(3).simplified(), text("x, y 43.5 A 0.999999731"));
}

// An input without names has no "point" in JSON; who asks for it gets it, empty.
TEST(ConvertFields, MayNameWhatTheInputDoesNotHave)
{
    EXPECT_EQ(convert({"--json", "--fields=point,wgs84_x"}, "0,0,0\n").out,
              text("{\"point\":\"\",\"wgs84_x_m\":6378137.00000}\n"));
    EXPECT_EQ(convert({"--fields=local_height_reference,point"}, "0,0,0\n").out,
              text("local_height_reference,point\nellipsoid,\n"));
}

TEST(ConvertFields, HaveTheUnitThatTheyAreAskedFor)
{
    EXPECT_EQ(convert({"--length-unit=ft", "--fields=wgs84_x", "--precision=3"}, "0,0,0\n").out,
              text("wgs84_x_ft\n20925646.325\n"));
    EXPECT_EQ(
        convert({"--angle=dms", "--fields=wgs84_latitude", "--precision=0,0"}, "0,1.5,0\n").out,
        text("wgs84_latitude_dms\n01\u00B030\u203200\u2033N\n"));
}

// By the formulas of the oblique stereographic projection (IOGP Publication 373-7-2) with 40
// digits: 0.9999725589576, 0.9999931853390, 0.9999657444836, 0.48634139097747.
TEST(ConvertFactors, StandBehindTheFrames)
{
    const auto result =
        convert({"--factors", "--frames=local-neh", "--from=local-llh"}, "A,6,53,43.5\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.outLines().value(0),
              text("point,local_northing_m,local_easting_m,local_height_m,local_height_reference,"
                   "point_scale,elevation_factor,combined_factor,convergence_deg"));
    EXPECT_TRUE(result.outLines().value(1).endsWith(
        text(",ellipsoid,0.999972559,0.999993185,0.999965744,0.4863414")))
        << result.out;
    const auto json = convert(
        {"--json", "--fields=combined_factor,convergence", "--from=local-llh"}, "A,6,53,43.5\n");
    EXPECT_EQ(json.out, text("{\"combined_factor\":0.999965744,\"convergence_deg\":0.4863414}\n"));
}

// Of PROJ's program proj, release 9.1.1, with -V, from the local longitude and latitude; that of
// Krovak by IOGP Publication 373-7-2 with 40 digits. Longitudes from Paris, feet, and axes that
// count west and south.
TEST(ConvertFactors, AreThoseOfImportedSystems)
{
    struct
    {
        const char *code;
        const char *local;
        double scale;
        double convergence;
    } const systems[] = {
        {"EPSG:27561", "3.00069867424,49.00006607427,0\n", 0.99991517, 0.50450617},
        {"EPSG:2263", "-74,40.70000000093,0\n", 0.99999832, 0.0},
        {"EPSG:2053", "-28,26,0\n", 1.00012372, 0.43840770},
        {"EPSG:31467", "9.70115941949,51.00125571286,0\n", 1.00002973, 0.54492374},
        {"EPSG:5513", "-14.5,-50,0\n", 0.9999016015553, -7.7730474335019},
    };
    const ProgramRun program;
    for (const auto &row : systems) {
        const auto result = program.run({text("convert"), text("--system"), text(row.code),
                                         text("--from=local-llh"), text("--no-header"),
                                         text("--fields=point_scale,convergence")},
                                        row.local);
        EXPECT_EQ(result.status, 0) << result.err;
        const QStringList numbers = result.out.trimmed().split(QLatin1Char(','));
        EXPECT_NEAR(numbers.value(0).toDouble(), row.scale, 0.6e-8) << row.code;
        EXPECT_NEAR(numbers.value(1).toDouble(), row.convergence, 1.1e-7) << row.code;
    }
}

TEST(ConvertFactors, AreMissingWhereTheScaleDependsOnTheDirection)
{
    const QString laea = QStringLiteral("etrs89_laea_europe.xml");
    const char *fields = "--fields=point_scale,elevation_factor,combined_factor";
    const auto csv = convert({fields}, "5,50,0\n10,52.5,0\n", laea);
    EXPECT_EQ(csv.status, 0);
    EXPECT_EQ(csv.outLines().value(1), text(",1.000000000,"));
    EXPECT_THAT(csv.err, Mentions("note: 2 positions have no point scale and combined factor: the "
                                  "scale of the projection is not the same in all directions "
                                  "there; the first is <stdin>:1"));
    EXPECT_EQ(convert({fields, "--json"}, "5,50,0\n", laea).out,
              text("{\"point_scale\":null,\"elevation_factor\":1.000000000,"
                   "\"combined_factor\":null}\n"));
    EXPECT_EQ(convert({"--fields=elevation_factor"}, "5,50,0\n", laea).err, QString());
}

TEST(ConvertFactors, AreTheSameOnManyThreads)
{
    QByteArray many;
    for (int i = 0; i < 5000; ++i)
        many +=
            QByteArray::number(4.0 + i * 0.0005, 'f', 6) + ",52.5," + QByteArray::number(i) + "\n";
    const auto one = convert({"--factors", "--threads=1"}, many);
    EXPECT_EQ(one.status, 0) << one.err;
    EXPECT_EQ(convert({"--factors", "--threads=4"}, many).out, one.out);
}

TEST(ConvertFields, AreThoseOfTheGuide)
{
    const QString guide = QString::fromUtf8(
        test::readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/docs/printed-columns.md")));
    QStringList names;
    for (const QString &line : guide.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("| `")))
            names += line.section(QLatin1Char('`'), 1, 1);
    }
    const auto result = convert({"--factors"}, "A,6,53,43.5\n");
    EXPECT_EQ(result.outLines().value(0), names.join(QLatin1Char(',')));
    const QByteArray fields = "--fields=" + names.join(QLatin1Char(',')).toUtf8();
    EXPECT_EQ(convert({fields.constData()}, "A,6,53,43.5\n").out, result.out);
}

struct Refusal
{
    std::initializer_list<const char *> options;
    const char *reason;
};

TEST(ConvertFields, AreRefusedWithTheNamesThatThereAre)
{
    const Refusal refusals[] = {
        {{"--frames=local-neh,wgs84"},
         "--frames: 'wgs84' is no frame; did you mean wgs84-llh or wgs84-xyz? There are wgs84-llh, "
         "wgs84-xyz, local-llh, local-neh"},
        {{"--frames=local_neh"}, "'local_neh' is no frame; did you mean local-neh? There are"},
        {{"--frames=LOCAL-NEH"}, "'LOCAL-NEH' is no frame; did you mean local-neh? There are"},
        {{"--frames=utm"}, "'utm' is no frame; there are wgs84-llh"},
        {{"--frames=local-neh,local-neh"}, "--frames: 'local-neh' is named twice"},
        {{"--frames="}, "--frames: a name is missing in ''"},
        {{"--fields=point,"}, "--fields: a name is missing in 'point,'"},
        {{"--fields=point,point"}, "--fields: 'point' is named twice"},
        {{"--fields=point,Code"},
         "<stdin>:1: --fields: 'Code' is no column; did you mean code? There are point, "
         "wgs84_longitude_"},
        {{"--fields=local_norting"}, "is no column; did you mean local_northing"},
        {{"--fields=Local_Height"}, "is no column; did you mean local_height"},
        {{"--fields=name"}, "'name' is no column; did you mean point? There are point"},
        {{"--fields=qqq"}, "'qqq' is no column; there are point"},
        {{"--fields=point,Code"}, "convergence_deg, code, point_scale_2\n"},
        {{"--fields=wgs84_x,wgs84_x_m"},
         "<stdin>:1: --fields: 'wgs84_x_m' names the column wgs84_x_m again"},
        {{"--fields=wgs84_x_ft"}, "<stdin>:1: --fields: 'wgs84_x_ft' is no column"},
        {{"--fields=point", "--frames=local-neh"}, "--frames and --fields exclude each other"},
        {{"--fields=point", "--factors"}, "--factors and --fields exclude each other"},
    };
    for (const Refusal &refusal : refusals) {
        for (const char *form : {"--csv", "--json", "--geojson", "--table", "--excel"}) {
            QStringList words{text("--columns=id,lon,lat,h"), text(form)};
            for (const char *option : refusal.options)
                words += text(option);
            const auto result = ProgramRun().convert(system, remarked, words);
            EXPECT_EQ(result.status, 2) << refusal.reason;
            EXPECT_EQ(result.out, QString()) << refusal.reason;
            EXPECT_THAT(result.err, Mentions(refusal.reason));
        }
    }
}

// Nothing of an earlier run is given up for one that did not begin.
TEST(ConvertFields, ThatAreRefusedKeepTheRejectsOfAnEarlierRun)
{
    const ProgramRun program;
    const QString rejects = program.file(text("rejects.csv"), "kept\n");
    const auto result = program.convert(
        system, remarked,
        {text("--columns=id,lon,lat,h"), text("--fields=nothing"), text("--rejects"), rejects});
    EXPECT_EQ(result.status, 2);
    QFile file(rejects);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("kept\n"));
}

TEST(ConvertFields, OfAnEmptyInputAreHeadings)
{
    EXPECT_EQ(convert({"--fields=wgs84_x,point"}, "\n").out, text("wgs84_x_m,point\n"));
    EXPECT_EQ(convert({"--fields=nothing"}, "\n").status, 2);
}

} // namespace
} // namespace KelStd
