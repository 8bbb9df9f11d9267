#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"
#include "io/XmlTree.h"

#include <cmath>
#include <limits>

namespace KelStd::test {
namespace {

class DocumentFrame : public DocumentTest
{};

TEST_F(DocumentFrame, CompleteSystemIsTheStoredDocument)
{
    EXPECT_EQ(withSortedAttributes(written(completeSystem())).toStdString(),
              withSortedAttributes(storedDocument("complete.xml")).toStdString());
}

TEST_F(DocumentFrame, FreshSystemIsTheStoredDocument)
{
    EXPECT_EQ(withSortedAttributes(written(Coord())).toStdString(),
              withSortedAttributes(storedDocument("fresh.xml")).toStdString());
}

TEST_F(DocumentFrame, BeginsWithTheDeclarationAndNoByteOrderMark)
{
    const QByteArray bytes = written(completeSystem());
    EXPECT_TRUE(bytes.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"))
        << bytes.left(60).toStdString();
}

TEST_F(DocumentFrame, NamesAreUtf8)
{
    Coord coord;
    coord.coord_name = QStringLiteral(u"D\u00fcne \u5317\u4eac \U0001F30D");
    EXPECT_TRUE(written(coord).contains("coord_name=\"D\xC3\xBCne \xE5\x8C\x97\xE4\xBA\xAC "
                                        "\xF0\x9F\x8C\x8D\""));
}

TEST_F(DocumentFrame, ParametersStandInAscendingKeyOrder)
{
    Coord coord;
    for (const char *key : {"b", "a", "Z", "k_0", "k", "10", "9", ""}) {
        coord.projection.param[QString::fromLatin1(key)] = Param();
        coord.projection.paramProj4[QString::fromLatin1(key)] = QStringLiteral("p");
    }
    const QStringList ascending{QString(),           QStringLiteral("10"), QStringLiteral("9"),
                                QStringLiteral("Z"), QStringLiteral("a"),  QStringLiteral("b"),
                                QStringLiteral("k"), QStringLiteral("k_0")};
    const XmlElement projection = parsed(written(coord)).child("Projection");
    QStringList params;
    QStringList names;
    for (const XmlElement &child : projection.children.mid(0, 8)) {
        EXPECT_EQ(child.name, QStringLiteral("param"));
        params << child.attribute("name");
    }
    for (const XmlElement &child : projection.children.mid(8)) {
        EXPECT_EQ(child.name, QStringLiteral("paramProj4"));
        names << child.attribute("name");
    }
    EXPECT_EQ(params, ascending);
    EXPECT_EQ(names, ascending);
}

TEST_F(DocumentFrame, ProjNameWithoutAParameterIsWrittenToo)
{
    Coord coord;
    coord.projection.paramProj4[QStringLiteral("alone")] = QStringLiteral("x_0");
    const XmlElement projection = parsed(written(coord)).child("Projection");
    EXPECT_TRUE(projection.all("param").isEmpty());
    ASSERT_EQ(projection.all("paramProj4").size(), 1);
    const QMap<QString, QString> expected{{QStringLiteral("name"), QStringLiteral("alone")},
                                          {QStringLiteral("proj4Param"), QStringLiteral("x_0")}};
    EXPECT_EQ(projection.child("paramProj4").attributes, expected);
}

TEST_F(DocumentFrame, DictionaryHasItsEntriesInKeyOrderAndNoTextOfItsOwn)
{
    Coord coord;
    Param param(ValueType_Double, Unit_Degree, 7.5);
    param.isDictionary = true;
    param.dictionarySelKey = QStringLiteral("b");
    param.dictionaryBindParamName = QStringLiteral("other");
    param.dictionaryValues = {
        {QStringLiteral("c"), 3.5}, {QStringLiteral("a"), 1.5}, {QStringLiteral("b"), 2.5}};
    coord.projection.param[QStringLiteral("p")] = param;
    const XmlElement element = parsed(written(coord)).child("Projection").child("param");
    EXPECT_EQ(element.attributes.size(), 7);
    EXPECT_EQ(element.attribute("isDictionary"), QStringLiteral("true"));
    EXPECT_EQ(element.attribute("dictionarySelKey"), QStringLiteral("b"));
    EXPECT_EQ(element.attribute("dictionaryBindParamName"), QStringLiteral("other"));
    EXPECT_TRUE(element.text.trimmed().isEmpty()) << element.text.toStdString();
    QStringList entries;
    for (const XmlElement &key : element.children) {
        EXPECT_EQ(key.name, QStringLiteral("key"));
        EXPECT_EQ(QStringList(key.attributes.keys()), QStringList(QStringLiteral("key_name")));
        entries << key.attribute("key_name") + QLatin1Char('=') + key.text;
    }
    const QStringList expected{QStringLiteral("a=1.5"), QStringLiteral("b=2.5"),
                               QStringLiteral("c=3.5")};
    EXPECT_EQ(entries, expected);
}

TEST_F(DocumentFrame, DictionaryMembersOfAPlainValueAreNotWritten)
{
    Coord coord;
    Param &param = coord.ellipsoidTransform.x_translate;
    param.dictionarySelKey = QStringLiteral("a");
    param.dictionaryBindParamName = QStringLiteral("other");
    param.dictionaryValues[QStringLiteral("a")] = 1.5;
    param.value = 7.5;
    const XmlElement element =
        parsed(written(coord)).child("Ellipsoid_Transform").child("x_translate");
    const QStringList attributes{QStringLiteral("isDictionary"), QStringLiteral("unit"),
                                 QStringLiteral("valType"), QStringLiteral("ver")};
    EXPECT_EQ(QStringList(element.attributes.keys()), attributes);
    EXPECT_TRUE(element.children.isEmpty());
    EXPECT_EQ(element.text, QStringLiteral("7.5"));
}

TEST_F(DocumentFrame, DictionaryWithoutEntriesHasNoContent)
{
    Coord coord;
    coord.planeTransform.ratio.isDictionary = true;
    coord.planeTransform.ratio.value = 7.5;
    const XmlElement element = parsed(written(coord)).child("Plane_Transform").child("ratio");
    EXPECT_EQ(element.attribute("dictionarySelKey"), QString());
    EXPECT_EQ(element.attribute("dictionaryBindParamName"), QString());
    EXPECT_TRUE(element.children.isEmpty());
    EXPECT_TRUE(element.text.isEmpty());
}

TEST_F(DocumentFrame, UnlistedEnumeratorsAndUnitsWithoutAWordAreEmptyWords)
{
    Coord coord;
    coord.ellipsoid.positiveDir = static_cast<EEllipsoidDirection>(9);
    coord.projection.locationType = static_cast<ELocationType>(5);
    coord.projection.loc_or_height_unit = Unit_Yard;
    coord.ellipsoidTransform.fuction = static_cast<EEllipsoinTransformFunction>(7);
    coord.ellipsoidTransform.nofuction_transtion = static_cast<EEllipsoinTransition>(2);
    coord.planeTransform.fuction = static_cast<EPlaneTransformFunction>(7);
    coord.elevationFitting.function = static_cast<EElevationFittingFunction>(7);
    coord.elevationFitting.a.unit = Unit_Mile;
    coord.elevationFitting.a.valType = static_cast<EValueType>(50);
    const XmlElement root = parsed(written(coord));
    EXPECT_EQ(root.child("Ellpsoid").attribute("positiveDir"), QString());
    EXPECT_EQ(root.child("Projection").attribute("locationType"), QString());
    EXPECT_EQ(root.child("Projection").attribute("loc_or_height_unit"), QString());
    EXPECT_EQ(root.child("Ellipsoid_Transform").attribute("fuction"), QString());
    EXPECT_EQ(root.child("Ellipsoid_Transform").attribute("nofuction_transtion"), QString());
    EXPECT_EQ(root.child("Plane_Transform").attribute("fuction"), QString());
    EXPECT_EQ(root.child("Elevation_Fitting").attribute("function"), QString());
    EXPECT_EQ(root.child("Elevation_Fitting").child("a").attribute("unit"), QString());
    EXPECT_EQ(root.child("Elevation_Fitting").child("a").attribute("valType"), QString());
}

TEST_F(DocumentFrame, AxisAndFlatteningReadBackAsTheSameDoubles)
{
    for (const double number :
         {6378137.0, std::nextafter(6378137.0, 7e6), 298.257223563, 0.1 + 0.2, 1.0 / 3.0, 1e-300,
          -1.5e300, std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(),
          123456789012345678.0}) {
        Coord coord;
        coord.ellipsoid.biggerHalfAxle.value = number;
        coord.ellipsoid.reciprocal = number;
        const Coord result = throughFile(coord);
        EXPECT_EQ(result.ellipsoid.biggerHalfAxle.value.toDouble(), number);
        EXPECT_EQ(result.ellipsoid.reciprocal, number);
    }
}

TEST_F(DocumentFrame, AxisIsWrittenAsANumberWhateverItsVariant)
{
    Coord coord;
    coord.ellipsoid.biggerHalfAxle.value = QStringLiteral("6378137");
    EXPECT_EQ(parsed(written(coord)).child("Ellpsoid").attribute("biggerHalfAxle").toDouble(),
              6378137.0);
    coord.ellipsoid.biggerHalfAxle.value = QVariant();
    EXPECT_EQ(parsed(written(coord)).child("Ellpsoid").attribute("biggerHalfAxle"),
              QStringLiteral("0"));
}

TEST_F(DocumentFrame, MarkupInTextsSurvives)
{
    Coord coord;
    const QString text =
        QStringLiteral("<a b=\"c\" d='e'>&amp; ]]> --> <![CDATA[ %1 \\ \t tab\nline\r return </a>");
    coord.coord_name = text;
    coord.projection.param[text] = Param(ValueType_None, Unit_None, text);
    coord.projection.paramProj4[text] = text;
    coord.geoidModel.modelFileName = text;
    const Coord result = throughFile(coord);
    EXPECT_EQ(result.coord_name, text);
    EXPECT_EQ(result.projection.param.value(text).value.toString(), text);
    EXPECT_EQ(result.projection.paramProj4.value(text), text);
    EXPECT_EQ(result.geoidModel.modelFileName, text);
}

TEST_F(DocumentFrame, WritingAgainReplacesALongerDocument)
{
    written(completeSystem());
    EXPECT_EQ(withSortedAttributes(written(Coord())).toStdString(),
              withSortedAttributes(storedDocument("fresh.xml")).toStdString());
    EXPECT_EQ(entries(), QStringList(QStringLiteral("system.xml")));
}

TEST_F(DocumentFrame, WrittenCompleteSystemReadsBackTheSame)
{
    expectSameSystem(throughFile(completeSystem()), completeSystem());
}

} // namespace
} // namespace KelStd::test
