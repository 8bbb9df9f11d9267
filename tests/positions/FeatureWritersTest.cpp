// Points as KML, GPX and DXF, byte for byte.

#include <KelStd/positions/DxfWriter.h>
#include <KelStd/positions/GpxWriter.h>
#include <KelStd/positions/KmlWriter.h>
#include <KelStd/positions/PointNames.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::ExtraColumn;
using positions::InputColumns;
using positions::ValuePrinter;

const QString noModel;

positions::LocationPrinter printer()
{
    return ValuePrinter({}, ValuePrinter::Output::Csv);
}

InputColumns columns()
{
    InputColumns given;
    given.hasNames = true;
    given.carried = QStringList{QStringLiteral("re mark")};
    given.extras = {{QStringLiteral("hdop"), ExtraColumn::Kind::Number}};
    return given;
}

QByteArray written(positions::PositionWriter &writer, std::string_view name,
                   std::string_view carried, std::string_view extra = "0.9")
{
    writer.begin(columns());
    QByteArray bytes;
    const std::vector<std::string_view> fields{carried};
    const std::vector<std::string_view> extras{extra};
    writer.write(bytes, {name, Location(), noModel, fields, extras});
    return bytes;
}

TEST(KmlWriter, EscapesWhatXmlCannotHold)
{
    positions::KmlWriter writer(printer(), QStringLiteral("a & b"));
    const QByteArray heading = writer.begin(columns());
    EXPECT_TRUE(heading.contains("<name>a &amp; b</name>"));
    EXPECT_TRUE(heading.contains("<SimpleField type=\"double\" name=\"hdop\"/>"));
    EXPECT_TRUE(heading.contains("<SimpleField type=\"string\" name=\"re mark\"/>"));
    const QByteArray line = written(writer, "<A&\x01>", "it's \"x\"\r");
    EXPECT_TRUE(line.startsWith("<Placemark><name>&lt;A&amp;\xef\xbf\xbd&gt;</name>"))
        << line.toStdString();
    EXPECT_TRUE(line.contains("<SimpleData name=\"re mark\">it&#39;s &quot;x&quot;&#13;</"));
    EXPECT_TRUE(line.contains("<SimpleData name=\"hdop\">0.9</SimpleData>"));
    EXPECT_TRUE(line.endsWith("<Point><coordinates>0.00000000000,0.00000000000,0.00000"
                              "</coordinates></Point></Placemark>\n"));
    // What is not known is left out.
    EXPECT_FALSE(written(writer, "", "", "").contains("re mark"));
    EXPECT_FALSE(written(writer, "", "", "").contains("<name>"));
}

TEST(GpxWriter, NamesElementsAsXmlHasThem)
{
    EXPECT_EQ(positions::GpxWriter::elementNames(
                  {"re mark", "re_mark", "2nd", "h\u00f6he", "a:b", "", "x-y.z"}),
              (QStringList{"re_mark", "re_mark_2", "_2nd", "h\u00f6he", "a_b", "_", "x-y.z"}));
    positions::GpxWriter writer(printer());
    const QByteArray line = written(writer, "A<", "b&");
    EXPECT_TRUE(line.startsWith("<wpt lat=\"0.00000000000\" lon=\"0.00000000000\"><ele>0.00000"
                                "</ele><name>A&lt;</name><extensions>"))
        << line.toStdString();
    EXPECT_TRUE(line.contains("<ogr:re_mark>b&amp;</ogr:re_mark>")) << line.toStdString();
}

TEST(DxfWriter, WritesAPointWithItsDataAndALabel)
{
    positions::DxfWriter writer(printer(), QStringLiteral("on {site} \u00e9"), 1.0);
    EXPECT_TRUE(writer.begin(columns()).startsWith(
        "999\non {site} \\U+00E9\n999\n1 unit = 1 m\n  0\nSECTION\n"));
    const QByteArray bytes = written(writer, "\u00e9%%d", "a\\b");
    EXPECT_TRUE(bytes.startsWith("  0\nPOINT\n  8\nPOINTS\n 10\n0.00000\n 20\n0.00000\n 30\n0.00000"
                                 "\n1001\nKELSTD\n1000\npoint=\\U+00E9\\U+0025\\U+0025d\n"))
        << bytes.toStdString();
    EXPECT_TRUE(bytes.contains("1000\nhdop=\n1040\n0.9\n1000\nre mark=a\\U+005Cb\n"))
        << bytes.toStdString();
    // Latin 1 in the code page that the drawing names.
    EXPECT_TRUE(bytes.endsWith("  0\nTEXT\n  8\nNAMES\n 10\n0.00000\n 20\n0.00000\n 30\n0.00000\n"
                               " 40\n0.5\n  1\n\xe9\\U+0025\\U+0025d\n"))
        << bytes.toStdString();
    EXPECT_FALSE(written(writer, "", "").contains("TEXT"));
}

// A string of extended data has at most 255 bytes.
TEST(DxfWriter, SplitsLongTexts)
{
    positions::DxfWriter writer(printer(), QString(), 1.0);
    const std::string text(1000, 'x');
    const QByteArray bytes = written(writer, "A", text);
    int total = 0;
    for (const QByteArray &line : bytes.split('\n')) {
        EXPECT_LE(line.size(), 255);
        total += line.count('x');
    }
    EXPECT_EQ(total, 1000 + 1); // and one in the name of a column, wgs84_x_m
    EXPECT_TRUE(bytes.contains("x\\\n1000\nx")) << bytes.toStdString();
    // A line's end within a text would end the group.
    EXPECT_TRUE(written(writer, "A", "a\nb").contains("a\\U+000Ab"));
}

TEST(PointNames, AreFoundByTheBestWord)
{
    EXPECT_EQ(positions::pointNameAmong({"id", "Name", "code"}), 1);
    EXPECT_EQ(positions::pointNameAmong({"code", "POINT ID"}), 1);
    EXPECT_EQ(positions::pointNameAmong({"code", "height"}), -1);
    EXPECT_EQ(positions::pointNameAmong({}), -1);
}

} // namespace
} // namespace KelStd
