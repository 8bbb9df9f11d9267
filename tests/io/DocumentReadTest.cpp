#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

namespace KelStd::test {
namespace {

class DocumentRead : public DocumentTest
{};

TEST_F(DocumentRead, CompleteDocumentGivesTheCompleteSystem)
{
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(storedDocumentPath("complete.xml"), coord, nullptr));
    expectSameSystem(coord, completeSystem());
}

TEST_F(DocumentRead, FreshDocumentGivesAFreshSystem)
{
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(storedDocumentPath("fresh.xml"), coord, nullptr));
    expectSameSystem(coord, Coord());
}

TEST_F(DocumentRead, DocumentOfTheFirstReleaseIsRead)
{
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(storedDocumentPath("early_release.xml"), coord, nullptr));
    EXPECT_EQ(coord.coord_name, QStringLiteral("Early site"));
    EXPECT_EQ(coord.ellipsoid.ellipsoid_name, QStringLiteral("Krassovsky"));
    EXPECT_EQ(coord.ellipsoid.proj4EllpsName, QStringLiteral("krass"));
    EXPECT_EQ(coord.ellipsoid.biggerHalfAxle.value.toDouble(), 6378245.0);
    EXPECT_EQ(coord.ellipsoid.reciprocal, 298.3);
    EXPECT_EQ(coord.ellipsoid.positiveDir, EllipsoidDirection_ENU);
    EXPECT_EQ(coord.projection.locationType, LocationType_X_Y_ElevationHeight);
    EXPECT_EQ(coord.projection.loc_or_height_unit, Unit_Meter);
    expectSameParam(coord.projection.param.value(QStringLiteral("meridian")),
                    Param(ValueType_Longitude, Unit_Degree, 117.0));
    EXPECT_EQ(coord.projection.paramProj4.value(QStringLiteral("meridian")),
              QStringLiteral("lon_0"));
    EXPECT_EQ(coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_Three);
    EXPECT_EQ(coord.ellipsoidTransform.x_translate.value.toDouble(), 24.0);
    EXPECT_EQ(coord.ellipsoidTransform.y_translate.value.toDouble(), 0.0);
    EXPECT_EQ(coord.ellipsoidTransform.z_translate.value.toDouble(), -80.5);
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty());
}

TEST_F(DocumentRead, NameOfTheRootIsNotExamined)
{
    Coord coord;
    QByteArray document = storedDocument("complete.xml");
    document.replace("<Coord ", "<Anything ").replace("</Coord>", "</Anything>");
    ASSERT_TRUE(read(document, coord));
    expectSameSystem(coord, completeSystem());
}

TEST_F(DocumentRead, UnknownElementsAndAttributesAreOverlooked)
{
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="1" color="red" reciprocal="300"><inner/>text</Ellpsoid>)";
    pieces.projection = R"(<Projection ver="1"><other ver="9"/></Projection>)";
    pieces.more = "<!-- note --><Unknown ver=\"7\"><Geoid_Model ver=\"1\" modelFileName=\"deep\"/>"
                  "</Unknown>loose text";
    Coord coord;
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.ellipsoid.reciprocal, 300.0);
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty()) << "only children of the root count";
}

TEST_F(DocumentRead, FirstElementOfANameCounts)
{
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="1" reciprocal="1"/><Ellpsoid ver="9" reciprocal="2"/>)";
    pieces.datum = "<Ellipsoid_Transform ver=\"1\">"
                   "<x_translate ver=\"1\" valType=\"Double\">1</x_translate>"
                   "<x_translate ver=\"1\" valType=\"Double\">2</x_translate>"
                   "</Ellipsoid_Transform><Ellipsoid_Transform ver=\"1\" fuction=\"Seven\"/>";
    pieces.geoid = R"(<Geoid_Model ver="1" modelFileName="a"/><Geoid_Model ver="9"/>)";
    Coord coord;
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.ellipsoid.reciprocal, 1.0);
    EXPECT_EQ(coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
    EXPECT_EQ(coord.ellipsoidTransform.x_translate.value.toDouble(), 1.0);
    EXPECT_EQ(coord.geoidModel.modelFileName, QStringLiteral("a"));
}

