// Types of attributes on their way through the program: what a form cannot hold becomes a text that
// says it, or an error. The files are read by GDAL's own programs.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::mentionsAll;
using test::ProgramResult;
using test::ProgramRun;
using test::toolOutput;
using test::words;

QByteArray pointWith(const QByteArray &properties)
{
    return "{\"type\":\"Feature\",\"properties\":{" + properties
           + "},\"geometry\":{\"type\":\"Point\",\"coordinates\":[5.387,52.155,43.1]}}";
}

QByteArray collection(const QByteArray &features)
{
    return "{\"type\":\"FeatureCollection\",\"features\":[" + features + "]}";
}

/// Two points: with values of every type, and with none.
QByteArray allTypes()
{
    return collection(pointWith("\"name\":\"A\",\"ok\":true,\"on\":\"2024-05-01\",\"text\":\"\","
                                "\"whole\":7,\"real\":0.5")
                      + ','
                      + pointWith("\"name\":\"B\",\"ok\":false,\"on\":null,\"text\":null,"
                                  "\"whole\":null,\"real\":null"));
}

class FieldTypes : public testing::Test
{
protected:
    ProgramResult write(const QString &name, const QByteArray &features,
                        const QString &options = {}) const
    {
        const QString in = m_program.file(QStringLiteral("in.geojson"), features);
        return m_program.run(words(QStringLiteral("convert --system EPSG:32631"))
                             + options.split(QLatin1Char(' '), Qt::SkipEmptyParts)
                             + QStringList{QStringLiteral("-o"), path(name), in});
    }

    QString path(const QString &name) const { return m_program.home().path(name); }

    static QString info(const QString &file)
    {
        return toolOutput(QStringLiteral("ogrinfo"), {QStringLiteral("-al"), file});
    }

    ProgramRun m_program;
};

// Every text of GPX is one: codes keep their zeros, long numbers their digits, and numbers are
// numbers where all of a field are.
TEST_F(FieldTypes, OfGpxAreThoseThatAllTextsAllow)
{
    const QByteArray names[] = {"code", "serial", "girth", "count", "phase"};
    const QByteArray values[][5] = {{"007", "12345678901", "1.50", "7", "1e3"},
                                    {"12", "99999999999999999999", "-2", "8", "2"}};
    QByteArray bytes = "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"x\" "
                       "xmlns=\"http://www.topografix.com/GPX/1/1\" xmlns:a=\"urn:a\">";
    for (const auto &row : values) {
        bytes += "<wpt lat=\"52.155\" lon=\"5.387\"><ele>43.1</ele><hdop>0.70</hdop><extensions>";
        for (int i = 0; i < 5; ++i)
            bytes += "<a:" + names[i] + '>' + row[i] + "</a:" + names[i] + '>';
        bytes += "</extensions></wpt>";
    }
    const QString file = m_program.file(QStringLiteral("p.gpx"), bytes + "</gpx>");
    const QString fields = QStringLiteral(
        "--fields hdop,a_code,a_serial,a_girth,a_count,a_phase --system EPSG:32631 ");
    const ProgramResult csv = m_program.run(words(QStringLiteral("convert ") + fields + file));
    EXPECT_EQ(csv.out.toStdString(), "hdop,a_code,a_serial,a_girth,a_count,a_phase\n"
                                     "0.70,007,12345678901,1.50,7,1e3\n"
                                     "0.70,12,99999999999999999999,-2,8,2\n")
        << csv.err;
    const ProgramResult json =
        m_program.run(words(QStringLiteral("convert --json ") + fields + file));
    EXPECT_TRUE(mentionsAll(json.out, {"\"a_code\":\"007\"", "\"a_code\":\"12\"",
                                       "\"a_serial\":\"12345678901\"", "\"a_girth\":1.50",
                                       "\"a_count\":7", "\"a_phase\":\"1e3\""}))
        << json.out;
    const ProgramResult back = m_program.run(words(
        QStringLiteral("convert %1-o %2 %3").arg(fields, path(QStringLiteral("b.gpkg")), file)));
    EXPECT_EQ(back.status, 0) << back.err;
    EXPECT_TRUE(mentionsAll(info(path(QStringLiteral("b.gpkg"))),
                            {"a_code (String) = 007", "a_serial (String) = 99999999999999999999",
                             "a_girth (Real) = 1.5", "a_count (Integer64) = 7"}));
}

