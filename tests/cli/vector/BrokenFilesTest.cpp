// Files that are cut, or not what they should be: written here by hand, and then by less.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::mentionsAll;
using test::ProgramResult;
using test::ProgramRun;
using test::words;

constexpr int written = 300;

/// A format whose text has a beginning, points and an ending; "%1" is the number of a point.
struct Text
{
    const char *file;
    const char *beginning;
    const char *point;
    const char *ending;
};

const Text texts[] = {
    {"p.gml",
     "<?xml version=\"1.0\"?><o:all xmlns:o=\"http://ogr.maptools.org/\" "
     "xmlns:gml=\"http://www.opengis.net/gml\">",
     "<gml:featureMember><o:p><o:place><gml:Point><gml:coordinates>5.25,52.%1,43.5"
     "</gml:coordinates></gml:Point></o:place><o:code>%1</o:code></o:p></gml:featureMember>\n",
     "</o:all>"},
    {"p.jml",
     "<?xml version=\"1.0\"?><JCSDataFile xmlns:gml=\"http://www.opengis.net/gml\">"
     "<JCSGMLInputTemplate><CollectionElement>featureCollection</CollectionElement>"
     "<FeatureElement>feature</FeatureElement><GeometryElement>geometry</GeometryElement>"
     "<ColumnDefinitions><column><name>code</name><type>STRING</type><valueElement "
     "elementName=\"property\" attributeName=\"name\" attributeValue=\"code\"/>"
     "<valueLocation position=\"body\"/></column></ColumnDefinitions></JCSGMLInputTemplate>"
     "<featureCollection>\n",
     "<feature><geometry><gml:Point><gml:coordinates>5.25,52.%1,3</gml:coordinates></gml:Point>"
     "</geometry><property name=\"code\">%1</property></feature>\n",
     "</featureCollection></JCSDataFile>\n"},
    {"p.gpx",
     "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"x\" "
     "xmlns=\"http://www.topografix.com/GPX/1/1\">",
     "<wpt lat=\"52.%1\" lon=\"5.25\"><ele>3</ele><name>%1</name></wpt>\n", "</gpx>\n"},
    {"p.kml", "<?xml version=\"1.0\"?><kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document>\n",
     "<Placemark><name>%1</name><Point><coordinates>5.25,52.%1,3</coordinates></Point>"
     "</Placemark>\n",
     "</Document></kml>\n"},
    {"p.geojson", "{\"type\":\"FeatureCollection\",\"features\":[\n",
     "{\"type\":\"Feature\",\"properties\":{\"code\":\"%1\"},\"geometry\":{\"type\":\"Point\","
     "\"coordinates\":[5.25,52.%1,3]}},\n",
     "{\"type\":\"Feature\",\"properties\":{\"code\":\"1\"},\"geometry\":{\"type\":\"Point\","
     "\"coordinates\":[5.25,52.1,3]}}]}\n"},
};

void PrintTo(const Text &text, std::ostream *out)
{
    *out << text.file;
}

class CutTexts : public testing::TestWithParam<Text>
{
protected:
    ProgramResult convert(const QByteArray &bytes) const
    {
        const QString file = m_program.file(QString::fromLatin1(GetParam().file), bytes);
        return m_program.run(words(QStringLiteral("convert --csv --from wgs84-llh --fields "
                                                  "wgs84_latitude --system EPSG:32631"))
                             + QStringList{file});
    }

    QByteArray whole() const
    {
        QByteArray bytes = GetParam().beginning;
        for (int i = 0; i < written; ++i)
            bytes += QByteArray(GetParam().point).replace("%1", QByteArray::number(100 + i));
        return bytes + GetParam().ending;
    }

    ProgramRun m_program;
};

TEST_P(CutTexts, AreNeverReadAsIfTheyWereWhole)
{
    const QByteArray bytes = whole();
    const ProgramResult result = convert(bytes);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_GT(result.out.count(QLatin1Char('\n')), written);
    // Within a point, behind one, and without the ending.
    const int middle = bytes.indexOf('\n', bytes.size() / 2) + 1;
    const int end = bytes.size() - QByteArray(GetParam().ending).size();
    for (const int size : {middle - 20, middle, end}) {
        SCOPED_TRACE(size);
        const ProgramResult cut = convert(bytes.left(size));
        EXPECT_TRUE(cut.status == 2 || cut.status == 3) << cut.status;
        EXPECT_TRUE(mentionsAll(cut.err, {"cannot read", GetParam().file})) << cut.err;
    }
}

INSTANTIATE_TEST_SUITE_P(All, CutTexts, testing::ValuesIn(texts));

} // namespace
} // namespace KelStd
