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