TEST_F(FieldTypes, OfGpxLoseTheirLineBreaksWithAWarning)
{
    const QString file = path(QStringLiteral("p.gpx"));
    const ProgramResult written =
        write(QStringLiteral("p.gpx"),
              collection(pointWith("\"name\":\"A\",\"remark\":\"one\\ntwo\"") + ','
                         + pointWith("\"name\":\"B\",\"remark\":\"one two\"")));
    ASSERT_EQ(written.status, 0) << written.err;
    const ProgramResult read =
        m_program.run(words(QStringLiteral("convert --system EPSG:32631 ") + file));
    EXPECT_TRUE(mentionsAll(read.err, {"warning: ", "line breaks", "texts that have some: 1"}))
        << read.err;
    // Those of the layout are no texts.
    const ProgramResult pretty = m_program.run(
        words(QStringLiteral("convert --system EPSG:32631 ")
              + m_program.file(QStringLiteral("q.gpx"),
                               "<gpx version=\"1.1\" creator=\"x\" "
                               "xmlns=\"http://www.topografix.com/GPX/1/1\" xmlns:a=\"urn:a\">\n"
                               "<wpt lat=\"52\" lon=\"5\">\n<desc>one\ntwo</desc>\n<extensions>"
                               "\n<a:b>\n<a:c>1</a:c>\n</a:b>\n</extensions>\n</wpt>\n</gpx>")));
    EXPECT_EQ(pretty.status, 0) << pretty.err;
    EXPECT_FALSE(pretty.err.contains(QLatin1String("line breaks"))) << pretty.err;
    EXPECT_TRUE(pretty.out.contains(QLatin1String("\"one\ntwo\""))) << pretty.out;
}

// GDAL takes the largest number that it has for those beyond.
TEST_F(FieldTypes, OfNumbersThatAreTooLargeStayEmptyWithAWarning)
{
    const QString in =
        m_program.file(QStringLiteral("in.geojson"),
                       collection(pointWith("\"n\":12345678901234567890,\"m\":7") + ','
                                  + pointWith("\"n\":1234567890123456789,\"m\":8")));
    const ProgramResult result =
        m_program.run(words(QStringLiteral("convert --system EPSG:32631 --fields n,m ") + in));
    EXPECT_EQ(result.out.toStdString(), "n,m\n,7\n1234567890123456789,8\n") << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"warning: 1 whole number of the layer is too large"}))
        << result.err;
}

// 1e6 is 1000000: a name and a number are the same in every program.
TEST_F(FieldTypes, OfRealNumbersHaveNoExponents)
{
    const QString in =
        m_program.file(QStringLiteral("in.geojson"),
                       collection(pointWith("\"name\":1000000.0,\"size\":2500000.0,\"far\":1e20")
                                  + ',' + pointWith("\"name\":0.00001,\"size\":0.00001,\"far\":0.5")
                                  + ',' + pointWith("\"name\":1e20,\"size\":0.5,\"far\":0.5")));
    const ProgramResult result = m_program.run(
        words(QStringLiteral("convert --system EPSG:32631 --fields point,size,far ") + in));
    EXPECT_EQ(result.out.toStdString(), "point,size,far\n1000000,2500000,1e+20\n"
                                        "0.00001,0.00001,0.5\n100000000000000000000,0.5,0.5\n")
        << result.err;
}

struct Form
{
    const char *file;
    QList<const char *> lines; ///< of ogrinfo
};

void PrintTo(const Form &row, std::ostream *out)
{
    *out << row.file;
}

class FormsWithTypes : public FieldTypes, public testing::WithParamInterface<Form>
{};

TEST_P(FormsWithTypes, KeepThemOrSayThem)
{
    const QString file = QString::fromLatin1(GetParam().file);
    const ProgramResult result = write(file, allTypes());
    ASSERT_EQ(result.status, 0) << result.err;
    const QString shown = info(path(file));
    EXPECT_TRUE(mentionsAll(shown, GetParam().lines)) << shown;
}

