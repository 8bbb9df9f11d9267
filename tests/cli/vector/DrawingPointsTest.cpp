// Points of drawings: which of them are positions, and what comes back of their attributes.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

namespace KelStd {
namespace {

using test::csvRows;
using test::mentionsAll;
using test::ProgramResult;
using test::ProgramRun;
using test::words;

// Group 67 says where an entity is: 0, as without it, in the plane, 1 on a sheet of paper.
TEST(DrawingPoints, OnPaperArePassedOver)
{
    const ProgramRun program;
    QByteArray bytes = "0\nSECTION\n2\nENTITIES\n";
    for (const char *const place : {"", "67\n1\n", "67\n0\n", "67\n1\n"})
        bytes += QByteArray("0\nPOINT\n8\nA\n") + place + "10\n155000.0\n20\n463000.0\n30\n1.0\n";
    bytes += "0\nTEXT\n8\nA\n67\n1\n10\n1.0\n20\n2.0\n40\n1.0\n1\nScale\n0\nENDSEC\n0\nEOF\n";
    const ProgramResult result =
        program.run(words(QStringLiteral("convert --csv --system EPSG:28992 --from local-neh"))
                    + QStringList{program.file(QStringLiteral("p.dxf"), bytes)});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(csvRows(result.out).size(), 2);
    EXPECT_TRUE(mentionsAll(result.err, {"3 features of the drawing are passed over", "paper"}))
        << result.err;
}

TEST(DrawingPoints, KeepHeadingsWithASignThatEndsThem)
{
    const ProgramRun program;
    const QString list =
        program.file(QStringLiteral("list.csv"), "point,northing,easting,height,Field =x,a=b=c\n"
                                                 "A,463000,155000,10,7.5,left = right\n");
    const QString file = program.home().path(QStringLiteral("p.dxf"));
    const ProgramResult drawn = program.run(words(
        QStringLiteral("convert --from local-neh --system EPSG:28992 -o %1 %2").arg(file, list)));
    ASSERT_EQ(drawn.status, 0) << drawn.err;
    // "=" is the character 3D.
    EXPECT_TRUE(test::readFile(file).contains("Field \\U+003Dx=7.5\n"));
    const ProgramResult back =
        program.run(words(QStringLiteral("convert --csv --system EPSG:28992 %1").arg(file)));
    const auto row = csvRows(back.out).value(0);
    EXPECT_EQ(row.value(QStringLiteral("Field =x")), "7.5") << back.out;
    EXPECT_EQ(row.value(QStringLiteral("a=b=c")), "left = right") << back.out;
}

// 2^53 is 9007199254740992: the next whole number is none of a double.
TEST(NumbersOfLayers, OfTooManyDigitsAreWarnedOf)
{
    const ProgramRun program;
    const struct
    {
        const char *number;
        bool isWarned;
    } rows[] = {
        {"9007199254740991", false}, {"9007199254740993", true}, {"-9007199254740993", true}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.number);
        const QString file = program.file(
            QStringLiteral("p.kml"),
            QByteArray("<?xml version=\"1.0\"?><kml xmlns=\"http://www.opengis.net/kml/2.2\">"
                       "<Document><Schema id=\"s\"><SimpleField name=\"n\" type=\"double\"/>"
                       "</Schema><Placemark><ExtendedData><SchemaData schemaUrl=\"#s\">"
                       "<SimpleData name=\"n\">")
                + row.number
                + "</SimpleData></SchemaData></ExtendedData><Point><coordinates>5.25,52.5,3"
                  "</coordinates></Point></Placemark></Document></kml>");
        const ProgramResult result = program.run(words(
            QStringLiteral("convert --csv --system EPSG:28992 --from wgs84-llh %1").arg(file)));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err.contains(QLatin1String("1 number of the layer is of 2^53 or more")),
                  row.isWarned)
            << result.err;
    }
}

} // namespace
} // namespace KelStd