TEST_F(DocumentRead, LaterParameterOfAKeyReplacesTheEarlierOne)
{
    Coord coord;
    ASSERT_TRUE(read(
        documentWithProjection(R"(<param name="p" ver="1" unit="Degree" valType="Angle">1</param>)"
                               R"(<paramProj4 name="p" proj4Param="x_0"/>)"
                               R"(<param name="p" ver="1" valType="Double">2</param>)"
                               R"(<paramProj4 name="p" proj4Param="y_0"/>)"),
        coord));
    EXPECT_EQ(coord.projection.param.size(), 1);
    expectSameParam(coord.projection.param.value(QStringLiteral("p")),
                    Param(ValueType_Double, Unit_None, 2.0));
    EXPECT_EQ(coord.projection.paramProj4.value(QStringLiteral("p")), QStringLiteral("y_0"));
}

TEST_F(DocumentRead, NamesAreReadWithTheirCase)
{
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="1" Reciprocal="300" RECIPROCAL="301"/>)";
    pieces.datum = R"(<Ellipsoid_Transform ver="1"><X_translate ver="1" valType="Double">5)"
                   R"(</X_translate></Ellipsoid_Transform>)";
    Coord coord;
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.ellipsoid.reciprocal, 0.0);
    EXPECT_EQ(coord.ellipsoidTransform.x_translate.value.toDouble(), 0.0);
}

TEST_F(DocumentRead, OrderOfTheRecordsIsFree)
{
    DocumentPieces pieces;
    std::swap(pieces.ellipsoid, pieces.fitting);
    std::swap(pieces.projection, pieces.plane);
    pieces.geoid = R"(<Geoid_Model ver="1" modelFileName="g"/>)";
    std::swap(pieces.geoid, pieces.ellipsoid);
    Coord coord;
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.geoidModel.modelFileName, QStringLiteral("g"));
}

TEST_F(DocumentRead, NamesMayHaveReferencesToAnyCharacter)
{
    DocumentPieces pieces;
    pieces.rootAttributes = R"(ver="1" coord_name="&#x1F30D; &#134071;&amp;&apos;&quot;")";
    Coord coord;
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.coord_name, QString::fromUtf8("\xF0\x9F\x8C\x8D \xF0\xA0\xAE\xB7&'\""));
}

/// What a parameter whose value was 7 reads from this content.
class FirstChild : public DocumentTest
{
protected:
    QString valueAfter(const QByteArray &content) const
    {
        Coord coord;
        coord.ellipsoidTransform.x_translate.value = QStringLiteral("former");
        EXPECT_TRUE(read(documentWithDatum("<x_translate ver=\"1\" valType=\"String\">" + content
                                           + "</x_translate>"),
                         coord));
        return coord.ellipsoidTransform.x_translate.value.toString();
    }
};

TEST_F(FirstChild, TextIsTheValue)
{
    EXPECT_EQ(valueAfter("8"), QStringLiteral("8"));
    EXPECT_EQ(valueAfter("8<other/>9"), QStringLiteral("8"));
    EXPECT_EQ(valueAfter("8<!-- note -->9"), QStringLiteral("8"));
    EXPECT_EQ(valueAfter("&lt;8&#x38;&gt;"), QStringLiteral("<88>"));
}

/// The parser keeps no text of blanks only.
TEST_F(FirstChild, BlanksAreNoText)
{
    for (const char *blanks : {" ", "\t", "\n", " \n ", "&#32;"})
        EXPECT_EQ(valueAfter(blanks), QStringLiteral("former"));
    EXPECT_EQ(valueAfter("<![CDATA[ ]]>"), QStringLiteral(" "));
}