INSTANTIATE_TEST_SUITE_P(
    Written, FormsWithTypes,
    testing::Values(
        Form{"out.gpkg",
             {"ok: Integer(Boolean)", "ok (Integer(Boolean)) = 1", "ok (Integer(Boolean)) = 0",
              "on (Date) = 2024/05/01", "on (Date) = (null)", "text (String) = \n",
              "text (String) = (null)", "whole (Integer64) = 7", "whole (Integer64) = (null)"}},
        Form{"out.shp",
             {"ok (String) = true", "ok (String) = false", "on (Date) = 2024/05/01",
              "on (Date) = (null)"}},
        Form{"out.geojson",
             {"ok (Integer(Boolean)) = 1", "ok (Integer(Boolean)) = 0", "on (Date) = 2024/05/01",
              "text (String) = \n", "text (String) = (null)"}},
        Form{"out.kml", {"ok (String) = true", "ok (String) = false", "on (String) = 2024-05-01"}},
        Form{"out.gpx", {"ogr_ok (String) = true", "ogr_ok (String) = false"}}));

TEST_F(FieldTypes, ArePrintedAsTheyAre)
{
    const QString in = m_program.file(QStringLiteral("in.geojson"), allTypes());
    const auto print = [&](const char *form) {
        const ProgramResult result =
            m_program.run(words(QStringLiteral("convert --system EPSG:32631 --fields "
                                               "ok,on,text,whole,real"))
                          + QStringList{QLatin1String(form), in});
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out.toStdString();
    };
    EXPECT_EQ(print("--json"),
              "{\"ok\":true,\"on\":\"2024-05-01\",\"text\":\"\",\"whole\":7,\"real\":0.5}\n"
              "{\"ok\":false,\"on\":null,\"text\":null,\"whole\":null,\"real\":null}\n");
    EXPECT_EQ(print("--csv"), "ok,on,text,whole,real\ntrue,2024-05-01,,7,0.5\nfalse,,,,\n");
}

TEST_F(FieldTypes, ComeBackOfAGeoPackage)
{
    ASSERT_EQ(write(QStringLiteral("one.gpkg"), allTypes()).status, 0);
    const ProgramResult again =
        m_program.run(words(QStringLiteral("convert --system EPSG:32631 --json --fields "
                                           "ok,on,text,whole,real"))
                      + QStringList{path(QStringLiteral("one.gpkg"))});
    EXPECT_EQ(again.out.toStdString(),
              "{\"ok\":true,\"on\":\"2024-05-01\",\"text\":\"\",\"whole\":7,\"real\":0.5}\n"
              "{\"ok\":false,\"on\":null,\"text\":null,\"whole\":null,\"real\":null}\n");
}

TEST_F(FieldTypes, OfNumbersThatADbfHasNoRoomForAreAnError)
{
    const QByteArray big = collection(pointWith("\"no_data\":-1.7976931348623157e308"));
    const ProgramResult result = write(QStringLiteral("out.shp"), big);
    EXPECT_EQ(result.status, 3);
    EXPECT_TRUE(mentionsAll(result.err, {"-1.79769313486232e+308", "\"no_data\"", "GeoPackage"}))
        << result.err;
    ASSERT_EQ(write(QStringLiteral("out.gpkg"), big).status, 0);
    EXPECT_TRUE(info(path(QStringLiteral("out.gpkg")))
                    .contains(QLatin1String("no_data (Real) = -1.79769313486232e+308")));
    EXPECT_EQ(write(QStringLiteral("fits.shp"),
                    collection(pointWith("\"n\":-99999999999999.5,\"m\":999999999999999.5")))
                  .status,
              0);
    EXPECT_EQ(write(QStringLiteral("fits_not.shp"), collection(pointWith("\"n\":1e15"))).status, 3);
}

TEST_F(FieldTypes, OfNumbersThatLoseDigitsAreCounted)
{
    const ProgramResult result = write(
        QStringLiteral("out.shp"), collection(pointWith("\"tiny\":1.25e-20,\"third\":0.3333333")));
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(mentionsAll(result.err, {"rounded to 15 decimals", ": 1\n"})) << result.err;
}

// The plane of EPSG:32631 is in metres, whatever unit is printed.
TEST_F(FieldTypes, InFeetStandBesideAGeometryInMetres)
{
    for (const char *name : {"out.gpkg", "out.shp", "out.geojson", "out.kml"}) {
        SCOPED_TRACE(name);
        const QString file = QString::fromLatin1(name);
        const ProgramResult result = write(file, collection(pointWith("\"name\":\"A\"")),
                                           QStringLiteral("--length-unit ft"));
        ASSERT_EQ(result.status, 0) << result.err;
        const auto row = test::ogrRows(path(file)).value(0);
        EXPECT_NEAR(row.value(QStringLiteral("Z")).toDouble(), 43.1, 1e-5);
        const bool isLayer = file.endsWith(QLatin1String("gpkg"));
        if (isLayer) {
            EXPECT_NEAR(row.value(QStringLiteral("local_height_ft")).toDouble(), 43.1 / 0.3048,
                        1e-4);
        }
    }
}

// The table's header has 32 bytes, then 32 for each field: its name, at 11 the type, at 16 the
// width; behind a byte 0D stand the records, each behind a byte for the deleted ones.
TEST_F(FieldTypes, OfAShapefileAreAsWideAsTheirTextsWithAllBlanks)
{
    const ProgramResult result = write(
        QStringLiteral("out.shp"),
        collection(pointWith("\"name\":\" P1\",\"note\":\"  ab\",\"whole\":-1234567,\"none\":"
                             "\"\"")
                   + ',' + pointWith("\"name\":\"P22\",\"note\":\"c \",\"whole\":8,\"none\":null")),
        QStringLiteral("--frames local-neh"));
    ASSERT_EQ(result.status, 0) << result.err;
    const QByteArray table = test::readFile(path(QStringLiteral("out.dbf")));
    QMap<QByteArray, QByteArray> first;
    int place = table.indexOf('\r') + 2;
    for (int field = 32; table.at(field) != '\r'; field += 32) {
        const int width = static_cast<unsigned char>(table.at(field + 16));
        first[QByteArray(table.mid(field, 11).constData())] = table.mid(place, width);
        place += width;
    }
    EXPECT_EQ(first.value("point"), " P1");
    EXPECT_EQ(first.value("note"), "  ab");
    EXPECT_EQ(first.value("whole"), "-1234567");
    EXPECT_EQ(first.value("none"), " ");
}

TEST_F(FieldTypes, OfTextsThatLookLikeTimesAreTexts)
{
    const char *const texts[] = {"2024/03/02",
                                 "1:02:03",
                                 "2024-05-01T10:20:41.9999999Z",
                                 "2024-05-01T10:20:42.0000000Z",
                                 "2024-02-30",
                                 "2024-05-01 10:20"};
    for (const char *const text : texts) {
        SCOPED_TRACE(text);
        const QString in =
            m_program.file(QStringLiteral("in.geojson"),
                           collection(pointWith("\"name\":\"" + QByteArray(text) + "\",\"said\":\""
                                                + text + "\",\"on\":\"2024-02-29\"")));
        const ProgramResult result =
            m_program.run(words(QStringLiteral("convert --csv --system EPSG:32631 --fields "
                                               "point,said,on"))
                          + QStringList{in});
        EXPECT_EQ(result.out.toStdString(),
                  "point,said,on\n" + std::string(text) + ',' + text + ",2024-02-29\n")
            << result.err;
    }
}

// A feature a line: one alone would be a file of GeoJSON.
TEST_F(FieldTypes, OfLinesOfGeoJsonThatAreTakenForTimesAreWarnedOf)
{
    const QByteArray line = pointWith("\"name\":\"A\",\"said\":\"2024/03/02\"") + '\n';
    const QString in = m_program.file(QStringLiteral("in.geojsonl"), line + line);
    const ProgramResult result =
        m_program.run(words(QStringLiteral("convert --csv --system EPSG:32631")) + QStringList{in});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"warning", "\"said\" are taken for times"})) << result.err;
}

TEST_F(FieldTypes, OfAHeightOfNothingAreNothing)
{
    ASSERT_EQ(write(QStringLiteral("out.gpkg"),
                    "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\","
                    "\"properties\":{},\"geometry\":{\"type\":\"Point\",\"coordinates\":"
                    "[5.4,52.155,0]}}]}")
                  .status,
              0);
    EXPECT_TRUE(info(path(QStringLiteral("out.gpkg"))).contains(QLatin1String(" 0)\n")));
}

} // namespace
} // namespace KelStd