TEST_F(FirstChild, ReferencesMayStandForAnyCharacter)
{
    EXPECT_EQ(valueAfter("a&#x1F30D;b&#134071;&#x10ffff;c&#65536;"),
              QString::fromUtf8("a\xF0\x9F\x8C\x8D"
                                "b\xF0\xA0\xAE\xB7\xF4\x8F\xBF\xBF"
                                "c\xF0\x90\x80\x80"));
    EXPECT_EQ(valueAfter("&#x10031;"), QString::fromUtf8("\xF0\x90\x80\xB1")); // and no "1"
    EXPECT_EQ(valueAfter("&#xD83C;&#57101;"), QString::fromUtf8("\xF0\x9F\x8C\x8D"));
    EXPECT_EQ(valueAfter("&#xFFFD;&#65533;"), QString(2, QChar(0xFFFD)));
    EXPECT_EQ(valueAfter("<![CDATA[&#x1F30D;]]>"), QStringLiteral("&#x1F30D;"));
}

TEST_F(FirstChild, SectionOfCharactersIsText)
{
    EXPECT_EQ(valueAfter("<![CDATA[8 < 9]]>"), QStringLiteral("8 < 9"));
}

TEST_F(FirstChild, AnythingElseInFrontLeavesTheValue)
{
    EXPECT_EQ(valueAfter(""), QStringLiteral("former"));
    EXPECT_EQ(valueAfter("<!-- note -->8"), QStringLiteral("former"));
    EXPECT_EQ(valueAfter("<other/>8"), QStringLiteral("former"));
    EXPECT_EQ(valueAfter("<?note?>8"), QStringLiteral("former"));
}

TEST_F(FirstChild, EntriesOfADictionaryFollowTheSameRule)
{
    Coord coord;
    Param &param = coord.ellipsoidTransform.x_translate;
    param.dictionaryValues = {{QStringLiteral("kept"), 1}, {QStringLiteral("empty"), 2}};
    ASSERT_TRUE(
        read(documentWithDatum("<x_translate ver=\"1\" valType=\"Double\" isDictionary=\"true\">\n"
                               "  <key key_name=\"read\">3</key>\n"
                               "  <key key_name=\"section\"><![CDATA[4]]></key>\n"
                               "  <key key_name=\"empty\"></key>\n"
                               "  <key key_name=\"comment\"><!-- note -->5</key>\n"
                               "  <key key_name=\"element\"><b/>6</key>\n"
                               "  <key>7</key>\n"
                               "  <key key_name=\"twice\">8</key>\n"
                               "  <key key_name=\"twice\">9</key>\n"
                               "  <other key_name=\"other\">10</other>\n"
                               "</x_translate>"),
             coord));
    const QMap<QString, QVariant> expected{
        {QString(), 7.0},
        {QStringLiteral("empty"), 2},
        {QStringLiteral("kept"), 1},
        {QStringLiteral("read"), 3.0},
        {QStringLiteral("section"), 4.0},
        {QStringLiteral("twice"), 9.0},
    };
    EXPECT_EQ(param.dictionaryValues, expected);
}

TEST_F(FirstChild, DictionaryMayHaveAValueOfItsOwn)
{
    Coord coord;
    ASSERT_TRUE(
        read(documentWithDatum("<x_translate ver=\"1\" valType=\"Double\" isDictionary=\"TRUE\" "
                               "dictionarySelKey=\"s\" dictionaryBindParamName=\"b\">"
                               "5<key key_name=\"a\">3</key></x_translate>"),
             coord));
    const Param &param = coord.ellipsoidTransform.x_translate;
    EXPECT_TRUE(param.isDictionary);
    EXPECT_EQ(param.value.toDouble(), 5.0);
    EXPECT_EQ(param.dictionarySelKey, QStringLiteral("s"));
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("b"));
    EXPECT_EQ(param.dictionaryValues.value(QStringLiteral("a")).toDouble(), 3.0);
}

} // namespace
} // namespace KelStd::test
